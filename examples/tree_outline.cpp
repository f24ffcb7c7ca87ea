#include "tree_outline.h"

#include <tree/cls_info.h>
#include <tree/node.h>
#include <tree/node_iterator.h>
#include <tree/reg_info.h>
#include <tree/split_rule.h>
#include <tree/value_set.h>

#include <iomanip>
#include <memory>
#include <ostream>
#include <sstream>

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

/// The values of the parent's split that lead to the node.
std::string DescribeWay(tree_800::Node const& node, cart::Dataset const& data) {
    tree_800::Node const& parent = *node.GetParent();
    int pos = 0;
    while (parent.GetChild(static_cast<unsigned>(pos)) != &node) {
        ++pos;
    }
    std::unique_ptr<tree_800::SplitRule> const split(parent.GetCompetitor(0));
    std::unique_ptr<tree_800::ValueSet> const values(split->GetMappedValues(pos));
    return Describe(*values, data.Predictor(split->GetPredictorIndex()));
}

std::size_t Depth(tree_800::Node const& node, tree_800::Node const& root) {
    std::size_t depth = 0;
    for (auto const* ancestor = &node; ancestor != &root; ancestor = ancestor->GetParent()) {
        ++depth;
    }
    return depth;
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
    tree_800::PrefixNodeIterator walk(&root);
    while (tree_800::Node const* const node = walk.Next()) {
        std::string const way = node == &root ? "everywhere" : DescribeWay(*node, data);
        stream << std::setw(3) << node->GetId() << "  " << std::left << std::setw(42)
               << std::string(2 * Depth(*node, root), ' ') + way << std::right << std::setw(6)
               << node->GetUnweightedNodeSize(TrainingSample) << std::setw(6)
               << node->GetUnweightedNodeSize(TestSample) << "  "
               << DescribePrediction(*node, data.target) << '\n';
    }
}

}  // namespace examples
