#include "support/equality.h"
#include "support/probe_rule.h"
#include "support/tree_builder.h"

#include <tree/split_rule.h>
#include <tree/value_set.h>
#include <tree/variable_settings.h>

#include <cmath>

namespace tree_800 {
namespace {

using namespace test;

TEST(SplitRuleBase, CreationKindsReplaceEachOther) {
    ProbeRule rule({0});
    EXPECT_EQ(rule.GetCreationFlags(), 1);
    int const setAndFlags[][2] = {{2, 2}, {4, 6}, {1, 5}, {3, 7}, {2, 6}};
    for (auto const& [set, flags] : setAndFlags) {
        rule.SetProperty(static_cast<SplitRulePropertyFlag>(set));
        EXPECT_EQ(rule.GetCreationFlags(), flags);
    }
    EXPECT_FALSE(rule.HasProperty(SplitRuleCreatedDefault));
    EXPECT_TRUE(rule.HasProperty(SplitRuleCreatedDefault | SplitRuleMappingsReordered));
}

TEST(SplitRuleBase, HighestRecognisedBitNamesTheSlot) {
    int const flagAndSlot[][2] = {{0, -1}, {1, 0}, {3, 1}, {8, 3}, {24, -1}, {128, -1}, {129, 0}};
    for (auto const& [flag, slot] : flagAndSlot) {
        EXPECT_EQ(SplitRuleImp::GetFlagPosition(static_cast<StatisticFlag>(flag)), slot) << flag;
    }
}

TEST(SplitRuleBase, StatisticIsPresentWithAllItsBitsAndReadableWithASlot) {
    constexpr auto Slots01 = StatisticSlot0 | StatisticSlot1;
    ProbeRule rule({0});
    double out = 77.0;
    rule.SetStatistic(StatisticSlot0, 1.5);
    rule.SetStatistic(Slots01, 2.5);  // refused: only a part is present
    EXPECT_FALSE(rule.HasStatistic(Slots01));
    EXPECT_EQ(rule.GetStatistic(StatisticSlot1), systemMissingValue());
    rule.SetStatistic(StatisticSlot1, 3.5);
    rule.SetStatistic(Slots01, 4.5);  // all present: stored in the slot of the highest bit
    EXPECT_EQ(rule.GetStatistic(StatisticSlot0), 1.5);
    EXPECT_EQ(rule.GetStatistic(StatisticSlot1), 4.5);
    rule.SetStatistic(StatisticUnstored16, 9.0);
    EXPECT_TRUE(rule.HasStatistic(StatisticUnstored16) && rule.HasStatistic(StatisticFlag{}));
    for (StatisticFlag const unreadable : {StatisticUnstored16, StatisticSlot2, StatisticFlag{}}) {
        EXPECT_FALSE(rule.GetStatistic(unreadable, &out));
    }
    EXPECT_EQ(out, 77.0);
}

TEST(SplitRuleBase, EqualityAndClonesCoverTheBaseAlone) {
    std::unique_ptr<SplitRuleImp> const sources[] = {Cut(3, 1.0), Codes(3, {0, 1})};
    for (auto const& source : sources) {
        source->SetDumbRule(0, -1.0);
        source->SetStatistic(StatisticSlot0, 1.0);
        ExpectEqualityCovers<SplitRuleImp>(
            *source,
            {{"statistic", [](auto& rule) { rule.SetStatistic(StatisticSlot0, 2.0); }},
             {"last slot", [](auto& rule) { rule.SetStatistic(StatisticSlot3, 2.0); }},
             {"flag", [](auto& rule) { rule.SetStatistic(StatisticUnstored32, 2.0); }},
             {"dumb child", [](auto& rule) { rule.SetDumbRule(1, -1.0); }},
             {"dumb probability", [](auto& rule) { rule.SetDumbRule(0, 0.75); }},
             {"missing child", [](auto& rule) { rule.AddMissingValueMapping(true); }},
             {"property", [](auto& rule) { rule.SetProperty(SplitRuleCreatedAlternate); }}});
    }
    EXPECT_TRUE(*Cut(3, 1.0) == *Codes(3, {1}));
    EXPECT_FALSE(*Cut(3, 1.0) == *Cut(4, 1.0));
}

std::unique_ptr<OSplitRule> CutWithCode(double missingCode) {
    auto rule = std::make_unique<OSplitRule>(missingCode, 0);
    EXPECT_TRUE(rule->CopyMappings(*Cut(0, 1.0)));  // the code stays
    return rule;
}

template <typename Rule>
std::unique_ptr<Rule> MappingMissing(std::unique_ptr<Rule> rule, bool newChild) {
    rule->AddMissingValueMapping(newChild);
    return rule;
}

TEST(SplitRuleBase, ComparingTellsWhatDiffers) {
    auto const changed = [](auto change) {
        auto rule = Cut(0, 1.0);
        change(*rule);
        return rule;
    };
    auto const addCut = [](auto& rule) { rule.InsertCutPoint(OValueSet(2.0, 3.0), true); };
    auto const setFlag = [](auto& rule) { rule.IsPresent(1.0)->cutPointAbove = true; };
    auto const setCutChild = [](auto& rule) { rule.IsPresent(1.0)->child = 2; };
    auto const setUpper = [](auto& rule) { rule.ReorderMappings({0, 2}); };
    struct {
        std::unique_ptr<SplitRuleImp> rule, other;
        int answer;
    } const rows[] = {
        {Cut(0, 1.0), Cut(0, 1.0 + 1e-13), 0},
        {Cut(0, 1.0), Cut(0, 1.0 + 1e-11), 1},
        {Cut(0, 1.0 + 1e-11), Cut(0, 1.0), 1},
        {Cut(0, 1.0), Cut(0, std::nan("")), 0},
        {Cut(0, 1.0), changed(setFlag), 0},
        {Cut(0, 1.0), changed(setCutChild), 1},
        {Cut(0, 1.0), changed(setUpper), 1},
        {Cut(0, 1.0), changed(addCut), 1},
        {changed(addCut), Cut(0, 1.0), 1},
        {Cut(0, 1.0), MappingMissing(Cut(0, 1.0), false), 1},
        {Cut(0, 2.0), CutWithCode(-9.0), 3},
        {CutWithCode(std::nan("")), CutWithCode(std::nan("")), 3},
        {Cut(0, 1.0), Codes(0, {0, 1}), 3},
        {Cut(1, 1.0), Codes(0, {0, 1}), 2},
        {Codes(0, {0, 1}), Codes(0, {0, 1, -1}), 0},
        {Codes(0, {0, 1}), Codes(0, {1, 0}), 1},
        {Codes(0, {0, 1}), MappingMissing(Codes(0, {0, 1}), false), 1},
        {Codes(0, {0, 1}), Codes(0, {1, 0, 1}), 3},  // a code of the other alone
        {Codes(0, {0, 1, 1}), Codes(0, {0, 1}), 3},
        {Codes(0, {0}), MappingMissing(Codes(0, {}), true), 3},
        {Codes(0, {0, 1}), Codes(0, {-1}), 1},  // the other has no children at all
        {Codes(0, {0, 1}), Cut(1, 1.0), 2},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.rule->Compare(*row.other), row.answer) << "row " << &row - rows;
    }
}

TEST(SplitRuleBase, OtherKindsAreRefusedUnchanged) {
    auto const ordered = Cut(0, 1.0);
    auto const nominal = MappingMissing(Codes(0, {1, 0, 2}), true);
    EXPECT_FALSE(ordered->AddMappedValues(NValueSet()) || ordered->CopyMappings(*nominal));
    EXPECT_FALSE(nominal->AddMappedValues(OValueSet()) || nominal->CopyMappings(*ordered));
    EXPECT_EQ(ordered->Compare(*Cut(0, 1.0)), 0);
    EXPECT_EQ(nominal->GetMissingValueMapping(), 3);
}

TEST(SplitRuleHandle, HoldsTheKindOfRuleThatTheVariableNeeds) {
    VariableSettingsImp variable;
    variable.SetMissingValue(-9.0);
    for (int const level : {-1, 0, 1, 2}) {
        variable.SetMeasurementLevel(static_cast<global_800::MeasurementLevel>(level));
        SplitRule const handle(variable, 4);
        auto const* const rule = static_cast<SplitRuleImp const*>(handle);
        auto const* const ordered = dynamic_cast<OSplitRule const*>(rule);
        EXPECT_EQ(ordered == nullptr, level == 0) << level;
        EXPECT_TRUE(ordered == nullptr || ordered->GetMissingValue() == -9.0);
    }
}

class UncopyableRule : public ProbeRule {
public:
    using ProbeRule::ProbeRule;
    SplitRuleImp* Clone() const override { return nullptr; }
};

TEST(SplitRuleHandle, OwnsARuleOfItsOwnOrAnswersNeutrally) {
    auto rule = Codes(2, {0, 1});
    rule->SetStatistic(StatisticSlot2, 6.0);
    SplitRule handle(*rule);
    auto source = std::make_unique<SplitRule>(handle);
    rule.reset();
    handle.AddMissingValueMapping(true);
    SplitRule const& same = handle;
    handle = same;
    EXPECT_EQ(handle.GetMissingValueMapping(), 2);
    handle = *source;
    source.reset();
    double statistic = 0.0;
    EXPECT_TRUE(handle.GetStatistic(StatisticSlot2, &statistic) && statistic == 6.0);
    EXPECT_TRUE(handle.HasProperty(SplitRuleCreatedDefault));
    EXPECT_FALSE(handle.HasStatistic(StatisticSlot1));
    std::unique_ptr<ValueSet> const values(handle.GetMappedValues(1));
    EXPECT_TRUE(handle.AddMappedValues(*values));
    EXPECT_EQ(handle.GetNumChildren(), 3);

    handle = SplitRule(UncopyableRule({0}));
    SplitRule const empty(handle);
    EXPECT_EQ(static_cast<SplitRuleImp const*>(empty), nullptr);
    EXPECT_EQ(empty.GetMappedValues(0), nullptr);
    EXPECT_EQ(empty.GetNumChildren() + empty.GetMissingValueMapping(), 0);
    EXPECT_FALSE(empty.GetStatistic(StatisticSlot0, &statistic) ||
                 empty.HasStatistic(StatisticFlag{}) || empty.HasProperty(SplitRuleCreatedDefault));
}

}  // namespace
}  // namespace tree_800
