#include "support/random.h"
#include "support/tree_builder.h"

#include <tree/value_set.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace tree_800 {
namespace {

using namespace test;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// The same rule as a plain table.
struct Model {
    void Map(int code, int child) {
        if (code >= 0) {
            auto const at = static_cast<std::size_t>(code);
            childOf.resize(std::max(childOf.size(), at + 1), -1);
            childOf[at] = child;
        }
    }

    int Classify(double x) const {
        for (std::size_t code = 0; code < childOf.size(); ++code) {
            if (x == static_cast<double>(code) && childOf[code] >= 0) {
                return childOf[code];
            }
        }
        return missing;
    }

    std::vector<int> childOf = {};
    int missing = -1;
};

void ExpectAgreement(NSplitRule const& rule, Model const& model) {
    std::vector<double> values = {-Infinity, Infinity, NaN, systemMissingValue(), 1e300, 0x1p32};
    for (int halves = -4; halves <= 20; ++halves) {
        values.push_back(halves / 2.0);
    }
    int last = -1;
    for (double const x : values) {
        EXPECT_EQ(rule.Classify(x), model.Classify(x)) << x;
        last = std::max(last, rule.Classify(x));
    }
    EXPECT_EQ(rule.GetNumChildren(), last + 1);
    for (int child = -1; child <= last; ++child) {
        std::unique_ptr<ValueSet> const codes(rule.GetMappedValues(child));
        for (std::size_t code = 0; code < 10; ++code) {
            bool const isMapped = code < model.childOf.size() && model.childOf[code] == child;
            EXPECT_EQ(codes && codes->Contains(static_cast<double>(code)), isMapped) << code;
        }
    }
    std::unique_ptr<SplitRuleImp> const copy(rule.EmptyClone());
    EXPECT_EQ(rule.Compare(*copy), last < 0 ? 0 : 1);
    EXPECT_TRUE(copy->CopyMappings(rule));
    EXPECT_EQ(rule.Compare(*copy), 0);
}

TEST(NominalSplitRule, RandomRulesAgreeWithAModel) {
    Random random;
    for (int run = 0; run < 500; ++run) {
        int const numCategories = random.Between(-1, 3);
        NSplitRule rule(3, numCategories);
        Model model;
        model.Map(numCategories - 1, -1);
        for (int step = 0; step < 10; ++step) {
            int const newChild = rule.GetNumChildren();
            int const kind = random.Between(0, 9);
            if (kind < 4) {
                int const code = random.Between(-2, 8);
                int const child = random.Between(-1, 3);
                rule.SetCatMapping(code, child);
                model.Map(code, child);
            } else if (kind < 8) {
                NValueSet codes;
                for (int i = random.Between(0, 4); i > 0; --i) {
                    int const code = random.Between(-2, 8);
                    codes.Add(code);
                    model.Map(code, newChild);
                }
                EXPECT_TRUE(rule.AddMappedValues(codes));
            } else {
                rule.AddMissingValueMapping(kind == 8);
                model.missing = kind == 8 ? newChild : newChild - 1;
            }
            ExpectAgreement(rule, model);
            ASSERT_FALSE(HasFailure()) << "run " << run << ", step " << step;
        }
    }
}

TEST(NominalSplitRule, ReorderingRenumbersMappedCodesAlone) {
    auto const rule = Codes(0, {2, -1, 2, 1});
    rule->AddMissingValueMapping(true);
    rule->ReorderMappings({1, 0, 3, 2});
    std::unique_ptr<SplitRuleImp> const clone(rule->Clone());
    rule->SetCatMapping(0, 1);  // the clone is independent
    int const expected[] = {3, 2, 3, 0, 2};
    for (int code = 0; code < 5; ++code) {
        EXPECT_EQ(clone->Classify(code), expected[code]) << code;
    }
    EXPECT_EQ(rule->GetCatMapping(1), -1);
    EXPECT_EQ(rule->GetCatMapping(-1), -1);
    EXPECT_EQ(rule->GetCatMapping(4), -1);
}

TEST(NominalSplitRule, CompareTellsWhatDiffers) {
    std::shared_ptr<SplitRuleImp> const mapsMissing = Codes(0, {0, 1});
    std::shared_ptr<SplitRuleImp> const missingAlone = Codes(0, {});
    mapsMissing->AddMissingValueMapping(false);
    missingAlone->AddMissingValueMapping(true);
    struct {
        char const* name;
        std::shared_ptr<SplitRuleImp> a;
        std::shared_ptr<SplitRuleImp> b;
        int result;
    } const rows[] = {
        {"unmapped codes beyond a table", Codes(0, {0, 1}), Codes(0, {0, 1, -1}), 0},
        {"missing child", Codes(0, {0, 1}), mapsMissing, 1},
        {"children", Codes(0, {0, 1}), Codes(0, {1, 0}), 1},
        {"code of the other alone", Codes(0, {0, 1}), Codes(0, {1, 0, 1}), 3},
        {"code of this alone", Codes(0, {0, 1, 1}), Codes(0, {0, 1}), 3},
        {"other without children", Codes(0, {0, 1}), Codes(0, {-1}), 1},
        {"this without children", Codes(0, {-1}), Codes(0, {0, 1}), 3},
        {"other with a missing child alone", Codes(0, {0}), missingAlone, 3},
        {"kind", Codes(0, {0, 1}), Cut(0, 1.0), 3},
        {"predictor before kind", Codes(1, {0, 1}), Cut(0, 1.0), 2},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.a->Compare(*row.b), row.result) << row.name;
    }
}

}  // namespace
}  // namespace tree_800
