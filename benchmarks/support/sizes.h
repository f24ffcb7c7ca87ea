#ifndef TREE800_BENCHMARKS_SUPPORT_SIZES_H
#define TREE800_BENCHMARKS_SUPPORT_SIZES_H

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <utility>

namespace tree_800::bench {

/// Whether the benchmarks are only to prove that they work: set the environment variable
/// TREE800_SMOKE, and rows are few and the largest sizes are left out.
inline bool IsSmokeRun() { return std::getenv("TREE800_SMOKE") != nullptr; }

/// Says that every iteration of the loop handled so many items.
inline void CountItems(benchmark::State& state, std::size_t itemsPerIteration) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(itemsPerIteration));
}

/// The size of the benchmark, the number after the stroke of its name.
inline int Size(benchmark::State const& state) { return static_cast<int>(state.range(0)); }

/// What Make answers for a number, made on the first request and kept, so that the benchmarks of a
/// size and their repetitions share it.
template <auto Make>
auto& Cached(int number) {
    static std::map<int, decltype(Make(number))> made;
    auto found = made.find(number);
    if (found == made.end()) {
        found = made.emplace(number, Make(number)).first;
    }
    return found->second;
}

}  // namespace tree_800::bench

#endif
