#ifndef TREE800_TESTS_FUZZ_RULE_MODEL_H
#define TREE800_TESTS_FUZZ_RULE_MODEL_H

#include "fuzz/input.h"

#include <tree/nominal_split_rule.h>
#include <tree/ordered_split_rule.h>
#include <tree/value_set.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace tree_800::fuzz {

/// A plain twin of a split rule of either kind, written for clarity alone.
struct RuleModel {
    using Cut = OSplitRule::OSplitRuleItem;

    bool isOrdered = true;
    int predictor = 0;
    double missingCode = systemMissingValue();
    std::vector<Cut> cuts;
    int upper = -1;
    std::vector<int> childOfCode;
    int missing = -1;
    int dumb = -1;
    int properties = 1;

    std::unique_ptr<SplitRuleImp> NewRule() const {
        if (isOrdered) {
            return std::make_unique<OSplitRule>(missingCode, predictor);
        }
        return std::make_unique<NSplitRule>(predictor, NumCodes());
    }
    int NumChildren() const {
        int highest = std::max({upper, missing, -1});
        for (Cut const& cut : cuts) {
            highest = std::max(highest, cut.child);
        }
        for (int const child : childOfCode) {
            highest = std::max(highest, child);
        }
        return highest + 1;
    }
    bool IsValid() const {
        return upper != -1 && std::none_of(cuts.begin(), cuts.end(),
                                           [](Cut const& cut) { return cut.child == -1; });
    }
    bool IsValidBinary() const { return cuts.size() == 1 && IsValid(); }
    int NumCodes() const { return static_cast<int>(childOfCode.size()); }
    int Child(int code) const {
        return code >= 0 && code < NumCodes() ? childOfCode[static_cast<std::size_t>(code)] : -1;
    }
    int Classify(double x) const {
        if (!isOrdered) {
            bool const isCode = x >= 0.0 && x < NumCodes() && std::floor(x) == x;
            int const child = isCode ? Child(static_cast<int>(x)) : -1;
            return child >= 0 ? child : missing;
        }
        if (x == missingCode) {
            return missing;
        }
        auto const cut = std::find_if(cuts.begin(), cuts.end(), [x](Cut const& candidate) {
            return candidate.cutValue >= x;
        });
        return cut != cuts.end() && cut->child != -1 ? cut->child : upper;
    }
    Cut* Find(double value) {
        auto const cut = std::find_if(cuts.begin(), cuts.end(), [value](Cut const& other) {
            return other.cutValue == value;
        });
        return cut == cuts.end() ? nullptr : &*cut;
    }
    bool Accepts(OValueSet const& interval) const {
        bool const isBounded = interval.IsBoundedLeft() && interval.IsBoundedRight();
        double const left = interval.IsBoundedLeft() ? interval.GetLeftEnd() : 0.0;
        double const right = interval.IsBoundedRight() ? interval.GetRightEnd() : 0.0;
        if ((isBounded && left == right) || (upper != -1 && !interval.IsBoundedRight())) {
            return false;
        }
        for (std::size_t i = 0; i < cuts.size(); ++i) {
            double const cut = cuts[i].cutValue;
            bool const endsHere =
                right == cut || (right < cut && (i == 0 || right > cuts[i - 1].cutValue));
            bool const isAboveAll = i + 1 == cuts.size() && interval.IsBoundedLeft() && left > cut;
            if ((endsHere && interval.IsBoundedRight() && cuts[i].child != -1) ||
                (upper != -1 && isAboveAll) ||
                (isBounded && cut != left && cut != right && interval.Contains(cut))) {
                return false;
            }
        }
        return true;
    }
    void Map(int code, int child) {
        if (code >= 0) {
            childOfCode.resize(static_cast<std::size_t>(std::max(NumCodes(), code + 1)), -1);
            childOfCode[static_cast<std::size_t>(code)] = child;
        }
    }
    void InsertCut(OValueSet const& interval, bool useLeft) {
        double const value = useLeft ? interval.GetLeftEnd() : interval.GetRightEnd();
        Cut const cut{value, useLeft ? -1 : NumChildren(),
                      useLeft ? interval.IsOpenLeft() : interval.IsOpenRight()};
        if (Cut* const present = Find(value)) {
            *present = present->child == -1 ? cut : *present;
            return;
        }
        cuts.insert(std::find_if(cuts.begin(), cuts.end(),
                                 [value](Cut const& other) { return other.cutValue > value; }),
                    cut);
    }
    bool Add(OValueSet const& interval) {
        if (!Accepts(interval)) {
            return false;
        }
        if (interval.IsBoundedLeft()) {
            InsertCut(interval, true);
        }
        if (interval.IsBoundedRight()) {
            InsertCut(interval, false);
        } else {
            upper = NumChildren();
        }
        return true;
    }
    /// Whether a reordering of n children covers every position in use.
    bool CanReorder(int n) const {
        return NumChildren() <= n && dumb < n && (!isOrdered || IsValid());
    }
    void Reorder(std::vector<int> const& newPos) {
        auto const move = [&newPos](int& child) {
            child = child >= 0 ? newPos[static_cast<std::size_t>(child)] : child;
        };
        move(missing);
        move(dumb);
        move(upper);
        std::for_each(cuts.begin(), cuts.end(), [move](Cut& cut) { move(cut.child); });
        std::for_each(childOfCode.begin(), childOfCode.end(), move);
        properties |= 4;
    }
};

/// A rule without mappings and its twin.
RuleModel DrawEmptyRule(Input& input, int numPredictors);

/// Changes the rule and its twin alike by one operation, unless that would break a precondition.
void ChangeRule(Input& input, SplitRuleImp& rule, RuleModel& model);

}  // namespace tree_800::fuzz

#endif
