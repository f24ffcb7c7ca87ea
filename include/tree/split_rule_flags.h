#ifndef TREE800_SPLIT_RULE_FLAGS_H
#define TREE800_SPLIT_RULE_FLAGS_H

namespace tree_800 {

/// Properties of a split rule, as bits. A grower tells two ways of creating a rule apart by the
/// first two, of which it sets one at a time.
enum SplitRulePropertyFlag : int {
    SplitRuleCreatedDefault = 1,    ///< set on every new rule
    SplitRuleCreatedAlternate = 2,  ///< for a grower that creates rules in two ways
    SplitRuleMappingsReordered = 4  ///< set by ReorderMappings, never cleared
};

/// The statistics that a grower may attach to a split rule, as bits. Four have a slot for a value;
/// the others can only be marked as present. What each means is the grower's to document.
enum StatisticFlag : int {
    StatisticSlot0 = 1,
    StatisticSlot1 = 2,
    StatisticSlot2 = 4,
    StatisticSlot3 = 8,
    StatisticUnstored16 = 16,
    StatisticUnstored32 = 32,
    StatisticUnstored64 = 64
};

constexpr SplitRulePropertyFlag operator|(SplitRulePropertyFlag a,
                                          SplitRulePropertyFlag b) noexcept {
    return static_cast<SplitRulePropertyFlag>(static_cast<int>(a) | static_cast<int>(b));
}

constexpr StatisticFlag operator|(StatisticFlag a, StatisticFlag b) noexcept {
    return static_cast<StatisticFlag>(static_cast<int>(a) | static_cast<int>(b));
}

}  // namespace tree_800

#endif
