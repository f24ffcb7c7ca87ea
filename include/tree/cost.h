#ifndef TREE800_COST_H
#define TREE800_COST_H

#include <tree/export.h>
#include <tree/matrix.h>

namespace tree_800 {

/// Whether a cost matrix holds default or user-specified costs.
enum CostType : int {
    DefaultCosts = 0,  ///< 0 on the diagonal, 1 off it
    UserCosts = 1      ///< set by every successful Set of a cell
};

/// Misclassification costs of a classification tree: a square matrix whose cell (i, j) is the
/// cost, 0.0 or more, of predicting class i for a case of class j; 0.0 on the diagonal. A new or
/// grown matrix holds default costs. Created by settings and callers; the settings that hold one
/// delete it. Any number of threads may read one object at a time; a change needs it alone.
///
///     CostImp cost;
///     cost.Set(1, 0, 3.0);  // of predicting 1 where 0 is true; now 2 x 2
class TREE800_EXPORT Cost {
public:
    virtual ~Cost();

    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual Cost* Clone() const = 0;

    /// Number of rows of the matrix.
    virtual int GetNumClasses() const = 0;
    /// Cell (i, j); -1.0, never a cost, when i or j is outside [0, GetNumClasses()).
    virtual double Get(int i, int j) const = 0;
    /// Get under another name.
    virtual double GetAt(int i, int j) const;
    /// Whether every cell off the diagonal is within 1e-12 of 1.0. The diagonal is not looked at.
    virtual bool IsDefault() const = 0;
    /// How the costs were last set, whatever their values: UserCosts may still be IsDefault.
    virtual CostType GetType() const = 0;
    /// Accepts DefaultCosts alone, and only while the type is another: refills the matrix with
    /// default costs. False, with nothing changed, otherwise, so also when that is the type
    /// already.
    virtual bool Set(CostType type) = 0;
    /// Sets cell (i, j), growing the matrix to include it, and makes the type UserCosts. False,
    /// with nothing changed, for a negative index, a cost below 0.0 or NaN, and on the diagonal for
    /// anything but 0.0. Throws std::bad_alloc, with nothing changed, when memory runs out.
    virtual bool Set(int i, int j, double cost) = 0;
    /// Set of a cell under another name.
    virtual bool SetAt(int i, int j, double cost);
};

/// The cost matrix. Keeps a working matrix, which all of Cost reads and writes, and a second one
/// that holds default costs once SetDefault has filled it.
class TREE800_EXPORT CostImp : public Cost {
public:
    /// One of the two matrices.
    enum CostMatrix : int { WorkingMatrix = 0, DefaultMatrix = 1 };

    /// Two empty matrices, type DefaultCosts.
    CostImp();
    ~CostImp() override;

    // Cost
    [[nodiscard]] Cost* Clone() const override;
    int GetNumClasses() const override;
    double Get(int i, int j) const override;
    bool IsDefault() const override;
    CostType GetType() const override;
    bool Set(CostType type) override;
    bool Set(int i, int j, double cost) override;

    /// The default matrix while it has rows, the working matrix otherwise and for any other value;
    /// borrowed.
    TMatrix<double> const& GetMatrix(CostMatrix matrix) const;
    /// True for a default matrix that has rows; otherwise whether the working matrix is default.
    bool IsDefaultMatrix(CostMatrix matrix) const;
    /// Fills a matrix (the working one for any value but DefaultMatrix) with n x n default costs; 0
    /// empties it, a negative n leaves it alone. On WorkingMatrix the type becomes DefaultCosts,
    /// also for a negative n.
    void SetDefault(CostMatrix matrix, int n);
    /// Set of a cell without the change of type.
    bool SetImp(int i, int j, double cost);
    /// Makes the working matrix n x n: keeps the top left block, fills up with default costs. Does
    /// nothing for n of 0 or less. Neither the type nor the default matrix changes.
    void Resize(int n);

private:
    TMatrix<double> working_;
    TMatrix<double> default_;
    CostType type_ = DefaultCosts;
};

}  // namespace tree_800

#endif
