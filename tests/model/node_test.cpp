#include "support/equality.h"
#include "support/probe_rule.h"
#include "support/tree_builder.h"

#include <tree/reg_info.h>
#include <tree/split_rule.h>

#include <new>

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
    auto root = Split(Cut(0, 3.5), Leaf(0, {8.0, 1.0}),
                      Split(Codes(1, {1, 0}), Leaf(1, {1.0, 2.0}), RegressionLeaf(4.0)),
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

// Every child knows its parent.
void ExpectLinked(NodeImp const& node) {
    for (unsigned int pos = 0; static_cast<int>(pos) < node.GetNumChildren(); ++pos) {
        if (NodeImp const* const child = node.GetChildImp(pos)) {
            EXPECT_EQ(child->GetParent(), &node);
            ExpectLinked(*child);
        }
    }
}

TEST(Node, EqualityAndClonesCoverEverything) {
    auto const root = RichTree();
    ExpectEqualityCovers<NodeImp>(
        *root,
        {{"fewer children", [](auto& node) { node.RemoveChild(2); }},
         {"filled slot", [](auto& node) { node.SetChild(2, Leaf(0).release()); }},
         {"grandchild", [](auto& node) { node.GetChildImp(1)->GetChildImp(0)->SetId(9); }},
         {"its information",
          [](auto& node) {
              node.GetChildImp(1)->GetChildImp(1)->GetRegInfoImp(TrainingSample)->SetMean(2.0);
          }},
         {"order of children",
          [](auto& node) {
              node.ReorderSiblings({1, 0, 2});
          }},
         {"primary split", [](auto& node) { node.GetCompetitorImp(0)->SetDumbRule(1, 0.5); }},
         {"competitor", [](auto& node) { node.SetCompetitor(2, Codes(3, {0}).release()); }},
         {"no competitor", [](auto& node) { node.SetCompetitor(2, nullptr); }},
         {"surrogate", [](auto& node) { node.GetSurrogateImp(2)->SetDumbRule(1, 0.5); }},
         {"new surrogate", [](auto& node) { node.SetSurrogate(1, Cut(0, 1.0).release()); }},
         {"id", [](auto& node) { node.SetId(2); }},
         {"kind", [](auto& node) { node.SetClassificationNode(false); }},
         {"training sample",
          [](auto& node) { node.GetClsInfoImp(TrainingSample)->SetPrediction(1); }},
         {"test sample", [](auto& node) { node.GetClsInfoImp(TestSample)->SetPrediction(1); }},
         {"low end", [](auto& node) { node.SetPredictorRange(0, 0.0, 9.0); }},
         {"high end", [](auto& node) { node.SetPredictorRange(0, 1.0, 8.0); }},
         {"number of values", [](auto& node) { node.SetNumPredictorValues(1, 1); }},
         {"values",
          [](auto& node) {
              node.SetPredictorValues(1, std::vector{0.0, 1.0}.data(), 2);
          }},
         {"missing values", [](auto& node) { node.SetPredictorMissingValueFlag(0, true); }},
         {"number of predictors", [](auto& node) { node.SetNumPredictors(3); }}});
    ExpectLinked(*CopyOf(*root));
    EXPECT_EQ(CopyOf(*root->GetChildImp(1))->GetParent(), nullptr);
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

TEST(Node, AssignmentKeepsThePlaceInTheTree) {
    auto const root = RichTree();
    auto const before = CopyOf(*root);
    NodeImp& inner = *root->GetChildImp(1);
    inner = *root;  // an ancestor
    EXPECT_TRUE(*CopyOf(inner) == *before);
    ExpectLinked(*root);
    *root = inner;  // a descendant
    NodeImp const& same = *root;
    *root = same;
    EXPECT_TRUE(*root == *before);
    ExpectLinked(*root);
}

class ThrowingRule : public ProbeRule {
public:
    using ProbeRule::ProbeRule;
    SplitRuleImp* Clone() const override { throw std::bad_alloc(); }
};

TEST(Node, AssignmentThatThrowsChangesNothing) {
    auto const target = RichTree();
    auto const before = CopyOf(*target);
    auto const source =
        Split(Probe(), Split(std::make_unique<ThrowingRule>(std::vector{0})), Leaf(1));
    EXPECT_THROW(*target = *source, std::bad_alloc);
    EXPECT_TRUE(*target == *before);
    EXPECT_TRUE(*before == *target);
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
        int nodes;
        int rules;
    } const rows[] = {
        {"nothing", [](auto&) {}, 4, 9},
        {"child", [](auto& node) { node.RemoveChild(0); }, 1, 3},
        {"empty child", [](auto& node) { node.RemoveChild(1); }, 4, 9},
        {"no such child", [](auto& node) { node.RemoveChild(-1), node.RemoveChild(2); }, 4, 9},
        {"children", [](auto& node) { EXPECT_TRUE(node.RemoveChildren(true)); }, 1, 2},
        {"children, false", [](auto& node) { EXPECT_TRUE(node.RemoveChildren(false)); }, 1, 2},
        {"all", [](auto& node) { node.Clean(); }, 1, 0},
        {"all by assignment", [](auto& node) { node = NodeImp(); }, 1, 0},
        {"primary split", [](auto& node) { node.SetCompetitor(0, nullptr); }, 4, 8},
        {"surrogate", [](auto& node) { node.SetSurrogate(0, Cut(0, 1.0).release()); }, 4, 8},
    };
    for (auto const& row : rows) {
        auto root = parentOf(parentOf(parentOf(std::make_unique<Part>())));
        row.remove(*root);
        EXPECT_EQ(Part::alive, row.nodes) << row.name;
        EXPECT_EQ(ProbeRule::alive, row.rules) << row.name;
        root.reset();
        EXPECT_EQ(Part::alive + ProbeRule::alive, 0) << row.name;
    }
}

TEST(Node, SizingAListAndOverwritingAChildForgetWhatWasThere) {
    auto const root = Split(Probe(), Leaf(0), Leaf(1));
    SetSurrogates(*root, Probe());
    std::unique_ptr<Node> const children[] = {std::unique_ptr<Node>(root->GetChild(0)),
                                              std::unique_ptr<Node>(root->GetChild(1))};
    std::unique_ptr<SplitRuleImp> const primary(root->GetCompetitorImp(0));
    std::unique_ptr<SplitRuleImp> const surrogate(root->GetSurrogateImp(0));
    root->SetChild(0, Leaf(2).release());
    std::unique_ptr<Node> const third(root->GetChild(0));
    root->SetNumChildren(3);
    root->SetNumCompetitors(1);
    root->SetNumSurrogates(2);
    EXPECT_EQ(ProbeRule::alive, 2);
    EXPECT_EQ(children[0]->GetAssignment() + children[1]->GetAssignment(), 1.0);
    EXPECT_EQ(third->GetAssignment(), 2.0);
    for (unsigned int pos = 0; pos < 3; ++pos) {
        EXPECT_EQ(root->GetChild(pos), nullptr);
    }
    EXPECT_EQ(root->GetCompetitorImp(0), nullptr);
    EXPECT_EQ(root->GetSurrogateImp(1), nullptr);
    root->SetNumChildren(-1);
    EXPECT_EQ(root->GetNumChildren(), 0);
}

TEST(Node, CleanKeepsIdentityPlaceAndSummaries) {
    auto const root = Split(Cut(0, 1.0), RegressionLeaf(2.0));
    NodeImp& leaf = *root->GetChildImp(0);
    leaf.SetId(5);
    leaf.SetNumPredictors(2);
    leaf.Clean();
    EXPECT_EQ(leaf.GetRegInfo(TrainingSample), nullptr);
    EXPECT_EQ(leaf.GetParent(), root.get());
    EXPECT_EQ(leaf.GetId(), 5U);
    EXPECT_EQ(leaf.GetNumPredictors(), 2U);
    EXPECT_FALSE(leaf.IsClassificationNode());
}

TEST(Node, ChildrenMoveUpAndAroundWithTheirRules) {
    auto const node = Split(Codes(0, {0, 1, 2}), Leaf(10), Leaf(11), Leaf(12));
    SetCompetitors(*node, Codes(0, {0, 1, 2}), Codes(1, {0, 1, 2}));
    SetSurrogates(*node, Codes(2, {2, 1, 0}), std::unique_ptr<NSplitRule>());
    node->GetCompetitorImp(0)->SetDumbRule(0, 0.5);
    auto const predictions = [&node] {
        std::vector<double> all;
        NodeImp const* child = nullptr;
        for (int pos = -1; pos <= 3; ++pos) {
            if (std::as_const(*node).Child(pos, &child)) {
                EXPECT_EQ(child, node->GetChild(static_cast<unsigned int>(pos)));
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
    EXPECT_EQ(node->GetBiggestChildPos(), 2);
    node->RemoveChild(1);
    EXPECT_EQ(predictions(), (std::vector<double>{11, 10}));
    EXPECT_EQ(node->GetCompetitorImp(0)->Classify(0.0), 2);  // rules are not renumbered
    NodeImp* out = node.get();
    EXPECT_FALSE(node->Child(2, &out) || node->Child(-1, &out));
    EXPECT_EQ(out, node.get());
    EXPECT_TRUE(node->Child(1, &out));
    EXPECT_EQ(out, node->GetChild(1));
    EXPECT_EQ(node->GetChild(2), nullptr);
}

TEST(Node, InformationOfOneKindReplacesTheOther) {
    using Cls = Counted<ClsInfoImp>;
    using Reg = Counted<RegInfoImp>;
    for (DataSample const sample : {TrainingSample, TestSample, static_cast<DataSample>(7)}) {
        NodeImp node;
        for (DataSample const each : {TrainingSample, TestSample, sample}) {
            node.SetClsInfo(new Cls, each);
        }
        EXPECT_EQ(Cls::alive, 2);
        node.SetRegInfo(new Reg, sample);
        EXPECT_FALSE(node.IsClassificationNode());
        EXPECT_EQ(Cls::alive, 0);
        for (DataSample const each : {TrainingSample, TestSample, sample}) {
            node.SetRegInfo(new Reg, each);
        }
        EXPECT_EQ(Reg::alive, 2);
        node.SetClassificationNode(true);  // the flag alone
        EXPECT_EQ(node.GetRegInfo(sample), node.GetRegInfoImp(sample));
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
    auto test = Counts(1, {2.0, 3.0});
    test->SetUnweightedCount(4.0);
    test->SetPercentSize(12.5);
    node.SetClsInfo(test.release(), TestSample);
    node.SetClsInfo(Counts(3, {}).release(), TrainingSample);
    EXPECT_EQ(node.GetNodeSize(TestSample), 5.0);
    EXPECT_EQ(node.GetUnweightedNodeSize(TestSample), 4.0);
    EXPECT_EQ(node.GetPercentageNodeSize(TestSample), 12.5);
    EXPECT_EQ(node.GetAssignment(), 3.0);  // that of the training sample

    auto const root = Split(Cut(0, 1), Split(Cut(0, 0), RegressionLeaf(2.0)));
    NodeImp const& leaf = *root->GetChildImp(0)->GetChildImp(0);
    RegInfoImp& info = *leaf.GetRegInfoImp(TrainingSample);
    info.SetExtendedStatistic(RegInfoImp::StorePrediction, 2.5);
    info.SetExtendedStatistic(RegInfoImp::StoreUnweightedCount, 3.0);
    EXPECT_EQ(leaf.GetAssignment(), 2.5);
    EXPECT_EQ(leaf.GetUnweightedNodeSize(TrainingSample), 3.0);
    double const rootSizeAndShare[][2] = {{8.0, 0.25}, {0.0, 0.0}, {-4.0, -4.0}};
    for (auto const& [size, share] : rootSizeAndShare) {
        root->SetRegInfo(CopyOf(*RegressionLeaf(size)->GetRegInfoImp(TrainingSample)).release(),
                         TrainingSample);
        EXPECT_EQ(leaf.GetPercentageNodeSize(TrainingSample), share);
        EXPECT_EQ(leaf.GetPercentageNodeSize(TestSample), 0.0);
    }
}

TEST(Node, RulesAreFoundAndHandedOutAsCopies) {
    auto const node = RichTree();
    SetCompetitors(*node, Cut(4, 1.0), std::unique_ptr<OSplitRule>(), Cut(2, 1.0), Cut(2, 5.0));
    EXPECT_EQ(node->FindCompetitorPos(4), 0);
    EXPECT_EQ(node->FindCompetitorPos(2), 2);
    EXPECT_EQ(node->FindCompetitorPos(1), -1);  // surrogates do not count
    EXPECT_EQ(NodeImp().FindCompetitorPos(0), -1);
    EXPECT_EQ(NodeImp().GetBiggestChildPos(), -1);
    std::unique_ptr<SplitRule> const competitor(node->GetCompetitor(3));
    SplitRuleImp const* const copy = *competitor;
    EXPECT_EQ(copy->Compare(*Cut(2, 5.0)), 0);
    EXPECT_NE(copy, node->GetCompetitorImp(3));
    std::unique_ptr<SplitRule> const surrogate(node->GetSurrogate(2));
    EXPECT_EQ(surrogate->GetPredictorIndex(), 4);
    EXPECT_TRUE(node->GetCompetitor(1) == nullptr && node->GetCompetitor(4) == nullptr);
    EXPECT_TRUE(node->GetSurrogate(1) == nullptr && node->GetSurrogate(3) == nullptr);
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
    EXPECT_FALSE(node->GetPredictorValues(1, values, 3));
    EXPECT_FALSE(node->GetPredictorValues(1, values, -1));
    EXPECT_TRUE(low == -7.0 && high == -7.0 && n == -7 && missing && values[0] == -7.0);
    node->SetNumPredictorValues(1, 3);
    EXPECT_TRUE(node->GetPredictorValues(1, values, 2));
    EXPECT_TRUE(values[0] == 0.0 && values[1] == 2.0 && values[2] == -7.0);
    EXPECT_TRUE(node->GetPredictorValues(1, values, 3));
    EXPECT_EQ(values[2], 0.0);
    node->SetPredictorValues(1, values + 1, 1);
    node->SetPredictorRange(1, 5.0, 1.0);
    node->SetNumPredictors(3);  // keeps the first two
    EXPECT_TRUE(node->GetNumPredictorValues(1, &n) && n == 1);
    EXPECT_TRUE(node->GetPredictorRange(1, &low, &high) && low == 5.0 && high == 1.0);
    EXPECT_TRUE(node->GetPredictorMissingValueFlag(2, &missing) && !missing);
    EXPECT_TRUE(node->GetPredictorRange(2, &low, &high) && low == 0.0 && high == 0.0);
    node->SetNumPredictorValues(1, -1);
    EXPECT_TRUE(node->GetNumPredictorValues(1, &n) && n == 0);
}

}  // namespace
}  // namespace tree_800
