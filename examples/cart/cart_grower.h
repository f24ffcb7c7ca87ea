#ifndef TREE800_EXAMPLES_CART_CART_GROWER_H
#define TREE800_EXAMPLES_CART_CART_GROWER_H

#include "cart/dataset.h"
#include "cart/rules.h"

#include <tree/node_imp.h>
#include <tree/stop_rule.h>
#include <tree/tree_algorithm.h>
#include <tree/validation_spec.h>

#include <memory>
#include <vector>

namespace cart {

/// Grows a binary classification or regression tree (Breiman, Friedman, Olshen and Stone 1984)
/// with surrogate splits, without pruning. One step decides one node, depth first, child 0 before
/// child 1; ids are 1, 2, ... in that order, and a node that is still undecided has the id that it
/// would keep if growing ended now.
///
/// The stop rule is read like this, all sizes in training cases:
/// - the improvement of a split, see ImprovementStatistic, must be above 0 and at least the minimum
///   improvement times the impurity of the root, so that 0.01 means one percent of it;
/// - of a size and a percent size the larger one counts; 0 sets no limit; the size of a child is
///   taken over the cases that have the predictor of the split;
/// - the root is at depth 0, and a node at the maximum depth is not split; 0 sets no limit.
///
/// Cases go down by the node's own routing, so that the tree and its counts agree. A case that
/// neither the primary split nor a surrogate places goes to the child that receives more of the
/// cases that the primary split places; where both receive the same number there is no such child,
/// and the case stays in the node.
///
/// Created and deleted by the host; one thread at a time.
///
///     cart::CartGrower grower(data, stopRule, validation);
///     grower.Run();
///     Print(*grower.GetRoot());
class CartGrower : public tree_800::TreeAlgorithm {
public:
    /// Keeps the data and clones the settings. Throws std::invalid_argument for data without a
    /// training row and for cross-validation, which this grower does not do.
    CartGrower(Dataset data, tree_800::StopRule const& stopRule,
               tree_800::ValidationSpec const& validation);

    // TreeAlgorithmBase
    tree_800::NodeImp const* GetRoot() const override { return root_.get(); }
    /// Ends a run that is not complete.
    [[nodiscard]] tree_800::NodeImp* ReleaseRoot() override;
    bool IsClassification() const override { return data_.IsClassification(); }
    int GetNumClasses() const override { return data_.target.NumCategories(); }
    tree_800::VariableSettings const* GetTarget() const override { return &data_.target.settings; }
    int GetNumPredictors() const override { return data_.NumPredictors(); }
    tree_800::VariableSettings const* GetPredictor(int index) const override;

    // TreeAlgorithm
    /// False also when the tree was released.
    bool Run() override;
    bool Step() override;
    void Reset() override;
    /// The share of the training cases that have come to rest.
    double GetProgress() const override;
    void Cancel() override { isCancelled_ = true; }
    bool IsCancelled() const override { return isCancelled_; }
    tree_800::StopRule const* GetStopRule() const override { return stopRule_.get(); }
    tree_800::ValidationSpec const* GetValidationSpec() const override { return validation_.get(); }
    /// Null: the tree is not pruned.
    tree_800::PruningSpec const* GetPruningSpec() const override { return nullptr; }
    int GetNumLeaves() const override;
    double GetRisk(tree_800::DataSample sample) const override;
    double GetRiskStdError(tree_800::DataSample sample) const override;
    bool GetStatistics(tree_800::TreeStatistics& out) const override;

    Dataset const& GetData() const { return data_; }

private:
    /// A node that is a leaf until it is decided, with the rows that reached it.
    struct Undecided {
        tree_800::NodeImp* node;
        SampleRows rows;
        int depth;
    };
    /// The mean loss of the tree over a sample, and its standard error.
    struct Risk {
        double mean;
        double stdError;
    };

    void Plant();
    Rules FindWorthwhileSplits(Undecided const& leaf) const;
    void Split(Undecided const& leaf, Rules splits);
    Risk Judge(tree_800::DataSample sample) const;

    Dataset data_;
    std::unique_ptr<tree_800::StopRule> stopRule_;
    std::unique_ptr<tree_800::ValidationSpec> validation_;
    SampleRows all_;

    std::unique_ptr<tree_800::NodeImp> root_;
    std::vector<Undecided> undecided_;  // the next one last
    unsigned numDecided_ = 0;
    int numSplits_ = 0;
    bool isPlanted_ = false;
    bool isCancelled_ = false;
};

}  // namespace cart

#endif
