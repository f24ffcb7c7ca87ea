#include <tree/tree.h>

#include <iostream>
#include <memory>

std::unique_ptr<tree_800::NodeImp> MakeLeaf(int prediction) {
    auto info = std::make_unique<tree_800::ClsInfoImp>();
    info->SetPrediction(prediction);
    auto leaf = std::make_unique<tree_800::NodeImp>();
    leaf->SetClsInfo(info.release(), tree_800::TrainingSample);  // the leaf owns it now
    return leaf;
}

int main() {
    auto split = std::make_unique<tree_800::OSplitRule>(systemMissingValue(), 0);
    split->SetCutPoint(206.5);   // up to 206.5 to child 0, above to child 1
    split->SetDumbRule(0, 0.6);  // what no rule can place goes to child 0, where most cases are
    tree_800::NodeImp root;
    root.SetNumCompetitors(1);
    root.SetCompetitor(0, split.release());
    root.SetNumChildren(2);
    root.SetChild(0, MakeLeaf(0).release());
    root.SetChild(1, MakeLeaf(1).release());

    for (double const flipperLength : {215.0, systemMissingValue()}) {
        auto const* leaf = root.DropObservationThroughTree(&flipperLength, nullptr);
        std::cout << "predicted class " << leaf->GetAssignment() << '\n';
    }
}
