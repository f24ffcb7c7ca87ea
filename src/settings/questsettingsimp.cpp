#include <tree/quest_settings.h>

#include "settings/kind.h"
#include "settings/owned_part.h"

#include <tree/core_settings.h>
#include <tree/cost.h>
#include <tree/priors.h>
#include <tree/pruning_spec.h>
#include <tree/stop_rule.h>

#include <utility>

namespace tree_800 {

namespace {

constexpr double DefaultAlpha = 0.05;
constexpr int DefaultNumSurrogates = 5;
constexpr int DefaultNomCatsSurr = 32;
constexpr int DefaultMaxTreeDepth = 5;

}  // namespace

QuestSettings::QuestSettings(CoreSettings const& core) : AlgSettings(core) {
    AlgSettings::GetStopRule()->SetMaxTreeDepth(DefaultMaxTreeDepth);
}

QuestSettings::~QuestSettings() = default;

QuestSettingsImp::QuestSettingsImp(CoreSettings const& core) : QuestSettings(core) {
    Init(DefaultAlpha, DefaultNumSurrogates, DefaultNomCatsSurr, nullptr, nullptr, nullptr);
    if (!ValidateNumSurrogates(DefaultNumSurrogates)) {
        maxNumSurrogates_ = AlgSettings::GetCoreSettings()->GetNumPredictors() - 1;
    }
}

QuestSettingsImp::QuestSettingsImp(QuestSettingsImp const& other) : QuestSettings(other) {
    InitFrom(other);
}

QuestSettingsImp::~QuestSettingsImp() {
    priors_.reset();  // then cost and pruning: a caller's own kinds of parts can tell
    cost_.reset();
}

int QuestSettingsImp::GetType() const { return ClassificationQuest; }

AlgSettings* QuestSettingsImp::Clone() const { return new QuestSettingsImp(*this); }

void QuestSettingsImp::CopyFrom(AlgSettings const& other) {
    AlgSettings::CopyFrom(other);  // NOLINT(bugprone-parent-virtual-call): pure in QuestSettings
    if (auto const* const quest = AsKind<QuestSettingsImp>(other, ClassificationQuest)) {
        InitFrom(*quest);
    }
}

PruningSpec* QuestSettingsImp::GetPruningSpec() { return pruningSpec_.get(); }

PruningSpec const* QuestSettingsImp::GetPruningSpec() const { return pruningSpec_.get(); }

int QuestSettingsImp::GetMaxNumSurrogates() const { return maxNumSurrogates_; }

void QuestSettingsImp::SetMaxNumSurrogates(int n) {
    if (ValidateNumSurrogates(n)) {
        maxNumSurrogates_ = n;
    }
}

int QuestSettingsImp::GetMaxNumNomCatsSurr() const { return maxNumNomCatsSurr_; }

void QuestSettingsImp::SetMaxNumNomCatsSurr(int n) {
    if (n > 0) {
        maxNumNomCatsSurr_ = n;
    }
}

Priors* QuestSettingsImp::GetPriors() { return priors_.get(); }

Priors const* QuestSettingsImp::GetPriors() const { return priors_.get(); }

Cost* QuestSettingsImp::GetCost() { return cost_.get(); }

Cost const* QuestSettingsImp::GetCost() const { return cost_.get(); }

double QuestSettingsImp::GetAlphaOfVariableSelection() const { return alphaOfVariableSelection_; }

void QuestSettingsImp::SetAlphaOfVariableSelection(double alpha) {
    alphaOfVariableSelection_ = alpha;
}

void QuestSettingsImp::Init(double alpha, int maxNumSurrogates, int maxNumNomCatsSurr,
                            PruningSpec const* pruning, Priors const* priors, Cost const* cost) {
    auto newPruning = CloneOrDefault<PruningSpecImp>(pruning);
    auto newPriors = CloneOrDefault<PriorsImp>(priors);
    auto newCost = CloneOrDefault<CostImp>(cost);
    alphaOfVariableSelection_ = alpha;
    maxNumSurrogates_ = maxNumSurrogates;
    maxNumNomCatsSurr_ = maxNumNomCatsSurr;
    pruningSpec_ = std::move(newPruning);
    priors_ = std::move(newPriors);
    cost_ = std::move(newCost);
}

void QuestSettingsImp::InitFrom(QuestSettingsImp const& other) {
    Init(other.alphaOfVariableSelection_, other.maxNumSurrogates_, other.maxNumNomCatsSurr_,
         other.pruningSpec_.get(), other.priors_.get(), other.cost_.get());
}

bool QuestSettingsImp::ValidateNumSurrogates(int n) const {
    CoreSettings const* const core = AlgSettings::GetCoreSettings();
    return core != nullptr && 0 <= n && n < core->GetNumPredictors() - 1;
}

}  // namespace tree_800
