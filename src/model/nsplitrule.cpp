#include <tree/nominal_split_rule.h>

#include <tree/value_set.h>

#include <algorithm>
#include <memory>
#include <new>

namespace tree_800 {

NSplitRule::NSplitRule(int predictorIndex, int numCategories)
    : SplitRuleImp(predictorIndex), childOfCode_(true) {
    if (!childOfCode_.Init(numCategories)) {
        throw std::bad_alloc();
    }
    for (int code = 0; code < numCategories; ++code) {
        childOfCode_.SetAt(code, -1);
    }
}

NSplitRule::NSplitRule(NSplitRule const& other) = default;

NSplitRule::~NSplitRule() = default;

int NSplitRule::GetNumChildren() const {
    int last = GetMissingValueMapping();
    for (int code = 0; code < childOfCode_.GetSize(); ++code) {
        last = std::max(last, childOfCode_[code]);
    }
    return last + 1;
}

ValueSet* NSplitRule::GetMappedValues(int child) const {
    std::unique_ptr<NValueSet> codes;
    for (int code = 0; code < childOfCode_.GetSize(); ++code) {
        if (childOfCode_[code] == child) {
            if (codes == nullptr) {
                codes = std::make_unique<NValueSet>();
            }
            codes->Add(code);
        }
    }
    return codes.release();
}

SplitRuleImp* NSplitRule::Clone() const { return new NSplitRule(*this); }

SplitRuleImp* NSplitRule::EmptyClone() const { return new NSplitRule(GetPredictorIndex(), 0); }

bool NSplitRule::CopyMappings(SplitRuleImp const& other) {
    auto const* const nominal = dynamic_cast<NSplitRule const*>(&other);
    if (nominal == nullptr) {
        return false;
    }
    childOfCode_ = nominal->childOfCode_;
    return SplitRuleImp::CopyMappings(other);
}

int NSplitRule::Classify(double value) const {
    bool const isInTable = value >= 0.0 && value < childOfCode_.GetSize();
    int const code = isInTable ? static_cast<int>(value) : -1;
    int const child = code == value ? GetCatMapping(code) : -1;
    return child >= 0 ? child : GetMissingValueMapping();
}

int NSplitRule::Compare(SplitRuleImp const& other) const {
    int result = SplitRuleImp::Compare(other);
    if (result == 2) {
        return 2;
    }
    auto const* const nominal = dynamic_cast<NSplitRule const*>(&other);
    if (nominal == nullptr) {
        return 3;
    }
    bool const otherHasChildren = nominal->GetNumChildren() != 0;
    int const numCodes = std::max(childOfCode_.GetSize(), nominal->childOfCode_.GetSize());
    for (int code = 0; code < numCodes; ++code) {
        int const mine = GetCatMapping(code);
        int const others = nominal->GetCatMapping(code);
        if ((mine < 0) != (others < 0) && otherHasChildren) {
            return 3;
        }
        if (mine != others) {
            result = 1;
        }
    }
    return result;
}

bool NSplitRule::IsOrdered() const { return false; }

void NSplitRule::ReorderMappings(std::vector<int> const& newPos) {
    SplitRuleImp::ReorderMappings(newPos);
    for (int code = 0; code < childOfCode_.GetSize(); ++code) {
        if (childOfCode_[code] >= 0) {
            childOfCode_[code] = NewPosition(newPos, childOfCode_[code]);
        }
    }
}

bool NSplitRule::AddMappedValues(ValueSet const& values) {
    int const child = GetNumChildren();
    auto const* const codes = dynamic_cast<NValueSet const*>(&values);
    if (codes == nullptr) {
        return false;
    }
    // The largest code goes first: the table then grows once, and nothing after it can fail.
    std::unique_ptr<NValueSetIter> const search(codes->GetIterator());
    std::unique_ptr<NValueSetIter> const walk(codes->GetIterator());
    int largest = -1;
    while (search->Advance()) {
        largest = std::max(largest, search->GetData());
    }
    SetCatMapping(largest, child);
    while (walk->Advance()) {
        SetCatMapping(walk->GetData(), child);
    }
    return true;
}

void NSplitRule::SetCatMapping(int code, int child) {
    if (code < 0) {
        return;
    }
    int const firstNew = childOfCode_.GetSize();
    childOfCode_.SetAtGrow(code, child);
    for (int gap = firstNew; gap < code; ++gap) {
        childOfCode_.SetAt(gap, -1);
    }
}

}  // namespace tree_800
