#include <tree/node_imp.h>

#include <tree/cls_info.h>
#include <tree/host.h>
#include <tree/precondition.h>
#include <tree/reg_info.h>
#include <tree/split_rule_imp.h>

#include <cstddef>

// What a NodeImp holds of its cases: information per sample, sizes, predictor summaries.

namespace tree_800 {

namespace {

std::size_t Slot(DataSample sample) noexcept { return sample == TrainingSample ? 0 : 1; }

}  // namespace

ClsInfo* NodeImp::GetClsInfo(DataSample sample) const { return clsInfo_[Slot(sample)].get(); }

RegInfo* NodeImp::GetRegInfo(DataSample sample) const { return regInfo_[Slot(sample)].get(); }

ClsInfoImp* NodeImp::GetClsInfoImp(DataSample sample) const {
    return dynamic_cast<ClsInfoImp*>(GetClsInfo(sample));
}

RegInfoImp* NodeImp::GetRegInfoImp(DataSample sample) const {
    return dynamic_cast<RegInfoImp*>(GetRegInfo(sample));
}

void NodeImp::SetClsInfo(ClsInfo* info, DataSample sample) {
    clsInfo_[Slot(sample)].reset(info);
    for (std::unique_ptr<RegInfo>& other : regInfo_) {
        other.reset();
    }
    isClassification_ = true;
}

void NodeImp::SetRegInfo(RegInfo* info, DataSample sample) {
    regInfo_[Slot(sample)].reset(info);
    for (std::unique_ptr<ClsInfo>& other : clsInfo_) {
        other.reset();
    }
    isClassification_ = false;
}

bool NodeImp::IsClassificationNode() const { return isClassification_; }

void NodeImp::SetClassificationNode(bool isClassification) { isClassification_ = isClassification; }

double NodeImp::GetAssignment() const {
    if (isClassification_) {
        ClsInfo const* const info = GetClsInfo(TrainingSample);
        return info != nullptr ? info->GetPrediction() : systemMissingValue();
    }
    RegInfo const* const info = GetRegInfo(TrainingSample);
    return info != nullptr ? info->GetPrediction() : systemMissingValue();
}

double NodeImp::GetNodeSize(DataSample sample) const {
    if (isClassification_) {
        ClsInfoImp const* const info = GetClsInfoImp(sample);
        return info != nullptr ? info->GetCount() : 0.0;
    }
    RegInfoImp const* const info = GetRegInfoImp(sample);
    return info != nullptr ? info->GetCount() : 0.0;
}

double NodeImp::GetUnweightedNodeSize(DataSample sample) const {
    if (isClassification_) {
        ClsInfoImp const* const info = GetClsInfoImp(sample);
        return info != nullptr ? info->GetUnweightedCount() : 0.0;
    }
    RegInfoImp const* const info = GetRegInfoImp(sample);
    return info != nullptr ? info->GetUnweightedCount() : 0.0;
}

double NodeImp::GetPercentageNodeSize(DataSample sample) const {
    if (isClassification_) {
        ClsInfoImp const* const info = GetClsInfoImp(sample);
        return info != nullptr ? info->GetPercentSize() : 0.0;
    }
    Node const* root = this;
    while (Node const* const parent = root->GetParent()) {
        root = parent;
    }
    double const total = root->GetNodeSize(sample);
    return total > 0.0 ? GetNodeSize(sample) / total : total;
}

// Predictor summaries

PredictorImp const* NodeImp::FindPredictor(int index) const {
    bool const exists = index >= 0 && static_cast<std::size_t>(index) < predictors_.size();
    return exists ? &predictors_[static_cast<std::size_t>(index)] : nullptr;
}

PredictorImp& NodeImp::Predictor(int index) {
    TREE800_REQUIRE(FindPredictor(index) != nullptr, "predictor index out of range");
    return predictors_[static_cast<std::size_t>(index)];
}

unsigned int NodeImp::GetNumPredictors() const {
    return static_cast<unsigned int>(predictors_.size());
}

bool NodeImp::GetPredictorRange(int index, double* low, double* high) const {
    PredictorImp const* const predictor = FindPredictor(index);
    return predictor != nullptr && predictor->GetValueRange(low, high);
}

bool NodeImp::GetNumPredictorValues(int index, int* n) const {
    PredictorImp const* const predictor = FindPredictor(index);
    return predictor != nullptr && predictor->GetNumValues(n);
}

bool NodeImp::GetPredictorValues(int index, double* out, int n) const {
    PredictorImp const* const predictor = FindPredictor(index);
    return predictor != nullptr && predictor->GetValues(out, n);
}

bool NodeImp::GetPredictorMissingValueFlag(int index, bool* hasMissing) const {
    PredictorImp const* const predictor = FindPredictor(index);
    if (predictor == nullptr) {
        return false;
    }
    *hasMissing = predictor->HasMissingValues();
    return true;
}

void NodeImp::SetNumPredictors(unsigned int n) { predictors_.resize(n); }

void NodeImp::SetPredictorRange(int index, double low, double high) {
    Predictor(index).SetValueRange(low, high);
}

void NodeImp::SetNumPredictorValues(int index, int n) { Predictor(index).SetNumValues(n); }

void NodeImp::SetPredictorValues(int index, double const* in, int n) {
    Predictor(index).SetValues(in, n);
}

void NodeImp::SetPredictorMissingValueFlag(int index, bool hasMissing) {
    Predictor(index).SetHasMissingValues(hasMissing);
}

}  // namespace tree_800
