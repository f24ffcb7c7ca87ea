#include <tree/chaid_settings.h>

#include "settings/kind.h"

#include <tree/stop_rule.h>

namespace tree_800 {

namespace {

constexpr int DefaultMaxTreeDepth = 3;

}  // namespace

ChaidSettings::ChaidSettings(CoreSettings const& core) : AlgSettings(core) {
    ChaidSettings::Init(0.05, 0.05, 0.025, StandardMerge, false, true);
    AlgSettings::GetStopRule()->SetMaxTreeDepth(DefaultMaxTreeDepth);
}

ChaidSettings::~ChaidSettings() = default;

void ChaidSettings::CopyFrom(AlgSettings const& other) {
    AlgSettings::CopyFrom(other);
    auto const* const chaid = AsKind<ChaidSettings>(other, RegressionChaid, ClassificationChaid);
    if (chaid != nullptr) {
        Init(chaid->alphaOfSplitNode_, chaid->alphaOfMerge_, chaid->alphaOfMergeSplit_,
             chaid->splitMergeMethod_, chaid->allowSplitMerge_, chaid->useBonferroniAdj_);
    }
}

void ChaidSettings::Init(double alphaOfSplitNode, double alphaOfMerge, double alphaOfMergeSplit,
                         SplitMergeMethod method, bool allowSplitMerge, bool useBonferroniAdj) {
    alphaOfSplitNode_ = alphaOfSplitNode;
    alphaOfMerge_ = alphaOfMerge;
    alphaOfMergeSplit_ = alphaOfMergeSplit;
    splitMergeMethod_ = method;
    allowSplitMerge_ = allowSplitMerge;
    useBonferroniAdj_ = useBonferroniAdj;
}

double ChaidSettings::GetAlphaOfSplitNode() const { return alphaOfSplitNode_; }

double ChaidSettings::GetAlphaOfMerge() const { return alphaOfMerge_; }

double ChaidSettings::GetAlphaOfMergeSplit() const { return alphaOfMergeSplit_; }

SplitMergeMethod ChaidSettings::GetSplitMergeMethod() const { return splitMergeMethod_; }

bool ChaidSettings::GetAllowSplitMerge() const { return allowSplitMerge_; }

bool ChaidSettings::GetUseBonferroniAdj() const { return useBonferroniAdj_; }

void ChaidSettings::SetAlphaOfSplitNode(double alpha) { alphaOfSplitNode_ = alpha; }

void ChaidSettings::SetAlphaOfMerge(double alpha) {
    alphaOfMerge_ = alpha;
    alphaOfMergeSplit_ = alpha * 0.5;
}

void ChaidSettings::SetAlphaOfMergeSplit(double alpha) { alphaOfMergeSplit_ = alpha; }

void ChaidSettings::SetSplitMergeMethod(SplitMergeMethod method) {
    if (method == StandardMerge || method == ExhaustiveMerge) {
        splitMergeMethod_ = method;
    }
}

void ChaidSettings::SetAllowSplitMerge(bool allow) { allowSplitMerge_ = allow; }

void ChaidSettings::SetUseBonferroniAdj(bool use) { useBonferroniAdj_ = use; }

RChaidSettingsImp::RChaidSettingsImp(CoreSettings const& core) : ChaidSettings(core) {}

RChaidSettingsImp::RChaidSettingsImp(RChaidSettingsImp const& other) = default;

RChaidSettingsImp::~RChaidSettingsImp() = default;

int RChaidSettingsImp::GetType() const { return RegressionChaid; }

AlgSettings* RChaidSettingsImp::Clone() const { return new RChaidSettingsImp(*this); }

CChaidSettings::CChaidSettings(CoreSettings const& core) : ChaidSettings(core) {}

CChaidSettings::~CChaidSettings() = default;

}  // namespace tree_800
