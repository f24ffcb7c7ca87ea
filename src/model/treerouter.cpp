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
    double operator[](int predictor) const { return values[static_cast<unsigned int>(predictor)]; }
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
        return Place(tables, rule, row[rule.predictor]);
    }
    double const value = row[surrogate.predictor];
    if (value == tables.missingValue) {
        return surrogate.missing;
    }
    return value <= surrogate.cut ? surrogate.below : surrogate.above;
}

template <typename Row>
int PlaceByFallback(RouterTables const& tables, Row row, int pair) {
    Fallback const& fallback = tables.fallbacks[pair];
    int position = Unplaced;
    if (fallback.firstOther >= 0) {
        Surrogate const* surrogate =
            &tables.surrogates[static_cast<std::size_t>(fallback.firstOther)];
        position = Place(tables, *surrogate, row);
        while (position == Unplaced && !surrogate->isLast) {
            position = Place(tables, *++surrogate, row);
        }
    }
    if (position == Unplaced) {
        position = fallback.otherwise;
    }
    return position >= 0 ? 2 * pair + position : ~pair;
}

// Where a walk goes on from the record `at`, which does not decide by itself: the next record, or
// the end of the walk, ~pair of the inner node that does not place the row. Not inlined: the loops
// below need their registers.
template <typename Row>
[[gnu::noinline]] int PlaceOutOfLine(RouterTables const& tables, Row row, int at) {
    if (at >= tables.firstSurrogateRecord) {
        return PlaceByFallback(tables, row, at - tables.firstSurrogateRecord);
    }
    Record const& record = tables.records[at];
    int const index = ~record.predictor;
    Rule const& rule = tables.rules[static_cast<std::size_t>(index)];
    int const firstChild = ~record.next;
    int const position = Place(tables, rule, row[rule.predictor]);
    if (position == Unplaced) {
        return tables.firstSurrogateRecord + firstChild / 2;
    }
    return position >= 0 ? firstChild + position : ~(firstChild / 2);
}

