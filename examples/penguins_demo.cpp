/// Grows and prunes trees of the species and of the body mass of 344 penguins, prints and judges
/// them, and shows how one places the penguins that were not measured completely.

#include "cart/cart_grower.h"
#include "gains_table.h"
#include "penguins.h"
#include "route_explainer.h"
#include "tree_outline.h"

#include <tree/cart_settings.h>
#include <tree/cost.h>
#include <tree/cumulative_node.h>
#include <tree/node.h>
#include <tree/node_iterator.h>
#include <tree/priors.h>
#include <tree/stop_rule.h>
#include <tree/tree_router.h>
#include <tree/tree_statistics.h>
#include <tree/validation_spec.h>

#include <algorithm>
#include <exception>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

int const Chinstrap = 1;  // its code

void Configure(tree_800::CartSettings& settings, tree_800::ValidationType validation) {
    settings.GetStopRule()->SetMinImprovement(0.005);
    settings.GetStopRule()->SetMinNodeSize(10);
    settings.GetStopRule()->SetMinChildSize(3);
    settings.GetValidationSpec()->Set(validation);
}

void GrowAndPrint(cart::CartGrower& grower, std::string const& howJudged) {
    int numGrown = 0;
    while (grower.Step()) {
        numGrown = std::max(numGrown, grower.GetNumLeaves());
    }
    std::cout << "Grown to " << numGrown << " leaves, pruned to " << grower.GetNumLeaves()
              << ":\n\n";
    examples::PrintOutline(std::cout, *grower.GetRoot(), grower.GetData());
    tree_800::TreeStatistics statistics;
    grower.GetStatistics(statistics);
    std::cout << "\nJudged by " << howJudged << '\n'
              << tree_800::TreeStatisticsImp(grower, statistics.GetRisk(), statistics.GetStdError(),
                                             grower.GetSettings()->GetValidationSpec()->GetType());
    if (grower.IsClassification()) {
        std::cout << "Rows of the matrix: predicted; columns: observed, in alphabetical order.\n";
    }
}

/// The leaves that predict the same class, seen as one node.
void PrintMergedLeaves(cart::CartGrower const& grower) {
    std::map<double, std::vector<tree_800::Node const*>> leavesOfClass;
    tree_800::PrefixNodeIterator walk(grower.GetRoot());
    while (tree_800::Node const* const node = walk.Next()) {
        if (node->GetNumChildren() == 0) {
            leavesOfClass[node->GetAssignment()].push_back(node);
        }
    }
    std::cout << "\nLeaves merged by what they predict:\n"
                 "  species     leaves  train  test\n";
    for (auto const& [code, leaves] : leavesOfClass) {
        tree_800::CumulativeNode const merged(leaves);
        std::cout << "  " << std::left << std::setw(11)
                  << grower.GetData().target.categories[static_cast<std::size_t>(code)]
                  << std::right << std::setw(7) << leaves.size() << std::setw(7)
                  << merged.GetNodeSize(tree_800::TrainingSample) << std::setw(6)
                  << merged.GetNodeSize(tree_800::TestSample) << '\n';
    }
}

void PrintChinstrapGains(cart::CartGrower const& grower) {
    tree_800::GainsSettings settings;
    settings.SetTargetCategory(Chinstrap);
    settings.SetHasCumulativeStatistics(true);
    std::unique_ptr<tree_800::GainsIntf> const table(grower.ComputeGains(settings));
    tree_800::Gains gains;
    gains = *table;
    std::cout << "\nLooking for Chinstraps leaf by leaf, the best first: how many of all\n"
                 "penguins are gone through, and how many of all Chinstraps are found.\n";
    examples::PrintGains(std::cout, gains);
}

cart::Dataset ReadWithHeldOut(std::string const& path) {
    cart::Dataset data = examples::ReadPenguins(path, "species");
    examples::HoldOut(data, 5);
    return data;
}

std::string DescribeRoute(cart::CartGrower const& grower, std::size_t row) {
    cart::Dataset const& data = grower.GetData();
    std::string text;
    tree_800::NodeImp const* end = grower.GetRoot();
    for (auto const& step : examples::ExplainRoute(*end, data.Row(row))) {
        text += "    " + examples::Describe(step, data) + '\n';
        end = step.to;
    }
    return "  " + examples::DescribePrediction(*end, data.target) + '\n' + text;
}

