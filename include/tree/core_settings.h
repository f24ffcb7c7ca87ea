#ifndef TREE800_CORE_SETTINGS_H
#define TREE800_CORE_SETTINGS_H

#include <tree/array_rw.h>
#include <tree/export.h>
#include <tree/variable_settings.h>

#include <memory>

namespace tree_800 {

/// Describes the variables of an analysis: the target, the predictors in the order of an
/// observation, and whether the data carry frequency weights (how many cases a row stands for) and
/// case weights (how much a case counts). Created by the caller and cloned by the
/// algorithm settings made from it, so fill it first. Distinct objects may be used by distinct
/// threads.
///
///     CoreSettingsImp core;
///     core.GetTarget()->SetMeasurementLevel(global_800::Nominal);
///     core.AddPredictor()->SetNumValues(12);
class TREE800_EXPORT CoreSettings {
public:
    virtual ~CoreSettings();

    /// Appends a new predictor with default settings and returns it for filling; borrowed.
    virtual VariableSettings* AddPredictor() = 0;
    virtual void SetHasFreqWeight(bool has) = 0;
    virtual void SetHasCaseWeight(bool has) = 0;
    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual CoreSettings* Clone() const = 0;
    virtual int GetNumPredictors() const = 0;
    /// The predictor, i in [0, GetNumPredictors()); borrowed.
    virtual VariableSettings const* GetPredictor(int i) const = 0;
    virtual VariableSettings* GetPredictor(int i) = 0;
    /// The target; borrowed.
    virtual VariableSettings const* GetTarget() const = 0;
    virtual VariableSettings* GetTarget() = 0;
    virtual bool HasFreqWeight() const = 0;
    virtual bool HasCaseWeight() const = 0;
};

/// The core settings. A new object has a default target, no predictors and no weights.
class TREE800_EXPORT CoreSettingsImp : public CoreSettings {
public:
    CoreSettingsImp();
    CoreSettingsImp(CoreSettingsImp const& other);
    /// Makes this a deep copy of any core settings. The target and the predictors held before are
    /// NOT deleted, then or ever: pointers to them stay valid for the life of the process. On a
    /// throw nothing changes.
    CoreSettingsImp& operator=(CoreSettings const& other);
    CoreSettingsImp& operator=(CoreSettingsImp const& other);
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
