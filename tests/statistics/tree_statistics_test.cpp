#include "support/tree_builder.h"

#include <tree/tree_algorithm.h>
#include <tree/tree_statistics.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iomanip>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace tree_800 {
namespace {

using Matrix = std::vector<std::vector<double>>;

// A finished run. Statistics ask it for its root and its kind alone.
class FinishedAlgorithm : public TreeAlgorithm {
public:
    explicit FinishedAlgorithm(std::unique_ptr<NodeImp> root) : root_(std::move(root)) {}

    // TreeAlgorithmBase
    Node const* GetRoot() const override { return root_.get(); }
    Node* ReleaseRoot() override { return root_.release(); }
    bool IsClassification() const override { return root_->IsClassificationNode(); }
    int GetNumClasses() const override { return -1; }
    VariableSettings const* GetTarget() const override { return nullptr; }
    int GetNumPredictors() const override { return -1; }
    VariableSettings const* GetPredictor(int /*index*/) const override { return nullptr; }

    // TreeAlgorithm
    bool Run() override { return true; }
    bool Step() override { return false; }
    void Reset() override {}
    double GetProgress() const override { return 1.0; }
    void Cancel() override {}
    bool IsCancelled() const override { return false; }
    AlgSettings const* GetSettings() const override { return nullptr; }
    int GetNumNodes() const override { return -1; }
    int GetNumLeaves() const override { return -1; }
    double GetRisk(DataSample /*sample*/) const override { return -1.0; }
    double GetRiskStdError(DataSample /*sample*/) const override { return -1.0; }
    bool GetStatistics(TreeStatistics& /*out*/) const override { return false; }
    GainsIntf* ComputeGains(GainsSettings const& /*settings*/) const override { return nullptr; }

private:
    std::unique_ptr<NodeImp> root_;
};

// Three classes. The test sample is predicted apart, one leaf has none, and what inner nodes hold
// does not count.
FinishedAlgorithm ClassificationRun() {
    auto left = test::Leaf(0, {4.0, 1.0, 0.0});
    left->SetClsInfo(test::Counts(1, {1.0, 0.0, 2.0}).release(), TestSample);
    auto middle = test::Leaf(2, {0.0, 1.5, 5.0});
    middle->SetClsInfo(test::Counts(2, {0.0, 3.0, 1.0}).release(), TestSample);
    auto inner = test::Split(test::Cut(1, 2.0), std::move(middle), test::Leaf(0, {2.0, 0.0, 1.0}));
    inner->SetClsInfo(test::Counts(1, {90.0, 90.0, 90.0}).release(), TrainingSample);
    auto root = test::Split(test::Cut(0, 3.0), std::move(left), std::move(inner));
    root->SetClsInfo(test::Counts(0, {90.0, 90.0, 90.0}).release(), TrainingSample);
    return FinishedAlgorithm(std::move(root));
}

FinishedAlgorithm RegressionRun() {
    auto root = std::make_unique<NodeImp>();
    root->SetClassificationNode(false);
    return FinishedAlgorithm(std::move(root));
}

Matrix Counts(TreeStatisticsIntf const& statistics) {
    Matrix counts;
    for (int i = 0; i < statistics.GetNumClasses(); ++i) {
        counts.emplace_back();
        for (int j = 0; j < statistics.GetNumClasses(); ++j) {
            counts.back().push_back(statistics.GetMisclassificationCount(i, j));
        }
    }
    return counts;
}

TEST(TreeStatisticsTest, CountsTheLeavesOfTheSampleThatValidates) {
    Matrix const training{{6.0, 1.0, 1.0}, {0.0, 0.0, 0.0}, {0.0, 1.5, 5.0}};
    Matrix const none(3, std::vector<double>(3, systemMissingValue()));
    for (auto const& [validation, expected] :
         {std::pair(0, training),
          {1, {{0.0, 0.0, 0.0}, {1.0, 0.0, 2.0}, {0.0, 3.0, 1.0}}},
          {2, none},
          {7, training}}) {
        SCOPED_TRACE(validation);
        TreeStatisticsImp const statistics(ClassificationRun(), 0.25, 0.125,
                                           static_cast<ValidationType>(validation));
        EXPECT_TRUE(statistics.IsCls());
        EXPECT_EQ(statistics.GetRisk(), 0.25);
        EXPECT_EQ(statistics.GetStdError(), 0.125);
        EXPECT_EQ(Counts(statistics), expected);
    }
}

TEST(TreeStatisticsTest, WhatIsGatheredReplacesTheMatrixOnlyWhenANewOneIsBuilt) {
    TreeStatisticsImp statistics(ClassificationRun(), 0.0, 0.0, TestSampleValidation);
    statistics.Initialize(ClassificationRun(), 0.0, 0.0, NoValidation);
    EXPECT_EQ(Counts(statistics)[0], (std::vector<double>{6.0, 1.0, 1.0}));
    statistics.Initialize(ClassificationRun(), 0.0, 0.0, CrossValidation);
    EXPECT_EQ(statistics.GetMisclassificationCount(2, 1), 1.5);
    statistics.Initialize(RegressionRun(), 0.0, 0.0, NoValidation);
    EXPECT_FALSE(statistics.IsCls());
    EXPECT_EQ(statistics.GetNumClasses(), 0);
    EXPECT_EQ(statistics.GetMisclassificationCount(2, 1), systemMissingValue());
    statistics.SetIsCls(true);
    EXPECT_EQ(statistics.GetMisclassificationCount(2, 1), 1.5);
    statistics.SetNumClasses(2);
    EXPECT_EQ(Counts(statistics), Matrix(2, std::vector<double>(2, 0.0)));
}

TEST(TreeStatisticsTest, LeavesAddUpInTheRowTheyPredictAndNowhereElse) {
    TreeStatisticsImp statistics;
    statistics.SetNumClasses(2);
    EXPECT_EQ(statistics.GetMisclassificationCount(0, 0), systemMissingValue()) << "regression";
    statistics.SetIsCls(true);
    for (auto const& [prediction, counts] : {std::pair(1, std::vector{2.0, 7.0}),
                                             {1, {0.5, 1.0}},
                                             {0, {1.0, 3.0, 9.0}},
                                             {2, {5.0, 5.0, 5.0}},
                                             {-1, {5.0, 5.0}}}) {
        auto const leaf = test::Leaf(prediction, counts);
        statistics.AddMisclassificationInfo(leaf.get(), TrainingSample);
        statistics.AddMisclassificationInfo(leaf.get(), TestSample);
    }
    EXPECT_EQ(Counts(statistics), (Matrix{{1.0, 3.0}, {2.5, 8.0}}));
    for (int const index : {-1, 2, INT_MIN, INT_MAX}) {
        EXPECT_EQ(statistics.GetMisclassificationCount(index, 0), systemMissingValue()) << index;
        EXPECT_EQ(statistics.GetMisclassificationCount(0, index), systemMissingValue()) << index;
    }
}

class FlushCounter : public std::stringbuf {
public:
    int flushes = 0;

protected:
    int sync() override { return ++flushes, 0; }
};

// Numbers with three digits, as the stream formats them.
std::string Report(TreeStatisticsImp const& statistics) {
    FlushCounter buffer;
    std::ostream stream(&buffer);
    stream << std::setprecision(3) << statistics;
    std::string text = buffer.str();
    EXPECT_EQ(buffer.flushes, std::count(text.begin(), text.end(), '\n'));
    return text;
}

TEST(TreeStatisticsTest, Report) {
    class Reassessed : public TreeStatisticsImp {
    public:
        double GetRisk() const override { return 0.5; }
    } statistics;
    statistics.SetRisk(0.08);
    statistics.SetStdError(0.03125);
    std::string const regression = "Regression tree.\n";
    std::string const classification = "Classification tree.\nNumber of target classes = ";
    std::string const risk = "Risk estimate 0.5\nStandard error of risk estimate 0.0312\n";
    EXPECT_EQ(Report(statistics), regression + risk);
    statistics.SetIsCls(true);
    EXPECT_EQ(Report(statistics), classification + "0\n" + risk);
    statistics.SetNumClasses(2);
    statistics.SetMisclassificationCount(0, 0, 40.0);
    statistics.SetMisclassificationCount(0, 1, 3.0);
    statistics.SetMisclassificationCount(1, 1, 52.26);
    EXPECT_EQ(Report(statistics), classification + "2\n\n40  3  \n0  52.3  " + risk);
    statistics.InitMatrix(1);
    EXPECT_EQ(Report(statistics),
              classification + "2\n\n0  -1.8e+308  \n-1.8e+308  -1.8e+308  " + risk);
}

auto Answers(TreeStatistics const& handle) {
    return std::tuple(handle.IsCls(), handle.GetNumClasses(), handle.GetRisk(),
                      handle.GetStdError(), handle.GetMisclassificationCount(0, 1));
}

TEST(TreeStatisticsTest, AHandleHoldsACloneOrNothing) {
    double const missing = systemMissingValue();
    std::tuple const nothing(false, 0, missing, missing, missing);
    std::tuple const gathered(true, 3, 0.25, 0.125, 1.0);
    TreeStatisticsImp statistics(ClassificationRun(), 0.25, 0.125, NoValidation);
    TreeStatistics const empty;
    TreeStatistics handle;
    EXPECT_EQ(Answers(handle), nothing);
    handle = statistics;
    statistics.SetNumClasses(0);
    EXPECT_EQ(Answers(handle), gathered);
    TreeStatistics other;
    other = handle;
    handle = empty;
    EXPECT_EQ(Answers(handle), nothing);
    TreeStatistics const& self = other;
    other = self;
    EXPECT_EQ(Answers(other), gathered);
}

}  // namespace
}  // namespace tree_800
