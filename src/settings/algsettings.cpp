#include <tree/alg_settings.h>

#include "settings/owned_part.h"

#include <tree/core_settings.h>
#include <tree/stop_rule.h>
#include <tree/validation_spec.h>
#include <tree/variable_settings.h>

#include <algorithm>
#include <utility>

namespace tree_800 {

namespace {

constexpr int DefaultNumCompetitors = 5;
constexpr int DefaultNominalPredCategories = 25;

void KeepTargetLevel(CoreSettings const& before, CoreSettings& after) {
    global_800::MeasurementLevel const oldLevel = before.GetTarget()->GetMeasurementLevel();
    global_800::MeasurementLevel const newLevel = after.GetTarget()->GetMeasurementLevel();
    if ((oldLevel == global_800::Continuous) != (newLevel == global_800::Continuous)) {
        after.GetTarget()->SetMeasurementLevel(oldLevel);
    }
}

}  // namespace

AlgSettings::AlgSettings(CoreSettings const& core) {
    Init(DefaultNumCompetitors, DefaultNominalPredCategories, &core, nullptr, nullptr);
}

AlgSettings::AlgSettings(AlgSettings const& other) { AlgSettings::CopyFrom(other); }

AlgSettings::~AlgSettings() { Clear(); }

int AlgSettings::GetMaxNumCompetitors() const { return maxNumCompetitors_; }

int AlgSettings::GetMaxNominalPredCategories() const { return maxNominalPredCategories_; }

CoreSettings const* AlgSettings::GetCoreSettings() const { return coreSettings_.get(); }

ValidationSpec* AlgSettings::GetValidationSpec() { return validationSpec_.get(); }

ValidationSpec const* AlgSettings::GetValidationSpec() const { return validationSpec_.get(); }

StopRule* AlgSettings::GetStopRule() { return stopRule_.get(); }

StopRule const* AlgSettings::GetStopRule() const { return stopRule_.get(); }

void AlgSettings::CopyFrom(AlgSettings const& other) {
    Init(other.maxNumCompetitors_, other.maxNominalPredCategories_, other.coreSettings_.get(),
         other.validationSpec_.get(), other.stopRule_.get());
}

void AlgSettings::Init(int maxNumCompetitors, int maxNominalPredCategories,
                       CoreSettings const* core, ValidationSpec const* validation,
                       StopRule const* stopRule) {
    auto newValidation = CloneOrDefault<ValidationSpecImp>(validation);
    auto newCore = CloneOrDefault<CoreSettingsImp>(core);
    if (coreSettings_ != nullptr) {
        KeepTargetLevel(*coreSettings_, *newCore);
    }
    auto newStopRule = CloneOrDefault<StopRuleImp>(stopRule);

    maxNumCompetitors_ = maxNumCompetitors;
    maxNominalPredCategories_ = maxNominalPredCategories;
    coreSettings_ = std::move(newCore);
    validationSpec_ = std::move(newValidation);
    stopRule_ = std::move(newStopRule);
    ValidateNumCompetitors();
}

void AlgSettings::Clear() {
    coreSettings_.reset();
    validationSpec_.reset();
    stopRule_.reset();
}

void AlgSettings::SetMaxNumCompetitors(int n) {
    if (n > 0) {
        maxNumCompetitors_ = n;
    }
    ValidateNumCompetitors();
}

void AlgSettings::SetMaxNominalPredCategories(int n) {
    if (n > 0) {
        maxNominalPredCategories_ = n;
    }
}

void AlgSettings::ValidateNumCompetitors() {
    if (coreSettings_ != nullptr) {
        maxNumCompetitors_ = std::min(maxNumCompetitors_, coreSettings_->GetNumPredictors());
    }
    maxNumCompetitors_ = std::max(maxNumCompetitors_, 1);
}

}  // namespace tree_800
