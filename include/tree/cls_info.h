#ifndef TREE800_CLS_INFO_H
#define TREE800_CLS_INFO_H

#include <tree/array.h>
#include <tree/export.h>

namespace tree_800 {

/// What a host reads of one classification node and sample. Classes are numbered from 0. Obtained
/// from Node::GetClsInfo and owned by the node. Any number of threads may read one object at a
/// time; a change needs it alone.
class TREE800_EXPORT ClsInfo {
public:
    virtual ~ClsInfo();

    /// The predicted class; for the test sample normally the training sample's.
    virtual int GetPrediction() const = 0;
    /// Weighted cases of class i, i in [0, GetNumClasses()).
    virtual double GetClassCount(int i) const = 0;
    /// Share of class i in the weighted cases: a fraction 0 to 1, not percent; 0.0 when the node
    /// has no cases. i as for GetClassCount.
    virtual double GetClassPercent(int i) const = 0;
    /// The grower's probability of class i; -1.0 when none is stored for i.
    virtual double GetClassProbability(int i) const = 0;
    /// As many as the grower has set, 0 for none.
    virtual int GetNumClasses() const = 0;
};

/// The classification information of a node, filled by a grower and handed to
/// NodeImp::SetClsInfo, which takes ownership.
///
///     auto info = std::make_unique<ClsInfoImp>();
///     info->SetNumClasses(2);
///     info->SetClassCount(1, 40.0);
class TREE800_EXPORT ClsInfoImp : public ClsInfo {
public:
    /// No classes, prediction 0, unweighted count 0.0, percent size the system-missing value.
    ClsInfoImp();
    /// Copies are made by Clone or by assignment, which is not quite a copy.
    ClsInfoImp(ClsInfoImp const&) = delete;
    /// Copies everything, except that a class for which the other stores no probability gets -1.0
    /// here: the copy of an object with fewer probabilities than classes does not equal its source.
    ClsInfoImp& operator=(ClsInfoImp const& other);
    ~ClsInfoImp() override;

    /// A new object assigned from this one; the caller deletes it.
    [[nodiscard]] ClsInfoImp* Clone() const;

    // ClsInfo
    int GetPrediction() const override;
    double GetClassCount(int i) const override;
    double GetClassPercent(int i) const override;
    double GetClassProbability(int i) const override;
    int GetNumClasses() const override;

    /// The node's size in percent, as the grower stored it.
    virtual double GetPercentSize() const;
    /// Number of cases, each counted once.
    virtual double GetUnweightedCount() const;
    /// Weighted cases of the node: the sum of the class counts, in class order.
    virtual double GetCount() const;
    /// Stored unchecked. @{
    virtual void SetPrediction(int prediction);
    virtual void SetUnweightedCount(double count);
    virtual void SetPercentSize(double percent);
    /// @}

    /// Exact comparison of every stored value; NaN equals nothing.
    bool operator==(ClsInfoImp const& other) const;

    /// Sizes counts and probabilities to n classes (below 0 counts as 0); new ones are 0.0.
    void SetNumClasses(int n);
    /// Sets the weighted cases of class i; i in [0, most classes that there ever were). A class
    /// beyond the present ones comes back into use, for counts alone.
    void SetClassCount(int i, double count);
    /// Sets the probability of class i; i as above.
    void SetClassProbability(int i, double probability);

private:
    double unweightedCount_ = 0.0;
    double percentSize_;
    TArray<double> counts_;
    TArray<double> probabilities_;
    int prediction_ = 0;
};

}  // namespace tree_800

#endif
