#ifndef TREE800_CART_SETTINGS_H
#define TREE800_CART_SETTINGS_H

#include <tree/alg_settings.h>
#include <tree/export.h>

#include <memory>

namespace tree_800 {

class Cost;
class Priors;
class PruningSpec;

/// How classification CART measures a split (Breiman, Friedman, Olshen and Stone 1984, chapter 4).
/// Any int is stored.
enum CartSplitCriteria : int {
    GiniCriterion = 0,          ///< how much it lowers the Gini index of diversity
    TwoingCriterion = 1,        ///< how well it parts the classes into any two groups
    OrderedTwoingCriterion = 2  ///< the same with groups of neighbouring classes
};

/// What the settings of both forms of CART share: pruning and the number of surrogates. Starts with
/// a maximum tree depth of 5. Created by the caller as one of the forms below. Any number of
/// threads may read one object at a time; a change needs it alone.
///
///     RCartSettingsImp settings(core);
///     settings.SetMaxNumSurrogates(2);
///     settings.GetPruningSpec()->SetSERuleFactor(0.0);
class TREE800_EXPORT CartSettings : public AlgSettings {
public:
    /// Default pruning and 5 surrogates, fewer where there are fewer other predictors.
    explicit CartSettings(CoreSettings const& core);
    /// A deep copy.
    CartSettings(CartSettings const& other);
    ~CartSettings() override;

    // AlgSettings
    /// From CART settings of either form also pruning and surrogates.
    void CopyFrom(AlgSettings const& other) override;

    /// The specification held; borrowed until the next Init or CopyFrom. @{
    virtual PruningSpec* GetPruningSpec();
    virtual PruningSpec const* GetPruningSpec() const;
    /// @}

    /// Most surrogates kept at a node.
    virtual int GetMaxNumSurrogates() const;
    /// Stores n cut to [0, number of predictors - 1].
    virtual void SetMaxNumSurrogates(int n);

    /// Replaces both, cloning the specification (null stands for a default one) and cutting the
    /// number as above. On a throw nothing changes.
    void Init(PruningSpec const* pruning, int maxNumSurrogates);
    /// Cuts the surrogates to [0, number of predictors - 1].
    void ValidateNumSurrogates();

private:
    void InitFrom(CartSettings const& other);

    std::unique_ptr<PruningSpec> pruningSpec_;
    int maxNumSurrogates_ = 0;
};

/// The settings of regression CART.
class TREE800_EXPORT RCartSettingsImp : public CartSettings {
public:
    /// The defaults of CartSettings.
    explicit RCartSettingsImp(CoreSettings const& core);
    ~RCartSettingsImp() override;

    // AlgSettings
    int GetType() const override;
    [[nodiscard]] AlgSettings* Clone() const override;
};

/// The settings of classification CART: priors, costs and the split criterion.
class TREE800_EXPORT CCartSettings : public CartSettings {
public:
    /// The defaults of CartSettings.
    explicit CCartSettings(CoreSettings const& core);
    ~CCartSettings() override;

    /// The parts held; borrowed until the next Init or CopyFrom. @{
    virtual Priors const* GetPriors() const = 0;
    virtual Priors* GetPriors() = 0;
    virtual Cost const* GetCost() const = 0;
    virtual Cost* GetCost() = 0;
    /// @}

    /// How a split is measured; any value is stored. @{
    virtual CartSplitCriteria GetSplitCriteria() const = 0;
    virtual void SetSplitCriteria(CartSplitCriteria criteria) = 0;
    /// @}
};

/// The classification CART settings.
class TREE800_EXPORT CCartSettingsImp : public CCartSettings {
public:
    /// The defaults of CartSettings, default priors and costs, Gini.
    explicit CCartSettingsImp(CoreSettings const& core);
    /// A deep copy.
    CCartSettingsImp(CCartSettingsImp const& other);
    ~CCartSettingsImp() override;

    // AlgSettings
    int GetType() const override;
    [[nodiscard]] AlgSettings* Clone() const override;
    /// From classification CART settings also priors, costs and criterion.
    void CopyFrom(AlgSettings const& other) override;

    // CCartSettings
    Priors const* GetPriors() const override;
    Priors* GetPriors() override;
    Cost const* GetCost() const override;
    Cost* GetCost() override;
    CartSplitCriteria GetSplitCriteria() const override;
    void SetSplitCriteria(CartSplitCriteria criteria) override;

    /// Replaces all three by clones; they may be this object's own. On a throw nothing changes.
    void Init(Priors const& priors, Cost const& cost, CartSplitCriteria criteria);

private:
    std::unique_ptr<Priors> priors_;
    std::unique_ptr<Cost> cost_;
    CartSplitCriteria splitCriteria_ = GiniCriterion;
};

}  // namespace tree_800

#endif
