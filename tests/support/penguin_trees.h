#ifndef TREE800_TESTS_SUPPORT_PENGUIN_TREES_H
#define TREE800_TESTS_SUPPORT_PENGUIN_TREES_H

#include "cart/cart_grower.h"
#include "penguins.h"

#include <tree/tree.h>

#include <cstddef>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

/// Trees of the penguins, as the example grower grows them.
namespace tree_800::test {

using cart::CartGrower;
using cart::Dataset;

inline std::string const Penguins = TREE800_EXAMPLE_DATA_DIR "/penguins.csv";
inline StopRuleImp const Usual(0.02, 20, 0.0, 7, 0.0, 0);
inline StopRuleImp const Fine(0.0, 4, 0.0, 2, 0.0, 0);

/// Every fifth penguin is in the test sample.
inline Dataset ReadHeldOut(std::string const& target) {
    Dataset data = examples::ReadPenguins(Penguins, target);
    examples::HoldOut(data, 5);
    return data;
}

inline std::unique_ptr<CartSettings> MakeSettings(Dataset const& data, StopRuleImp const& stopRule,
                                                  ValidationType validation) {
    CoreSettingsImp const core = cart::MakeCoreSettings(data);
    ValidationSpecImp spec;
    spec.Set(validation);
    std::unique_ptr<CartSettings> settings;
    if (data.IsClassification()) {
        settings = std::make_unique<CCartSettingsImp>(core);
    } else {
        settings = std::make_unique<RCartSettingsImp>(core);
    }
    settings->AlgSettings::Init(5, 25, &core, &spec, &stopRule);
    return settings;
}

inline NodeImp const* Drop(CartGrower const& grower, std::size_t row) {
    return grower.GetRoot()->DropObservationThroughTree(grower.GetData().Row(row), nullptr);
}

inline double Mean(std::vector<double> const& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

inline double SumOfSquares(std::vector<double> const& values) {
    return std::accumulate(
        values.begin(), values.end(), 0.0,
        [mean = Mean(values)](double sum, double x) { return sum + (x - mean) * (x - mean); });
}

}  // namespace tree_800::test

#endif
