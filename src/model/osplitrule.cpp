#include <tree/ordered_split_rule.h>

#include "foundation/tolerance.h"
#include "model/plain_rule.h"

#include <tree/host.h>
#include <tree/precondition.h>
#include <tree/value_set.h>
#include <tree/variable_settings.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

namespace tree_800 {

namespace {

// A NaN difference does not tell two cut points apart.
bool SameCut(OSplitRule::OSplitRuleItem const& a, OSplitRule::OSplitRuleItem const& b) {
    return a.child == b.child && !(std::fabs(a.cutValue - b.cutValue) > Tolerance);
}

}  // namespace

OSplitRule::OSplitRule(double missingValue, int predictorIndex)
    : SplitRuleImp(predictorIndex), missingValue_(missingValue) {}

OSplitRule::OSplitRule(VariableSettings const& settings, int predictorIndex)
    : OSplitRule(settings.GetMissingValue(), predictorIndex) {}

OSplitRule::OSplitRule(OSplitRule const& other) = default;

OSplitRule::~OSplitRule() = default;

int OSplitRule::GetNumChildren() const {
    int last = std::max(upperChild_, GetMissingValueMapping());
    for (OSplitRuleItem const& cut : cutPoints_) {
        last = std::max(last, cut.child);
    }
    return last + 1;
}

ValueSet* OSplitRule::GetMappedValues(int child) const {
    if (!IsValid()) {
        return nullptr;
    }
    auto values = std::make_unique<OValueSet>();
    if (child == upperChild_) {
        if (cutPoints_.empty()) {
            values->SetBoundedLeft(false);
        } else {
            values->SetOpenLeft(!cutPoints_.back().cutPointAbove);
            values->SetLeftEnd(cutPoints_.back().cutValue);
        }
        values->SetBoundedRight(false);
        values->SetOpenRight(true);
        return values.release();
    }
    auto const cut = std::find_if(cutPoints_.begin(), cutPoints_.end(),
                                  [child](OSplitRuleItem const& c) { return c.child == child; });
    if (cut == cutPoints_.end()) {
        return nullptr;
    }
    std::size_t const i = cut - cutPoints_.begin();
    if (i == 0) {
        values->SetBoundedLeft(false);
        values->SetOpenLeft(true);
    } else {
        OSplitRuleItem const& previous = cutPoints_[i - 1];
        values->SetOpenLeft(!previous.cutPointAbove);
        values->SetLeftEnd(previous.cutValue);
    }
    values->SetOpenRight(cut->cutPointAbove);
    values->SetRightEnd(cut->cutValue);
    return values.release();
}

SplitRuleImp* OSplitRule::Clone() const { return new OSplitRule(*this); }

SplitRuleImp* OSplitRule::EmptyClone() const {
    return new OSplitRule(missingValue_, GetPredictorIndex());
}

bool OSplitRule::CopyMappings(SplitRuleImp const& other) {
    auto const* const ordered = dynamic_cast<OSplitRule const*>(&other);
    if (ordered == nullptr) {
        return false;
    }
    cutPoints_ = ordered->cutPoints_;
    upperChild_ = ordered->upperChild_;
    return SplitRuleImp::CopyMappings(other);
}

int OSplitRule::Classify(double value) const { return ClassifyOrdered(*this, value); }

int OSplitRule::Compare(SplitRuleImp const& other) const {
    int const base = SplitRuleImp::Compare(other);
    if (base == 2) {
        return 2;
    }
    auto const* const ordered = dynamic_cast<OSplitRule const*>(&other);
    if (ordered == nullptr || missingValue_ != ordered->missingValue_) {
        return 3;
    }
    bool const sameCuts =
        std::equal(cutPoints_.begin(), cutPoints_.end(), ordered->cutPoints_.begin(),
                   ordered->cutPoints_.end(), SameCut);
    return sameCuts && upperChild_ == ordered->upperChild_ ? base : 1;
}

bool OSplitRule::IsOrdered() const { return true; }

void OSplitRule::ReorderMappings(std::vector<int> const& newPos) {
    TREE800_REQUIRE(IsValid(), "only a rule whose every child is assigned can be reordered");
    SplitRuleImp::ReorderMappings(newPos);
    for (OSplitRuleItem& cut : cutPoints_) {
        cut.child = NewPosition(newPos, cut.child);
    }
    upperChild_ = NewPosition(newPos, upperChild_);
}

bool OSplitRule::AddMappedValues(ValueSet const& values) {
    auto const* const interval = dynamic_cast<OValueSet const*>(&values);
    if (interval == nullptr || !IsValidInterval(*interval)) {
        return false;
    }
    cutPoints_.reserve(cutPoints_.size() + 2);  // so that either both ends go in or neither
    if (interval->IsBoundedLeft()) {
        InsertCutPoint(*interval, true);
    }
    if (interval->IsBoundedRight()) {
        InsertCutPoint(*interval, false);
    } else if (upperChild_ == -1) {
        upperChild_ = GetNumChildren();
    }
    return true;
}

void OSplitRule::SetCutPoint(double value) {
    if (cutPoints_.empty()) {
        cutPoints_.push_back({value, 0, false});
        upperChild_ = 1;
    } else {
        cutPoints_.front().cutValue = value;
    }
}

double OSplitRule::GetCutPoint() const {
    return cutPoints_.empty() ? systemMissingValue() : cutPoints_.front().cutValue;
}

bool OSplitRule::IsValid() const {
    return upperChild_ != -1 && std::none_of(cutPoints_.begin(), cutPoints_.end(),
                                             [](OSplitRuleItem const& c) { return c.child == -1; });
}

bool OSplitRule::IsValidBinary() const { return cutPoints_.size() == 1 && IsValid(); }

bool OSplitRule::IsStandard() const { return !IsValidBinary() || upperChild_ != 0; }

void OSplitRule::SetStandard() {
    if (IsValidBinary()) {
        cutPoints_.front().child = 0;
        upperChild_ = 1;
    }
}

void OSplitRule::SetReverse() {
    if (IsValidBinary()) {
        cutPoints_.front().child = 1;
        upperChild_ = 0;
    }
}

OSplitRule::OSplitRuleItem* OSplitRule::IsPresent(double value) {
    auto const cut = std::find_if(cutPoints_.begin(), cutPoints_.end(),
                                  [value](OSplitRuleItem const& c) { return c.cutValue == value; });
    return cut == cutPoints_.end() ? nullptr : &*cut;
}

void OSplitRule::InsertCutPoint(OValueSet const& interval, bool useLeftEnd) {
    double const value = useLeftEnd ? interval.GetLeftEnd() : interval.GetRightEnd();
    bool const open = useLeftEnd ? interval.IsOpenLeft() : interval.IsOpenRight();
    int const child = useLeftEnd ? -1 : GetNumChildren();
    if (OSplitRuleItem* const present = IsPresent(value)) {
        if (present->child == -1) {
            present->child = child;
            present->cutPointAbove = open;
        }
        return;
    }
    auto const next = std::find_if(cutPoints_.begin(), cutPoints_.end(),
                                   [value](OSplitRuleItem const& c) { return c.cutValue > value; });
    cutPoints_.insert(next - cutPoints_.begin(), {value, child, open});
}

bool OSplitRule::IsValidInterval(OValueSet const& interval) const {
    bool const boundedLeft = interval.IsBoundedLeft();
    bool const boundedRight = interval.IsBoundedRight();
    double const left = boundedLeft ? interval.GetLeftEnd() : 0.0;
    double const right = boundedRight ? interval.GetRightEnd() : 0.0;
    bool const hasUpper = upperChild_ != -1;

    if (boundedLeft && boundedRight && left == right) {
        return false;
    }
    if (hasUpper && !boundedRight) {
        return false;
    }
    if (cutPoints_.empty()) {
        return true;
    }
    OSplitRuleItem const& first = cutPoints_.front();
    if (first.child != -1 && boundedRight && first.cutValue > right) {
        return false;
    }
    if (hasUpper && boundedLeft && left > cutPoints_.back().cutValue) {
        return false;
    }
    double previous = first.cutValue;
    for (OSplitRuleItem const& cut : cutPoints_) {
        double const value = cut.cutValue;
        bool const inside = boundedLeft && boundedRight && value != left && value != right &&
                            interval.Contains(value);
        bool const endsInMapped = boundedRight && cut.child != -1 &&
                                  ((value > right && right > previous) || right == value);
        if (inside || endsInMapped) {
            return false;
        }
        previous = value;
    }
    return true;
}

}  // namespace tree_800
