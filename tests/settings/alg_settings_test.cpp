#include "support/settings_snapshot.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tree_800 {
namespace {

using namespace test;

// What CopyFrom takes over: the row receives from the column.
std::vector<std::string> const Carried[5][5] = {
    //  R CART            C CART                     R CHAID            C CHAID       QUEST
    {{"base", "cart"}, {"base", "cart"}, {"base"}, {"base"}, {"base"}},
    {{"base", "cart"}, {"base", "cart", "ccart"}, {"base"}, {"base"}, {"base"}},
    {{"base"}, {"base"}, {"base", "chaid"}, {"base", "chaid"}, {"base"}},
    {{"base"}, {"base"}, {"base", "chaid"}, {"base", "chaid", "cchaid"}, {"base"}},
    {{"base"}, {"base"}, {"base"}, {"base"}, {"base", "quest"}},
};

TEST(AlgSettingsTest, CopyFromTakesOverWhatTheKindsShare) {
    for (AlgorithmKind const receiverKind : Kinds) {
        for (AlgorithmKind const sourceKind : Kinds) {
            SCOPED_TRACE(std::to_string(receiverKind) + " from " + std::to_string(sourceKind));
            auto const receiver = MakeSettings(receiverKind, MakeCore(7));
            auto const source = MakeSettings(sourceKind, MakeCore(9));
            ChangeAll(*receiver, 1);
            ChangeAll(*source, 2);
            Snapshot expected = SnapshotOf(*receiver);
            Snapshot const sources = SnapshotOf(*source);
            for (std::string const& part : Carried[receiverKind][sourceKind]) {
                ASSERT_NE(expected.at(part), sources.at(part));
                expected[part] = sources.at(part);
            }
            receiver->CopyFrom(*source);
            EXPECT_EQ(SnapshotOf(*receiver), expected);

            ChangeAll(*source, 3);
            EXPECT_EQ(SnapshotOf(*receiver), expected) << "a part is shared";
            receiver->CopyFrom(*receiver);
            EXPECT_EQ(SnapshotOf(*receiver), expected) << "copied from itself";
        }
    }
}

TEST(AlgSettingsTest, ACloneEqualsItsSourceAndOwnsItsParts) {
    for (AlgorithmKind const kind : Kinds) {
        SCOPED_TRACE(kind);
        auto const source = MakeSettings(kind, MakeCore(7));
        ChangeAll(*source, 1);
        Snapshot const before = SnapshotOf(*source);
        std::unique_ptr<AlgSettings> const clone(source->Clone());
        EXPECT_EQ(clone->GetType(), kind);
        EXPECT_EQ(SnapshotOf(*clone), before);
        ChangeAll(*clone, 2);
        EXPECT_EQ(SnapshotOf(*source), before);
    }
}

TEST(AlgSettingsTest, NewSettings) {
    struct {
        int predictors, competitors, cartSurrogates, questSurrogates;
    } const rows[] = {{10, 5, 5, 5}, {6, 5, 5, 5}, {5, 5, 4, 4},
                      {3, 3, 2, 2},  {1, 1, 0, 0}, {0, 1, 0, -1}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.predictors);
        CCartSettingsImp const cart(MakeCore(row.predictors));
        QuestSettingsImp const quest(MakeCore(row.predictors));
        EXPECT_EQ(cart.GetMaxNumCompetitors(), row.competitors);
        EXPECT_EQ(cart.GetMaxNumSurrogates(), row.cartSurrogates);
        EXPECT_EQ(quest.GetMaxNumSurrogates(), row.questSurrogates);
    }
    auto const base = [](char const* maxDepth) {
        return Line("1 25 0 0 0 10 2000000 0.0001 100 0 50 0", maxDepth,
                    "2 0 -1.79769e+308 1 2 10 -1.79769e+308 1");
    };
    std::string const chaid = " 0.05 0.05 0.025 0 0 1";
    Snapshot const defaults[] = {
        {{"base", base("5")}, {"cart", " 1 0 0"}},
        {{"base", base("5")}, {"cart", " 1 0 0"}, {"ccart", " priors 0 0 cost 0 0"}},
        {{"base", base("3")}, {"chaid", chaid}},
        {{"base", base("3")},
         {"chaid", chaid},
         {"cchaid", " 0.001 100 0 scores 0 priors 1 0 cost 0"}},
        {{"base", base("5")}, {"quest", " 0.05 0 32 1 0 priors 0 0 cost 0"}},
    };
    for (AlgorithmKind const kind : Kinds) {
        EXPECT_EQ(SnapshotOf(*MakeSettings(kind, MakeCore(1))), defaults[kind]);
    }
}

