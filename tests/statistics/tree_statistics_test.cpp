#include "support/finished_algorithm.h"
#include "support/tree_builder.h"

#include <tree/tree_statistics.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iomanip>
#include <sstream>
#include <string>
#include <tuple>

namespace tree_800 {
namespace {

using namespace test;
using Matrix = std::vector<std::vector<double>>;

// Three classes. The test sample is predicted apart, one leaf has none, and what inner nodes hold
// does not count.
FinishedAlgorithm ClassificationRun() {
    auto left = Leaf(0, {4.0, 1.0, 0.0});
    left->SetClsInfo(Counts(1, {1.0, 0.0, 2.0}).release(), TestSample);
    auto middle = Leaf(2, {0.0, 1.5, 5.0});
    middle->SetClsInfo(Counts(2, {0.0, 3.0, 1.0}).release(), TestSample);
    auto inner = Inner(std::move(middle), Leaf(0, {2.0, 0.0, 1.0}));
    auto root = Inner(std::move(left), std::move(inner));
    for (NodeImp* const node : {root.get(), root->GetChildImp(1)}) {
        node->SetClsInfo(Counts(0, {90.0, 90.0, 90.0}).release(), TrainingSample);
    }
    return FinishedAlgorithm(std::move(root));
}

Matrix MatrixOf(TreeStatisticsIntf const& statistics) {
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
        EXPECT_EQ(MatrixOf(statistics), expected);
    }
}

TEST(TreeStatisticsTest, WhatIsGatheredReplacesTheMatrixOnlyWhenANewOneIsBuilt) {
    TreeStatisticsImp statistics(ClassificationRun(), 0.0, 0.0, TestSampleValidation);
    statistics.Initialize(ClassificationRun(), 0.0, 0.0, NoValidation);
    EXPECT_EQ(MatrixOf(statistics)[0], (std::vector<double>{6.0, 1.0, 1.0}));
    statistics.Initialize(ClassificationRun(), 0.0, 0.0, CrossValidation);
    EXPECT_EQ(statistics.GetMisclassificationCount(2, 1), 1.5);
    auto regression = std::make_unique<NodeImp>();
    regression->SetClassificationNode(false);
    statistics.Initialize(FinishedAlgorithm(std::move(regression)), 0.0, 0.0, NoValidation);
    EXPECT_FALSE(statistics.IsCls());
    EXPECT_EQ(statistics.GetNumClasses(), 0);
    EXPECT_EQ(statistics.GetMisclassificationCount(2, 1), systemMissingValue());
    statistics.SetIsCls(true);
    EXPECT_EQ(statistics.GetMisclassificationCount(2, 1), 1.5);
    statistics.SetNumClasses(2);
    EXPECT_EQ(MatrixOf(statistics), Matrix(2, std::vector<double>(2, 0.0)));
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
        auto const parent = Leaf(0, {100.0, 100.0});  // what has a child does not count
        parent->SetNumChildren(1);
        SetChild(*parent, 0, Leaf(prediction, counts));
        statistics.AddMisclassificationInfo(parent.get(), TrainingSample);
        statistics.AddMisclassificationInfo(parent.get(), TestSample);
    }
    EXPECT_EQ(MatrixOf(statistics), (Matrix{{1.0, 3.0}, {2.5, 8.0}}));
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
