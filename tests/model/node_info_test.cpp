#include "support/equality.h"
#include "support/random.h"
#include "support/tree_builder.h"

#include <tree/reg_info.h>

#include <cmath>
#include <iterator>
#include <map>

namespace tree_800 {
namespace {

using namespace test;

TEST(ClsInfo, PercentIsAShareOfTheCount) {
    EXPECT_EQ(Counts(0, {3.0, 1.0})->GetClassPercent(0), 0.75);
    EXPECT_EQ(Counts(0, {1.0, -3.0})->GetClassPercent(0), 0.0);
    EXPECT_EQ(Counts(0, {})->GetClassPercent(0), 0.0);
    EXPECT_EQ(Counts(0, {1e16, 1.0, -1e16})->GetCount(), 0.0);  // summed in order
}

TEST(ClsInfo, ResizingKeepsTheFirstClassesAndClearsTheOthers) {
    auto const info = Counts(0, {1.0, 2.0, 3.0});
    info->SetClassProbability(1, 0.5);
    info->SetNumClasses(1);
    info->SetNumClasses(4);
    for (int i = -1; i <= 4; ++i) {
        bool const exists = i >= 0 && i < 4;
        EXPECT_EQ(info->GetClassProbability(i), exists ? 0.0 : -1.0);
        EXPECT_EQ(exists ? info->GetClassCount(i) : 0.0, i == 0 ? 1.0 : 0.0);
    }
    info->SetNumClasses(-1);
    EXPECT_EQ(info->GetNumClasses(), 0);
}

TEST(ClsInfo, EqualityAndCopiesCoverEverything) {
    auto const source = Counts(1, {3.0, 1.0});
    source->SetClassProbability(0, 0.75);
    ExpectEqualityCovers<ClsInfoImp>(
        *source, {{"prediction", [](auto& info) { info.SetPrediction(0); }},
                  {"unweighted count", [](auto& info) { info.SetUnweightedCount(4.0); }},
                  {"percent size", [](auto& info) { info.SetPercentSize(50.0); }},
                  {"last bit", [](auto& info) { info.SetClassCount(1, std::nextafter(1.0, 2.0)); }},
                  {"probability", [](auto& info) { info.SetClassProbability(1, 0.25); }},
                  {"number of classes", [](auto& info) { info.SetNumClasses(3); }}});
    auto const larger = Counts(2, {9.0, 9.0, 9.0});
    *larger = *source;
    EXPECT_TRUE(*larger == *source);
    larger->SetClassCount(0, std::nan(""));
    EXPECT_FALSE(*larger == *larger);
}

TEST(ClsInfo, CopyMarksTheProbabilitiesThatItsSourceLacks) {
    auto const source = Counts(0, {1.0, 2.0});
    source->SetNumClasses(0);
    source->SetClassCount(1, 2.0);  // back within the room of before, without probabilities
    auto const copy = CopyOf(*source);
    EXPECT_EQ(copy->GetClassCount(1), 2.0);
    EXPECT_EQ(copy->GetClassProbability(1), -1.0);
    EXPECT_FALSE(*copy == *source);
    source->SetClassProbability(0, 0.5);  // makes room for those of all classes
    EXPECT_EQ(source->GetClassProbability(1), 0.0);
}

RegInfoImp MakeRegInfo() {
    RegInfoImp info;
    info.SetCount(10.0);
    info.SetMean(4.5);
    info.SetMinimum(-0.3);
    info.SetMaximum(0.4);
    info.SetNumBins(7);
    info.SetBinSize(1, 7.0);
    return info;
}

TEST(RegInfo, BinsAreAdjacentSlicesOfTheRange) {
    RegInfoImp info = MakeRegInfo();
    for (int i = 0; i < 7; ++i) {
        EXPECT_NEAR(info.GetBinLeftEndPoint(i), -0.3 + 0.1 * i, 1e-15);
        EXPECT_NEAR(info.GetBinRightEndPoint(i), -0.2 + 0.1 * i, 1e-15);
    }
    info.SetNumBins(2);
    info.SetNumBins(3);
    EXPECT_EQ(info.GetBinSize(1), 7.0);
    EXPECT_EQ(info.GetBinSize(2), 0.0);
    info.SetNumBins(-1);
    EXPECT_EQ(info.GetNumBins(), 0);
    info.SetExtendedStatistic(RegInfoImp::StoreUnweightedCount, 3.0);
    info.Clear();
    EXPECT_TRUE(info == RegInfoImp());
    EXPECT_EQ(info.GetUnweightedCount() + info.GetMean(), 0.0);
    EXPECT_EQ(info.GetMinimum(), GetInfinity());
    EXPECT_EQ(info.GetMaximum(), -GetInfinity());
}

// What is stored, as a map from flag to value would hold it.
TEST(RegInfo, RandomStatisticsStandInTheOrderOfTheirFlags) {
    using Flag = RegInfoImp::StatisticStorageFlags;
    Random random;
    for (int run = 0; run < 200; ++run) {
        RegInfoImp info = MakeRegInfo();
        std::map<int, double> stored;
        auto const storedOr = [&stored](int bit, double fallback) {
            return stored.count(bit) > 0 ? stored[bit] : fallback;
        };
        for (int steps = random.Between(0, 12); steps > 0; --steps) {
            int const chosen = 1 << random.Between(0, 7);
            stored[chosen] = random.Between(0, 1000);
            info.SetExtendedStatistic(static_cast<Flag>(chosen), stored[chosen]);
        }
        for (int const bits : {1, 2, 4, 8, 16, 32, 64, 128, 0, 3, 192, 256}) {
            auto const flag = static_cast<Flag>(bits);
            bool const isFlag = bits > 0 && bits < 256 && (bits & (bits - 1)) == 0;
            bool const isStored = stored.count(bits) > 0;
            auto const pos = std::distance(stored.begin(), stored.lower_bound(bits));
            double out = -5.0;
            EXPECT_EQ(info.GetExtendedStatistic(flag, &out), isStored);
            EXPECT_EQ(out, storedOr(bits, -5.0));
            EXPECT_EQ(info.GetExtendedStatisticPos(flag), isStored ? pos : -1);
            EXPECT_EQ(info.GetExtendedStatisticInsertionPos(flag), isFlag && !isStored ? pos : -1);
        }
        EXPECT_EQ(info.GetStdDev(), storedOr(1, 0.0));
        EXPECT_EQ(info.GetPrediction(), storedOr(2, 4.5));
        EXPECT_EQ(info.GetUnweightedCount(), storedOr(4, 10.0));
        ASSERT_FALSE(HasFailure()) << "run " << run;
    }
}

TEST(RegInfo, EqualityAndCopiesCoverEverything) {
    RegInfoImp source = MakeRegInfo();
    source.SetExtendedStatistic(RegInfoImp::StorePrediction, 4.5);
    source.SetExtendedStatistic(RegInfoImp::StoreUnweightedCount, 10.0);
    ExpectEqualityCovers<RegInfoImp>(
        source, {{"mean", [](auto& info) { info.SetMean(4.25); }},
                 {"minimum", [](auto& info) { info.SetMinimum(1.0); }},
                 {"maximum", [](auto& info) { info.SetMaximum(9.0); }},
                 {"bin", [](auto& info) { info.SetBinSize(3, 1.0); }},
                 {"number of bins", [](auto& info) { info.SetNumBins(3); }},
                 {"count", [](auto& info) { info.SetCount(11.0); }},
                 {"statistics",
                  [](auto& info) { info.SetExtendedStatistic(RegInfoImp::StoreStdDev, 8.0); }},
                 {"prediction", [](auto& info) {
                      info.SetExtendedStatistic(RegInfoImp::StorePrediction, 8.0);
                  }}});
    EXPECT_TRUE(source == MakeRegInfo());  // which statistics are stored does not matter
    source.SetBinSize(0, std::nan(""));
    EXPECT_FALSE(source == source);
}

TEST(RegInfo, CopyAlwaysStoresADeviationAndForgetsWhatItHeld) {
    RegInfoImp source;
    source.SetExtendedStatistic(RegInfoImp::StorePrediction, 6.0);
    RegInfoImp target = MakeRegInfo();
    target.SetExtendedStatistic(RegInfoImp::StoreUnweightedCount, 3.0);
    target = source;
    EXPECT_EQ(target.GetExtendedStatisticPos(RegInfoImp::StoreStdDev), 0);
    EXPECT_EQ(target.GetExtendedStatisticPos(RegInfoImp::StorePrediction), 1);
    EXPECT_EQ(target.GetExtendedStatisticPos(RegInfoImp::StoreUnweightedCount), -1);
    RegInfoImp const& same = source;
    source = same;  // not a copy
    EXPECT_EQ(source.GetExtendedStatisticPos(RegInfoImp::StoreStdDev), -1);
    source.CopyData(same);
    EXPECT_EQ(source.GetExtendedStatisticPos(RegInfoImp::StoreStdDev), 0);
}

}  // namespace
}  // namespace tree_800
