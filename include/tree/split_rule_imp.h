#ifndef TREE800_SPLIT_RULE_IMP_H
#define TREE800_SPLIT_RULE_IMP_H

#include <tree/export.h>
#include <tree/split_rule_flags.h>

#include <vector>

namespace tree_800 {

class ValueSet;

/// The base of every split rule: says, for one predictor, to which child of a node a value goes.
///
/// A rule is a function from a value to a child position: an int, 0 for the first child, -1 for
/// "this rule cannot place the value". The concrete rules are OSplitRule (cut points) and
/// NSplitRule (category codes); a grower may add kinds of its own. The base holds what all have:
/// the predictor index, up to four statistics, property bits, the child that receives missing
/// values, and the dumb child, where the node sends what no rule can place.
///
/// Created by a grower and handed to a node, which deletes it. Any number of threads may read one
/// rule at a time; a change needs it alone.
///
///     auto rule = std::make_unique<OSplitRule>(systemMissingValue(), 3);
///     rule->SetCutPoint(206.5);   // child 0 up to 206.5, child 1 above
///     rule->SetDumbRule(1, 0.6);  // the second child is the biggest
class TREE800_EXPORT SplitRuleImp {
public:
    /// A rule on the predictor at predictorIndex (0 or more) of an observation: no statistics (each
    /// slot the system-missing value), no missing-value child (-1), no dumb child (-1, probability
    /// -1.0), property flags SplitRuleCreatedDefault.
    explicit SplitRuleImp(int predictorIndex);
    virtual ~SplitRuleImp();

    /// One more than the highest child position that the rule can answer; 0 for an empty rule.
    virtual int GetNumChildren() const = 0;

    /// The values that go to the child, as a new object that the caller deletes, or null.
    [[nodiscard]] virtual ValueSet* GetMappedValues(int child) const = 0;

    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual SplitRuleImp* Clone() const = 0;

    /// A new rule of the same kind on the same predictor without mappings; the caller deletes it.
    [[nodiscard]] virtual SplitRuleImp* EmptyClone() const = 0;

    /// Takes over the other rule's mappings. The base takes the missing-value child alone and
    /// answers true; a concrete rule answers false, unchanged, to a rule of another kind.
    virtual bool CopyMappings(SplitRuleImp const& other);

    /// The child position of one predictor value, the missing-value child included; negative when
    /// the rule cannot place the value.
    virtual int Classify(double value) const = 0;

    /// 0: same predictor and mappings. 1: same predictor, different mappings. 2: different
    /// predictor (looked at first). 3: different kind of rule or different missing-value code. The
    /// base looks at the predictor and the missing-value child alone.
    virtual int Compare(SplitRuleImp const& other) const;

    /// True for a rule on an ordered predictor, false on a nominal one.
    virtual bool IsOrdered() const = 0;

    /// Renumbers the children: newPos[i] is the new position of child i. The base renumbers the
    /// missing-value child and the dumb child, leaving negative ones alone, and sets
    /// SplitRuleMappingsReordered. newPos must cover every position in use.
    virtual void ReorderMappings(std::vector<int> const& newPos);

    /// Sends a set of values to a child; false, with the rule unchanged, when it cannot.
    virtual bool AddMappedValues(ValueSet const& values) = 0;

    /// The index in an observation of the value that the rule asks for.
    int GetPredictorIndex() const noexcept { return predictorIndex_; }

    /// Whether any bit of the flag is set.
    bool HasProperty(SplitRulePropertyFlag flag) const noexcept;
    /// Sets the bits of the flag. A flag with a creation bit (1 or 2) clears both of them first; no
    /// other bit is ever cleared.
    void SetProperty(SplitRulePropertyFlag flag) noexcept;
    /// All property bits, despite the name.
    int GetCreationFlags() const noexcept { return propertyFlags_; }

    /// Whether every bit of the flag is set; true for 0.
    bool HasStatistic(StatisticFlag flag) const noexcept;
    /// Marks the statistic as present and stores the value in its slot, if it has one. A combined
    /// flag of which only a part is present is refused silently.
    void SetStatistic(StatisticFlag flag, double value) noexcept;
    /// Writes the statistic to *out and answers true when it is present and has a slot; otherwise
    /// false, *out untouched.
    bool GetStatistic(StatisticFlag flag, double* out) const noexcept;
    /// The statistic, or the system-missing value.
    double GetStatistic(StatisticFlag flag) const;
    /// The slot of the flag's highest bit among the low seven, 0 to 3; -1 when it has none.
    static int GetFlagPosition(StatisticFlag flag) noexcept;

    /// Sends missing values to a new child after the existing ones (newChild), or to the last
    /// existing child: -1 when there is none. The missing-value child counts as a child from then
    /// on: call this once, after the last mapping.
    void AddMissingValueMapping(bool newChild);
    /// The child that receives missing values; -1 for none.
    int GetMissingValueMapping() const noexcept { return missingValueMapping_; }

    /// Stores the child for observations that no rule places, normally the biggest, and the share
    /// of the node's cases in it, normally of those that this rule places; both unchecked. Of a
    /// node's rules the primary split's alone is read.
    void SetDumbRule(int pos, double prob) noexcept;
    /// The child for what no rule places; -1 for none.
    int GetDumbChildPos() const noexcept { return dumbChildPos_; }
    /// The share stored with it, 0 to 1; -1.0 while none is stored.
    double GetDumbChildProb() const noexcept { return dumbChildProb_; }

    /// Compares the fields of the base exactly (NaN equals nothing). Cut points, category mappings
    /// and the kind of rule do not take part: two rules that split differently can be equal here.
    /// Use Compare for the mappings.
    bool operator==(SplitRuleImp const& other) const noexcept;

protected:
    /// For Clone of a concrete rule; also the predictor is copied. @{
    SplitRuleImp(SplitRuleImp const&) = default;
    SplitRuleImp& operator=(SplitRuleImp const&) = default;
    /// @}

    /// newPos[child], for a child that newPos covers.
    static int NewPosition(std::vector<int> const& newPos, int child);

private:
    static constexpr int NumStatistics = 4;

    int predictorIndex_;
    double statistics_[NumStatistics];
    double dumbChildProb_ = -1.0;
    int dumbChildPos_ = -1;
    int statisticFlags_ = 0;
    int propertyFlags_ = SplitRuleCreatedDefault;
    int missingValueMapping_ = -1;
};

}  // namespace tree_800

#endif
