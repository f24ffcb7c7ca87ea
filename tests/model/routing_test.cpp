#include "support/probe_rule.h"
#include "support/random.h"
#include "support/tree_builder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tree_800 {
namespace {

using namespace test;

constexpr int NumPredictors = 4;
constexpr int NumValues = 3;

std::unique_ptr<ProbeRule> Probe(std::vector<int> answers, int predictor = 0) {
    return std::make_unique<ProbeRule>(std::move(answers), predictor);
}

// Often cannot place a value, and now and then answers a position beyond the children.
std::unique_ptr<ProbeRule> RandomRule(Random& random, int numChildren) {
    std::vector<int> answers(NumValues);
    for (int& answer : answers) {
        answer = random.Between(-2, numChildren - (random.OneIn(8) ? 0 : 1));
    }
    return Probe(answers, random.Between(0, NumPredictors - 1));
}

std::unique_ptr<NodeImp> RandomTree(Random& random, int depth) {
    int const numChildren = depth == 0 || random.OneIn(6) ? 0 : random.Between(1, 3);
    auto node = Split(RandomRule(random, numChildren));
    node->GetCompetitorImp(0)->SetDumbRule(random.Between(-1, numChildren), 0.5);
    SetSurrogates(*node, RandomRule(random, numChildren), RandomRule(random, numChildren));
    node->SetNumChildren(numChildren);
    for (int pos = 0; pos < numChildren; ++pos) {
        SetChild(*node, pos, random.OneIn(10) ? nullptr : RandomTree(random, depth - 1));
    }
    return node;
}

// The nodes that an observation passes, first to last, told from the tables of the rules.
std::vector<Node const*> PathOf(NodeImp const* node, std::vector<double> const& obs) {
    std::vector<Node const*> path;
    while (node != nullptr) {
        path.push_back(node);
        int pos = -1;
        for (SplitRuleImp const* rule :
             {node->GetCompetitorImp(0), node->GetSurrogateImp(0), node->GetSurrogateImp(1)}) {
            double const value = obs[static_cast<std::size_t>(rule->GetPredictorIndex())];
            auto const& answers = dynamic_cast<ProbeRule const&>(*rule).answers;
            pos = pos >= 0 ? pos : answers[static_cast<std::size_t>(value)];
        }
        pos = pos >= 0 ? pos : node->GetBiggestChildPos();
        EXPECT_EQ(node->Classify(obs.data()), node->GetNumChildren() > 0 ? pos : -1);
        bool const goesOn = 0 <= pos && pos < node->GetNumChildren();
        node = goesOn ? node->GetChildImp(static_cast<unsigned int>(pos)) : nullptr;
    }
    return path;
}

void ExpectStopsOnThePathAlone(NodeImp const& root, NodeImp const& stop, double const* obs,
                               std::vector<Node const*> const& path) {
    bool const isPassed = std::find(path.begin(), path.end(), &stop) != path.end();
    EXPECT_EQ(root.DropObservationThroughTree(obs, &stop), isPassed ? &stop : nullptr);
    NodeImp const* child = nullptr;
    for (int pos = 0; stop.Child(pos, &child); ++pos) {
        if (child != nullptr) {
            ExpectStopsOnThePathAlone(root, *child, obs, path);
        }
    }
}

TEST(Routing, RandomTreesAgreeWithTheTablesOfTheirRules) {
    Random random;
    for (int run = 0; run < 200; ++run) {
        auto const root = RandomTree(random, 4);
        for (int row = 0; row < 20; ++row) {
            std::vector<double> obs(NumPredictors);
            for (double& value : obs) {
                value = random.Between(0, NumValues - 1);
            }
            auto const path = PathOf(root.get(), obs);
            EXPECT_EQ(root->DropObservationThroughTree(obs.data(), nullptr), path.back());
            ExpectStopsOnThePathAlone(*root, *root, obs.data(), path);
            ASSERT_FALSE(HasFailure()) << "run " << run << ", row " << row;
        }
    }
}

TEST(Routing, AsksEachRuleOnceAndCompetitorsNever) {
    auto const node = Inner(Leaf(0));
    SetCompetitors(*node, Probe({-1}), Probe({0}));
    SetSurrogates(*node, Probe({-1}), std::unique_ptr<ProbeRule>(), Probe({0}), Probe({0}));
    double const obs[] = {0.0};
    EXPECT_EQ(node->DropObservationThroughTree(obs, nullptr), node->GetChildImp(0));
    auto const asked = [](SplitRuleImp* rule) { return dynamic_cast<ProbeRule&>(*rule).asked; };
    EXPECT_EQ(asked(node->GetCompetitorImp(0)), 1);
    EXPECT_EQ(asked(node->GetCompetitorImp(1)), 0);
    EXPECT_EQ(asked(node->GetSurrogateImp(0)), 1);
    EXPECT_EQ(asked(node->GetSurrogateImp(2)), 1);
    EXPECT_EQ(asked(node->GetSurrogateImp(3)), 0);
}

TEST(Routing, MissingValuesGoWhereTheRuleSendsThemBeforeAnySurrogate) {
    auto const node = Split(Cut(0, 1.0), Leaf(0), Leaf(1), Leaf(2));
    SetSurrogates(*node, Codes(1, {1}));
    double const missing[] = {systemMissingValue(), 0.0};
    double const notANumber[] = {std::nan(""), 5.0};
    EXPECT_EQ(node->Classify(missing), 1);
    node->GetCompetitorImp(0)->AddMissingValueMapping(true);
    EXPECT_EQ(node->Classify(missing), 2);
    EXPECT_EQ(node->Classify(notANumber), 1);  // it is above every cut
    node->SetCompetitor(0, nullptr);
    EXPECT_EQ(node->DropObservationThroughTree(missing, nullptr), node.get());
    node->SetNumCompetitors(0);
    EXPECT_EQ(node->Classify(missing), -1);
}

}  // namespace
}  // namespace tree_800