std::uint64_t Bits(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// One step from the record `at`, not of a leaf; the answer is that of PlaceOutOfLine. The bits tell
// the missing-value code with one test where doubles need two. The child is chosen before the test
// although only its outcome needs it: the other way round compilers move the value between
// registers first.
template <typename Row>
[[gnu::always_inline]] inline int Step(RouterTables const& tables, std::uint64_t missing, Row row,
                                       Record const& record, int at) {
    int const next = record.next;
    if (next >= 0) {
        double const value = row[record.predictor];
        int const child = record.cut >= value ? next : next ^ 1;
        if (__builtin_expect(Bits(value) != missing, 1)) {
            return child;
        }
        if (at < tables.firstSurrogateRecord) {
            return tables.firstSurrogateRecord + next / 2;
        }
    }
    return PlaceOutOfLine(tables, row, at);
}

// Walks from a record on. Answers the number of a leaf or, as above, the end at an inner node.
template <typename Row>
int Walk(RouterTables const& tables, Row row, int at) {
    Record const* const records = tables.records.Data();
    std::uint64_t const missing = Bits(tables.missingValue);
    while (at >= 0) {
        Record const& record = records[static_cast<unsigned int>(at)];
        if (record.IsLeaf()) {
            return ~record.next;
        }
        at = Step(tables, missing, row, record, at);
    }
    return at;
}

// Asks memory for a row that fills a few cache lines at most: a walk reads most of them, and would
// wait for one after the other, which took as long as all else in a small tree. Of a longer row, or
// one that is scattered, it may not need many.
void Fetch(Observation row, std::size_t numPredictors) {
    constexpr std::size_t ValuesPerLine = 8;
    constexpr std::size_t MostLines = 8;
    if (numPredictors <= MostLines * ValuesPerLine) {
        for (std::size_t i = 0; i < numPredictors; i += ValuesPerLine) {
            __builtin_prefetch(row.values + i);
        }
    }
}

void Fetch(StridedObservation /*row*/, std::size_t /*numPredictors*/) {}

template <typename Row>
int WalkOne(RouterTables const& tables, Row row) {
    Fetch(row, tables.numPredictors);
    return Walk(tables, row, 0);
}

// Walks all rows, of which there are at least as many as lanes, several at a time: while one waits
// for its record, the others go on. A row that has come to its end leaves its lane to the next one.
// `rowAt(i)` answers a row, `store(i, end)` takes the end of its walk. Each lane has code of its
// own that knows where the lane's state is: a loop over the lanes takes up to a third longer.
template <bool FetchRecords, typename RowAt, typename Store, std::size_t... I>
void WalkLanes(RouterTables const& tables, std::size_t numRows, RowAt rowAt, Store store,
               std::index_sequence<I...> /*lanes*/) {
    struct Lane {
        decltype(rowAt(0)) row;
        std::size_t number;
        int at;
    };
    constexpr std::size_t RowsAhead = 16;  // 4 to 48 were alike
    Record const* const records = tables.records.Data();
    std::uint64_t const missing = Bits(tables.missingValue);
    Lane lanes[sizeof...(I)];
    std::size_t nextRow = 0;
    auto const enter = [&](Lane& lane) {
        lane = {rowAt(nextRow), nextRow, 0};
        Fetch(rowAt(std::min(nextRow + RowsAhead, numRows - 1)), tables.numPredictors);
        ++nextRow;
    };
    // Whether there was a row left for the lane if it needed one. C++17 has no place for the
    // [[gnu::always_inline]] of a lambda.
    auto const step = [&](Lane & lane) __attribute__((always_inline)) {
        Record const& record = records[static_cast<unsigned int>(lane.at)];
        int end = ~record.next;
        if (__builtin_expect(!record.IsLeaf(), 1)) {
            int const next = Step(tables, missing, lane.row, record, lane.at);
            if (next >= 0) {
                lane.at = next;
                if constexpr (FetchRecords) {
                    __builtin_prefetch(records + next);
                }
                return true;
            }
            end = next;
        }
        store(lane.number, end);
        if (nextRow == numRows) {
            lane.number = numRows;
            return false;
        }
        enter(lane);
        return true;
    };
    (enter(lanes[I]), ...);
    while ((step(lanes[I]) && ...)) {
    }
    for (Lane const& lane : lanes) {
        if (lane.number != numRows) {
            store(lane.number, Walk(tables, lane.row, lane.at));
        }
    }
}

// Eight rows hide the delays of the nearer caches; main memory needs more rows under way, and their
// records asked for ahead.
template <typename RowAt, typename Store>
void WalkAll(RouterTables const& tables, std::size_t numRows, RowAt rowAt, Store store) {
    using FewLanes = std::make_index_sequence<8>;
    using ManyLanes = std::make_index_sequence<32>;
    if (numRows >= ManyLanes::size() && tables.records.IsLarge()) {
        WalkLanes<true>(tables, numRows, rowAt, store, ManyLanes());
    } else if (numRows >= FewLanes::size()) {
        WalkLanes<false>(tables, numRows, rowAt, store, FewLanes());
    } else {
        for (std::size_t i = 0; i < numRows; ++i) {
            store(i, WalkOne(tables, rowAt(i)));
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
    return NodeAt(*tables_, WalkOne(*tables_, Observation{obs}));
}

int TreeRouter::RouteToLeaf(double const* obs) const {
    return std::max(WalkOne(*tables_, Observation{obs}), -1);
}

void TreeRouter::Route(RowBatch const& rows, NodeImp const** nodes) const {
    WalkBatch(*tables_, rows,
              [this, nodes](std::size_t i, int end) { nodes[i] = NodeAt(*tables_, end); });
}

void TreeRouter::RouteToLeaves(RowBatch const& rows, int* leaves) const {
    WalkBatch(*tables_, rows, [leaves](std::size_t i, int end) { leaves[i] = std::max(end, -1); });
}

}  // namespace tree_800
