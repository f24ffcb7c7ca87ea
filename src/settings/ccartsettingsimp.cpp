#include <tree/cart_settings.h>

#include "settings/kind.h"

#include <tree/cost.h>
#include <tree/priors.h>

#include <utility>

namespace tree_800 {

CCartSettingsImp::CCartSettingsImp(CoreSettings const& core)
    : CCartSettings(core),
      priors_(std::make_unique<PriorsImp>()),
      cost_(std::make_unique<CostImp>()) {}

CCartSettingsImp::CCartSettingsImp(CCartSettingsImp const& other) : CCartSettings(other) {
    Init(*other.GetPriors(), *other.GetCost(), other.GetSplitCriteria());
}

CCartSettingsImp::~CCartSettingsImp() {
    priors_.reset();  // before the cost: a caller's own kinds of parts can tell
}

int CCartSettingsImp::GetType() const { return ClassificationCart; }

AlgSettings* CCartSettingsImp::Clone() const { return new CCartSettingsImp(*this); }

void CCartSettingsImp::CopyFrom(AlgSettings const& other) {
    CartSettings::CopyFrom(other);
    if (auto const* const cart = AsKind<CCartSettings>(other, ClassificationCart)) {
        Init(*cart->GetPriors(), *cart->GetCost(), cart->GetSplitCriteria());
    }
}

Priors const* CCartSettingsImp::GetPriors() const { return priors_.get(); }

Priors* CCartSettingsImp::GetPriors() { return priors_.get(); }

Cost const* CCartSettingsImp::GetCost() const { return cost_.get(); }

Cost* CCartSettingsImp::GetCost() { return cost_.get(); }

CartSplitCriteria CCartSettingsImp::GetSplitCriteria() const { return splitCriteria_; }

void CCartSettingsImp::SetSplitCriteria(CartSplitCriteria criteria) { splitCriteria_ = criteria; }

void CCartSettingsImp::Init(Priors const& priors, Cost const& cost, CartSplitCriteria criteria) {
    std::unique_ptr<Priors> newPriors(priors.Clone());
    std::unique_ptr<Cost> newCost(cost.Clone());
    splitCriteria_ = criteria;
    priors_ = std::move(newPriors);
    cost_ = std::move(newCost);
}

}  // namespace tree_800
