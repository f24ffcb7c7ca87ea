#ifndef TREE800_MODEL_ROUTERTABLES_H
#define TREE800_MODEL_ROUTERTABLES_H

#include "model/table_memory.h"

#include <tree/split_rule_imp.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tree_800 {

class NodeImp;

/// What a TreeRouter routes by. Every node is a record, and siblings are neighbours, the first of
/// them at an even index. Nearly every node of a grown tree splits in two at one cut point, and its
/// record alone decides; whatever else a node may need is out of line.
///
/// A child's position is counted in records here: 0 is the first. In a binary split whose rule
/// sends the low values to child 1 the children have changed places.
class RouterTables {
public:
    /// A binary split: values up to the cut go to the record `next`, all others, NaN too, to the
    /// one after it, but the missing-value code takes the node's fallback. With a negative `next`,
    /// another node: a leaf, or one that is split by any other rule and has its children at ~next.
    struct Record {
        double cut;
        int predictor;  ///< or the number of the leaf, or the index of the rule
        int next;
    };
    static constexpr int IsLeaf = -1;

    /// A rule with one cut point and the tree's missing-value code, or any other one.
    struct Surrogate {
        double cut;
        int predictor;  ///< or the index of the rule
        std::int8_t below;
        std::int8_t above;  ///< or 1 where the rule's positions 0 and 1 change places
        std::int8_t missing;
        bool isRule : 1;
        bool isLast : 1;  ///< of the node's surrogates
    };

    /// What a node needs when its rule places nothing; at half the index of its first child. The
    /// first surrogate is at hand, one that places nothing where the node has none.
    struct alignas(32) Fallback {
        Surrogate surrogate;
        NodeImp const* node;
        int nextSurrogate;  ///< index of the second one
        int otherwise;      ///< position for what no surrogate places; negative for none
    };

    struct Rule {
        enum Kind : unsigned char { Intervals, Codes, Own };
        Kind kind;
        int predictor;
        int count;            ///< of cuts or codes; of children for a caller's own kind
        int first;            ///< of the cuts; the clone of an own kind
        int firstPosition;    ///< of each interval, the one above all cuts included; of each code
        int missing;          ///< position of missing values; negative for none
        double missingValue;  ///< of intervals
    };

    /// Compiles a tree in which CheckTree finds no problem.
    explicit RouterTables(NodeImp const& root);

    TableMemory<Record> records;
    TableMemory<Fallback> fallbacks;
    std::vector<Surrogate> surrogates;
    std::vector<Rule> rules;
    std::vector<double> cuts;
    std::vector<int> positions;
    std::vector<std::unique_ptr<SplitRuleImp const>> clones;
    TableMemory<NodeImp const*> leaves;
    double missingValue;  ///< of all cuts; never 0, whose two signs differ in their bits
    std::size_t numPredictors = 0;
};

}  // namespace tree_800

#endif
