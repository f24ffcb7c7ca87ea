#include <tree/gains.h>
#include <tree/gains_settings.h>
#include <tree/host.h>
#include <tree/node_imp.h>

#include <gtest/gtest.h>

#include <memory>

namespace tree_800 {
namespace {

TEST(GainsSettingsTest, EntryStyleIsFixedByTheFirstAndForgottenByCopies) {
    GainsSettings revenues;
    revenues.SetCategoryRevenue(-1, 1.0);  // ignored, and no style yet
    EXPECT_EQ(revenues.GetNumCategories(), 0);
    revenues.SetCategoryRevenue(2, 100.0);
    revenues.SetCategoryExpense(0, 30.0);
    revenues.SetCategoryProfit(1, 5.0);  // the other style
    EXPECT_EQ(revenues.GetNumCategories(), 3);
    EXPECT_EQ(revenues.GetCategoryProfit(0), -30.0);
    EXPECT_EQ(revenues.GetCategoryProfit(1), 0.0);
    EXPECT_EQ(revenues.GetCategoryProfit(2), 100.0);
    EXPECT_EQ(revenues.GetCategoryRevenue(3), 0.0);
    EXPECT_EQ(revenues.GetCategoryExpense(-1), 0.0);

    GainsSettings profits;
    profits.SetCategoryProfit(1, 5.0);
    profits.SetCategoryRevenue(1, 9.0);
    profits.SetCategoryExpense(1, 9.0);
    EXPECT_EQ(profits.GetCategoryProfit(1), 5.0);
    EXPECT_EQ(profits.GetNumCategories(), 2);
    GainsSettings constructed(profits);
    GainsSettings assigned;
    assigned.SetCategoryProfit(0, 1.0);
    assigned = profits;
    for (GainsSettings* const copy : {&constructed, &assigned}) {
        EXPECT_EQ(copy->GetCategoryProfit(1), 5.0);
        copy->SetCategoryRevenue(1, 9.0);
        copy->SetCategoryProfit(1, 2.0);
        EXPECT_EQ(copy->GetCategoryProfit(1), 9.0);
    }
    profits = *&profits;
    profits.SetCategoryRevenue(1, 9.0);
    EXPECT_EQ(profits.GetCategoryProfit(1), 5.0) << "self-assignment forgets nothing";
}

TEST(GainsSettingsTest, EverythingElseIsStoredAndCopied) {
    GainsSettings settings;
    EXPECT_EQ(settings.GetTargetCategory(), -1);
    EXPECT_EQ(settings.GetPercentileIncrement(), 10);
    EXPECT_EQ(settings.GetSortOrder(), 1);
    EXPECT_EQ(settings.GetDataSample(), TrainingSample);
    EXPECT_EQ(settings.GetSortKey(), TrainingSample);
    EXPECT_TRUE(settings.HasAverageBasedStatistics());
    EXPECT_FALSE(settings.HasPercentileStatistics() || settings.HasCumulativeStatistics());

    settings.SetTargetCategory(0);
    settings.SetPercentileIncrement(static_cast<PercentileIncrement>(7));
    settings.SetSortOrder(SortAscending);
    settings.SetDataSample(TestSample);
    settings.SetHasCumulativeStatistics(true);
    settings.SetHasPercentileStatistics(true);
    settings.SetHasCumulativeStatistics(false);
    GainsSettings const copy(settings);
    settings.SetHasCumulativeStatistics(true);
    settings.SetSortKey(TestSample);
    EXPECT_TRUE(settings.HasCumulativeStatistics() && !settings.HasPercentileStatistics());
    EXPECT_TRUE(!copy.HasCumulativeStatistics() && copy.HasPercentileStatistics());
    EXPECT_FALSE(copy.HasAverageBasedStatistics());
    EXPECT_EQ(copy.GetPercentileIncrement(), 7);
    EXPECT_EQ(copy.GetSortOrder(), SortAscending);
    EXPECT_EQ(copy.GetDataSample(), TestSample);
    EXPECT_EQ(copy.GetSortKey(), TrainingSample);
}

class OneCell : public GainsIntf {
public:
    explicit OneCell(double first) : value(first) { ++alive; }
    OneCell(OneCell const& other) : GainsIntf(other), value(other.value) { ++alive; }
    OneCell& operator=(OneCell const&) = delete;
    ~OneCell() override { --alive; }

    int GetNumRows() const override { return 1; }
    int GetNumNodes(int row) const override { return row + 2; }
    Node const* GetNode(int row, int position) const override {
        return row == 0 && position == 1 ? &node : nullptr;
    }
    bool HasColumn(int column) const override { return column == 4; }
    double GetValue(int row, int column) const override { return value + 10 * row + column; }
    GainsIntf* Clone() const override { return new OneCell(*this); }

    static inline int alive = 0;
    static inline NodeImp const node;
    double value;
};

TEST(GainsTest, HoldsACloneOrNothing) {
    Gains gains;
    EXPECT_EQ(gains.GetNumRows(), 0);
    EXPECT_FALSE(gains.HasColumn(4));
    EXPECT_EQ(gains.GetNumNodes(0), 0);
    EXPECT_EQ(gains.GetNode(0, 1), nullptr);
    EXPECT_EQ(gains.GetValue(0, 0), systemMissingValue());
    {
        OneCell table(0.5);
        gains = table;
        table.value = 7.0;
        gains = OneCell(1.5);
        EXPECT_EQ(OneCell::alive, 2);
    }
    EXPECT_EQ(OneCell::alive, 1);
    EXPECT_EQ(gains.GetNumRows(), 1);
    EXPECT_TRUE(gains.HasColumn(4));
    EXPECT_EQ(gains.GetNumNodes(3), 5);
    EXPECT_EQ(gains.GetNode(0, 1), &OneCell::node);
    EXPECT_EQ(gains.GetValue(2, 4), 25.5);
}

}  // namespace
}  // namespace tree_800
