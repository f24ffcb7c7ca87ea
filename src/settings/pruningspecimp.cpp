#include <tree/pruning_spec.h>

namespace tree_800 {

PruningSpec::~PruningSpec() = default;

PruningSpecImp::PruningSpecImp() = default;

PruningSpec* PruningSpecImp::Clone() const { return new PruningSpecImp(*this); }

bool PruningSpecImp::GetPickMinRiskTree() const { return pickMinRiskTree_; }

double PruningSpecImp::GetSERuleFactor() const { return seRuleFactor_; }

void PruningSpecImp::SetPickMinRiskTree(bool pick) { pickMinRiskTree_ = pick; }

void PruningSpecImp::SetSERuleFactor(double factor) {
    if (factor >= 0.0) {
        seRuleFactor_ = factor;
    }
}

}  // namespace tree_800
