#include "support/settings_snapshot.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>

// Its own executable: every allocation in it can be made to fail, and is counted.

namespace {

constexpr long Never = -1;
long allocationsLeft = Never;
long numBlocks = 0;

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (allocationsLeft != Never && allocationsLeft-- == 0) {
        allocationsLeft = 0;
        throw std::bad_alloc();
    }
    void* const block = std::malloc(size);  // NOLINT(cppcoreguidelines-no-malloc)
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++numBlocks;
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    numBlocks -= block != nullptr ? 1 : 0;
    std::free(block);  // NOLINT(cppcoreguidelines-no-malloc)
}
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

namespace tree_800 {
namespace {

using namespace test;

/// Runs the operation on fresh settings with its n-th allocation failing, for every n until it
/// succeeds: what each class holds must be all old or all new, and nothing may leak.
void ExpectWholeWhenMemoryRunsOut(AlgorithmKind kind,
                                  std::function<void(AlgSettings&)> const& operation) {
    auto const make = [kind] {
        auto settings = MakeSettings(kind, MakeCore(7));
        ChangeAll(*settings, 1);
        return settings;
    };
    Snapshot const before = SnapshotOf(*make());
    Snapshot const after = [&] {
        auto const settings = make();
        operation(*settings);
        return SnapshotOf(*settings);
    }();
    long numFailures = 0;
    for (bool succeeded = false; !succeeded; ++numFailures) {
        long const blocksBefore = numBlocks;
        {
            auto const settings = make();
            allocationsLeft = numFailures;
            try {
                operation(*settings);
                succeeded = true;
            } catch (std::bad_alloc const&) {
            }
            allocationsLeft = Never;
            for (auto const& [part, value] : SnapshotOf(*settings)) {
                if (succeeded) {
                    EXPECT_EQ(value, after.at(part)) << part;
                } else {
                    EXPECT_TRUE(value == before.at(part) || value == after.at(part))
                        << part << " at allocation " << numFailures << ": " << value;
                }
            }
        }
        ASSERT_EQ(numBlocks, blocksBefore) << "leak at allocation " << numFailures;
    }
    EXPECT_GT(numFailures, 1) << "nothing was allocated";
}

TEST(ExhaustionTest, CopyFrom) {
    for (AlgorithmKind const kind : Kinds) {
        for (AlgorithmKind const sourceKind : Kinds) {
            SCOPED_TRACE(std::to_string(kind) + " from " + std::to_string(sourceKind));
            auto const source = MakeSettings(sourceKind, MakeCore(9));
            ChangeAll(*source, 2);
            ExpectWholeWhenMemoryRunsOut(
                kind, [&source](AlgSettings& settings) { settings.CopyFrom(*source); });
        }
    }
}

TEST(ExhaustionTest, InitAndClone) {
    for (AlgorithmKind const kind : Kinds) {
        SCOPED_TRACE(kind);
        auto const source = MakeSettings(kind, MakeCore(9));
        ExpectWholeWhenMemoryRunsOut(kind, [&source](AlgSettings& settings) {
            settings.Init(3, 4, source->GetCoreSettings(), nullptr, source->GetStopRule());
        });
        ExpectWholeWhenMemoryRunsOut(kind, [](AlgSettings& settings) {
            std::unique_ptr<AlgSettings> const clone(settings.Clone());
        });
    }
    CCartSettingsImp cart(MakeCore(9));
    ExpectWholeWhenMemoryRunsOut(ClassificationCart, [&cart](AlgSettings& settings) {
        dynamic_cast<CCartSettingsImp&>(settings).Init(*cart.GetPriors(), *cart.GetCost(),
                                                       TwoingCriterion);
    });
    CChaidSettingsImp chaid(MakeCore(9));
    ExpectWholeWhenMemoryRunsOut(ClassificationChaid, [&chaid](AlgSettings& settings) {
        dynamic_cast<CChaidSettingsImp&>(settings).Init(0.5, PearsonChiSquare, 7, *chaid.GetCost(),
                                                        *chaid.GetPriors(), *chaid.GetScores());
    });
    ExpectWholeWhenMemoryRunsOut(ClassificationQuest, [](AlgSettings& settings) {
        dynamic_cast<QuestSettingsImp&>(settings).Init(0.5, 3, 7, nullptr, nullptr, nullptr);
    });
}

}  // namespace
}  // namespace tree_800
