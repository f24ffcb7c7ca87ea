#include <tree/tree_statistics.h>

#include <tree/host.h>

namespace tree_800 {

TreeStatistics::TreeStatistics() = default;

TreeStatistics::~TreeStatistics() = default;

TreeStatistics& TreeStatistics::operator=(TreeStatistics const& other) {
    if (this != &other) {
        held_.reset(other.held_ != nullptr ? other.held_->Clone() : nullptr);
    }
    return *this;
}

TreeStatistics& TreeStatistics::operator=(TreeStatisticsIntf const& statistics) {
    held_.reset(statistics.Clone());
    return *this;
}

bool TreeStatistics::IsCls() const { return held_ != nullptr && held_->IsCls(); }

int TreeStatistics::GetNumClasses() const { return held_ != nullptr ? held_->GetNumClasses() : 0; }

double TreeStatistics::GetRisk() const {
    return held_ != nullptr ? held_->GetRisk() : systemMissingValue();
}

double TreeStatistics::GetStdError() const {
    return held_ != nullptr ? held_->GetStdError() : systemMissingValue();
}

double TreeStatistics::GetMisclassificationCount(int predicted, int observed) const {
    return held_ != nullptr ? held_->GetMisclassificationCount(predicted, observed)
                            : systemMissingValue();
}

}  // namespace tree_800
