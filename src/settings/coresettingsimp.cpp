#include <tree/core_settings.h>
#include <tree/variable_settings.h>

#include <utility>

#ifdef __has_feature
#define TREE800_HAS_FEATURE(feature) __has_feature(feature)
#else
#define TREE800_HAS_FEATURE(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || TREE800_HAS_FEATURE(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#endif

namespace tree_800 {

namespace {

// What an assignment replaces lives for ever, deliberately: callers may hold pointers to it. This
// is the one leak in the library, and the one place where the leak checker is told so.
void KeepForEver([[maybe_unused]] void const* object) noexcept {
#if defined(__SANITIZE_ADDRESS__) || TREE800_HAS_FEATURE(address_sanitizer)
    __lsan_ignore_object(object);
#endif
}

void Append(MCTree_800::ArrayRW<VariableSettings*>& predictors,
            std::unique_ptr<VariableSettings> predictor) {
    predictors.Add(predictor.get());
    static_cast<void>(predictor.release());
}

}  // namespace

CoreSettings::~CoreSettings() = default;

void CoreSettingsImp::DeletePredictors::operator()(Predictors* predictors) const noexcept {
    for (int i = 0; i < predictors->GetNumElements(); ++i) {
        delete predictors->GetAt(i);
    }
    delete predictors;
}

CoreSettingsImp::OwnedPredictors CoreSettingsImp::ClonePredictors(CoreSettings const& other) {
    OwnedPredictors clones(new Predictors);
    for (int i = 0; i < other.GetNumPredictors(); ++i) {
        Append(*clones, std::unique_ptr<VariableSettings>(other.GetPredictor(i)->Clone()));
    }
    return clones;
}

CoreSettingsImp::CoreSettingsImp()
    : target_(std::make_unique<VariableSettingsImp>()), predictors_(new Predictors) {}

CoreSettingsImp::CoreSettingsImp(CoreSettingsImp const& other)
    : CoreSettings(other),
      target_(other.target_->Clone()),
      predictors_(ClonePredictors(other)),
      hasFreqWeight_(other.hasFreqWeight_),
      hasCaseWeight_(other.hasCaseWeight_) {}

CoreSettingsImp& CoreSettingsImp::operator=(CoreSettings const& other) {
    if (this == &other) {
        return *this;
    }
    std::unique_ptr<VariableSettings> target(other.GetTarget()->Clone());
    OwnedPredictors predictors = ClonePredictors(other);
    hasFreqWeight_ = other.HasFreqWeight();
    hasCaseWeight_ = other.HasCaseWeight();
    KeepForEver(target_.release());
    KeepForEver(predictors_.release());
    target_ = std::move(target);
    predictors_ = std::move(predictors);
    return *this;
}

CoreSettingsImp& CoreSettingsImp::operator=(CoreSettingsImp const& other) {
    return *this = static_cast<CoreSettings const&>(other);
}

CoreSettingsImp::~CoreSettingsImp() = default;

VariableSettings* CoreSettingsImp::AddPredictor() {
    Append(*predictors_, std::make_unique<VariableSettingsImp>());
    return predictors_->GetAt(predictors_->GetNumElements() - 1);
}

void CoreSettingsImp::SetHasFreqWeight(bool has) { hasFreqWeight_ = has; }

void CoreSettingsImp::SetHasCaseWeight(bool has) { hasCaseWeight_ = has; }

CoreSettings* CoreSettingsImp::Clone() const { return new CoreSettingsImp(*this); }

int CoreSettingsImp::GetNumPredictors() const { return predictors_->GetNumElements(); }

VariableSettings const* CoreSettingsImp::GetPredictor(int i) const { return (*predictors_)[i]; }

VariableSettings* CoreSettingsImp::GetPredictor(int i) { return (*predictors_)[i]; }

VariableSettings const* CoreSettingsImp::GetTarget() const { return target_.get(); }

VariableSettings* CoreSettingsImp::GetTarget() { return target_.get(); }

bool CoreSettingsImp::HasFreqWeight() const { return hasFreqWeight_; }

bool CoreSettingsImp::HasCaseWeight() const { return hasCaseWeight_; }

}  // namespace tree_800
