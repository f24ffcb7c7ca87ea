#include <tree/tree_algorithm.h>

namespace tree_800 {

TreeAlgorithmBase::~TreeAlgorithmBase() = default;

TreeAlgorithm::~TreeAlgorithm() = default;

}  // namespace tree_800
