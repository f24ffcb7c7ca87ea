#ifndef TREE800_MATRIX_H
#define TREE800_MATRIX_H

#include <tree/precondition.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// A growable row-major matrix of plain values; misclassification costs are kept in it.
///
/// Capacities and counts in use are apart: the capacities say how much is allocated, the counts how
/// far cells have been written. The column capacity is the row stride. Growth is exact.
///
/// No operation checks an index: (r, c) must lie in [0, row capacity) x [0, column capacity). Where
/// memory runs out, Init and Grow answer false; every other operation throws std::bad_alloc. Either
/// way the matrix is unchanged. Any number of threads may read one matrix at a time; a change needs
/// it alone.
///
///     TMatrix<double> costs(true);
///     costs.SetAtGrow(1, 2, 3.0);  // 2 x 3, all 0 but the last cell
template <typename T>
class TMatrix {
    static_assert(std::is_trivially_copyable_v<T>, "TMatrix holds plain values");

public:
    /// An empty matrix. With zeroFill new storage starts as zeros; without it a cell is
    /// indeterminate until it is written.
    explicit TMatrix(bool zeroFill) noexcept : zeroFill_(zeroFill) {}

    /// Copies the whole capacity rectangle of a source that has a row and a column in use; the copy
    /// of any other source is empty.
    TMatrix(TMatrix const& other) : zeroFill_(other.zeroFill_) { CopyFrom(other); }

    /// As the copy constructor; the zero-fill flag of this matrix stays.
    TMatrix& operator=(TMatrix const& other) {
        if (this != &other) {
            CopyFrom(other);
        }
        return *this;
    }

    ~TMatrix() = default;

    /// Allocates rows x cols cells and makes them the data; false, with nothing changed, when that
    /// fails. The block held so far is NOT released: call Init on an empty matrix. The cells are
    /// zeros when the matrix is zero-filling; the counts in use stay.
    bool Init(int rows, int cols) {
        try {
            std::unique_ptr<T[]> block = Allocate(rows, cols);
            static_cast<void>(data_.release());
            Adopt(std::move(block), rows, cols);
        } catch (std::bad_alloc const&) {
            return false;
        }
        return true;
    }

    /// Grows the capacities to at least rows and cols, neither ever shrinking, and keeps every cell
    /// at its (r, c); in a zero-filling matrix the new cells are 0. False, with nothing changed,
    /// when memory runs out.
    bool Grow(int rows, int cols) {
        try {
            GrowTo(rows, cols);
        } catch (std::bad_alloc const&) {
            return false;
        }
        return true;
    }

    /// Writes cell (r, c) inside the capacities; the counts in use grow to include it.
    void SetAt(int r, int c, T const& value) {
        data_[Index(r, c)] = value;
        rows_ = std::max(rows_, r + 1);
        cols_ = std::max(cols_, c + 1);
    }

    /// Writes cell (r, c), r and c at least 0, growing the capacities to include it.
    void SetAtGrow(int r, int c, T const& value) {
        TREE800_REQUIRE(r >= 0 && c >= 0, "negative matrix index");
        T const copy = value;  // value may be a cell of this matrix
        if (rowCapacity_ <= r || colCapacity_ <= c) {
            if (std::max(r, c) == std::numeric_limits<int>::max()) {
                throw std::bad_alloc();
            }
            GrowTo(r + 1, c + 1);
        }
        SetAt(r, c, copy);
    }

    /// Cell (r, c) inside the capacities.
    T const& GetAt(int r, int c) const { return data_[Index(r, c)]; }

    /// Number of rows in use.
    int GetNumRows() const noexcept { return rows_; }

    /// Releases the storage and sets every count to 0; the zero-fill flag stays.
    void Clear() noexcept {
        Adopt(nullptr, 0, 0);
        rows_ = 0;
        cols_ = 0;
    }

    /// Exchanges the contents; each matrix keeps its zero-fill flag.
    void Swap(TMatrix& other) noexcept {
        data_.swap(other.data_);
        std::swap(rowCapacity_, other.rowCapacity_);
        std::swap(colCapacity_, other.colCapacity_);
        std::swap(rows_, other.rows_);
        std::swap(cols_, other.cols_);
    }

private:
    std::unique_ptr<T[]> Allocate(int rows, int cols) const {
        if (rows < 0 || cols < 0) {
            throw std::bad_alloc();
        }
        std::size_t const n = static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols);
        return std::unique_ptr<T[]>(zeroFill_ ? new T[n]() : new T[n]);
    }

    void Adopt(std::unique_ptr<T[]> block, int rows, int cols) noexcept {
        data_ = std::move(block);
        rowCapacity_ = rows;
        colCapacity_ = cols;
    }

    void GrowTo(int rows, int cols) {
        rows = std::max(rows, rowCapacity_);
        cols = std::max(cols, colCapacity_);
        std::unique_ptr<T[]> block = Allocate(rows, cols);
        for (int r = 0; r < rowCapacity_; ++r) {
            auto const row = static_cast<std::size_t>(r);
            std::copy_n(data_.get() + row * static_cast<std::size_t>(colCapacity_), colCapacity_,
                        block.get() + row * static_cast<std::size_t>(cols));
        }
        Adopt(std::move(block), rows, cols);
    }

    void CopyFrom(TMatrix const& other) {
        if (other.rows_ == 0 || other.cols_ == 0) {
            Clear();
            return;
        }
        std::unique_ptr<T[]> block = Allocate(other.rowCapacity_, other.colCapacity_);
        std::copy_n(other.data_.get(),
                    static_cast<std::size_t>(other.rowCapacity_) *
                        static_cast<std::size_t>(other.colCapacity_),
                    block.get());
        Adopt(std::move(block), other.rowCapacity_, other.colCapacity_);
        rows_ = other.rows_;
        cols_ = other.cols_;
    }

    std::size_t Index(int r, int c) const {
        TREE800_REQUIRE(0 <= r && r < rowCapacity_ && 0 <= c && c < colCapacity_,
                        "matrix index outside the capacity");
        return static_cast<std::size_t>(r) * static_cast<std::size_t>(colCapacity_) +
               static_cast<std::size_t>(c);
    }

    std::unique_ptr<T[]> data_;
    int rowCapacity_ = 0;
    int colCapacity_ = 0;
    int rows_ = 0;
    int cols_ = 0;
    bool zeroFill_;
};

#endif
