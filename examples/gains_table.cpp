#include "gains_table.h"

#include <tree/cls_info.h>
#include <tree/host.h>
#include <tree/node.h>
#include <tree/node_iterator.h>
#include <tree/reg_info.h>

#include <algorithm>
#include <iomanip>
#include <limits>
#include <ostream>

namespace examples {
namespace {

using tree_800::Node;

double Ratio(double numerator, double denominator) {
    return denominator != 0.0 ? numerator / denominator : systemMissingValue();
}

double Percent(double part, double whole) {
    return whole != 0.0 ? 100.0 * part / whole : systemMissingValue();
}

}  // namespace

void GainsTable::Totals::Add(Totals const& other, double share) {
    cases += share * other.cases;
    hits += share * other.hits;
    sum += share * other.sum;
}

GainsTable::GainsTable(Node const& root, tree_800::GainsSettings const& settings)
    : settings_(settings), isClassification_(root.GetClsInfo(tree_800::TrainingSample) != nullptr) {
    std::vector<Node const*> const leaves = SortedLeaves(root);
    for (Node const* const leaf : leaves) {
        all_.Add(TotalsOf(*leaf, settings_.GetDataSample()), 1.0);
    }
    if (settings_.HasPercentileStatistics()) {
        AddPercentileRows(leaves);
        return;
    }
    for (Node const* const leaf : leaves) {
        bool const continues = settings_.HasCumulativeStatistics() && !rows_.empty();
        Row row = continues ? rows_.back() : Row{};
        row.nodes.push_back(leaf);
        row.totals.Add(TotalsOf(*leaf, settings_.GetDataSample()), 1.0);
        rows_.push_back(row);
    }
}

int GainsTable::GetNumNodes(int row) const {
    bool const exists = 0 <= row && row < GetNumRows();
    return exists ? static_cast<int>(rows_[static_cast<std::size_t>(row)].nodes.size()) : 0;
}

Node const* GainsTable::GetNode(int row, int position) const {
    bool const exists = 0 <= position && position < GetNumNodes(row);
    return exists ? rows_[static_cast<std::size_t>(row)].nodes[static_cast<std::size_t>(position)]
                  : nullptr;
}

bool GainsTable::HasColumn(int column) const {
    bool const hasTarget = !settings_.HasAverageBasedStatistics();
    switch (column) {
        case CasesColumn:
        case CasesPercentColumn:
        case IndexColumn:
            return true;
        case HitsColumn:
        case HitsPercentColumn:
        case ResponseColumn:
            return hasTarget;
        case AverageColumn:
            return !hasTarget || (isClassification_ && settings_.GetNumCategories() > 0);
        default:
            return false;
    }
}

double GainsTable::GetValue(int row, int column) const {
    if (row < 0 || row >= GetNumRows() || !HasColumn(column)) {
        return systemMissingValue();
    }
    Totals const& totals = rows_[static_cast<std::size_t>(row)].totals;
    switch (column) {
        case CasesColumn:
            return totals.cases;
        case CasesPercentColumn:
            return Percent(totals.cases, all_.cases);
        case HitsColumn:
            return totals.hits;
        case HitsPercentColumn:
            return Percent(totals.hits, all_.hits);
        case ResponseColumn:
            return Percent(totals.hits, totals.cases);
        case AverageColumn:
            return Ratio(totals.sum, totals.cases);
        default:
            return totals.cases != 0.0 && all_.cases != 0.0 ? Percent(Score(totals), Score(all_))
                                                            : systemMissingValue();
    }
}

GainsTable::Totals GainsTable::TotalsOf(Node const& node, tree_800::DataSample sample) const {
    Totals totals;
    totals.cases = node.GetNodeSize(sample);
    if (tree_800::RegInfo const* const values = node.GetRegInfo(sample)) {
        totals.sum = totals.cases * values->GetMean();
    } else if (tree_800::ClsInfo const* const info = node.GetClsInfo(sample)) {
        for (int i = 0; i < info->GetNumClasses(); ++i) {
            totals.sum += info->GetClassCount(i) * settings_.GetCategoryProfit(i);
            totals.hits += i == settings_.GetTargetCategory() ? info->GetClassCount(i) : 0.0;
        }
    }
    return totals;
}

/// What the leaves compete by.
double GainsTable::Score(Totals const& totals) const {
    if (totals.cases == 0.0) {
        return -std::numeric_limits<double>::infinity();
    }
    return (settings_.HasAverageBasedStatistics() ? totals.sum : totals.hits) / totals.cases;
}

std::vector<Node const*> GainsTable::SortedLeaves(Node const& root) const {
    std::vector<Node const*> leaves;
    tree_800::PrefixNodeIterator walk(&root);
    while (Node const* const node = walk.Next()) {
        if (node->GetNumChildren() == 0) {
            leaves.push_back(node);
        }
    }
    auto const score = [&](Node const* leaf) {
        return Score(TotalsOf(*leaf, settings_.GetSortKey()));
    };
    bool const isAscending = settings_.GetSortOrder() == tree_800::SortAscending;
    std::stable_sort(leaves.begin(), leaves.end(), [&](Node const* a, Node const* b) {
        return isAscending ? score(a) < score(b) : score(a) > score(b);
    });
    return leaves;
}

void GainsTable::AddPercentileRows(std::vector<Node const*> const& leaves) {
    int const step = settings_.GetPercentileIncrement();
    for (int percent = step; 0 < step && percent <= 100; percent += step) {
        double missing = all_.cases * percent / 100.0;  // from the row so far
        Row row;
        for (Node const* const leaf : leaves) {
            Totals const totals = TotalsOf(*leaf, settings_.GetDataSample());
            if (missing > 0.0 && totals.cases > 0.0) {
                row.nodes.push_back(leaf);
                row.totals.Add(totals, std::min(1.0, missing / totals.cases));
                missing -= totals.cases;
            }
        }
        rows_.push_back(row);
    }
}

void PrintGains(std::ostream& stream, tree_800::Gains const& gains) {
    struct Format {
        char const* title;
        int precision;
    };
    Format const formats[NumGainsColumns] = {{"cases", 0},  {"% cases", 1},    {"hits", 0},
                                             {"% hits", 1}, {"% response", 1}, {"average", 1},
                                             {"% index", 0}};
    constexpr int Width = 12;
    auto const flags = stream.flags();
    auto const precision = stream.precision();
    stream << std::fixed;
    for (int column = 0; column < NumGainsColumns; ++column) {
        if (gains.HasColumn(column)) {
            stream << std::setw(Width) << formats[column].title;
        }
    }
    stream << "  leaves\n";
    for (int row = 0; row < gains.GetNumRows(); ++row) {
        for (int column = 0; column < NumGainsColumns; ++column) {
            if (!gains.HasColumn(column)) {
                continue;
            }
            double const value = gains.GetValue(row, column);
            stream << std::setw(Width) << std::setprecision(formats[column].precision);
            value == systemMissingValue() ? stream << '-' : stream << value;
        }
        stream << ' ';
        for (int i = 0; i < gains.GetNumNodes(row); ++i) {
            stream << ' ' << gains.GetNode(row, i)->GetId();
        }
        stream << '\n';
    }
    stream.flags(flags);
    stream.precision(precision);
}

}  // namespace examples
