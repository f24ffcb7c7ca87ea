#include "cart/settings.h"

#include <tree/cost.h>
#include <tree/priors.h>
#include <tree/validation_spec.h>

#include <stdexcept>

namespace cart {
namespace {

void Fill(tree_800::VariableSettings& out, tree_800::VariableSettings const& in) {
    out.SetMeasurementLevel(in.GetMeasurementLevel());
    out.SetMissingValue(in.GetMissingValue());
    out.SetNumValues(in.GetNumValues());
    out.SetValueMergeFlag(in.GetValueMergeFlag());
}

void Require(bool holds, char const* otherwise) {
    if (!holds) {
        throw std::invalid_argument(otherwise);
    }
}

bool IsSameVariable(tree_800::VariableSettings const& a, tree_800::VariableSettings const& b) {
    return a.GetMeasurementLevel() == b.GetMeasurementLevel() &&
           a.GetMissingValue() == b.GetMissingValue() && a.GetNumValues() == b.GetNumValues();
}

void RequireSameVariables(Dataset const& data, tree_800::CoreSettings const& core) {
    Require(core.GetNumPredictors() == data.NumPredictors(),
            "the settings are for another number of predictors");
    Require(IsSameVariable(*core.GetTarget(), data.target.settings),
            "the settings are for another target");
    for (int i = 0; i < data.NumPredictors(); ++i) {
        Require(IsSameVariable(*core.GetPredictor(i), data.Predictor(i).settings),
                "the settings are for other predictors");
    }
}

}  // namespace

tree_800::CoreSettingsImp MakeCoreSettings(Dataset const& data) {
    tree_800::CoreSettingsImp core;
    Fill(*core.GetTarget(), data.target.settings);
    for (Variable const& predictor : data.predictors) {
        Fill(*core.AddPredictor(), predictor.settings);
    }
    return core;
}

void RequireFit(Dataset const& data, SampleRows const& rows,
                tree_800::CartSettings const& settings) {
    Require(!rows.training.empty(), "the data have no training row");
    RequireSameVariables(data, *settings.GetCoreSettings());
    auto const* const classification = dynamic_cast<tree_800::CCartSettings const*>(&settings);
    Require((classification != nullptr) == data.IsClassification(),
            "the settings are for another kind of target");
    if (classification != nullptr) {
        int const numClasses = data.target.NumCategories();
        Require(classification->GetSplitCriteria() == tree_800::GiniCriterion,
                "this grower splits by the Gini criterion alone");
        Require(classification->GetPriors()->GetNumClasses() <= numClasses &&
                    classification->GetCost()->GetNumClasses() <= numClasses,
                "the priors or costs are for more classes than the target has");
    }
    tree_800::ValidationSpec const& validation = *settings.GetValidationSpec();
    Require(validation.GetType() != tree_800::TestSampleValidation || !rows.test.empty(),
            "the data have no test row");
    Require(validation.GetType() != tree_800::CrossValidation ||
                rows.training.size() >= static_cast<std::size_t>(validation.GetNumCVFolds()),
            "there are more folds than training rows");
}

}  // namespace cart
