#ifndef TREE800_GAINS_H
#define TREE800_GAINS_H

#include <tree/export.h>

#include <memory>

namespace tree_800 {

class Node;

/// A computed gains table: rows of nodes, and values in numbered columns. Implemented by whatever
/// computes it, which also numbers the columns and answers 0, null or the system-missing value for
/// rows, positions and columns that it does not have. Any number of threads may read one table at a
/// time; a change needs it alone.
class TREE800_EXPORT GainsIntf {
public:
    virtual ~GainsIntf();

    /// Rows are numbered from 0, in the sort order of the settings.
    virtual int GetNumRows() const = 0;
    /// Number of nodes that make up the row.
    virtual int GetNumNodes(int row) const = 0;
    /// The node at a position of the row; borrowed from the tree.
    virtual Node const* GetNode(int row, int position) const = 0;
    /// Whether the table has the column; which it has depends on the settings that it was made for.
    virtual bool HasColumn(int column) const = 0;
    /// The number in the row and column, in the unit that the implementation gives the column.
    virtual double GetValue(int row, int column) const = 0;
    /// A copy, which the caller deletes; the nodes stay those of the tree.
    [[nodiscard]] virtual GainsIntf* Clone() const = 0;
};

/// The handle through which a host reads a gains table. Owns a clone of the table it was assigned,
/// or holds nothing and then answers 0, false, null and the system-missing value. Any number of
/// threads may read one handle at a time; a change needs it alone.
///
///     std::unique_ptr<GainsIntf> const table(algorithm.ComputeGains(settings));
///     Gains gains;
///     if (table != nullptr) gains = *table;
class TREE800_EXPORT Gains {
public:
    /// Holds nothing.
    Gains();
    Gains(Gains const&) = delete;
    Gains& operator=(Gains const&) = delete;
    virtual ~Gains();

    /// Holds a clone of the table.
    Gains& operator=(GainsIntf const& table);

    /// The held table's answers; see GainsIntf. @{
    virtual int GetNumRows() const;
    virtual bool HasColumn(int column) const;
    virtual int GetNumNodes(int row) const;
    virtual Node const* GetNode(int row, int position) const;
    virtual double GetValue(int row, int column) const;
    /// @}

private:
    std::unique_ptr<GainsIntf> table_;
};

}  // namespace tree_800

#endif
