#include "cart/cross_validation.h"

#include "cart/growth.h"
#include "cart/pruning.h"

#include <tree/validation_spec.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <tuple>

namespace cart {
namespace {

std::vector<double> GeometricMeans(std::vector<double> const& alphas) {
    std::vector<double> means;
    for (std::size_t i = 0; i + 1 < alphas.size(); ++i) {
        means.push_back(std::sqrt(alphas[i] * alphas[i + 1]));
    }
    means.push_back(std::numeric_limits<double>::infinity());
    return means;
}

}  // namespace

std::vector<Rows> DealIntoFolds(Dataset const& data, Rows const& rows,
                                tree_800::ValidationSpec const& validation) {
    std::mt19937 engine(static_cast<std::mt19937::result_type>(validation.GetRandomSeed()));
    std::vector<std::tuple<double, std::mt19937::result_type, std::size_t>> deck;
    for (std::size_t const row : rows) {
        deck.emplace_back(data.IsClassification() ? data.targets[row] : 0.0, engine(), row);
    }
    std::sort(deck.begin(), deck.end());
    std::vector<Rows> folds(static_cast<std::size_t>(validation.GetNumCVFolds()));
    for (std::size_t i = 0; i < deck.size(); ++i) {
        folds[i % folds.size()].push_back(std::get<2>(deck[i]));
    }
    return folds;
}

CrossValidator::CrossValidator(Dataset const& data, Rows const& training,
                               tree_800::CartSettings const& settings,
                               std::vector<double> const& alphas)
    : data_(data),
      settings_(settings),
      folds_(DealIntoFolds(data, training, *settings.GetValidationSpec())),
      alphas_(GeometricMeans(alphas)),
      losses_(alphas.size()) {}

void CrossValidator::JudgeNextFold() {
    SampleRows others;
    for (std::size_t i = 0; i < folds_.size(); ++i) {
        if (i != numJudged_) {
            others.training.insert(others.training.end(), folds_[i].begin(), folds_[i].end());
        }
    }
    Weighting const weighting(data_, others.training, settings_);
    Growth growth(data_, others, settings_, weighting);
    while (!growth.IsComplete()) {
        growth.Step();
    }
    PruningSequence const sequence(*growth.GetRoot(), data_, others.training, weighting);
    for (std::size_t const row : folds_[numJudged_]) {
        judgedRows_.push_back(row);
        for (std::size_t i = 0; i < alphas_.size(); ++i) {
            tree_800::Node const& end = sequence.FindEnd(data_.Row(row), alphas_[i]);
            losses_[i].push_back(Loss(data_, weighting, row, end));
        }
    }
    ++numJudged_;
}

std::vector<Risk> CrossValidator::GetRisks(Weighting const& weighting) const {
    std::vector<Risk> risks;
    for (std::vector<double> const& losses : losses_) {
        risks.push_back(Judge(data_, weighting, judgedRows_, losses));
    }
    return risks;
}

}  // namespace cart
