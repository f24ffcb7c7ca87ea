#ifndef TREE800_STATISTICS_GAINSSETTINGSIMP_H
#define TREE800_STATISTICS_GAINSSETTINGSIMP_H

#include <tree/gains_settings.h>

#include <cstdint>
#include <vector>

namespace tree_800 {

/// What a GainsSettings holds; see there.
class GainsSettingsImp {
public:
    GainsSettingsImp() = default;
    GainsSettingsImp(GainsSettingsImp const& other) : values_(other.values_) {}
    GainsSettingsImp& operator=(GainsSettingsImp const& other);
    ~GainsSettingsImp() = default;

    DataSample GetSortKey() const noexcept { return values_.sortKey; }
    void SetSortKey(DataSample sample) noexcept { values_.sortKey = sample; }
    DataSample GetDataSample() const noexcept { return values_.dataSample; }
    void SetDataSample(DataSample sample) noexcept { values_.dataSample = sample; }
    SortOrder GetSortOrder() const noexcept { return values_.sortOrder; }
    void SetSortOrder(SortOrder order) noexcept { values_.sortOrder = order; }
    PercentileIncrement GetPercentileIncrement() const noexcept { return values_.increment; }
    void SetPercentileIncrement(PercentileIncrement step) noexcept { values_.increment = step; }
    int GetTargetCategory() const noexcept { return values_.targetCategory; }
    void SetTargetCategory(int category) noexcept { values_.targetCategory = category; }
    bool HasAverageBasedStatistics() const noexcept { return values_.targetCategory < 0; }
    bool HasPercentileStatistics() const noexcept { return values_.hasPercentile; }
    void SetHasPercentileStatistics(bool has) noexcept;
    bool HasCumulativeStatistics() const noexcept { return values_.hasCumulative; }
    void SetHasCumulativeStatistics(bool has) noexcept;
    double GetCategoryRevenue(int category) const noexcept;
    double GetCategoryExpense(int category) const noexcept;
    double GetCategoryProfit(int category) const noexcept;
    void SetCategoryRevenue(int category, double revenue);
    void SetCategoryExpense(int category, double expense);
    void SetCategoryProfit(int category, double profit);
    int GetNumCategories() const noexcept;

private:
    enum EntryMode : std::uint8_t {
        NothingEntered = 0,
        ProfitEntered = 1,
        RevenueOrExpenseEntered = 2
    };

    // All that a copy takes over.
    struct Values {
        bool hasCumulative = false;
        bool hasPercentile = false;
        int targetCategory = -1;
        PercentileIncrement increment = PercentileStep10;
        SortOrder sortOrder = SortDescending;
        DataSample dataSample = TrainingSample;
        DataSample sortKey = TrainingSample;
        std::vector<double> expenses;  // by category
        std::vector<double> revenues;
    };

    bool Accepts(EntryMode mode, int category) const noexcept;
    void DoCategoryRevenue(int category, double revenue);
    void DoCategoryExpense(int category, double expense);

    EntryMode entryMode_ = NothingEntered;
    Values values_;
};

}  // namespace tree_800

#endif
