#include "fuzz/weighting_model.h"
#include "support/settings_snapshot.h"

#include <algorithm>
#include <type_traits>

namespace tree_800::fuzz {
namespace {

using test::Snapshot;
using test::SnapshotOf;

struct Subject {
    std::unique_ptr<AlgSettings> settings;
    CostModel costs;
    PriorsModel priors;
};

/// The weightings that settings hold; null those that the kind does not have.
struct Weightings {
    explicit Weightings(AlgSettings& settings) {
        Take(dynamic_cast<CCartSettings*>(&settings));
        Take(dynamic_cast<QuestSettings*>(&settings));
        Take(dynamic_cast<CChaidSettingsImp*>(&settings));
    }
    template <typename Settings>
    void Take(Settings* settings) {
        if (settings != nullptr) {
            costs = dynamic_cast<CostImp*>(settings->GetCost());
            priors = dynamic_cast<PriorsImp*>(settings->GetPriors());
        }
    }

    CostImp* costs = nullptr;
    PriorsImp* priors = nullptr;
};

void CheckWeightings(Subject& subject) {
    Weightings const held(*subject.settings);
    if (held.costs != nullptr) {
        subject.costs.CheckAgainst(*held.costs);
        subject.priors.CheckAgainst(*held.priors);
    }
}

void ChangeWeightings(Input& input, Subject& subject) {
    Weightings const held(*subject.settings);
    for (int n = held.costs != nullptr ? input.Draw(1, 8) : 0; n > 0; --n) {
        if (input.Flag()) {
            subject.costs.Change(input, *held.costs);
        } else {
            subject.priors.Change(input, *held.priors, *held.costs, subject.costs);
        }
    }
}

CoreSettingsImp DrawCore(Input& input) {
    CoreSettingsImp core = test::MakeCore(input.Draw(0, 8));
    core.GetTarget()->SetMeasurementLevel(
        static_cast<global_800::MeasurementLevel>(input.Draw(0, 3)));
    core.SetHasCaseWeight(input.Flag());
    return core;
}

Subject DrawSubject(Input& input) {
    Subject subject;
    subject.settings = test::MakeSettings(input.Pick(test::Kinds), DrawCore(input));
    subject.priors.type = subject.settings->GetType() == ClassificationChaid ? 1 : 0;
    return subject;
}

int NumPredictors(AlgSettings const& settings) {
    return settings.GetCoreSettings()->GetNumPredictors();
}

/// The getter answers the new value where the setter accepts it, else the old one.
template <typename Owner, typename Base, typename Value, typename Answer, typename Result,
          typename Argument>
void CheckSetter(Owner& owner, Answer (Base::*set)(Value), Result (Base::*get)() const,
                 Argument argument, bool isAccepted) {
    auto const value = static_cast<Value>(argument);
    auto const expected =
        isAccepted ? static_cast<double>(value) : static_cast<double>((owner.*get)());
    if constexpr (std::is_same_v<Answer, bool>) {
        Check((owner.*set)(value) == isAccepted, "a setter answers whether it accepts");
    } else {
        (owner.*set)(value);
    }
    Check(Same(static_cast<double>((owner.*get)()), expected), "a setter stores what it accepts");
}

void ChangeParts(AlgSettings& settings, int n, double x) {
    StopRule& stop = *settings.GetStopRule();
    ValidationSpec& spec = *settings.GetValidationSpec();
    bool const isPercent = x >= 0.0 && x <= 100.0;
    using S = StopRule;
    using V = ValidationSpec;
    CheckSetter(stop, &S::SetMinNodeSize, &S::GetMinNodeSize, n, n >= 0);
    CheckSetter(stop, &S::SetMinChildSize, &S::GetMinChildSize, n, n >= 0);
    CheckSetter(stop, &S::SetMinNodePercentSize, &S::GetMinNodePercentSize, x, isPercent);
    CheckSetter(stop, &S::SetMinChildPercentSize, &S::GetMinChildPercentSize, x, isPercent);
    CheckSetter(stop, &S::SetMinImprovement, &S::GetMinImprovement, x, true);
    CheckSetter(stop, &S::SetMaxTreeDepth, &S::GetMaxTreeDepth, n, true);
    CheckSetter(spec, &V::Set, &V::GetType, n, n == 1 || n == 2);
    CheckSetter(spec, &V::SetNumCVFolds, &V::GetNumCVFolds, n, n >= 2);
    CheckSetter(spec, &V::SetRandomSeed, &V::GetRandomSeed, n, n >= 1);
}

void ChangePruning(PruningSpec& pruning, double factor) {
    pruning.SetPickMinRiskTree(factor > 1.0);
    CheckSetter(pruning, &PruningSpec::SetSERuleFactor, &PruningSpec::GetSERuleFactor, factor,
                factor >= 0.0);
}

/// The setters of each class of the kind.
void ChangeNumbers(AlgSettings& settings, int n, double x) {
    int const numPredictors = NumPredictors(settings);
    int const former = settings.GetMaxNumCompetitors();
    settings.SetMaxNumCompetitors(n);
    Check(
        settings.GetMaxNumCompetitors() == std::max(1, std::min(n > 0 ? n : former, numPredictors)),
        "competitors are cut to the predictors");
    CheckSetter(settings, &AlgSettings::SetMaxNominalPredCategories,
                &AlgSettings::GetMaxNominalPredCategories, n, n > 0);
    if (auto* const cart = dynamic_cast<CartSettings*>(&settings)) {
        cart->SetMaxNumSurrogates(n);
        Check(cart->GetMaxNumSurrogates() == std::max(0, std::min(n, numPredictors - 1)),
              "surrogates are cut to the other predictors");
        ChangePruning(*cart->GetPruningSpec(), x);
    }
    if (auto* const cart = dynamic_cast<CCartSettings*>(&settings)) {
        cart->SetSplitCriteria(static_cast<CartSplitCriteria>(n));
    }
    if (auto* const quest = dynamic_cast<QuestSettings*>(&settings)) {
        using Q = QuestSettings;
        CheckSetter(*quest, &Q::SetMaxNumSurrogates, &Q::GetMaxNumSurrogates, n,
                    n >= 0 && n < numPredictors - 1);
        CheckSetter(*quest, &Q::SetMaxNumNomCatsSurr, &Q::GetMaxNumNomCatsSurr, n, n > 0);
        quest->SetAlphaOfVariableSelection(x);
        ChangePruning(*quest->GetPruningSpec(), x);
    }
    if (auto* const chaid = dynamic_cast<ChaidSettings*>(&settings)) {
        using C = ChaidSettings;
        chaid->SetAlphaOfMergeSplit(7.0);
        chaid->SetAlphaOfMerge(x);
        Check(Same(chaid->GetAlphaOfMergeSplit(), 0.5 * x), "merge-split follows merge");
        CheckSetter(*chaid, &C::SetSplitMergeMethod, &C::GetSplitMergeMethod, n, n == 0 || n == 1);
        chaid->SetAllowSplitMerge(n > 0);
        chaid->SetUseBonferroniAdj(n > 1);
    }
    if (auto* const chaid = dynamic_cast<CChaidSettings*>(&settings)) {
        chaid->GetScores()->Set(n, x);
        chaid->SetMaxNumIterations(n);
    }
}

/// A change of the predictors leaves CART's surrogates as they were; its owner cuts them.
void CutSurrogates(AlgSettings& settings) {
    if (auto* const cart = dynamic_cast<CartSettings*>(&settings)) {
        cart->ValidateNumSurrogates();
    }
}

/// What the base of settings holds once the parts of another are copied into it.
std::string CopiedBase(AlgSettings const& to, AlgSettings const& from) {
    auto const level = to.GetCoreSettings()->GetTarget()->GetMeasurementLevel();
    auto const newLevel = from.GetCoreSettings()->GetTarget()->GetMeasurementLevel();
    bool const keeps = (level == global_800::Continuous) != (newLevel == global_800::Continuous);
    CoreSettingsImp core = test::MakeCore(NumPredictors(from));
    core.SetHasCaseWeight(from.GetCoreSettings()->HasCaseWeight());
    core.GetTarget()->SetMeasurementLevel(keeps ? level : newLevel);
    RCartSettingsImp expected(core);
    expected.AlgSettings::Init(from.GetMaxNumCompetitors(), from.GetMaxNominalPredCategories(),
                               &core, from.GetValidationSpec(), from.GetStopRule());
    return test::DescribeBase(expected);
}

/// CopyFrom takes what both kinds share and leaves the rest.
void Copy(Subject& to, Subject const& from) {
    Snapshot expected = SnapshotOf(*to.settings);
    for (auto const& [part, value] : SnapshotOf(*from.settings)) {
        if (expected.count(part) > 0) {
            expected[part] = value;
        }
    }
    expected["base"] = CopiedBase(*to.settings, *from.settings);
    to.settings->CopyFrom(*from.settings);
    Check(SnapshotOf(*to.settings) == expected, "CopyFrom takes what both kinds share");
    CutSurrogates(*to.settings);
    if (to.settings->GetType() == from.settings->GetType()) {
        to.costs = from.costs;
        to.priors = from.priors;
    }
}

/// Puts a clone into the place of the original.
void Clone(Subject& subject) {
    std::unique_ptr<AlgSettings> clone(subject.settings->Clone());
    Check(clone->GetType() == subject.settings->GetType(), "a clone has its original's kind");
    Check(SnapshotOf(*clone) == SnapshotOf(*subject.settings), "a clone equals its original");
    subject.settings = std::move(clone);
}

/// Gives the settings other variables, and their own weightings once more.
void Init(Input& input, AlgSettings& settings) {
    CoreSettingsImp const core = DrawCore(input);
    settings.Init(input.Draw(-1, 12), input.Draw(-1, 12), &core,
                  input.Flag() ? settings.GetValidationSpec() : nullptr,
                  input.Flag() ? settings.GetStopRule() : nullptr);
    CutSurrogates(settings);
    Snapshot const before = SnapshotOf(settings);
    if (auto* const cart = dynamic_cast<CCartSettingsImp*>(&settings)) {
        cart->Init(*cart->GetPriors(), *cart->GetCost(), cart->GetSplitCriteria());
    } else if (auto* const quest = dynamic_cast<QuestSettingsImp*>(&settings)) {
        quest->Init(quest->GetAlphaOfVariableSelection(), quest->GetMaxNumSurrogates(),
                    quest->GetMaxNumNomCatsSurr(), quest->GetPruningSpec(), quest->GetPriors(),
                    quest->GetCost());
    }
    Check(SnapshotOf(settings) == before, "settings take their own parts");
}

}  // namespace

void DriveSettings(Input& input) {
    Subject subjects[] = {DrawSubject(input), DrawSubject(input), DrawSubject(input)};
    for (int step = 0; step < 60 && !input.IsUsedUp(); ++step) {
        Subject& subject = input.Pick(subjects);
        int const n = input.Draw(-3, 12);
        auto const changeWeightings = [&] { ChangeWeightings(input, subject); };
        DoOneOf(
            input, [&] { Copy(subject, input.Pick(subjects)); }, [&] { Clone(subject); },
            [&] { Init(input, *subject.settings); }, [&] { subject = DrawSubject(input); },
            [&] { ChangeParts(*subject.settings, n, input.Number()); },
            [&] { ChangeNumbers(*subject.settings, n, input.Number()); }, changeWeightings,
            changeWeightings, changeWeightings, changeWeightings);
        CheckWeightings(subject);
    }
    std::for_each(std::begin(subjects), std::end(subjects), CheckWeightings);
}

}  // namespace tree_800::fuzz
