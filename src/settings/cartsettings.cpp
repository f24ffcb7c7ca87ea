#include <tree/cart_settings.h>

#include "settings/kind.h"
#include "settings/owned_part.h"

#include <tree/core_settings.h>
#include <tree/pruning_spec.h>
#include <tree/stop_rule.h>

#include <algorithm>
#include <utility>

namespace tree_800 {

namespace {

constexpr int DefaultNumSurrogates = 5;
constexpr int DefaultMaxTreeDepth = 5;

}  // namespace

CartSettings::CartSettings(CoreSettings const& core) : AlgSettings(core) {
    Init(nullptr, DefaultNumSurrogates);
    AlgSettings::GetStopRule()->SetMaxTreeDepth(DefaultMaxTreeDepth);
}

CartSettings::CartSettings(CartSettings const& other) : AlgSettings(other) { InitFrom(other); }

CartSettings::~CartSettings() = default;

void CartSettings::CopyFrom(AlgSettings const& other) {
    AlgSettings::CopyFrom(other);
    auto const* const cart = AsKind<CartSettings>(other, RegressionCart, ClassificationCart);
    if (cart != nullptr) {
        InitFrom(*cart);
    }
}

PruningSpec* CartSettings::GetPruningSpec() { return pruningSpec_.get(); }

PruningSpec const* CartSettings::GetPruningSpec() const { return pruningSpec_.get(); }

int CartSettings::GetMaxNumSurrogates() const { return maxNumSurrogates_; }

void CartSettings::SetMaxNumSurrogates(int n) {
    maxNumSurrogates_ = n;
    ValidateNumSurrogates();
}

void CartSettings::Init(PruningSpec const* pruning, int maxNumSurrogates) {
    pruningSpec_ = CloneOrDefault<PruningSpecImp>(pruning);
    maxNumSurrogates_ = maxNumSurrogates;
    ValidateNumSurrogates();
}

void CartSettings::InitFrom(CartSettings const& other) {
    Init(other.pruningSpec_.get(), other.maxNumSurrogates_);
}

void CartSettings::ValidateNumSurrogates() {
    if (CoreSettings const* const core = AlgSettings::GetCoreSettings()) {
        maxNumSurrogates_ = std::min(maxNumSurrogates_, core->GetNumPredictors() - 1);
    }
    maxNumSurrogates_ = std::max(maxNumSurrogates_, 0);
}

RCartSettingsImp::RCartSettingsImp(CoreSettings const& core) : CartSettings(core) {}

RCartSettingsImp::~RCartSettingsImp() = default;

int RCartSettingsImp::GetType() const { return RegressionCart; }

AlgSettings* RCartSettingsImp::Clone() const { return new RCartSettingsImp(*this); }

CCartSettings::CCartSettings(CoreSettings const& core) : CartSettings(core) {}

CCartSettings::~CCartSettings() = default;

}  // namespace tree_800
