#ifndef TREE800_EXAMPLES_CART_SURROGATES_H
#define TREE800_EXAMPLES_CART_SURROGATES_H

#include "cart/rules.h"

#include <cstddef>

namespace cart {

/// The rules on the other predictors that imitate the primary split best, best first, at most
/// maxSurrogates (Breiman et al. 1984, section 5.3.1).
///
/// Of the n rows that the primary split places, a rule agrees on those that it sends to the same
/// child; a row without its predictor counts against it. Each rule carries its AgreementStatistic,
/// (agree - majority) / (n - majority), where sending all rows to the bigger child agrees on the
/// majority: a fraction above 0 and at most 1. A rule that does no better than that, or that sends
/// fewer than two rows to one of the children, is no surrogate. Every
/// case counts once, whatever it weighs in the criterion.
Rules FindSurrogates(Dataset const& data, Rows const& rows, tree_800::SplitRuleImp const& primary,
                     std::size_t maxSurrogates);

}  // namespace cart

#endif
