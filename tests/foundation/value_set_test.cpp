#include <tree/value_set.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

namespace tree_800 {
namespace {

constexpr double Eps = 1e-12;
constexpr double TwoTo31 = 2147483648.0;
constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// What an OValueSet stores, and its rules written out once more.
struct Interval {
    double left;
    double right;
    bool openLeft = true;
    bool openRight = true;
    bool boundedLeft = true;
    bool boundedRight = true;

    static bool IsNegative(double d) { return !(d > -1.0 && d < TwoTo31); }
    static bool IsPositive(double d) { return d >= 1.0 && d < TwoTo31; }

    bool Contains(double x) const {
        bool const atLeft = std::abs(x - left) < Eps;
        bool const beforeLeft = IsNegative(x - (left + Eps)) || (atLeft && openLeft);
        bool const afterRight = IsNegative(right - (x + Eps)) || (atLeft && openRight);
        return !(boundedLeft && beforeLeft) && !(boundedRight && afterRight);
    }
    bool IsEmpty() const {
        bool const isPoint = std::abs(right - left) < Eps;
        bool const holdsPoint = !boundedLeft || !boundedRight || !(openLeft || openRight);
        return !IsPositive((right - Eps) - left) && !(isPoint && holdsPoint);
    }
    bool operator==(Interval const& other) const {
        return left == other.left || (!boundedLeft && !other.boundedLeft);
    }
    bool operator<(Interval const& other) const {
        return boundedLeft ? left < other.left : other.boundedLeft;
    }
};

OValueSet Make(Interval const& i) {
    OValueSet set(i.left, i.right);
    set.SetOpenLeft(i.openLeft);
    set.SetOpenRight(i.openRight);
    // An end becomes unbounded by taking the stored value of the other.
    if (!i.boundedLeft) {
        set.SetRightEnd(i.left);
        set.SetBoundedLeft(false);
        set.SetRightEnd(i.right);
        set.SetBoundedRight(i.boundedRight);
    } else if (!i.boundedRight) {
        set.SetLeftEnd(i.right);
        set.SetBoundedRight(false);
        set.SetLeftEnd(i.left);
    }
    return set;
}

// Every reachable set with the ends given, open and bounded in every way.
std::vector<Interval> Grid(std::vector<double> const& ends) {
    std::vector<Interval> grid;
    for (double const left : ends) {
        for (double const right : ends) {
            for (unsigned flags = 0; flags < 16; ++flags) {
                auto const has = [flags](unsigned flag) { return (flags & flag) != 0; };
                if (left == right || has(4) || has(8)) {
                    grid.push_back({left, right, has(1), has(2), has(4), has(8)});
                }
            }
        }
    }
    return grid;
}

auto Stored(OValueSet const& set) {
    return std::tuple(set.GetLeftEnd(), set.GetRightEnd(), set.IsOpenLeft(), set.IsOpenRight(),
                      set.IsBoundedLeft(), set.IsBoundedRight());
}

TEST(OValueSetTest, MembersAndEmptinessOnAGrid) {
    double const ulp = std::numeric_limits<double>::epsilon();
    for (Interval const& i :
         Grid({0.0, Eps, 1.0, 1.0 + ulp, 1.0 + Eps, 9.5, -TwoTo31, TwoTo31, Inf, -Inf, NaN})) {
        OValueSet const set = Make(i);
        SCOPED_TRACE(testing::PrintToString(Stored(set)));
        ASSERT_EQ(set.IsEmpty(), i.IsEmpty());
        for (double const end : {i.left, i.right}) {
            for (double const step : {0.0, ulp, Eps, 2 * Eps, 0.5, 1.0 - Eps, 1.0, 1.0 + Eps, 2.0,
                                      TwoTo31 - 1.0, TwoTo31, TwoTo31 + 1.0, Inf}) {
                ASSERT_EQ(set.Contains(end + step), i.Contains(end + step)) << end << '+' << step;
                ASSERT_EQ(set.Contains(end - step), i.Contains(end - step)) << end << '-' << step;
            }
        }
    }
}

TEST(OValueSetTest, ComparisonsOnAGrid) {
    std::vector<Interval> const grid = Grid({1.0, 1.0 + Eps, 4.0, NaN, -Inf});
    for (Interval const& a : grid) {
        OValueSet const setA = Make(a);
        SCOPED_TRACE(testing::PrintToString(Stored(setA)));
        for (Interval const& b : grid) {
            OValueSet const setB = Make(b);
            ASSERT_EQ(setA == setB, a == b) << testing::PrintToString(Stored(setB));
            ASSERT_EQ(setA < setB, a < b) << testing::PrintToString(Stored(setB));
        }
    }
}

TEST(OValueSetTest, HandChecked) {
    EXPECT_TRUE(OValueSet().Contains(NaN));
    OValueSet const open(0.0, 10.0);
    EXPECT_TRUE(open.Contains(-0.5) && open.Contains(10.0));  // differences lose their fractions
    EXPECT_FALSE(open.Contains(0.0) || open.Contains(11.0) || open.IsEmpty());
    EXPECT_TRUE(OValueSet(5.0, 5.0).IsEmpty() && OValueSet(0.0, 0.5).IsEmpty());
    EXPECT_TRUE(OValueSet(1.0, 9.0) == OValueSet(1.0, 3.0));
    EXPECT_TRUE(Make({4.0, 4.0, true, true, false, true}) < OValueSet(1.0, 9.0));
}

TEST(OValueSetTest, SettersAndCopies) {
    EXPECT_EQ(Stored(OValueSet(7.0, 2.0)), std::tuple(7.0, 2.0, true, true, true, true));
    OValueSet set;
    EXPECT_EQ(Stored(set), std::tuple(0.0, 0.0, true, true, false, false));
    set.SetRightEnd(7.0);
    set.SetOpenRight(false);
    set.SetLeftEnd(2.0);
    EXPECT_EQ(Stored(set), std::tuple(2.0, 7.0, true, false, true, true));
    OValueSet const source(set);
    set.SetBoundedLeft(false);
    set.SetBoundedLeft(true);
    EXPECT_EQ(Stored(set), std::tuple(7.0, 7.0, true, false, true, true));
    set = source;
    set.SetBoundedRight(false);
    EXPECT_EQ(Stored(set), std::tuple(2.0, 2.0, true, false, true, false));
    set.SetOpenLeft(false);
    set.Empty();
    EXPECT_EQ(Stored(set), std::tuple(0.0, 0.0, true, false, true, true));
    OValueSet const& self = set = source;
    set = self;
    EXPECT_EQ(Stored(set), std::tuple(2.0, 7.0, true, false, true, true));
}

std::vector<int> Codes(NValueSet const& set) {
    std::unique_ptr<NValueSetIter> const codes(set.GetIterator());
    EXPECT_EQ(codes->GetData(), -1);
    std::vector<int> found;
    while (codes->Advance()) {
        found.push_back(codes->GetData());
    }
    EXPECT_FALSE(codes->Advance());
    EXPECT_EQ(codes->GetData(), -1);
    EXPECT_EQ(set.GetNumElements(), static_cast<int>(found.size()));
    return found;
}

TEST(NValueSetTest, KeepsTheOrderOfAddingWithoutDuplicates) {
    NValueSet set;
    for (auto const& [code, isNew] : {std::pair(3, true), {-1, true}, {3, false}, {2, true}}) {
        EXPECT_EQ(set.Add(code), isNew) << code;
    }
    NValueSet assigned;
    assigned.Add(9);
    assigned = set;
    NValueSet const& self = assigned;
    assigned = self;
    set.Add(8);
    EXPECT_EQ(Codes(set), (std::vector<int>{3, -1, 2, 8}));
    EXPECT_EQ(Codes(assigned), (std::vector<int>{3, -1, 2}));
}

// What does not fit an int is neither taken for the smallest one nor wrapped around.
TEST(NValueSetTest, ContainsWholeNumbersOnly) {
    NValueSet set;
    EXPECT_TRUE(set.IsNominalValueSet() && !OValueSet().IsNominalValueSet());
    for (int const code : {0, 2, INT_MIN, INT_MAX}) {
        set.Add(code);
    }
    for (double const x : {-0.0, 2.0, -TwoTo31, TwoTo31 - 1.0, 1.0, 2.5, -0.5, TwoTo31,
                           2 * TwoTo31 + 2.0, Inf, -Inf, NaN}) {
        EXPECT_EQ(set.Contains(x), x == 0.0 || x == 2.0 || x == INT_MIN || x == INT_MAX) << x;
    }
}

}  // namespace
}  // namespace tree_800
