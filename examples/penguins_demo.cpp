/// Grows a tree of the species and a tree of the body mass of 344 penguins, prints and judges both,
/// and shows how the first places the penguins that were not measured completely.

#include "cart/cart_grower.h"
#include "penguins.h"
#include "route_explainer.h"
#include "tree_outline.h"

#include <tree/tree_statistics.h>

#include <algorithm>
#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

cart::CartGrower MakeGrower(std::string const& path, std::string const& target) {
    cart::Dataset data = examples::ReadPenguins(path, target);
    examples::HoldOut(data, 5);
    tree_800::StopRuleImp stopRule;
    stopRule.SetMinImprovement(0.02);
    stopRule.SetMinNodeSize(20);
    stopRule.SetMinChildSize(7);
    tree_800::ValidationSpecImp validation;
    validation.Set(tree_800::TestSampleValidation);
    return {std::move(data), stopRule, validation};
}

void GrowAndPrint(cart::CartGrower& grower) {
    grower.Run();
    examples::PrintOutline(std::cout, *grower.GetRoot(), grower.GetData());
    std::cout << "\nJudged on the test sample:\n"
              << tree_800::TreeStatisticsImp(grower, grower.GetRisk(tree_800::TestSample),
                                             grower.GetRiskStdError(tree_800::TestSample),
                                             grower.GetValidationSpec()->GetType())
              << "\n\n";
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

}  // namespace

int main(int argc, char** argv) try {
    std::string const path = argc > 1 ? argv[1] : TREE800_EXAMPLE_DATA_DIR "/penguins.csv";
    std::cout << "Every fifth penguin is held out to judge the trees: the test sample.\n\n"
                 "The species of a penguin: the most frequent one of a node, and its share.\n\n";
    cart::CartGrower species = MakeGrower(path, "species");
    GrowAndPrint(species);
    std::cout << "Its body mass in grams: the mean of a node, and the standard deviation.\n\n";
    cart::CartGrower bodyMass = MakeGrower(path, "body_mass_g");
    GrowAndPrint(bodyMass);
    std::cout
        << "How the tree of the species places the penguins with a missing value: a surrogate\n"
           "stands in where the value that the primary split asks for is missing.\n";
    ExplainIncompletePenguins(species);
    return 0;
} catch (std::exception const& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
