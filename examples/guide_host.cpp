/// The host of docs/hosts.md: has a tree grown of how people come to work, prints it, routes people
/// through it, merges its leaves and reports how good it is.

#include "guide_grower.h"

#include <tree/cls_info.h>
#include <tree/cumulative_node.h>
#include <tree/host.h>
#include <tree/node_iterator.h>
#include <tree/split_rule.h>
#include <tree/stop_rule.h>
#include <tree/tree_router.h>
#include <tree/tree_statistics.h>
#include <tree/value_set.h>

#include <exception>
#include <iostream>
#include <iterator>
#include <map>

namespace {

using namespace tree_800;

char const* const Classes[] = {"bicycle", "bus"};
char const* const Predictors[] = {"km", "minutes", "weather"};

char const* ClassOf(Node const& node) { return Classes[static_cast<int>(node.GetAssignment())]; }

CCartSettingsImp MakeSettings() {
    CoreSettingsImp core;
    core.GetTarget()->SetMeasurementLevel(global_800::Nominal);
    core.GetTarget()->SetNumValues(2);
    core.AddPredictor();  // km; a new predictor is continuous
    core.AddPredictor();  // minutes
    VariableSettings& weather = *core.AddPredictor();
    weather.SetMeasurementLevel(global_800::Nominal);
    weather.SetNumValues(3);  // sunny, rainy, snowy

    CCartSettingsImp settings(core);  // clones core, which is therefore complete by now
    settings.GetStopRule()->SetMaxTreeDepth(2);
    settings.GetStopRule()->SetMinChildSize(2);
    return settings;
}

guide::Data MakeData() {
    double const missing = systemMissingValue();
    return {{{1, 5, 0},
             {2, 8, 1},
             {2, 9, 2},
             {3, 12, 0},
             {4, 15, 0},
             {4, 14, 2},
             {5, 20, 0},
             {5, missing, 1},
             {9, missing, 0},
             {10, 33, 0},
             {12, 35, 1},
             {missing, 38, 0}},
            {1, 0, 1, 0, 0, 1, 0, 0, 1, 1, 1, 1}};
}

void PrintValues(ValueSet const& values) {
    if (auto const* const codes = dynamic_cast<NValueSet const*>(&values)) {
        std::unique_ptr<NValueSetIter> const code(codes->GetIterator());
        while (code->Advance()) {
            std::cout << ' ' << code->GetData();
        }
    } else if (auto const* const interval = dynamic_cast<OValueSet const*>(&values)) {
        if (interval->IsBoundedLeft()) {
            std::cout << (interval->IsOpenLeft() ? " above " : " from ") << interval->GetLeftEnd();
        }
        if (interval->IsBoundedRight()) {
            std::cout << (interval->IsOpenRight() ? " below " : " up to ")
                      << interval->GetRightEnd();
        }
    }
}

void PrintTree(Node const& root) {
    PrefixNodeIterator walk(&root);
    while (Node const* const node = walk.Next()) {
        std::cout << "node " << node->GetId() << ": " << node->GetNodeSize(TrainingSample)
                  << " people, " << ClassOf(*node) << '\n';
        std::unique_ptr<SplitRule> const split(node->GetCompetitor(0));
        for (int pos = 0; pos < node->GetNumChildren(); ++pos) {
            std::cout << "  " << Predictors[split->GetPredictorIndex()];
            std::unique_ptr<ValueSet> const values(split->GetMappedValues(pos));
            PrintValues(*values);
            std::cout << ": node " << node->GetChild(static_cast<unsigned>(pos))->GetId() << '\n';
        }
    }
}

void Route(NodeImp const& start, std::vector<double> const& person) {
    NodeImp const* const end = start.DropObservationThroughTree(person.data(), nullptr);
    std::cout << "node " << end->GetId() << ": " << ClassOf(*end) << '\n';
}

void PrintProblems(std::vector<TreeProblem> const& problems) {
    for (TreeProblem const& problem : problems) {
        std::cout << "the tree cannot be routed: " << problem.what << '\n';
    }
}

/// The people are the rows of a table, one after the other.
void RouteAll(NodeImp const& start, std::vector<double> const& people) {
    std::vector<TreeProblem> problems;
    auto const router = TreeRouter::Compile(start, &problems);
    if (router == nullptr) {
        PrintProblems(problems);
        return;
    }
    std::size_t const numPredictors = std::size(Predictors);
    std::vector<NodeImp const*> ends(people.size() / numPredictors);
    router->Route(RowBatch::RowMajor(people.data(), ends.size(), numPredictors), ends.data());
    for (NodeImp const* const end : ends) {
        std::cout << "node " << end->GetId() << ": " << ClassOf(*end) << '\n';
    }
}

void PrintMergedLeaves(Node const& root) {
    std::map<double, std::vector<Node const*>> leavesOfClass;
    PrefixNodeIterator walk(&root);
    while (Node const* const node = walk.Next()) {
        if (node->GetNumChildren() == 0) {
            leavesOfClass[node->GetAssignment()].push_back(node);
        }
    }
    for (auto const& [assignment, leaves] : leavesOfClass) {
        CumulativeNode merged(leaves);  // borrows the leaves
        ClsInfo const* const info = merged.GetClsInfo(TrainingSample);
        std::cout << ClassOf(*leaves.front()) << " is predicted for "
                  << merged.GetNodeSize(TrainingSample) << " people, of whom "
                  << info->GetClassCount(1) << " come by bus\n";
    }
}

void PrintReport(TreeAlgorithm const& algorithm) {
    TreeStatistics statistics;
    if (!algorithm.GetStatistics(statistics)) {
        return;  // there is no tree
    }
    std::cout << "risk " << statistics.GetRisk() << ", standard error " << statistics.GetStdError()
              << '\n';
    for (int predicted = 0; predicted < statistics.GetNumClasses(); ++predicted) {
        std::cout << Classes[predicted] << " predicted:";
        for (int observed = 0; observed < statistics.GetNumClasses(); ++observed) {
            std::cout << ' ' << statistics.GetMisclassificationCount(predicted, observed);
        }
        std::cout << '\n';
    }
}

}  // namespace

int main() try {
    std::cout.precision(2);
    std::unique_ptr<Node> tree;
    {
        guide::Grower grower(MakeData(), MakeSettings());
        while (grower.Step()) {
            std::cout << grower.GetNumNodes() << " nodes, " << 100 * grower.GetProgress() << " %\n";
        }
        PrintReport(grower);
        tree.reset(grower.ReleaseRoot());
    }  // the tree outlives its grower
    PrintTree(*tree);
    auto const& start = dynamic_cast<NodeImp const&>(*tree);
    double const missing = systemMissingValue();
    Route(start, {3, 10, 0});
    Route(start, {missing, 34, 0});       // by the surrogate, on minutes
    Route(start, {missing, missing, 2});  // to the bigger child, and on by the weather
    RouteAll(start, {12, 30, 1, 1, 4, 0, missing, missing, 2});
    PrintMergedLeaves(*tree);
    return 0;
} catch (std::exception const& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
