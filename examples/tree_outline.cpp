#include "tree_outline.h"

#include <tree/cls_info.h>
#include <tree/node.h>
#include <tree/reg_info.h>
#include <tree/split_rule.h>
#include <tree/value_set.h>

#include <iomanip>
#include <memory>
#include <ostream>
#include <sstream>
#include <utility>
#include <vector>

namespace examples {
namespace {

using tree_800::TestSample;
using tree_800::TrainingSample;

std::string DescribeInterval(tree_800::OValueSet const& interval, std::string const& name) {
    std::ostringstream text;
    if (interval.IsBoundedLeft() && !interval.IsBoundedRight()) {
        text << name << (interval.IsOpenLeft() ? " > " : " >= ") << interval.GetLeftEnd();
        return text.str();
    }
    if (interval.IsBoundedLeft()) {
        text << interval.GetLeftEnd() << (interval.IsOpenLeft() ? " < " : " <= ");
    }
    text << name;
    if (interval.IsBoundedRight()) {
        text << (interval.IsOpenRight() ? " < " : " <= ") << interval.GetRightEnd();
    }
    return text.str();
}

std::string DescribeCodes(tree_800::NValueSet const& codes, cart::Variable const& variable) {
    std::string text = variable.name;
    char const* separator = " = ";
    std::unique_ptr<tree_800::NValueSetIter> const code(codes.GetIterator());
    while (code->Advance()) {
        text += separator + variable.categories[static_cast<std::size_t>(code->GetData())];
        separator = " or ";
    }
    return text;
}

/// A node, the values that lead to it, and its depth.
struct Entry {
    tree_800::Node const* node;
    std::string values;
    std::size_t depth;
};

void PrintEntry(std::ostream& stream, Entry const& entry, cart::Variable const& target) {
    tree_800::Node const& node = *entry.node;
    stream << std::setw(3) << node.GetId() << "  " << std::left << std::setw(42)
           << std::string(2 * entry.depth, ' ') + entry.values << std::right << std::setw(6)
           << node.GetUnweightedNodeSize(TrainingSample) << std::setw(6)
           << node.GetUnweightedNodeSize(TestSample) << "  " << DescribePrediction(node, target)
           << '\n';
}

}  // namespace

std::string Describe(tree_800::ValueSet const& values, cart::Variable const& variable) {
    if (values.IsNominalValueSet()) {
        return DescribeCodes(dynamic_cast<tree_800::NValueSet const&>(values), variable);
    }
    return DescribeInterval(dynamic_cast<tree_800::OValueSet const&>(values), variable.name);
}

std::string DescribePrediction(tree_800::Node const& node, cart::Variable const& target) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(0);
    if (tree_800::ClsInfo const* const info = node.GetClsInfo(TrainingSample)) {
        int const code = info->GetPrediction();
        text << target.categories[static_cast<std::size_t>(code)] << ' '
             << 100.0 * info->GetClassProbability(code) << " %";
    } else if (tree_800::RegInfo const* const values = node.GetRegInfo(TrainingSample)) {
        text << values->GetPrediction() << " +- " << values->GetStdDev();
    }
    return text.str();
}

void PrintOutline(std::ostream& stream, tree_800::Node const& root, cart::Dataset const& data) {
    stream << " id  " << std::left << std::setw(42) << "where" << std::right << " train  test  "
           << data.target.name << '\n';
    std::vector<Entry> open = {{&root, "everywhere", 0}};
    while (!open.empty()) {
        Entry const entry = std::move(open.back());
        open.pop_back();
        PrintEntry(stream, entry, data.target);
        std::unique_ptr<tree_800::SplitRule> const split(entry.node->GetCompetitor(0));
        for (int pos = entry.node->GetNumChildren() - 1; pos >= 0; --pos) {
            std::unique_ptr<tree_800::ValueSet> const values(split->GetMappedValues(pos));
            open.push_back({entry.node->GetChild(static_cast<unsigned>(pos)),
                            Describe(*values, data.Predictor(split->GetPredictorIndex())),
                            entry.depth + 1});
        }
    }
}

}  // namespace examples
