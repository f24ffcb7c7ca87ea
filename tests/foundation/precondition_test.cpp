#include "support/tree_builder.h"

#include <tree/array.h>
#include <tree/array_rw.h>
#include <tree/matrix.h>
#include <tree/precondition.h>
#include <tree/predictor.h>
#include <tree/reg_info.h>
#include <tree/tree_statistics.h>

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace tree_800 {
namespace {

#ifdef TREE800_CHECKED
constexpr int TimesEvaluated = 1;
#else
constexpr int TimesEvaluated = 0;
#endif

TEST(PreconditionTest, OnlyACheckedBuildEvaluatesTheCondition) {
    int evaluated = 0;
    TREE800_REQUIRE(++evaluated > 0, "not violated");
    EXPECT_EQ(evaluated, TimesEvaluated);
}

TEST(PreconditionDeathTest, FailingSaysWhereAndWhy) {
    EXPECT_DEATH(PreconditionFailed("rule.cpp", 7, "no such child"),
                 "^rule.cpp:7: precondition violated: no such child\n$");
}

#ifdef TREE800_CHECKED

TEST(PreconditionDeathTest, ACheckedBuildAbortsOnCallerErrors) {
    TArray<int> array(true);
    array.SetAtGrow(2, 7);
    array.Resize(1);
    TMatrix<int> matrix(true);
    matrix.SetAtGrow(0, 1, 7);
    MCTree_800::ArrayRW<int> const vector;
    auto const node = test::Split(test::Cut(0, 1.5), test::Leaf(0, {1.0, 2.0}), test::Leaf(1));
    ClsInfo const& clsInfo = *node->GetChildImp(0)->GetClsInfo(TrainingSample);
    RegInfoImp regInfo;
    PredictorImp predictor;
    OSplitRule incomplete(0.0, 0);
    std::vector<int> const twice{1, 1};
    std::vector<int> const same{0, 1};
    TreeStatisticsImp statistics;
    statistics.SetNumClasses(2);
    constexpr auto TwoBits = static_cast<RegInfoImp::StatisticStorageFlags>(3);

    struct {
        char const* name;
        std::function<void()> violate;
    } const rows[] = {
        {"array write at the capacity", [&] { array.SetAt(3, 7); }},
        {"array read below 0", [&] { static_cast<void>(std::as_const(array)[-1]); }},
        {"matrix row at the capacity", [&] { static_cast<void>(matrix.GetAt(1, 0)); }},
        {"matrix column at the capacity", [&] { matrix.SetAt(0, 2, 7); }},
        {"vector read at the size", [&] { static_cast<void>(vector.GetAt(0)); }},
        {"class count", [&] { static_cast<void>(clsInfo.GetClassCount(2)); }},
        {"bin", [&] { regInfo.SetBinSize(0, 7.0); }},
        {"statistic not stored",
         [&] { static_cast<void>(regInfo.GetExtendedStatistic(RegInfoImp::StoreStdDev)); }},
        {"two statistics", [&] { regInfo.SetExtendedStatistic(TwoBits, 7.0); }},
        {"predictor values from nowhere", [&] { predictor.SetValues(nullptr, 1); }},
        {"child slot", [&] { static_cast<void>(node->GetChildImp(2)); }},
        {"child slot for null", [&] { node->SetChild(0, nullptr); }},
        {"not a permutation", [&] { node->ReorderSiblings(twice); }},
        {"predictor summary", [&] { node->SetPredictorRange(0, 1.0, 2.0); }},
        {"incomplete rule", [&] { incomplete.ReorderMappings(same); }},
        {"misclassification row", [&] { statistics.SetMisclassificationCount(2, 0, 7.0); }},
        {"misclassification column", [&] { statistics.SetMisclassificationCount(0, -1, 7.0); }},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_DEATH(row.violate(), ":[0-9]+: precondition violated: .");
    }
}

#endif

}  // namespace
}  // namespace tree_800
