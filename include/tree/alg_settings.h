#ifndef TREE800_ALG_SETTINGS_H
#define TREE800_ALG_SETTINGS_H

#include <tree/export.h>

#include <memory>

namespace tree_800 {

class CoreSettings;
class StopRule;
class ValidationSpec;

/// The kinds of algorithm settings, as GetType answers them.
enum AlgorithmKind : int {
    RegressionCart = 0,       ///< RCartSettingsImp
    ClassificationCart = 1,   ///< CCartSettings
    RegressionChaid = 2,      ///< RChaidSettingsImp
    ClassificationChaid = 3,  ///< CChaidSettings
    ClassificationQuest = 4   ///< QuestSettings
};

/// What the settings of every algorithm share: the variables, validation, stop rule, and how many
/// competitors and nominal categories to allow. Created by the caller from core settings, which it
/// clones; it owns its parts, and what a setter or Init is given it clones. Any number of threads
/// may read one object at a time; a change needs it alone.
///
///     CCartSettingsImp settings(core);
///     settings.GetStopRule()->SetMinNodeSize(20);
///     settings.GetValidationSpec()->Set(CrossValidation);
class TREE800_EXPORT AlgSettings {
public:
    /// A clone of the core settings, 5 competitors (fewer where there are fewer predictors), 25
    /// nominal categories, default validation and stop rule.
    explicit AlgSettings(CoreSettings const& core);
    /// A deep copy; a part that the other lacks after Clear becomes a default one.
    AlgSettings(AlgSettings const& other);
    AlgSettings& operator=(AlgSettings const&) = delete;
    virtual ~AlgSettings();

    /// The AlgorithmKind.
    virtual int GetType() const = 0;
    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual AlgSettings* Clone() const = 0;
    /// Most competitor splits kept at a node, 1 or more. Whether the primary split is one of them
    /// is for the grower to document. The example grower counts it, as Node::GetNumCompetitors
    /// does.
    virtual int GetMaxNumCompetitors() const;
    /// Most categories that a nominal predictor may have.
    virtual int GetMaxNominalPredCategories() const;
    /// The parts held; borrowed until the next Init, CopyFrom or Clear. The core settings cannot be
    /// changed here: they are complete when the settings are made. @{
    virtual CoreSettings const* GetCoreSettings() const;
    virtual ValidationSpec* GetValidationSpec();
    virtual ValidationSpec const* GetValidationSpec() const;
    virtual StopRule* GetStopRule();
    virtual StopRule const* GetStopRule() const;
    /// @}

    /// Takes over as much of the other settings as both kinds share; the other may be this object.
    /// The target's level is settled as Init describes. Where memory runs out in the
    /// middle, what each class of this object's kind holds is either all old or all new.
    virtual void CopyFrom(AlgSettings const& other);

    /// Replaces all five, cloning the parts; null stands for a default one. The two numbers are
    /// stored unchecked, and the competitors then cut to the number of predictors. When exactly one
    /// of the old and the new target has level
    /// global_800::Continuous, the new target gets the old level,
    /// so that settings made for a continuous target stay so, and others do not become so. On a
    /// throw nothing changes.
    void Init(int maxNumCompetitors, int maxNominalPredCategories, CoreSettings const* core,
              ValidationSpec const* validation, StopRule const* stopRule);
    /// Deletes the three parts; the getters answer null until the next Init, and a clone gets
    /// default parts.
    void Clear();
    /// Stores a number above 0, ignores any other, then cuts what is held to the number of
    /// predictors.
    void SetMaxNumCompetitors(int n);
    /// Stores a number above 0, ignores any other.
    void SetMaxNominalPredCategories(int n);
    /// Cuts the competitors to the number of predictors, but never below 1.
    void ValidateNumCompetitors();

private:
    int maxNumCompetitors_ = 0;
    int maxNominalPredCategories_ = 0;
    std::unique_ptr<CoreSettings> coreSettings_;
    std::unique_ptr<ValidationSpec> validationSpec_;
    std::unique_ptr<StopRule> stopRule_;
};

}  // namespace tree_800

#endif
