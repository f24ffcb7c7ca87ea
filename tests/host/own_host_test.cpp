#include <tree/cls_info.h>
#include <tree/host.h>
#include <tree/ordered_split_rule.h>
#include <tree/reg_info.h>
#include <tree/tree_statistics.h>
#include <tree/variable_settings.h>

#include <gtest/gtest.h>

// The definitions of the program win over those that are linked along with the library.
double systemMissingValue() { return -999.0; }
double GetInfinity() { return 1e300; }

namespace tree_800 {
namespace {

TEST(OwnHostTest, TheLibraryTakesTheValuesOfTheProgram) {
    EXPECT_EQ(OSplitRule(0.0, 0).GetStatistic(StatisticSlot0), -999.0);
    EXPECT_EQ(OSplitRule(0.0, 0).GetCutPoint(), -999.0);
    EXPECT_EQ(ClsInfoImp().GetPercentSize(), -999.0);
    EXPECT_EQ(VariableSettingsImp().GetMissingValue(), -999.0);
    EXPECT_EQ(TreeStatistics().GetRisk(), -999.0);
    EXPECT_EQ(TreeStatisticsImp().GetMisclassificationCount(0, 0), -999.0);
    EXPECT_EQ(RegInfoImp().GetMinimum(), 1e300);
    EXPECT_EQ(RegInfoImp().GetMaximum(), -1e300);
}

TEST(OwnHostTest, AnObservationLacksAValueWhenTheProgramSaysSo) {
    OSplitRule rule(VariableSettingsImp(), 0);
    rule.SetCutPoint(3.5);
    EXPECT_EQ(rule.Classify(-999.0), -1);
    EXPECT_EQ(rule.Classify(-998.0), 0);
}

}  // namespace
}  // namespace tree_800
