#ifndef TREE800_EXAMPLES_GAINS_TABLE_H
#define TREE800_EXAMPLES_GAINS_TABLE_H

#include <tree/gains.h>
#include <tree/gains_settings.h>

#include <iosfwd>
#include <vector>

namespace examples {

/// The columns of a GainsTable, all of the settings' sample. Percentages are 0 to 100.
enum GainsColumn : int {
    CasesColumn = 0,         ///< weighted cases
    CasesPercentColumn = 1,  ///< in percent of all cases
    HitsColumn = 2,          ///< cases of the target category
    HitsPercentColumn = 3,   ///< in percent of all cases of that category
    ResponseColumn = 4,      ///< hits in percent of the cases
    AverageColumn = 5,       ///< mean target, or in a classification tree profit per case
    IndexColumn = 6,         ///< response or average in percent of that of all cases
    NumGainsColumns = 7
};

/// How well the leaves of a tree gather the cases of a target category, or, without one, large
/// values of the target or profit. The table has the hits, their percentage and the response where
/// the settings name a target category; it has the average where they name none, and in a
/// classification tree also where they name profits.
///
/// Leaves are sorted by their response, or without a target category by their average, in the
/// sample of the sort key; a leaf without cases counts as the lowest. Rows are:
/// - the leaves, one a row;
/// - cumulative: the first leaf, the first two, ...;
/// - percentiles: as many of the first cases as make up the step, twice the step, ... percent of
///   the cases, a leaf at the boundary taken in proportion.
///
/// All cases are those in the leaves. A value that divides by 0 is the system-missing value.
/// Borrows the nodes of the tree, which must outlive it; one thread at a time.
class GainsTable : public tree_800::GainsIntf {
public:
    GainsTable(tree_800::Node const& root, tree_800::GainsSettings const& settings);

    // GainsIntf
    int GetNumRows() const override { return static_cast<int>(rows_.size()); }
    int GetNumNodes(int row) const override;
    tree_800::Node const* GetNode(int row, int position) const override;
    bool HasColumn(int column) const override;
    double GetValue(int row, int column) const override;
    [[nodiscard]] tree_800::GainsIntf* Clone() const override { return new GainsTable(*this); }

private:
    /// What some cases have in total.
    struct Totals {
        double cases = 0.0;
        double hits = 0.0;
        double sum = 0.0;  // of the target, or of the profit

        void Add(Totals const& other, double share);
    };
    struct Row {
        std::vector<tree_800::Node const*> nodes;
        Totals totals;
    };

    Totals TotalsOf(tree_800::Node const& node, tree_800::DataSample sample) const;
    double Score(Totals const& totals) const;
    std::vector<tree_800::Node const*> SortedLeaves(tree_800::Node const& root) const;
    void AddPercentileRows(std::vector<tree_800::Node const*> const& leaves);

    tree_800::GainsSettings settings_;
    bool isClassification_;
    Totals all_;
    std::vector<Row> rows_;
};

/// Prints the columns that the table has, one row a line, and the ids of the nodes of each row.
void PrintGains(std::ostream& stream, tree_800::Gains const& gains);

}  // namespace examples

#endif
