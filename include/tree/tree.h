#ifndef TREE800_TREE_H
#define TREE800_TREE_H

/// Every public header of the library.
#include <tree/alg_settings.h>
#include <tree/array.h>
#include <tree/array_rw.h>
#include <tree/cart_settings.h>
#include <tree/chaid_settings.h>
#include <tree/cls_info.h>
#include <tree/core_settings.h>
#include <tree/cost.h>
#include <tree/cumulative_node.h>
#include <tree/data_sample.h>
#include <tree/export.h>
#include <tree/gains.h>
#include <tree/gains_settings.h>
#include <tree/host.h>
#include <tree/inline_vector.h>
#include <tree/iterator.h>
#include <tree/matrix.h>
#include <tree/node.h>
#include <tree/node_imp.h>
#include <tree/node_iterator.h>
#include <tree/nominal_split_rule.h>
#include <tree/ordered_split_rule.h>
#include <tree/precondition.h>
#include <tree/predictor.h>
#include <tree/priors.h>
#include <tree/pruning_spec.h>
#include <tree/quest_settings.h>
#include <tree/reg_info.h>
#include <tree/scores.h>
#include <tree/split_rule.h>
#include <tree/split_rule_flags.h>
#include <tree/split_rule_imp.h>
#include <tree/stop_rule.h>
#include <tree/tree_algorithm.h>
#include <tree/tree_router.h>
#include <tree/tree_statistics.h>
#include <tree/validation_spec.h>
#include <tree/value_set.h>
#include <tree/variable_settings.h>

#endif
