#include "support/probe_rule.h"
#include "support/random.h"
#include "support/tree_builder.h"

#include <gtest/gtest.h>

namespace tree_800 {
namespace {

using namespace test;

constexpr int NumPredictors = 4;
constexpr int NumValues = 3;

// A node's rules as tables from value to answer, with the node made of them.
struct Plan {
    struct Rule {
        int predictor;
        std::vector<int> answers;
    };

    std::vector<Rule> rules;  // the primary split, then the surrogates
    int dumb = -1;
    std::vector<std::unique_ptr<Plan>> children;  // null for an empty slot
    NodeImp* node = nullptr;
};

std::unique_ptr<ProbeRule> ProbeOf(Plan::Rule const& rule) {
    return std::make_unique<ProbeRule>(rule.answers, rule.predictor);
}

std::unique_ptr<Plan> RandomPlan(Random& random, int depth) {
    auto plan = std::make_unique<Plan>();
    int const numChildren = depth == 0 || random.OneIn(6) ? 0 : random.Between(1, 3);
    for (int i = random.Between(1, 3); i > 0; --i) {
        Plan::Rule rule{random.Between(0, NumPredictors - 1), {}};
        for (int value = 0; value < NumValues; ++value) {  // often -1, rarely beyond the children
            rule.answers.push_back(random.Between(-2, numChildren - (random.OneIn(8) ? 0 : 1)));
        }
        plan->rules.push_back(rule);
    }
    plan->dumb = random.Between(-1, numChildren);
    for (int pos = 0; pos < numChildren; ++pos) {
        plan->children.push_back(random.OneIn(10) ? nullptr : RandomPlan(random, depth - 1));
    }
    return plan;
}

std::unique_ptr<NodeImp> Build(Plan& plan) {
    auto node = std::make_unique<NodeImp>();
    auto primary = ProbeOf(plan.rules.front());
    primary->SetDumbRule(plan.dumb, 0.5);
    auto competitor = std::make_unique<ProbeRule>(std::vector<int>(NumValues, 0));
    SetCompetitors(*node, std::move(primary), std::move(competitor));
    node->SetNumSurrogates(static_cast<unsigned int>(plan.rules.size() - 1));
    for (unsigned int pos = 1; pos < plan.rules.size(); ++pos) {
        node->SetSurrogate(pos - 1, ProbeOf(plan.rules[pos]).release());
    }
    node->SetNumChildren(static_cast<int>(plan.children.size()));
    for (std::size_t pos = 0; pos < plan.children.size(); ++pos) {
        if (plan.children[pos] != nullptr) {
            SetChild(*node, static_cast<int>(pos), Build(*plan.children[pos]));
        }
    }
    plan.node = node.get();
    return node;
}

// The nodes that an observation passes, the first to the last.
void Walk(Plan const& plan, std::vector<double> const& obs, std::vector<Plan const*>& path) {
    path.push_back(&plan);
    int pos = -1;
    for (Plan::Rule const& rule : plan.rules) {
        double const value = obs[static_cast<std::size_t>(rule.predictor)];
        pos = pos >= 0 ? pos : rule.answers[static_cast<std::size_t>(value)];
    }
    pos = pos >= 0 ? pos : plan.dumb;
    EXPECT_EQ(plan.node->Classify(obs.data()), plan.children.empty() ? -1 : pos);
    auto const at = static_cast<std::size_t>(pos);
    if (pos >= 0 && at < plan.children.size() && plan.children[at] != nullptr) {
        Walk(*plan.children[at], obs, path);
    }
}

void ExpectStopsOnPathAlone(Plan const& root, Plan const& plan, std::vector<double> const& obs,
                            std::vector<Plan const*> const& path) {
    bool const isPassed = std::find(path.begin(), path.end(), &plan) != path.end();
    EXPECT_EQ(root.node->DropObservationThroughTree(obs.data(), plan.node),
              isPassed ? plan.node : nullptr);
    for (auto const& child : plan.children) {
        if (child != nullptr) {
            ExpectStopsOnPathAlone(root, *child, obs, path);
        }
    }
}

TEST(Routing, RandomTreesAgreeWithAModel) {
    Random random;
    for (int run = 0; run < 200; ++run) {
        auto const plan = RandomPlan(random, 4);
        auto const root = Build(*plan);
        for (int row = 0; row < 20; ++row) {
            std::vector<double> obs(NumPredictors);
            for (double& value : obs) {
                value = random.Between(0, NumValues - 1);
            }
            std::vector<Plan const*> path;
            Walk(*plan, obs, path);
            EXPECT_EQ(root->DropObservationThroughTree(obs.data(), nullptr), path.back()->node);
            ExpectStopsOnPathAlone(*plan, *plan, obs, path);
            ASSERT_FALSE(HasFailure()) << "run " << run << ", row " << row;
        }
    }
}

TEST(Routing, AsksEachRuleOnceAndCompetitorsNever) {
    auto const node = Split(std::make_unique<ProbeRule>(std::vector<int>{-1}), Leaf(0));
    auto const probe = [](int answer) {
        return std::make_unique<ProbeRule>(std::vector<int>{answer});
    };
    SetCompetitors(*node, probe(-1), probe(0));
    SetSurrogates(*node, probe(-1), std::unique_ptr<ProbeRule>(), probe(0), probe(0));
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
    SplitRuleImp& primary = *node->GetCompetitorImp(0);
    SetSurrogates(*node, Codes(1, {1}));
    struct {
        char const* name;
        double obs[2];
        int before;  // the rule maps missing values
        int after;
    } const rows[] = {
        {"placed", {0.5, 0.0}, 0, 0},
        {"by the surrogate", {systemMissingValue(), 0.0}, 1, 2},
        {"by none", {systemMissingValue(), 5.0}, -1, 2},
        {"NaN is not missing", {std::nan(""), 5.0}, 1, 1},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(node->Classify(row.obs), row.before) << row.name;
    }
    EXPECT_EQ(node->DropObservationThroughTree(rows[2].obs, nullptr), node.get());
    primary.SetDumbRule(2, 0.5);
    EXPECT_EQ(node->DropObservationThroughTree(rows[2].obs, nullptr), node->GetChildImp(2));
    primary.AddMissingValueMapping(true);
    for (auto const& row : rows) {
        EXPECT_EQ(node->Classify(row.obs), row.after) << row.name;
    }
    node->SetCompetitor(0, nullptr);
    EXPECT_EQ(node->Classify(rows[0].obs), -1);
    node->SetNumCompetitors(0);
    EXPECT_EQ(node->Classify(rows[0].obs), -1);
}

}  // namespace
}  // namespace tree_800
