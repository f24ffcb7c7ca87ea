#ifndef TREE800_EXAMPLES_CART_TARGET_SUMS_H
#define TREE800_EXAMPLES_CART_TARGET_SUMS_H

#include "cart/dataset.h"

#include <cstddef>
#include <vector>

namespace cart {

/// The targets of a group of cases, summed up as far as choosing a split needs them.
class TargetSums {
public:
    explicit TargetSums(Dataset const& data)
        : classCounts_(data.IsClassification() ? data.target.categories.size() : 0) {}

    void Add(double target) { Count(target, 1.0); }
    void Remove(double target) { Count(target, -1.0); }
    void Add(TargetSums const& group) {
        cases_ += group.cases_;
        sum_ += group.sum_;
        for (std::size_t i = 0; i < classCounts_.size(); ++i) {
            classCounts_[i] += group.classCounts_[i];
        }
    }

    double NumCases() const { return cases_; }
    double Mean() const { return sum_ / cases_; }

    /// What keeping two groups apart gains: the cases x Gini index (classification) or the sum of
    /// squared deviations from the mean (regression) of both together, less that of either alone.
    /// Computed from the distance between the groups, which loses no digits to a large mean.
    friend double Improvement(TargetSums const& a, TargetSums const& b) {
        auto const square = [](double x) { return x * x; };
        double distance = a.classCounts_.empty() ? square(a.Mean() - b.Mean()) : 0.0;
        for (std::size_t i = 0; i < a.classCounts_.size(); ++i) {
            distance += square(a.classCounts_[i] / a.cases_ - b.classCounts_[i] / b.cases_);
        }
        return a.cases_ * b.cases_ / (a.cases_ + b.cases_) * distance;
    }

private:
    void Count(double target, double cases) {
        cases_ += cases;
        sum_ += cases * target;
        if (!classCounts_.empty()) {
            classCounts_[static_cast<std::size_t>(target)] += cases;
        }
    }

    std::vector<double> classCounts_;  // none for a regression target
    double cases_ = 0.0;
    double sum_ = 0.0;
};

}  // namespace cart

#endif
