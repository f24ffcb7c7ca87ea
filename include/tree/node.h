#ifndef TREE800_NODE_H
#define TREE800_NODE_H

#include <tree/data_sample.h>
#include <tree/export.h>

namespace tree_800 {

class ClsInfo;
class RegInfo;
class SplitRule;

/// A node of a finished tree, as a host reads it; observations are routed by NodeImp, the class of
/// every grower's nodes (see NodeImp::DropObservationThroughTree). Obtained from a TreeAlgorithm or
/// from another node; the tree owns its nodes. Reading does not change a node; any number of
/// threads may read one tree at a time; a change of any of its nodes needs the whole tree alone.
///
///     for (int i = 0; i < node->GetNumChildren(); ++i) {
///         Print(node->GetChild(static_cast<unsigned>(i)));
///     }
class TREE800_EXPORT Node {
public:
    virtual ~Node();

    /// The parent, or null for a root; borrowed.
    virtual Node* GetParent() const = 0;
    /// Number of children; 0 makes the node a leaf.
    virtual int GetNumChildren() const = 0;
    /// The child at the position, or null when there is none; borrowed.
    virtual Node* GetChild(unsigned int pos) const = 0;

    /// Number of rules at the node: the primary split, which routes, and the competitors.
    virtual unsigned int GetNumCompetitors() const = 0;
    /// Position of the child that receives what no rule can place, as the grower set it on the
    /// primary split by SplitRuleImp::SetDumbRule; -1 for none.
    virtual int GetBiggestChildPos() const = 0;
    /// A new handle holding a copy of the rule at the position, which the caller deletes; null when
    /// there is none. Position 0 is the primary split.
    [[nodiscard]] virtual SplitRule* GetCompetitor(unsigned int pos) const = 0;
    /// Surrogates stand in, in order, when the primary split cannot place an observation.
    virtual unsigned int GetNumSurrogates() const = 0;
    /// As GetCompetitor, for the surrogates; the caller deletes the handle.
    [[nodiscard]] virtual SplitRule* GetSurrogate(unsigned int pos) const = 0;

    /// The number that the grower gave the node.
    virtual unsigned int GetId() const = 0;

    /// The prediction for the training sample: the class as a number, or the predicted value; the
    /// system-missing value when the node has no information of its kind.
    virtual double GetAssignment() const = 0;
    /// Weighted cases; 0.0 without information of the node's kind for the sample.
    virtual double GetNodeSize(DataSample sample) const = 0;
    /// Number of cases, each counted once, or weighted cases where the grower stored no such
    /// number; 0.0 as above.
    virtual double GetUnweightedNodeSize(DataSample sample) const = 0;
    /// Size relative to the tree. The two kinds of tree differ, deliberately: a classification node
    /// answers whatever its grower stored, normally percent; a regression node answers its share of
    /// the root's size, a fraction 0 to 1, or the root's size itself when that is not above 0.
    virtual double GetPercentageNodeSize(DataSample sample) const = 0;

    /// Number of predictor summaries; 0 where the grower made none.
    virtual unsigned int GetNumPredictors() const = 0;
    /// The summary of one predictor; see PredictorImp for what is written. Each answers false, with
    /// nothing written, for an index outside [0, GetNumPredictors()). No pointer may be null. @{
    virtual bool GetPredictorRange(int index, double* low, double* high) const = 0;
    virtual bool GetNumPredictorValues(int index, int* n) const = 0;
    virtual bool GetPredictorValues(int index, double* out, int n) const = 0;
    virtual bool GetPredictorMissingValueFlag(int index, bool* hasMissing) const = 0;
    /// @}

    /// The node's information for the sample, or null; borrowed. @{
    virtual ClsInfo* GetClsInfo(DataSample sample) const = 0;
    virtual RegInfo* GetRegInfo(DataSample sample) const = 0;
    /// @}
};

}  // namespace tree_800

#endif
