#include "support/tree_builder.h"

#include <tree/value_set.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>

namespace tree_800 {
namespace {

using namespace test;

double const Infinity = GetInfinity();

double LeftEnd(OValueSet const& set) { return set.IsBoundedLeft() ? set.GetLeftEnd() : -Infinity; }
double RightEnd(OValueSet const& set) {
    return set.IsBoundedRight() ? set.GetRightEnd() : Infinity;
}

// Reads what Text writes: "(-inf, 5]".
OValueSet Interval(std::string const& text) {
    double const left = std::stod(text.substr(1));
    double const right = std::stod(text.substr(text.find(',') + 1));
    OValueSet set(left, right);
    set.SetOpenLeft(text.front() == '(');
    set.SetOpenRight(text.back() == ')');
    set.SetBoundedRight(right < Infinity);
    set.SetBoundedLeft(left > -Infinity);
    return set;
}

std::string Text(char open, double left, double right, char close) {
    std::ostringstream text;
    text << open << left << ", " << right << close;
    return text.str();
}

// The interval of the child; empty when there is none.
std::string Mapped(SplitRuleImp const& rule, int child) {
    std::unique_ptr<OValueSet> const set(dynamic_cast<OValueSet*>(rule.GetMappedValues(child)));
    return set == nullptr ? ""
                          : Text(set->IsOpenLeft() ? '(' : '[', LeftEnd(*set), RightEnd(*set),
                                 set->IsOpenRight() ? ')' : ']');
}

std::shared_ptr<OSplitRule> Intervals(std::vector<std::string> const& texts) {
    auto rule = std::make_shared<OSplitRule>(systemMissingValue(), 0);
    for (std::string const& text : texts) {
        EXPECT_TRUE(rule->AddMappedValues(Interval(text))) << text;
    }
    return rule;
}

TEST(OrderedSplitRule, BinaryRuleSplitsAtItsCut) {
    auto const rule = Cut(0, 3.5);
    auto const expectChildren = [&rule](int upTo, int above) {
        double const cut = rule->GetCutPoint();
        EXPECT_EQ(rule->Classify(cut), upTo);
        EXPECT_EQ(rule->Classify(std::nextafter(cut, Infinity)), above);
        EXPECT_EQ(rule->IsStandard(), above != 0);
    };
    expectChildren(0, 1);
    rule->SetReverse();
    expectChildren(1, 0);
    rule->SetCutPoint(7.0);  // moves the cut, keeps the children
    expectChildren(1, 0);
    rule->SetStandard();
    expectChildren(0, 1);
    EXPECT_EQ(Mapped(*rule, 0), "(-inf, 7]");
    EXPECT_EQ(rule->IsPresent(7.0 + 1e-13), nullptr);
    rule->IsPresent(7.0)->child = -1;
    rule->SetReverse();  // no effect: the rule is no longer valid
    expectChildren(1, 1);
    EXPECT_EQ(OSplitRule(0.0, 0).GetCutPoint(), systemMissingValue());
    EXPECT_TRUE(Intervals({"(-inf, inf)"})->IsStandard());  // its upper child is 0
}

TEST(OrderedSplitRule, OpenFlagsDescribeButDoNotRoute) {
    std::vector<std::string> const setsAndMapped[][2] = {
        {{"(-inf, 5)", "(5, inf)"}, {"(-inf, 5)", "[5, inf)", ""}},
        {{"(-inf, 5]", "(5, inf)"}, {"(-inf, 5]", "(5, inf)"}},
        {{"(5, inf)", "(-inf, 5]"}, {"(5, inf)", "(-inf, 5]"}},
        {{"[2, 5)", "(5, inf)", "(-inf, 2]"}, {"(2, 5)", "[5, inf)", "(-inf, 2]"}},
        {{"(-inf, inf)"}, {"(-inf, inf)"}},
        {{"[2, 5)", "(5, inf)"}, {"", ""}},  // not every value has a child
        {{"(-inf, 5)"}, {""}},
    };
    for (auto const& [sets, mapped] : setsAndMapped) {
        auto const rule = Intervals(sets);
        for (std::size_t child = 0; child < mapped.size(); ++child) {
            EXPECT_EQ(Mapped(*rule, static_cast<int>(child)), mapped[child]) << sets[0];
        }
    }
    auto const rule = Intervals({"(2, 5]"});
    EXPECT_TRUE(rule->IsPresent(2.0)->cutPointAbove);  // stored as it is, not inverted
    rule->InsertCutPoint(Interval("[2, 3]"), true);
    EXPECT_FALSE(rule->IsPresent(2.0)->cutPointAbove);
}

TEST(OrderedSplitRule, ReorderingRenumbersEveryChild) {
    auto const rule = Intervals({"(-inf, 1]", "(1, 2]", "(2, inf)"});
    rule->AddMissingValueMapping(true);
    rule->ReorderMappings({2, 3, 1, 0});
    rule->ReorderMappings({1, 0, 2, 3});
    double const values[] = {3.0, systemMissingValue(), 1.0, 2.0};
    for (int child = 0; child < 4; ++child) {
        EXPECT_EQ(rule->Classify(values[child]), child);
    }
    EXPECT_EQ(rule->GetDumbChildPos(), -1);
    EXPECT_TRUE(rule->HasProperty(SplitRuleMappingsReordered));
}

}  // namespace
}  // namespace tree_800
