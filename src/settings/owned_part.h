#ifndef TREE800_SETTINGS_OWNED_PART_H
#define TREE800_SETTINGS_OWNED_PART_H

#include <memory>

namespace tree_800 {

/// A clone of a part given to a settings object, or a new default one when none is given.
template <typename DefaultPart, typename Part>
std::unique_ptr<Part> CloneOrDefault(Part const* given) {
    if (given == nullptr) {
        return std::make_unique<DefaultPart>();
    }
    return std::unique_ptr<Part>(given->Clone());
}

}  // namespace tree_800

#endif
