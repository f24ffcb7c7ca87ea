#include "statistics/gainssettingsimp.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>

namespace tree_800 {

namespace {

double ElementOr0(std::vector<double> const& values, int i) noexcept {
    bool const exists = i >= 0 && static_cast<std::size_t>(i) < values.size();
    return exists ? values[static_cast<std::size_t>(i)] : 0.0;
}

void SetGrowing(std::vector<double>& values, int i, double value) {
    if (i == std::numeric_limits<int>::max()) {
        throw std::bad_alloc();  // i + 1 values could not be counted
    }
    auto const index = static_cast<std::size_t>(i);
    if (index >= values.size()) {
        values.resize(index + 1);
    }
    values[index] = value;
}

}  // namespace

// The copy accepts either entry style again.
GainsSettingsImp& GainsSettingsImp::operator=(GainsSettingsImp const& other) {
    if (this != &other) {
        Values values(other.values_);
        values_ = std::move(values);
        entryMode_ = NothingEntered;
    }
    return *this;
}

void GainsSettingsImp::SetHasPercentileStatistics(bool has) noexcept {
    values_.hasPercentile = has;
    if (has) {
        values_.hasCumulative = false;
    }
}

void GainsSettingsImp::SetHasCumulativeStatistics(bool has) noexcept {
    values_.hasCumulative = has;
    if (has) {
        values_.hasPercentile = false;
    }
}

double GainsSettingsImp::GetCategoryRevenue(int category) const noexcept {
    return ElementOr0(values_.revenues, category);
}

double GainsSettingsImp::GetCategoryExpense(int category) const noexcept {
    return ElementOr0(values_.expenses, category);
}

double GainsSettingsImp::GetCategoryProfit(int category) const noexcept {
    return GetCategoryRevenue(category) - GetCategoryExpense(category);
}

void GainsSettingsImp::SetCategoryRevenue(int category, double revenue) {
    if (Accepts(RevenueOrExpenseEntered, category)) {
        DoCategoryRevenue(category, revenue);
        entryMode_ = RevenueOrExpenseEntered;
    }
}

void GainsSettingsImp::SetCategoryExpense(int category, double expense) {
    if (Accepts(RevenueOrExpenseEntered, category)) {
        DoCategoryExpense(category, expense);
        entryMode_ = RevenueOrExpenseEntered;
    }
}

void GainsSettingsImp::SetCategoryProfit(int category, double profit) {
    if (Accepts(ProfitEntered, category)) {
        std::vector<double> revenues(values_.revenues);
        SetGrowing(revenues, category, profit);
        DoCategoryExpense(category, 0.0);
        values_.revenues.swap(revenues);
        entryMode_ = ProfitEntered;
    }
}

int GainsSettingsImp::GetNumCategories() const noexcept {
    return static_cast<int>(std::max(values_.revenues.size(), values_.expenses.size()));
}

// The first style entered shuts the other out.
bool GainsSettingsImp::Accepts(EntryMode mode, int category) const noexcept {
    return category >= 0 && (entryMode_ == NothingEntered || entryMode_ == mode);
}

void GainsSettingsImp::DoCategoryRevenue(int category, double revenue) {
    SetGrowing(values_.revenues, category, revenue);
}

void GainsSettingsImp::DoCategoryExpense(int category, double expense) {
    SetGrowing(values_.expenses, category, expense);
}

}  // namespace tree_800
