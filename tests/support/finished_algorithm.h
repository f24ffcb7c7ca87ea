#ifndef TREE800_TESTS_SUPPORT_FINISHED_ALGORITHM_H
#define TREE800_TESTS_SUPPORT_FINISHED_ALGORITHM_H

#include <tree/node_imp.h>
#include <tree/tree_algorithm.h>

#include <memory>
#include <utility>

namespace tree_800::test {

/// A finished run. Statistics ask it for its root and its kind alone.
class FinishedAlgorithm : public TreeAlgorithm {
public:
    explicit FinishedAlgorithm(std::unique_ptr<NodeImp> root) : root_(std::move(root)) {}

    // TreeAlgorithmBase
    Node const* GetRoot() const override { return root_.get(); }
    Node* ReleaseRoot() override { return root_.release(); }
    bool IsClassification() const override { return root_->IsClassificationNode(); }
    int GetNumClasses() const override { return -1; }
    VariableSettings const* GetTarget() const override { return nullptr; }
    int GetNumPredictors() const override { return -1; }
    VariableSettings const* GetPredictor(int /*index*/) const override { return nullptr; }

    // TreeAlgorithm
    bool Run() override { return true; }
    bool Step() override { return false; }
    void Reset() override {}
    double GetProgress() const override { return 1.0; }
    void Cancel() override {}
    bool IsCancelled() const override { return false; }
    AlgSettings const* GetSettings() const override { return nullptr; }
    int GetNumNodes() const override { return -1; }
    int GetNumLeaves() const override { return -1; }
    double GetRisk(DataSample /*sample*/) const override { return -1.0; }
    double GetRiskStdError(DataSample /*sample*/) const override { return -1.0; }
    bool GetStatistics(TreeStatistics& /*out*/) const override { return false; }
    GainsIntf* ComputeGains(GainsSettings const& /*settings*/) const override { return nullptr; }

private:
    std::unique_ptr<NodeImp> root_;
};

}  // namespace tree_800::test

#endif
