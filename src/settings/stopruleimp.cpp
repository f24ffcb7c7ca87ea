#include <tree/stop_rule.h>

#include "foundation/tolerance.h"

#include <cmath>

namespace tree_800 {

namespace {

bool IsClose(double a, double b) noexcept { return std::fabs(a - b) <= Tolerance; }

void StoreSize(int& field, int cases) noexcept {
    if (cases >= 0) {
        field = cases;
    }
}

void StorePercentage(double& field, double percent) noexcept {
    if (percent >= 0.0 && percent <= 100.0) {
        field = percent;
    }
}

}  // namespace

StopRule::~StopRule() = default;

StopRuleImp::StopRuleImp() : StopRuleImp(0.0001, 100, 0.0, 50, 0.0, 0) {}

StopRuleImp::StopRuleImp(double minImprovement, int minNodeSize, double minNodePercentSize,
                         int minChildSize, double minChildPercentSize, int maxTreeDepth) {
    Init(minImprovement, minNodeSize, minNodePercentSize, minChildSize, minChildPercentSize,
         maxTreeDepth);
}

void StopRuleImp::Init(double minImprovement, int minNodeSize, double minNodePercentSize,
                       int minChildSize, double minChildPercentSize, int maxTreeDepth) {
    minImprovement_ = minImprovement;
    minNodeSize_ = minNodeSize;
    minNodePercentSize_ = minNodePercentSize;
    minChildSize_ = minChildSize;
    minChildPercentSize_ = minChildPercentSize;
    maxTreeDepth_ = maxTreeDepth;
}

StopRule* StopRuleImp::Clone() const { return new StopRuleImp(*this); }

double StopRuleImp::GetMinImprovement() const { return minImprovement_; }

int StopRuleImp::GetMinNodeSize() const { return minNodeSize_; }

double StopRuleImp::GetMinNodePercentSize() const { return minNodePercentSize_; }

int StopRuleImp::GetMinChildSize() const { return minChildSize_; }

double StopRuleImp::GetMinChildPercentSize() const { return minChildPercentSize_; }

int StopRuleImp::GetMaxTreeDepth() const { return maxTreeDepth_; }

void StopRuleImp::SetMinImprovement(double improvement) { minImprovement_ = improvement; }

void StopRuleImp::SetMinNodeSize(int cases) { StoreSize(minNodeSize_, cases); }

void StopRuleImp::SetMinNodePercentSize(double percent) {
    StorePercentage(minNodePercentSize_, percent);
}

void StopRuleImp::SetMinChildSize(int cases) { StoreSize(minChildSize_, cases); }

void StopRuleImp::SetMinChildPercentSize(double percent) {
    StorePercentage(minChildPercentSize_, percent);
}

void StopRuleImp::SetMaxTreeDepth(int depth) { maxTreeDepth_ = depth; }

bool StopRuleImp::operator==(StopRuleImp const& other) const {
    return minNodeSize_ == other.minNodeSize_ && minChildSize_ == other.minChildSize_ &&
           IsClose(minNodePercentSize_, other.minNodePercentSize_) &&
           IsClose(minChildPercentSize_, other.minChildPercentSize_) &&
           maxTreeDepth_ == other.maxTreeDepth_ && IsClose(minImprovement_, other.minImprovement_);
}

}  // namespace tree_800
