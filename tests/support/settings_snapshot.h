#ifndef TREE800_TESTS_SUPPORT_SETTINGS_SNAPSHOT_H
#define TREE800_TESTS_SUPPORT_SETTINGS_SNAPSHOT_H

#include <tree/tree.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace tree_800::test {

constexpr AlgorithmKind Kinds[] = {RegressionCart, ClassificationCart, RegressionChaid,
                                   ClassificationChaid, ClassificationQuest};

/// What each class of a settings object's kind holds, everything that it answers in one line:
/// "base", "cart", "ccart", "chaid", "cchaid" and "quest", as far as the kind has them.
using Snapshot = std::map<std::string, std::string>;

template <typename... Values>
std::string Line(Values const&... values) {
    std::ostringstream out;
    ((out << ' ' << values), ...);
    return out.str();
}

inline std::string Describe(VariableSettings const& variable) {
    return Line(variable.GetMeasurementLevel(), variable.GetNumValues(), variable.GetMissingValue(),
                variable.GetValueMergeFlag());
}

inline std::string Describe(PruningSpec const& pruning) {
    return Line(pruning.GetSERuleFactor(), pruning.GetPickMinRiskTree());
}

inline std::string Describe(Priors const& priors, Cost const& cost) {
    std::string line = Line("priors", priors.GetType(), priors.HasAlteredValues());
    auto const& vectors = dynamic_cast<PriorsImp const&>(priors);
    for (int i = 0; i < priors.GetNumClasses(); ++i) {
        line +=
            Line(vectors.Get(i, PriorsImp::GivenPriors), vectors.Get(i, PriorsImp::AlteredPriors),
                 vectors.Get(i, PriorsImp::SecondPriors), vectors.Get(i, PriorsImp::ThirdPriors));
    }
    line += Line("cost", cost.GetType());
    for (int i = 0; i < cost.GetNumClasses(); ++i) {
        for (int j = 0; j < cost.GetNumClasses(); ++j) {
            line += Line(cost.Get(i, j));
        }
    }
    return line;
}

inline std::string DescribeBase(AlgSettings const& settings) {
    CoreSettings const& core = *settings.GetCoreSettings();
    ValidationSpec const& validation = *settings.GetValidationSpec();
    StopRule const& stop = *settings.GetStopRule();
    std::string variables = Describe(*core.GetTarget());
    for (int i = 0; i < core.GetNumPredictors(); ++i) {
        variables += Describe(*core.GetPredictor(i));
    }
    return Line(settings.GetMaxNumCompetitors(), settings.GetMaxNominalPredCategories(),
                core.HasFreqWeight(), core.HasCaseWeight(), validation.GetType(),
                validation.GetNumCVFolds(), validation.GetRandomSeed(), stop.GetMinImprovement(),
                stop.GetMinNodeSize(), stop.GetMinNodePercentSize(), stop.GetMinChildSize(),
                stop.GetMinChildPercentSize(), stop.GetMaxTreeDepth()) +
           variables;
}

inline Snapshot SnapshotOf(AlgSettings const& settings) {
    Snapshot snapshot{{"base", DescribeBase(settings)}};
    if (auto const* const cart = dynamic_cast<CartSettings const*>(&settings)) {
        snapshot["cart"] = Describe(*cart->GetPruningSpec()) + Line(cart->GetMaxNumSurrogates());
    }
    if (auto const* const cart = dynamic_cast<CCartSettings const*>(&settings)) {
        snapshot["ccart"] =
            Describe(*cart->GetPriors(), *cart->GetCost()) + Line(cart->GetSplitCriteria());
    }
    if (auto const* const chaid = dynamic_cast<ChaidSettings const*>(&settings)) {
        snapshot["chaid"] = Line(chaid->GetAlphaOfSplitNode(), chaid->GetAlphaOfMerge(),
                                 chaid->GetAlphaOfMergeSplit(), chaid->GetSplitMergeMethod(),
                                 chaid->GetAllowSplitMerge(), chaid->GetUseBonferroniAdj());
    }
    if (auto const* const chaid = dynamic_cast<CChaidSettingsImp const*>(&settings)) {
        Scores const& scores = *chaid->GetScores();
        snapshot["cchaid"] = Line(chaid->GetConvergenceEpsilon(), chaid->GetMaxNumIterations(),
                                  chaid->GetChiSquareMethod(), "scores", scores.GetType());
        for (int i = 0; i < scores.GetNumClasses(); ++i) {
            snapshot["cchaid"] += Line(scores.Get(i));
        }
        snapshot["cchaid"] += Describe(*chaid->GetPriors(), *chaid->GetCost());
    }
    if (auto const* const quest = dynamic_cast<QuestSettings const*>(&settings)) {
        snapshot["quest"] = Line(quest->GetAlphaOfVariableSelection(), quest->GetMaxNumSurrogates(),
                                 quest->GetMaxNumNomCatsSurr()) +
                            Describe(*quest->GetPruningSpec()) +
                            Describe(*quest->GetPriors(), *quest->GetCost());
    }
    return snapshot;
}