TEST(AlgSettingsTest, CountsAreClampedOrRefused) {
    CCartSettingsImp cart(MakeCore(10));
    QuestSettingsImp quest(MakeCore(10));
    struct {
        int n, competitors, categories, cartSurrogates, questSurrogates, nomCats;
    } const rows[] = {{3, 3, 3, 3, 3, 3},    {0, 3, 3, 0, 0, 3}, {-2, 3, 3, 0, 0, 3},
                      {8, 8, 8, 8, 8, 8},    {9, 9, 9, 9, 8, 9}, {10, 10, 10, 9, 8, 10},
                      {50, 10, 50, 9, 8, 50}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.n);
        cart.SetMaxNumCompetitors(row.n);
        cart.SetMaxNominalPredCategories(row.n);
        cart.SetMaxNumSurrogates(row.n);
        quest.SetMaxNumSurrogates(row.n);
        quest.SetMaxNumNomCatsSurr(row.n);
        EXPECT_EQ(cart.GetMaxNumCompetitors(), row.competitors);
        EXPECT_EQ(cart.GetMaxNominalPredCategories(), row.categories);
        EXPECT_EQ(cart.GetMaxNumSurrogates(), row.cartSurrogates);
        EXPECT_EQ(quest.GetMaxNumSurrogates(), row.questSurrogates);
        EXPECT_EQ(quest.GetMaxNumNomCatsSurr(), row.nomCats);
    }
    cart.AlgSettings::Init(50, -3, cart.GetCoreSettings(), nullptr, nullptr);
    EXPECT_EQ(cart.GetMaxNumCompetitors(), 10);
    EXPECT_EQ(cart.GetMaxNominalPredCategories(), -3);
    quest.Init(0.01, 50, -3, nullptr, nullptr, nullptr);
    EXPECT_EQ(quest.GetMaxNumSurrogates(), 50);
    EXPECT_EQ(quest.GetMaxNumNomCatsSurr(), -3);
}

// A settings object keeps the level of the target that it was made for, if exactly one is 2.
TEST(AlgSettingsTest, CopiedTargetLevel) {
    auto const coreOf = [](int level) {
        CoreSettingsImp core;
        core.GetTarget()->SetMeasurementLevel(static_cast<global_800::MeasurementLevel>(level));
        return core;
    };
    struct {
        int receiver, source, result;
    } const rows[] = {{2, 1, 2}, {1, 2, 1}, {0, 2, 0}, {1, 3, 3}, {3, 1, 1}, {2, 2, 2}, {2, 0, 2}};
    for (auto const& row : rows) {
        RChaidSettingsImp receiver(coreOf(row.receiver));
        receiver.CopyFrom(CCartSettingsImp(coreOf(row.source)));
        EXPECT_EQ(int{receiver.GetCoreSettings()->GetTarget()->GetMeasurementLevel()}, row.result);
    }
}

