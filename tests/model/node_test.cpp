#include "support/equality.h"
#include "support/probe_rule.h"
#include "support/tree_builder.h"

#include <tree/reg_info.h>
#include <tree/split_rule.h>

#include <new>
#include <tuple>

namespace tree_800 {
namespace {

using namespace test;

// An object that knows how many of its kind are alive.
template <typename Base>
class Counted : public Base {
public:
    Counted() { ++alive; }
    Counted(Counted const&) = delete;
    Counted& operator=(Counted const&) = delete;
    ~Counted() override { --alive; }

    static inline int alive = 0;
};

std::unique_ptr<ProbeRule> Probe() { return std::make_unique<ProbeRule>(std::vector<int>{-1, 2}); }

std::unique_ptr<NodeImp> RegressionLeaf(double count) {
    auto info = std::make_unique<RegInfoImp>();
    info->SetCount(count);
    auto leaf = std::make_unique<NodeImp>();
    leaf->SetRegInfo(info.release(), TrainingSample);
    return leaf;
}

// Every part in use, and one slot each of children, competitors and surrogates empty.
std::unique_ptr<NodeImp> RichTree() {
    auto root = Inner(Leaf(0, {8.0, 1.0}), Split(Codes(1, {1, 0}), Leaf(1), RegressionLeaf(4.0)),
                      std::unique_ptr<NodeImp>());
    SetCompetitors(*root, Cut(0, 3.5), std::unique_ptr<NSplitRule>(), Codes(2, {0, 1}));
    SetSurrogates(*root, Codes(1, {0, 1}), std::unique_ptr<NSplitRule>(), Cut(4, 1.5));
    root->SetId(1);
    root->SetClsInfo(Counts(0, {10.0, 7.0}).release(), TrainingSample);
    root->SetClsInfo(Counts(0, {3.0, 2.0}).release(), TestSample);
    root->SetNumPredictors(2);
    double const codes[] = {0.0, 2.0};
    root->SetPredictorRange(0, 1.0, 9.0);
    root->SetPredictorValues(1, codes, 2);
    return root;
}

TEST(Node, EqualityAndClonesCoverEverything) {
    auto const root = RichTree();
    double const others[] = {0.0, 1.0};
    ExpectEqualityCovers<NodeImp>(
        *root,
        {{"fewer children", [](auto& node) { node.RemoveChild(2); }},
         {"filled slot", [](auto& node) { node.SetChild(2, Leaf(0).release()); }},
         {"grandchild", [](auto& node) { node.GetChildImp(1)->GetChildImp(0)->SetId(9); }},
         {"child", [](auto& node) { node.GetChildImp(0)->SetRegInfo(nullptr, TestSample); }},
         {"primary split", [](auto& node) { node.GetCompetitorImp(0)->SetDumbRule(1, 0.5); }},
         {"competitor", [](auto& node) { node.SetCompetitor(2, Codes(3, {0}).release()); }},
         {"surrogate", [](auto& node) { node.GetSurrogateImp(2)->SetDumbRule(1, 0.5); }},
         {"new surrogate", [](auto& node) { node.SetSurrogate(1, Cut(0, 1.0).release()); }},
         {"id", [](auto& node) { node.SetId(2); }},
         {"kind", [](auto& node) { node.SetClassificationNode(false); }},
         {"training sample",
          [](auto& node) { node.GetClsInfoImp(TrainingSample)->SetPrediction(1); }},
         {"test sample", [](auto& node) { node.GetClsInfoImp(TestSample)->SetPrediction(1); }},
         {"high end", [](auto& node) { node.SetPredictorRange(0, 1.0, 8.0); }},
         {"number of values", [](auto& node) { node.SetNumPredictorValues(1, 1); }},
         {"values", [&](auto& node) { node.SetPredictorValues(1, others, 2); }},
         {"missing values", [](auto& node) { node.SetPredictorMissingValueFlag(0, true); }},
         {"number of predictors", [](auto& node) { node.SetNumPredictors(3); }}});
    auto const regression = RegressionLeaf(4.0);
    EXPECT_TRUE(*regression == *CopyOf(*regression));
}

TEST(Node, EqualityLooksAtInformationAndParentsOfThisNodeAlone) {
    for (DataSample const sample : {TrainingSample, TestSample}) {
        NodeImp classified;
        classified.SetClsInfo(new ClsInfoImp, sample);
        EXPECT_TRUE(NodeImp() == classified);
        EXPECT_FALSE(classified == NodeImp());
        NodeImp measured;
        measured.SetRegInfo(new RegInfoImp, sample);
        NodeImp bare;
        bare.SetClassificationNode(false);
        EXPECT_TRUE(bare == measured);
        EXPECT_FALSE(measured == bare);
    }
    auto const root = RichTree();
    auto const twin = RichTree();
    NodeImp const& child = *root->GetChildImp(0);
    EXPECT_TRUE(*CopyOf(child) == child);
    EXPECT_FALSE(child == *CopyOf(child));
    EXPECT_TRUE(child == *twin->GetChildImp(0));
    twin->GetChildImp(1)->GetChildImp(0)->SetId(7);  // elsewhere in the tree around it
    EXPECT_FALSE(child == *twin->GetChildImp(0));
}

class ThrowingRule : public ProbeRule {
public:
    using ProbeRule::ProbeRule;
    SplitRuleImp* Clone() const override { throw std::bad_alloc(); }
};

TEST(Node, AssignmentKeepsThePlaceInTheTreeAndOnAThrowEverything) {
    auto const root = RichTree();
    auto const before = CopyOf(*root);
    NodeImp& inner = *root->GetChildImp(1);
    inner = *root;  // an ancestor
    EXPECT_TRUE(*CopyOf(inner) == *before);
    EXPECT_EQ(inner.GetParent(), root.get());
    EXPECT_EQ(inner.GetChild(0)->GetParent(), &inner);
    EXPECT_EQ(inner.GetChild(1)->GetChild(0)->GetParent(), inner.GetChild(1));
    *root = inner;  // a descendant
    NodeImp const& same = *root;
    *root = same;
    EXPECT_TRUE(*root == *before);
    auto const source = Inner(Split(std::make_unique<ThrowingRule>(std::vector{0})));
    EXPECT_THROW(*root = *source, std::bad_alloc);
    EXPECT_TRUE(*root == *before && *before == *root);
}

TEST(Node, DeletesWhatItOwnsOnce) {
    using Part = Counted<NodeImp>;
    auto const parentOf = [](auto child) {
        auto node = std::make_unique<Part>();
        SetCompetitors(*node, Probe(), Probe());
        SetSurrogates(*node, Probe());
        node->SetNumChildren(2);  // the second slot stays empty
        node->SetChild(0, child.release());
        return node;
    };
    struct {
        char const* name;
        void (*remove)(NodeImp&);
        int children;
        int nodes;
        int rules;
    } const rows[] = {
        {"nothing", [](auto&) {}, 2, 4, 9},
        {"child", [](auto& node) { node.RemoveChild(0); }, 1, 1, 3},
        {"empty child", [](auto& node) { node.RemoveChild(1); }, 1, 4, 9},
        {"no such child", [](auto& node) { node.RemoveChild(-1), node.RemoveChild(2); }, 2, 4, 9},
        {"children", [](auto& node) { EXPECT_TRUE(node.RemoveChildren(true)); }, 0, 1, 2},
        {"all", [](auto& node) { node.Clean(); }, 0, 1, 0},
        {"all by assignment", [](auto& node) { node = NodeImp(); }, 0, 1, 0},
        {"primary split", [](auto& node) { node.SetCompetitor(0, nullptr); }, 2, 4, 8},
        {"surrogate", [](auto& node) { node.SetSurrogate(0, nullptr); }, 2, 4, 8},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        auto root = parentOf(parentOf(parentOf(std::make_unique<Part>())));
        row.remove(*root);
        EXPECT_EQ(root->GetNumChildren(), row.children);
        EXPECT_EQ(Part::alive, row.nodes);
        EXPECT_EQ(ProbeRule::alive, row.rules);
        root.reset();
        EXPECT_EQ(Part::alive + ProbeRule::alive, 0);
    }
}

TEST(Node, SizingAListAndOverwritingAChildForgetWhatWasThere) {
    auto const root = Split(Probe(), Leaf(1));
    SetSurrogates(*root, Probe());
    std::unique_ptr<SplitRuleImp> const primary(root->GetCompetitorImp(0));
    std::unique_ptr<SplitRuleImp> const surrogate(root->GetSurrogateImp(0));
    std::unique_ptr<Node> const first(root->GetChild(0));
    root->SetChild(0, Leaf(2).release());
    std::unique_ptr<Node> const second(root->GetChild(0));
    root->SetNumChildren(3);
    root->SetNumCompetitors(1);
    root->SetNumSurrogates(1);
    EXPECT_EQ(ProbeRule::alive, 2);
    EXPECT_EQ(first->GetAssignment() + second->GetAssignment(), 3.0);
    EXPECT_EQ(root->GetNumChildren(), 3);
    EXPECT_TRUE(root->GetChild(0) == nullptr && root->GetSurrogateImp(0) == nullptr);
    root->SetNumChildren(-1);
    EXPECT_EQ(root->GetNumChildren(), 0);
}

TEST(Node, CleanKeepsIdentityPlaceAndSummaries) {
    auto const root = RichTree();
    for (NodeImp* const node : {root->GetChildImp(1)->GetChildImp(1), root.get()}) {
        auto const kept = [node] {
            return std::tuple(node->IsClassificationNode(), node->GetParent(), node->GetId(),
                              node->GetNumPredictors());
        };
        auto const before = kept();
        node->Clean();
        EXPECT_EQ(kept(), before);
        EXPECT_EQ(node->GetAssignment(), systemMissingValue());
    }
}

TEST(Node, ChildrenMoveUpAndAroundWithTheirRules) {
    auto const node = Inner(Leaf(10), Leaf(11), Leaf(12));
    SetCompetitors(*node, Codes(0, {0, 1, 2}), Codes(1, {0, 1, 2}));
    SetSurrogates(*node, Codes(2, {2, 1, 0}), std::unique_ptr<NSplitRule>());
    auto const predictions = [&node] {
        std::vector<double> all;
        NodeImp const* child = nullptr;
        for (int pos = -1; pos <= 3; ++pos) {
            if (std::as_const(*node).Child(pos, &child)) {
                all.push_back(child->GetAssignment());
            }
        }
        return all;
    };
    node->ReorderSiblings({2, 0, 1});
    EXPECT_EQ(predictions(), (std::vector<double>{11, 12, 10}));
    EXPECT_EQ(node->GetCompetitorImp(0)->Compare(*Codes(0, {2, 0, 1})), 0);
    EXPECT_EQ(node->GetCompetitorImp(1)->Compare(*Codes(1, {0, 1, 2})), 0);
    EXPECT_EQ(node->GetSurrogateImp(0)->Compare(*Codes(2, {1, 0, 2})), 0);
    node->RemoveChild(1);
    EXPECT_EQ(predictions(), (std::vector<double>{11, 10}));
    EXPECT_EQ(node->GetCompetitorImp(0)->Classify(0.0), 2);  // rules are not renumbered
    NodeImp* out = nullptr;
    EXPECT_TRUE(node->Child(1, &out) && out == node->GetChild(1));
    EXPECT_FALSE(node->Child(2, &out) || node->Child(-1, &out));
    EXPECT_EQ(node->GetChild(2), nullptr);
}

TEST(Node, InformationOfOneKindReplacesTheOther) {
    using Cls = Counted<ClsInfoImp>;
    using Reg = Counted<RegInfoImp>;
    constexpr auto OtherSample = static_cast<DataSample>(7);
    NodeImp node;
    for (DataSample const sample : {TrainingSample, TestSample}) {
        node.SetClsInfo(new Cls, TrainingSample);
        node.SetClsInfo(new Cls, TestSample);
        node.SetClsInfo(new Cls, OtherSample);  // is the test sample
        EXPECT_EQ(node.GetClsInfo(TestSample), node.GetClsInfo(OtherSample));
        EXPECT_EQ(Cls::alive, 2);
        node.SetRegInfo(new Reg, sample);
        EXPECT_FALSE(node.IsClassificationNode());
        EXPECT_EQ(Cls::alive, 0);
        node.SetRegInfo(new Reg, TrainingSample);
        node.SetRegInfo(new Reg, TestSample);
        node.SetClassificationNode(true);  // the flag alone
        EXPECT_EQ(Reg::alive, 2);
        node.SetClassificationNode(false);
        node.SetClsInfo(nullptr, sample);
        EXPECT_TRUE(node.IsClassificationNode());
        EXPECT_EQ(Reg::alive, 0);
    }
}

TEST(Node, SizesAndAssignmentComeFromTheKindOfTheNode) {
    NodeImp node;
    for (bool const isClassification : {true, false}) {
        node.SetClassificationNode(isClassification);
        EXPECT_EQ(node.GetAssignment(), systemMissingValue());
        EXPECT_EQ(node.GetNodeSize(TrainingSample), 0.0);
        EXPECT_EQ(node.GetUnweightedNodeSize(TrainingSample), 0.0);
        EXPECT_EQ(node.GetPercentageNodeSize(TrainingSample), 0.0);
    }
    node.SetClsInfo(Counts(3, {}).release(), TrainingSample);
    node.SetClsInfo(Counts(1, {2.0, 3.0}).release(), TestSample);
    EXPECT_EQ(node.GetPercentageNodeSize(TestSample), systemMissingValue());
    node.GetClsInfoImp(TestSample)->SetUnweightedCount(4.0);
    EXPECT_EQ(node.GetNodeSize(TestSample), 5.0);
    EXPECT_EQ(node.GetUnweightedNodeSize(TestSample), 4.0);
    EXPECT_EQ(node.GetAssignment(), 3.0);  // that of the training sample

    double const rootSizeAndShare[][2] = {{8.0, 0.25}, {0.0, 0.0}, {-4.0, -4.0}};
    for (auto const& [size, share] : rootSizeAndShare) {
        auto root = RegressionLeaf(size);
        root->SetNumChildren(1);
        SetChild(*root, 0, Inner(RegressionLeaf(2.0)));
        NodeImp const& leaf = *root->GetChildImp(0)->GetChildImp(0);
        RegInfoImp& info = *leaf.GetRegInfoImp(TrainingSample);
        info.SetExtendedStatistic(RegInfoImp::StorePrediction, 2.5);
        info.SetExtendedStatistic(RegInfoImp::StoreUnweightedCount, 3.0);
        EXPECT_EQ(leaf.GetAssignment(), 2.5);
        EXPECT_EQ(leaf.GetUnweightedNodeSize(TrainingSample), 3.0);
        EXPECT_EQ(leaf.GetPercentageNodeSize(TrainingSample), share);
        EXPECT_EQ(leaf.GetPercentageNodeSize(TestSample), 0.0);
    }
}

TEST(Node, RulesAreFoundAndHandedOutAsCopies) {
    NodeImp node;
    EXPECT_EQ(node.GetBiggestChildPos(), -1);
    SetCompetitors(node, Cut(4, 1.0), std::unique_ptr<OSplitRule>(), Cut(2, 1.0), Cut(2, 5.0));
    SetSurrogates(node, std::unique_ptr<OSplitRule>(), Cut(1, 1.0));
    node.GetCompetitorImp(0)->SetDumbRule(1, 0.5);
    EXPECT_EQ(node.GetBiggestChildPos(), 1);
    EXPECT_EQ(node.FindCompetitorPos(4), 0);
    EXPECT_EQ(node.FindCompetitorPos(2), 2);
    EXPECT_EQ(node.FindCompetitorPos(1), -1);  // surrogates do not count
    std::unique_ptr<SplitRule> const competitor(node.GetCompetitor(3));
    SplitRuleImp const* const copy = *competitor;
    EXPECT_EQ(copy->Compare(*Cut(2, 5.0)), 0);
    EXPECT_NE(copy, node.GetCompetitorImp(3));
    EXPECT_EQ(std::unique_ptr<SplitRule>(node.GetSurrogate(1))->GetPredictorIndex(), 1);
    EXPECT_TRUE(node.GetCompetitor(1) == nullptr && node.GetCompetitor(4) == nullptr);
    EXPECT_TRUE(node.GetSurrogate(0) == nullptr && node.GetSurrogate(2) == nullptr);
}

TEST(Node, SummariesAreReadByIndex) {
    auto const node = RichTree();
    double low = -7.0;
    double high = -7.0;
    double values[] = {-7.0, -7.0, -7.0};
    int n = -7;
    bool missing = true;
    for (int const outside : {-1, 2}) {
        EXPECT_FALSE(node->GetPredictorRange(outside, &low, &high));
        EXPECT_FALSE(node->GetNumPredictorValues(outside, &n));
        EXPECT_FALSE(node->GetPredictorValues(outside, values, 0));
        EXPECT_FALSE(node->GetPredictorMissingValueFlag(outside, &missing));
    }
    EXPECT_FALSE(node->GetPredictorValues(1, values, 3) || node->GetPredictorValues(1, values, -1));
    EXPECT_TRUE(low == -7.0 && high == -7.0 && n == -7 && missing && values[0] == -7.0);
    node->SetNumPredictorValues(1, 3);  // keeps the first two
    EXPECT_TRUE(node->GetPredictorValues(1, values, 3));
    EXPECT_TRUE(values[0] == 0.0 && values[1] == 2.0 && values[2] == 0.0);
    node->SetPredictorValues(1, values + 1, 1);
    node->SetNumPredictors(3);  // keeps the first two
    EXPECT_TRUE(node->GetNumPredictorValues(1, &n) && n == 1);
    EXPECT_TRUE(node->GetPredictorMissingValueFlag(2, &missing) && !missing);
    EXPECT_TRUE(node->GetPredictorRange(2, &low, &high) && low == 0.0 && high == 0.0);
    node->SetNumPredictorValues(1, -1);
    EXPECT_TRUE(node->GetNumPredictorValues(1, &n) && n == 0);
}

}  // namespace
}  // namespace tree_800
