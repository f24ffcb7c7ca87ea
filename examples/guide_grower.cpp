#include "guide_grower.h"

#include "gains_table.h"

#include <tree/cls_info.h>
#include <tree/host.h>
#include <tree/node_iterator.h>
#include <tree/nominal_split_rule.h>
#include <tree/ordered_split_rule.h>
#include <tree/stop_rule.h>
#include <tree/tree_statistics.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace guide {

using tree_800::NodeImp;
using tree_800::NSplitRule;
using tree_800::OSplitRule;
using tree_800::SplitRuleImp;
using tree_800::StatisticSlot0;
using tree_800::TrainingSample;
using tree_800::VariableSettings;

Grower::Grower(Data data, tree_800::CCartSettings const& settings)
    : data_(std::move(data)), settings_(dynamic_cast<tree_800::CCartSettings*>(settings.Clone())) {}

// The data

VariableSettings const* Grower::GetPredictor(int index) const {
    return 0 <= index && index < GetNumPredictors() ? Core().GetPredictor(index) : nullptr;
}

bool Grower::IsNominal(int predictor) const {
    return GetPredictor(predictor)->GetMeasurementLevel() == global_800::Nominal;
}

double Grower::Value(std::size_t row, int predictor) const {
    return data_.rows[row][static_cast<std::size_t>(predictor)];
}

/// The values that occur, a missing one included.
std::set<double> Grower::ValuesOf(Rows const& rows, int predictor) const {
    std::set<double> values;
    for (std::size_t const row : rows) {
        values.insert(Value(row, predictor));
    }
    return values;
}

std::vector<double> Grower::CountClasses(Rows const& rows) const {
    std::vector<double> counts(static_cast<std::size_t>(GetNumClasses()));
    for (std::size_t const row : rows) {
        counts[static_cast<std::size_t>(data_.classes[row])] += 1.0;
    }
    return counts;
}

/// The rows of each of the two children; what the rule cannot place is in neither.
std::vector<Grower::Rows> Grower::Divide(Rows const& rows, SplitRuleImp const& rule) const {
    std::vector<Rows> children(2);
    for (std::size_t const row : rows) {
        int const child = rule.Classify(Value(row, rule.GetPredictorIndex()));
        if (child >= 0) {
            children[static_cast<std::size_t>(child)].push_back(row);
        }
    }
    return children;
}

// Leaves

std::unique_ptr<NodeImp> Grower::MakeLeaf(Rows const& rows) {
    std::vector<double> const counts = CountClasses(rows);
    auto const numCases = static_cast<double>(rows.size());

    auto info = std::make_unique<tree_800::ClsInfoImp>();
    info->SetNumClasses(GetNumClasses());
    for (int i = 0; i < GetNumClasses(); ++i) {
        info->SetClassCount(i, counts[static_cast<std::size_t>(i)]);
    }
    for (int i = 0; i < GetNumClasses(); ++i) {
        info->SetClassProbability(i, info->GetClassPercent(i));  // a fraction, when all are counted
    }
    auto const biggest = std::max_element(counts.begin(), counts.end());
    info->SetPrediction(static_cast<int>(biggest - counts.begin()));
    info->SetUnweightedCount(numCases);
    info->SetPercentSize(100.0 * numCases / static_cast<double>(data_.rows.size()));

    auto leaf = std::make_unique<NodeImp>();
    leaf->SetId(++lastId_);
    leaf->SetClsInfo(info.release(), TrainingSample);  // the leaf owns it now
    Summarise(*leaf, rows);
    return leaf;
}

void Grower::Summarise(NodeImp& node, Rows const& rows) const {
    node.SetNumPredictors(static_cast<unsigned>(GetNumPredictors()));  // before the setters
    for (int i = 0; i < GetNumPredictors(); ++i) {
        std::set<double> values = ValuesOf(rows, i);
        bool const hasMissing = values.erase(GetPredictor(i)->GetMissingValue()) > 0;
        node.SetPredictorMissingValueFlag(i, hasMissing);
        if (IsNominal(i)) {
            std::vector<double> const codes(values.begin(), values.end());
            node.SetPredictorValues(i, codes.data(), static_cast<int>(codes.size()));  // copied
        } else if (!values.empty()) {
            node.SetPredictorRange(i, *values.begin(), *values.rbegin());
        }
    }
}

// Rules

