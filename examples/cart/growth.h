#ifndef TREE800_EXAMPLES_CART_GROWTH_H
#define TREE800_EXAMPLES_CART_GROWTH_H

#include "cart/dataset.h"
#include "cart/rules.h"
#include "cart/weighting.h"

#include <tree/cart_settings.h>
#include <tree/node_imp.h>

#include <memory>
#include <vector>

namespace cart {

/// Grows the unpruned tree of some training rows, one node a step; the test rows are counted on
/// their way. How it reads the settings is told by CartGrower. Borrows what it is given; one
/// thread at a time.
class Growth {
public:
    /// Starts with the root alone, undecided. There must be a training row, and the weighting must
    /// be that of the training rows.
    Growth(Dataset const& data, SampleRows rows, tree_800::CartSettings const& settings,
           Weighting const& weighting);

    /// Decides the next node; not when complete.
    void Step();
    bool IsComplete() const { return undecided_.empty(); }
    /// The share of the training cases that have come to rest.
    double GetProgress() const;

    /// Borrowed; null once released.
    tree_800::NodeImp* GetRoot() const { return root_.get(); }
    /// Ends growth.
    std::unique_ptr<tree_800::NodeImp> ReleaseRoot();

private:
    /// A node that is a leaf until it is decided, with the rows that reached it.
    struct Undecided {
        tree_800::NodeImp* node;
        SampleRows rows;
        int depth;
    };

    Rules FindWorthwhileSplits(Undecided const& leaf) const;
    void Split(Undecided const& leaf, Rules splits);

    Dataset const& data_;
    tree_800::CartSettings const& settings_;
    Weighting const& weighting_;
    SampleRows all_;
    std::unique_ptr<tree_800::NodeImp> root_;
    std::vector<Undecided> undecided_;  // the next one last
    unsigned numDecided_ = 0;
};

}  // namespace cart

#endif
