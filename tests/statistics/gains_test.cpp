#include <tree/gains.h>
#include <tree/gains_settings.h>
#include <tree/host.h>
#include <tree/node_imp.h>

#include <gtest/gtest.h>

#include <tuple>

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
    double const profitOf[] = {-30.0, 0.0, 100.0};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(revenues.GetCategoryProfit(i), profitOf[i]);
    }
    EXPECT_EQ(revenues.GetCategoryRevenue(3), 0.0);
    EXPECT_EQ(revenues.GetCategoryExpense(-1), 0.0);

    GainsSettings profits;
    profits.SetCategoryProfit(1, 5.0);
    profits = *&profits;  // forgets nothing
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
}

auto Fields(GainsSettings const& s) {
    return std::tuple(s.GetTargetCategory(), int{s.GetPercentileIncrement()}, int{s.GetSortOrder()},
                      int{s.GetDataSample()}, int{s.GetSortKey()}, s.HasAverageBasedStatistics(),
                      s.HasPercentileStatistics(), s.HasCumulativeStatistics());
}

TEST(GainsSettingsTest, EverythingElseIsStoredAndCopied) {
    GainsSettings settings;
    EXPECT_EQ(Fields(settings), std::tuple(-1, 10, 1, 0, 0, true, false, false));
    settings.SetTargetCategory(0);
    settings.SetPercentileIncrement(static_cast<PercentileIncrement>(7));
    settings.SetSortOrder(SortAscending);
    settings.SetDataSample(TestSample);
    settings.SetHasCumulativeStatistics(true);
    settings.SetHasPercentileStatistics(true);
    EXPECT_EQ(Fields(GainsSettings(settings)),
              std::tuple(0, 7, int{SortAscending}, 1, 0, false, true, false));
    settings.SetHasCumulativeStatistics(false);
    EXPECT_TRUE(settings.HasPercentileStatistics());
    settings.SetHasCumulativeStatistics(true);
    settings.SetSortKey(TestSample);
    EXPECT_EQ(Fields(settings), std::tuple(0, 7, int{SortAscending}, 1, 1, false, false, true));
}

class OneCell : public GainsIntf {
public:
    explicit OneCell(double first) : value(first) {}

    int GetNumRows() const override { return 1; }
    int GetNumNodes(int row) const override { return row + 2; }
    Node const* GetNode(int row, int position) const override {
        return row == 0 && position == 1 ? &node : nullptr;
    }
    bool HasColumn(int column) const override { return column == 4; }
    double GetValue(int row, int column) const override { return value + 10 * row + column; }
    GainsIntf* Clone() const override { return new OneCell(*this); }

    static inline NodeImp const node;
    double value;
};

TEST(GainsTest, HoldsACloneOrNothing) {
    auto const answers = [](Gains const& g) {
        return std::tuple(g.GetNumRows(), g.HasColumn(4), g.GetNumNodes(3), g.GetNode(0, 1),
                          g.GetValue(2, 4));
    };
    Node const* const none = nullptr;
    Gains gains;
    EXPECT_EQ(answers(gains), std::tuple(0, false, 0, none, systemMissingValue()));
    gains = OneCell(1.5);
    gains = OneCell(7.0);
    EXPECT_EQ(answers(gains), std::tuple(1, true, 5, &OneCell::node, 31.0));
}

}  // namespace
}  // namespace tree_800
