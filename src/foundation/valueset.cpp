#include <tree/value_set.h>

namespace tree_800 {

ValueSet::~ValueSet() = default;

}  // namespace tree_800