TEST(AlgSettingsTest, InitWithOwnParts) {
    CCartSettingsImp cart(MakeCore(7));
    CChaidSettingsImp chaid(MakeCore(7));
    QuestSettingsImp quest(MakeCore(7));
    AlgSettings* const all[] = {&cart, &chaid, &quest};
    std::vector<Snapshot> before;
    for (AlgSettings* const settings : all) {
        ChangeAll(*settings, 1);
        before.push_back(SnapshotOf(*settings));
        settings->Init(settings->GetMaxNumCompetitors(), settings->GetMaxNominalPredCategories(),
                       settings->GetCoreSettings(), settings->GetValidationSpec(),
                       settings->GetStopRule());
    }
    Cost const* const chaidCost = chaid.GetCost();
    cart.CartSettings::Init(cart.GetPruningSpec(), cart.GetMaxNumSurrogates());
    cart.Init(*cart.GetPriors(), *cart.GetCost(), cart.GetSplitCriteria());
    chaid.Init(chaid.GetConvergenceEpsilon(), chaid.GetChiSquareMethod(),
               chaid.GetMaxNumIterations(), *chaid.GetCost(), *chaid.GetPriors(),
               *chaid.GetScores());
    quest.Init(quest.GetAlphaOfVariableSelection(), quest.GetMaxNumSurrogates(),
               quest.GetMaxNumNomCatsSurr(), quest.GetPruningSpec(), quest.GetPriors(),
               quest.GetCost());
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(SnapshotOf(*all[i]), before[i]);
    }
    EXPECT_EQ(chaid.GetCost(), chaidCost) << "its own parts stay in place";
    quest.SetAlphaOfVariableSelection(0.3);
    EXPECT_EQ(quest.GetAlphaOfVariableSelection(), 0.3);
}

TEST(ChaidSettingsTest, MergeSplitFollowsMergeAndMethodsAreChecked) {
    RChaidSettingsImp chaid(MakeCore(1));
    chaid.SetAlphaOfMergeSplit(0.3);
    chaid.SetAlphaOfMerge(0.1);
    EXPECT_TRUE(chaid.GetAlphaOfMerge() == 0.1 && chaid.GetAlphaOfMergeSplit() == 0.05);
    chaid.SetAlphaOfMergeSplit(0.3);
    EXPECT_EQ(chaid.GetAlphaOfMergeSplit(), 0.3);
    for (int const method : {1, 2, -1}) {
        chaid.SetSplitMergeMethod(static_cast<SplitMergeMethod>(method));
        EXPECT_EQ(chaid.GetSplitMergeMethod(), ExhaustiveMerge);
    }
}

// What it makes stays alive for ever once it is assigned to: the leak checkers are told to look
// away from this function (see leak_checkers.cpp and valgrind.supp).
[[gnu::noinline]] std::unique_ptr<CoreSettingsImp> MakeCoreToBeReplaced() {
    return std::make_unique<CoreSettingsImp>(MakeCore(2));
}

TEST(CoreSettingsTest, AssignmentKeepsWhatItReplacesAlive) {
    std::unique_ptr<CoreSettingsImp> const owner = MakeCoreToBeReplaced();
    CoreSettingsImp& core = *owner;
    VariableSettings* const target = core.GetTarget();
    VariableSettings* const predictor = core.GetPredictor(0);
    target->SetNumValues(5);
    CoreSettingsImp other = MakeCore(3);
    other.SetHasFreqWeight(true);
    other.GetTarget()->SetNumValues(7);
    CoreSettings const& self = core;
    core = self;
    EXPECT_EQ(core.GetTarget(), target);
    core = other;
    EXPECT_TRUE(target->GetNumValues() == 5 && core.GetTarget()->GetNumValues() == 7);
    EXPECT_EQ(predictor->GetNumValues(), 20);
    EXPECT_TRUE(core.HasFreqWeight() && !core.HasCaseWeight());
    ASSERT_EQ(core.GetNumPredictors(), 3);
    EXPECT_EQ(core.GetPredictor(2)->GetNumValues(), 32);
}

}  // namespace
}  // namespace tree_800
