#ifndef TREE800_GAINS_SETTINGS_H
#define TREE800_GAINS_SETTINGS_H

#include <tree/data_sample.h>
#include <tree/export.h>

#include <memory>

namespace tree_800 {

class GainsSettingsImp;

/// The order of the nodes in a gains table. Any int is stored.
enum SortOrder : int {
    SortAscending = 0,  ///< worst first
    SortDescending = 1  ///< best first; the order of new settings
};

/// The step between the percentile rows of a gains table, in percent. Any int is stored.
enum PercentileIncrement : int {
    PercentileStep1 = 1,
    PercentileStep2 = 2,
    PercentileStep5 = 5,
    PercentileStep10 = 10,  ///< the step of new settings
    PercentileStep20 = 20,
    PercentileStep25 = 25
};

/// Describes a gains table: how well the terminal nodes of a tree gather the cases of a target
/// category, or profit. Created by hosts, read by whatever computes the table. A value: copies are
/// deep, except that a copy forgets the entry style (see SetCategoryRevenue). Any number of threads
/// may read one object at a time; a change needs it alone.
///
///     GainsSettings settings;
///     settings.SetTargetCategory(1);
///     settings.SetHasCumulativeStatistics(true);
class TREE800_EXPORT GainsSettings {
public:
    /// No target category, descending by the training sample, statistics of the training sample,
    /// step 10, neither percentile nor cumulative statistics, no revenues and expenses.
    GainsSettings();
    /// A deep copy that forgets the entry style; see SetCategoryRevenue. @{
    GainsSettings(GainsSettings const& other);
    GainsSettings& operator=(GainsSettings const& other);
    /// @}
    ~GainsSettings();

    /// The sample whose statistics the nodes are sorted by. @{
    DataSample GetSortKey() const;
    void SetSortKey(DataSample sample);
    /// @}
    /// The sample that the statistics are taken from. @{
    DataSample GetDataSample() const;
    void SetDataSample(DataSample sample);
    /// @}
    /// Stored unchecked. @{
    SortOrder GetSortOrder() const;
    void SetSortOrder(SortOrder order);
    PercentileIncrement GetPercentileIncrement() const;
    void SetPercentileIncrement(PercentileIncrement increment);
    /// @}

    /// The category whose gains are reported; negative for none, when the table reports averages.
    /// @{
    int GetTargetCategory() const;
    void SetTargetCategory(int category);
    /// @}
    /// True when there is no target category.
    bool HasAverageBasedStatistics() const;

    /// Percentile and cumulative statistics exclude each other: setting one to true clears the
    /// other. @{
    bool HasPercentileStatistics() const;
    void SetHasPercentileStatistics(bool has);
    bool HasCumulativeStatistics() const;
    void SetHasCumulativeStatistics(bool has);
    /// @}

    /// Revenue and expense per case of a category; 0.0 for a category that has none. @{
    double GetCategoryRevenue(int category) const;
    double GetCategoryExpense(int category) const;
    /// @}
    /// Revenue minus expense.
    double GetCategoryProfit(int category) const;
    /// Profit is entered either as revenue and expense or directly, and the style used first stays:
    /// setters of the other style are then ignored silently. A negative category is ignored too. @{
    void SetCategoryRevenue(int category, double revenue);
    void SetCategoryExpense(int category, double expense);
    /// @}
    /// Stores the profit as a revenue with an expense of 0.0.
    void SetCategoryProfit(int category, double profit);
    /// One more than the highest category with a revenue or an expense.
    int GetNumCategories() const;

private:
    std::unique_ptr<GainsSettingsImp> imp_;
};

}  // namespace tree_800

#endif
