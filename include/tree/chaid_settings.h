#ifndef TREE800_CHAID_SETTINGS_H
#define TREE800_CHAID_SETTINGS_H

#include <tree/alg_settings.h>
#include <tree/export.h>

#include <memory>

namespace tree_800 {

class Cost;
class Priors;
class Scores;

/// How CHAID merges categories.
enum SplitMergeMethod : int {
    StandardMerge = 0,   ///< until no pair is too alike (Kass 1980)
    ExhaustiveMerge = 1  ///< down to two groups, then the best stage (Biggs, de Ville, Suen 1991)
};

/// The statistic by which classification CHAID compares categories. Any int is stored.
enum ChiSquareMethod : int {
    PearsonChiSquare = 0,         ///< the sum of (observed - expected)^2 / expected
    LikelihoodRatioChiSquare = 1  ///< twice the sum of observed * ln(observed / expected)
};

/// What the settings of both forms of CHAID share: the significance levels, 0 to 1, and how
/// categories are merged. Starts with a maximum tree depth of 3. Created by the caller as one of
/// the forms below. Any number of threads may read one object at a time; a change needs it alone.
///
///     CChaidSettingsImp settings(core);
///     settings.SetAlphaOfMerge(0.1);  // merge-split follows: 0.05
///     settings.SetAlphaOfMergeSplit(0.02);
class TREE800_EXPORT ChaidSettings : public AlgSettings {
public:
    /// Alphas 0.05, 0.05 and 0.025, standard merge, no split-merge, Bonferroni adjustment.
    explicit ChaidSettings(CoreSettings const& core);
    ~ChaidSettings() override;

    // AlgSettings
    /// From CHAID settings of either form also the six values of this class.
    void CopyFrom(AlgSettings const& other) override;

    /// Replaces all six, unchecked and without the coupling of SetAlphaOfMerge.
    void Init(double alphaOfSplitNode, double alphaOfMerge, double alphaOfMergeSplit,
              SplitMergeMethod method, bool allowSplitMerge, bool useBonferroniAdj);

    /// The level at which a node is split.
    double GetAlphaOfSplitNode() const;
    /// The level at which two categories are different enough not to be merged.
    double GetAlphaOfMerge() const;
    /// The level at which a merged group of categories is split again.
    double GetAlphaOfMergeSplit() const;
    /// How far categories are merged.
    SplitMergeMethod GetSplitMergeMethod() const;
    /// Whether a merged group of categories may be split again.
    bool GetAllowSplitMerge() const;
    /// Whether p-values are adjusted for the number of ways to merge the categories (Kass 1980).
    bool GetUseBonferroniAdj() const;

    /// Stores any value.
    void SetAlphaOfSplitNode(double alpha);
    /// Stores any value, and sets the alpha of merge-split to half of it, every time.
    void SetAlphaOfMerge(double alpha);
    /// Stores any value.
    void SetAlphaOfMergeSplit(double alpha);
    /// Ignores a method that is none of the two.
    void SetSplitMergeMethod(SplitMergeMethod method);
    /// Changes nothing else. @{
    void SetAllowSplitMerge(bool allow);
    void SetUseBonferroniAdj(bool use);
    /// @}

protected:
    /// For Clone: a deep copy.
    ChaidSettings(ChaidSettings const&) = default;

private:
    double alphaOfSplitNode_;
    double alphaOfMerge_;
    double alphaOfMergeSplit_;
    SplitMergeMethod splitMergeMethod_;
    bool allowSplitMerge_;
    bool useBonferroniAdj_;
};

/// The settings of regression CHAID.
class TREE800_EXPORT RChaidSettingsImp : public ChaidSettings {
public:
    /// The defaults of ChaidSettings.
    explicit RChaidSettingsImp(CoreSettings const& core);
    /// A deep copy.
    RChaidSettingsImp(RChaidSettingsImp const& other);
    ~RChaidSettingsImp() override;

    // AlgSettings
    int GetType() const override;
    [[nodiscard]] AlgSettings* Clone() const override;
};

/// The settings of classification CHAID: the iterative estimation, costs and scores. The priors are
/// reached only through CChaidSettingsImp, deliberately.
class TREE800_EXPORT CChaidSettings : public ChaidSettings {
public:
    /// The defaults of ChaidSettings.
    explicit CChaidSettings(CoreSettings const& core);
    ~CChaidSettings() override;

    /// The change of the expected counts below which their estimation has converged.
    virtual double GetConvergenceEpsilon() const = 0;
    /// The estimation gives up after this many rounds.
    virtual int GetMaxNumIterations() const = 0;
    /// The statistic by which categories are compared.
    virtual ChiSquareMethod GetChiSquareMethod() const = 0;
    /// The parts held; borrowed until they are replaced. @{
    virtual Cost const* GetCost() const = 0;
    virtual Cost* GetCost() = 0;
    virtual Scores const* GetScores() const = 0;
    virtual Scores* GetScores() = 0;
    /// @}

    /// Any value is stored. @{
    virtual void SetConvergenceEpsilon(double epsilon) = 0;
    virtual void SetMaxNumIterations(int n) = 0;
    virtual void SetChiSquareMethod(ChiSquareMethod method) = 0;
    /// @}

protected:
    /// For Clone: a deep copy.
    CChaidSettings(CChaidSettings const&) = default;
};

/// The classification CHAID settings.
class TREE800_EXPORT CChaidSettingsImp : public CChaidSettings {
public:
    /// The defaults of ChaidSettings, epsilon 0.001, Pearson, 100 iterations, default costs, equal
    /// priors, default scores.
    explicit CChaidSettingsImp(CoreSettings const& core);
    /// A deep copy.
    CChaidSettingsImp(CChaidSettingsImp const& other);
    ~CChaidSettingsImp() override;

    // AlgSettings
    int GetType() const override;
    [[nodiscard]] AlgSettings* Clone() const override;
    /// From classification CHAID settings also the six values of this class.
    void CopyFrom(AlgSettings const& other) override;

    // CChaidSettings
    double GetConvergenceEpsilon() const override;
    int GetMaxNumIterations() const override;
    ChiSquareMethod GetChiSquareMethod() const override;
    Cost const* GetCost() const override;
    Cost* GetCost() override;
    Scores const* GetScores() const override;
    Scores* GetScores() override;
    void SetConvergenceEpsilon(double epsilon) override;
    void SetMaxNumIterations(int n) override;
    void SetChiSquareMethod(ChiSquareMethod method) override;

    /// The priors held; borrowed until they are replaced. @{
    Priors const* GetPriors() const;
    Priors* GetPriors();
    /// @}

    /// Replaces all six, cloning the parts; a part that is this object's own stays as it is. On a
    /// throw nothing changes.
    void Init(double epsilon, ChiSquareMethod method, int maxNumIterations, Cost const& cost,
              Priors const& priors, Scores const& scores);

private:
    double convergenceEpsilon_ = 0.001;
    ChiSquareMethod chiSquareMethod_ = PearsonChiSquare;
    int maxNumIterations_ = 100;
    std::unique_ptr<Cost> cost_;
    std::unique_ptr<Priors> priors_;
    std::unique_ptr<Scores> scores_;
};

}  // namespace tree_800

#endif
