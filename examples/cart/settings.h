#ifndef TREE800_EXAMPLES_CART_SETTINGS_H
#define TREE800_EXAMPLES_CART_SETTINGS_H

#include "cart/dataset.h"

#include <tree/cart_settings.h>
#include <tree/core_settings.h>

namespace cart {

/// The variables of the data, as the settings of an algorithm need them.
tree_800::CoreSettingsImp MakeCoreSettings(Dataset const& data);

/// Throws std::invalid_argument unless the settings can grow a tree of the data: their variables
/// are those of the data (number, level, number of values, missing value), they are of the kind of
/// the target, the criterion is Gini, priors and costs are for no more classes than there are, and
/// the validation finds its cases, a test sample or a training case for each fold.
void RequireFit(Dataset const& data, SampleRows const& rows,
                tree_800::CartSettings const& settings);

}  // namespace cart

#endif
