#ifndef TREE800_MODEL_PLAIN_RULE_H
#define TREE800_MODEL_PLAIN_RULE_H

#include <tree/nominal_split_rule.h>
#include <tree/ordered_split_rule.h>

#include <typeinfo>

namespace tree_800 {

/// The rule as one of the library's own two kinds, or null. A class derived from these may override
/// Classify and is a kind of its own. Type information is compared by address, the cheapest way: in
/// a process with two copies of it a rule would be taken for a caller's own kind, and asked so. @{
inline OSplitRule const* AsPlainOrdered(SplitRuleImp const& rule) noexcept {
    return &typeid(rule) == &typeid(OSplitRule) ? static_cast<OSplitRule const*>(&rule) : nullptr;
}
inline NSplitRule const* AsPlainNominal(SplitRuleImp const& rule) noexcept {
    return &typeid(rule) == &typeid(NSplitRule) ? static_cast<NSplitRule const*>(&rule) : nullptr;
}
/// @}

/// The child for the values up to a cut point, above the one before: the upper child where it has
/// none of its own.
inline int ChildOfCut(OSplitRule const& rule, OSplitRule::OSplitRuleItem const& cut) noexcept {
    return cut.child >= 0 ? cut.child : rule.GetUpperChild();
}

/// OSplitRule::Classify, for callers that know the kind of the rule and can do without the virtual
/// call.
inline int ClassifyOrdered(OSplitRule const& rule, double value) {
    if (value == rule.GetMissingValue()) {
        return rule.GetMissingValueMapping();
    }
    int const numCutPoints = rule.GetNumCutPoints();
    if (numCutPoints == 1) {  // without a branch that no branch predictor could learn
        OSplitRule::OSplitRuleItem const& cut = rule.GetCutPointItem(0);
        int const below = ChildOfCut(rule, cut);
        return cut.cutValue >= value ? below : rule.GetUpperChild();
    }
    for (int i = 0; i < numCutPoints; ++i) {
        OSplitRule::OSplitRuleItem const& cut = rule.GetCutPointItem(i);
        if (cut.cutValue >= value) {
            return ChildOfCut(rule, cut);
        }
    }
    return rule.GetUpperChild();
}

}  // namespace tree_800

#endif
