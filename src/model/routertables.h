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

/// What a TreeRouter routes by. Every node is a record, and two records from an even index on are a
/// pair; the children of a node start a pair, whose number is that of the node. Nearly every node
/// of a grown tree splits in two at one cut point, and so does its first surrogate: their records
/// alone decide. Whatever else a node may need is out of line.
class RouterTables {
public:
    /// Values up to the cut go to the record `next`, all others, NaN too, to the other one of its
    /// pair; but the missing-value code goes to the surrogate's record and from there to the
    /// fallback. A negative `next` is ~number of a leaf or, where `predictor` is ~index of a rule,
    /// ~index of the first child.
    struct Record {
        double cut;
        int predictor;
        int next;

        bool IsLeaf() const noexcept { return next < 0 && predictor >= 0; }
    };

    /// A rule with one cut point and the missing-value code of the tables or, where isRule, any
    /// other one.
    struct Surrogate {
        double cut;
        int predictor;  ///< or the index of the rule
        std::int8_t below;
        std::int8_t above;
        std::int8_t missing;
        bool isRule : 1;
        bool isLast : 1;  ///< of the node's surrogates
    };

    /// What a node does with a row that its own record and its surrogate's do not place.
    struct Fallback {
        NodeImp const* node;
        int firstOther;  ///< surrogate, of those without a record; negative for none
        int otherwise;   ///< position for what no surrogate places; negative for none
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

    /// Of the nodes and then, from firstSurrogateRecord on, by pair: the first surrogate of the
    /// node, or what sends the walk on to the node's fallback.
    TableMemory<Record> records;
    int firstSurrogateRecord = 0;
    TableMemory<Fallback> fallbacks;  ///< by pair
    std::vector<Surrogate> surrogates;
    std::vector<Rule> rules;
    std::vector<double> cuts;
    std::vector<int> positions;
    std::vector<std::unique_ptr<SplitRuleImp const>> clones;
    TableMemory<NodeImp const*> leaves;
    double missingValue;  ///< of all records; neither 0 nor NaN, so that its bits tell it
    std::size_t numPredictors = 0;
};

}  // namespace tree_800

#endif
