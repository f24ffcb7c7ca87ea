#include <tree/reg_info.h>

#include <tree/host.h>
#include <tree/precondition.h>

#include <algorithm>
#include <cstddef>

namespace tree_800 {

namespace {

constexpr int RecognisedBits = 0xFF;

bool IsSingleBit(int flag) noexcept {
    return (flag & RecognisedBits) == flag && flag != 0 && (flag & (flag - 1)) == 0;
}

int CountBits(int bits) noexcept {
    int count = 0;
    for (; bits != 0; bits &= bits - 1) {
        ++count;
    }
    return count;
}

}  // namespace

RegInfo::~RegInfo() = default;

RegInfoImp::RegInfoImp() { Clear(); }

RegInfoImp::RegInfoImp(RegInfoImp const& other) : RegInfo(other) {
    Clear();
    CopyData(other);
}

RegInfoImp& RegInfoImp::operator=(RegInfoImp const& other) {
    if (this != &other) {
        CopyData(other);
    }
    return *this;
}

RegInfoImp::~RegInfoImp() = default;

double RegInfoImp::GetMean() const { return mean_; }

double RegInfoImp::GetMinimum() const { return minimum_; }

double RegInfoImp::GetMaximum() const { return maximum_; }

double RegInfoImp::GetStdDev() const { return ExtendedStatisticOr(StoreStdDev, 0.0); }

double RegInfoImp::GetPrediction() const { return ExtendedStatisticOr(StorePrediction, mean_); }

int RegInfoImp::GetNumBins() const { return static_cast<int>(bins_.size()); }

double RegInfoImp::GetBinSize(int i) const {
    TREE800_REQUIRE(0 <= i && i < GetNumBins(), "bin index out of range");
    return bins_[static_cast<std::size_t>(i)];
}

double RegInfoImp::GetBinLeftEndPoint(int i) const {
    return minimum_ + ((maximum_ - minimum_) * i) / GetNumBins();
}

double RegInfoImp::GetBinRightEndPoint(int i) const {
    return minimum_ + ((maximum_ - minimum_) * (i + 1.0)) / GetNumBins();
}

double RegInfoImp::GetCount() const { return count_; }

double RegInfoImp::GetUnweightedCount() const {
    return ExtendedStatisticOr(StoreUnweightedCount, count_);
}

void RegInfoImp::SetCount(double count) { count_ = count; }

void RegInfoImp::CopyData(RegInfoImp const& other) {
    // All that can fail comes first, room for the standard deviation included.
    std::vector<double> bins(other.bins_);
    std::vector<double> extendedStatistics;
    extendedStatistics.reserve(other.extendedStatistics_.size() + 1);
    extendedStatistics = other.extendedStatistics_;
    double const stdDev = other.GetStdDev();

    storedFlags_ = other.storedFlags_;
    extendedStatistics_.swap(extendedStatistics);
    bins_.swap(bins);
    mean_ = other.mean_;
    count_ = other.count_;
    minimum_ = other.minimum_;
    maximum_ = other.maximum_;
    SetExtendedStatistic(StoreStdDev, stdDev);
}

bool RegInfoImp::operator==(RegInfoImp const& other) const {
    return GetMean() == other.GetMean() && GetMinimum() == other.GetMinimum() &&
           GetMaximum() == other.GetMaximum() && GetStdDev() == other.GetStdDev() &&
           GetPrediction() == other.GetPrediction() && bins_ == other.bins_ &&
           GetUnweightedCount() == other.GetUnweightedCount() && GetCount() == other.GetCount();
}

void RegInfoImp::Clear() {
    count_ = 0.0;
    mean_ = 0.0;
    minimum_ = GetInfinity();
    maximum_ = -GetInfinity();
    storedFlags_ = 0;
    bins_.clear();
    extendedStatistics_.clear();
}

void RegInfoImp::SetMean(double mean) { mean_ = mean; }

void RegInfoImp::SetMinimum(double minimum) { minimum_ = minimum; }

void RegInfoImp::SetMaximum(double maximum) { maximum_ = maximum; }

void RegInfoImp::SetNumBins(int n) { bins_.resize(static_cast<std::size_t>(std::max(n, 0))); }

void RegInfoImp::SetBinSize(int i, double size) {
    TREE800_REQUIRE(0 <= i && i < GetNumBins(), "bin index out of range");
    bins_[static_cast<std::size_t>(i)] = size;
}

int RegInfoImp::GetExtendedStatisticPos(StatisticStorageFlags flag) const {
    if ((storedFlags_ & flag) == 0 || !IsSingleBit(flag)) {
        return -1;
    }
    return CountBits(storedFlags_ & (flag - 1));
}

int RegInfoImp::GetExtendedStatisticInsertionPos(StatisticStorageFlags flag) const {
    if ((storedFlags_ & flag) != 0 || !IsSingleBit(flag)) {
        return -1;
    }
    return CountBits(storedFlags_ & (flag - 1));
}

double RegInfoImp::GetExtendedStatistic(StatisticStorageFlags flag) const {
    int const pos = GetExtendedStatisticPos(flag);
    TREE800_REQUIRE(pos >= 0, "the statistic is not stored");
    return extendedStatistics_[static_cast<std::size_t>(pos)];
}

bool RegInfoImp::GetExtendedStatistic(StatisticStorageFlags flag, double* out) const {
    if (GetExtendedStatisticPos(flag) < 0) {
        return false;
    }
    *out = GetExtendedStatistic(flag);
    return true;
}

void RegInfoImp::SetExtendedStatistic(StatisticStorageFlags flag, double value) {
    TREE800_REQUIRE(IsSingleBit(flag), "not a single bit in 1 to 128");
    int const pos = GetExtendedStatisticPos(flag);
    if (pos >= 0) {
        extendedStatistics_[static_cast<std::size_t>(pos)] = value;
        return;
    }
    extendedStatistics_.insert(extendedStatistics_.begin() + GetExtendedStatisticInsertionPos(flag),
                               value);
    storedFlags_ |= flag;
}

double RegInfoImp::ExtendedStatisticOr(StatisticStorageFlags flag, double fallback) const {
    double value = fallback;
    static_cast<void>(GetExtendedStatistic(flag, &value));
    return value;
}

}  // namespace tree_800
