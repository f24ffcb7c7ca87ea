#include <tree/cost.h>
#include <tree/host.h>
#include <tree/priors.h>
#include <tree/scores.h>

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

namespace tree_800 {
namespace {

using Rows = std::vector<std::vector<double>>;
using Values = std::vector<double>;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

Rows CellsOf(Cost const& cost) {
    Rows rows;
    for (int i = 0; i < cost.GetNumClasses(); ++i) {
        rows.emplace_back();
        for (int j = 0; j < cost.GetNumClasses(); ++j) {
            EXPECT_EQ(cost.GetAt(i, j), cost.Get(i, j));
            rows.back().push_back(cost.Get(i, j));
        }
        EXPECT_EQ(cost.Get(i, cost.GetNumClasses()), -1.0);
        EXPECT_EQ(cost.Get(i, -1), -1.0);
    }
    EXPECT_EQ(cost.Get(cost.GetNumClasses(), 0), -1.0);
    return rows;
}

TEST(CostTest, CellsAreCheckedAndTheMatrixGrowsByDefaultCosts) {
    struct {
        int i, j;
        double value;
        bool accepted;
        Rows cells;
    } const rows[] = {
        {1, 1, 0.5, false, {}},
        {0, 1, -1.0, false, {}},
        {0, 1, NaN, false, {}},
        {-1, 0, 1.0, false, {}},
        {0, -1, 1.0, false, {}},
        {1, 1, 0.0, true, {{0, 1}, {1, 0}}},
        {0, 1, 0.0, true, {{0, 0}, {1, 0}}},
        {0, 1, 4.0, true, {{0, 4}, {1, 0}}},
        {2, 0, 5.0, true, {{0, 4, 1}, {1, 0, 1}, {5, 1, 0}}},
        {1, 3, 2.0, true, {{0, 4, 1, 1}, {1, 0, 1, 2}, {5, 1, 0, 1}, {1, 1, 1, 0}}},
    };
    CostImp cost;
    EXPECT_TRUE(cost.IsDefault());
    for (auto const& row : rows) {
        EXPECT_EQ(cost.SetAt(row.i, row.j, row.value), row.accepted);
        EXPECT_EQ(CellsOf(cost), row.cells);
        EXPECT_EQ(cost.GetType(), row.cells.empty() ? DefaultCosts : UserCosts);
    }
    EXPECT_THROW(cost.Set(INT_MAX, 0, 1.0), std::bad_alloc);
    EXPECT_EQ(CellsOf(cost), rows[9].cells);

    std::unique_ptr<Cost> const clone(cost.Clone());
    cost.Resize(-3);
    cost.Resize(0);
    cost.Resize(4);
    EXPECT_EQ(CellsOf(cost), rows[9].cells);
    cost.Resize(2);
    EXPECT_EQ(CellsOf(cost), (Rows{{0, 4}, {1, 0}}));
    cost.Resize(3);
    EXPECT_EQ(CellsOf(cost), (Rows{{0, 4, 1}, {1, 0, 1}, {1, 1, 0}}));
    EXPECT_EQ(cost.GetType(), UserCosts);
    EXPECT_EQ(CellsOf(*clone), rows[9].cells);
}

TEST(CostTest, DefaultCosts) {
    CostImp cost;
    EXPECT_FALSE(cost.Set(DefaultCosts)) << "they are default already";
    cost.Set(0, 1, 1.0 + 1e-13);
    EXPECT_EQ(cost.GetType(), UserCosts);
    EXPECT_TRUE(cost.IsDefault());
    cost.Set(1, 0, 1.0 - 1e-11);
    EXPECT_FALSE(cost.IsDefault());
    EXPECT_FALSE(cost.Set(UserCosts));
    EXPECT_TRUE(cost.Set(DefaultCosts));
    EXPECT_EQ(CellsOf(cost), (Rows{{0, 1}, {1, 0}}));

    EXPECT_EQ(&cost.GetMatrix(CostImp::DefaultMatrix), &cost.GetMatrix(CostImp::WorkingMatrix));
    cost.Set(0, 1, 9.0);
    cost.SetDefault(CostImp::DefaultMatrix, 3);
    EXPECT_EQ(cost.GetMatrix(CostImp::DefaultMatrix).GetNumRows(), 3);
    EXPECT_TRUE(cost.IsDefaultMatrix(CostImp::DefaultMatrix));
    EXPECT_FALSE(cost.IsDefaultMatrix(CostImp::WorkingMatrix));
    EXPECT_EQ(cost.GetType(), UserCosts) << "the default matrix does not decide the type";
    cost.SetDefault(CostImp::WorkingMatrix, -1);
    EXPECT_EQ(cost.GetType(), DefaultCosts);
    EXPECT_EQ(cost.Get(0, 1), 9.0);
    cost.SetDefault(CostImp::WorkingMatrix, 2);
    EXPECT_EQ(CellsOf(cost), (Rows{{0, 1}, {1, 0}}));
}

Values ValuesOf(PriorsImp const& priors, PriorsImp::PriorVector vector) {
    Values values;
    for (int i = 0; i < priors.GetVector(vector, true)->GetSize(); ++i) {
        values.push_back(priors.Get(i, vector));
    }
    EXPECT_EQ(priors.Get(-1, vector), 0.0);
    EXPECT_EQ(priors.Get(static_cast<int>(values.size()), vector), 0.0);
    return values;
}

TEST(PriorsTest, ValuesAreCheckedAndTheVectorGrows) {
    struct {
        int i;
        double value;
        bool accepted;
        Values values;
    } const rows[] = {
        {-1, 0.5, false, {}},
        {0, -0.1, false, {}},
        {0, NaN, false, {}},
        {1, 0.5, true, {0, 0.5}},
        {4, 2.0, true, {0, 0.5, 0, 0, 2}},
        {0, 0.0, true, {0, 0.5, 0, 0, 2}},
    };
    PriorsImp priors;
    for (auto const& row : rows) {
        EXPECT_EQ(priors.Set(row.i, row.value), row.accepted);
        EXPECT_EQ(ValuesOf(priors, PriorsImp::GivenPriors), row.values);
        EXPECT_EQ(priors.GetType(), row.values.empty() ? PriorsFromData : UserPriors);
    }
    EXPECT_FALSE(priors.Set(0, -0.1, PriorsImp::ThirdPriors));
    EXPECT_THROW(priors.Set(INT_MAX, 0.5), std::bad_alloc);
    EXPECT_FALSE(priors.Resize(5));
    EXPECT_TRUE(priors.Resize(0));
    EXPECT_TRUE(priors.Set(0, 0.5));
    EXPECT_EQ(priors.GetNumClasses(), 2) << "it had more room before it was emptied";

    EXPECT_FALSE(priors.Set(UserPriors));
    EXPECT_TRUE(priors.Set(PriorsFromData));
    EXPECT_EQ(priors.GetNumClasses(), 0);
    EXPECT_TRUE(priors.Set(EqualPriors));
    EXPECT_EQ(priors.GetType(), EqualPriors);
}

TEST(PriorsTest, AbsentVectorsFallBackAndEachIsStoredByItsOwnRule) {
    PriorsImp priors;
    priors.Set(2, 0.25);
    EXPECT_EQ(priors.FindValidId(PriorsImp::ThirdPriors), PriorsImp::GivenPriors);
    EXPECT_EQ(priors.GetValues(PriorsImp::ThirdPriors), priors.GetValues(PriorsImp::GivenPriors));
    for (auto const vector :
         {PriorsImp::AlteredPriors, PriorsImp::SecondPriors, PriorsImp::ThirdPriors}) {
        EXPECT_EQ(priors.GetVector(vector, false), nullptr);
        EXPECT_TRUE(priors.Set(1, static_cast<double>(vector), vector));
        EXPECT_EQ(priors.FindValidId(PriorsImp::ThirdPriors), vector);
        EXPECT_EQ(priors.Get(1, vector), static_cast<double>(vector));
        EXPECT_EQ(priors.GetVector(vector, false)->GetSize(), 2);
    }
    EXPECT_EQ(priors.FindValidId(PriorsImp::SecondPriors), PriorsImp::SecondPriors);
    for (auto const vector : {PriorsImp::GivenPriors, PriorsImp::AlteredPriors,
                              PriorsImp::SecondPriors, PriorsImp::ThirdPriors}) {
        auto made = std::make_unique<TArray<double>>(true);
        made->SetAtGrow(1, 9.0);
        priors.SetVector(vector, made.release());
        EXPECT_EQ(priors.Get(1, vector) == 9.0, vector == PriorsImp::SecondPriors);
    }
    EXPECT_EQ(priors.GetType(), UserPriors);
    std::unique_ptr<Priors> const clone(priors.Clone());
    auto const& copy = dynamic_cast<PriorsImp const&>(*clone);
    priors.Set(1, 7.0, PriorsImp::ThirdPriors);
    EXPECT_EQ(copy.Get(1, PriorsImp::ThirdPriors), 3.0);
    EXPECT_EQ(copy.Get(1, PriorsImp::SecondPriors), 9.0);
    priors.Set(EqualPriors);
    EXPECT_EQ(priors.GetVector(PriorsImp::SecondPriors, false), nullptr);
}

// Each prior weighted by what misclassifying its class costs in all, scaled to sum 1.
TEST(PriorsTest, AlteredOnceTheSecondVectorEveryTime) {
    CostImp cost;
    cost.Set(1, 0, 3.0);
    PriorsImp priors;
    priors.Set(0, 0.5);
    priors.Set(1, 0.25);
    priors.Set(1, 2.0, PriorsImp::SecondPriors);
    EXPECT_TRUE(priors.ComputeAltered(cost)) << "nothing to do";
    EXPECT_EQ(priors.GetVector(PriorsImp::AlteredPriors, false), nullptr);
    priors.AlterValues(true);
    EXPECT_TRUE(priors.ComputeAltered(cost));
    EXPECT_EQ(ValuesOf(priors, PriorsImp::AlteredPriors), (Values{1.5 / 1.75, 0.25 / 1.75}));
    EXPECT_EQ(ValuesOf(priors, PriorsImp::SecondPriors), (Values{0, 1}));
    priors.Set(0, 1.0, PriorsImp::SecondPriors);
    cost.Set(1, 0, 7.0);
    EXPECT_TRUE(priors.ComputeAltered(cost));
    EXPECT_EQ(ValuesOf(priors, PriorsImp::AlteredPriors), (Values{1.5 / 1.75, 0.25 / 1.75}));
    EXPECT_EQ(ValuesOf(priors, PriorsImp::SecondPriors), (Values{0.875, 0.125}));
    EXPECT_EQ(ValuesOf(priors, PriorsImp::GivenPriors), (Values{0.5, 0.25}));
    EXPECT_EQ(priors.GetAltered(0), priors.Get(0, PriorsImp::AlteredPriors));
}

TEST(PriorsTest, PriorsThatCannotBeAltered) {
    CostImp cost;
    cost.Set(1, 0, 1.0);
    cost.Set(0, 1, 0.0);
    PriorsImp priors;
    priors.AlterValues(true);
    EXPECT_FALSE(priors.ComputeAltered(cost)) << "no priors";
    priors.Set(1, 0.5);
    EXPECT_FALSE(priors.ComputeAltered(cost)) << "all products are 0";
    EXPECT_EQ(priors.GetVector(PriorsImp::AlteredPriors, false), nullptr);
    EXPECT_FALSE(priors.AlterPriorVector(PriorsImp::SecondPriors, PriorsImp::ThirdPriors, cost));
}

Values ValuesOf(Scores const& scores) {
    Values values;
    for (int i = 0; i < scores.GetNumClasses(); ++i) {
        values.push_back(scores.Get(i));
    }
    EXPECT_EQ(scores.Get(-1), systemMissingValue());
    EXPECT_EQ(scores.Get(scores.GetNumClasses()), systemMissingValue());
    return values;
}

TEST(ScoresTest, GrowAndReset) {
    ScoresImp scores;
    EXPECT_TRUE(scores.Set(DefaultScores));
    EXPECT_EQ(ValuesOf(scores), Values());
    EXPECT_FALSE(scores.Set(-1, 2.0));
    EXPECT_TRUE(scores.Set(3, -7.5));
    EXPECT_EQ(scores.GetType(), UserScores);
    EXPECT_FALSE(scores.Set(UserScores));
    EXPECT_EQ(ValuesOf(scores), (Values{0, 0, 0, -7.5}));
    std::unique_ptr<Scores> const clone(scores.Clone());
    EXPECT_TRUE(scores.Set(DefaultScores));
    EXPECT_EQ(ValuesOf(scores), (Values{0, 1, 2, 3}));
    scores.Resize(2);
    scores.Resize(3);
    EXPECT_EQ(ValuesOf(scores), (Values{0, 1, 0}));
    EXPECT_EQ(scores.GetType(), DefaultScores);
    EXPECT_THROW(scores.Resize(-1), std::length_error);
    EXPECT_EQ(ValuesOf(*clone), (Values{0, 0, 0, -7.5}));
    EXPECT_EQ(clone->GetType(), UserScores);
}

}  // namespace
}  // namespace tree_800
