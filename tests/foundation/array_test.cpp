#include <tree/array.h>
#include <tree/array_rw.h>
#include <tree/matrix.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

bool memoryIsOut = false;

}  // namespace

// The storage of arrays and matrices: never zeros by chance, and refused when a test wants it so or
// the size is absurd.
[[gnu::noinline]] void* operator new[](std::size_t size) {
    if (memoryIsOut || size > PTRDIFF_MAX) {
        throw std::bad_alloc();
    }
    return std::memset(::operator new(size), 0x5A, size);
}
[[gnu::noinline]] void operator delete[](void* block) noexcept { ::operator delete(block); }
[[gnu::noinline]] void operator delete[](void* block, std::size_t /*size*/) noexcept {
    ::operator delete(block);
}

namespace {

using Array = TArray<int>;
using Matrix = TMatrix<int>;
using Ints = std::vector<int>;

constexpr bool WithoutMemory = true;

std::string Try(std::function<bool()> const& operation, bool withoutMemory = false) {
    memoryIsOut = withoutMemory;
    std::string outcome = "bad_alloc";
    try {
        outcome = operation() ? "true" : "false";
    } catch (std::bad_alloc const&) {
    }
    memoryIsOut = false;
    return outcome;
}

// Growing up to the capacity takes no memory, growing beyond it does.
void ExpectArray(Array& array, Ints const& inUse, int capacity) {
    EXPECT_EQ(Ints(array.GetData(), array.GetData() + array.GetSize()), inUse);
    EXPECT_EQ(Try([&] { return array.Grow(capacity); }, WithoutMemory), "true");
    EXPECT_EQ(Try([&] { return array.Grow(capacity + 1); }, WithoutMemory), "false");
}

TEST(ArrayTest, ContentsAndCapacityOfArraysAndTheirCopies) {
    struct {
        char const* name;
        Ints before;  // stored element by element
        void (*operation)(Array& a);
        Ints inUse;
        int capacity;
    } const rows[] = {
        {"growth is exact", {5, 6}, [](Array& a) { a.SetAtGrow(3, 7); }, {5, 6, 0, 7}, 4},
        {"adding", {5, 2}, [](Array& a) { a.AddAtGrow(1, 3); }, {5, 5}, 2},
        {"storing its own element", {7}, [](Array& a) { a.SetAtGrow(1, a[0]); }, {7, 7}, 2},
        {"adding its own element", {7}, [](Array& a) { a.AddAtGrow(1, a[0]); }, {7, 7}, 2},
        {"Resize upward", {7}, [](Array& a) { a.Resize(3); }, {7, 0, 0}, 3},
        {"Resize downward", {5, 6, 7}, [](Array& a) { EXPECT_TRUE(a.Resize(1)); }, {5}, 3},
        {"Resize below 0", {7}, [](Array& a) { a.Resize(-1); }, {}, 1},
        {"Grow", {5, 6}, [](Array& a) { a.Grow(4); }, {5, 6}, 4},
        {"Clear", {5, 6}, [](Array& a) { a.Clear(); }, {}, 0},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        Array array(true);
        for (int const value : row.before) {
            array.SetAtGrow(array.GetSize(), value);
        }
        row.operation(array);
        Array const& self = array;
        array = self;
        EXPECT_FALSE(array.Resize(array.GetSize()));
        ExpectArray(array, row.inUse, row.capacity);

        Array copy(array);
        ExpectArray(copy, row.inUse, array.GetSize());
        Array assigned(true);
        assigned.SetAtGrow(8, 99);
        assigned = array;
        ExpectArray(assigned, row.inUse, row.capacity);

        // What is not in use is 0, allocated before or now.
        Ints padded = row.inUse;
        padded.resize(static_cast<std::size_t>(row.capacity) + 1);
        for (Array* const any : {&array, &copy, &assigned}) {
            EXPECT_TRUE(any->Resize(row.capacity + 1));
            ExpectArray(*any, padded, row.capacity + 1);
            any->SetAt(0, 99);  // not seen by the others
        }
    }
}

TEST(ArrayTest, InitAndTheTwoIndexOperators) {
    Array array(true);
    EXPECT_TRUE(array.Init(4));
    EXPECT_EQ(std::as_const(array)[3], 0);
    array[1] = 7;
    EXPECT_TRUE(array.Init(0) && array.Init(-1));
    ExpectArray(array, {0, 7}, 4);
    std::unique_ptr<int const[]> const forgotten(array.GetData());
    EXPECT_TRUE(array.Init(3, false));  // less than the capacity: all of it is in use
    ExpectArray(array, {0, 0, 0}, 3);
}

TEST(ArrayTest, AssignmentAndSwapKeepTheZeroFillFlag) {
    Array plain(false);
    plain.SetAtGrow(0, 7);
    Array filling(true);
    filling = plain;
    filling.SetAtGrow(2, 8);
    filling.Swap(plain);
    filling.SetAtGrow(2, 9);
    ExpectArray(filling, {7, 0, 9}, 3);
    ExpectArray(plain, {7, 0, 8}, 3);
}

// Storing beyond the capacities takes memory.
void ExpectMatrix(Matrix& matrix, int numRows, int rows, int cols, Ints const& cells) {
    EXPECT_EQ(matrix.GetNumRows(), numRows);
    Ints found;
    for (int i = 0; i < rows * cols; ++i) {
        found.push_back(matrix.GetAt(i / cols, i % cols));
    }
    EXPECT_EQ(found, cells);
    auto const store = [&](int r, int c) { return matrix.SetAtGrow(r, c, 99), true; };
    EXPECT_EQ(Try([&] { return store(rows, 0); }, WithoutMemory), "bad_alloc");
    EXPECT_EQ(Try([&] { return store(0, cols); }, WithoutMemory), "bad_alloc");
}

TEST(MatrixTest, CellsAndCapacitiesOfMatricesAndTheirCopies) {
    struct {
        char const* name;
        void (*operation)(Matrix& m);  // on a matrix of 2 x 2 that holds 7 at (1, 1)
        int numRows, rowCapacity, colCapacity;
        Ints cells;
    } const rows[] = {
        {"columns", [](Matrix& m) { m.SetAtGrow(0, 2, 8); }, 2, 2, 3, {0, 0, 8, 0, 7, 0}},
        {"own", [](Matrix& m) { m.SetAtGrow(2, 0, m.GetAt(1, 1)); }, 3, 3, 2, {0, 0, 0, 7, 7, 0}},
        {"Grow", [](Matrix& m) { m.Grow(3, -1); }, 2, 3, 2, {0, 0, 0, 7, 0, 0}},
        {"Clear", [](Matrix& m) { m.Clear(); }, 0, 0, 0, {}},
        {"Init", [](Matrix& m) { m.Clear(), m.Init(1, 2); }, 0, 1, 2, {0, 0}},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        Matrix matrix(true);
        matrix.SetAtGrow(1, 1, 7);
        row.operation(matrix);
        Matrix const& self = matrix;
        matrix = self;

        Matrix copy(matrix);
        Matrix assigned(true);
        assigned.SetAtGrow(4, 4, 99);
        assigned = matrix;
        for (Matrix* const any : {&copy, &assigned, &matrix}) {
            bool const isEmptyCopy = any != &matrix && row.numRows == 0;
            ExpectMatrix(*any, row.numRows, isEmptyCopy ? 0 : row.rowCapacity,
                         isEmptyCopy ? 0 : row.colCapacity, isEmptyCopy ? Ints() : row.cells);
            any->SetAtGrow(0, 0, 99);  // not seen by the others
        }
    }
}

TEST(ContainersTest, FailingChangesNothing) {
    Array array(true);
    array.SetAtGrow(1, 7);
    Array larger(true);
    larger.SetAtGrow(5, 8);
    Matrix matrix(true);
    matrix.SetAtGrow(0, 1, 7);
    Matrix largerMatrix(true);
    largerMatrix.SetAtGrow(5, 5, 8);
    std::optional<Array> arrayCopy;
    std::optional<Matrix> matrixCopy;
    constexpr bool Always = true;  // not only without memory
    struct {
        char const* outcome;
        std::function<bool()> operation;
        bool always = false;
    } const rows[] = {
        {"false", [&] { return array.Init(1, false); }},
        {"false", [&] { return array.Grow(3); }},
        {"bad_alloc", [&] { return array.Resize(3); }},
        {"bad_alloc", [&] { return array.SetAtGrow(INT_MAX, 8), true; }, Always},
        {"bad_alloc", [&] { return array.SetAtGrow(2, 8), true; }},
        {"bad_alloc", [&] { return array.AddAtGrow(INT_MAX, 8), true; }, Always},
        {"bad_alloc", [&] { return arrayCopy.emplace(array), true; }},
        {"bad_alloc", [&] { return array = larger, true; }},
        {"false", [&] { return matrix.Init(INT_MAX, INT_MAX); }, Always},
        {"false", [&] { return matrix.Grow(INT_MAX, INT_MAX); }, Always},
        {"bad_alloc", [&] { return matrix.SetAtGrow(INT_MAX, 0, 8), true; }, Always},
        {"bad_alloc", [&] { return matrix.SetAtGrow(0, INT_MAX, 8), true; }, Always},
        {"bad_alloc", [&] { return matrixCopy.emplace(matrix), true; }},
        {"bad_alloc", [&] { return matrix = largerMatrix, true; }},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(Try(row.operation, WithoutMemory), row.outcome);
        EXPECT_TRUE(!row.always || Try(row.operation) == row.outcome);
        ExpectArray(array, {0, 7}, 2);
        ExpectMatrix(matrix, 1, 1, 2, {0, 7});
    }
}

TEST(ArrayRWTest, WritesThroughTheInterface) {
    MCTree_800::ArrayRW<int> array;
    MCTree_800::AArrayRW<int>& writable = array;
    for (int value : {5, 6, 7}) {
        writable.Add(value);
        writable.SetAt(0, value);
    }
    writable[1] = 8;
    EXPECT_EQ((Ints{array.GetAt(0), std::as_const(array)[1], array[2]}), (Ints{7, 8, 7}));
    writable.Clear();
    EXPECT_EQ(array.GetNumElements(), 0);
}

}  // namespace
