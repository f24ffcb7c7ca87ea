#include "support/tree_builder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tree_800 {
namespace {

using namespace test;

TEST(NominalSplitRule, PlacesTheCodesOfItsTableAlone) {
    auto const rule = Codes(0, {1, 0, -1});
    rule->AddMissingValueMapping(true);
    for (double const x : {-1.0, 0.5, 2.0, 3.0, 0x1p32, 1e300, GetInfinity(), std::nan("")}) {
        EXPECT_EQ(rule->Classify(x), 2) << x;
    }
    EXPECT_EQ(rule->Classify(-0.0), 1);
    EXPECT_EQ(rule->Classify(1.0), 0);
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
