#ifndef TREE800_TESTS_SUPPORT_PROBE_RULE_H
#define TREE800_TESTS_SUPPORT_PROBE_RULE_H

#include <tree/split_rule_imp.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tree_800::test {

/// A rule of a caller's own kind. It answers whatever position its table holds for the value,
/// counts its questions, and knows how many rules of its kind are alive.
class ProbeRule : public SplitRuleImp {
public:
    explicit ProbeRule(std::vector<int> table, int predictor = 0)
        : SplitRuleImp(predictor), answers(std::move(table)) {
        ++alive;
    }
    ProbeRule(ProbeRule const& other) : SplitRuleImp(other), answers(other.answers) { ++alive; }
    ProbeRule& operator=(ProbeRule const&) = delete;
    ~ProbeRule() override { --alive; }

    // SplitRuleImp
    int GetNumChildren() const override {
        return 1 + *std::max_element(answers.begin(), answers.end());
    }
    ValueSet* GetMappedValues(int /*child*/) const override { return nullptr; }
    SplitRuleImp* Clone() const override { return new ProbeRule(*this); }
    SplitRuleImp* EmptyClone() const override { return new ProbeRule({-1}, GetPredictorIndex()); }
    int Classify(double value) const override {
        ++asked;
        return answers[static_cast<std::size_t>(value)];
    }
    bool IsOrdered() const override { return false; }
    bool AddMappedValues(ValueSet const& /*values*/) override { return false; }

    static inline int alive = 0;
    mutable int asked = 0;
    std::vector<int> answers;
};

}  // namespace tree_800::test

#endif
