// Routes rows through a tree of two leaves and exits with 0 when each ends in the class that it
// should: consumer [MISSING], where MISSING is the missing value of a program with its own host.

#include <tree/tree.h>

#include <cstdlib>
#include <iostream>
#include <memory>

namespace {

std::unique_ptr<tree_800::NodeImp> MakeLeaf(int prediction) {
    auto info = std::make_unique<tree_800::ClsInfoImp>();
    info->SetPrediction(prediction);
    auto leaf = std::make_unique<tree_800::NodeImp>();
    leaf->SetClsInfo(info.release(), tree_800::TrainingSample);
    return leaf;
}

std::unique_ptr<tree_800::Node> MakeTree() {
    // The library, not this file, asks the host for the missing value of a variable.
    auto split = std::make_unique<tree_800::OSplitRule>(tree_800::VariableSettingsImp(), 0);
    split->SetCutPoint(206.5);
    split->SetDumbRule(1, 0.6);
    auto root = std::make_unique<tree_800::NodeImp>();
    root->SetNumCompetitors(1);
    root->SetCompetitor(0, split.release());
    root->SetNumChildren(2);
    root->SetChild(0, MakeLeaf(0).release());
    root->SetChild(1, MakeLeaf(1).release());
    return root;
}

}  // namespace

int main(int argc, char** argv) {
    double const missing = argc > 1 ? std::atof(argv[1]) : systemMissingValue();
    struct Row {
        double value;
        double expectedClass;
    };
    // A missing value goes to child 1; the number -999 is below the cut where it is not missing.
    Row const rows[] = {
        {200.0, 0.0}, {215.0, 1.0}, {missing, 1.0}, {-999.0, missing == -999.0 ? 1.0 : 0.0}};

    std::unique_ptr<tree_800::Node> const tree = MakeTree();
    auto const& root = dynamic_cast<tree_800::NodeImp const&>(*tree);
    for (Row const& row : rows) {
        double const answer = root.DropObservationThroughTree(&row.value, nullptr)->GetAssignment();
        if (answer != row.expectedClass) {
            std::cerr << row.value << " went to class " << answer << ", not " << row.expectedClass
                      << '\n';
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
