#ifndef TREE800_NOMINAL_SPLIT_RULE_H
#define TREE800_NOMINAL_SPLIT_RULE_H

#include <tree/array.h>
#include <tree/export.h>
#include <tree/split_rule_imp.h>

#include <vector>

namespace tree_800 {

/// The split rule of a nominal predictor: a table from category code (0, 1, 2, ...) to child
/// position. A value that is a whole number inside the table goes to its code's child; every other
/// value (a fraction, NaN, a negative or unknown code, a code without a child) goes to the
/// missing-value child, -1 until set. Unlike OSplitRule it knows no missing value: leave that code
/// unmapped, or outside the table as the system-missing value is.
///
///     NSplitRule rule(4, 3);
///     rule.SetCatMapping(0, 1);
///     rule.Classify(2.0);  // -1: code 2 has no child
class TREE800_EXPORT NSplitRule : public SplitRuleImp {
public:
    /// A rule with numCategories unmapped codes; 0 or less gives an empty table.
    NSplitRule(int predictorIndex, int numCategories);
    /// A deep copy.
    NSplitRule(NSplitRule const& other);
    ~NSplitRule() override;

    // SplitRuleImp
    int GetNumChildren() const override;
    /// The codes of the child, ascending, as a new NValueSet that the caller deletes; null when it
    /// has none. Child -1 gives the unmapped codes inside the table.
    [[nodiscard]] ValueSet* GetMappedValues(int child) const override;
    [[nodiscard]] SplitRuleImp* Clone() const override;
    /// Keeps the predictor alone.
    [[nodiscard]] SplitRuleImp* EmptyClone() const override;
    bool CopyMappings(SplitRuleImp const& other) override;
    int Classify(double value) const override;
    /// A code that one rule maps and the other does not gives 3, unless the other has no children
    /// at all, when it gives 1.
    int Compare(SplitRuleImp const& other) const override;
    bool IsOrdered() const override;
    void ReorderMappings(std::vector<int> const& newPos) override;
    /// Sends the codes of an NValueSet to one new child, moving those that had another; negative
    /// codes are skipped. False for any other set.
    bool AddMappedValues(ValueSet const& values) override;

    /// Sends the code to the child, -1 for none, growing the table when it must; a negative code is
    /// ignored.
    void SetCatMapping(int code, int child);
    /// The child of the code; -1 when it has none or lies outside the table.
    int GetCatMapping(int code) const noexcept {
        return code >= 0 && code < childOfCode_.GetSize() ? childOfCode_[code] : -1;
    }
    /// Number of codes in the table, with and without a child.
    int GetNumCodes() const noexcept { return childOfCode_.GetSize(); }

private:
    TArray<int> childOfCode_;
};

}  // namespace tree_800

#endif
