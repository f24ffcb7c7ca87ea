#include <tree/predictor.h>

#include <tree/precondition.h>

#include <algorithm>
#include <cstddef>

namespace tree_800 {

PredictorImp::PredictorImp() = default;

PredictorImp::~PredictorImp() = default;

bool PredictorImp::GetValueRange(double* low, double* high) const {
    *low = low_;
    *high = high_;
    return true;
}

bool PredictorImp::GetNumValues(int* n) const {
    *n = static_cast<int>(values_.size());
    return true;
}

bool PredictorImp::GetValues(double* out, int n) const {
    if (n < 0 || static_cast<std::size_t>(n) > values_.size()) {
        return false;
    }
    std::copy_n(values_.begin(), n, out);
    return true;
}

bool PredictorImp::HasMissingValues() const { return hasMissingValues_; }

void PredictorImp::SetValueRange(double low, double high) {
    low_ = low;
    high_ = high;
}

void PredictorImp::SetNumValues(int n) { values_.resize(static_cast<std::size_t>(std::max(n, 0))); }

void PredictorImp::SetValues(double const* in, int n) {
    TREE800_REQUIRE(in != nullptr || n <= 0, "no values to store");
    values_.assign(in, in + std::max(n, 0));
}

void PredictorImp::SetHasMissingValues(bool has) { hasMissingValues_ = has; }

bool PredictorImp::operator==(PredictorImp const& other) const {
    return low_ == other.low_ && high_ == other.high_ && values_ == other.values_ &&
           hasMissingValues_ == other.hasMissingValues_;
}

}  // namespace tree_800
