#include "support/random.h"
#include "support/tree_builder.h"

#include <tree/node_iterator.h>
#include <tree/tree_router.h>
#include <tree/value_set.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace tree_800 {
namespace {

using namespace test;

constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr int NumPredictors = 9;

// A rule of a caller's own kind, now and then out of bounds.
class FoldingRule : public OSplitRule {
public:
    FoldingRule(int predictor, int numChildren)
        : OSplitRule(systemMissingValue(), predictor), numChildren_(numChildren) {}
    SplitRuleImp* Clone() const override { return new FoldingRule(*this); }
    int GetNumChildren() const override { return numChildren_; }
    int Classify(double value) const override {
        return std::isfinite(value) ? static_cast<int>(std::fmod(value, 5.0)) - 1 : -7;
    }

private:
    int numChildren_;
};

// Values around which a rule changes its mind are kept: rows are made of them.
class RandomTrees {
public:
    explicit RandomTrees(Random& random) : random_(random) {}

    std::unique_ptr<NodeImp> Tree(int depth) {
        static int const widths[] = {2, 2, 2, 2, 1, 3, 5, 140};
        auto node = std::make_unique<NodeImp>();
        if (depth == 0 || random_.OneIn(8)) {
            SetSurrogates(*node, Rule(1));  // a leaf's rules do not count
            return node;
        }
        int const n = widths[random_.Between(0, 7)];
        SetCompetitors(*node, Rule(n));
        node->GetCompetitorImp(0)->SetDumbRule(random_.Between(-1, n - 1), 0.5);
        node->SetNumSurrogates(static_cast<unsigned>(random_.Between(0, 3)));
        for (unsigned i = 0; i < node->GetNumSurrogates(); ++i) {
            node->SetSurrogate(i, random_.OneIn(8) ? nullptr : Rule(n).release());
        }
        node->SetNumChildren(n);
        for (int pos = 0; pos < n; ++pos) {
            SetChild(*node, pos, Tree(n > 5 ? 0 : depth - 1));
        }
        return node;
    }

    double Value() {
        if (random_.OneIn(6)) {
            return systemMissingValue();
        }
        auto const last = static_cast<int>(values.size()) - 1;
        double const value = values[static_cast<std::size_t>(random_.Between(0, last))];
        return random_.OneIn(3) ? std::nextafter(value, random_.OneIn(2) ? Inf : -Inf) : value;
    }

    std::vector<double> values{-0.0,  0.0, 1.0,  2.5,          7.0, -3.0,
                               1e300, Inf, -Inf, std::nan(""), -9.0};

private:
    std::unique_ptr<SplitRuleImp> Rule(int numChildren) {
        int const predictor = random_.Between(0, NumPredictors - 1);
        std::unique_ptr<SplitRuleImp> rule;
        if (random_.OneIn(6)) {
            rule = std::make_unique<FoldingRule>(predictor, numChildren);
        } else if (random_.OneIn(4)) {
            auto codes = std::make_unique<NSplitRule>(predictor, 2);
            for (int code = random_.Between(0, 9); code >= 0; --code) {
                codes->SetCatMapping(code, random_.Between(-1, numChildren - 1));
            }
            rule = std::move(codes);
        } else {
            rule = Intervals(predictor, numChildren);
        }
        if (random_.OneIn(3) && rule->GetNumChildren() > 0) {
            rule->AddMissingValueMapping(rule->GetNumChildren() < numChildren);
        }
        return rule;
    }

    // One cut point more often than not, intervals going to any child or none, the odd
    // missing-value code.
    std::unique_ptr<SplitRuleImp> Intervals(int predictor, int numChildren) {
        double const codes[] = {systemMissingValue(), systemMissingValue(), -9.0, 0.0,
                                std::nan("")};
        auto rule = std::make_unique<OSplitRule>(codes[random_.Between(0, 4)], predictor);
        std::vector<int> children{random_.Between(0, numChildren - 1)};
        double end = random_.Between(-4, 4);
        for (int i = random_.OneIn(3) ? random_.Between(0, 5) : 1; i > 0; --i) {
            rule->InsertCutPoint(OValueSet(end - 1.0, end), false);
            values.push_back(end);
            end += 1.0;
            children.push_back(random_.Between(random_.OneIn(9) ? -2 : 0, numChildren - 1));
        }
        if (!random_.OneIn(9)) {  // otherwise nothing places the high values
            OValueSet above(end - 1.0, end);
            above.SetBoundedRight(false);
            rule->AddMappedValues(above);
        }
        if (rule->IsValid()) {
            children.resize(static_cast<std::size_t>(rule->GetNumChildren()), 0);
            rule->ReorderMappings(children);
        }
        if (random_.OneIn(5)) {
            rule->SetCutPoint(3.5);  // which may leave the cut points out of order
        }
        if (rule->GetNumChildren() > numChildren) {
            return Codes(predictor, {0, -1, 0});
        }
        return rule;
    }

