#ifndef TREE800_ORDERED_SPLIT_RULE_H
#define TREE800_ORDERED_SPLIT_RULE_H

#include <tree/export.h>
#include <tree/inline_vector.h>
#include <tree/split_rule_imp.h>

#include <cstddef>
#include <vector>

namespace tree_800 {

class OValueSet;
class VariableSettings;

/// The split rule of an ordered predictor: ascending cut points, each with the child of the values
/// above the previous cut point up to and including this one, and the upper child for the values
/// above the last. With one cut point c: x <= c goes to the cut point's child, x > c to the upper
/// child, NaN to the upper child, the missing-value code to the missing-value child (-1 until set).
///
/// Filled either with SetCutPoint (binary) or interval by interval with AddMappedValues.
///
///     OSplitRule rule(systemMissingValue(), 0);
///     rule.SetCutPoint(3.5);
///     rule.Classify(3.5);  // 0: a value equal to a cut goes to the lower side
class TREE800_EXPORT OSplitRule : public SplitRuleImp {
public:
    /// One cut point.
    struct OSplitRuleItem {
        double cutValue;     ///< the upper end of the interval
        int child;           ///< receives the interval; -1 while unassigned
        bool cutPointAbove;  ///< the cut value is described as belonging to the interval above
    };

    /// A rule without cut points; missingValue is the predictor value that counts as missing.
    OSplitRule(double missingValue, int predictorIndex);
    /// The same, with the missing value of the variable.
    OSplitRule(VariableSettings const& settings, int predictorIndex);
    /// A deep copy.
    OSplitRule(OSplitRule const& other);
    ~OSplitRule() override;

    // SplitRuleImp
    int GetNumChildren() const override;

    /// The interval of the child as a new OValueSet that the caller deletes; null unless the rule
    /// IsValid, and for a child that no cut point and no upper child reaches. A child mapped at
    /// several cut points is described by its first interval. A cut-point-above flag moves the cut
    /// value to the upper interval in this description alone: Classify sends it to the lower side
    /// whatever the flag says.
    [[nodiscard]] ValueSet* GetMappedValues(int child) const override;
    [[nodiscard]] SplitRuleImp* Clone() const override;
    /// Keeps the predictor and the missing-value code alone.
    [[nodiscard]] SplitRuleImp* EmptyClone() const override;
    /// Cut points, upper child and missing-value child; the missing-value code stays.
    bool CopyMappings(SplitRuleImp const& other) override;
    /// The child of the first cut point that is not below the value, or the upper child when there
    /// is no such cut point or its child is unassigned. Linear in the number of cut points.
    int Classify(double value) const override;
    /// Cut values within 1e-12 of each other count as equal; cut-point-above flags do not take
    /// part.
    int Compare(SplitRuleImp const& other) const override;
    bool IsOrdered() const override;
    /// The rule must be valid: every child must be assigned.
    void ReorderMappings(std::vector<int> const& newPos) override;
    /// Sends an OValueSet to a new child; false for any other set and for an interval that
    /// IsValidInterval refuses.
    bool AddMappedValues(ValueSet const& values) override;

    /// Without cut points: adds one with child 0 and makes the upper child 1. Otherwise moves the
    /// first cut point and nothing else; on a rule with several, keeping them ascending is the
    /// caller's to see to.
    void SetCutPoint(double value);
    /// The first cut value, or the system-missing value.
    double GetCutPoint() const;

    /// Whether the upper child and every cut point's child are assigned.
    bool IsValid() const;
    /// Whether the rule is valid and has exactly one cut point.
    bool IsValidBinary() const;
    /// False only for a valid binary rule whose upper child is 0.
    bool IsStandard() const;
    /// In a valid binary rule, sends the values up to the cut to child 0 and those above to 1, or
    /// the other way round; no effect on other rules. @{
    void SetStandard();
    void SetReverse();
    /// @}

    /// The cut point with exactly this value, or null; borrowed until the next operation on the
    /// rule that is not const.
    OSplitRuleItem* IsPresent(double value);

    /// The cut points in ascending order, i in [0, GetNumCutPoints()); borrowed until the next
    /// operation on the rule that is not const. @{
    int GetNumCutPoints() const noexcept { return static_cast<int>(cutPoints_.size()); }
    OSplitRuleItem const& GetCutPointItem(int i) const {
        return cutPoints_[static_cast<std::size_t>(i)];
    }
    /// @}

    /// The child of the values above the last cut point; -1 while unassigned.
    int GetUpperChild() const noexcept { return upperChild_; }

    /// The predictor value that counts as missing for this rule.
    double GetMissingValue() const noexcept { return missingValue_; }

    /// Adds the left or the right end of the interval as a cut point. At a right end the values
    /// below it go to a new child; a left end stays unassigned. A cut point of exactly that value
    /// keeps its assigned child; while unassigned it takes the interval's open flag and, at a right
    /// end, the new child. A left end stores its open flag as it is, although GetMappedValues reads
    /// the flag the other way round.
    void InsertCutPoint(OValueSet const& interval, bool useLeftEnd);

    /// Whether the interval can be added without overlapping what is mapped. False for one bounded
    /// on both sides with equal ends. Interior overlap is judged by OValueSet::Contains and is
    /// therefore as coarse as that.
    bool IsValidInterval(OValueSet const& interval) const;

private:
    InlineVector<OSplitRuleItem, 1> cutPoints_;
    int upperChild_ = -1;
    double missingValue_;
};

}  // namespace tree_800

#endif
