#include "cart/rules.h"

#include <tree/ordered_split_rule.h>

#include <algorithm>
#include <iterator>

namespace cart {

Sides CountSides(Dataset const& data, Rows const& rows, tree_800::SplitRuleImp const& rule) {
    Sides sides{};
    for (std::size_t const row : rows) {
        int const child = rule.Classify(data.Value(row, rule.GetPredictorIndex()));
        if (child >= 0) {
            ++sides[static_cast<std::size_t>(child)];
        }
    }
    return sides;
}

Rows KnownInOrder(Dataset const& data, Rows const& rows, int predictor) {
    Rows known;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(known),
                 [&](std::size_t row) { return !IsMissing(data.Value(row, predictor)); });
    std::sort(known.begin(), known.end(), [&](std::size_t a, std::size_t b) {
        return data.Value(a, predictor) < data.Value(b, predictor);
    });
    return known;
}

Rule CutBetween(Dataset const& data, int predictor, double lower, double upper, int lowerChild) {
    double const middle = lower + (upper - lower) / 2;
    auto rule =
        std::make_unique<tree_800::OSplitRule>(data.Predictor(predictor).settings, predictor);
    rule->SetCutPoint(middle < upper ? middle : lower);  // rounding must not reach the upper value
    if (lowerChild == 1) {
        rule->SetReverse();
    }
    return rule;
}

void KeepBest(Rules& rules, tree_800::StatisticFlag statistic, std::size_t limit) {
    std::stable_sort(rules.begin(), rules.end(), [&](Rule const& a, Rule const& b) {
        return a->GetStatistic(statistic) > b->GetStatistic(statistic);
    });
    rules.resize(std::min(rules.size(), limit));
}

}  // namespace cart
