#include <tree/split_rule_imp.h>

#include <tree/host.h>
#include <tree/precondition.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace tree_800 {

SplitRuleImp::SplitRuleImp(int predictorIndex) : predictorIndex_(predictorIndex) {
    std::fill(std::begin(statistics_), std::end(statistics_), systemMissingValue());
}

SplitRuleImp::~SplitRuleImp() = default;

bool SplitRuleImp::CopyMappings(SplitRuleImp const& other) {
    missingValueMapping_ = other.missingValueMapping_;
    return true;
}

int SplitRuleImp::Compare(SplitRuleImp const& other) const {
    if (predictorIndex_ != other.predictorIndex_) {
        return 2;
    }
    return missingValueMapping_ != other.missingValueMapping_ ? 1 : 0;
}

int SplitRuleImp::NewPosition(std::vector<int> const& newPos, int child) {
    TREE800_REQUIRE(0 <= child && static_cast<std::size_t>(child) < newPos.size(),
                    "a child position in use has no new position");
    return newPos[static_cast<std::size_t>(child)];
}

void SplitRuleImp::ReorderMappings(std::vector<int> const& newPos) {
    if (missingValueMapping_ >= 0) {
        missingValueMapping_ = NewPosition(newPos, missingValueMapping_);
    }
    if (dumbChildPos_ >= 0) {
        dumbChildPos_ = NewPosition(newPos, dumbChildPos_);
    }
    SetProperty(SplitRuleMappingsReordered);
}

bool SplitRuleImp::HasProperty(SplitRulePropertyFlag flag) const noexcept {
    return (propertyFlags_ & flag) != 0;
}

void SplitRuleImp::SetProperty(SplitRulePropertyFlag flag) noexcept {
    constexpr int CreationMask = SplitRuleCreatedDefault | SplitRuleCreatedAlternate;
    if ((flag & CreationMask) != 0) {
        propertyFlags_ &= ~CreationMask;
    }
    propertyFlags_ |= flag;
}

bool SplitRuleImp::HasStatistic(StatisticFlag flag) const noexcept {
    return (statisticFlags_ & flag) == flag;
}

void SplitRuleImp::SetStatistic(StatisticFlag flag, double value) noexcept {
    int const present = statisticFlags_ & flag;
    if (present != 0 && present != flag) {
        return;
    }
    statisticFlags_ |= flag;
    int const slot = GetFlagPosition(flag);
    if (slot >= 0) {
        statistics_[slot] = value;
    }
}

bool SplitRuleImp::GetStatistic(StatisticFlag flag, double* out) const noexcept {
    int const slot = GetFlagPosition(flag);
    if (!HasStatistic(flag) || slot < 0) {
        return false;
    }
    *out = statistics_[slot];
    return true;
}

double SplitRuleImp::GetStatistic(StatisticFlag flag) const {
    double value = systemMissingValue();
    static_cast<void>(GetStatistic(flag, &value));
    return value;
}

int SplitRuleImp::GetFlagPosition(StatisticFlag flag) noexcept {
    constexpr int RecognisedBits = 0x7F;
    int position = -1;
    for (int bits = flag & RecognisedBits; bits != 0; bits >>= 1) {
        ++position;
    }
    return position < NumStatistics ? position : -1;
}

void SplitRuleImp::AddMissingValueMapping(bool newChild) {
    missingValueMapping_ = newChild ? GetNumChildren() : GetNumChildren() - 1;
}

void SplitRuleImp::SetDumbRule(int pos, double prob) noexcept {
    dumbChildPos_ = pos;
    dumbChildProb_ = prob;
}

bool SplitRuleImp::operator==(SplitRuleImp const& other) const noexcept {
    return predictorIndex_ == other.predictorIndex_ &&
           std::equal(std::begin(statistics_), std::end(statistics_),
                      std::begin(other.statistics_)) &&
           dumbChildProb_ == other.dumbChildProb_ && dumbChildPos_ == other.dumbChildPos_ &&
           missingValueMapping_ == other.missingValueMapping_ &&
           statisticFlags_ == other.statisticFlags_ && propertyFlags_ == other.propertyFlags_;
}

}  // namespace tree_800
