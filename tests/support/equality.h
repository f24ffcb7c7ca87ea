#ifndef TREE800_TESTS_SUPPORT_EQUALITY_H
#define TREE800_TESTS_SUPPORT_EQUALITY_H

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace tree_800::test {

template <typename T>
std::unique_ptr<T> CopyOf(T const& source) {
    if constexpr (std::is_copy_constructible_v<T>) {
        return std::make_unique<T>(source);
    } else {
        return std::unique_ptr<T>(source.Clone());
    }
}

/// Each change, which has a name, must show in a comparison: a copy equals its source until it is
/// changed, and the source stays as it was; a copy made after the change carries it.
template <typename T>
void ExpectEqualityCovers(
    T const& source, std::vector<std::pair<char const*, std::function<void(T&)>>> const& changes) {
    auto const original = CopyOf(source);
    for (auto const& [name, apply] : changes) {
        SCOPED_TRACE(name);
        auto const changed = CopyOf(source);
        EXPECT_TRUE(*changed == source);
        apply(*changed);
        EXPECT_FALSE(*changed == source || source == *changed);
        EXPECT_TRUE(*CopyOf(*changed) == *changed);
        EXPECT_TRUE(*original == source);
    }
}

}  // namespace tree_800::test

#endif
