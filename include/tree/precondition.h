#ifndef TREE800_PRECONDITION_H
#define TREE800_PRECONDITION_H

#include <tree/export.h>

namespace tree_800 {

/// Writes "file:line: precondition violated: message" to the standard error stream and aborts.
/// Called by TREE800_REQUIRE alone.
[[noreturn]] TREE800_EXPORT void PreconditionFailed(char const* file, int line,
                                                    char const* message) noexcept;

}  // namespace tree_800

/// States what the caller must have made sure of. A checked build (TREE800_CHECKED defined, the
/// CMake option of the same name) tests it and aborts with file, line and message; every other
/// build does not evaluate the condition, and a violation is then undefined behaviour.
#ifdef TREE800_CHECKED
#define TREE800_REQUIRE(condition, message) \
    ((condition) ? static_cast<void>(0)     \
                 : ::tree_800::PreconditionFailed(__FILE__, __LINE__, (message)))
#else
#define TREE800_REQUIRE(condition, message) static_cast<void>(true || (condition))
#endif

#endif
