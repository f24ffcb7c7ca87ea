#include <tree/tree_router.h>

#include "model/routertables.h"

#include <tree/precondition.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace tree_800 {

namespace {

using Fallback = RouterTables::Fallback;
using Record = RouterTables::Record;
using Rule = RouterTables::Rule;
using Surrogate = RouterTables::Surrogate;

// A row answers the value of a predictor.
struct Observation {
    double const* values;
    double operator[](int predictor) const { return values[predictor]; }
};

struct StridedObservation {
    double const* values;
    std::size_t stride;
    double operator[](int predictor) const {
        return values[static_cast<std::size_t>(predictor) * stride];
    }
};

// What rules answer besides positions.
constexpr int Unplaced = -1;
constexpr int Beyond = -2;  // an own kind named a child that is not there: the walk ends

int PlaceInInterval(RouterTables const& tables, Rule const& rule, double value) {
    if (value == rule.missingValue) {
        return rule.missing;
    }
    double const* const first = tables.cuts.data() + rule.first;
    double const* const cut = std::partition_point(first, first + rule.count,
                                                   [value](double c) { return !(c >= value); });
    return (tables.positions.data() + rule.firstPosition)[cut - first];
}

int PlaceCode(RouterTables const& tables, Rule const& rule, double value) {
    if (!(value >= 0.0 && value < rule.count)) {
        return rule.missing;
    }
    int const code = static_cast<int>(value);
    return code == value ? (tables.positions.data() + rule.firstPosition)[code] : rule.missing;
}

// The position for a value; negative when the rule does not place it.
int Place(RouterTables const& tables, Rule const& rule, double value) {
    switch (rule.kind) {
        case Rule::Intervals:
            return PlaceInInterval(tables, rule, value);
        case Rule::Codes:
            return PlaceCode(tables, rule, value);
        default: {
            int const pos = tables.clones[static_cast<std::size_t>(rule.first)]->Classify(value);
            return pos < rule.count ? std::max(pos, Unplaced) : Beyond;
        }
    }
}

template <typename Row>
int Place(RouterTables const& tables, Surrogate const& surrogate, Row row) {
    if (surrogate.isRule) {
        Rule const& rule = tables.rules[static_cast<std::size_t>(surrogate.predictor)];
        int const pos = Place(tables, rule, row[rule.predictor]);
        return pos >= 0 ? pos ^ surrogate.above : pos;
    }
    double const value = row[surrogate.predictor];
    if (value == tables.missingValue) {
        return surrogate.missing;
    }
    return value <= surrogate.cut ? surrogate.below : surrogate.above;
}

// The record at which a walk goes on, or its end: ~index of the fallback of the inner node that
// does not place the row.
template <typename Row>
int PlaceByFallback(RouterTables const& tables, Row row, int firstChild) {
    Fallback const& fallback = tables.fallbacks[firstChild / 2];
    int position = Place(tables, fallback.surrogate, row);
    if (position == Unplaced && !fallback.surrogate.isLast) {
        Surrogate const* next =
            &tables.surrogates[static_cast<std::size_t>(fallback.nextSurrogate)];
        position = Place(tables, *next, row);
        while (position == Unplaced && !next->isLast) {
            position = Place(tables, *++next, row);
        }
    }
    if (position == Unplaced) {
        position = fallback.otherwise;
    }
    return position >= 0 ? firstChild + position : ~(firstChild / 2);
}

// The same for a node that is split by a rule of the tables.
template <typename Row>
int PlaceByRule(RouterTables const& tables, Row row, Record const& record) {
    Rule const& rule = tables.rules[static_cast<std::size_t>(record.predictor)];
    int const firstChild = ~record.next;
    int const position = Place(tables, rule, row[rule.predictor]);
    if (position == Unplaced) {
        return PlaceByFallback(tables, row, firstChild);
    }
    return position >= 0 ? firstChild + position : ~(firstChild / 2);
}

std::uint64_t Bits(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// One step from a binary split. The bits tell the missing-value code with one test where doubles
// need two.
template <typename Row>
int Step(RouterTables const& tables, std::uint64_t missing, Row row, Record const& split) {
    double const value = row[split.predictor];
    if (Bits(value) == missing) {
        // A code that is NaN equals nothing.
        return std::isnan(value) ? split.next + 1 : PlaceByFallback(tables, row, split.next);
    }
    return split.next + (value <= split.cut ? 0 : 1);
}

// Walks from a record on. Answers the number of a leaf or, as above, the end at an inner node.
template <typename Row>
int Walk(RouterTables const& tables, Row row, int at) {
    Record const* const records = tables.records.Data();
    std::uint64_t const missing = Bits(tables.missingValue);
    while (at >= 0) {
        Record const& record = records[at];
        if (record.next >= 0) {
            at = Step(tables, missing, row, record);
        } else if (record.next == RouterTables::IsLeaf) {
            return record.predictor;
        } else {
            at = PlaceByRule(tables, row, record);
        }
    }
    return at;
}

// Walks all rows, of which there are at least as many as lanes, several at a time: while one waits
// for its record, the others go on. A row that has come to its end leaves its lane to the next one.
// `rowAt(i)` answers a row, `store(i, end)` takes the end of its walk.
template <std::size_t NumLanes, bool Prefetch, typename RowAt, typename Store>
void WalkLanes(RouterTables const& tables, std::size_t numRows, RowAt rowAt, Store store) {
    struct Lane {
        decltype(rowAt(0)) row;
        std::size_t number;
        int at;
    };
    Record const* const records = tables.records.Data();
    std::uint64_t const missing = Bits(tables.missingValue);
    std::size_t nextRow = 0;
    Lane lanes[NumLanes];
    for (Lane& lane : lanes) {
        lane = {rowAt(nextRow), nextRow, 0};
        ++nextRow;
    }
    for (;;) {
        for (Lane& lane : lanes) {
            Record const& record = records[lane.at];
            int end = record.predictor;
            if (record.next != RouterTables::IsLeaf) {
                end = record.next >= 0 ? Step(tables, missing, lane.row, record)
                                       : PlaceByRule(tables, lane.row, record);
                if (end >= 0) {
                    lane.at = end;
                    if constexpr (Prefetch) {
                        __builtin_prefetch(records + lane.at);
                    }
                    continue;
                }
            }
            store(lane.number, end);
            if (nextRow == numRows) {
                std::swap(lane, lanes[NumLanes - 1]);
                std::for_each(lanes, lanes + NumLanes - 1, [&](Lane const& other) {
                    store(other.number, Walk(tables, other.row, other.at));
                });
                return;
            }
            lane = {rowAt(nextRow), nextRow, 0};
            ++nextRow;
        }
    }
}

// Eight rows hide the delays of the nearer caches; memory needs more rows under way, and telling
// it early.
template <typename RowAt, typename Store>
void WalkAll(RouterTables const& tables, std::size_t numRows, RowAt rowAt, Store store) {
    constexpr std::size_t FewLanes = 8;
    constexpr std::size_t ManyLanes = 32;
    if (numRows >= ManyLanes && tables.records.IsLarge()) {
        WalkLanes<ManyLanes, true>(tables, numRows, rowAt, store);
    } else if (numRows >= FewLanes) {
        WalkLanes<FewLanes, false>(tables, numRows, rowAt, store);
    } else {
        for (std::size_t i = 0; i < numRows; ++i) {
            store(i, Walk(tables, rowAt(i), 0));
        }
    }
}

template <typename Store>
void WalkBatch(RouterTables const& tables, RowBatch const& rows, Store store) {
    if (rows.predictorStride == 1) {
        WalkAll(
            tables, rows.numRows,
            [&rows](std::size_t i) { return Observation{rows.values + i * rows.rowStride}; },
            store);
    } else {
        WalkAll(
            tables, rows.numRows,
            [&rows](std::size_t i) {
                return StridedObservation{rows.values + i * rows.rowStride, rows.predictorStride};
            },
            store);
    }
}

NodeImp const* NodeAt(RouterTables const& tables, int end) {
    return end >= 0 ? tables.leaves[end] : tables.fallbacks[~end].node;
}

template <typename T>
std::size_t Bytes(std::vector<T> const& table) {
    return table.size() * sizeof(T);
}

}  // namespace

TreeRouter::TreeRouter(std::unique_ptr<RouterTables const> tables) noexcept
    : tables_(std::move(tables)) {}

TreeRouter::~TreeRouter() = default;

std::unique_ptr<TreeRouter> TreeRouter::Compile(NodeImp const& root,
                                                std::vector<TreeProblem>* problems) {
    std::vector<TreeProblem> found = CheckTree(root);
    bool const isSound = found.empty();
    if (problems != nullptr) {
        *problems = std::move(found);
    }
    if (!isSound) {
        return nullptr;
    }
    return std::unique_ptr<TreeRouter>(new TreeRouter(std::make_unique<RouterTables>(root)));
}

std::size_t TreeRouter::GetNumPredictors() const noexcept { return tables_->numPredictors; }

int TreeRouter::GetNumLeaves() const noexcept { return static_cast<int>(tables_->leaves.Size()); }

NodeImp const* TreeRouter::GetLeaf(int number) const noexcept {
    TREE800_REQUIRE(0 <= number && number < GetNumLeaves(), "no leaf has this number");
    return tables_->leaves[number];
}

std::size_t TreeRouter::GetTableSize() const noexcept {
    return tables_->records.Bytes() + tables_->fallbacks.Bytes() + tables_->leaves.Bytes() +
           Bytes(tables_->surrogates) + Bytes(tables_->rules) + Bytes(tables_->cuts) +
           Bytes(tables_->positions) + Bytes(tables_->clones);
}

NodeImp const* TreeRouter::Route(double const* obs) const {
    return NodeAt(*tables_, Walk(*tables_, Observation{obs}, 0));
}

int TreeRouter::RouteToLeaf(double const* obs) const {
    return std::max(Walk(*tables_, Observation{obs}, 0), -1);
}

void TreeRouter::Route(RowBatch const& rows, NodeImp const** nodes) const {
    WalkBatch(*tables_, rows,
              [this, nodes](std::size_t i, int end) { nodes[i] = NodeAt(*tables_, end); });
}

void TreeRouter::RouteToLeaves(RowBatch const& rows, int* leaves) const {
    WalkBatch(*tables_, rows, [leaves](std::size_t i, int end) { leaves[i] = std::max(end, -1); });
}

}  // namespace tree_800
