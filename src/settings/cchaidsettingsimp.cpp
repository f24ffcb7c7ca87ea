#include <tree/chaid_settings.h>

#include "settings/kind.h"

#include <tree/cost.h>
#include <tree/priors.h>
#include <tree/scores.h>

#include <utility>

namespace tree_800 {

namespace {

// A clone to put in place of the part held; null when the given part is the held one.
template <typename Part>
std::unique_ptr<Part> CloneUnlessHeld(std::unique_ptr<Part> const& held, Part const& given) {
    return std::unique_ptr<Part>(held.get() == &given ? nullptr : given.Clone());
}

template <typename Part>
void ReplaceBy(std::unique_ptr<Part>& held, std::unique_ptr<Part> clone) noexcept {
    if (clone != nullptr) {
        held = std::move(clone);
    }
}

}  // namespace

CChaidSettingsImp::CChaidSettingsImp(CoreSettings const& core)
    : CChaidSettings(core),
      cost_(std::make_unique<CostImp>()),
      priors_(std::make_unique<PriorsImp>()),
      scores_(std::make_unique<ScoresImp>()) {
    priors_->Set(EqualPriors);
}

CChaidSettingsImp::CChaidSettingsImp(CChaidSettingsImp const& other) : CChaidSettings(other) {
    Init(other.convergenceEpsilon_, other.chiSquareMethod_, other.maxNumIterations_, *other.cost_,
         *other.priors_, *other.scores_);
}

CChaidSettingsImp::~CChaidSettingsImp() {
    cost_.reset();  // then priors and scores: a caller's own kinds of parts can tell
    priors_.reset();
}

int CChaidSettingsImp::GetType() const { return ClassificationChaid; }

AlgSettings* CChaidSettingsImp::Clone() const { return new CChaidSettingsImp(*this); }

void CChaidSettingsImp::CopyFrom(AlgSettings const& other) {
    ChaidSettings::CopyFrom(other);
    if (auto const* const chaid = AsKind<CChaidSettingsImp>(other, ClassificationChaid)) {
        Init(chaid->GetConvergenceEpsilon(), chaid->GetChiSquareMethod(),
             chaid->GetMaxNumIterations(), *chaid->GetCost(), *chaid->GetPriors(),
             *chaid->GetScores());
    }
}

double CChaidSettingsImp::GetConvergenceEpsilon() const { return convergenceEpsilon_; }

int CChaidSettingsImp::GetMaxNumIterations() const { return maxNumIterations_; }

ChiSquareMethod CChaidSettingsImp::GetChiSquareMethod() const { return chiSquareMethod_; }

Cost const* CChaidSettingsImp::GetCost() const { return cost_.get(); }

Cost* CChaidSettingsImp::GetCost() { return cost_.get(); }

Scores const* CChaidSettingsImp::GetScores() const { return scores_.get(); }

Scores* CChaidSettingsImp::GetScores() { return scores_.get(); }

void CChaidSettingsImp::SetConvergenceEpsilon(double epsilon) { convergenceEpsilon_ = epsilon; }

void CChaidSettingsImp::SetMaxNumIterations(int n) { maxNumIterations_ = n; }

void CChaidSettingsImp::SetChiSquareMethod(ChiSquareMethod method) { chiSquareMethod_ = method; }

Priors const* CChaidSettingsImp::GetPriors() const { return priors_.get(); }

Priors* CChaidSettingsImp::GetPriors() { return priors_.get(); }

void CChaidSettingsImp::Init(double epsilon, ChiSquareMethod method, int maxNumIterations,
                             Cost const& cost, Priors const& priors, Scores const& scores) {
    auto newCost = CloneUnlessHeld(cost_, cost);
    auto newPriors = CloneUnlessHeld(priors_, priors);
    auto newScores = CloneUnlessHeld(scores_, scores);
    convergenceEpsilon_ = epsilon;
    chiSquareMethod_ = method;
    maxNumIterations_ = maxNumIterations;
    ReplaceBy(cost_, std::move(newCost));
    ReplaceBy(priors_, std::move(newPriors));
    ReplaceBy(scores_, std::move(newScores));
}

}  // namespace tree_800
