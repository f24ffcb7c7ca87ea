#include "cart/split_search.h"

#include "cart/target_sums.h"

#include <tree/nominal_split_rule.h>

#include <bitset>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace cart {
namespace {

/// The contest between all splits of one predictor: the first of the best wins.
class Contest {
public:
    explicit Contest(std::size_t minChildSize) : minChildSize_(static_cast<double>(minChildSize)) {}

    /// makeRule(child) makes the rule that sends the left group to that child, 0 or 1.
    template <typename MakeRule>
    void Enter(TargetSums const& left, TargetSums const& right, MakeRule makeRule) {
        if (left.NumCases() < minChildSize_ || right.NumCases() < minChildSize_) {
            return;
        }
        double const improvement = Improvement(left, right);
        if (improvement > best_) {
            winner_ = makeRule(left.Mean() < right.Mean() ? 0 : 1);
            winner_->SetStatistic(ImprovementStatistic, improvement);
            best_ = improvement;
        }
    }

    /// Null when no split improves the node.
    Rule TakeWinner() { return std::move(winner_); }

private:
    double minChildSize_;
    double best_ = 0.0;
    Rule winner_;
};

Rule BestCut(Dataset const& data, Rows const& rows, int predictor, SplitSearch const& search) {
    Rows const known = KnownInOrder(data, rows, predictor);
    TargetSums left(search.classWeights);
    TargetSums right(search.classWeights);
    for (std::size_t const row : known) {
        right.Add(data.targets[row]);
    }
    Contest contest(search.minChildSize);
    for (std::size_t i = 0; i + 1 < known.size(); ++i) {
        left.Add(data.targets[known[i]]);
        right.Remove(data.targets[known[i]]);
        double const lower = data.Value(known[i], predictor);
        double const upper = data.Value(known[i + 1], predictor);
        if (lower < upper) {
            contest.Enter(left, right, [&](int leftChild) {
                return CutBetween(data, predictor, lower, upper, leftChild);
            });
        }
    }
    return contest.TakeWinner();
}

Rule BestDivision(Dataset const& data, Rows const& rows, int predictor, SplitSearch const& search) {
    std::map<int, TargetSums> sumsOfCode;
    for (std::size_t const row : rows) {
        double const value = data.Value(row, predictor);
        if (!IsMissing(value)) {
            int const code = static_cast<int>(value);
            sumsOfCode.try_emplace(code, search.classWeights).first->second.Add(data.targets[row]);
        }
    }
    if (sumsOfCode.size() < 2 || sumsOfCode.size() > search.maxCategories) {
        return nullptr;
    }
    std::vector<std::pair<int, TargetSums>> const categories(sumsOfCode.begin(), sumsOfCode.end());
    Contest contest(search.minChildSize);
    // The last category always goes right, so that no division is tried again with its sides
    // exchanged.
    unsigned const numDivisions = 1U << (categories.size() - 1);
    for (unsigned division = 1; division < numDivisions; ++division) {
        std::bitset<MaxSearchedCategories> const goesLeft(division);
        TargetSums left(search.classWeights);
        TargetSums right(search.classWeights);
        for (std::size_t i = 0; i < categories.size(); ++i) {
            (goesLeft[i] ? left : right).Add(categories[i].second);
        }
        contest.Enter(left, right, [&](int leftChild) {
            auto rule = std::make_unique<tree_800::NSplitRule>(
                predictor, data.Predictor(predictor).NumCategories());
            for (std::size_t i = 0; i < categories.size(); ++i) {
                rule->SetCatMapping(categories[i].first, goesLeft[i] ? leftChild : 1 - leftChild);
            }
            return rule;
        });
    }
    return contest.TakeWinner();
}

}  // namespace

Rules FindSplits(Dataset const& data, Rows const& rows, SplitSearch const& search) {
    Rules splits;
    for (int predictor = 0; predictor < data.NumPredictors(); ++predictor) {
        bool const isNominal = data.Predictor(predictor).IsNominal();
        Rule split = (isNominal ? BestDivision : BestCut)(data, rows, predictor, search);
        if (split) {
            splits.push_back(std::move(split));
        }
    }
    KeepBest(splits, ImprovementStatistic, search.maxSplits);
    return splits;
}

}  // namespace cart
