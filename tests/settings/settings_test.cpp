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

auto Fields(VariableSettings const& variable) {
    return std::tuple(variable.GetMissingValue(), variable.GetNumValues(),
                      int{variable.GetMeasurementLevel()}, variable.GetValueMergeFlag());
}

TEST(VariableSettingsTest, StoresEverything) {
    VariableSettingsImp variable;
    EXPECT_EQ(Fields(variable), std::tuple(systemMissingValue(), 0, 2, true));
    variable.SetMissingValue(-Inf);
    variable.SetNumValues(-3);
    variable.SetMeasurementLevel(static_cast<global_800::MeasurementLevel>(77));
    variable.SetValueMergeFlag(false);
    std::unique_ptr<VariableSettings> const clone(variable.Clone());
    variable.SetMissingValue(NaN);
    EXPECT_TRUE(std::isnan(variable.GetMissingValue()));
    EXPECT_EQ(Fields(*clone), std::tuple(-Inf, -3, 77, false));
}

auto Fields(StopRule const& rule) {
    return std::tuple(rule.GetMinImprovement(), rule.GetMinNodeSize(), rule.GetMinNodePercentSize(),
                      rule.GetMinChildSize(), rule.GetMinChildPercentSize(),
                      rule.GetMaxTreeDepth());
}

TEST(StopRuleTest, SettersIgnoreWhatIsOutOfRangeAndConstructorsDoNot) {
    EXPECT_EQ(Fields(StopRuleImp()), std::tuple(0.0001, 100, 0.0, 50, 0.0, 0));
    EXPECT_EQ(Fields(StopRuleImp(-5.0, -1, 250.0, -2, -3.0, -4)),
              std::tuple(-5.0, -1, 250.0, -2, -3.0, -4));
    StopRuleImp rule;
    for (auto const& [size, stored] :
         {std::pair(-1, 7), {INT_MIN, 7}, {0, 0}, {INT_MAX, INT_MAX}}) {
        rule.Init(-Inf, 7, 8.0, 7, 8.0, -9);
        rule.SetMinNodeSize(size);
        EXPECT_EQ(Fields(rule), std::tuple(-Inf, stored, 8.0, 7, 8.0, -9));
        rule.SetMinChildSize(size);
        EXPECT_EQ(Fields(rule), std::tuple(-Inf, stored, 8.0, stored, 8.0, -9));
    }
    for (auto const& [percent, stored] :
         {std::pair(NaN, 8.0), {below0, 8.0}, {above100, 8.0}, {0.0, 0.0}, {100.0, 100.0}}) {
        rule.Init(-Inf, 7, 8.0, 7, 8.0, -9);
        rule.SetMinNodePercentSize(percent);
        EXPECT_EQ(Fields(rule), std::tuple(-Inf, 7, stored, 7, 8.0, -9));
        rule.SetMinChildPercentSize(percent);
        EXPECT_EQ(Fields(rule), std::tuple(-Inf, 7, stored, 7, stored, -9));
    }
    rule.SetMinImprovement(-2.0);
    rule.SetMaxTreeDepth(-3);
    std::unique_ptr<StopRule> const clone(rule.Clone());
    EXPECT_EQ(Fields(*clone), std::tuple(-2.0, 7, 100.0, 7, 100.0, -3));
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
                                       {StopRuleImp(0.0, 20, 0.0, 40, 0.0, 7), false}}) {
        EXPECT_EQ(rule == other, equal) << testing::PrintToString(Fields(other));
        EXPECT_EQ(other == rule, equal) << testing::PrintToString(Fields(other));
    }
    for (double const undefined : {NaN, Inf}) {
        StopRuleImp const other(undefined, 20, 0.0, 40, 0.0, 6);
        EXPECT_FALSE(other == other) << undefined;
    }
}

TEST(ValidationSpecTest, SettersRefuseWhatIsOutOfRange) {
    ValidationSpecImp validation;
    auto const fields = [](ValidationSpec const& s) {
        return std::tuple(int{s.GetType()}, s.GetNumCVFolds(), s.GetRandomSeed());
    };
    EXPECT_EQ(fields(validation), std::tuple(0, 10, 2000000L));
    // There is no way back to type 0.
    for (auto const& [type, stored] :
         {std::pair(0, 0), {3, 0}, {-1, 0}, {1, 1}, {0, 1}, {2, 2}, {0, 2}}) {
        EXPECT_EQ(validation.Set(static_cast<ValidationType>(type)), type == stored && type != 0)
            << type;
        EXPECT_EQ(fields(validation), std::tuple(stored, 10, 2000000L)) << type;
    }
    for (auto const& [folds, stored] :
         {std::pair(1, 10), {INT_MIN, 10}, {2, 2}, {INT_MAX, INT_MAX}}) {
        EXPECT_EQ(validation.SetNumCVFolds(folds), folds == stored) << folds;
        EXPECT_EQ(fields(validation), std::tuple(2, stored, 2000000L)) << folds;
    }
    for (auto const& [seed, stored] :
         {std::pair(0L, 2000000L), {-1L, 2000000L}, {1L, 1L}, {LONG_MAX, LONG_MAX}}) {
        EXPECT_EQ(validation.SetRandomSeed(seed), seed == stored) << seed;
        EXPECT_EQ(fields(validation), std::tuple(2, INT_MAX, stored)) << seed;
    }
    std::unique_ptr<ValidationSpec> const clone(validation.Clone());
    EXPECT_EQ(fields(*clone), fields(validation));
}

TEST(PruningSpecTest, IgnoresNegativeFactors) {
    PruningSpecImp pruning;
    EXPECT_FALSE(pruning.GetPickMinRiskTree());
    pruning.SetPickMinRiskTree(true);
    for (auto const& [factor, stored] :
         {std::pair(NaN, 1.0), {below0, 1.0}, {2.5, 2.5}, {0.0, 0.0}}) {
        pruning.SetSERuleFactor(factor);
        std::unique_ptr<PruningSpec> const clone(pruning.Clone());
        EXPECT_EQ(clone->GetSERuleFactor(), stored) << factor;
        EXPECT_TRUE(clone->GetPickMinRiskTree());
    }
}

}  // namespace
}  // namespace tree_800
