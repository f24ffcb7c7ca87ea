#include "fuzz/input.h"

/// The exception that tells of a violation ends the process, which hands the input to the fuzzer.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    tree_800::fuzz::Input input(bytes, size);
    tree_800::fuzz::TREE800_FUZZ_DRIVER(input);
    return 0;
}
