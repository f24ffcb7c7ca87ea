#include "model/routertables.h"

#include "model/plain_rule.h"

#include <tree/host.h>
#include <tree/node_imp.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <optional>
#include <utility>

namespace tree_800 {

namespace {

using Fallback = RouterTables::Fallback;
using Record = RouterTables::Record;
using Rule = RouterTables::Rule;
using Surrogate = RouterTables::Surrogate;

// The indices of all tables are ints.
int Index(std::size_t i) {
    if (i > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::bad_alloc();
    }
    return static_cast<int>(i);
}

bool IsLeaf(NodeImp const& node) { return node.GetNumChildren() == 0; }

// The positions that a rule with one cut point answers.
struct Sides {
    int below;
    int above;
};

// Whether the rule chooses between the two children of a pair.
bool ArePair(Sides const& sides) { return sides.below >= 0 && (sides.below ^ 1) == sides.above; }

// The child to have close by: the biggest one, unless it is a leaf and the other is not; null when
// both are leaves.
NodeImp const* BusierInnerChild(NodeImp const& node) {
    bool const secondIsBusier = node.GetCompetitorImp(0)->GetDumbChildPos() == 1;
    NodeImp const* const busier = node.GetChildImp(secondIsBusier ? 1 : 0);
    NodeImp const* const other = node.GetChildImp(secondIsBusier ? 0 : 1);
    return !IsLeaf(*busier) ? busier : !IsLeaf(*other) ? other : nullptr;
}

class Compilation {
public:
    explicit Compilation(RouterTables& tables) : tables_(tables) {}

    void Run(NodeImp const& root) {
        AddPairs(2);
        pending_.push_back({&root, 0, 1});
        while (!pending_.empty()) {
            Job const job = pending_.back();
            pending_.pop_back();
            if (IsLeaf(*job.node)) {
                records_[job.record] = {0.0, 0, ~Index(leaves_.size())};
                leaves_.push_back(job.node);
            } else {
                AddInnerNode(job);
            }
        }
        tables_.firstSurrogateRecord = Index(records_.size());
        records_.insert(records_.end(), surrogateRecords_.begin(), surrogateRecords_.end());
        Index(records_.size());  // throws where a walk could not index them all
        tables_.records = TableMemory<Record>(records_);
        tables_.fallbacks = TableMemory<Fallback>(fallbacks_);
        tables_.leaves = TableMemory<NodeImp const*>(leaves_);
        tables_.missingValue = missingValue_.value_or(systemMissingValue());
    }

private:
    // A node on its way to its record, and the pair of records kept for its children, 0 for none.
    struct Job {
        NodeImp const* node;
        std::size_t record;
        std::size_t pair;
    };

    // Two pairs of records fill a cache line, and lines are never divided: answers the first of at
    // least n new pairs.
    std::size_t AddPairs(std::size_t n) {
        std::size_t const first = fallbacks_.size();
        fallbacks_.resize(first + n + n % 2);
        surrogateRecords_.resize(fallbacks_.size(), NoRecord);
        records_.resize(2 * fallbacks_.size());
        return first;
    }

    // Where the children of a binary split go. Beside them on their line lie the children of the
    // busier child; a pair of leaves leaves that place to another pair of leaves.
    struct PairPlace {
        std::size_t pair;
        NodeImp const* busier = nullptr;
        std::size_t pairOfBusier = 0;
    };

    PairPlace FindPlace(Job const& job) {
        if (job.pair != 0) {
            return {job.pair};
        }
        NodeImp const* const busier = BusierInnerChild(*job.node);
        if (busier == nullptr && sparePair_ != 0) {
            return {std::exchange(sparePair_, 0)};
        }
        std::size_t const pair = AddPairs(2);
        if (busier == nullptr) {
            sparePair_ = pair + 1;
        }
        return {pair, busier, pair + 1};
    }

    void AddInnerNode(Job const& job) {
        NodeImp const& node = *job.node;
        SplitRuleImp const& primary = *node.GetCompetitorImp(0);
        int const numChildren = node.GetNumChildren();
        std::optional<Sides> const sides = numChildren == 2 ? OneCut(primary) : std::nullopt;
        bool const isBinary = sides && ArePair(*sides);
        PairPlace const place =
            isBinary ? FindPlace(job)
                     : PairPlace{AddPairs((static_cast<std::size_t>(numChildren) + 1) / 2)};
        int const firstChild = Index(2 * place.pair);
        records_[job.record] = isBinary ? MakeRecord(primary, firstChild + sides->below)
                                        : Record{0.0, ~AddRule(primary, numChildren), ~firstChild};
        AddFallback(node, place.pair, isBinary);
        for (int pos = numChildren - 1; pos >= 0; --pos) {
            NodeImp const* const child = node.GetChildImp(static_cast<unsigned int>(pos));
            pending_.push_back({child, static_cast<std::size_t>(firstChild + pos),
                                child == place.busier ? place.pairOfBusier : 0});
        }
    }

