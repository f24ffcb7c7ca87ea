#include "gains_table.h"
#include "route_explainer.h"
#include "support/penguin_trees.h"
#include "tree_outline.h"

#include <tree/tree.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

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

/// A tree of species that another program grew, with its data and where that program says every
/// row ends.
json ReadReference(std::string const& name) {
    return json::parse(std::ifstream(TREE800_TEST_DATA_DIR "/" + name + ".json"));
}

/// The observations one after the other; null is a missing value.
std::vector<double> ReadRows(json const& rows) {
    std::vector<double> values;
    for (auto const& row : rows) {
        for (auto const& value : row) {
            values.push_back(value.is_null() ? systemMissingValue() : value.get<double>());
        }
    }
    return values;
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

/// Compares the rules of the branch, and prunes it where the reference was pruned. The number of
/// surrogates that the reference omits.
std::size_t ExpectBranch(NodeImp& node, json const& nodes, unsigned int id) {
    SCOPED_TRACE(id);
    json const& expected =
        *std::find_if(nodes.begin(), nodes.end(), [id](json const& n) { return n["id"] == id; });
    ClsInfo const& info = *node.GetClsInfo(TrainingSample);
    EXPECT_EQ(info.GetPrediction(), expected["prediction"]);
    node.SetId(id);
    if (expected["leaf"]) {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(info.GetClassCount(i), expected["counts"][static_cast<std::size_t>(i)]);
        }
        node.RemoveChildren(false);
        return 0;
    }
    json const& competitors = expected["competitors"];
    json const& surrogates = expected["surrogates"];
    EXPECT_EQ(node.GetNumCompetitors(), competitors.size());
    for (unsigned i = 0; i < competitors.size(); ++i) {
        ExpectRule(*node.GetCompetitorImp(i), competitors[i], cart::ImprovementStatistic,
                   "improve");
    }
    for (unsigned i = 0; i < surrogates.size(); ++i) {
        ExpectRule(*node.GetSurrogateImp(i), surrogates[i], cart::AgreementStatistic,
                   "agreement_over_majority");
    }
    EXPECT_EQ(node.GetBiggestChildPos(), expected["majority"]);
    EXPECT_EQ(node.GetNumChildren(), 2);
    return node.GetNumSurrogates() - surrogates.size() +
           ExpectBranch(*node.GetChildImp(0), nodes, expected["children"][0]) +
           ExpectBranch(*node.GetChildImp(1), nodes, expected["children"][1]);
}

struct Placements {
    int bySurrogate;     // steps
    int byBiggestChild;  // steps
    int staying;         // rows, in an inner node
};

/// The same rules place every row alike and the matrix counts it where it ends.
void ExpectReferenceTree(char const* name, StopRuleImp const& stopRule, std::size_t surrogatesMore,
                         Placements const& expected) {
    json const reference = ReadReference(name);
    Dataset data = examples::ReadPenguins(Penguins, "species");
    data.values = ReadRows(reference["rows"]);
    data.targets = reference["target_values"].get<std::vector<double>>();
    data.samples.resize(data.targets.size(), TrainingSample);
    CartGrower grower(data, *MakeSettings(data, stopRule, NoValidation));
    ASSERT_TRUE(grower.Run());
    std::unique_ptr<NodeImp> const root(grower.GetRoot()->Clone());
    EXPECT_EQ(ExpectBranch(*root, reference["nodes"], 1), surrogatesMore);

    std::map<examples::PlacedBy, int> steps;
    int staying = 0;
    double counted[3][3] = {};
    for (std::size_t row = 0; row < data.NumRows(); ++row) {
        NodeImp const& end = *root->DropObservationThroughTree(data.Row(row), nullptr);
        EXPECT_EQ(end.GetId(), reference["leaf_of_row"][row]) << "row " << row;
        Node const* explained = root.get();
        for (auto const& step : examples::ExplainRoute(*root, data.Row(row))) {
            explained = step.to;
            ++steps[step.placedBy];
        }
        EXPECT_EQ(explained, &end) << "row " << row;
        if (end.GetNumChildren() > 0) {
            ++staying;
        } else {
            ++counted[static_cast<int>(end.GetAssignment())][static_cast<int>(data.targets[row])];
        }
    }
    EXPECT_EQ(steps[examples::PlacedBy::Surrogate], expected.bySurrogate);
    EXPECT_EQ(steps[examples::PlacedBy::BiggestChild], expected.byBiggestChild);
    EXPECT_EQ(staying, expected.staying);

    TreeStatisticsImp statistics;
    statistics.SetIsCls(true);
    statistics.SetNumClasses(3);
    statistics.AddMisclassificationInfo(root.get(), TrainingSample);
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(statistics.GetMisclassificationCount(i / 3, i % 3), counted[i / 3][i % 3]) << i;
    }
}

TEST(ReferenceTrees, AreGrownAlike) {
    ExpectReferenceTree("penguins_species", Usual, 0, {2, 1, 0});
    // In one node sex tells all cases apart: the reference omits that surrogate.
    ExpectReferenceTree("penguins_species_holes", Fine, 1, {84, 162, 2});
}

TEST(PenguinReader, ReadsTheRowsOfTheReference) {
    Dataset const read = examples::ReadPenguins(Penguins, "species");
    EXPECT_EQ(read.values, ReadRows(ReadReference("penguins_species")["rows"]));
    EXPECT_THROW(examples::ReadPenguins(Penguins, "colour"), std::runtime_error);
}

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

void ExpectTheSameTreeHoweverItIsRun(char const* target, ValidationType validation) {
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

TEST(PenguinTree, IsWholeAfterEveryStepAndTheSameHoweverItIsRun) {
    ExpectTheSameTreeHoweverItIsRun("species", TestSampleValidation);
    ExpectTheSameTreeHoweverItIsRun("body_mass_g", CrossValidation);
}

void ExpectJudgedOnTheTestSample(char const* target) {
    Dataset const data = ReadHeldOut(target);
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

TEST(PenguinTree, IsJudgedOnTheTestSampleUntilItIsReleased) {
    ExpectJudgedOnTheTestSample("species");
    ExpectJudgedOnTheTestSample("body_mass_g");
}

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
    CCartSettingsImp twoing(cart::MakeCoreSettings(species));
    CCartSettingsImp fourClasses = twoing;
    twoing.SetSplitCriteria(TwoingCriterion);
    fourClasses.GetPriors()->Set(3, 1.0);
    CartSettings const* const unfit[] = {ofMass.get(), withoutTest.get(), &twoing, &fourClasses};
    for (CartSettings const* const settings : unfit) {
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
