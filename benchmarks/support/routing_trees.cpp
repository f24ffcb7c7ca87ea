#include "benchmarks/support/routing_trees.h"

#include "benchmarks/support/sizes.h"
#include "tests/support/tree_builder.h"

#include <tree/data_sample.h>
#include <tree/host.h>
#include <tree/nominal_split_rule.h>
#include <tree/ordered_split_rule.h>
#include <tree/value_set.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>
#include <random>
#include <stdexcept>
#include <utility>

namespace tree_800::bench {

namespace {

// How uneven the splits are decides the depth: leastShare is the least share of a node's rows that
// a child receives.
struct BinaryShape {
    int leaves;
    double leastShare;
};
constexpr BinaryShape BinaryShapes[] = {
    {31, 0.42}, {1'000, 0.22}, {30'000, 0.01}, {1'000'000, 0.45}};
constexpr int MostLeavesOfSmokeRun = 30'000;

struct Interval {
    double low = 0.0;
    double high = 1.0;

    double At(double share) const { return low + share * (high - low); }
};

int NumCategories(std::size_t predictor) { return 10 + static_cast<int>(predictor / 2) * 30 / 9; }

bool IsNominal(std::size_t predictor) { return predictor % 2 == 1; }

// Makes trees downward at random. The recursion is harmless: no tree is deeper than some dozens of
// nodes.
class TreeMaker {
public:
    virtual ~TreeMaker() = default;

    // NOLINTNEXTLINE(misc-no-recursion)
    std::unique_ptr<NodeImp> Make(int leaves) {
        auto node = leaves == 1 ? MakeLeaf() : MakeSplit(leaves);
        node->SetClsInfo(
            test::Counts(leaves % 3, {1.0 * leaves, 2.0 * leaves, 3.0 * leaves}).release(),
            TrainingSample);
        return node;
    }

protected:
    explicit TreeMaker(int seed) : random_(static_cast<unsigned int>(seed)) {}

    std::size_t Below(std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n - 1)(random_);
    }
    double Between(double low, double high) {
        return std::uniform_real_distribution(low, high)(random_);
    }
    void Shuffle(std::vector<int>& values) { std::shuffle(values.begin(), values.end(), random_); }

private:
    // A node with rules, and with children that have so many leaves together.
    virtual std::unique_ptr<NodeImp> MakeSplit(int leaves) = 0;

    std::unique_ptr<NodeImp> MakeLeaf() {
        auto leaf = std::make_unique<NodeImp>();
        leaf->SetId(numLeaves_++);
        return leaf;
    }

    std::mt19937_64 random_;
    unsigned int numLeaves_ = 0;
};

class BinaryTreeMaker : public TreeMaker {
public:
    explicit BinaryTreeMaker(BinaryShape const& shape)
        : TreeMaker(shape.leaves), leastShare_(shape.leastShare) {}

private:
    // NOLINTNEXTLINE(misc-no-recursion)
    std::unique_ptr<NodeImp> MakeSplit(int leaves) override {
        double const wanted = Between(leastShare_, 1.0 - leastShare_) * leaves;
        int const below = std::clamp(static_cast<int>(std::lround(wanted)), 1, leaves - 1);
        double const share = 1.0 * below / leaves;
        std::size_t const predictor = Below(NumPredictors);
        Interval const whole = box_[predictor];
        auto primary = test::Cut(static_cast<int>(predictor), whole.At(share));
        primary->SetDumbRule(share < 0.5 ? 1 : 0, std::max(share, 1.0 - share));
        auto first = MakeSurrogate(predictor, share);
        auto second = MakeSurrogate(predictor, share);

        box_[predictor].high = whole.At(share);
        auto lower = Make(below);
        box_[predictor] = {whole.At(share), whole.high};
        auto upper = Make(leaves - below);
        box_[predictor] = whole;
        auto node = test::Split(std::move(primary), std::move(lower), std::move(upper));
        test::SetSurrogates(*node, std::move(first), std::move(second));
        return node;
    }

    // A rule on another predictor that sends the same share of the rows to the first child.
    std::unique_ptr<OSplitRule> MakeSurrogate(std::size_t primary, double share) {
        std::size_t const predictor = (primary + 1 + Below(NumPredictors - 1)) % NumPredictors;
        bool const isReverse = Below(2) == 1;
        auto rule = test::Cut(static_cast<int>(predictor),
                              box_[predictor].At(isReverse ? 1.0 - share : share));
        if (isReverse) {
            rule->SetReverse();
        }
        return rule;
    }

    double leastShare_;
    std::array<Interval, NumPredictors> box_;  // the values that reach the node under construction
};

class MultiwayTreeMaker : public TreeMaker {
public:
    explicit MultiwayTreeMaker(int leaves) : TreeMaker(leaves) {
        for (std::size_t i = 0; i < NumPredictors; ++i) {
            codes_[i].resize(static_cast<std::size_t>(NumCategories(i)));
            std::iota(codes_[i].begin(), codes_[i].end(), 0);
        }
    }

private:
    // NOLINTNEXTLINE(misc-no-recursion)
    std::unique_ptr<NodeImp> MakeSplit(int leaves) override {
        std::size_t const numChildren =
            2 + Below(static_cast<std::size_t>(std::min(leaves, 5)) - 1);
        std::size_t const predictor = Below(NumPredictors);
        auto node = std::make_unique<NodeImp>();
        node->SetNumChildren(static_cast<int>(numChildren));
        if (IsNominal(predictor) && codes_[predictor].size() >= numChildren) {
            SplitCodes(*node, predictor, leaves);
        } else {
            SplitInterval(*node, predictor - predictor % 2, leaves);
        }
        node->GetCompetitorImp(0)->SetDumbRule(static_cast<int>(numChildren) - 1,
                                               1.0 / static_cast<double>(numChildren));
        return node;
    }

