#ifndef TREE800_SPLIT_RULE_H
#define TREE800_SPLIT_RULE_H

#include <tree/export.h>
#include <tree/split_rule_flags.h>

#include <memory>

namespace tree_800 {

class SplitRuleImp;
class ValueSet;
class VariableSettings;

/// The handle through which a host sees a split rule. It owns a rule of its own, a clone of the
/// node's, so neither changing nor deleting it touches the tree. Copies are deep. Any number of
/// threads may read one handle at a time; a change needs it alone.
///
/// A handle is empty only where a rule of a caller's own kind answered null to Clone; an empty
/// handle answers 0, null or false, and the operations marked "needs a rule" must not be called.
///
///     std::unique_ptr<SplitRule> primary(node->GetCompetitor(0));
///     int const predictor = primary->GetPredictorIndex();
///     SplitRuleImp const* const rule = *primary;  // for Classify and the rest
class TREE800_EXPORT SplitRule {
public:
    /// An empty rule for the variable: an NSplitRule for a nominal one, otherwise an OSplitRule
    /// whose missing-value code is the variable's missing value.
    SplitRule(VariableSettings const& settings, int predictorIndex);
    /// Holds a clone of the rule.
    SplitRule(SplitRuleImp const& rule);
    /// Holds a clone of what the other holds. @{
    SplitRule(SplitRule const& other);
    SplitRule& operator=(SplitRule const& other);
    /// @}
    virtual ~SplitRule();

    /// The held rule, or null; borrowed until the handle is assigned to or destroyed.
    operator SplitRuleImp const*() const noexcept { return rule_.get(); }

    /// The held rule's answers; see SplitRuleImp. What GetMappedValues answers the caller deletes.
    /// An empty handle answers 0, not -1, to GetMissingValueMapping. @{
    int GetNumChildren() const;
    [[nodiscard]] ValueSet* GetMappedValues(int child) const;
    int GetMissingValueMapping() const;
    bool GetStatistic(StatisticFlag flag, double* out) const;
    bool HasStatistic(StatisticFlag flag) const;
    bool HasProperty(SplitRulePropertyFlag flag) const;
    /// @}

    /// Needs a rule, which alone changes: the node's stays as it is. @{
    bool AddMappedValues(ValueSet const& values);
    void AddMissingValueMapping(bool newChild);
    /// @}
    /// Needs a rule.
    int GetPredictorIndex() const;

private:
    std::unique_ptr<SplitRuleImp> rule_;
};

}  // namespace tree_800

#endif
