#include "support/json_tree.h"

#include <tree/tree_statistics.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace tree_800 {
namespace {

using namespace test;

class ReferenceTrees : public testing::TestWithParam<char const*> {};

TEST_P(ReferenceTrees, EveryRowEndsWhereItsOriginSaysAndTheMatrixCountsItThere) {
    auto const reference = ReadReference(GetParam());
    std::unique_ptr<NodeImp> const root = ReadNode(reference.at("nodes"), 1);
    std::unique_ptr<NodeImp> const clone(root->Clone());
    auto const values = ReadRows(reference.at("rows"));
    std::vector<std::size_t> const targets = reference.at("target_values");
    ASSERT_GT(targets.size(), 300U);
    double counted[3][3] = {};
    for (std::size_t row = 0; row < targets.size(); ++row) {
        double const* const observation = &values[row * reference.at("predictors").size()];
        NodeImp const& end = *root->DropObservationThroughTree(observation, nullptr);
        EXPECT_EQ(end.GetId(), reference.at("leaf_of_row")[row]) << "row " << row;
        EXPECT_EQ(clone->DropObservationThroughTree(observation, nullptr)->GetId(), end.GetId());
        if (end.GetNumChildren() == 0) {
            ++counted[static_cast<std::size_t>(end.GetAssignment())][targets[row]];
        }
    }
    TreeStatisticsImp statistics;
    statistics.SetIsCls(true);
    statistics.SetNumClasses(3);
    statistics.AddMisclassificationInfo(root.get(), TrainingSample);
    for (int predicted = 0; predicted < 3; ++predicted) {
        for (int observed = 0; observed < 3; ++observed) {
            EXPECT_EQ(statistics.GetMisclassificationCount(predicted, observed),
                      counted[predicted][observed])
                << predicted << ", " << observed;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Penguins, ReferenceTrees,
                         testing::Values("penguins_species", "penguins_species_holes"),
                         [](auto const& row) { return std::string(row.param); });

}  // namespace
}  // namespace tree_800
