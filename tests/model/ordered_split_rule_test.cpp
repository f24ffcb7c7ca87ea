#include "support/random.h"
#include "support/tree_builder.h"

#include <tree/value_set.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <sstream>
#include <string>

namespace tree_800 {
namespace {

using namespace test;

double const Infinity = GetInfinity();
double const NaN = std::nan("");

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

// The same rule as a map from cut value to child.
struct Model {
    int Classify(double x) const {
        if (x == missingCode) {
            return missing;
        }
        auto const cut = std::isnan(x) ? childUpTo.end() : childUpTo.lower_bound(x);
        return cut != childUpTo.end() && cut->second >= 0 ? cut->second : upper;
    }

    bool Add(OValueSet const& set, int newChild) {
        double const left = LeftEnd(set);
        double const right = RightEnd(set);
        auto const upToRight = childUpTo.lower_bound(right);
        bool const endsInMapped = upToRight != childUpTo.end() && upToRight->second >= 0;
        bool const aboveAll = !childUpTo.empty() && left > childUpTo.rbegin()->first;
        bool const meetsUpper = upper >= 0 && (aboveAll || !set.IsBoundedRight());
        bool covers = false;  // a cut less than a unit outside is still inside
        for (auto const& [c, child] : childUpTo) {
            covers = covers || (c != left && c != right && left - 1 < c && c < right + 1);
        }
        covers = covers && set.IsBoundedLeft() && set.IsBoundedRight();
        if (left == right || endsInMapped || meetsUpper || covers) {
            return false;
        }
        if (set.IsBoundedLeft()) {
            childUpTo.emplace(left, -1);
        }
        (set.IsBoundedRight() ? childUpTo[right] : upper) = newChild;
        return true;
    }

    double missingCode;
    std::map<double, int> childUpTo = {};
    int upper = -1;
    int missing = -1;
};

void ExpectAgreement(OSplitRule const& rule, Model const& model) {
    std::vector<double> values = {-Infinity, Infinity, NaN, systemMissingValue()};
    for (int quarters = -24; quarters <= 40; ++quarters) {
        values.push_back(quarters / 4.0);
    }
    int last = -1;
    for (double const x : values) {
        EXPECT_EQ(rule.Classify(x), model.Classify(x)) << x;
        last = std::max(last, rule.Classify(x));
    }
    EXPECT_EQ(rule.GetNumChildren(), last + 1);
    for (int child = 0; child <= last; ++child) {
        if (std::string const text = Mapped(rule, child); !text.empty()) {
            OValueSet const set = Interval(text);
            for (double const x : values) {  // a cut value belongs to the lower side
                bool const inside =
                    LeftEnd(set) < x && x <= RightEnd(set) && x != model.missingCode;
                EXPECT_TRUE(!inside || rule.Classify(x) == child) << x << " in " << text;
            }
        }
    }
    std::unique_ptr<SplitRuleImp> const copy(rule.EmptyClone());
    EXPECT_EQ(rule.Compare(*copy), last < 0 ? 0 : 1);
    EXPECT_TRUE(copy->CopyMappings(rule));
    EXPECT_EQ(rule.Compare(*copy), 0);
}

TEST(OrderedSplitRule, RandomRulesAgreeWithAModel) {
    Random random;
    for (int run = 0; run < 500; ++run) {
        Model model{random.OneIn(2) ? 0.25 : systemMissingValue()};
        OSplitRule rule(model.missingCode, 3);
        std::string story;
        for (int step = 0; step < 8; ++step) {
            int const newChild = rule.GetNumChildren();
            if (bool const extra = random.OneIn(2); random.OneIn(8)) {
                rule.AddMissingValueMapping(extra);
                model.missing = extra ? newChild : newChild - 1;
                story += "missing ";
            } else {
                double const from = random.Between(-10, 9) / 2.0;
                double const to = from + random.Between(-1, 8) / 2.0;
                std::string const text =
                    Text(random.OneIn(2) ? '(' : '[', random.OneIn(4) ? -Infinity : from,
                         random.OneIn(4) ? Infinity : to, random.OneIn(2) ? ')' : ']');
                story += text + ' ';
                EXPECT_EQ(rule.AddMappedValues(Interval(text)),
                          model.Add(Interval(text), newChild));
            }
            ExpectAgreement(rule, model);
            ASSERT_FALSE(HasFailure()) << story;
        }
    }
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
