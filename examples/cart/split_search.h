#ifndef TREE800_EXAMPLES_CART_SPLIT_SEARCH_H
#define TREE800_EXAMPLES_CART_SPLIT_SEARCH_H

#include "cart/rules.h"

#include <cstddef>
#include <vector>

namespace cart {

/// A nominal predictor is searched through all divisions of the categories that occur in the node,
/// 2^(k-1) - 1 of them for k categories. Where more than this many occur it offers no split.
constexpr std::size_t MaxSearchedCategories = 12;

/// What bounds the search for the splits of a node.
struct SplitSearch {
    std::vector<double> const& classWeights;  ///< of a case in the criterion; none in regression
    std::size_t minChildSize;                 ///< in cases that have the predictor
    std::size_t maxCategories;                ///< of a nominal predictor in the node
    std::size_t maxSplits;                    ///< kept: the primary split and its competitors
};

/// The best split of each predictor, best of all first, at most maxSplits; empty when no predictor
/// can divide the rows. Each rule carries its ImprovementStatistic.
///
/// The improvement is the decrease of weight x Gini index, or of the sum of squared deviations from
/// the mean (Breiman et al. 1984, sections 4.3 and 8.4). It is taken over the rows that have the
/// predictor and not scaled up for the others, so that a predictor that is often missing is at a
/// disadvantage. A split leaves at least minChildSize of these rows on either side.
///
/// Child 0 is the side with the lower mean target (the class code counts as a number). A category
/// that does not occur among the rows is left without a child: surrogates place it.
Rules FindSplits(Dataset const& data, Rows const& rows, SplitSearch const& search);

}  // namespace cart

#endif
