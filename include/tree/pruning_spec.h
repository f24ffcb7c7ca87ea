#ifndef TREE800_PRUNING_SPEC_H
#define TREE800_PRUNING_SPEC_H

#include <tree/export.h>

namespace tree_800 {

/// How a grown tree is pruned: back to the smallest subtree whose risk is within a number of
/// standard errors of the smallest risk (Breiman, Friedman, Olshen and Stone 1984, section 3.4.3),
/// or to the subtree of minimum risk itself. Created by the caller, cloned by the settings that
/// hold it. Any number of threads may read one object at a time; a change needs it alone.
///
///     PruningSpecImp pruning;
///     pruning.SetSERuleFactor(0.5);
class TREE800_EXPORT PruningSpec {
public:
    virtual ~PruningSpec();

    /// A copy; the caller deletes it.
    [[nodiscard]] virtual PruningSpec* Clone() const = 0;

    /// Whether to take the subtree of minimum risk, whatever the factor.
    virtual bool GetPickMinRiskTree() const = 0;
    /// Number of standard errors.
    virtual double GetSERuleFactor() const = 0;

    /// The factor stays, and applies again after false.
    virtual void SetPickMinRiskTree(bool pick) = 0;
    /// A negative factor or NaN is ignored: the old one stays.
    virtual void SetSERuleFactor(double factor) = 0;
};

/// The pruning specification. Defaults: factor 1.0, the SE rule applies.
class TREE800_EXPORT PruningSpecImp : public PruningSpec {
public:
    PruningSpecImp();

    // PruningSpec
    [[nodiscard]] PruningSpec* Clone() const override;
    bool GetPickMinRiskTree() const override;
    double GetSERuleFactor() const override;
    void SetPickMinRiskTree(bool pick) override;
    void SetSERuleFactor(double factor) override;

private:
    double seRuleFactor_ = 1.0;
    bool pickMinRiskTree_ = false;
};

}  // namespace tree_800

#endif