/// Penguins that took the same route share its description.
void ExplainIncompletePenguins(cart::CartGrower const& grower) {
    cart::Dataset const& data = grower.GetData();
    std::map<std::string, std::vector<std::size_t>> rowsOfRoute;
    for (std::size_t row = 0; row < data.NumRows(); ++row) {
        double const* const first = data.Row(row);
        if (std::any_of(first, first + data.NumPredictors(), cart::IsMissing)) {
            rowsOfRoute[DescribeRoute(grower, row)].push_back(row);
        }
    }
    for (auto const& [route, rows] : rowsOfRoute) {
        std::cout << (rows.size() == 1 ? "\nPenguin" : "\nPenguins");
        for (std::size_t const row : rows) {
            std::cout << ' ' << row + 1;
        }
        std::cout << '\n' << route;
    }
}

/// All penguins in one batch, through tables compiled from the tree.
void RouteAllAtOnce(cart::CartGrower const& grower) {
    cart::Dataset const& data = grower.GetData();
    auto const router = tree_800::TreeRouter::Compile(*grower.GetRoot(), nullptr);
    std::vector<tree_800::NodeImp const*> nodes(data.NumRows());
    auto const stride = static_cast<std::size_t>(data.NumPredictors());
    router->Route(tree_800::RowBatch::RowMajor(data.values.data(), data.NumRows(), stride),
                  nodes.data());
    std::size_t numAgreeing = 0;
    for (std::size_t row = 0; row < data.NumRows(); ++row) {
        if (nodes[row] == grower.GetRoot()->DropObservationThroughTree(data.Row(row), nullptr)) {
            ++numAgreeing;
        }
    }
    std::cout << "\nOf " << data.NumRows() << " penguins, a router compiled from the tree places "
              << numAgreeing << " where the tree does.\n";
}

void ShowSpecies(std::string const& path) {
    cart::Dataset const data = ReadWithHeldOut(path);
    tree_800::CCartSettingsImp settings(cart::MakeCoreSettings(data));
    Configure(settings, tree_800::TestSampleValidation);
    cart::CartGrower grower(data, settings);
    GrowAndPrint(grower, "the penguins held out, every wrong species counting 1:");
    PrintMergedLeaves(grower);
    PrintChinstrapGains(grower);
    std::cout << "\nHow this tree places the penguins with a missing value: a surrogate stands in\n"
                 "where the value that the primary split asks for is missing.\n";
    ExplainIncompletePenguins(grower);
    RouteAllAtOnce(grower);
}

void ShowSpeciesUnderCosts(std::string const& path) {
    cart::Dataset const data = ReadWithHeldOut(path);
    tree_800::CCartSettingsImp settings(cart::MakeCoreSettings(data));
    Configure(settings, tree_800::TestSampleValidation);
    settings.GetPriors()->Set(tree_800::EqualPriors);
    settings.GetPriors()->AlterValues(true);
    settings.GetCost()->Set(0, Chinstrap, 10.0);
    settings.GetCost()->Set(2, Chinstrap, 10.0);
    cart::CartGrower grower(data, settings);
    std::cout << "The same with equal priors, and as if missing a Chinstrap cost ten times as much:"
                 "\nsplits weigh the species by their altered priors,";
    for (int i = 0; i < grower.GetNumClasses(); ++i) {
        std::cout << ' ' << data.target.categories[static_cast<std::size_t>(i)] << ' '
                  << grower.GetWeighting().AlteredPrior(i);
    }
    std::cout << ".\n";
    GrowAndPrint(grower, "the penguins held out, every wrong species at its cost:");
}

void ShowBodyMass(std::string const& path) {
    cart::Dataset const data = examples::ReadPenguins(path, "body_mass_g");
    tree_800::RCartSettingsImp settings(cart::MakeCoreSettings(data));
    Configure(settings, tree_800::CrossValidation);
    cart::CartGrower grower(data, settings);
    GrowAndPrint(grower, "cross-validation in " +
                             std::to_string(settings.GetValidationSpec()->GetNumCVFolds()) +
                             " folds, by the squared error:");
}

}  // namespace

int main(int argc, char** argv) try {
    std::string const path = argc > 1 ? argv[1] : TREE800_EXAMPLE_DATA_DIR "/penguins.csv";
    std::cout
        << std::setprecision(3)
        << "THE SPECIES OF A PENGUIN\n\n"
           "Every fifth penguin is held out. The tree is pruned to the smallest whose risk on\n"
           "those is within one standard error of the best. A line shows the species predicted"
           "\nat a node and its probability.\n";
    ShowSpecies(path);
    std::cout << "\nTHE SPECIES, WHERE IT MATTERS TO FIND ONE\n\n";
    ShowSpeciesUnderCosts(path);
    std::cout
        << "\nTHE BODY MASS IN GRAMS\n\n"
           "All penguins are grown on; cross-validation chooses the subtree. A line shows the\n"
           "mean at a node and the standard deviation.\n";
    ShowBodyMass(path);
    return 0;
} catch (std::exception const& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
