#ifndef TREE800_TESTS_FUZZ_WEIGHTING_MODEL_H
#define TREE800_TESTS_FUZZ_WEIGHTING_MODEL_H

#include "fuzz/input.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace tree_800 {
class CostImp;
class PriorsImp;
}  // namespace tree_800

/// Plain twins of costs and priors. Change does one drawn operation on an object and its
/// twin alike, CheckAgainst compares every answer.
namespace tree_800::fuzz {

struct CostModel {
    int numClasses = 0;
    std::map<std::pair<int, int>, double> cells;  ///< those that are not default
    int numDefault = 0;                           ///< rows of the default matrix
    int type = 0;

    double Get(int i, int j) const;
    bool SetCell(int i, int j, double cost);
    void Change(Input& input, CostImp& cost);
    void CheckAgainst(CostImp const& cost) const;
};

// The checks take the loop of the implicit copy of an array for code of ours.
// NOLINTNEXTLINE(bugprone-reserved-identifier, readability-identifier-naming)
struct PriorsModel {
    struct Vector {
        std::vector<double> values;
        std::size_t capacity = 0;

        void Resize(std::size_t n) {
            values.resize(n);
            capacity = values.size() > capacity ? n : capacity;
        }
    };

    std::optional<Vector> vectors[4] = {Vector{}, std::nullopt, std::nullopt, std::nullopt};
    bool isToAlter = false;
    int type = 0;

    bool SetValue(int i, double prior, int id);
    void Store(int id, Vector vector);
    bool Alter(int target, int source, CostModel const& costs);
    void Change(Input& input, PriorsImp& priors, CostImp const& costs, CostModel const& costModel);
    void CheckAgainst(PriorsImp const& priors) const;
};

}  // namespace tree_800::fuzz

#endif
