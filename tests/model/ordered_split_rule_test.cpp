#include "support/random.h"
#include "support/tree_builder.h"

#include <tree/value_set.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <sstream>
#include <string>

namespace tree_800 {
namespace {

using namespace test;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// An infinite end is unbounded.
OValueSet Interval(char open, double left, double right, char close) {
    OValueSet set(left, right);
    set.SetOpenLeft(open == '(');
    set.SetOpenRight(close == ')');
    set.SetBoundedRight(right < Infinity);
    set.SetBoundedLeft(left > -Infinity);
    return set;
}

double LeftEnd(OValueSet const& set) { return set.IsBoundedLeft() ? set.GetLeftEnd() : -Infinity; }
double RightEnd(OValueSet const& set) {
    return set.IsBoundedRight() ? set.GetRightEnd() : Infinity;
}

std::string Text(OValueSet const* set) {
    std::ostringstream text;
    if (set != nullptr) {
        text << (set->IsOpenLeft() ? '(' : '[') << LeftEnd(*set) << ", " << RightEnd(*set)
             << (set->IsOpenRight() ? ')' : ']');
    }
    return text.str();
}

std::unique_ptr<OValueSet> Mapped(SplitRuleImp const& rule, int child) {
    return std::unique_ptr<OValueSet>(dynamic_cast<OValueSet*>(rule.GetMappedValues(child)));
}

std::shared_ptr<OSplitRule> Intervals(std::vector<OValueSet> const& sets) {
    auto rule = std::make_shared<OSplitRule>(systemMissingValue(), 0);
    for (OValueSet const& set : sets) {
        EXPECT_TRUE(rule->AddMappedValues(set)) << Text(&set);
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

// What a child is said to receive it receives, the cut value on the lower side.
void ExpectMappedValuesReachTheirChild(OSplitRule const& rule, int child) {
    if (auto const set = Mapped(rule, child)) {
        double const left = std::max(LeftEnd(*set), -1e3);
        double const right = std::min(RightEnd(*set), 1e3);
        EXPECT_LT(left, right);
        for (double const x : {std::nextafter(left, right), left / 2 + right / 2, right}) {
            EXPECT_TRUE(x == rule.GetMissingValue() || rule.Classify(x) == child) << x;
        }
    }
}

TEST(OrderedSplitRule, RandomRulesAgreeWithAModel) {
    Random random;
    for (int run = 0; run < 500; ++run) {
        Model model{random.OneIn(2) ? 0.25 : systemMissingValue()};
        OSplitRule rule(model.missingCode, 3);
        for (int step = 0; step < 8; ++step) {
            int const newChild = rule.GetNumChildren();
            if (random.OneIn(8)) {
                bool const extra = random.OneIn(2);
                rule.AddMissingValueMapping(extra);
                model.missing = extra ? newChild : newChild - 1;
            } else {
                double const from = random.Between(-10, 9) / 2.0;
                double const to = from + random.Between(-1, 8) / 2.0;
                OValueSet const set =
                    Interval(random.OneIn(2) ? '(' : '[', random.OneIn(4) ? -Infinity : from,
                             random.OneIn(4) ? Infinity : to, random.OneIn(2) ? ')' : ']');
                EXPECT_EQ(rule.AddMappedValues(set), model.Add(set, newChild)) << Text(&set);
            }
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
                ExpectMappedValuesReachTheirChild(rule, child);
            }
            std::unique_ptr<SplitRuleImp> const copy(rule.EmptyClone());
            EXPECT_EQ(rule.Compare(*copy), last < 0 ? 0 : 1);
            EXPECT_TRUE(copy->CopyMappings(rule));
            EXPECT_EQ(rule.Compare(*copy), 0);
            ASSERT_FALSE(HasFailure()) << "run " << run << ", step " << step;
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
    EXPECT_EQ(rule->IsPresent(7.0 + 1e-13), nullptr);
    rule->IsPresent(7.0)->child = -1;
    rule->SetReverse();  // no effect: the rule is no longer valid
    expectChildren(1, 1);
    EXPECT_EQ(OSplitRule(0.0, 0).GetCutPoint(), systemMissingValue());
}

TEST(OrderedSplitRule, OpenFlagsDescribeButDoNotRoute) {
    OValueSet const below = Interval('(', -Infinity, 5, ')');
    OValueSet const upTo = Interval('(', -Infinity, 5, ']');
    OValueSet const above = Interval('(', 5, Infinity, ')');
    struct {
        std::vector<OValueSet> sets;
        std::vector<std::string> mapped;
    } const rows[] = {
        {{below, above}, {"(-inf, 5)", "[5, inf)", ""}},
        {{upTo, above}, {"(-inf, 5]", "(5, inf)"}},
        {{above, upTo}, {"(5, inf)", "(-inf, 5]"}},
        {{Interval('[', 2, 5, ')'), above, Interval('(', -Infinity, 2, ']')},
         {"(2, 5)", "[5, inf)", "(-inf, 2]"}},
        {{Interval('(', -Infinity, Infinity, ')')}, {"(-inf, inf)"}},
        {{Interval('[', 2, 5, ')'), above}, {"", ""}},  // nothing receives the values up to 2
    };
    for (auto const& row : rows) {
        auto const rule = Intervals(row.sets);
        for (std::size_t child = 0; child < row.mapped.size(); ++child) {
            auto const set = Mapped(*rule, static_cast<int>(child));
            EXPECT_EQ(Text(set.get()), row.mapped[child]) << row.mapped[0];
        }
    }
    auto const rule = Intervals({Interval('(', 2, 5, ']')});
    EXPECT_TRUE(rule->IsPresent(2.0)->cutPointAbove);  // stored as it is, not inverted
    rule->InsertCutPoint(Interval('[', 2, 3, ']'), true);
    EXPECT_FALSE(rule->IsPresent(2.0)->cutPointAbove);
}

TEST(OrderedSplitRule, ReorderingRenumbersEveryChild) {
    auto const rule = Intervals({Interval('(', -Infinity, 1, ']'), Interval('(', 1, 2, ']'),
                                 Interval('(', 2, Infinity, ')')});
    rule->AddMissingValueMapping(true);
    rule->ReorderMappings({2, 3, 1, 0});
    EXPECT_EQ(rule->Classify(0.0), 2);
    EXPECT_EQ(rule->Classify(2.0), 3);
    EXPECT_EQ(rule->Classify(3.0), 1);
    EXPECT_EQ(rule->Classify(systemMissingValue()), 0);
}

TEST(OrderedSplitRule, CompareTellsWhatDiffers) {
    auto const withCode = [](double missingCode) {
        auto rule = std::make_shared<OSplitRule>(missingCode, 0);
        EXPECT_TRUE(rule->CopyMappings(*Cut(0, 1.0)));  // the code stays
        return rule;
    };
    auto const reversed = withCode(systemMissingValue());
    reversed->SetReverse();
    auto const mapsMissing = withCode(systemMissingValue());
    mapsMissing->AddMissingValueMapping(false);
    OValueSet const below = Interval('(', -Infinity, 1, ')');
    auto const oneCut = Intervals({below});
    auto const twoCuts = Intervals({below, Interval('(', 1, 2, ']')});
    struct {
        char const* name;
        std::shared_ptr<SplitRuleImp> a;
        std::shared_ptr<SplitRuleImp> b;
        int result;
    } const rows[] = {
        {"cuts within the tolerance", Cut(0, 1.0), Cut(0, 1.0 + 1e-13), 0},
        {"cuts beyond the tolerance", Cut(0, 1.0), Cut(0, 1.0 + 1e-11), 1},
        {"a lower cut beyond the tolerance", Cut(0, 1.0 + 1e-11), Cut(0, 1.0), 1},
        {"NaN cut", Cut(0, 1.0), Cut(0, NaN), 0},
        {"flags", Cut(0, 1.0), Intervals({below, Interval('(', 1, Infinity, ')')}), 0},
        {"children", Cut(0, 1.0), reversed, 1},
        {"upper child", Cut(0, 1.0), oneCut, 1},
        {"more cuts", twoCuts, oneCut, 1},
        {"fewer cuts", oneCut, twoCuts, 1},
        {"missing child", Cut(0, 1.0), mapsMissing, 1},
        {"predictor before code", Cut(1, 1.0), withCode(-9.0), 2},
        {"code before cuts", Cut(0, 2.0), withCode(-9.0), 3},
        {"NaN codes", withCode(NaN), withCode(NaN), 3},
        {"kind", Cut(0, 1.0), Codes(0, {0, 1}), 3},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.a->Compare(*row.b), row.result) << row.name;
    }
}

}  // namespace
}  // namespace tree_800