    Random& random_;
};

std::vector<NodeImp const*> LeavesOf(NodeImp const& root) {
    std::vector<NodeImp const*> leaves;
    PrefixNodeIterator walk(&root);
    while (Node const* const node = walk.Next()) {
        if (node->GetNumChildren() == 0) {
            leaves.push_back(dynamic_cast<NodeImp const*>(node));
        }
    }
    return leaves;
}

// Rows, in both layouts with room between, must end where routing through the nodes ends.
void ExpectRoutesLikeTheTree(NodeImp const& root, TreeRouter const& router,
                             std::vector<double> const& rowMajor, std::size_t stride) {
    std::size_t const numRows = rowMajor.size() / stride;
    std::vector<double> columns(stride * (numRows + 3));
    std::vector<NodeImp const*> const leaves = LeavesOf(root);
    std::vector<NodeImp const*> nodes(numRows + 1);  // the last stays as it is
    std::vector<int> numbers(numRows + 1, 77);
    ASSERT_EQ(static_cast<std::size_t>(router.GetNumLeaves()), leaves.size());
    for (std::size_t row = 0; row < numRows; ++row) {
        double const* const obs = &rowMajor[row * stride];
        nodes[row] = root.DropObservationThroughTree(obs, nullptr);
        numbers[row] = router.RouteToLeaf(obs);
        ASSERT_EQ(router.Route(obs), nodes[row]);
        ASSERT_EQ(numbers[row] >= 0, nodes[row]->GetNumChildren() == 0);
        if (numbers[row] >= 0) {
            ASSERT_EQ(leaves[static_cast<std::size_t>(numbers[row])], nodes[row]);
            ASSERT_EQ(router.GetLeaf(numbers[row]), nodes[row]);
        }
        for (std::size_t p = 0; p < stride; ++p) {
            columns[p * (numRows + 3) + row] = obs[p];
        }
    }
    for (RowBatch const& batch : {RowBatch::RowMajor(rowMajor.data(), numRows, stride),
                                  RowBatch::ColumnMajor(columns.data(), numRows, numRows + 3)}) {
        std::vector<NodeImp const*> batchNodes(numRows + 1);
        std::vector<int> batchNumbers(numRows + 1, 77);
        router.Route(batch, batchNodes.data());
        router.RouteToLeaves(batch, batchNumbers.data());
        ASSERT_EQ(batchNodes, nodes);
        ASSERT_EQ(batchNumbers, numbers);
    }
}

TEST(TreeRouter, AgreesWithTheNodesOnRandomTreesAndRows) {
    Random random;
    for (int run = 0; run < 400; ++run) {
        RandomTrees trees(random);
        auto const root = trees.Tree(random.Between(0, 5));
        std::vector<double> rows(static_cast<std::size_t>(random.Between(0, 60)) *
                                 (NumPredictors + 1));
        std::generate(rows.begin(), rows.end(), [&trees] { return trees.Value(); });
        std::vector<TreeProblem> problems{{{}, "of a former check"}};
        auto const router = TreeRouter::Compile(*root, &problems);
        ASSERT_TRUE(router != nullptr && problems.empty());
        EXPECT_LE(router->GetNumPredictors(), NumPredictors);
        ExpectRoutesLikeTheTree(*root, *router, rows, NumPredictors + 1);
        ASSERT_FALSE(HasFailure()) << "run " << run;
    }
}

// Tables of more than 8 MiB are walked in another way.
TEST(TreeRouter, AgreesWithTheNodesOfALargeTree) {
    Random random;
    auto root = std::make_unique<NodeImp>();
    for (int depth = 0; depth < 19; ++depth) {
        std::unique_ptr<NodeImp> twin(root->Clone());
        root = Split(Cut(depth % NumPredictors, random.Between(0, 100)), std::move(root),
                     std::move(twin));
    }
    std::vector<double> rows(std::size_t{200} * NumPredictors);
    std::generate(rows.begin(), rows.end(), [&random] { return random.Between(0, 100); });
    rows[3] = systemMissingValue();  // nothing places it: its walk ends at an inner node
    auto const router = TreeRouter::Compile(*root, nullptr);
    ASSERT_EQ(router->GetNumLeaves(), 1 << 19);
    EXPECT_LT(router->GetTableSize(), std::size_t{80} << 19);
    ExpectRoutesLikeTheTree(*root, *router, rows, NumPredictors);
}

TEST(TreeRouter, KeepsItsAnswersWhateverBecomesOfTheTree) {
    double const obs[] = {1.0, 1.0};
    auto root =
        Split(Cut(0, 1.0), Split(std::make_unique<FoldingRule>(1, 2), Leaf(0), Leaf(1)), Leaf(2));
    auto const router = TreeRouter::Compile(*root, nullptr);
    Node const* const leaf = root->GetChildImp(0)->GetChildImp(0);
    EXPECT_TRUE(router->RouteToLeaf(obs) == 0 && router->Route(obs) == leaf);
    dynamic_cast<OSplitRule&>(*root->GetCompetitorImp(0)).SetReverse();
    root->GetChildImp(0)->SetCompetitor(0, nullptr);
    EXPECT_TRUE(router->RouteToLeaf(obs) == 0 && router->Route(obs) == leaf);
    root.reset();
    EXPECT_EQ(router->RouteToLeaf(obs), 0);
}

class CloneLessRule : public FoldingRule {
public:
    using FoldingRule::FoldingRule;
    SplitRuleImp* Clone() const override { return nullptr; }
};

TEST(CheckTree, TellsOfEveryProblemInPreOrder) {
    auto dumb = Cut(0, 1.0);
    dumb->SetDumbRule(2, 0.5);
    auto root = Inner(Inner(Leaf(0)), Split(Codes(-1, {0, 3}), Leaf(0), std::unique_ptr<NodeImp>()),
                      Split(std::move(dumb), Leaf(0), Leaf(1)),
                      Split(std::make_unique<CloneLessRule>(0, 1), Leaf(0)), Leaf(3), Leaf(4),
                      Split(Cut(1, 0.0), Leaf(0), Leaf(1)));
    SetCompetitors(*root, Codes(0, {0, 6}));
    SetSurrogates(*root, std::unique_ptr<OSplitRule>(), Codes(-2, {7}));
    NodeImp& loop = *root->GetChildImp(6);
    std::unique_ptr<NodeImp> fifth(root->GetChildImp(4));
    std::unique_ptr<NodeImp> const low(loop.GetChildImp(0));
    std::unique_ptr<NodeImp> const high(loop.GetChildImp(1));
    root->SetChild(4, root->GetChildImp(5));
    loop.SetChild(0, root.get());
    loop.SetChild(1, &loop);

    std::string const shared =
        "The node is shared with another place in the tree or leads back up.";
    using Found = std::vector<std::pair<std::vector<int>, std::string>>;
    Found const expected = {
        {{}, "Surrogate 1 has a negative predictor index."},
        {{}, "Surrogate 1 answers a position beyond the children."},
        {{0}, "The node has children and no primary split."},
        {{1}, "The primary split has a negative predictor index."},
        {{1}, "The primary split answers a position beyond the children."},
        {{1}, "Child slot 1 is empty."},
        {{2}, "The biggest child's position lies beyond the children."},
        {{3}, "The primary split has no clone."},
        {{5}, shared},
        {{6}, shared},
    };
    std::vector<TreeProblem> problems;
    EXPECT_EQ(TreeRouter::Compile(*root, &problems), nullptr);
    Found found;
    for (TreeProblem const& problem : problems) {
        found.emplace_back(problem.path, problem.what);
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(TreeRouter::Compile(*root, nullptr), nullptr);
    loop.SetNumChildren(0);  // what is deleted once must be owned once
    root->SetChild(4, fifth.release());
}

}  // namespace
}  // namespace tree_800
