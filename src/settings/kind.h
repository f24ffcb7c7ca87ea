#ifndef TREE800_SETTINGS_KIND_H
#define TREE800_SETTINGS_KIND_H

#include <tree/alg_settings.h>

namespace tree_800 {

/// The other settings as an object of one class, when their kind says that they are and they really
/// are; otherwise null.
template <typename Settings>
Settings const* AsKind(AlgSettings const& other, AlgorithmKind kind) {
    return other.GetType() == kind ? dynamic_cast<Settings const*>(&other) : nullptr;
}

/// The same for a class that two kinds share.
template <typename Settings>
Settings const* AsKind(AlgSettings const& other, AlgorithmKind kind, AlgorithmKind orKind) {
    auto const* const settings = AsKind<Settings>(other, kind);
    return settings != nullptr ? settings : AsKind<Settings>(other, orKind);
}

}  // namespace tree_800

#endif
