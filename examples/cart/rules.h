#ifndef TREE800_EXAMPLES_CART_RULES_H
#define TREE800_EXAMPLES_CART_RULES_H

#include "cart/dataset.h"

#include <tree/split_rule_flags.h>
#include <tree/split_rule_imp.h>

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace cart {

/// What this grower attaches to its rules.
/// A primary split or competitor: the impurity that it removes from the node. See Improvement.
constexpr tree_800::StatisticFlag ImprovementStatistic = tree_800::StatisticSlot0;
/// A surrogate: its agreement with the primary split beyond the majority rule. See FindSurrogates.
constexpr tree_800::StatisticFlag AgreementStatistic = tree_800::StatisticSlot1;

using Rule = std::unique_ptr<tree_800::SplitRuleImp>;
using Rules = std::vector<Rule>;

/// Number of cases that go to child 0 and child 1.
using Sides = std::array<std::size_t, 2>;

/// How many of the rows the rule sends to each child; a row that it cannot place counts for none.
Sides CountSides(Dataset const& data, Rows const& rows, tree_800::SplitRuleImp const& rule);

/// The rows that have the predictor, in ascending order of its value.
Rows KnownInOrder(Dataset const& data, Rows const& rows, int predictor);

/// The rule that sends values up to the cut to one child (0 or 1) and those above to the other. The
/// cut lies half way between two neighbouring values of the data.
Rule CutBetween(Dataset const& data, int predictor, double lower, double upper, int lowerChild);

/// Brings the rules with the largest statistic to the front, equals in their old order, and drops
/// all but the first `limit`.
void KeepBest(Rules& rules, tree_800::StatisticFlag statistic, std::size_t limit);

}  // namespace cart

#endif
