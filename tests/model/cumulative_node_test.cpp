#include "support/tree_builder.h"

#include <tree/cumulative_node.h>

#include <gtest/gtest.h>

namespace tree_800 {
namespace {

using test::Leaf;
using Nodes = std::vector<Node const*>;

std::unique_ptr<NodeImp> RegressionNode(double count, double unweighted, double mean,
                                        std::vector<double> const& bins) {
    auto info = std::make_unique<RegInfoImp>();
    info->SetCount(count);
    info->SetMean(mean);
    info->SetExtendedStatistic(RegInfoImp::StoreUnweightedCount, unweighted);
    info->SetExtendedStatistic(RegInfoImp::StoreStdDev, 1.0);
    info->SetNumBins(static_cast<int>(bins.size()));
    for (int i = 0; i < info->GetNumBins(); ++i) {
        info->SetBinSize(i, bins[static_cast<std::size_t>(i)]);
    }
    auto node = std::make_unique<NodeImp>();
    node->SetRegInfo(info.release(), TrainingSample);
    return node;
}

TEST(CumulativeNodeTest, SumsClassCountsAndSizes) {
    auto const a = Leaf(0, {3.0, 1.0});
    auto const b = Leaf(1, {1.0, 1.0, 5.0});  // more classes than the first
    auto const c = Leaf(1, {2.0});            // fewer
    NodeImp const bare;
    a->GetClsInfoImp(TrainingSample)->SetPercentSize(40.0);
    b->GetClsInfoImp(TrainingSample)->SetPercentSize(25.0);
    c->GetClsInfoImp(TrainingSample)->SetPercentSize(0.0);
    b->GetClsInfoImp(TrainingSample)->SetUnweightedCount(2.0);
    CumulativeNode merged(Nodes{a.get(), b.get(), &bare, c.get()});
    auto const* const info = dynamic_cast<ClsInfoImp*>(merged.GetClsInfo(TrainingSample));
    ASSERT_NE(info, nullptr);
    ASSERT_EQ(info->GetNumClasses(), 2);
    EXPECT_EQ(info->GetClassCount(0), 6.0);
    EXPECT_EQ(info->GetClassCount(1), 2.0);
    EXPECT_EQ(info->GetUnweightedCount(), 2.0);
    EXPECT_EQ(merged.GetNodeSize(TrainingSample), 13.0);
    EXPECT_EQ(merged.GetUnweightedNodeSize(TrainingSample), 2.0);
    EXPECT_EQ(merged.GetPercentageNodeSize(TrainingSample), 65.0);
    EXPECT_EQ(merged.GetNodeSize(static_cast<CumulativeNode::NodeSizeType>(3), TrainingSample),
              0.0);
    a->GetClsInfoImp(TrainingSample)->SetClassCount(0, 10.0);
    merged.GetClsInfo(TrainingSample);
    EXPECT_EQ(info->GetClassCount(0), 13.0) << "every request reads the nodes anew";
    EXPECT_EQ(merged.GetClsInfo(TestSample), info);
    EXPECT_EQ(info->GetNumClasses(), 0) << "no node has test information";
}

TEST(CumulativeNodeTest, PoolsMeansCountsAndBins) {
    auto const empty = RegressionNode(0.0, 9.0, 99.0, {7.0});
    auto const a = RegressionNode(2.0, 1.0, 1.0, {1.0, 1.0});
    auto const b = RegressionNode(6.0, 5.0, 3.0, {4.0, 2.0, 9.0});
    CumulativeNode merged(Nodes{empty.get(), a.get(), b.get()});
    auto const* const info = dynamic_cast<RegInfoImp*>(merged.GetRegInfo(TrainingSample));
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->GetMean(), 2.5);
    EXPECT_EQ(info->GetPrediction(), 2.5);
    EXPECT_EQ(info->GetCount(), 8.0);
    EXPECT_EQ(info->GetUnweightedCount(), 6.0);
    EXPECT_EQ(info->GetStdDev(), systemMissingValue());
    ASSERT_EQ(info->GetNumBins(), 2);
    EXPECT_EQ(info->GetBinSize(0), 5.0);
    EXPECT_EQ(info->GetBinSize(1), 3.0);
    EXPECT_EQ(info->GetMinimum(), GetInfinity()) << "not pooled";
    merged.GetRegInfo(TestSample);
    EXPECT_EQ(info->GetMean(), systemMissingValue()) << "no cases";
    EXPECT_EQ(info->GetNumBins(), 0);
}

TEST(CumulativeNodeTest, TheFirstNodeDecidesValidity) {
    auto const cls = Leaf(0, {1.0});
    auto const reg = RegressionNode(2.0, 2.0, 1.0, {});
    NodeImp testOnly;
    testOnly.SetClsInfo(test::Counts(0, {1.0}).release(), TestSample);
    for (auto const& [nodes, isValid] : {std::pair(Nodes{cls.get(), &testOnly}, true),
                                         {{reg.get(), &testOnly}, true},
                                         {{&testOnly, cls.get()}, false},
                                         {{}, false}}) {
        CumulativeNode merged(nodes);
        EXPECT_EQ(merged.Validate(), isValid);
        EXPECT_EQ(merged.GetClsInfo(TestSample) != nullptr, isValid);
        EXPECT_EQ(merged.GetRegInfo(TestSample) != nullptr, isValid);
        EXPECT_EQ(merged.GetNodeSize(TrainingSample) == systemMissingValue(), !isValid);
    }
}

}  // namespace
}  // namespace tree_800
