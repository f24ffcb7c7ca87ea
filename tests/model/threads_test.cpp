#include "support/finished_algorithm.h"
#include "support/tree_builder.h"

#include <tree/tree.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

// Run under a thread sanitizer: what races is reported there. Elsewhere the threads must agree.

namespace tree_800 {
namespace {

using namespace test;

constexpr int NumThreads = 4;
constexpr int NumRounds = 50;

/// Every thread does the same; all must come to the same text.
void ExpectAgreement(std::function<std::string()> const& work) {
    std::vector<std::string> texts(NumThreads);
    std::vector<std::thread> threads;
    threads.reserve(NumThreads);
    for (std::string& text : texts) {
        threads.emplace_back([&] {
            for (int round = 0; round < NumRounds; ++round) {
                text = work();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::string const& text : texts) {
        EXPECT_EQ(text, texts.front());
        EXPECT_FALSE(text.empty());
    }
}

std::unique_ptr<NodeImp> MakeTree() {
    auto regression = std::make_unique<NodeImp>();
    regression->SetRegInfo(new RegInfoImp, TrainingSample);
    auto root = Split(Cut(0, 3.5), Leaf(0, {3.0, 1.0}),
                      Split(Codes(1, {0, 1}), Leaf(1, {0.0, 2.0}), std::move(regression)));
    root->SetClsInfo(Counts(0, {3.0, 3.0}).release(), TrainingSample);
    SetSurrogates(*root, Codes(1, {1, 0}));
    root->GetCompetitorImp(0)->SetDumbRule(1, 0.6);
    double const values[] = {0.0, 1.0};
    root->SetNumPredictors(1);
    root->SetPredictorValues(0, values, 2);
    return root;
}

void PutRule(std::ostream& out, SplitRule const* made) {
    if (std::unique_ptr<SplitRule const> const handle{made}) {
        std::unique_ptr<ValueSet> const values(handle->GetMappedValues(0));
        SplitRule copy(*handle);
        copy = *handle;
        out << copy.GetNumChildren() << values->Contains(1.0) << copy.HasStatistic(StatisticSlot0);
    }
}

void PutNode(std::ostream& out, Node const& node) {
    double values[2] = {};
    node.GetPredictorValues(0, values, 2);
    out << node.GetId() << (node.GetParent() != nullptr) << node.GetBiggestChildPos()
        << node.GetAssignment() << node.GetNodeSize(TrainingSample) << values[1]
        << node.GetUnweightedNodeSize(TrainingSample) << node.GetPercentageNodeSize(TrainingSample);
    PutRule(out, node.GetCompetitor(0));
    PutRule(out, node.GetSurrogate(0));
    if (ClsInfo const* const info = node.GetClsInfo(TrainingSample)) {
        out << info->GetClassPercent(0) << info->GetClassProbability(0);
    }
    if (RegInfo const* const info = node.GetRegInfo(TrainingSample)) {
        out << info->GetStdDev() << info->GetMean();
    }
}

/// Everything that can be asked of a tree that others read at the same time.
std::string Read(FinishedAlgorithm const& run) {
    auto const& root = dynamic_cast<NodeImp const&>(*run.GetRoot());
    std::ostringstream out;
    std::vector<Node const*> nodes;
    PrefixNodeIterator walk(&root);
    while (Node const* const node = walk.Next()) {
        PutNode(out, *node);
        nodes.push_back(node);
    }
    for (double const first : {1.0, 7.0, systemMissingValue()}) {
        double const row[] = {first, 1.0};
        out << root.DropObservationThroughTree(row, nullptr)->GetAssignment();
    }
    CumulativeNode sum(nodes);
    out << sum.GetNodeSize(TrainingSample) << sum.GetClsInfo(TrainingSample)->GetClassCount(1);
    std::unique_ptr<NodeImp> const clone(root.Clone());
    out << (*clone == root);
    out << TreeStatisticsImp(run, 0.5, 0.1, NoValidation);
    return out.str();
}

TEST(ThreadsTest, ManyReadOneTree) {
    FinishedAlgorithm const run(MakeTree());
    ExpectAgreement([&run] { return Read(run); });
}

TEST(ThreadsTest, ManyRouteByOneRouter) {
    auto const root = MakeTree();
    auto const router = TreeRouter::Compile(*root, nullptr);
    ExpectAgreement([&router] {
        double const rows[][2] = {{1.0, 1.0}, {7.0, 0.0}, {7.0, 1.0}, {systemMissingValue(), 1.0}};
        int leaves[4] = {};
        router->RouteToLeaves(RowBatch::RowMajor(rows[0], 4, 2), leaves);
        std::string text;
        for (int const leaf : leaves) {
            text += std::to_string(leaf);
        }
        return text;
    });
}

TEST(ThreadsTest, EachHasItsOwnTree) {
    ExpectAgreement([] {
        auto root = MakeTree();
        root->ReorderSiblings({1, 0});
        root->RemoveChild(0);
        *root = *MakeTree();
        root->SetNumPredictors(2);
        return Read(FinishedAlgorithm(std::move(root)));
    });
}

TEST(ThreadsTest, EachHasItsOwnSettings) {
    CoreSettingsImp core;
    core.AddPredictor();
    CCartSettingsImp const shared(core);
    ExpectAgreement([&shared] {
        std::unique_ptr<AlgSettings> const own(shared.Clone());
        auto& cart = dynamic_cast<CCartSettingsImp&>(*own);
        cart.GetPriors()->Set(1, 0.5);
        cart.GetPriors()->AlterValues(true);
        cart.GetCost()->Set(1, 0, 3.0);
        dynamic_cast<PriorsImp*>(cart.GetPriors())->ComputeAltered(*cart.GetCost());
        cart.CopyFrom(shared);
        GainsSettings gains;
        gains.SetCategoryProfit(3, 1.0);
        return std::to_string(cart.GetMaxNumSurrogates() + gains.GetNumCategories());
    });
}

}  // namespace
}  // namespace tree_800
