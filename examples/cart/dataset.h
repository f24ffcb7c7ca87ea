#ifndef TREE800_EXAMPLES_CART_DATASET_H
#define TREE800_EXAMPLES_CART_DATASET_H

#include <tree/data_sample.h>
#include <tree/host.h>
#include <tree/variable_settings.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace cart {

/// A variable of the data: what the library needs to know of it, and how to name it to a reader.
struct Variable {
    std::string name;
    std::vector<std::string> categories;  ///< names of the codes 0, 1, ...; none when ordered
    tree_800::VariableSettingsImp settings;

    bool IsNominal() const { return settings.GetMeasurementLevel() == global_800::Nominal; }
    int NumCategories() const { return static_cast<int>(categories.size()); }
};

inline Variable OrderedVariable(std::string name) { return {std::move(name), {}, {}}; }

inline Variable NominalVariable(std::string name, std::vector<std::string> categories) {
    Variable variable{std::move(name), std::move(categories), {}};
    variable.settings.SetMeasurementLevel(global_800::Nominal);
    variable.settings.SetNumValues(variable.NumCategories());
    return variable;
}

/// Some rows of a data set.
using Rows = std::vector<std::size_t>;

/// The same, apart by sample.
struct SampleRows {
    Rows training;
    Rows test;

    Rows& Of(tree_800::DataSample sample) {
        return sample == tree_800::TrainingSample ? training : test;
    }
    Rows const& Of(tree_800::DataSample sample) const {
        return sample == tree_800::TrainingSample ? training : test;
    }
};

/// The cases to grow on and to judge by. A nominal target makes a classification tree, any other a
/// regression tree. Every case has a target; a missing predictor is systemMissingValue().
struct Dataset {
    Variable target;
    std::vector<Variable> predictors;
    std::vector<double> values;                 ///< row by row, one value for each predictor
    std::vector<double> targets;                ///< of every row: a class code, or a value
    std::vector<tree_800::DataSample> samples;  ///< of every row

    bool IsClassification() const { return target.IsNominal(); }
    std::size_t NumRows() const { return targets.size(); }
    int NumPredictors() const { return static_cast<int>(predictors.size()); }

    /// The row as an observation that a tree can route.
    double const* Row(std::size_t row) const { return values.data() + row * predictors.size(); }
    double Value(std::size_t row, int predictor) const { return Row(row)[predictor]; }
    Variable const& Predictor(int index) const {
        return predictors[static_cast<std::size_t>(index)];
    }
};

inline bool IsMissing(double value) { return value == systemMissingValue(); }

}  // namespace cart

#endif
