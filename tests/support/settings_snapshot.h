#ifndef TREE800_TESTS_SUPPORT_SETTINGS_SNAPSHOT_H
#define TREE800_TESTS_SUPPORT_SETTINGS_SNAPSHOT_H

#include <tree/cart_settings.h>
#include <tree/chaid_settings.h>
#include <tree/quest_settings.h>
#include <tree/variable_settings.h>

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

inline std::string Describe(VariableSettings const& variable) {
    std::ostringstream out;
    out << variable.GetMeasurementLevel() << ' ' << variable.GetNumValues() << ' '
        << variable.GetMissingValue() << ' ' << variable.GetValueMergeFlag() << '/';
    return out.str();
}

inline std::string Describe(PruningSpec const& pruning) {
    return std::to_string(pruning.GetSERuleFactor()) + (pruning.GetPickMinRiskTree() ? " min" : "");
}

inline std::string Describe(Priors const& priors) {
    std::ostringstream out;
    auto const& vectors = dynamic_cast<PriorsImp const&>(priors);
    out << " priors " << priors.GetType() << priors.HasAlteredValues();
    for (auto const vector : {PriorsImp::GivenPriors, PriorsImp::AlteredPriors,
                              PriorsImp::SecondPriors, PriorsImp::ThirdPriors}) {
        for (int i = 0; i < priors.GetNumClasses(); ++i) {
            out << ' ' << vectors.Get(i, vector);
        }
    }
    return out.str();
}

inline std::string Describe(Cost const& cost) {
    std::ostringstream out;
    out << " cost " << cost.GetType();
    for (int i = 0; i < cost.GetNumClasses(); ++i) {
        for (int j = 0; j < cost.GetNumClasses(); ++j) {
            out << ' ' << cost.Get(i, j);
        }
    }
    return out.str();
}

inline std::string DescribeBase(AlgSettings const& settings) {
    std::ostringstream out;
    CoreSettings const& core = *settings.GetCoreSettings();
    out << settings.GetMaxNumCompetitors() << ' ' << settings.GetMaxNominalPredCategories() << ' '
        << core.HasFreqWeight() << core.HasCaseWeight() << ' ' << Describe(*core.GetTarget());
    for (int i = 0; i < core.GetNumPredictors(); ++i) {
        out << Describe(*core.GetPredictor(i));
    }
    ValidationSpec const& validation = *settings.GetValidationSpec();
    StopRule const& stop = *settings.GetStopRule();
    out << validation.GetType() << ' ' << validation.GetNumCVFolds() << ' '
        << validation.GetRandomSeed() << ' ' << stop.GetMinImprovement() << ' '
        << stop.GetMinNodeSize() << ' ' << stop.GetMinNodePercentSize() << ' '
        << stop.GetMinChildSize() << ' ' << stop.GetMinChildPercentSize() << ' '
        << stop.GetMaxTreeDepth();
    return out.str();
}

inline Snapshot SnapshotOf(AlgSettings const& settings) {
    Snapshot snapshot{{"base", DescribeBase(settings)}};
    std::ostringstream own;
    if (auto const* const cart = dynamic_cast<CartSettings const*>(&settings)) {
        snapshot["cart"] =
            Describe(*cart->GetPruningSpec()) + ' ' + std::to_string(cart->GetMaxNumSurrogates());
    }
    if (auto const* const cart = dynamic_cast<CCartSettings const*>(&settings)) {
        own << Describe(*cart->GetPriors()) << Describe(*cart->GetCost())
            << cart->GetSplitCriteria();
        snapshot["ccart"] = own.str();
    }
    if (auto const* const chaid = dynamic_cast<ChaidSettings const*>(&settings)) {
        std::ostringstream out;
        out << chaid->GetAlphaOfSplitNode() << ' ' << chaid->GetAlphaOfMerge() << ' '
            << chaid->GetAlphaOfMergeSplit() << ' ' << chaid->GetSplitMergeMethod()
            << chaid->GetAllowSplitMerge() << chaid->GetUseBonferroniAdj();
        snapshot["chaid"] = out.str();
    }
    if (auto const* const chaid = dynamic_cast<CChaidSettingsImp const*>(&settings)) {
        Scores const& scores = *chaid->GetScores();
        own << chaid->GetConvergenceEpsilon() << ' ' << chaid->GetMaxNumIterations() << ' '
            << chaid->GetChiSquareMethod() << Describe(*chaid->GetPriors())
            << Describe(*chaid->GetCost()) << " scores " << scores.GetType();
        for (int i = 0; i < scores.GetNumClasses(); ++i) {
            own << ' ' << scores.Get(i);
        }
        snapshot["cchaid"] = own.str();
    }
    if (auto const* const quest = dynamic_cast<QuestSettings const*>(&settings)) {
        own << quest->GetAlphaOfVariableSelection() << ' ' << quest->GetMaxNumSurrogates() << ' '
            << quest->GetMaxNumNomCatsSurr() << ' ' << Describe(*quest->GetPruningSpec())
            << Describe(*quest->GetPriors()) << Describe(*quest->GetCost());
        snapshot["quest"] = own.str();
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
