#ifndef TREE800_EXAMPLES_CART_CART_GROWER_H
#define TREE800_EXAMPLES_CART_CART_GROWER_H

#include "cart/cross_validation.h"
#include "cart/dataset.h"
#include "cart/growth.h"
#include "cart/pruning.h"
#include "cart/risk.h"
#include "cart/settings.h"

#include <tree/cart_settings.h>
#include <tree/tree_algorithm.h>
#include <tree/validation_spec.h>

#include <memory>
#include <optional>
#include <vector>

namespace cart {

/// Grows a binary classification or regression tree (Breiman, Friedman, Olshen and Stone 1984)
/// with surrogate splits and prunes it. One step decides one node, depth first, child 0 before
/// child 1; then, under cross-validation, one step judges one fold; under either validation the
/// last step prunes. Ids are 1, 2, ... in pre-order after every step.
///
/// The settings are read like this:
/// - the maximum number of competitors includes the primary split; a nominal predictor with more
///   categories in a node than the maximum, or than MaxSearchedCategories, offers no split there;
/// - the improvement of a split, see ImprovementStatistic, must be above 0 and at least the minimum
///   improvement times the impurity of the root, so that 0.01 means one percent of it;
/// - sizes are in training cases; of a size and a percent size the larger one counts; 0 sets no
///   limit; the size of a child is taken over the cases that have the predictor of the split;
/// - the root is at depth 0, and a node at the maximum depth is not split; 0 sets no limit;
/// - priors and costs: see Weighting; altered priors weight the cases in the split criterion;
/// - pruning: see ChooseSubtree; without validation the tree is not pruned, as the training sample
///   would choose the largest tree.
///
/// Cases go down by the node's own routing, so that the tree and its counts agree. A case that
/// neither the primary split nor a surrogate places goes to the child that receives more of the
/// cases that the primary split places; where both receive the same number there is no such child,
/// and the case stays in the node.
///
/// Created and deleted by the host; one thread at a time.
///
///     tree_800::CCartSettingsImp settings(cart::MakeCoreSettings(data));
///     settings.GetValidationSpec()->Set(tree_800::CrossValidation);
///     cart::CartGrower grower(data, settings);
///     grower.Run();
class CartGrower : public tree_800::TreeAlgorithm {
public:
    /// Keeps the data and clones the settings. Throws std::invalid_argument where they do not fit,
    /// see RequireFit and Weighting.
    CartGrower(Dataset data, tree_800::CartSettings const& settings);
    CartGrower(CartGrower const&) = delete;
    CartGrower& operator=(CartGrower const&) = delete;
    ~CartGrower() override = default;

    // TreeAlgorithmBase
    tree_800::NodeImp const* GetRoot() const override {
        return growth_ ? growth_->GetRoot() : nullptr;
    }
    /// Ends a run that is not complete.
    [[nodiscard]] tree_800::NodeImp* ReleaseRoot() override;
    bool IsClassification() const override { return data_.IsClassification(); }
    int GetNumClasses() const override { return data_.target.NumCategories(); }
    tree_800::VariableSettings const* GetTarget() const override;
    int GetNumPredictors() const override { return data_.NumPredictors(); }
    tree_800::VariableSettings const* GetPredictor(int index) const override;

    // TreeAlgorithm
    /// False also when the tree was released.
    bool Run() override;
    bool Step() override;
    void Reset() override;
    /// Growth counts as much as each step after it, and progresses with the share of the training
    /// cases that have come to rest.
    double GetProgress() const override;
    void Cancel() override { isCancelled_ = true; }
    bool IsCancelled() const override { return isCancelled_; }
    tree_800::AlgSettings const* GetSettings() const override { return settings_.get(); }
    int GetNumNodes() const override;
    int GetNumLeaves() const override;
    /// Of the tree as it is, see Judge; for cross-validation see GetStatistics.
    double GetRisk(tree_800::DataSample sample) const override;
    double GetRiskStdError(tree_800::DataSample sample) const override;
    /// Under cross-validation the risk is that of the chosen subtree over all folds, and the
    /// system-missing value until the tree is pruned.
    bool GetStatistics(tree_800::TreeStatistics& out) const override;
    [[nodiscard]] tree_800::GainsIntf* ComputeGains(
        tree_800::GainsSettings const& settings) const override;

    Dataset const& GetData() const { return data_; }
    Weighting const& GetWeighting() const { return weighting_; }

private:
    tree_800::ValidationType GetValidationType() const;
    int NumStepsAfterGrowth() const;
    void StepAfterGrowth();
    std::vector<Risk> JudgeSubtrees() const;
    void PruneToChosenSubtree();
    Risk JudgeTree(tree_800::DataSample sample) const;

    Dataset data_;
    std::unique_ptr<tree_800::CartSettings> settings_;
    SampleRows rows_;
    Weighting weighting_;

    std::unique_ptr<Growth> growth_;  // holds the tree; null before the first step
    std::unique_ptr<PruningSequence> sequence_;
    std::unique_ptr<CrossValidator> crossValidator_;
    std::optional<Risk> chosenRisk_;  // by which the subtree was chosen
    int numStepsAfterGrowth_ = 0;
    bool isCancelled_ = false;
};

}  // namespace cart

#endif
