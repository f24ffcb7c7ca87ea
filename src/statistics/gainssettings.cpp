#include <tree/gains_settings.h>

#include "statistics/gainssettingsimp.h"

namespace tree_800 {

GainsSettings::GainsSettings() : imp_(std::make_unique<GainsSettingsImp>()) {}

GainsSettings::GainsSettings(GainsSettings const& other)
    : imp_(std::make_unique<GainsSettingsImp>(*other.imp_)) {}

GainsSettings& GainsSettings::operator=(GainsSettings const& other) {
    if (this != &other) {
        imp_ = std::make_unique<GainsSettingsImp>(*other.imp_);
    }
    return *this;
}

GainsSettings::~GainsSettings() = default;

DataSample GainsSettings::GetSortKey() const { return imp_->GetSortKey(); }

void GainsSettings::SetSortKey(DataSample sample) { imp_->SetSortKey(sample); }

DataSample GainsSettings::GetDataSample() const { return imp_->GetDataSample(); }

void GainsSettings::SetDataSample(DataSample sample) { imp_->SetDataSample(sample); }

SortOrder GainsSettings::GetSortOrder() const { return imp_->GetSortOrder(); }

void GainsSettings::SetSortOrder(SortOrder order) { imp_->SetSortOrder(order); }

PercentileIncrement GainsSettings::GetPercentileIncrement() const {
    return imp_->GetPercentileIncrement();
}

void GainsSettings::SetPercentileIncrement(PercentileIncrement increment) {
    imp_->SetPercentileIncrement(increment);
}

int GainsSettings::GetTargetCategory() const { return imp_->GetTargetCategory(); }

void GainsSettings::SetTargetCategory(int category) { imp_->SetTargetCategory(category); }

bool GainsSettings::HasAverageBasedStatistics() const { return imp_->HasAverageBasedStatistics(); }

bool GainsSettings::HasPercentileStatistics() const { return imp_->HasPercentileStatistics(); }

void GainsSettings::SetHasPercentileStatistics(bool has) { imp_->SetHasPercentileStatistics(has); }

bool GainsSettings::HasCumulativeStatistics() const { return imp_->HasCumulativeStatistics(); }

void GainsSettings::SetHasCumulativeStatistics(bool has) { imp_->SetHasCumulativeStatistics(has); }

double GainsSettings::GetCategoryRevenue(int category) const {
    return imp_->GetCategoryRevenue(category);
}

double GainsSettings::GetCategoryExpense(int category) const {
    return imp_->GetCategoryExpense(category);
}

double GainsSettings::GetCategoryProfit(int category) const {
    return imp_->GetCategoryProfit(category);
}

void GainsSettings::SetCategoryRevenue(int category, double revenue) {
    imp_->SetCategoryRevenue(category, revenue);
}

void GainsSettings::SetCategoryExpense(int category, double expense) {
    imp_->SetCategoryExpense(category, expense);
}

void GainsSettings::SetCategoryProfit(int category, double profit) {
    imp_->SetCategoryProfit(category, profit);
}

int GainsSettings::GetNumCategories() const { return imp_->GetNumCategories(); }

}  // namespace tree_800
