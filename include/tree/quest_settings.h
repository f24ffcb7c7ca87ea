#ifndef TREE800_QUEST_SETTINGS_H
#define TREE800_QUEST_SETTINGS_H

#include <tree/alg_settings.h>
#include <tree/export.h>

#include <memory>

namespace tree_800 {

class Cost;
class Priors;
class PruningSpec;

/// The settings of QUEST, which grows classification trees only: the significance level of variable
/// selection (Loh and Shih 1997), surrogates, pruning, priors and costs. Starts with a maximum tree
/// depth of 5. Created by the caller as QuestSettingsImp. Any number of threads may read one object
/// at a time; a change needs it alone.
///
///     QuestSettingsImp settings(core);
///     settings.SetAlphaOfVariableSelection(0.01);
///     settings.GetPriors()->Set(EqualPriors);
class TREE800_EXPORT QuestSettings : public AlgSettings {
public:
    /// The defaults of AlgSettings, but the tree depth.
    explicit QuestSettings(CoreSettings const& core);
    ~QuestSettings() override = 0;

    // AlgSettings
    void CopyFrom(AlgSettings const& other) override = 0;

    /// The specification held; borrowed until the next Init or CopyFrom. @{
    virtual PruningSpec* GetPruningSpec() = 0;
    virtual PruningSpec const* GetPruningSpec() const = 0;
    /// @}
    /// Most surrogates kept at a node. -1 for settings made without predictors.
    virtual int GetMaxNumSurrogates() const = 0;
    /// Stores n in [0, number of predictors - 2], ignores any other.
    virtual void SetMaxNumSurrogates(int n) = 0;
    /// Most categories of a nominal predictor that may serve as surrogate.
    virtual int GetMaxNumNomCatsSurr() const = 0;
    /// Stores a number above 0, ignores any other.
    virtual void SetMaxNumNomCatsSurr(int n) = 0;
    /// The parts held; borrowed until the next Init or CopyFrom. @{
    virtual Priors* GetPriors() = 0;
    virtual Priors const* GetPriors() const = 0;
    virtual Cost* GetCost() = 0;
    virtual Cost const* GetCost() const = 0;
    /// @}
    /// The significance level, 0 to 1, at which a predictor is chosen to split a node.
    virtual double GetAlphaOfVariableSelection() const = 0;
    /// Stores any value.
    virtual void SetAlphaOfVariableSelection(double alpha) = 0;

protected:
    /// For Clone: a deep copy.
    QuestSettings(QuestSettings const&) = default;
};

/// The QUEST settings.
class TREE800_EXPORT QuestSettingsImp : public QuestSettings {
public:
    /// Alpha 0.05, 5 surrogates, 32 categories, default pruning, priors and costs. Where 5
    /// surrogates are more than SetMaxNumSurrogates would accept, the number of predictors less one
    /// stands instead: one more than that setter accepts, and -1 without predictors.
    explicit QuestSettingsImp(CoreSettings const& core);
    /// A deep copy.
    QuestSettingsImp(QuestSettingsImp const& other);
    ~QuestSettingsImp() override;

    // AlgSettings
    int GetType() const override;
    [[nodiscard]] AlgSettings* Clone() const override;
    /// From QUEST settings also the six values of this class.
    void CopyFrom(AlgSettings const& other) override;

    // QuestSettings
    PruningSpec* GetPruningSpec() override;
    PruningSpec const* GetPruningSpec() const override;
    int GetMaxNumSurrogates() const override;
    void SetMaxNumSurrogates(int n) override;
    int GetMaxNumNomCatsSurr() const override;
    void SetMaxNumNomCatsSurr(int n) override;
    Priors* GetPriors() override;
    Priors const* GetPriors() const override;
    Cost* GetCost() override;
    Cost const* GetCost() const override;
    double GetAlphaOfVariableSelection() const override;
    void SetAlphaOfVariableSelection(double alpha) override;

    /// Replaces all six, the numbers unchecked, the parts cloned; null stands for a default part.
    /// They may be this object's own. On a throw nothing changes.
    void Init(double alpha, int maxNumSurrogates, int maxNumNomCatsSurr, PruningSpec const* pruning,
              Priors const* priors, Cost const* cost);
    /// Whether 0 <= n < number of predictors - 1.
    bool ValidateNumSurrogates(int n) const;

private:
    void InitFrom(QuestSettingsImp const& other);

    double alphaOfVariableSelection_ = 0.0;
    int maxNumSurrogates_ = 0;
    int maxNumNomCatsSurr_ = 0;
    std::unique_ptr<PruningSpec> pruningSpec_;
    std::unique_ptr<Priors> priors_;
    std::unique_ptr<Cost> cost_;
};

}  // namespace tree_800

#endif
