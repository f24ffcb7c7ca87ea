#include "support/finished_algorithm.h"
#include "support/settings_snapshot.h"
#include "support/tree_builder.h"

#include <tree/tree.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <sstream>
#include <string>

// Its own executable: any allocation in it can be made to fail, and blocks are counted.

namespace {

constexpr long Never = -1;
long allocationsLeft = Never;  // until all fail
long numBlocks = 0;            // allocated and not yet released

// NOLINTBEGIN(cppcoreguidelines-no-malloc)
void* Allocate(std::size_t size, std::size_t alignment) {
    std::size_t const padded = (size + alignment - 1) / alignment * alignment;
    void* const block = allocationsLeft == 0 ? nullptr : std::aligned_alloc(alignment, padded);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    allocationsLeft -= allocationsLeft > 0 ? 1 : 0;
    ++numBlocks;
    return block;
}

void Release(void* block) noexcept {
    numBlocks -= block != nullptr ? 1 : 0;
    std::free(block);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

}  // namespace

// Arrays are named too: a sanitizer would serve them by itself.
[[gnu::noinline]] void* operator new(std::size_t size) { return Allocate(size, 16); }
[[gnu::noinline]] void* operator new[](std::size_t size) { return Allocate(size, 16); }
[[gnu::noinline]] void* operator new(std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}
[[gnu::noinline]] void operator delete(void* block) noexcept { Release(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
    Release(block);
}
[[gnu::noinline]] void operator delete[](void* block) noexcept { Release(block); }
[[gnu::noinline]] void operator delete[](void* block, std::size_t /*size*/) noexcept {
    Release(block);
}
[[gnu::noinline]] void operator delete(void* block, std::align_val_t /*alignment*/) noexcept {
    Release(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/,
                                       std::align_val_t /*alignment*/) noexcept {
    Release(block);
}

namespace tree_800 {
namespace {

using namespace test;

/// Makes the same subject again and again, and describes it part by part.
template <typename T>
struct Exhaustion {
    std::function<std::unique_ptr<T>()> make;
    std::function<Snapshot(T const&)> describe;
    bool isEachPartAlone = false;  // where an operation throws, some parts may be new already

    /// Runs the operation on fresh subjects with the n-th allocation failing, for every n until it
    /// succeeds: where it throws nothing may have changed, and nothing may ever leak.
    void Test(char const* name, std::function<void(T&)> const& operation) const {
        SCOPED_TRACE(name);
        Snapshot const before = describe(*make());
        auto const changed = make();
        operation(*changed);
        Snapshot const after = describe(*changed);
        long numFailures = 0;
        for (bool succeeded = false; !succeeded; ++numFailures) {
            SCOPED_TRACE(numFailures);
            long const blocksBefore = numBlocks;
            {
                auto const subject = make();
                allocationsLeft = numFailures;
                try {
                    operation(*subject);
                    succeeded = true;
                } catch (std::bad_alloc const&) {
                }
                allocationsLeft = Never;
                for (auto const& [part, value] : describe(*subject)) {
                    bool const isOld = !succeeded && value == before.at(part);
                    bool const mayBeNew = succeeded || isEachPartAlone;
                    ASSERT_TRUE(isOld || (mayBeNew && value == after.at(part))) << part << value;
                }
            }
            ASSERT_EQ(numBlocks, blocksBefore) << "leak";
        }
        EXPECT_GT(numFailures, 1) << "nothing was allocated";
    }
};

// What an object answers, as text.

template <typename LineOf>
std::string Lines(int n, LineOf const& lineOf) {
    std::string text = Line(n);
    for (int i = 0; i < n; ++i) {
        text += lineOf(i);
    }
    return text;
}

std::string Text(SplitRuleImp const& rule) {
    return Line("rule", rule.GetNumChildren(), rule.GetMissingValueMapping()) +
           Lines(30, [&](int i) { return Line(rule.Classify(0.5 * i - 0.5)); });
}

std::string Text(ClsInfo const& info) {
    return Line("classes", info.GetPrediction()) + Lines(info.GetNumClasses(), [&](int i) {
               return Line(info.GetClassCount(i), info.GetClassProbability(i));
           });
}

std::string Text(RegInfo const& info) {
    return Line("target", info.GetMean(), info.GetStdDev(), info.GetPrediction()) +
           Lines(info.GetNumBins(), [&](int i) { return Line(info.GetBinSize(i)); });
}

std::string Text(NodeImp const& node);

template <typename T>
std::string TextOrNone(T const* object) {
    return object != nullptr ? Text(*object) : "none";
}

std::string Text(NodeImp const& node) {
    int numValues = -1;
    node.GetNumPredictorValues(1, &numValues);
    auto const slot = [](int i) { return static_cast<unsigned int>(i); };
    return Line("node", node.GetNumPredictors(), numValues, node.GetNumCompetitors()) +
           Lines(static_cast<int>(node.GetNumSurrogates()),
                 [&](int i) { return TextOrNone(node.GetSurrogateImp(slot(i))); }) +
           TextOrNone(node.GetClsInfo(TrainingSample)) + Lines(node.GetNumChildren(), [&](int i) {
               return TextOrNone(node.GetChildImp(slot(i)));
           });
}

std::string Text(GainsSettings const& settings) {
    return Lines(settings.GetNumCategories(),
                 [&](int i) { return Line(settings.GetCategoryProfit(i)); });
}

template <typename T, typename Make, typename Describe>
Exhaustion<T> On(Make make, Describe describe) {
    return {make, [describe](T const& subject) { return Snapshot{{"all", describe(subject)}}; }};
}

template <typename T, typename Make>
Exhaustion<T> On(Make make) {
    return On<T>(make, [](T const& subject) { return Text(subject); });
}

/// Deletes what an operation hands to its caller.
template <typename T>
void Drop(T* made) {
    std::unique_ptr<T> const owned(made);
}

TEST(ExhaustionTest, Rules) {
    NValueSet codes;
    codes.Add(12);
    OValueSet const interval(4.0, 9.0);
    auto const other = Codes(0, {0, 1, 2, 0, 1, 2});
    auto const set = On<NValueSet>([] { return std::make_unique<NValueSet>(); },
                                   [](auto& s) { return Line(s.GetNumElements()); });
    set.Test("add", [](auto& s) { s.Add(9); });
    auto const ordered = On<OSplitRule>([] { return Cut(0, 3.5); });
    ordered.Test("clone", [](auto& rule) { Drop(rule.Clone()); });
    ordered.Test("mapped values", [](auto& rule) { Drop(rule.GetMappedValues(0)); });
    ordered.Test("insert", [&](auto& rule) { rule.InsertCutPoint(interval, false); });
    ordered.Test("copy mappings", [&](auto& rule) { rule.CopyMappings(*Cut(0, 9.0)); });
    auto const empty = On<OSplitRule>([] { return std::make_unique<OSplitRule>(0.0, 0); });
    empty.Test("add", [&](auto& rule) { rule.AddMappedValues(interval); });
    auto const nominal = On<NSplitRule>([] { return Codes(0, {0, 1}); });
    nominal.Test("mapped values", [](auto& rule) { Drop(rule.GetMappedValues(0)); });
    nominal.Test("add", [&](auto& rule) { rule.AddMappedValues(codes); });
    nominal.Test("set", [](auto& rule) { rule.SetCatMapping(7, 1); });
    nominal.Test("copy mappings", [&](auto& rule) { rule.CopyMappings(*other); });
    auto const handle =
        On<SplitRule>([] { return std::make_unique<SplitRule>(*Cut(0, 3.5)); },
                      [](auto& h) { return Text(*static_cast<SplitRuleImp const*>(h)); });
    handle.Test("assign", [&](auto& h) { h = SplitRule(*other); });
}

std::unique_ptr<NodeImp> MakeTree() {
    auto root = Split(Cut(0, 3.5), Leaf(0, {3.0, 1.0}),
                      Split(Codes(1, {0, 1}), Leaf(1, {0.0, 2.0}), Leaf(0, {2.0, 1.0})));
    SetSurrogates(*root, Codes(1, {1, 0}), Cut(2, 1.0));
    root->SetClsInfo(Counts(0, {5.0, 4.0}).release(), TrainingSample);
    root->SetNumPredictors(2);
    root->SetNumPredictorValues(1, 3);
    return root;
}

TEST(ExhaustionTest, Nodes) {
    double const values[] = {1.0, 2.0, 3.0, 4.0, 5.0};
    auto const other = Split(Cut(1, 0.5), MakeTree(), MakeTree());
    auto const tree = On<NodeImp>(MakeTree);
    tree.Test("clone", [](auto& root) { Drop(root.Clone()); });
    tree.Test("assign", [&](auto& root) { root = *other; });
    tree.Test("assign a child", [](auto& root) { root = *root.GetChildImp(1); });
    tree.Test("compare", [](auto& root) { EXPECT_TRUE(root == root); });
    tree.Test("competitor", [](auto& root) { Drop(root.GetCompetitor(0)); });
    tree.Test("reorder", [](auto& root) { root.ReorderSiblings({1, 0}); });
    tree.Test("predictors", [](auto& root) { root.SetNumPredictors(7); });
    tree.Test("values", [&](auto& root) { root.SetPredictorValues(1, values, 5); });
    tree.Test("compile", [](auto& root) { EXPECT_TRUE(TreeRouter::Compile(root, nullptr)); });
    auto const unsound = On<NodeImp>([] { return Inner(Leaf(0), Inner(Leaf(1))); });
    unsound.Test("check", [](auto& root) { EXPECT_EQ(CheckTree(root).size(), 2); });
    auto const node = On<NodeImp>([] { return std::make_unique<NodeImp>(); });
    node.Test("children", [](auto& n) { n.SetNumChildren(3); });
    node.Test("surrogates", [](auto& n) { n.SetNumSurrogates(9); });
    auto const classes = On<ClsInfoImp>([] { return Counts(1, {1.0, 2.0}); });
    classes.Test("number of classes", [](auto& info) { info.SetNumClasses(5); });
    classes.Test("assign", [](auto& info) { info = *Counts(0, {1.0, 2.0, 3.0}); });
}

std::unique_ptr<RegInfoImp> MakeTarget(int numBins) {
    auto info = std::make_unique<RegInfoImp>();
    info->SetMean(numBins);
    info->SetCount(7.0 * numBins);
    info->SetNumBins(numBins);
    return info;
}

/// Two nodes seen as one, whose pooled information was asked for before they changed.
struct Aggregate {
    Aggregate() {
        classes->SetClsInfo(Counts(0, {1.0, 2.0, 3.0}).release(), TrainingSample);
        target.SetRegInfo(MakeTarget(5).release(), TrainingSample);
    }

    std::unique_ptr<NodeImp> classes = Leaf(0, {1.0, 2.0});
    NodeImp target;
    CumulativeNode sum{{classes.get(), &target}};
    ClsInfo const* pooledClasses = sum.GetClsInfo(TrainingSample);
    RegInfo const* pooledTarget = sum.GetRegInfo(TrainingSample);
};

TEST(ExhaustionTest, PooledInformation) {
    auto const target = On<RegInfoImp>([] { return MakeTarget(2); });
    target.Test("assign", [](auto& info) { info = *MakeTarget(4); });
    target.Test("bins", [](auto& info) { info.SetNumBins(9); });
    target.Test("statistic",
                [](auto& info) { info.SetExtendedStatistic(RegInfoImp::StoreStdDev, 2.0); });
    auto const pooled =
        On<Aggregate>([] { return std::make_unique<Aggregate>(); },
                      [](auto& a) { return Text(*a.pooledClasses) + Text(*a.pooledTarget); });
    pooled.Test("classes", [](auto& a) { a.sum.GetClsInfo(TrainingSample); });
    pooled.Test("target", [](auto& a) { a.sum.GetRegInfo(TrainingSample); });
}

TEST(ExhaustionTest, Statistics) {
    auto root = Split(Cut(0, 3.5), Leaf(0, {3.0, 1.0}),
                      Inner(Leaf(0), Leaf(1), Leaf(0), Leaf(1), Leaf(0, {2.0, 1.0})));
    root->SetClsInfo(Counts(0, {5.0, 2.0}).release(), TrainingSample);
    FinishedAlgorithm const run(std::move(root));
    TreeStatisticsImp const gathered(run, 0.5, 0.1, NoValidation);
    auto const statistics = On<TreeStatisticsImp>(
        [] {
            auto made = std::make_unique<TreeStatisticsImp>();
            made->SetIsCls(true);
            made->SetNumClasses(3);
            return made;
        },
        [](auto& s) { return (std::ostringstream() << s).str(); });
    statistics.Test("initialize", [&](auto& s) { s.Initialize(run, 0.5, 0.1, NoValidation); });
    statistics.Test("number of classes", [](auto& s) { s.SetNumClasses(5); });
    statistics.Test("add",
                    [&](auto& s) { s.AddMisclassificationInfo(run.GetRoot(), TrainingSample); });
    auto const handle = On<TreeStatistics>([] { return std::make_unique<TreeStatistics>(); },
                                           [](auto& h) { return Line(h.GetRisk()); });
    handle.Test("assign", [&](auto& h) { h = gathered; });
    auto const gains = On<GainsSettings>([] { return std::make_unique<GainsSettings>(); });
    gains.Test("revenue", [](auto& settings) { settings.SetCategoryRevenue(6, 1.0); });
    gains.Test("assign", [](auto& settings) { settings = GainsSettings(); });
}

TEST(ExhaustionTest, Weighting) {
    CostImp costs;
    costs.Set(1, 0, 3.0);
    auto const cost = On<CostImp>([&] { return std::make_unique<CostImp>(costs); },
                                  [](auto& c) { return Describe(PriorsImp(), c); });
    cost.Test("set", [](auto& c) { c.Set(4, 1, 2.0); });
    cost.Test("default", [](auto& c) { c.SetDefault(CostImp::WorkingMatrix, 3); });
    cost.Test("grow", [](auto& c) { c.Resize(4); });
    cost.Test("shrink", [](auto& c) { c.Resize(1); });
    auto const priors = On<PriorsImp>(
        [] {
            auto made = std::make_unique<PriorsImp>();
            made->Set(1, 0.5);
            made->Set(0, 0.5, PriorsImp::SecondPriors);
            made->AlterValues(true);
            return made;
        },
        [&](auto& p) { return Describe(p, costs); });
    priors.Test("clone", [](auto& p) { Drop(p.Clone()); });
    priors.Test("set", [](auto& p) { p.Set(4, 0.5); });
    priors.Test("set in another", [](auto& p) { p.Set(4, 0.5, PriorsImp::ThirdPriors); });
    priors.Test("resize", [](auto& p) { p.Resize(7); });
    priors.Test("alter", [&](auto& p) { p.ComputeAltered(costs); });
    auto const scores = On<ScoresImp>([] { return std::make_unique<ScoresImp>(); },
                                      [](auto& s) { return Line(s.GetNumClasses(), s.GetType()); });
    scores.Test("set", [](auto& s) { s.Set(4, 0.5); });
}

Exhaustion<AlgSettings> OnSettings(AlgorithmKind kind, bool isEachPartAlone = false) {
    return {[kind] {
                auto settings = MakeSettings(kind, MakeCore(7));
                ChangeAll(*settings, 1);
                return settings;
            },
            SnapshotOf, isEachPartAlone};
}

TEST(ExhaustionTest, Settings) {
    for (AlgorithmKind const kind : Kinds) {
        for (AlgorithmKind const sourceKind : Kinds) {
            SCOPED_TRACE(std::to_string(kind) + " from " + std::to_string(sourceKind));
            auto const source = MakeSettings(sourceKind, MakeCore(9));
            ChangeAll(*source, 2);
            OnSettings(kind, true).Test("copy", [&](auto& settings) {
                settings.CopyFrom(*source);
            });
        }
        auto const source = MakeSettings(kind, MakeCore(9));
        OnSettings(kind).Test("clone", [](auto& s) { Drop(s.Clone()); });
        OnSettings(kind).Test("init", [&](auto& s) {
            s.Init(3, 4, source->GetCoreSettings(), nullptr, source->GetStopRule());
        });
    }
    CCartSettingsImp const cart(MakeCore(9));
    OnSettings(ClassificationCart).Test("cart", [&](auto& settings) {
        dynamic_cast<CCartSettingsImp&>(settings).Init(*cart.GetPriors(), *cart.GetCost(),
                                                       TwoingCriterion);
    });
    CChaidSettingsImp const chaid(MakeCore(9));
    OnSettings(ClassificationChaid).Test("chaid", [&](auto& settings) {
        dynamic_cast<CChaidSettingsImp&>(settings).Init(0.5, PearsonChiSquare, 7, *chaid.GetCost(),
                                                        *chaid.GetPriors(), *chaid.GetScores());
    });
    OnSettings(ClassificationQuest).Test("quest", [](auto& settings) {
        dynamic_cast<QuestSettingsImp&>(settings).Init(0.5, 3, 7, nullptr, nullptr, nullptr);
    });
    auto const core =
        On<CoreSettingsImp>([] { return std::make_unique<CoreSettingsImp>(MakeCore(2)); },
                            [](auto& c) { return Line(c.GetNumPredictors()); });
    core.Test("clone", [](auto& c) { Drop(c.Clone()); });
    core.Test("add", [](auto& c) { c.AddPredictor(); });
}

TEST(ExhaustionTest, ReadingAllocatesNothing) {
    auto const root = MakeTree();
    double const row[] = {systemMissingValue(), 7.0, 0.5};
    PrefixNodeIterator walk(root.get());
    allocationsLeft = 0;
    NodeImp const* const leaf = root->DropObservationThroughTree(row, nullptr);
    int numNodes = 0;
    while (walk.Next() != nullptr) {
        ++numNodes;
    }
    root->RemoveChildren(false);
    allocationsLeft = Never;
    EXPECT_NE(leaf, root.get());
    EXPECT_EQ(numNodes, 5);
}

}  // namespace
}  // namespace tree_800