/// Sends the category, or the values up to a number, to the child, and all others to the other.
Grower::Rule Grower::MakeRule(int predictor, std::set<double> const& values, double value,
                              int child) const {
    VariableSettings const& variable = *GetPredictor(predictor);
    if (IsNominal(predictor)) {
        auto rule = std::make_unique<NSplitRule>(predictor, variable.GetNumValues());
        for (double const code : values) {
            rule->SetCatMapping(static_cast<int>(code), code == value ? child : 1 - child);
        }
        return rule;  // cannot place a category that did not occur
    }
    auto rule = std::make_unique<OSplitRule>(variable, predictor);  // knows the missing value
    rule->SetCutPoint(value);  // up to the value to child 0, above it to child 1
    if (child == 1) {
        rule->SetReverse();
    }
    return rule;
}

/// The best rule of each predictor that has one with a score above 0, best first.
std::vector<Grower::Rule> Grower::FindRules(Rows const& rows, Score const& score) const {
    std::vector<Rule> found;
    for (int predictor = 0; predictor < GetNumPredictors(); ++predictor) {
        std::set<double> values = ValuesOf(rows, predictor);
        values.erase(GetPredictor(predictor)->GetMissingValue());
        Rule best;
        for (double const value : values) {
            for (int const child : {0, 1}) {
                Rule rule = MakeRule(predictor, values, value, child);
                rule->SetStatistic(StatisticSlot0, score(*rule));
                double const toBeat = best ? best->GetStatistic(StatisticSlot0) : 0.0;
                if (rule->GetStatistic(StatisticSlot0) > toBeat) {
                    best = std::move(rule);
                }
            }
        }
        if (best) {
            found.push_back(std::move(best));
        }
    }
    std::stable_sort(found.begin(), found.end(), [](Rule const& a, Rule const& b) {
        return a->GetStatistic(StatisticSlot0) > b->GetStatistic(StatisticSlot0);
    });
    return found;
}

/// How much the rule lowers the Gini index, times the cases that it places; 0 when a child gets too
/// few (Breiman, Friedman, Olshen and Stone 1984, section 4.3).
double Grower::Improvement(Rows const& rows, SplitRuleImp const& rule) const {
    auto const purity = [&](Rows const& some) {
        std::vector<double> const counts = CountClasses(some);
        return std::inner_product(counts.begin(), counts.end(), counts.begin(), 0.0) /
               static_cast<double>(some.size());
    };
    std::vector<Rows> const children = Divide(rows, rule);
    int const minSize = std::max(1, settings_->GetStopRule()->GetMinChildSize());
    if (std::min(children[0].size(), children[1].size()) < static_cast<std::size_t>(minSize)) {
        return 0.0;
    }
    Rows placed = children[0];
    placed.insert(placed.end(), children[1].begin(), children[1].end());
    return purity(children[0]) + purity(children[1]) - purity(placed);
}

/// The rules on other predictors that agree with the primary split on more rows than sending all
/// of them to its bigger child would.
std::vector<Grower::Rule> Grower::FindSurrogates(Rows const& rows,
                                                 SplitRuleImp const& primary) const {
    auto const sizeOfBigger = [](std::vector<Rows> const& children) {
        return static_cast<double>(std::max(children[0].size(), children[1].size()));
    };
    return FindRules(rows, [&](SplitRuleImp const& rule) {
        if (rule.GetPredictorIndex() == primary.GetPredictorIndex()) {
            return 0.0;
        }
        std::vector<Rows> const children = Divide(rows, primary);
        double agree = 0.0;
        for (std::size_t const pos : {0U, 1U}) {
            agree += static_cast<double>(Divide(children[pos], rule)[pos].size());
        }
        return agree - sizeOfBigger(children);
    });
}