inline CoreSettingsImp MakeCore(int numPredictors) {
    CoreSettingsImp core;
    for (int i = 0; i < numPredictors; ++i) {
        core.AddPredictor()->SetNumValues(10 * numPredictors + i);
    }
    return core;
}

inline std::unique_ptr<AlgSettings> MakeSettings(AlgorithmKind kind, CoreSettings const& core) {
    switch (kind) {
        case RegressionCart:
            return std::make_unique<RCartSettingsImp>(core);
        case ClassificationCart:
            return std::make_unique<CCartSettingsImp>(core);
        case RegressionChaid:
            return std::make_unique<RChaidSettingsImp>(core);
        case ClassificationChaid:
            return std::make_unique<CChaidSettingsImp>(core);
        case ClassificationQuest:
            return std::make_unique<QuestSettingsImp>(core);
    }
    return nullptr;
}

inline void ChangeWeighting(Priors& priors, Cost& cost, int n) {
    auto& vectors = dynamic_cast<PriorsImp&>(priors);
    priors.Set(1, n);
    priors.AlterValues(true);
    cost.Set(n, 0, n);
    vectors.ComputeAltered(cost);
    vectors.Set(0, n, PriorsImp::SecondPriors);
}

/// Gives every part of the settings other values for every n, 1 to 3.
inline void ChangeAll(AlgSettings& settings, int n) {
    settings.SetMaxNumCompetitors(n);
    settings.SetMaxNominalPredCategories(n);
    settings.GetValidationSpec()->Set(CrossValidation);
    settings.GetValidationSpec()->SetNumCVFolds(20 + n);
    settings.GetValidationSpec()->SetRandomSeed(n);
    settings.GetStopRule()->SetMinNodeSize(n);
    settings.GetStopRule()->SetMaxTreeDepth(20 + n);
    if (auto* const cart = dynamic_cast<CartSettings*>(&settings)) {
        cart->SetMaxNumSurrogates(n);
        cart->GetPruningSpec()->SetSERuleFactor(2.0 * n);
        cart->GetPruningSpec()->SetPickMinRiskTree(true);
    }
    if (auto* const cart = dynamic_cast<CCartSettings*>(&settings)) {
        ChangeWeighting(*cart->GetPriors(), *cart->GetCost(), n);
        cart->SetSplitCriteria(static_cast<CartSplitCriteria>(n));
    }
    if (auto* const chaid = dynamic_cast<ChaidSettings*>(&settings)) {
        chaid->Init(0.1 * n, 0.2 * n, 0.3 * n, ExhaustiveMerge, true, false);
    }
    if (auto* const chaid = dynamic_cast<CChaidSettingsImp*>(&settings)) {
        ChangeWeighting(*chaid->GetPriors(), *chaid->GetCost(), n);
        chaid->GetScores()->Set(n, 7.5);
        chaid->SetConvergenceEpsilon(0.1 * n);
        chaid->SetMaxNumIterations(n);
        chaid->SetChiSquareMethod(LikelihoodRatioChiSquare);
    }
    if (auto* const quest = dynamic_cast<QuestSettings*>(&settings)) {
        ChangeWeighting(*quest->GetPriors(), *quest->GetCost(), n);
        quest->GetPruningSpec()->SetSERuleFactor(2.0 * n);
        quest->SetAlphaOfVariableSelection(0.1 * n);
        quest->SetMaxNumSurrogates(n);
        quest->SetMaxNumNomCatsSurr(n);
    }
}

}  // namespace tree_800::test

#endif
