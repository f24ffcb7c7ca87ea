#ifndef TREE800_STOP_RULE_H
#define TREE800_STOP_RULE_H

#include <tree/export.h>

namespace tree_800 {

/// When a node is not split further. Created by the caller, cloned by the settings that hold it.
/// How an algorithm reads a maximum depth of 0 and percent sizes of 0.0 is for it to document.
/// Any number of threads may read one object at a time; a change needs it alone.
///
///     StopRuleImp rule;
///     rule.SetMinNodeSize(20);
///     rule.SetMinChildSize(7);
class TREE800_EXPORT StopRule {
public:
    virtual ~StopRule();

    /// A copy; the caller deletes it.
    [[nodiscard]] virtual StopRule* Clone() const = 0;

    /// Smallest improvement of the split criterion for which a node is split.
    virtual double GetMinImprovement() const = 0;
    /// Smallest number of cases in a node that may be split.
    virtual int GetMinNodeSize() const = 0;
    /// The same in percent of the sample, 0 to 100.
    virtual double GetMinNodePercentSize() const = 0;
    /// Smallest number of cases in a child.
    virtual int GetMinChildSize() const = 0;
    /// The same in percent of the sample, 0 to 100.
    virtual double GetMinChildPercentSize() const = 0;
    /// Deepest level to grow to. What level the root has is for the algorithm to document; to the
    /// example growers it is 0, and a node at this level is not split.
    virtual int GetMaxTreeDepth() const = 0;

    /// Any value is stored.
    virtual void SetMinImprovement(double improvement) = 0;
    /// A negative size is ignored, a percentage outside [0, 100] or NaN too: the old value stays.
    /// @{
    virtual void SetMinNodeSize(int cases) = 0;
    virtual void SetMinNodePercentSize(double percent) = 0;
    virtual void SetMinChildSize(int cases) = 0;
    virtual void SetMinChildPercentSize(double percent) = 0;
    /// @}
    /// Any value is stored.
    virtual void SetMaxTreeDepth(int depth) = 0;
};

/// The stop rule. Defaults: improvement 0.0001, node size 100, child size 50, percentages 0.0,
/// depth 0.
class TREE800_EXPORT StopRuleImp : public StopRule {
public:
    StopRuleImp();
    /// Stores all six as Init does.
    StopRuleImp(double minImprovement, int minNodeSize, double minNodePercentSize, int minChildSize,
                double minChildPercentSize, int maxTreeDepth);

    /// Stores all six as given, without the checks of the setters.
    void Init(double minImprovement, int minNodeSize, double minNodePercentSize, int minChildSize,
              double minChildPercentSize, int maxTreeDepth);

    // StopRule
    [[nodiscard]] StopRule* Clone() const override;
    double GetMinImprovement() const override;
    int GetMinNodeSize() const override;
    double GetMinNodePercentSize() const override;
    int GetMinChildSize() const override;
    double GetMinChildPercentSize() const override;
    int GetMaxTreeDepth() const override;
    void SetMinImprovement(double improvement) override;
    void SetMinNodeSize(int cases) override;
    void SetMinNodePercentSize(double percent) override;
    void SetMinChildSize(int cases) override;
    void SetMinChildPercentSize(double percent) override;
    void SetMaxTreeDepth(int depth) override;

    /// Equal sizes and depth, and percentages and improvement within 1e-12; NaN equals nothing.
    bool operator==(StopRuleImp const& other) const;

private:
    double minImprovement_;
    int minNodeSize_;
    double minNodePercentSize_;
    int minChildSize_;
    double minChildPercentSize_;
    int maxTreeDepth_;
};

}  // namespace tree_800

#endif
