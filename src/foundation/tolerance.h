#ifndef TREE800_FOUNDATION_TOLERANCE_H
#define TREE800_FOUNDATION_TOLERANCE_H

namespace tree_800 {

/// Doubles that are compared with a tolerance are equal this far apart. Each comparison states for
/// itself what it makes of exactly this distance, and of NaN.
constexpr double Tolerance = 1e-12;

}  // namespace tree_800

#endif
