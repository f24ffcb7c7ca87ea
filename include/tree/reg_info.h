#ifndef TREE800_REG_INFO_H
#define TREE800_REG_INFO_H

#include <tree/export.h>

#include <vector>

namespace tree_800 {

/// What a host reads of one regression node and sample. Obtained from Node::GetRegInfo and owned by
/// the node. Any number of threads may read one object at a time; a change needs it alone.
class TREE800_EXPORT RegInfo {
public:
    virtual ~RegInfo() = 0;

    /// Mean of the target over the weighted cases; 0.0 until the grower sets it.
    virtual double GetMean() const = 0;
    /// Smallest target value; positive infinity until the grower sets it.
    virtual double GetMinimum() const = 0;
    /// Largest target value; negative infinity until the grower sets it.
    virtual double GetMaximum() const = 0;
    /// Standard deviation of the target; 0.0 when none is stored.
    virtual double GetStdDev() const = 0;
    /// The predicted value; the mean when none is stored. For the test sample a grower normally
    /// stores the training sample's, which is what the node predicts.
    virtual double GetPrediction() const = 0;

    /// The histogram of the target is made of this many slices of equal width from minimum to
    /// maximum; 0 for none.
    virtual int GetNumBins() const = 0;
    /// Weighted cases in slice i, i in [0, GetNumBins()).
    virtual double GetBinSize(int i) const = 0;
    /// Target values between which slice i lies, i in [0, GetNumBins()). @{
    virtual double GetBinLeftEndPoint(int i) const = 0;
    virtual double GetBinRightEndPoint(int i) const = 0;
    /// @}
};

/// The regression information of a node, filled by a grower and handed to NodeImp::SetRegInfo,
/// which takes ownership. Standard deviation, prediction and unweighted count are optional and take
/// room only when they are stored.
///
///     auto info = std::make_unique<RegInfoImp>();
///     info->SetMean(4200.0);
///     info->SetExtendedStatistic(RegInfoImp::StoreStdDev, 380.0);
class TREE800_EXPORT RegInfoImp : public RegInfo {
public:
    /// The optional statistics, single bits in 1 to 128; those above 4 are free for a grower.
    enum StatisticStorageFlags : int {
        StoreStdDev = 1,          ///< read by GetStdDev
        StorePrediction = 2,      ///< read by GetPrediction
        StoreUnweightedCount = 4  ///< read by GetUnweightedCount
    };

    /// A cleared object; see Clear.
    RegInfoImp();
    /// Copies as CopyData does. @{
    RegInfoImp(RegInfoImp const& other);
    RegInfoImp& operator=(RegInfoImp const& other);
    /// @}
    ~RegInfoImp() override;

    // RegInfo
    double GetMean() const override;
    double GetMinimum() const override;
    double GetMaximum() const override;
    double GetStdDev() const override;
    double GetPrediction() const override;
    int GetNumBins() const override;
    double GetBinSize(int i) const override;
    double GetBinLeftEndPoint(int i) const override;
    double GetBinRightEndPoint(int i) const override;

    /// Weighted cases.
    virtual double GetCount() const;
    /// Number of cases, each counted once; the weighted count when none is stored.
    virtual double GetUnweightedCount() const;
    /// Stored unchecked.
    virtual void SetCount(double count);

    /// Takes over everything the other holds. The copy always stores a standard deviation, 0.0 when
    /// the other stores none, and still equals its source.
    void CopyData(RegInfoImp const& other);

    /// Compares what the getters answer, exactly; NaN equals nothing. Which statistics are stored
    /// does not matter.
    bool operator==(RegInfoImp const& other) const;

    /// Count and mean 0.0, minimum positive and maximum negative infinity, no bins, nothing stored.
    void Clear();

    /// Stored unchecked. @{
    void SetMean(double mean);
    void SetMinimum(double minimum);
    void SetMaximum(double maximum);
    /// @}
    /// Keeps the first n bins and fills up with 0.0; below 0 counts as 0.
    void SetNumBins(int n);
    /// i in [0, GetNumBins()); the size is stored unchecked.
    void SetBinSize(int i, double size);

    /// Index of a stored statistic among the stored ones, in ascending order of bits; -1 when it is
    /// not stored or the flag is no single bit.
    int GetExtendedStatisticPos(StatisticStorageFlags flag) const;
    /// Index at which the statistic would be inserted; -1 when it is stored already or the flag is
    /// no single bit.
    int GetExtendedStatisticInsertionPos(StatisticStorageFlags flag) const;
    /// The statistic, which must be stored.
    double GetExtendedStatistic(StatisticStorageFlags flag) const;
    /// Writes the statistic to *out and answers true when it is stored; otherwise false, *out
    /// untouched.
    bool GetExtendedStatistic(StatisticStorageFlags flag, double* out) const;
    /// Stores or overwrites a statistic; the flag must be a single bit in 1 to 128.
    void SetExtendedStatistic(StatisticStorageFlags flag, double value);

private:
    double ExtendedStatisticOr(StatisticStorageFlags flag, double fallback) const;

    double count_;
    double mean_;
    double maximum_;
    double minimum_;
    std::vector<double> bins_;
    std::vector<double> extendedStatistics_;  // one per bit of storedFlags_, in ascending order
    int storedFlags_;
};

}  // namespace tree_800

#endif
