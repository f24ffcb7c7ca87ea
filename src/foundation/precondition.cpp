#include <tree/precondition.h>

#include <cstdio>
#include <cstdlib>

namespace tree_800 {

void PreconditionFailed(char const* file, int line, char const* message) noexcept {
    std::fprintf(stderr, "%s:%d: precondition violated: %s\n", file, line, message);
    std::abort();
}

}  // namespace tree_800
