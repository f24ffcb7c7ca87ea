#include "cart/node_summary.h"

#include <tree/cls_info.h>
#include <tree/node_imp.h>
#include <tree/reg_info.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <set>
#include <vector>

namespace cart {
namespace {

using tree_800::ClsInfo;
using tree_800::ClsInfoImp;
using tree_800::RegInfo;
using tree_800::RegInfoImp;
using tree_800::TestSample;
using tree_800::TrainingSample;

/// What the cases of each class weigh together.
std::vector<double> WeighClasses(ClsInfo const& info, std::vector<double> const& caseWeights) {
    std::vector<double> weights = caseWeights;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        weights[i] *= info.GetClassCount(static_cast<int>(i));
    }
    return weights;
}

double Sum(std::vector<double> const& values) {
    return std::accumulate(values.begin(), values.end(), 0.0);
}

int CheapestClass(std::vector<double> const& classWeights, Weighting const& weighting) {
    std::vector<double> costs;
    for (std::size_t predicted = 0; predicted < classWeights.size(); ++predicted) {
        double cost = 0.0;
        for (std::size_t observed = 0; observed < classWeights.size(); ++observed) {
            cost += weighting.Cost(static_cast<int>(predicted), static_cast<int>(observed)) *
                    classWeights[observed];
        }
        costs.push_back(cost);
    }
    return static_cast<int>(std::min_element(costs.begin(), costs.end()) - costs.begin());
}

/// `training` is null where this is the training sample itself.
std::unique_ptr<ClsInfoImp> MakeClsInfo(Dataset const& data, Rows const& rows,
                                        std::size_t sampleSize, ClsInfo const* training,
                                        Weighting const& weighting) {
    auto info = std::make_unique<ClsInfoImp>();
    info->SetNumClasses(data.target.NumCategories());
    for (std::size_t const row : rows) {
        int const code = static_cast<int>(data.targets[row]);
        info->SetClassCount(code, info->GetClassCount(code) + 1.0);
    }
    auto const numRows = static_cast<double>(rows.size());
    info->SetUnweightedCount(numRows);
    info->SetPercentSize(100.0 * numRows / static_cast<double>(sampleSize));

    ClsInfo const& basis = training != nullptr ? *training : *info;
    std::vector<double> const weights = WeighClasses(basis, weighting.InNode());
    double const total = Sum(weights);
    for (int i = 0; i < info->GetNumClasses(); ++i) {
        info->SetClassProbability(i,
                                  total > 0.0 ? weights[static_cast<std::size_t>(i)] / total : 0.0);
    }
    info->SetPrediction(CheapestClass(weights, weighting));
    return info;
}

void FillHistogram(RegInfoImp& info, Dataset const& data, Rows const& rows) {
    double const range = info.GetMaximum() - info.GetMinimum();
    info.SetNumBins(range > 0.0 ? NumBins : 1);
    for (std::size_t const row : rows) {
        double const share = range > 0.0 ? (data.targets[row] - info.GetMinimum()) / range : 0.0;
        int const last = info.GetNumBins() - 1;  // takes the maximum, which is its right end
        int const bin = std::min(static_cast<int>(share * NumBins), last);
        info.SetBinSize(bin, info.GetBinSize(bin) + 1.0);
    }
}

/// `training` is null where this is the training sample itself.
std::unique_ptr<RegInfoImp> MakeRegInfo(Dataset const& data, Rows const& rows,
                                        RegInfo const* training) {
    auto info = std::make_unique<RegInfoImp>();
    auto const numRows = static_cast<double>(rows.size());
    info->SetCount(numRows);
    info->SetExtendedStatistic(RegInfoImp::StoreUnweightedCount, numRows);
    double sum = 0.0;
    for (std::size_t const row : rows) {
        double const target = data.targets[row];
        sum += target;
        info->SetMinimum(std::min(info->GetMinimum(), target));
        info->SetMaximum(std::max(info->GetMaximum(), target));
    }
    if (!rows.empty()) {
        info->SetMean(sum / numRows);
        double squares = 0.0;
        for (std::size_t const row : rows) {
            double const deviation = data.targets[row] - info->GetMean();
            squares += deviation * deviation;
        }
        info->SetExtendedStatistic(RegInfoImp::StoreStdDev, std::sqrt(squares / numRows));
        FillHistogram(*info, data, rows);
    }
    info->SetExtendedStatistic(RegInfoImp::StorePrediction,
                               training != nullptr ? training->GetMean() : info->GetMean());
    return info;
}

void SummarisePredictor(tree_800::NodeImp& node, Dataset const& data, Rows const& rows,
                        int predictor) {
    std::set<double> values;
    for (std::size_t const row : rows) {
        values.insert(data.Value(row, predictor));
    }
    node.SetPredictorMissingValueFlag(predictor, values.erase(systemMissingValue()) > 0);
    if (data.Predictor(predictor).IsNominal()) {
        std::vector<double> const codes(values.begin(), values.end());
        node.SetPredictorValues(predictor, codes.data(), static_cast<int>(codes.size()));
    } else if (!values.empty()) {
        node.SetPredictorRange(predictor, *values.begin(), *values.rbegin());
    }
}

}  // namespace

void Summarise(tree_800::NodeImp& node, Dataset const& data, SampleRows const& rows,
               SampleRows const& all, Weighting const& weighting) {
    for (auto const sample : {TrainingSample, TestSample}) {
        Rows const& reached = rows.Of(sample);
        std::size_t const sampleSize = all.Of(sample).size();
        if (sampleSize == 0) {
            continue;
        }
        if (data.IsClassification()) {
            ClsInfo const* const training = node.GetClsInfo(TrainingSample);
            auto info = MakeClsInfo(data, reached, sampleSize, training, weighting);
            node.SetClsInfo(info.release(), sample);
        } else {
            RegInfo const* const training = node.GetRegInfo(TrainingSample);
            node.SetRegInfo(MakeRegInfo(data, reached, training).release(), sample);
        }
    }
    node.SetNumPredictors(static_cast<unsigned>(data.NumPredictors()));
    for (int predictor = 0; predictor < data.NumPredictors(); ++predictor) {
        SummarisePredictor(node, data, rows.training, predictor);
    }
}

double Impurity(tree_800::NodeImp const& node, Weighting const& weighting) {
    if (RegInfo const* const info = node.GetRegInfo(TrainingSample)) {
        return node.GetNodeSize(TrainingSample) * info->GetStdDev() * info->GetStdDev();
    }
    std::vector<double> const weights =
        WeighClasses(*node.GetClsInfo(TrainingSample), weighting.InCriterion());
    double const total = Sum(weights);
    double gini = 1.0;
    for (double const weight : weights) {
        gini -= weight / total * (weight / total);
    }
    return total * gini;
}

}  // namespace cart
