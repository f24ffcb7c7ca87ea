#include "cart/cart_grower.h"

#include "gains_table.h"

#include <tree/node_iterator.h>
#include <tree/tree_statistics.h>

#include <utility>

namespace cart {
namespace {

using tree_800::NodeImp;
using tree_800::TestSample;
using tree_800::TrainingSample;

SampleRows RowsBySample(Dataset const& data) {
    SampleRows rows;
    for (std::size_t row = 0; row < data.NumRows(); ++row) {
        rows.Of(data.samples[row]).push_back(row);
    }
    return rows;
}

std::unique_ptr<tree_800::CartSettings> CloneSettings(tree_800::CartSettings const& settings) {
    std::unique_ptr<tree_800::AlgSettings> clone(settings.Clone());
    std::unique_ptr<tree_800::CartSettings> cart(&dynamic_cast<tree_800::CartSettings&>(*clone));
    static_cast<void>(clone.release());
    return cart;
}

}  // namespace

CartGrower::CartGrower(Dataset data, tree_800::CartSettings const& settings)
    : data_(std::move(data)),
      settings_(CloneSettings(settings)),
      rows_(RowsBySample(data_)),
      weighting_((RequireFit(data_, rows_, settings), data_), rows_.training, settings) {}

NodeImp* CartGrower::ReleaseRoot() {
    sequence_.reset();
    return growth_ ? growth_->ReleaseRoot().release() : nullptr;
}

tree_800::VariableSettings const* CartGrower::GetTarget() const {
    return settings_->GetCoreSettings()->GetTarget();
}

tree_800::VariableSettings const* CartGrower::GetPredictor(int index) const {
    bool const exists = 0 <= index && index < data_.NumPredictors();
    return exists ? settings_->GetCoreSettings()->GetPredictor(index) : nullptr;
}

bool CartGrower::Run() {
    while (Step()) {
    }
    return GetRoot() != nullptr && !isCancelled_;
}

bool CartGrower::Step() {
    if (isCancelled_) {
        return false;
    }
    if (!growth_) {
        growth_ = std::make_unique<Growth>(data_, rows_, *settings_, weighting_);
    }
    if (!growth_->IsComplete()) {
        growth_->Step();
    } else if (GetRoot() != nullptr && numStepsAfterGrowth_ < NumStepsAfterGrowth()) {
        StepAfterGrowth();
    }
    return GetRoot() != nullptr &&
           !(growth_->IsComplete() && numStepsAfterGrowth_ == NumStepsAfterGrowth());
}

void CartGrower::Reset() {
    crossValidator_.reset();
    sequence_.reset();
    growth_.reset();
    chosenRisk_.reset();
    numStepsAfterGrowth_ = 0;
    isCancelled_ = false;
}

double CartGrower::GetProgress() const {
    if (!growth_) {
        return 0.0;
    }
    return (growth_->GetProgress() + numStepsAfterGrowth_) / (1 + NumStepsAfterGrowth());
}

int CartGrower::GetNumNodes() const {
    tree_800::PrefixNodeIterator walk(GetRoot());
    int numNodes = 0;
    while (walk.Next() != nullptr) {
        ++numNodes;
    }
    return numNodes;
}

int CartGrower::GetNumLeaves() const {
    return (GetNumNodes() + 1) / 2;  // every split makes two leaves of one
}

double CartGrower::GetRisk(tree_800::DataSample sample) const { return JudgeTree(sample).value; }

double CartGrower::GetRiskStdError(tree_800::DataSample sample) const {
    return JudgeTree(sample).stdError;
}

bool CartGrower::GetStatistics(tree_800::TreeStatistics& out) const {
    if (GetRoot() == nullptr) {
        return false;
    }
    auto const type = GetValidationType();
    Risk const risk =
        type == tree_800::CrossValidation
            ? chosenRisk_.value_or(Risk{systemMissingValue(), systemMissingValue()})
            : JudgeTree(type == tree_800::TestSampleValidation ? TestSample : TrainingSample);
    out = tree_800::TreeStatisticsImp(*this, risk.value, risk.stdError, type);
    return true;
}

tree_800::GainsIntf* CartGrower::ComputeGains(tree_800::GainsSettings const& settings) const {
    return GetRoot() != nullptr ? new examples::GainsTable(*GetRoot(), settings) : nullptr;
}

tree_800::ValidationType CartGrower::GetValidationType() const {
    return settings_->GetValidationSpec()->GetType();
}

int CartGrower::NumStepsAfterGrowth() const {
    switch (GetValidationType()) {
        case tree_800::NoValidation:
            return 0;
        case tree_800::TestSampleValidation:
            return 1;
        case tree_800::CrossValidation:
            return settings_->GetValidationSpec()->GetNumCVFolds() + 1;
    }
    return 0;
}

void CartGrower::StepAfterGrowth() {
    if (!sequence_) {
        sequence_ = std::make_unique<PruningSequence>(*growth_->GetRoot(), data_, rows_.training,
                                                      weighting_);
        if (GetValidationType() == tree_800::CrossValidation) {
            crossValidator_ = std::make_unique<CrossValidator>(data_, rows_.training, *settings_,
                                                               sequence_->GetAlphas());
        }
    }
    if (crossValidator_ && !crossValidator_->IsComplete()) {
        crossValidator_->JudgeNextFold();
    } else {
        PruneToChosenSubtree();
    }
    ++numStepsAfterGrowth_;
}

std::vector<Risk> CartGrower::JudgeSubtrees() const {
    if (crossValidator_) {
        return crossValidator_->GetRisks(weighting_);
    }
    std::vector<Risk> risks;
    for (double const alpha : sequence_->GetAlphas()) {
        std::vector<double> losses;
        for (std::size_t const row : rows_.test) {
            losses.push_back(
                Loss(data_, weighting_, row, sequence_->FindEnd(data_.Row(row), alpha)));
        }
        risks.push_back(Judge(data_, weighting_, rows_.test, losses));
    }
    return risks;
}

void CartGrower::PruneToChosenSubtree() {
    std::vector<Risk> const risks = JudgeSubtrees();
    std::size_t const chosen = ChooseSubtree(risks, *settings_->GetPruningSpec());
    Prune(*growth_->GetRoot(), sequence_->FindNewLeaves(sequence_->GetAlphas()[chosen]));
    chosenRisk_ = risks[chosen];
    sequence_.reset();
    crossValidator_.reset();
}

Risk CartGrower::JudgeTree(tree_800::DataSample sample) const {
    Rows const& rows = rows_.Of(sample);
    if (GetRoot() == nullptr || rows.empty()) {
        return {systemMissingValue(), systemMissingValue()};
    }
    std::vector<double> losses;
    for (std::size_t const row : rows) {
        losses.push_back(Loss(data_, weighting_, row,
                              *GetRoot()->DropObservationThroughTree(data_.Row(row), nullptr)));
    }
    return Judge(data_, weighting_, rows, losses);
}

}  // namespace cart
