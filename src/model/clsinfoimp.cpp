#include <tree/cls_info.h>

#include <tree/host.h>

#include <algorithm>
#include <memory>
#include <new>

namespace tree_800 {

namespace {

bool SameElements(TArray<double> const& a, TArray<double> const& b) {
    return std::equal(a.GetData(), a.GetData() + a.GetSize(), b.GetData(),
                      b.GetData() + b.GetSize());
}

}  // namespace

ClsInfo::~ClsInfo() = default;

ClsInfoImp::ClsInfoImp()
    : percentSize_(systemMissingValue()), counts_(true), probabilities_(true) {}

ClsInfoImp& ClsInfoImp::operator=(ClsInfoImp const& other) {
    if (this == &other) {
        return *this;
    }
    int const numClasses = other.GetNumClasses();
    SetNumClasses(numClasses);
    prediction_ = other.GetPrediction();
    for (int i = 0; i < numClasses; ++i) {
        counts_[i] = other.GetClassCount(i);
        probabilities_[i] = other.GetClassProbability(i);
    }
    SetPercentSize(other.GetPercentSize());
    SetUnweightedCount(other.GetUnweightedCount());
    return *this;
}

ClsInfoImp::~ClsInfoImp() = default;

ClsInfoImp* ClsInfoImp::Clone() const {
    auto copy = std::make_unique<ClsInfoImp>();
    *copy = *this;
    return copy.release();
}

int ClsInfoImp::GetPrediction() const { return prediction_; }

double ClsInfoImp::GetClassCount(int i) const { return counts_[i]; }

double ClsInfoImp::GetClassPercent(int i) const {
    double const total = GetCount();
    return total > 0.0 ? GetClassCount(i) / total : 0.0;
}

double ClsInfoImp::GetClassProbability(int i) const {
    return 0 <= i && i < probabilities_.GetSize() ? probabilities_[i] : -1.0;
}

int ClsInfoImp::GetNumClasses() const { return counts_.GetSize(); }

double ClsInfoImp::GetPercentSize() const { return percentSize_; }

double ClsInfoImp::GetUnweightedCount() const { return unweightedCount_; }

double ClsInfoImp::GetCount() const {
    double total = 0.0;
    for (int i = 0; i < counts_.GetSize(); ++i) {
        total += counts_[i];
    }
    return total;
}

void ClsInfoImp::SetPrediction(int prediction) { prediction_ = prediction; }

void ClsInfoImp::SetUnweightedCount(double count) { unweightedCount_ = count; }

void ClsInfoImp::SetPercentSize(double percent) { percentSize_ = percent; }

bool ClsInfoImp::operator==(ClsInfoImp const& other) const {
    return unweightedCount_ == other.unweightedCount_ && SameElements(counts_, other.counts_) &&
           SameElements(probabilities_, other.probabilities_) && prediction_ == other.prediction_ &&
           percentSize_ == other.percentSize_;
}

void ClsInfoImp::SetNumClasses(int n) {
    if (!counts_.Grow(n) || !probabilities_.Grow(n)) {
        throw std::bad_alloc();
    }
    counts_.Resize(n);  // there is room: neither can fail
    probabilities_.Resize(n);
}

void ClsInfoImp::SetClassCount(int i, double count) { counts_[i] = count; }

void ClsInfoImp::SetClassProbability(int i, double probability) {
    if (probabilities_.GetSize() == 0) {
        probabilities_.Resize(counts_.GetSize());
    }
    probabilities_[i] = probability;
}

}  // namespace tree_800
