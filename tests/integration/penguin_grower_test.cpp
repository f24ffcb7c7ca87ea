#include "gains_table.h"
#include "route_explainer.h"
#include "support/json_tree.h"
#include "support/penguin_trees.h"
#include "tree_outline.h"

#include <tree/tree.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tree_800::test {
namespace {

using nlohmann::json;

/// In pre-order.
std::vector<NodeImp const*> Nodes(CartGrower const& grower) {
    std::vector<NodeImp const*> nodes;
    PrefixNodeIterator walk(grower.GetRoot());
    while (Node const* const node = walk.Next()) {
        nodes.push_back(dynamic_cast<NodeImp const*>(node));
    }
    return nodes;
}

void ExpectRule(SplitRuleImp const& rule, json const& expected, StatisticFlag statistic,
                char const* key) {
    EXPECT_EQ(rule.GetPredictorIndex(), expected["predictor"]);
    EXPECT_NEAR(rule.GetStatistic(statistic), expected[key], 1e-9);
    if (auto const* const cut = dynamic_cast<OSplitRule const*>(&rule)) {
        EXPECT_NEAR(cut->GetCutPoint(), expected["cut"], 1e-9);
        EXPECT_EQ(cut->Classify(cut->GetCutPoint()), expected["below"]);
        EXPECT_EQ(cut->Classify(cut->GetCutPoint() + 1.0), expected["above"]);
    } else {
        for (std::size_t code = 0; code < expected["child"].size(); ++code) {
            EXPECT_EQ(rule.Classify(static_cast<double>(code)), expected["child"][code]);
        }
    }
}

struct ReferenceCase {
    char const* name;
    StopRuleImp stopRule;
    std::size_t surrogatesMore;  // of ours: in one node sex tells all cases apart, theirs omits it
    int placedBySurrogate;       // steps
    int placedByBiggestChild;    // steps
    int staying;                 // rows, in an inner node
};

/// Keeps GoogleTest from printing the bytes of the row, padding included.
void PrintTo(ReferenceCase const& row, std::ostream* stream) { *stream << row.name; }

class ReferenceTree : public testing::TestWithParam<ReferenceCase> {};

TEST_P(ReferenceTree, HasTheSameRulesAndPlacesEveryRowAlike) {
    json const reference = ReadReference(GetParam().name);
    Dataset data = examples::ReadPenguins(Penguins, "species");
    data.values = ReadRows(reference["rows"]);
    data.targets = reference["target_values"].get<std::vector<double>>();
    data.samples.resize(data.targets.size(), TrainingSample);
    CartGrower grower(data, *MakeSettings(data, GetParam().stopRule, NoValidation));
    ASSERT_TRUE(grower.Run());
    std::map<int, json> expectedNodes;
    for (json const& node : reference["nodes"]) {
        expectedNodes[node["id"]] = node;
    }
    std::map<Node const*, int> idOf = {{grower.GetRoot(), 1}};
    std::size_t surrogatesMore = 0;
    for (NodeImp const* const node : Nodes(grower)) {
        if (idOf.count(node) == 0 || expectedNodes[idOf[node]]["leaf"]) {
            continue;  // what is below a leaf of the reference was pruned there
        }
        json const& expected = expectedNodes[idOf[node]];
        SCOPED_TRACE("node " + expected["id"].dump());
        json const& competitors = expected["competitors"];
        json const& surrogates = expected["surrogates"];
        ASSERT_EQ(node->GetNumCompetitors(), competitors.size());
        ASSERT_GE(node->GetNumSurrogates(), surrogates.size());
        for (unsigned i = 0; i < competitors.size(); ++i) {
            ExpectRule(*node->GetCompetitorImp(i), competitors[i], cart::ImprovementStatistic,
                       "improve");
        }
        for (unsigned i = 0; i < surrogates.size(); ++i) {
            ExpectRule(*node->GetSurrogateImp(i), surrogates[i], cart::AgreementStatistic,
                       "agreement_over_majority");
        }
        surrogatesMore += node->GetNumSurrogates() - surrogates.size();
        EXPECT_EQ(node->GetBiggestChildPos(), expected["majority"]);
        ASSERT_EQ(node->GetNumChildren(), 2);
        idOf[node->GetChild(0)] = expected["children"][0];
        idOf[node->GetChild(1)] = expected["children"][1];
    }
    EXPECT_EQ(surrogatesMore, GetParam().surrogatesMore);
    EXPECT_EQ(idOf.size(), expectedNodes.size());

    std::map<examples::PlacedBy, int> steps;
    int staying = 0;
    for (std::size_t row = 0; row < data.NumRows(); ++row) {
        int end = 1;
        for (auto const& step : examples::ExplainRoute(*grower.GetRoot(), data.Row(row))) {
            if (idOf.count(step.to) > 0) {
                end = idOf[step.to];
                ++steps[step.placedBy];
            }
        }
        EXPECT_EQ(end, reference["leaf_of_row"][row]) << "row " << row;
        staying += expectedNodes[end]["leaf"] ? 0 : 1;
    }
    EXPECT_EQ(steps[examples::PlacedBy::Surrogate], GetParam().placedBySurrogate);
    EXPECT_EQ(steps[examples::PlacedBy::BiggestChild], GetParam().placedByBiggestChild);
    EXPECT_EQ(staying, GetParam().staying);
}

INSTANTIATE_TEST_SUITE_P(Penguins, ReferenceTree,
                         testing::Values(ReferenceCase{"penguins_species", Usual, 0, 2, 1, 0},
                                         ReferenceCase{"penguins_species_holes", Fine, 1, 84, 162,
                                                       2}),
                         [](auto const& test) { return std::string(test.param.name); });

TEST(PenguinReader, ReadsTheRowsOfTheReference) {
    Dataset const read = examples::ReadPenguins(Penguins, "species");
    EXPECT_EQ(read.values, ReadRows(ReadReference("penguins_species")["rows"]));
    EXPECT_THROW(examples::ReadPenguins(Penguins, "colour"), std::runtime_error);
}

class PenguinTree : public testing::TestWithParam<std::pair<char const*, ValidationType>> {};

/// The laws of a tree, finished or not: what each node tells is what routing sends to it.
void ExpectWhole(CartGrower const& grower) {
    Dataset const& data = grower.GetData();
    std::map<Node const*, std::vector<double>> targetsOfNode;
    for (std::size_t row = 0; row < data.NumRows(); ++row) {
        Node const* node = Drop(grower, row);
        for (; node != nullptr && data.samples[row] == TrainingSample; node = node->GetParent()) {
            targetsOfNode[node].push_back(data.targets[row]);
        }
    }
    unsigned id = 0;
    for (auto const* const node : Nodes(grower)) {
        EXPECT_EQ(node->GetId(), ++id);
        EXPECT_EQ(node->GetNumCompetitors() > 0, node->GetNumChildren() > 0);
        std::vector<double> const& targets = targetsOfNode[node];
        EXPECT_EQ(node->GetUnweightedNodeSize(TrainingSample), targets.size());
        if (auto const* const info = node->GetClsInfoImp(TrainingSample)) {
            EXPECT_EQ(node->GetClsInfo(TestSample)->GetPrediction(), info->GetPrediction());
            EXPECT_DOUBLE_EQ(info->GetPercentSize() * 2.76, info->GetCount());
        } else {
            RegInfo const& values = *node->GetRegInfo(TrainingSample);
            double const lastBin = values.GetBinLeftEndPoint(values.GetNumBins() - 1);
            EXPECT_EQ(values.GetBinSize(values.GetNumBins() - 1),
                      std::count_if(targets.begin(), targets.end(),
                                    [&](double target) { return target >= lastBin; }));
            EXPECT_NEAR(values.GetStdDev() * values.GetStdDev() * node->GetNodeSize(TrainingSample),
                        SumOfSquares(targets), 1e-6);
            EXPECT_NEAR(node->GetAssignment(), Mean(targets), 1e-9);
            EXPECT_EQ(node->GetRegInfo(TestSample)->GetPrediction(), values.GetPrediction());
        }
    }
    EXPECT_EQ(grower.GetNumNodes(), id);
}

TEST_P(PenguinTree, IsWholeAfterEveryStepAndTheSameHoweverItIsRun) {
    auto const [target, validation] = GetParam();
    Dataset const data = ReadHeldOut(target);
    auto const settings = MakeSettings(data, Usual, validation);
    CartGrower stepped(data, *settings);
    double progress = 0.0;
    for (bool goesOn = true; goesOn;) {
        goesOn = stepped.Step();
        ExpectWhole(stepped);
        EXPECT_GE(stepped.GetProgress(), progress);
        progress = stepped.GetProgress();
        EXPECT_EQ(progress == 1.0, !goesOn);
    }
    CartGrower rerun(data, *settings);
    EXPECT_TRUE(rerun.Step() && rerun.Step());
    rerun.Cancel();
    EXPECT_FALSE(rerun.Run());
    EXPECT_EQ(rerun.GetNumLeaves(), 3);
    ExpectWhole(rerun);
    rerun.Reset();
    EXPECT_EQ(rerun.GetRoot(), nullptr);
    EXPECT_TRUE(rerun.Run());
    EXPECT_TRUE(*rerun.GetRoot() == *stepped.GetRoot());
}

TEST_P(PenguinTree, IsJudgedOnTheTestSampleUntilItIsReleased) {
    Dataset const data = ReadHeldOut(GetParam().first);
    CartGrower grower(data, *MakeSettings(data, Usual, TestSampleValidation));
    TreeStatistics statistics;
    EXPECT_FALSE(grower.GetStatistics(statistics));
    EXPECT_EQ(grower.GetRisk(TestSample), systemMissingValue());
    grower.Run();
    ASSERT_TRUE(grower.GetStatistics(statistics));
    std::vector<double> losses;
    for (std::size_t row = 4; row < data.NumRows(); row += 5) {
        double const error = Drop(grower, row)->GetAssignment() - data.targets[row];
        losses.push_back(data.IsClassification() && error != 0.0 ? 1.0 : error * error);
    }
    auto const n = static_cast<double>(losses.size());
    EXPECT_NEAR(statistics.GetRisk(), Mean(losses), 1e-9 * Mean(losses));
    EXPECT_NEAR(statistics.GetStdError(), std::sqrt(SumOfSquares(losses)) / n, 1e-9 * Mean(losses));

    std::unique_ptr<NodeImp> const root(grower.ReleaseRoot());
    EXPECT_GT(root->GetNumChildren(), 0);
    EXPECT_EQ(grower.GetNumLeaves(), 0);
    EXPECT_FALSE(grower.GetStatistics(statistics));
    EXPECT_EQ(grower.ComputeGains({}), nullptr);
    EXPECT_FALSE(grower.Run());
}

INSTANTIATE_TEST_SUITE_P(Penguins, PenguinTree,
                         testing::Values(std::make_pair("species", TestSampleValidation),
                                         std::make_pair("body_mass_g", CrossValidation)),
                         [](auto const& test) { return std::string(test.param.first); });

TEST(StopRule, EndsGrowth) {
    std::pair<StopRuleImp, int> const rows[] = {
        {{0.02, 20, 0.0, 7, 0.0, 1}, 2},   // depth
        {{0.02, 276, 0.0, 7, 0.0, 0}, 2},  // node size: all training cases
        {{0.02, 277, 0.0, 7, 0.0, 0}, 1},  // one more
        {{0.02, 20, 50.0, 7, 0.0, 0}, 3},  // node size in percent
        {{0.02, 20, 0.0, 7, 50.5, 0}, 1},  // child size in percent
        {{1.0, 20, 0.0, 7, 0.0, 0}, 1},    // improvement
    };
    Dataset const data = ReadHeldOut("species");
    for (auto const& [stopRule, leaves] : rows) {
        CartGrower grower(data, *MakeSettings(data, stopRule, NoValidation));
        grower.Run();
        EXPECT_EQ(grower.GetNumLeaves(), leaves);
    }
}

TEST(Settings, MustFitTheData) {
    Dataset const species = examples::ReadPenguins(Penguins, "species");
    Dataset const mass = examples::ReadPenguins(Penguins, "body_mass_g");
    auto const ofMass = MakeSettings(mass, Usual, NoValidation);
    auto const withoutTest = MakeSettings(species, Usual, TestSampleValidation);
    auto const twoing = MakeSettings(species, Usual, NoValidation);
    dynamic_cast<CCartSettings&>(*twoing).SetSplitCriteria(TwoingCriterion);
    auto const fourClasses = MakeSettings(species, Usual, NoValidation);
    dynamic_cast<CCartSettings&>(*fourClasses).GetPriors()->Set(3, 1.0);
    CoreSettingsImp core = cart::MakeCoreSettings(species);
    core.AddPredictor();
    CCartSettingsImp const morePredictors(core);
    for (CartSettings const* settings : std::initializer_list<CartSettings const*>{
             ofMass.get(), withoutTest.get(), twoing.get(), fourClasses.get(), &morePredictors}) {
        EXPECT_THROW(CartGrower(species, *settings), std::invalid_argument);
    }
}

TEST(TreeOutline, SaysWhatLeadsToEachNode) {
    Dataset const data = ReadHeldOut("body_mass_g");
    CartGrower grower(data, *MakeSettings(data, {0.02, 20, 0.0, 7, 0.0, 1}, NoValidation));
    grower.Run();
    std::ostringstream outline;
    examples::PrintOutline(outline, *grower.GetRoot(), grower.GetData());
    EXPECT_EQ(outline.str(),
              " id  where                                      train  test  body_mass_g\n"
              "  1  everywhere                                   274    68  4206 +- 810\n"
              "  2    species = Adelie or Chinstrap              175    44  3712 +- 453\n"
              "  3    species = Gentoo                            99    24  5080 +- 507\n");
}

}  // namespace
}  // namespace tree_800::test
