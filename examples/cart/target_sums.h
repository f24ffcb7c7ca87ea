#ifndef TREE800_EXAMPLES_CART_TARGET_SUMS_H
#define TREE800_EXAMPLES_CART_TARGET_SUMS_H

#include <cstddef>
#include <vector>

namespace cart {

/// The targets of a group of cases, summed up as far as choosing a split needs them.
class TargetSums {
public:
    /// What a case of each class weighs, none for a regression target; borrowed.
    explicit TargetSums(std::vector<double> const& classWeights)
        : classWeights_(&classWeights), classSums_(classWeights.size()) {}

    void Add(double target) { Count(target, 1.0); }
    void Remove(double target) { Count(target, -1.0); }
    void Add(TargetSums const& group) {
        cases_ += group.cases_;
        weight_ += group.weight_;
        sum_ += group.sum_;
        for (std::size_t i = 0; i < classSums_.size(); ++i) {
            classSums_[i] += group.classSums_[i];
        }
    }

    /// Both count every case once.
    double NumCases() const { return cases_; }
    double Mean() const { return sum_ / cases_; }

    /// What keeping two groups apart gains: the weight x Gini index (classification) or the sum of
    /// squared deviations from the mean (regression) of both together, less that of either alone.
    /// Computed from the distance between the groups, which loses no digits to a large mean. Not a
    /// number where a group weighs nothing.
    friend double Improvement(TargetSums const& a, TargetSums const& b) {
        auto const square = [](double x) { return x * x; };
        double distance = a.classSums_.empty() ? square(a.Mean() - b.Mean()) : 0.0;
        for (std::size_t i = 0; i < a.classSums_.size(); ++i) {
            distance += square(a.classSums_[i] / a.weight_ - b.classSums_[i] / b.weight_);
        }
        return a.weight_ * b.weight_ / (a.weight_ + b.weight_) * distance;
    }

private:
    void Count(double target, double cases) {
        cases_ += cases;
        sum_ += cases * target;
        double weight = cases;
        if (!classSums_.empty()) {
            auto const code = static_cast<std::size_t>(target);
            weight *= (*classWeights_)[code];
            classSums_[code] += weight;
        }
        weight_ += weight;
    }

    std::vector<double> const* classWeights_;
    std::vector<double> classSums_;  // in weight; none for a regression target
    double cases_ = 0.0;
    double weight_ = 0.0;
    double sum_ = 0.0;
};

}  // namespace cart

#endif
