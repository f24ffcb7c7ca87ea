#ifndef TREE800_EXAMPLES_PENGUINS_H
#define TREE800_EXAMPLES_PENGUINS_H

#include "cart/dataset.h"

#include <cstddef>
#include <string>

namespace examples {

/// Reads the penguins (Gorman, Williams and Fraser 2014, PLoS ONE 9(3): e90081) to predict one of
/// their columns from the others in the order of the file: species, island, bill_length_mm,
/// bill_depth_mm, flipper_length_mm, body_mass_g, sex; the year takes no part. Category codes are
/// alphabetical. Rows without the target are left out; the others are in the training sample.
///
/// Throws std::runtime_error when the file is no table with such a column, and
/// std::invalid_argument for a cell that should be a number.
cart::Dataset ReadPenguins(std::string const& path, std::string const& target);

/// Moves every n-th row to the test sample.
void HoldOut(cart::Dataset& data, std::size_t n);

}  // namespace examples

#endif
