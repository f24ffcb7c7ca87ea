#include <tree/core_settings.h>

#include <tree/array_rw.h>
#include <tree/variable_settings.h>

#include <utility>

namespace tree_800 {

namespace {

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
    bool const hasFreqWeight = other.HasFreqWeight();
    bool const hasCaseWeight = other.HasCaseWeight();
    std::unique_ptr<VariableSettings> target(other.GetTarget()->Clone());
    OwnedPredictors predictors = ClonePredictors(other);
    hasFreqWeight_ = hasFreqWeight;
    hasCaseWeight_ = hasCaseWeight;
    // Callers may hold pointers to what is replaced: it lives for ever, the one leak in the
    // library.
    static_cast<void>(target_.release());
    static_cast<void>(predictors_.release());
    target_ = std::move(target);
    predictors_ = std::move(predictors);
    return *this;
}

CoreSettingsImp& CoreSettingsImp::operator=(CoreSettingsImp const& other) {
    return *this = static_cast<CoreSettings const&>(other);
}

CoreSettingsImp::~CoreSettingsImp() {
    target_.reset();  // before the predictors: a caller's own kinds of variables can tell
}

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