void Grower::Split(Undecided const& undecided, std::vector<Rule> splits) {
    NodeImp& node = *undecided.leaf;
    SplitRuleImp& primary = *splits.front();
    std::vector<Rule> surrogates = FindSurrogates(undecided.rows, primary);
    auto const maxNumSurrogates = static_cast<std::size_t>(settings_->GetMaxNumSurrogates());
    surrogates.resize(std::min(surrogates.size(), maxNumSurrogates));

    std::vector<Rows> const placed = Divide(undecided.rows, primary);  // by its own rule alone
    std::size_t const bigger = placed[0].size() < placed[1].size() ? 1 : 0;
    auto const numPlaced = static_cast<double>(placed[0].size() + placed[1].size());
    primary.SetDumbRule(static_cast<int>(bigger),
                        static_cast<double>(placed[bigger].size()) / numPlaced);

    node.SetNumCompetitors(static_cast<unsigned>(splits.size()));  // empty slots
    for (unsigned i = 0; i < splits.size(); ++i) {
        node.SetCompetitor(i, splits[i].release());  // owned by the node; 0 is the primary split
    }
    node.SetNumSurrogates(static_cast<unsigned>(surrogates.size()));
    for (unsigned i = 0; i < surrogates.size(); ++i) {
        node.SetSurrogate(i, surrogates[i].release());
    }

    node.SetNumChildren(2);  // the node routes from now on, by all its rules
    std::vector<Rows> rows(2);
    for (std::size_t const row : undecided.rows) {
        rows[static_cast<std::size_t>(node.Classify(data_.rows[row].data()))].push_back(row);
    }
    for (unsigned const pos : {0U, 1U}) {
        auto child = MakeLeaf(rows[pos]);
        undecided_.push_back({child.get(), std::move(rows[pos]), undecided.depth + 1});
        node.SetChild(pos, child.release());
    }
}

// The run

bool Grower::Step() {
    if (isCancelled_) {
        return false;
    }
    if (!isStarted_) {
        isStarted_ = true;
        Rows rows(data_.rows.size());
        std::iota(rows.begin(), rows.end(), std::size_t{0});
        root_ = MakeLeaf(rows);
        undecided_.push_back({root_.get(), std::move(rows), 0});
    }
    if (!undecided_.empty()) {
        Undecided const undecided = std::move(undecided_.back());
        undecided_.pop_back();
        auto splits = FindRules(undecided.rows, [&](SplitRuleImp const& rule) {
            return Improvement(undecided.rows, rule);
        });
        if (!splits.empty() && undecided.depth < settings_->GetStopRule()->GetMaxTreeDepth()) {
            Split(undecided, std::move(splits));
        }
    }
    return !undecided_.empty();
}

bool Grower::Run() {
    while (Step()) {
    }
    return root_ != nullptr && !isCancelled_;
}

void Grower::Reset() {
    undecided_.clear();
    root_.reset();
    lastId_ = 0;
    isStarted_ = false;
    isCancelled_ = false;
}

double Grower::GetProgress() const {
    std::size_t underway = isStarted_ ? 0 : data_.rows.size();
    for (Undecided const& undecided : undecided_) {
        underway += undecided.rows.size();
    }
    return 1.0 - static_cast<double>(underway) / static_cast<double>(data_.rows.size());
}

tree_800::Node* Grower::ReleaseRoot() {
    undecided_.clear();  // points into the tree
    return root_.release();
}

// Answers about the tree

int Grower::GetNumNodes() const {
    int count = 0;
    tree_800::PrefixNodeIterator walk(GetRoot());
    while (walk.Next() != nullptr) {
        ++count;
    }
    return count;
}

int Grower::GetNumLeaves() const {
    return (GetNumNodes() + 1) / 2;  // every split makes two leaves of one
}

double Grower::GetRisk(tree_800::DataSample sample) const {
    if (root_ == nullptr || sample != TrainingSample) {
        return systemMissingValue();
    }
    double numWrong = 0.0;
    for (std::size_t row = 0; row < data_.rows.size(); ++row) {
        auto const* end = root_->DropObservationThroughTree(data_.rows[row].data(), nullptr);
        numWrong += end->GetAssignment() == data_.classes[row] ? 0.0 : 1.0;
    }
    return numWrong / static_cast<double>(data_.rows.size());
}

double Grower::GetRiskStdError(tree_800::DataSample sample) const {
    double const risk = GetRisk(sample);
    return risk == systemMissingValue()
               ? risk
               : std::sqrt(risk * (1.0 - risk) / static_cast<double>(data_.rows.size()));
}

bool Grower::GetStatistics(tree_800::TreeStatistics& out) const {
    if (root_ == nullptr) {
        return false;
    }
    out = tree_800::TreeStatisticsImp(*this, GetRisk(TrainingSample),
                                      GetRiskStdError(TrainingSample), tree_800::NoValidation);
    return true;
}

tree_800::GainsIntf* Grower::ComputeGains(tree_800::GainsSettings const& settings) const {
    return root_ != nullptr ? new examples::GainsTable(*root_, settings) : nullptr;
}

}  // namespace guide
