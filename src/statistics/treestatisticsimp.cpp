#include <tree/tree_statistics.h>

#include <tree/cls_info.h>
#include <tree/host.h>
#include <tree/node.h>
#include <tree/precondition.h>
#include <tree/tree_algorithm.h>

#include <algorithm>
#include <cstddef>

namespace tree_800 {

TreeStatisticsIntf::~TreeStatisticsIntf() = default;

TreeStatisticsImp::TreeStatisticsImp() = default;

TreeStatisticsImp::TreeStatisticsImp(TreeAlgorithm const& algorithm, double risk, double stdError,
                                     ValidationType validation) {
    Initialize(algorithm, risk, stdError, validation);
}

TreeStatisticsImp::~TreeStatisticsImp() = default;

double TreeStatisticsImp::GetMisclassificationCount(int predicted, int observed) const {
    bool const exists = isCls_ && 0 <= predicted && 0 <= observed &&
                        static_cast<std::size_t>(predicted) < matrix_.size() &&
                        static_cast<std::size_t>(observed) < matrix_.size();
    return exists ? matrix_[static_cast<std::size_t>(predicted)][static_cast<std::size_t>(observed)]
                  : systemMissingValue();
}

double TreeStatisticsImp::GetRisk() const { return risk_; }

double TreeStatisticsImp::GetStdError() const { return stdError_; }

bool TreeStatisticsImp::IsCls() const { return isCls_; }

int TreeStatisticsImp::GetNumClasses() const { return numClasses_; }

TreeStatisticsIntf* TreeStatisticsImp::Clone() const { return new TreeStatisticsImp(*this); }

void TreeStatisticsImp::Initialize(TreeAlgorithm const& algorithm, double risk, double stdError,
                                   ValidationType validation) {
    TreeStatisticsImp gathered;
    gathered.isCls_ = algorithm.IsClassification();
    if (gathered.isCls_) {
        Node const* const root = algorithm.GetRoot();
        ClsInfo const* const info = root != nullptr ? root->GetClsInfo(TrainingSample) : nullptr;
        gathered.numClasses_ = info != nullptr ? info->GetNumClasses() : 0;
        if (validation != CrossValidation) {
            gathered.InitMatrix(gathered.numClasses_);
            gathered.AddMisclassificationInfo(
                algorithm.GetRoot(),
                validation == TestSampleValidation ? TestSample : TrainingSample);
            matrix_.swap(gathered.matrix_);
        }
    }
    isCls_ = gathered.isCls_;
    numClasses_ = gathered.numClasses_;
    risk_ = risk;
    stdError_ = stdError;
}

void TreeStatisticsImp::SetRisk(double risk) { risk_ = risk; }

void TreeStatisticsImp::SetStdError(double stdError) { stdError_ = stdError; }

void TreeStatisticsImp::SetIsCls(bool isCls) { isCls_ = isCls; }

void TreeStatisticsImp::SetNumClasses(int n) {
    InitMatrix(n);
    numClasses_ = n;
}

void TreeStatisticsImp::SetMisclassificationCount(int predicted, int observed, double count) {
    TREE800_REQUIRE(0 <= predicted && static_cast<std::size_t>(predicted) < matrix_.size() &&
                        0 <= observed && static_cast<std::size_t>(observed) < matrix_.size(),
                    "no such cell in the misclassification matrix");
    matrix_[static_cast<std::size_t>(predicted)][static_cast<std::size_t>(observed)] = count;
}

void TreeStatisticsImp::InitMatrix(int n) {
    auto const size = static_cast<std::size_t>(std::max(n, 0));
    matrix_ = std::vector<std::vector<double>>(size, std::vector<double>(size, 0.0));
}

void TreeStatisticsImp::AddMisclassificationInfo(Node const* node, DataSample sample) {
    std::vector<std::vector<double>> matrix(matrix_);
    std::vector<Node const*> pending{node};
    while (!pending.empty()) {
        Node const* const current = pending.back();
        pending.pop_back();
        if (current == nullptr) {
            continue;
        }
        int const numChildren = current->GetNumChildren();
        if (numChildren > 0) {
            for (int pos = numChildren - 1; pos >= 0; --pos) {
                pending.push_back(current->GetChild(static_cast<unsigned int>(pos)));
            }
            continue;
        }
        ClsInfo const* const info = current->GetClsInfo(sample);
        if (info == nullptr || info->GetPrediction() < 0 ||
            static_cast<std::size_t>(info->GetPrediction()) >= matrix.size()) {
            continue;
        }
        std::vector<double>& row = matrix[static_cast<std::size_t>(info->GetPrediction())];
        int const numClasses =
            std::min({numClasses_, info->GetNumClasses(), static_cast<int>(row.size())});
        for (int observed = 0; observed < numClasses; ++observed) {
            row[static_cast<std::size_t>(observed)] += info->GetClassCount(observed);
        }
    }
    matrix_.swap(matrix);
}

}  // namespace tree_800
