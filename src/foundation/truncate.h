#ifndef TREE800_FOUNDATION_TRUNCATE_H
#define TREE800_FOUNDATION_TRUNCATE_H

#include <cstdint>
#include <limits>

namespace tree_800 {

/// The value truncated toward zero; the smallest integer for NaN and for what does not fit.
inline std::int32_t TruncateToInt32(double value) noexcept {
    using Limits = std::numeric_limits<std::int32_t>;
    bool const fits = value > Limits::min() - 1.0 && value < Limits::max() + 1.0;
    return fits ? static_cast<std::int32_t>(value) : Limits::min();
}

}  // namespace tree_800

#endif
