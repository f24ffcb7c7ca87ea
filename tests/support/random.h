#ifndef TREE800_TESTS_SUPPORT_RANDOM_H
#define TREE800_TESTS_SUPPORT_RANDOM_H

#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace tree_800::test {

/// Random numbers for property tests. Every run takes another seed and prints it; the environment
/// variable TREE800_SEED repeats a run.
class Random {
public:
    Random() { std::cout << "TREE800_SEED=" << seed_ << '\n'; }

    /// A whole number from low to high, both included.
    int Between(int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(engine_);
    }
    bool OneIn(int n) { return Between(1, n) == 1; }

private:
    static unsigned int Seed() {
        char const* const seed = std::getenv("TREE800_SEED");
        return seed != nullptr ? static_cast<unsigned int>(std::stoul(seed))
                               : std::random_device()();
    }

    unsigned int seed_ = Seed();
    std::mt19937 engine_{seed_};
};

}  // namespace tree_800::test

#endif
