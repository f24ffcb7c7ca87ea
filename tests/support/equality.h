#ifndef TREE800_TESTS_SUPPORT_EQUALITY_H
#define TREE800_TESTS_SUPPORT_EQUALITY_H

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <type_traits>
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

/// A change of one part of an object that must show in a comparison.
template <typename T>
struct Change {
    char const* name;
    std::function<void(T&)> apply;
};

/// A copy equals its source until it is changed, and the source stays as it was; a copy made after
/// the change carries it.
template <typename T>
void ExpectEqualityCovers(T const& source, std::vector<Change<T>> const& changes) {
    auto const original = CopyOf(source);
    for (Change<T> const& change : changes) {
        SCOPED_TRACE(change.name);
        auto const changed = CopyOf(source);
        EXPECT_TRUE(*changed == source);
        change.apply(*changed);
        EXPECT_FALSE(*changed == source);
        EXPECT_FALSE(source == *changed);
        EXPECT_TRUE(*CopyOf(*changed) == *changed);
        EXPECT_TRUE(*original == source);
    }
}

}  // namespace tree_800::test

#endif
