#include <tree/variable_settings.h>

#include <tree/host.h>

namespace tree_800 {

VariableSettings::~VariableSettings() = default;

VariableSettingsImp::VariableSettingsImp() : missingValue_(systemMissingValue()) {}

VariableSettings* VariableSettingsImp::Clone() const { return new VariableSettingsImp(*this); }

double VariableSettingsImp::GetMissingValue() const { return missingValue_; }

global_800::MeasurementLevel VariableSettingsImp::GetMeasurementLevel() const {
    return measurementLevel_;
}

bool VariableSettingsImp::GetValueMergeFlag() const { return valueMergeFlag_; }

int VariableSettingsImp::GetNumValues() const { return numValues_; }

void VariableSettingsImp::SetMeasurementLevel(global_800::MeasurementLevel level) {
    measurementLevel_ = level;
}

void VariableSettingsImp::SetMissingValue(double value) { missingValue_ = value; }

void VariableSettingsImp::SetValueMergeFlag(bool merge) { valueMergeFlag_ = merge; }

void VariableSettingsImp::SetNumValues(int count) { numValues_ = count; }

}  // namespace tree_800
