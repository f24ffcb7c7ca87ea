#include "support/random.h"
#include "support/tree_builder.h"

#include <tree/value_set.h>

#include <gtest/gtest.h>

#include <cmath>

namespace tree_800 {
namespace {

using namespace test;

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
    std::vector<double> values = {-GetInfinity(),       GetInfinity(), std::nan(""),
                                  systemMissingValue(), 1e300,         0x1p32};
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

TEST(NominalSplitRule, ReorderingRenumbersWhatIsAssigned) {
    auto const rule = Codes(0, {2, -1, 2, 0});
    rule->AddMissingValueMapping(true);
    rule->SetDumbRule(0, 0.5);
    rule->ReorderMappings({3, 0, 1, 2});
    EXPECT_EQ(rule->GetMissingValueMapping(), 2);
    EXPECT_EQ(rule->GetDumbChildPos(), 3);
    int const expected[] = {-1, 1, -1, 1, 3, -1};
    for (int code = -1; code < 5; ++code) {
        EXPECT_EQ(rule->GetCatMapping(code), expected[code + 1]) << code;
    }
}

}  // namespace
}  // namespace tree_800
