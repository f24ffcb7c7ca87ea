#include <tree/cumulative_node.h>

#include <tree/host.h>
#include <tree/node.h>
#include <tree/precondition.h>

#include <algorithm>
#include <cstddef>

namespace tree_800 {

namespace {

double SizeOf(Node const& node, CumulativeNode::NodeSizeType type, DataSample sample) {
    switch (type) {
        case CumulativeNode::WeightedSize:
            return node.GetNodeSize(sample);
        case CumulativeNode::UnweightedSize:
            return node.GetUnweightedNodeSize(sample);
        case CumulativeNode::PercentageSize:
            return node.GetPercentageNodeSize(sample);
    }
    return 0.0;
}

}  // namespace

CumulativeNode::CumulativeNode(std::vector<Node const*> const& nodes)
    : nodes_(nodes), isValid_(Validate()) {}

CumulativeNode::~CumulativeNode() = default;

bool CumulativeNode::Validate() {
    TREE800_REQUIRE(std::find(nodes_.begin(), nodes_.end(), nullptr) == nodes_.end(),
                    "an aggregate of a null node");
    if (nodes_.empty()) {
        return false;
    }
    Node const& first = *nodes_.front();
    return first.GetClsInfo(TrainingSample) != nullptr ||
           first.GetRegInfo(TrainingSample) != nullptr;
}

double CumulativeNode::GetNodeSize(NodeSizeType type, DataSample sample) const {
    if (!isValid_) {
        return systemMissingValue();
    }
    double total = 0.0;
    for (Node const* const node : nodes_) {
        total += SizeOf(*node, type, sample);
    }
    return total;
}

double CumulativeNode::GetNodeSize(DataSample sample) const {
    return GetNodeSize(WeightedSize, sample);
}

double CumulativeNode::GetUnweightedNodeSize(DataSample sample) const {
    return GetNodeSize(UnweightedSize, sample);
}

double CumulativeNode::GetPercentageNodeSize(DataSample sample) const {
    return GetNodeSize(PercentageSize, sample);
}

ClsInfo* CumulativeNode::GetClsInfo(DataSample sample) {
    if (!isValid_) {
        return nullptr;
    }
    std::vector<double> counts;
    double unweightedCount = 0.0;
    for (Node const* const node : nodes_) {
        auto const* const info = dynamic_cast<ClsInfoImp const*>(node->GetClsInfo(sample));
        if (info == nullptr) {
            continue;
        }
        if (counts.empty()) {
            counts.resize(static_cast<std::size_t>(info->GetNumClasses()), 0.0);
        }
        int const shared = std::min(static_cast<int>(counts.size()), info->GetNumClasses());
        for (int i = 0; i < shared; ++i) {
            counts[static_cast<std::size_t>(i)] += info->GetClassCount(i);
        }
        unweightedCount += info->GetUnweightedCount();
    }
    pooledClsInfo_.SetNumClasses(static_cast<int>(counts.size()));
    for (std::size_t i = 0; i < counts.size(); ++i) {
        pooledClsInfo_.SetClassCount(static_cast<int>(i), counts[i]);
    }
    pooledClsInfo_.SetUnweightedCount(unweightedCount);
    return &pooledClsInfo_;
}

RegInfo* CumulativeNode::GetRegInfo(DataSample sample) {
    if (!isValid_) {
        return nullptr;
    }
    std::vector<double> bins;
    double weightedMeans = 0.0;
    double totalSize = 0.0;
    double count = 0.0;
    double unweightedCount = 0.0;
    for (Node const* const node : nodes_) {
        double const size = node->GetNodeSize(sample);
        auto const* const info = dynamic_cast<RegInfoImp const*>(node->GetRegInfo(sample));
        if (size == 0.0 || info == nullptr) {
            continue;
        }
        weightedMeans += size * info->GetMean();
        totalSize += size;
        if (bins.empty()) {
            bins.resize(static_cast<std::size_t>(info->GetNumBins()), 0.0);
        }
        count += info->GetCount();
        unweightedCount += info->GetUnweightedCount();
        int const shared = std::min(static_cast<int>(bins.size()), info->GetNumBins());
        for (int i = 0; i < shared; ++i) {
            bins[static_cast<std::size_t>(i)] += info->GetBinSize(i);
        }
    }
    RegInfoImp pooled;
    pooled.SetMean(totalSize != 0.0 ? weightedMeans / totalSize : systemMissingValue());
    pooled.SetExtendedStatistic(RegInfoImp::StoreStdDev, systemMissingValue());
    pooled.SetCount(count);
    pooled.SetExtendedStatistic(RegInfoImp::StoreUnweightedCount, unweightedCount);
    pooled.SetNumBins(static_cast<int>(bins.size()));
    for (std::size_t i = 0; i < bins.size(); ++i) {
        pooled.SetBinSize(static_cast<int>(i), bins[i]);
    }
    pooledRegInfo_ = pooled;
    return &pooledRegInfo_;
}

}  // namespace tree_800
