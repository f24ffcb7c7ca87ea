#ifndef TREE800_TREE_ALGORITHM_H
#define TREE800_TREE_ALGORITHM_H

#include <tree/data_sample.h>
#include <tree/export.h>

namespace tree_800 {

class AlgSettings;
class GainsIntf;
class GainsSettings;
class Node;
class TreeStatistics;
class VariableSettings;

/// What a grown tree is, whatever grew it: the tree and the variables that it speaks of.
/// Implemented by growers; see TreeAlgorithm.
class TREE800_EXPORT TreeAlgorithmBase {
public:
    virtual ~TreeAlgorithmBase();

    /// The root of the grown tree, or null when there is none; borrowed until the algorithm is run,
    /// reset or destroyed.
    virtual Node const* GetRoot() const = 0;
    /// Hands the tree over: the caller deletes it, and the algorithm has none until it is reset and
    /// run again. Ends a run that is not complete. Null when there is none.
    [[nodiscard]] virtual Node* ReleaseRoot() = 0;
    /// True for a classification tree, false for a regression tree.
    virtual bool IsClassification() const = 0;
    /// Number of target classes; 0 for a regression tree.
    virtual int GetNumClasses() const = 0;
    /// The target; borrowed.
    virtual VariableSettings const* GetTarget() const = 0;
    /// Number of values in an observation that is dropped through the tree.
    virtual int GetNumPredictors() const = 0;
    /// The predictor at an index of an observation; borrowed, null outside
    /// [0, GetNumPredictors()).
    virtual VariableSettings const* GetPredictor(int index) const = 0;
};

/// An algorithm that grows a tree. Implemented by growers and driven by hosts; created and deleted
/// by the host. An algorithm may be used by one thread at a time, distinct ones by distinct
/// threads.
///
/// The run goes in steps, so that a host that shows progress or lets its user cancel keeps control:
///
///     while (algorithm.Step()) {
///         if (!Show(algorithm.GetProgress())) algorithm.Cancel();
///     }
class TREE800_EXPORT TreeAlgorithm : public TreeAlgorithmBase {
public:
    ~TreeAlgorithm() override;

    /// Takes all remaining steps; true when the tree is complete, false when the run was cancelled
    /// or the tree released.
    virtual bool Run() = 0;
    /// Takes one step, normally deciding one node; true while steps remain. Between steps the tree
    /// is whole: nodes still undecided are leaves. After the last step, Cancel or ReleaseRoot it
    /// does nothing and answers false, until Reset.
    virtual bool Step() = 0;
    /// Discards the tree; the next step starts a new run.
    virtual void Reset() = 0;
    /// The share of the run that is done, 0 to 1; never decreases during a run. Cancel leaves it
    /// where it is, ReleaseRoot of a complete tree at 1.
    virtual double GetProgress() const = 0;
    /// Ends the run before its next step. What has been grown stays and is a whole tree.
    virtual void Cancel() = 0;
    /// Whether the run was cancelled; cleared by Reset.
    virtual bool IsCancelled() const = 0;

    /// The settings of the run, the algorithm's own copy; borrowed.
    virtual AlgSettings const* GetSettings() const = 0;

    /// Number of nodes of the tree, the leaves included; 0 when there is none.
    virtual int GetNumNodes() const = 0;
    /// Number of nodes without children; 0 when there is no tree.
    virtual int GetNumLeaves() const = 0;
    /// Risk of the tree on the sample: the expected cost of misclassification under the priors of
    /// the settings, or the mean squared error. The system-missing value when there is no tree or
    /// no such sample.
    virtual double GetRisk(DataSample sample) const = 0;
    /// Standard error of GetRisk, under the same conditions.
    virtual double GetRiskStdError(DataSample sample) const = 0;
    /// Replaces what the handle holds by the statistics of the tree, judged as the validation
    /// specification says; false, with the handle unchanged, when there is no tree.
    virtual bool GetStatistics(TreeStatistics& out) const = 0;
    /// A new gains table of the tree's leaves, which the caller deletes and which borrows the
    /// nodes; null when there is no tree or the grower offers no gains.
    [[nodiscard]] virtual GainsIntf* ComputeGains(GainsSettings const& settings) const = 0;
};

}  // namespace tree_800

#endif