    // NOLINTNEXTLINE(misc-no-recursion)
    void SplitInterval(NodeImp& node, std::size_t predictor, int leaves) {
        int const numChildren = node.GetNumChildren();
        Interval const whole = interval_[predictor];
        auto const end = [&](int i) { return whole.At(1.0 * i / numChildren); };

        auto rule = std::make_unique<OSplitRule>(systemMissingValue(), static_cast<int>(predictor));
        OValueSet values;
        for (int i = 1; i < numChildren; ++i) {
            values.SetRightEnd(end(i));  // what lies below the ends so far has its child already
            rule->AddMappedValues(values);
        }
        values = OValueSet();
        values.SetLeftEnd(end(numChildren - 1));
        rule->AddMappedValues(values);
        if (!rule->IsValid() || rule->GetNumChildren() != numChildren) {
            throw std::logic_error("an ordered rule refuses its intervals");
        }
        test::SetCompetitors(node, std::move(rule));

        AddChildren(node, leaves, [&](int i) { interval_[predictor] = {end(i), end(i + 1)}; });
        interval_[predictor] = whole;
    }

    // NOLINTNEXTLINE(misc-no-recursion)
    void SplitCodes(NodeImp& node, std::size_t predictor, int leaves) {
        int const numChildren = node.GetNumChildren();
        std::vector<int> codes = codes_[predictor];
        Shuffle(codes);
        auto const end = [&](int i) {
            return codes.begin() + static_cast<std::ptrdiff_t>(codes.size()) * i / numChildren;
        };

        auto rule =
            std::make_unique<NSplitRule>(static_cast<int>(predictor), NumCategories(predictor));
        for (int i = 0; i < numChildren; ++i) {
            std::for_each(end(i), end(i + 1), [&](int code) { rule->SetCatMapping(code, i); });
        }
        test::SetCompetitors(node, std::move(rule));

        AddChildren(node, leaves, [&](int i) { codes_[predictor].assign(end(i), end(i + 1)); });
        codes_[predictor] = std::move(codes);
    }

    // Makes the children, having narrowed what reaches the node to what reaches each.
    template <typename Narrow>
    void AddChildren(NodeImp& node, int leaves, Narrow narrow) {  // NOLINT(misc-no-recursion)
        int const numChildren = node.GetNumChildren();
        for (int i = 0; i < numChildren; ++i) {
            narrow(i);
            test::SetChild(node, i,
                           Make(leaves * (i + 1) / numChildren - leaves * i / numChildren));
        }
    }

    std::array<Interval, NumPredictors> interval_;       // the values and
    std::array<std::vector<int>, NumPredictors> codes_;  // the categories that reach the node
};

std::unique_ptr<NodeImp> Copy(NodeImp const& tree) {
    return std::unique_ptr<NodeImp>(tree.Clone());
}

template <typename MakeValue>
std::vector<double> MakeRows(int missingPercent, MakeValue makeValue) {
    std::mt19937_64 random(static_cast<unsigned int>(missingPercent));
    std::uniform_real_distribution uniform(0.0, 1.0);
    std::vector<double> rows(NumRows() * NumPredictors);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        bool const isMissing = missingPercent > 0 && uniform(random) < missingPercent / 100.0;
        rows[i] = isMissing ? systemMissingValue() : makeValue(i % NumPredictors, uniform(random));
    }
    return rows;
}

}  // namespace

std::size_t NumRows() { return IsSmokeRun() ? 1'000 : 1'000'000; }

void BinarySizes(benchmark::internal::Benchmark* benchmark) {
    for (BinaryShape const& shape : BinaryShapes) {
        if (!IsSmokeRun() || shape.leaves <= MostLeavesOfSmokeRun) {
            benchmark->Arg(shape.leaves);
        }
    }
}

std::unique_ptr<NodeImp> BuildBinaryTree(int leaves) {
    auto const* const shape =
        std::find_if(std::begin(BinaryShapes), std::end(BinaryShapes),
                     [leaves](BinaryShape const& s) { return s.leaves == leaves; });
    if (shape == std::end(BinaryShapes)) {
        throw std::invalid_argument("no shape for a binary tree of so many leaves");
    }
    return BinaryTreeMaker(*shape).Make(leaves);
}

std::unique_ptr<NodeImp> MakeBinaryTree(int leaves) { return Copy(*BuildBinaryTree(leaves)); }

std::vector<double> MakeOrderedRows(int missingPercent) {
    return MakeRows(missingPercent, [](std::size_t /*predictor*/, double value) { return value; });
}

std::unique_ptr<NodeImp> MakeMultiwayTree(int leaves) {
    return Copy(*MultiwayTreeMaker(leaves).Make(leaves));
}

std::vector<double> MakeMixedRows(int missingPercent) {
    return MakeRows(missingPercent, [](std::size_t predictor, double value) {
        return IsNominal(predictor) ? std::floor(value * NumCategories(predictor)) : value;
    });
}

}  // namespace tree_800::bench
