#include <tree/host.h>
#include <tree/pruning_spec.h>
#include <tree/stop_rule.h>
#include <tree/validation_spec.h>
#include <tree/variable_settings.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <memory>
#include <tuple>
#include <utility>

namespace tree_800 {
namespace {

constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
double const below0 = std::nextafter(0.0, -1.0);
double const above100 = std::nextafter(100.0, 101.0);

TEST(DefaultHostTest, Values) {
    EXPECT_EQ(systemMissingValue(), std::numeric_limits<double>::lowest());
    EXPECT_EQ(GetInfinity(), Inf);
}

TEST(VariableSettingsTest, StoresAnything) {
    VariableSettingsImp variable;
    variable.SetMissingValue(-Inf);
    variable.SetNumValues(-3);
    variable.SetMeasurementLevel(static_cast<global_800::MeasurementLevel>(77));
    variable.SetValueMergeFlag(false);
    std::unique_ptr<VariableSettings> const clone(variable.Clone());
    EXPECT_EQ(std::tuple(clone->GetMissingValue(), clone->GetNumValues(),
                         int{clone->GetMeasurementLevel()}, clone->GetValueMergeFlag()),
              std::tuple(-Inf, -3, 77, false));
}

auto Fields(StopRule const& rule) {
    return std::tuple(rule.GetMinImprovement(), rule.GetMinNodeSize(), rule.GetMinNodePercentSize(),
                      rule.GetMinChildSize(), rule.GetMinChildPercentSize(),
                      rule.GetMaxTreeDepth());
}

TEST(StopRuleTest, SettersIgnoreWhatIsOutOfRangeAndConstructorsDoNot) {
    EXPECT_EQ(Fields(StopRuleImp()), std::tuple(0.0001, 100, 0.0, 50, 0.0, 0));
    StopRuleImp rule(-5.0, -1, 250.0, -2, -3.0, -4);
    EXPECT_EQ(Fields(rule), std::tuple(-5.0, -1, 250.0, -2, -3.0, -4));
    rule.Init(-Inf, 7, 8.0, 6, 9.0, -9);
    for (auto const& [size, nodeSize, childSize] :
         {std::tuple(-1, 7, 6), {INT_MIN, 7, 6}, {0, 0, 0}, {INT_MAX, INT_MAX, INT_MAX}}) {
        rule.SetMinNodeSize(size);
        rule.SetMinChildSize(size);
        EXPECT_EQ(Fields(rule), std::tuple(-Inf, nodeSize, 8.0, childSize, 9.0, -9));
    }
    rule.Init(-Inf, 7, 8.0, 6, 9.0, -9);
    rule.SetMinImprovement(-2.0);
    rule.SetMaxTreeDepth(-3);
    for (auto const& [percent, nodeSize, childSize] : {std::tuple(NaN, 8.0, 9.0),
                                                       {below0, 8.0, 9.0},
                                                       {above100, 8.0, 9.0},
                                                       {0.0, 0.0, 0.0},
                                                       {100.0, 100.0, 100.0}}) {
        rule.SetMinNodePercentSize(percent);
        rule.SetMinChildPercentSize(percent);
        EXPECT_EQ(Fields(rule), std::tuple(-2.0, 7, nodeSize, 6, childSize, -3));
    }
}

TEST(StopRuleTest, EqualityToleratesATrillionth) {
    constexpr double Near = 1e-12;
    double const far = std::nextafter(Near, 1.0);
    StopRuleImp const rule(0.0, 20, 0.0, 40, 0.0, 6);
    for (auto const& [other, equal] : {std::pair(StopRuleImp(Near, 20, Near, 40, Near, 6), true),
                                       {StopRuleImp(far, 20, 0.0, 40, 0.0, 6), false},
                                       {StopRuleImp(0.0, 21, 0.0, 40, 0.0, 6), false},
                                       {StopRuleImp(0.0, 20, far, 40, 0.0, 6), false},
                                       {StopRuleImp(0.0, 20, 0.0, 41, 0.0, 6), false},
                                       {StopRuleImp(0.0, 20, 0.0, 40, far, 6), false},
                                       {StopRuleImp(0.0, 20, 0.0, 40, 0.0, 7), false},
                                       {StopRuleImp(NaN, 20, 0.0, 40, 0.0, 6), false}}) {
        EXPECT_EQ(rule == other, equal) << testing::PrintToString(Fields(other));
        EXPECT_EQ(other == rule, equal) << testing::PrintToString(Fields(other));
    }
    StopRuleImp const percent(0.5, 20, 5.0, 40, 2.5, 6);
    EXPECT_TRUE(percent == StopRuleImp(percent));
    StopRuleImp const infinite(Inf, 20, 0.0, 40, 0.0, 6);
    EXPECT_FALSE(infinite == infinite);
}

TEST(ValidationSpecTest, SettersRefuseWhatIsOutOfRange) {
    ValidationSpecImp validation;
    // There is no way back to type 0.
    for (auto const& [type, stored] :
         {std::pair(0, 0), {3, 0}, {-1, 0}, {1, 1}, {0, 1}, {2, 2}, {0, 2}}) {
        EXPECT_EQ(validation.Set(static_cast<ValidationType>(type)), type == stored && type != 0);
        EXPECT_EQ(int{validation.GetType()}, stored) << type;
    }
    for (auto const& [folds, stored] :
         {std::pair(1, 10), {INT_MIN, 10}, {2, 2}, {INT_MAX, INT_MAX}}) {
        EXPECT_EQ(validation.SetNumCVFolds(folds), folds == stored) << folds;
        EXPECT_EQ(validation.GetNumCVFolds(), stored) << folds;
    }
    for (auto const& [seed, stored] :
         {std::pair(0L, 2000000L), {-1L, 2000000L}, {1L, 1L}, {LONG_MAX, LONG_MAX}}) {
        EXPECT_EQ(validation.SetRandomSeed(seed), seed == stored) << seed;
        EXPECT_EQ(validation.GetRandomSeed(), stored) << seed;
    }
}

TEST(PruningSpecTest, IgnoresNegativeFactors) {
    PruningSpecImp pruning;
    for (auto const& [factor, stored] :
         {std::pair(NaN, 1.0), {below0, 1.0}, {2.5, 2.5}, {0.0, 0.0}}) {
        pruning.SetSERuleFactor(factor);
        EXPECT_EQ(pruning.GetSERuleFactor(), stored) << factor;
    }
}

}  // namespace
}  // namespace tree_800
