#include "gains_table.h"
#include "support/penguin_trees.h"

#include <tree/tree.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <map>
#include <set>

namespace tree_800::test {
namespace {

using cart::Risk;

/// Priors 0.5, 0.2 and 0.3 with unequal costs, whose columns sum to 4, 7 and 2.
std::unique_ptr<CartSettings> MakeWeighted(Dataset const& data, ValidationType validation) {
    std::unique_ptr<CartSettings> settings = MakeSettings(data, Fine, validation);
    auto& weighted = dynamic_cast<CCartSettings&>(*settings);
    for (int i = 0; i < 3; ++i) {
        weighted.GetPriors()->Set(i, i == 0 ? 5.0 : i + 1.0);
    }
    weighted.GetPriors()->AlterValues(true);
    weighted.GetCost()->Set(0, 1, 4.0);
    weighted.GetCost()->Set(1, 0, 2.0);
    weighted.GetCost()->Set(2, 0, 2.0);
    weighted.GetCost()->Set(2, 1, 3.0);
    return settings;
}

double const Priors[] = {0.5, 0.2, 0.3};
double const AlteredPriors[] = {20.0 / 40.0, 14.0 / 40.0, 6.0 / 40.0};
double const Costs[3][3] = {{0.0, 4.0, 1.0}, {2.0, 0.0, 1.0}, {2.0, 3.0, 0.0}};

cart::Rows TrainingRows(Dataset const& data) {
    cart::Rows rows;
    for (std::size_t row = 0; row < data.NumRows(); ++row) {
        if (data.samples[row] == TrainingSample) {
            rows.push_back(row);
        }
    }
    return rows;
}

using RowImpurity = std::function<double(std::vector<double> const& targets)>;

/// The largest decrease of the impurity that a cut on each ordered predictor achieves at the root.
void ExpectBestCuts(CartGrower& grower, std::size_t minChildSize, RowImpurity const& impurity) {
    grower.Run();
    Dataset const& data = grower.GetData();
    for (int predictor = 0; predictor < data.NumPredictors(); ++predictor) {
        if (data.Predictor(predictor).IsNominal()) {
            continue;
        }
        double best = 0.0;
        for (std::size_t candidate = 0; candidate < data.NumRows(); ++candidate) {
            std::vector<double> left;
            std::vector<double> right;
            for (std::size_t const row : TrainingRows(data)) {
                double const value = data.Value(row, predictor);
                if (!cart::IsMissing(value)) {
                    bool const goesLeft = value <= data.Value(candidate, predictor);
                    (goesLeft ? left : right).push_back(data.targets[row]);
                }
            }
            if (std::min(left.size(), right.size()) >= minChildSize) {
                double const apart = impurity(left) + impurity(right);
                left.insert(left.end(), right.begin(), right.end());
                best = std::max(best, impurity(left) - apart);
            }
        }
        int const pos = grower.GetRoot()->FindCompetitorPos(predictor);
        ASSERT_GE(pos, 0);
        auto const& rule = *grower.GetRoot()->GetCompetitorImp(static_cast<unsigned>(pos));
        EXPECT_NEAR(rule.GetStatistic(cart::ImprovementStatistic), best, 1e-6);
    }
}

TEST(RegressionTree, FindsTheCutsThatBruteForceFinds) {
    Dataset const data = ReadHeldOut("body_mass_g");
    CartGrower grower(data, *MakeSettings(data, Usual, NoValidation));
    ExpectBestCuts(grower, 7, SumOfSquares);
}

/// Of the rows of the sample, by where each ends: the confusion counts, weighted by the formulas of
/// stratified sampling.
Risk JudgeByConfusion(Dataset const& data, DataSample sample,
                      std::function<int(std::size_t row)> const& predict) {
    double confusion[3][3] = {};
    double numRows[3] = {};
    for (std::size_t row = 0; row < data.NumRows(); ++row) {
        if (data.samples[row] == sample) {
            auto const observed = static_cast<std::size_t>(data.targets[row]);
            ++confusion[predict(row)][observed];
            ++numRows[observed];
        }
    }
    double risk = 0.0;
    double variance = 0.0;
    for (std::size_t j = 0; j < 3; ++j) {
        double first = 0.0;  // moments of the cost of a case of class j
        double second = 0.0;
        for (std::size_t i = 0; i < 3; ++i) {
            first += Costs[i][j] * confusion[i][j] / numRows[j];
            second += Costs[i][j] * Costs[i][j] * confusion[i][j] / numRows[j];
        }
        risk += Priors[j] * first;
        variance += Priors[j] * Priors[j] * (second - first * first) / numRows[j];
    }
    return {risk, std::sqrt(variance)};
}

using Leaves = std::set<Node const*>;

/// The leaves of every subtree that pruning the branch anywhere can leave.
std::vector<Leaves> AllSubtrees(Node const& node) {
    std::vector<Leaves> all = {{&node}};
    if (node.GetNumChildren() > 0) {
        std::vector<Leaves> const rights = AllSubtrees(*node.GetChild(1));
        for (Leaves const& left : AllSubtrees(*node.GetChild(0))) {
            for (Leaves const& right : rights) {
                all.push_back(left);
                all.back().insert(right.begin(), right.end());
            }
        }
    }
    return all;
}

Risk JudgeSubtree(CartGrower const& grower, Leaves const& leaves, DataSample sample) {
    return JudgeByConfusion(grower.GetData(), sample, [&](std::size_t row) {
        Node const* const end = Drop(grower, row);
        for (Node const* node = end; node != nullptr; node = node->GetParent()) {
            if (leaves.count(node) > 0) {
                return static_cast<int>(node->GetAssignment());
            }
        }
        return static_cast<int>(end->GetAssignment());
    });
}

/// The subtrees on the lower convex hull of training risk over size, the root alone first: from
/// each the next is the one to which the risk falls most steeply, the largest of equals.
std::vector<Leaves> FindHull(CartGrower const& grown) {
    std::map<double, std::pair<double, Leaves>> bestOfSize;
    for (Leaves const& leaves : AllSubtrees(*grown.GetRoot())) {
        double const risk = JudgeSubtree(grown, leaves, TrainingSample).value;
        auto const [entry, isNew] =
            bestOfSize.try_emplace(static_cast<double>(leaves.size()), risk, leaves);
        if (!isNew && risk < entry->second.first) {
            entry->second = {risk, leaves};
        }
    }
    std::vector<Leaves> hull;
    for (auto from = bestOfSize.begin(); from != bestOfSize.end();) {
        hull.push_back(from->second.second);
        auto const steepness = [from](auto const& to) {
            double const fall = from->second.first - to.second.first;
            return std::pair(std::round(1e9 * fall / (to.first - from->first)), to.first);
        };
        auto const next = std::max_element(
            std::next(from), bestOfSize.end(),
            [&](auto const& a, auto const& b) { return steepness(a) < steepness(b); });
        bool const falls = next != bestOfSize.end() && steepness(*next).first > 0.0;
        from = falls ? next : bestOfSize.end();
    }
    return hull;
}

/// Priors, costs and their effect, against numbers derived here: the altered priors by their
/// formula, the split criterion by the definition of the weighted Gini index, the pruned tree by
/// enumeration of all subtrees of the tree grown without validation (the hull of training risk over
/// size, then the SE rule on the test sample), the risk from the confusion counts of routed rows.
TEST(PriorsAndCosts, WeightTheSplitsThePruningAndTheRisk) {
    Dataset const data = ReadHeldOut("species");
    CartGrower grown(data, *MakeWeighted(data, NoValidation));
    double weights[3] = {};
    grown.Run();
    ClsInfo const& root = *grown.GetRoot()->GetClsInfo(TrainingSample);
    EXPECT_EQ(root.GetPrediction(), 0);  // expected costs 1.1, 1.3 and 1.6
    for (int j = 0; j < 3; ++j) {
        EXPECT_NEAR(grown.GetWeighting().AlteredPrior(j), AlteredPriors[j], 1e-12);
        EXPECT_NEAR(root.GetClassProbability(j), Priors[j], 1e-12);
        weights[j] = 276.0 * AlteredPriors[j] / root.GetClassCount(j);
    }
    ExpectBestCuts(grown, 2, [&](std::vector<double> const& targets) {
        double sums[3] = {};
        for (double const target : targets) {
            sums[static_cast<std::size_t>(target)] += weights[static_cast<std::size_t>(target)];
        }
        double const total = sums[0] + sums[1] + sums[2];
        return total - (sums[0] * sums[0] + sums[1] * sums[1] + sums[2] * sums[2]) / total;
    });

    std::vector<Leaves> const hull = FindHull(grown);
    std::vector<Risk> risks;
    risks.reserve(hull.size());
    for (Leaves const& leaves : hull) {
        risks.push_back(JudgeSubtree(grown, leaves, TestSample));
    }
    ASSERT_EQ(hull.size(), 6U);
    std::unique_ptr<NodeImp> const copy(grown.GetRoot()->Clone());
    cart::PruningSequence const sequence(*copy, data, TrainingRows(data), grown.GetWeighting());
    EXPECT_EQ(sequence.GetAlphas().size(), hull.size());

    auto const best = std::min_element(
        risks.begin(), risks.end(), [](Risk const& a, Risk const& b) { return a.value < b.value; });
    for (double const factor : {0.0, 1.0, 4.0, 16.0, 100.0}) {
        auto const chosen = std::find_if(risks.begin(), risks.end(), [&](Risk const& risk) {
            return risk.value <= best->value + factor * best->stdError + 1e-12;
        });
        auto const settings = MakeWeighted(data, TestSampleValidation);
        settings->GetPruningSpec()->SetSERuleFactor(factor == 0.0 ? 100.0 : factor);
        settings->GetPruningSpec()->SetPickMinRiskTree(factor == 0.0);
        CartGrower pruned(data, *settings);
        ASSERT_TRUE(pruned.Run());
        EXPECT_EQ(pruned.GetNumLeaves(),
                  hull[static_cast<std::size_t>(chosen - risks.begin())].size());
        Risk const risk = JudgeByConfusion(data, TestSample, [&](std::size_t row) {
            return static_cast<int>(Drop(pruned, row)->GetAssignment());
        });
        EXPECT_NEAR(risk.value, chosen->value, 1e-12);
        EXPECT_NEAR(pruned.GetRisk(TestSample), risk.value, 1e-12);
        EXPECT_NEAR(pruned.GetRiskStdError(TestSample), risk.stdError, 1e-12);
    }
}

/// The risk of the body mass as cross-validation states it.
Risk CrossValidate(Dataset const& data, long seed, double factor) {
    auto const settings = MakeSettings(data, Usual, CrossValidation);
    settings->GetValidationSpec()->SetRandomSeed(seed);
    settings->GetPruningSpec()->SetSERuleFactor(factor);
    CartGrower grower(data, *settings);
    grower.Run();
    TreeStatistics statistics;
    EXPECT_TRUE(grower.GetStatistics(statistics));
    return {statistics.GetRisk(), statistics.GetStdError()};
}

TEST(CrossValidationOfPenguins, FollowsTheSeedAndPredictsEachFoldFromTheOthers) {
    Dataset const data = examples::ReadPenguins(Penguins, "body_mass_g");
    EXPECT_NE(CrossValidate(data, 7, 1.0).value, CrossValidate(data, 8, 1.0).value);

    // A large factor leaves the root alone, which predicts the mean of the other folds.
    ValidationSpecImp spec;
    spec.SetRandomSeed(7);
    std::vector<double> losses;
    for (auto const& fold : cart::DealIntoFolds(data, TrainingRows(data), spec)) {
        double sum = Mean(data.targets) * 342.0;
        for (std::size_t const row : fold) {
            sum -= data.targets[row];
        }
        double const mean = sum / (342.0 - static_cast<double>(fold.size()));
        for (std::size_t const row : fold) {
            losses.push_back((data.targets[row] - mean) * (data.targets[row] - mean));
        }
    }
    Risk const risk = CrossValidate(data, 7, 1e9);
    EXPECT_EQ(losses.size(), 342U);
    EXPECT_NEAR(risk.value, Mean(losses), 1e-6);
    EXPECT_NEAR(risk.stdError, std::sqrt(SumOfSquares(losses)) / 342.0, 1e-6);
}

TEST(GainsTable, CountsWhatTheRowsOfTheDataAmountTo) {
    Dataset const data = ReadHeldOut("species");
    CartGrower grower(data, *MakeSettings(data, Usual, NoValidation));
    grower.Run();
    std::map<Node const*, std::pair<double, double>> countsOfLeaf;  // cases, Chinstraps
    for (std::size_t const row : TrainingRows(data)) {
        auto& [cases, hits] = countsOfLeaf[Drop(grower, row)];
        cases += 1.0;
        hits += data.targets[row] == 1.0 ? 1.0 : 0.0;
    }
    GainsSettings settings;
    settings.SetTargetCategory(1);
    settings.SetCategoryProfit(1, 30.0);
    std::unique_ptr<GainsIntf> const leaves(grower.ComputeGains(settings));
    ASSERT_EQ(leaves->GetNumRows(), 4);
    double lastResponse = 100.0;
    for (int row = 0; row < 4; ++row) {
        auto const [cases, hits] = countsOfLeaf.at(leaves->GetNode(row, 0));
        double const response = leaves->GetValue(row, examples::ResponseColumn);
        EXPECT_EQ(leaves->GetValue(row, examples::CasesColumn), cases);
        EXPECT_NEAR(leaves->GetValue(row, examples::HitsPercentColumn), hits / 0.55, 1e-9);
        EXPECT_NEAR(response, 100.0 * hits / cases, 1e-9);
        EXPECT_NEAR(leaves->GetValue(row, examples::AverageColumn), 30.0 * hits / cases, 1e-9);
        EXPECT_NEAR(leaves->GetValue(row, examples::IndexColumn), response * 276.0 / 55.0, 1e-9);
        EXPECT_LE(response, lastResponse);
        lastResponse = response;
    }
    settings.SetHasCumulativeStatistics(true);
    std::unique_ptr<GainsIntf> const sums(grower.ComputeGains(settings));
    EXPECT_EQ(sums->GetNumNodes(3), 4);
    EXPECT_EQ(sums->GetValue(3, examples::HitsPercentColumn), 100.0);
    settings.SetHasPercentileStatistics(true);
    std::unique_ptr<GainsIntf> const deciles(grower.ComputeGains(settings));
    ASSERT_EQ(deciles->GetNumRows(), 10);
    EXPECT_EQ(deciles->GetNumNodes(0), 1);  // 27.6 cases, all of the first leaf
    EXPECT_NEAR(deciles->GetValue(0, examples::HitsColumn),
                0.276 * leaves->GetValue(0, examples::ResponseColumn), 1e-9);
    EXPECT_NEAR(deciles->GetValue(9, examples::HitsColumn), 55.0, 1e-9);
}

}  // namespace
}  // namespace tree_800::test
