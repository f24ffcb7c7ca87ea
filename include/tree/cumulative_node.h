#ifndef TREE800_CUMULATIVE_NODE_H
#define TREE800_CUMULATIVE_NODE_H

#include <tree/cls_info.h>
#include <tree/data_sample.h>
#include <tree/export.h>
#include <tree/reg_info.h>

#include <vector>

namespace tree_800 {

class Node;

/// Several nodes seen as one: sizes and class counts are summed, means, counts and histograms
/// pooled. The nodes are borrowed and must outlive the aggregate; what they hold is read anew at
/// every request. Created and deleted by hosts. An aggregate may be used by one thread at a time;
/// any number of aggregates may share nodes.
///
///     std::vector<Node const*> const leavesThatPredictAdelie = ...;
///     CumulativeNode adelie(leavesThatPredictAdelie);
///     double const cases = adelie.GetNodeSize(TrainingSample);
class TREE800_EXPORT CumulativeNode {
public:
    /// The size of a node that GetNodeSize sums.
    enum NodeSizeType : int {
        WeightedSize = 0,    ///< Node::GetNodeSize
        UnweightedSize = 1,  ///< Node::GetUnweightedNodeSize
        PercentageSize = 2   ///< Node::GetPercentageNodeSize
    };

    /// Merges the nodes, none of which may be null. Whether the aggregate is valid is decided here,
    /// once, by the first node alone; without nodes it is not valid.
    explicit CumulativeNode(std::vector<Node const*> const& nodes);
    CumulativeNode(CumulativeNode const&) = delete;
    CumulativeNode& operator=(CumulativeNode const&) = delete;
    virtual ~CumulativeNode();

    /// Sums over the nodes; the system-missing value when the aggregate is not valid. @{
    virtual double GetNodeSize(DataSample sample) const;
    virtual double GetUnweightedNodeSize(DataSample sample) const;
    virtual double GetPercentageNodeSize(DataSample sample) const;
    /// @}

    /// The class counts and unweighted count of all nodes, summed; a node without ClsInfoImp for
    /// the sample is left out, and the first with classes fixes their number. Prediction,
    /// probabilities and percent size are not pooled: they stay 0, 0.0 and the system-missing
    /// value. Null when the aggregate is not valid; for regression nodes not null, but without
    /// classes. Borrowed; the next call overwrites it.
    virtual ClsInfo* GetClsInfo(DataSample sample);

    /// The pooled mean (weighted by node size; the system-missing value over no cases), counts and
    /// bins of all nodes; a node without RegInfoImp for the sample or of size 0.0 is left out, and
    /// the first with bins fixes their number. Minimum and maximum are not pooled, so that
    /// the bins have no end points; the standard deviation is the system-missing value, always. The
    /// prediction is the pooled mean. Null when the aggregate is not valid; for classification
    /// nodes not null, but over no cases. Borrowed; the next call overwrites it.
    virtual RegInfo* GetRegInfo(DataSample sample);

    /// Whether the first node has classification or regression information for the training sample.
    /// Looks anew; the validity decided at construction stays.
    bool Validate();
    /// The sum of one kind of size; a type of no kind adds 0.0. The system-missing value when the
    /// aggregate is not valid.
    double GetNodeSize(NodeSizeType type, DataSample sample) const;

private:
    std::vector<Node const*> nodes_;
    RegInfoImp pooledRegInfo_;
    ClsInfoImp pooledClsInfo_;
    bool isValid_;
};

}  // namespace tree_800

#endif
