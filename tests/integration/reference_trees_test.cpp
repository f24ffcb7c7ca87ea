#include "support/json_tree.h"

#include <tree/tree_statistics.h>

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>

namespace tree_800 {
namespace {

using namespace test;

constexpr int NumClasses = 3;

// The position that the rule answers for its own predictor's value.
int Answer(SplitRuleImp const& rule, std::vector<double> const& row) {
    return rule.Classify(row.at(static_cast<std::size_t>(rule.GetPredictorIndex())));
}

bool AnySurrogatePlaces(NodeImp const& node, std::vector<double> const& row) {
    for (unsigned int pos = 0; pos < node.GetNumSurrogates(); ++pos) {
        if (Answer(*node.GetSurrogateImp(pos), row) >= 0) {
            return true;
        }
    }
    return false;
}

// A tree of penguin species that another program grew, its data, and where that program says every
// row ends. The numbers of steps are those without the primary split.
struct Reference {
    char const* name;
    int bySurrogate;
    int byMajority;
    int stopped;  // at an inner node without a majority direction
};

void PrintTo(Reference const& reference, std::ostream* stream) { *stream << reference.name; }

class ReferenceTrees : public testing::TestWithParam<Reference> {
protected:
    void SetUp() override {
        std::ifstream file(std::string(TREE800_TEST_DATA_DIR "/") + GetParam().name + ".json");
        auto const json = nlohmann::json::parse(file);
        root_ = ReadNode(json.at("nodes"), 1);
        for (auto const& row : json.at("rows")) {
            rows_.push_back(ReadRow(row));
        }
        json.at("target_values").get_to(targets_);
        json.at("leaf_of_row").get_to(leafIds_);
        ASSERT_GT(rows_.size(), 300U);
        ASSERT_EQ(rows_.size(), leafIds_.size());
    }

    NodeImp const& EndOf(std::size_t row) const {
        return *root_->DropObservationThroughTree(rows_[row].data(), nullptr);
    }

    std::unique_ptr<NodeImp> root_;
    std::vector<std::vector<double>> rows_;
    std::vector<int> targets_;
    std::vector<unsigned int> leafIds_;
};

TEST_P(ReferenceTrees, EveryRowEndsWhereItsOriginSays) {
    std::unique_ptr<NodeImp> const clone(root_->Clone());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        EXPECT_EQ(EndOf(i).GetId(), leafIds_[i]) << "row " << i;
        EXPECT_EQ(clone->DropObservationThroughTree(rows_[i].data(), nullptr)->GetId(),
                  leafIds_[i]);
    }
}

TEST_P(ReferenceTrees, SurrogatesAndMajorityTakeTheirSteps) {
    int bySurrogate = 0;
    int byMajority = 0;
    int stopped = 0;
    for (auto const& row : rows_) {
        NodeImp const* node = root_.get();
        while (node != nullptr && node->GetNumChildren() > 0) {
            int const pos = node->Classify(row.data());
            if (Answer(*node->GetCompetitorImp(0), row) < 0) {
                int& unplaced = pos < 0 ? stopped : byMajority;
                ++(AnySurrogatePlaces(*node, row) ? bySurrogate : unplaced);
            }
            node = pos < 0 ? nullptr : node->GetChildImp(static_cast<unsigned int>(pos));
        }
    }
    EXPECT_EQ(bySurrogate, GetParam().bySurrogate);
    EXPECT_EQ(byMajority, GetParam().byMajority);
    EXPECT_EQ(stopped, GetParam().stopped);
}

// The rows that pass a node are the cases that it counts.
TEST_P(ReferenceTrees, EveryNodeCountsTheRowsThatPassIt) {
    std::vector<NodeImp const*> pending{root_.get()};
    while (!pending.empty()) {
        NodeImp const* const node = pending.back();
        pending.pop_back();
        std::vector<double> passed(NumClasses);
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (root_->DropObservationThroughTree(rows_[i].data(), node) == node) {
                ++passed.at(static_cast<std::size_t>(targets_[i]));
            }
        }
        for (int c = 0; c < NumClasses; ++c) {
            EXPECT_EQ(node->GetClsInfo(TrainingSample)->GetClassCount(c),
                      passed[static_cast<std::size_t>(c)])
                << "node " << node->GetId() << ", class " << c;
        }
        for (int pos = 0; pos < node->GetNumChildren(); ++pos) {
            pending.push_back(node->GetChildImp(static_cast<unsigned int>(pos)));
        }
    }
}

TEST_P(ReferenceTrees, MisclassificationMatrixCountsTheRowsOfTheLeaves) {
    std::map<std::pair<int, int>, double> counted;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (EndOf(i).GetNumChildren() == 0) {
            ++counted[{static_cast<int>(EndOf(i).GetAssignment()), targets_[i]}];
        }
    }
    TreeStatisticsImp statistics;
    statistics.SetIsCls(true);
    statistics.SetNumClasses(NumClasses);
    statistics.AddMisclassificationInfo(root_.get(), TrainingSample);
    for (int predicted = 0; predicted < NumClasses; ++predicted) {
        for (int observed = 0; observed < NumClasses; ++observed) {
            EXPECT_EQ(statistics.GetMisclassificationCount(predicted, observed),
                      (counted[{predicted, observed}]))
                << predicted << ", " << observed;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Penguins, ReferenceTrees,
                         testing::Values(Reference{"penguins_species", 2, 1, 0},
                                         Reference{"penguins_species_holes", 84, 162, 2}),
                         [](auto const& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace tree_800
