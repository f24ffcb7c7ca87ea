#ifndef TREE800_TREE_STATISTICS_H
#define TREE800_TREE_STATISTICS_H

#include <tree/data_sample.h>
#include <tree/export.h>
#include <tree/validation_spec.h>

#include <iosfwd>
#include <memory>
#include <vector>

namespace tree_800 {

class Node;
class TreeAlgorithm;

/// How good a grown tree is: its risk, the standard error of the risk, and for a classification
/// tree the misclassification matrix. Read by hosts. Any number of threads may read one object at a
/// time; a change needs it alone.
class TREE800_EXPORT TreeStatisticsIntf {
public:
    virtual ~TreeStatisticsIntf();

    /// Weighted cases of the observed class in the leaves that predict the predicted class, both in
    /// [0, GetNumClasses()).
    virtual double GetMisclassificationCount(int predicted, int observed) const = 0;
    /// Risk as the algorithm judged it: the expected cost of misclassification, or the mean squared
    /// error.
    virtual double GetRisk() const = 0;
    /// Standard error of the risk.
    virtual double GetStdError() const = 0;
    /// True for a classification tree.
    virtual bool IsCls() const = 0;
    /// Number of target classes; 0 for a regression tree that was gathered from an algorithm.
    virtual int GetNumClasses() const = 0;
    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual TreeStatisticsIntf* Clone() const = 0;
};

/// The tree statistics, gathered from a grown tree.
///
///     TreeStatisticsImp statistics(algorithm, risk, stdError, NoValidation);
///     std::cout << statistics;
class TREE800_EXPORT TreeStatisticsImp : public TreeStatisticsIntf {
public:
    /// A regression tree without classes, risk 0.0, standard error 0.0.
    TreeStatisticsImp();
    /// Gathers as Initialize does.
    TreeStatisticsImp(TreeAlgorithm const& algorithm, double risk, double stdError,
                      ValidationType validation);
    ~TreeStatisticsImp() override;

    // TreeStatisticsIntf
    /// The system-missing value for a regression tree, and where the matrix has no such cell.
    double GetMisclassificationCount(int predicted, int observed) const override;
    double GetRisk() const override;
    double GetStdError() const override;
    bool IsCls() const override;
    int GetNumClasses() const override;
    [[nodiscard]] TreeStatisticsIntf* Clone() const override;

    /// Stores risk and standard error and, for a classification tree, takes the number of classes
    /// from the root (0 when the root or its training information is missing) and builds the
    /// matrix: from the test sample under TestSampleValidation, from the training sample otherwise.
    /// Under CrossValidation it builds no matrix, deliberately; what matrix there was stays, as it
    /// does for a regression tree.
    void Initialize(TreeAlgorithm const& algorithm, double risk, double stdError,
                    ValidationType validation);

    /// Stored unchecked; nothing else changes. @{
    void SetRisk(double risk);
    void SetStdError(double stdError);
    void SetIsCls(bool isCls);
    /// @}
    /// Stores n and starts a matrix of n x n zeros.
    void SetNumClasses(int n);
    /// Sets one cell; both indices in [0, rows of the matrix).
    void SetMisclassificationCount(int predicted, int observed, double count);
    /// Starts a matrix of n x n zeros, an empty one for n below 1. The number of classes stays.
    void InitMatrix(int n);
    /// Adds the class counts of every leaf below the node to the row of the class that it predicts.
    /// A leaf without information for the sample, or that predicts a class outside the matrix, adds
    /// nothing; one that knows fewer classes adds those, and classes from GetNumClasses() on are
    /// not counted. The node is borrowed; null adds nothing. Does not recurse.
    void AddMisclassificationInfo(Node const* node, DataSample sample);

private:
    std::vector<std::vector<double>> matrix_;  // [predicted][observed]
    double risk_ = 0.0;
    double stdError_ = 0.0;
    int numClasses_ = 0;
    bool isCls_ = false;
};

/// Writes the text report, every number as the stream formats it. Each matrix row is preceded, not
/// followed, by its end of line, so the last row runs into the risk line:
///
///     Classification tree.
///     Number of target classes = 2
///
///     40  3
///     5  52  Risk estimate 0.08
///     Standard error of risk estimate 0.03
TREE800_EXPORT std::ostream& operator<<(std::ostream& stream, TreeStatisticsImp const& statistics);

/// A handle that owns a copy of tree statistics, or holds nothing. Copies are made by assignment.
/// An empty handle answers false, 0 and the system-missing value. The text report is written from a
/// TreeStatisticsImp. Any number of threads may read one handle at a time; a change needs it alone.
///
///     TreeStatistics statistics;
///     if (algorithm.GetStatistics(statistics)) {
///         std::cout << statistics.GetRisk();
///     }
class TREE800_EXPORT TreeStatistics {
public:
    /// Holds nothing.
    TreeStatistics();
    TreeStatistics(TreeStatistics const&) = delete;
    virtual ~TreeStatistics();

    /// Holds a clone of what the other holds, or nothing.
    TreeStatistics& operator=(TreeStatistics const& other);
    /// Holds a clone of the statistics.
    TreeStatistics& operator=(TreeStatisticsIntf const& statistics);

    /// The held object's answers; see TreeStatisticsIntf. @{
    bool IsCls() const;
    int GetNumClasses() const;
    double GetRisk() const;
    double GetStdError() const;
    double GetMisclassificationCount(int predicted, int observed) const;
    /// @}

private:
    std::unique_ptr<TreeStatisticsIntf> held_;
};

}  // namespace tree_800

#endif