    // A binary split with a child for missing values places every value.
    void AddFallback(NodeImp const& node, std::size_t pair, bool isBinary) {
        SplitRuleImp const& primary = *node.GetCompetitorImp(0);
        int const missing = primary.GetMissingValueMapping();
        bool const isPlaced = isBinary && missing >= 0;
        fallbacks_[pair] = {&node, -1, isPlaced ? missing : primary.GetDumbChildPos()};
        bool isFirst = true;
        for (unsigned int i = 0; i < node.GetNumSurrogates() && !isPlaced; ++i) {
            SplitRuleImp const* const rule = node.GetSurrogateImp(i);
            if (rule == nullptr) {
                continue;
            }
            std::optional<Sides> const sides = OneCut(*rule);
            if (isFirst && sides && ArePair(*sides) && rule->GetMissingValueMapping() < 0) {
                surrogateRecords_[pair] = MakeRecord(*rule, Index(2 * pair) + sides->below);
            } else {
                AddSurrogate(fallbacks_[pair], MakeSurrogate(*rule, sides, node.GetNumChildren()));
            }
            isFirst = false;
        }
    }

    void AddSurrogate(Fallback& fallback, Surrogate const& surrogate) {
        if (fallback.firstOther < 0) {
            fallback.firstOther = Index(tables_.surrogates.size());
        } else {
            tables_.surrogates.back().isLast = false;
        }
        tables_.surrogates.push_back(surrogate);
    }

    Record MakeRecord(SplitRuleImp const& rule, int next) {
        return {static_cast<OSplitRule const&>(rule).GetCutPoint(), Predictor(rule), next};
    }

    Surrogate MakeSurrogate(SplitRuleImp const& rule, std::optional<Sides> const& sides,
                            int numChildren) {
        if (!sides || numChildren > std::numeric_limits<std::int8_t>::max()) {
            return {0.0, AddRule(rule, numChildren), 0, 0, 0, true, true};
        }
        auto const position = [](int child) {
            return static_cast<std::int8_t>(std::max(child, -1));
        };
        return {static_cast<OSplitRule const&>(rule).GetCutPoint(),
                Predictor(rule),
                position(sides->below),
                position(sides->above),
                position(rule.GetMissingValueMapping()),
                false,
                true};
    }

    // Nothing for a rule of any other kind. The first rule asked for settles the missing-value code
    // of the tables: nothing for one with another code either, or with one that its bits do not
    // tell.
    std::optional<Sides> OneCut(SplitRuleImp const& rule) {
        OSplitRule const* const ordered = AsPlainOrdered(rule);
        if (ordered == nullptr || ordered->GetNumCutPoints() != 1) {
            return std::nullopt;
        }
        double const missingValue = ordered->GetMissingValue();
        bool const isToldByBits = missingValue != 0.0 && !std::isnan(missingValue);
        if (!isToldByBits || missingValue_.value_or(missingValue) != missingValue) {
            return std::nullopt;
        }
        missingValue_ = missingValue;
        return Sides{ChildOfCut(*ordered, ordered->GetCutPointItem(0)), ordered->GetUpperChild()};
    }

    int Predictor(SplitRuleImp const& rule) {
        int const predictor = rule.GetPredictorIndex();
        tables_.numPredictors =
            std::max(tables_.numPredictors, static_cast<std::size_t>(predictor) + 1);
        return predictor;
    }

    // Any negative answer of a rule places nothing.
    void AddPosition(int child) { tables_.positions.push_back(std::max(child, -1)); }

    int AddRule(SplitRuleImp const& rule, int numChildren) {
        Rule added{Rule::Own,
                   Predictor(rule),
                   numChildren,
                   Index(tables_.cuts.size()),
                   Index(tables_.positions.size()),
                   std::max(rule.GetMissingValueMapping(), -1),
                   0.0};
        OSplitRule const* const ordered = AsPlainOrdered(rule);
        if (ordered != nullptr && AreAscending(*ordered)) {
            added.kind = Rule::Intervals;
            added.count = ordered->GetNumCutPoints();
            added.missingValue = ordered->GetMissingValue();
            for (int i = 0; i < added.count; ++i) {
                OSplitRule::OSplitRuleItem const& cut = ordered->GetCutPointItem(i);
                tables_.cuts.push_back(cut.cutValue);
                AddPosition(ChildOfCut(*ordered, cut));
            }
            AddPosition(ordered->GetUpperChild());
        } else if (NSplitRule const* const nominal = AsPlainNominal(rule)) {
            added.kind = Rule::Codes;
            added.count = nominal->GetNumCodes();
            for (int code = 0; code < added.count; ++code) {
                int const child = nominal->GetCatMapping(code);
                AddPosition(child >= 0 ? child : added.missing);
            }
        } else {
            added.first = Index(tables_.clones.size());
            tables_.clones.emplace_back(rule.Clone());
        }
        tables_.rules.push_back(added);
        return Index(tables_.rules.size() - 1);
    }

    // Cut points moved out of order by hand are searched in their own order: by a clone.
    static bool AreAscending(OSplitRule const& rule) {
        for (int i = 1; i < rule.GetNumCutPoints(); ++i) {
            if (!(rule.GetCutPointItem(i - 1).cutValue < rule.GetCutPointItem(i).cutValue)) {
                return false;
            }
        }
        return true;
    }

    // In the place of a first surrogate that is no record; neither a leaf nor asked as a rule.
    static constexpr Record NoRecord = {0.0, -1, -1};

    RouterTables& tables_;
    std::vector<Record> records_;
    std::vector<Record> surrogateRecords_;
    std::vector<Fallback> fallbacks_;
    std::vector<NodeImp const*> leaves_;
    std::vector<Job> pending_;
    std::size_t sparePair_ = 0;  // left over by a pair of leaves, 0 for none
    std::optional<double> missingValue_;
};

}  // namespace

RouterTables::RouterTables(NodeImp const& root) { Compilation(*this).Run(root); }

}  // namespace tree_800
