#include "cart/weighting.h"

#include <numeric>
#include <stdexcept>

namespace cart {
namespace {

using tree_800::CostImp;
using tree_800::PriorsImp;

double Sum(std::vector<double> const& values) {
    return std::accumulate(values.begin(), values.end(), 0.0);
}

std::vector<double> CountClasses(Dataset const& data, Rows const& rows) {
    std::vector<double> counts(data.target.categories.size());
    for (std::size_t const row : rows) {
        counts[static_cast<std::size_t>(data.targets[row])] += 1.0;
    }
    return counts;
}

void FillCosts(CostImp& costs, tree_800::Cost const& given, int numClasses) {
    costs.SetDefault(CostImp::WorkingMatrix, numClasses);
    for (int i = 0; i < given.GetNumClasses(); ++i) {
        for (int j = 0; j < given.GetNumClasses(); ++j) {
            costs.SetImp(i, j, given.Get(i, j));
        }
    }
}

/// The library holds values for the user's priors alone.
void FillPriors(PriorsImp& priors, tree_800::Priors const& given,
                std::vector<double> const& counts) {
    std::vector<double> values = counts;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (given.GetType() == tree_800::EqualPriors) {
            values[i] = 1.0;
        } else if (given.GetType() == tree_800::UserPriors) {
            values[i] = given.Get(static_cast<int>(i));
        }
    }
    double const total = Sum(values);
    if (!(total > 0.0)) {
        throw std::invalid_argument("no class has a prior above 0");
    }
    priors.Resize(static_cast<int>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) {
        priors.Set(static_cast<int>(i), values[i] / total, PriorsImp::GivenPriors);
    }
    priors.AlterValues(given.HasAlteredValues());
}

std::vector<double> CaseWeights(PriorsImp const& priors, PriorsImp::PriorVector vector,
                                std::vector<double> const& counts) {
    double const numCases = Sum(counts);
    std::vector<double> weights;
    for (double const count : counts) {
        double const prior = priors.Get(static_cast<int>(weights.size()), vector);
        weights.push_back(count > 0.0 ? prior * numCases / count : 0.0);
    }
    return weights;
}

}  // namespace

Weighting::Weighting(Dataset const& data, Rows const& training,
                     tree_800::CartSettings const& settings) {
    auto const* const classification = dynamic_cast<tree_800::CCartSettings const*>(&settings);
    if (classification == nullptr) {
        return;
    }
    tree_800::Priors const& given = *classification->GetPriors();
    std::vector<double> const counts = CountClasses(data, training);
    std::vector<double> const ones(counts.size(), 1.0);
    hasGivenPriors_ = given.GetType() != tree_800::PriorsFromData;
    FillCosts(costs_, *classification->GetCost(), data.target.NumCategories());
    FillPriors(priors_, given, counts);
    if (!priors_.ComputeAltered(costs_)) {
        throw std::invalid_argument("the costs leave no class a prior above 0");
    }
    // Exactly 1 where it should be: rounding would decide between equally good splits.
    bool const isAltered = given.HasAlteredValues() && !costs_.IsDefault();
    inNode_ = hasGivenPriors_ ? CaseWeights(priors_, PriorsImp::GivenPriors, counts) : ones;
    inCriterion_ = isAltered ? CaseWeights(priors_, PriorsImp::AlteredPriors, counts) : inNode_;
}

}  // namespace cart
