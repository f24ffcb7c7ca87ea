#include <tree/split_rule.h>

#include <tree/nominal_split_rule.h>
#include <tree/ordered_split_rule.h>
#include <tree/precondition.h>
#include <tree/variable_settings.h>

namespace tree_800 {

namespace {

std::unique_ptr<SplitRuleImp> MakeRule(VariableSettings const& settings, int predictorIndex) {
    if (settings.GetMeasurementLevel() == global_800::Nominal) {
        return std::make_unique<NSplitRule>(predictorIndex, 0);
    }
    return std::make_unique<OSplitRule>(settings, predictorIndex);
}

}  // namespace

SplitRule::SplitRule(VariableSettings const& settings, int predictorIndex)
    : rule_(MakeRule(settings, predictorIndex)) {}

SplitRule::SplitRule(SplitRuleImp const& rule) : rule_(rule.Clone()) {}

SplitRule::SplitRule(SplitRule const& other)
    : rule_(other.rule_ != nullptr ? other.rule_->Clone() : nullptr) {}

SplitRule& SplitRule::operator=(SplitRule const& other) {
    rule_.reset(other.rule_ != nullptr ? other.rule_->Clone() : nullptr);
    return *this;
}

SplitRule::~SplitRule() = default;

int SplitRule::GetNumChildren() const { return rule_ != nullptr ? rule_->GetNumChildren() : 0; }

ValueSet* SplitRule::GetMappedValues(int child) const {
    return rule_ != nullptr ? rule_->GetMappedValues(child) : nullptr;
}

int SplitRule::GetMissingValueMapping() const {
    return rule_ != nullptr ? rule_->GetMissingValueMapping() : 0;
}

bool SplitRule::GetStatistic(StatisticFlag flag, double* out) const {
    return rule_ != nullptr && rule_->GetStatistic(flag, out);
}

bool SplitRule::HasStatistic(StatisticFlag flag) const {
    return rule_ != nullptr && rule_->HasStatistic(flag);
}

bool SplitRule::HasProperty(SplitRulePropertyFlag flag) const {
    return rule_ != nullptr && rule_->HasProperty(flag);
}

bool SplitRule::AddMappedValues(ValueSet const& values) {
    TREE800_REQUIRE(rule_ != nullptr, "the handle holds no rule");
    return rule_->AddMappedValues(values);
}

void SplitRule::AddMissingValueMapping(bool newChild) {
    TREE800_REQUIRE(rule_ != nullptr, "the handle holds no rule");
    rule_->AddMissingValueMapping(newChild);
}

int SplitRule::GetPredictorIndex() const {
    TREE800_REQUIRE(rule_ != nullptr, "the handle holds no rule");
    return rule_->GetPredictorIndex();
}

}  // namespace tree_800
