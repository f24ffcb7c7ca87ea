#include "cart/risk.h"

#include <tree/node.h>

#include <cmath>

namespace cart {
namespace {

/// Rows whose losses vary around a mean of their own.
struct Stratum {
    double share = 1.0;  // of the risk
    double numRows = 0.0;
    double sum = 0.0;
    double squares = 0.0;  // of the deviations from the mean

    double Mean() const { return sum / numRows; }
};

std::vector<Stratum> MakeStrata(Dataset const& data, Weighting const& weighting) {
    std::vector<Stratum> strata(weighting.HasGivenPriors() ? data.target.categories.size() : 1);
    for (std::size_t i = 0; weighting.HasGivenPriors() && i < strata.size(); ++i) {
        strata[i].share = weighting.Prior(static_cast<int>(i));
    }
    return strata;
}

}  // namespace

double Loss(Dataset const& data, Weighting const& weighting, std::size_t row,
            tree_800::Node const& node) {
    double const target = data.targets[row];
    double const predicted = node.GetAssignment();
    if (data.IsClassification()) {
        return weighting.Cost(static_cast<int>(predicted), static_cast<int>(target));
    }
    return (predicted - target) * (predicted - target);
}

Risk Judge(Dataset const& data, Weighting const& weighting, Rows const& rows,
           std::vector<double> const& losses) {
    std::vector<Stratum> strata = MakeStrata(data, weighting);
    auto const stratumOf = [&](std::size_t i) -> Stratum& {
        return strata.size() == 1 ? strata[0]
                                  : strata[static_cast<std::size_t>(data.targets[rows[i]])];
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Stratum& stratum = stratumOf(i);
        stratum.numRows += 1.0;
        stratum.sum += losses[i];
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Stratum& stratum = stratumOf(i);
        stratum.squares += (losses[i] - stratum.Mean()) * (losses[i] - stratum.Mean());
    }
    Risk risk{0.0, 0.0};
    double variance = 0.0;
    for (Stratum const& stratum : strata) {
        if (stratum.numRows > 0.0) {
            risk.value += stratum.share * stratum.Mean();
            variance += stratum.share * stratum.share * stratum.squares /
                        (stratum.numRows * stratum.numRows);
        }
    }
    risk.stdError = std::sqrt(variance);
    return risk;
}

}  // namespace cart
