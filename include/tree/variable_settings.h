#ifndef TREE800_VARIABLE_SETTINGS_H
#define TREE800_VARIABLE_SETTINGS_H

#include <tree/export.h>

namespace global_800 {

/// How a variable is measured. Shared with the host, which may use further values: every int can be
/// stored. 0 makes a variable nominal; every other level makes it ordered.
enum MeasurementLevel : int {
    Nominal = 0,    ///< categories without order, coded 0, 1, 2, ...
    Ordinal = 1,    ///< categories in order
    Continuous = 2  ///< numbers; the level of a new variable
};

}  // namespace global_800

namespace tree_800 {

/// Describes one variable of the data, the target or a predictor. Created by the caller or by the
/// core settings that list it, deleted by whoever holds it. Any number of threads may read one
/// object at a time; a change needs it alone.
///
///     VariableSettingsImp island;
///     island.SetMeasurementLevel(global_800::Nominal);
///     island.SetNumValues(3);
class TREE800_EXPORT VariableSettings {
public:
    virtual ~VariableSettings();

    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual VariableSettings* Clone() const = 0;

    /// The value that stands for "missing" in this variable's data.
    virtual double GetMissingValue() const = 0;
    /// Any int: 0 makes the variable nominal, every other level ordered.
    virtual global_800::MeasurementLevel GetMeasurementLevel() const = 0;
    /// Whether an algorithm may merge the variable's values.
    virtual bool GetValueMergeFlag() const = 0;
    /// Count of distinct values (categories).
    virtual int GetNumValues() const = 0;

    /// Stored unchecked. @{
    virtual void SetMeasurementLevel(global_800::MeasurementLevel level) = 0;
    virtual void SetMissingValue(double value) = 0;
    virtual void SetValueMergeFlag(bool merge) = 0;
    virtual void SetNumValues(int count) = 0;
    /// @}
};

/// The variable settings. A new object is continuous, has 0 values, allows merging and takes the
/// system-missing value of that moment for its missing value.
class TREE800_EXPORT VariableSettingsImp : public VariableSettings {
public:
    VariableSettingsImp();

    // VariableSettings
    [[nodiscard]] VariableSettings* Clone() const override;
    double GetMissingValue() const override;
    global_800::MeasurementLevel GetMeasurementLevel() const override;
    bool GetValueMergeFlag() const override;
    int GetNumValues() const override;
    void SetMeasurementLevel(global_800::MeasurementLevel level) override;
    void SetMissingValue(double value) override;
    void SetValueMergeFlag(bool merge) override;
    void SetNumValues(int count) override;

private:
    double missingValue_;
    int numValues_ = 0;
    global_800::MeasurementLevel measurementLevel_ = global_800::Continuous;
    bool valueMergeFlag_ = true;
};

}  // namespace tree_800

#endif
