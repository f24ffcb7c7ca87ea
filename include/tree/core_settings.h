#ifndef TREE800_CORE_SETTINGS_H
#define TREE800_CORE_SETTINGS_H

#include <tree/export.h>

#include <memory>

namespace MCTree_800 {

template <typename T>
class ArrayRW;

}  // namespace MCTree_800

namespace tree_800 {

class VariableSettings;

/// Describes the variables of an analysis: the target, the predictors in the order of an
/// observation, and whether the data carry frequency weights (how many cases a row stands for) and
/// case weights (how much a case counts). Created by the caller and cloned by the
/// algorithm settings made from it, so fill it first. Any number of threads may read one object at
/// a time; a change needs it alone.
///
///     CoreSettingsImp core;
///     core.AddPredictor();  // continuous, as is the target
///     VariableSettings* const month = core.AddPredictor();
///     month->SetMeasurementLevel(global_800::Nominal);
///     month->SetNumValues(12);
class TREE800_EXPORT CoreSettings {
public:
    virtual ~CoreSettings();

    /// Appends a new predictor with default settings and returns it for filling; borrowed.
    virtual VariableSettings* AddPredictor() = 0;
    /// Says that the data carry such weights; the weights themselves stay with the data. @{
    virtual void SetHasFreqWeight(bool has) = 0;
    virtual void SetHasCaseWeight(bool has) = 0;
    /// @}

    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual CoreSettings* Clone() const = 0;
    /// Number of values in an observation.
    virtual int GetNumPredictors() const = 0;
    /// The predictor, i in [0, GetNumPredictors()); borrowed. @{
    virtual VariableSettings const* GetPredictor(int i) const = 0;
    virtual VariableSettings* GetPredictor(int i) = 0;
    /// @}
    /// The target, never null; borrowed. @{
    virtual VariableSettings const* GetTarget() const = 0;
    virtual VariableSettings* GetTarget() = 0;
    /// @}
    /// Whether a row stands for a number of cases.
    virtual bool HasFreqWeight() const = 0;
    /// Whether a case counts by a weight of its own.
    virtual bool HasCaseWeight() const = 0;
};

/// The core settings.
class TREE800_EXPORT CoreSettingsImp : public CoreSettings {
public:
    /// A default target, no predictors, no weights.
    CoreSettingsImp();
    /// A deep copy.
    CoreSettingsImp(CoreSettingsImp const& other);
    /// Makes this a deep copy of any core settings. The target and the predictors held before are
    /// NOT deleted, then or ever: pointers to them stay valid for the life of the process. To leave
    /// nothing behind use the copy constructor or Clone. On a throw nothing changes. @{
    CoreSettingsImp& operator=(CoreSettings const& other);
    CoreSettingsImp& operator=(CoreSettingsImp const& other);
    /// @}
    ~CoreSettingsImp() override;

    // CoreSettings
    VariableSettings* AddPredictor() override;
    void SetHasFreqWeight(bool has) override;
    void SetHasCaseWeight(bool has) override;
    [[nodiscard]] CoreSettings* Clone() const override;
    int GetNumPredictors() const override;
    VariableSettings const* GetPredictor(int i) const override;
    VariableSettings* GetPredictor(int i) override;
    VariableSettings const* GetTarget() const override;
    VariableSettings* GetTarget() override;
    bool HasFreqWeight() const override;
    bool HasCaseWeight() const override;

private:
    using Predictors = MCTree_800::ArrayRW<VariableSettings*>;

    // Deletes the elements too, which the array itself does not own.
    struct DeletePredictors {
        void operator()(Predictors* predictors) const noexcept;
    };
    using OwnedPredictors = std::unique_ptr<Predictors, DeletePredictors>;

    static OwnedPredictors ClonePredictors(CoreSettings const& other);

    std::unique_ptr<VariableSettings> target_;
    OwnedPredictors predictors_;
    bool hasFreqWeight_ = false;
    bool hasCaseWeight_ = false;
};

}  // namespace tree_800

#endif
