#ifndef TREE800_EXAMPLES_GUIDE_GROWER_H
#define TREE800_EXAMPLES_GUIDE_GROWER_H

#include <tree/cart_settings.h>
#include <tree/core_settings.h>
#include <tree/node_imp.h>
#include <tree/split_rule_imp.h>
#include <tree/tree_algorithm.h>
#include <tree/variable_settings.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <vector>

/// The grower and the host that the guides in docs/ explain.
namespace guide {

/// The training sample. A row has a value for each predictor, and a target class.
struct Data {
    std::vector<std::vector<double>> rows;
    std::vector<int> classes;
};

/// Grows a classification tree of the best binary splits by the Gini index, down to the depth and
/// the child size of its stop rule; the root is at depth 0. It keeps a competitor for every
/// predictor, prunes and validates nothing, and knows neither costs nor priors.
class Grower : public tree_800::TreeAlgorithm {
public:
    /// Copies the data and clones the settings; both must be about the same variables.
    Grower(Data data, tree_800::CCartSettings const& settings);

    // TreeAlgorithmBase
    tree_800::Node const* GetRoot() const override { return root_.get(); }
    [[nodiscard]] tree_800::Node* ReleaseRoot() override;
    bool IsClassification() const override { return true; }
    int GetNumClasses() const override { return GetTarget()->GetNumValues(); }
    tree_800::VariableSettings const* GetTarget() const override { return Core().GetTarget(); }
    int GetNumPredictors() const override { return Core().GetNumPredictors(); }
    tree_800::VariableSettings const* GetPredictor(int index) const override;

    // TreeAlgorithm
    bool Run() override;
    bool Step() override;
    void Reset() override;
    double GetProgress() const override;
    void Cancel() override { isCancelled_ = true; }
    bool IsCancelled() const override { return isCancelled_; }
    tree_800::AlgSettings const* GetSettings() const override { return settings_.get(); }
    int GetNumNodes() const override;
    int GetNumLeaves() const override;
    double GetRisk(tree_800::DataSample sample) const override;
    double GetRiskStdError(tree_800::DataSample sample) const override;
    bool GetStatistics(tree_800::TreeStatistics& out) const override;
    [[nodiscard]] tree_800::GainsIntf* ComputeGains(
        tree_800::GainsSettings const& settings) const override;

private:
    using Rows = std::vector<std::size_t>;
    using Rule = std::unique_ptr<tree_800::SplitRuleImp>;
    using Score = std::function<double(tree_800::SplitRuleImp const& rule)>;

    /// A leaf that may yet be split.
    struct Undecided {
        tree_800::NodeImp* leaf;  // owned by the tree
        Rows rows;
        int depth;
    };

    tree_800::CoreSettings const& Core() const { return *settings_->GetCoreSettings(); }
    bool IsNominal(int predictor) const;
    double Value(std::size_t row, int predictor) const;
    std::set<double> ValuesOf(Rows const& rows, int predictor) const;
    std::vector<double> CountClasses(Rows const& rows) const;
    std::vector<Rows> Divide(Rows const& rows, tree_800::SplitRuleImp const& rule) const;

    std::unique_ptr<tree_800::NodeImp> MakeLeaf(Rows const& rows);
    void Summarise(tree_800::NodeImp& node, Rows const& rows) const;
    Rule MakeRule(int predictor, std::set<double> const& values, double value, int child) const;
    std::vector<Rule> FindRules(Rows const& rows, Score const& score) const;
    double Improvement(Rows const& rows, tree_800::SplitRuleImp const& rule) const;
    std::vector<Rule> FindSurrogates(Rows const& rows, tree_800::SplitRuleImp const& primary) const;
    void Split(Undecided const& undecided, std::vector<Rule> splits);

    Data data_;
    std::unique_ptr<tree_800::CCartSettings> settings_;
    std::unique_ptr<tree_800::NodeImp> root_;
    std::vector<Undecided> undecided_;
    unsigned int lastId_ = 0;
    bool isStarted_ = false;
    bool isCancelled_ = false;
};

}  // namespace guide

#endif
