#ifndef TREE800_EXAMPLES_TREE_OUTLINE_H
#define TREE800_EXAMPLES_TREE_OUTLINE_H

#include "cart/dataset.h"

#include <iosfwd>
#include <string>

namespace tree_800 {
class Node;
class ValueSet;
}  // namespace tree_800

namespace examples {

/// "flipper_length_mm <= 206.5", "island = Biscoe", "island = Dream or Torgersen".
std::string Describe(tree_800::ValueSet const& values, cart::Variable const& variable);

/// "Adelie 97 %": the predicted class and its probability; "3712 +- 453": the predicted value and
/// the standard deviation.
std::string DescribePrediction(tree_800::Node const& node, cart::Variable const& target);

/// Prints the tree below the node, one line a node, indented by depth: id, the values that lead to
/// the node, number of training and test cases, and what it predicts. Every primary split must
/// map some values to each child. Reads nothing but the Node interface; the data name the
/// variables.
void PrintOutline(std::ostream& stream, tree_800::Node const& root, cart::Dataset const& data);

}  // namespace examples

#endif
