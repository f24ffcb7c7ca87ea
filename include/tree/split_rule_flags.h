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
/// the others can only be marked as present. What each means is the grower's to document, so that a
/// host must ask its grower; name the slots in use by constants, as examples/cart/rules.h does.
enum StatisticFlag : int {
    StatisticSlot0 = 1,        ///< the first slot
    StatisticSlot1 = 2,        ///< the second slot
    StatisticSlot2 = 4,        ///< the third slot
    StatisticSlot3 = 8,        ///< the fourth slot
    StatisticUnstored16 = 16,  ///< no slot
    StatisticUnstored32 = 32,  ///< no slot
    StatisticUnstored64 = 64   ///< no slot
};

/// The bits of both.
constexpr SplitRulePropertyFlag operator|(SplitRulePropertyFlag a,
                                          SplitRulePropertyFlag b) noexcept {
    return static_cast<SplitRulePropertyFlag>(static_cast<int>(a) | static_cast<int>(b));
}

/// The bits of both.
constexpr StatisticFlag operator|(StatisticFlag a, StatisticFlag b) noexcept {
    return static_cast<StatisticFlag>(static_cast<int>(a) | static_cast<int>(b));
}

}  // namespace tree_800

#endif
