#include "cart/surrogates.h"

#include <tree/nominal_split_rule.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace cart {
namespace {

constexpr std::size_t MinSentToChild = 2;

/// Looks for the rule on one predictor that agrees with the primary split on the most rows.
class Imitator {
public:
    Imitator(Dataset const& data, Rows const& rows, tree_800::SplitRuleImp const& primary)
        : data_(data), primary_(primary), sides_(CountSides(data, rows, primary)) {
        std::copy_if(rows.begin(), rows.end(), std::back_inserter(placed_),
                     [&](std::size_t row) { return ChildOf(row) >= 0; });
    }

    /// Null when no rule on the predictor is a surrogate.
    Rule Best(int predictor) const {
        return data_.Predictor(predictor).IsNominal() ? BestDivision(predictor)
                                                      : BestCut(predictor);
    }

private:
    int ChildOf(std::size_t row) const {
        return primary_.Classify(data_.Value(row, primary_.GetPredictorIndex()));
    }
    std::size_t SideOf(std::size_t placedRow) const {
        return static_cast<std::size_t>(ChildOf(placedRow));
    }
    std::size_t BiggerSide() const { return sides_[0] < sides_[1] ? 1 : 0; }
    std::size_t Majority() const { return sides_[BiggerSide()]; }

    void AttachAgreement(tree_800::SplitRuleImp& rule, std::size_t agree) const {
        rule.SetStatistic(AgreementStatistic, static_cast<double>(agree - Majority()) /
                                                  static_cast<double>(placed_.size() - Majority()));
    }

    Rule BestCut(int predictor) const {
        Rows const known = KnownInOrder(data_, placed_, predictor);
        Sides lower{};
        Sides upper = CountSides(data_, known, primary_);
        Rule best;
        std::size_t bestAgree = Majority();
        for (std::size_t i = 0; i + MinSentToChild < known.size(); ++i) {
            ++lower[SideOf(known[i])];
            --upper[SideOf(known[i])];
            double const value = data_.Value(known[i], predictor);
            double const next = data_.Value(known[i + 1], predictor);
            if (i + 1 < MinSentToChild || !(value < next)) {
                continue;
            }
            for (std::size_t const lowerSide : {0U, 1U}) {
                std::size_t const agree = lower[lowerSide] + upper[1 - lowerSide];
                if (agree > bestAgree) {
                    best = CutBetween(data_, predictor, value, next, static_cast<int>(lowerSide));
                    AttachAgreement(*best, agree);
                    bestAgree = agree;
                }
            }
        }
        return best;
    }

    /// Each category follows the majority of its own rows, and an even one the majority of all.
    Rule BestDivision(int predictor) const {
        std::vector<Sides> sidesOfCode(data_.Predictor(predictor).categories.size());
        for (std::size_t const row : placed_) {
            double const value = data_.Value(row, predictor);
            if (!IsMissing(value)) {
                ++sidesOfCode[static_cast<std::size_t>(value)][SideOf(row)];
            }
        }
        auto rule =
            std::make_unique<tree_800::NSplitRule>(predictor, static_cast<int>(sidesOfCode.size()));
        Sides sent{};
        std::size_t agree = 0;
        for (std::size_t code = 0; code < sidesOfCode.size(); ++code) {
            auto const [first, second] = sidesOfCode[code];
            if (first + second > 0) {
                std::size_t const side = first == second ? BiggerSide() : second > first ? 1 : 0;
                rule->SetCatMapping(static_cast<int>(code), static_cast<int>(side));
                sent[side] += first + second;
                agree += std::max(first, second);
            }
        }
        if (agree <= Majority() || std::min(sent[0], sent[1]) < MinSentToChild) {
            return nullptr;
        }
        AttachAgreement(*rule, agree);
        return rule;
    }

    Dataset const& data_;
    tree_800::SplitRuleImp const& primary_;
    Sides sides_;
    Rows placed_;  // by the primary split
};

}  // namespace

Rules FindSurrogates(Dataset const& data, Rows const& rows, tree_800::SplitRuleImp const& primary,
                     std::size_t maxSurrogates) {
    Imitator const imitator(data, rows, primary);
    Rules surrogates;
    for (int predictor = 0; predictor < data.NumPredictors(); ++predictor) {
        if (predictor == primary.GetPredictorIndex()) {
            continue;
        }
        if (Rule surrogate = imitator.Best(predictor)) {
            surrogates.push_back(std::move(surrogate));
        }
    }
    KeepBest(surrogates, AgreementStatistic, maxSurrogates);
    return surrogates;
}

}  // namespace cart
