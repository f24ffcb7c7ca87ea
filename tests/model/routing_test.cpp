#include "support/probe_rule.h"
#include "support/tree_builder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tree_800 {
namespace {

using namespace test;

std::unique_ptr<ProbeRule> Probe(std::vector<int> answers) {
    return std::make_unique<ProbeRule>(std::move(answers));
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
