#ifndef TREE800_ARRAY_H
#define TREE800_ARRAY_H

#include <tree/precondition.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// A growable array of plain values. Class counts, probabilities and the category table of a
/// nominal split rule are kept in it.
///
/// Growth is exact, never geometric: SetAtGrow(i, v) makes room for i + 1 elements and no more.
/// Filling an array upward by SetAtGrow therefore copies it at every new index; call Init first
/// where the size is known.
///
/// No operation checks an index: i must lie in [0, capacity). Where memory runs out, Init and Grow
/// answer false; every other operation throws std::bad_alloc. Either way the array is unchanged.
/// Any number of threads may read one const array at a time; a change needs it alone.
///
///     TArray<double> counts(true);
///     counts.SetAtGrow(2, 7.0);  // 0, 0, 7
///     counts.AddAtGrow(2, 1.0);  // 0, 0, 8
template <typename T>
class TArray {
    static_assert(std::is_trivially_copyable_v<T>, "TArray holds plain values");

public:
    /// An empty array. With zeroFill new storage starts as zeros; without it an element is
    /// indeterminate until it is written.
    explicit TArray(bool zeroFill) noexcept : zeroFill_(zeroFill) {}

    /// Copies the elements in use, and allocates exactly those.
    TArray(TArray const& other) : zeroFill_(other.zeroFill_) {
        if (other.size_ > 0) {
            data_ = CopyOf(other.data_.get(), other.size_, Count(other.size_));
            capacity_ = other.size_;
            size_ = other.size_;
        }
    }

    /// Copies the elements in use and takes the other's capacity; the zero-fill flag of this array
    /// stays.
    TArray& operator=(TArray const& other) {
        if (this != &other) {
            std::unique_ptr<T[]> block;
            if (other.capacity_ > 0) {
                block = CopyOf(other.data_.get(), other.size_, Count(other.capacity_));
            }
            data_ = std::move(block);
            capacity_ = other.capacity_;
            size_ = other.size_;
        }
        return *this;
    }

    ~TArray() = default;

    /// Allocates n elements and makes them the data; false, with nothing changed, when that fails.
    /// The block held so far is NOT released: call Init on an empty array, or keep GetData() and
    /// release it with delete[]. The elements are zeros when the array is zero-filling and
    /// callerFills is false, otherwise indeterminate: callerFills says that the caller will write
    /// every one of them. The size becomes n when n is below the old capacity and stays otherwise.
    bool Init(int n, bool callerFills) {
        try {
            std::unique_ptr<T[]> block = Allocate(Count(n));
            if (zeroFill_ && !callerFills) {
                std::fill_n(block.get(), Count(n), T());
            }
            static_cast<void>(data_.release());
            data_ = std::move(block);
        } catch (std::bad_alloc const&) {
            return false;
        }
        if (n < capacity_) {
            size_ = n;
        }
        capacity_ = n;
        return true;
    }

    /// Init(n, false) for n above 0; otherwise changes nothing and answers true.
    bool Init(int n) { return n <= 0 || Init(n, false); }

    /// Grows the capacity to exactly n, keeping every element of the old storage; in a zero-filling
    /// array the new ones are 0. True at once when the capacity is n or more already; false, with
    /// nothing changed, when memory runs out.
    bool Grow(int n) {
        try {
            if (n > capacity_) {
                GrowTo(Count(n));
            }
        } catch (std::bad_alloc const&) {
            return false;
        }
        return true;
    }

    /// Makes the size n (below 0 counts as 0), growing the capacity when it must; true when the
    /// size changed. Elements that fall out of use become 0 and keep their storage; elements that
    /// come into use within the old capacity keep whatever they held.
    bool Resize(int n) {
        n = std::max(n, 0);
        if (n == size_) {
            return false;
        }
        if (n < size_) {
            std::fill(data_.get() + n, data_.get() + size_, T());
        } else if (n > capacity_) {
            GrowTo(Count(n));
        }
        size_ = n;
        return true;
    }

    /// Writes element i, i in [0, capacity); the size becomes at least i + 1.
    void SetAt(int i, T const& value) { (*this)[i] = value; }

    /// Writes element i, i at least 0, growing the capacity to i + 1 when it is not above i.
    void SetAtGrow(int i, T const& value) {
        T const copy = value;  // value may be an element of this array
        MakeRoomFor(i);
        (*this)[i] = copy;
    }

    /// As SetAtGrow, but adds the value to the element.
    void AddAtGrow(int i, T const& value) {
        T const copy = value;
        MakeRoomFor(i);
        (*this)[i] += copy;
    }

    /// Element i, i in [0, capacity). Also raises the size to i + 1 when it is not above i.
    T& operator[](int i) {
        TREE800_REQUIRE(0 <= i && i < capacity_, "array index outside the capacity");
        if (size_ <= i) {
            size_ = i + 1;
        }
        return data_[static_cast<std::size_t>(i)];
    }

    /// Element i, i in [0, capacity).
    T const& operator[](int i) const {
        TREE800_REQUIRE(0 <= i && i < capacity_, "array index outside the capacity");
        return data_[static_cast<std::size_t>(i)];
    }

    /// The first element, or null when nothing is allocated; borrowed until the array next grows,
    /// is assigned to, cleared or destroyed.
    T const* GetData() const noexcept { return data_.get(); }

    /// Number of elements in use: the highest index written plus one.
    int GetSize() const noexcept { return size_; }

    /// Releases the storage; the zero-fill flag stays.
    void Clear() noexcept {
        data_.reset();
        capacity_ = 0;
        size_ = 0;
    }

    /// Exchanges the contents; each array keeps its zero-fill flag.
    void Swap(TArray& other) noexcept {
        data_.swap(other.data_);
        std::swap(capacity_, other.capacity_);
        std::swap(size_, other.size_);
    }

private:
    static std::size_t Count(int n) {
        if (n < 0) {
            throw std::bad_alloc();
        }
        return static_cast<std::size_t>(n);
    }

    static std::unique_ptr<T[]> Allocate(std::size_t n) { return std::unique_ptr<T[]>(new T[n]); }

    // A block of n elements of which the first `used` are those of `from`; the rest are 0 when the
    // array is zero-filling.
    std::unique_ptr<T[]> CopyOf(T const* from, int used, std::size_t n) const {
        std::unique_ptr<T[]> block = Allocate(n);
        T* const tail = std::copy_n(from, used, block.get());
        if (zeroFill_) {
            std::fill(tail, block.get() + n, T());
        }
        return block;
    }

    void GrowTo(std::size_t n) {
        if (n > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
            throw std::bad_alloc();
        }
        data_ = CopyOf(data_.get(), capacity_, n);
        capacity_ = static_cast<int>(n);
    }

    void MakeRoomFor(int i) {
        TREE800_REQUIRE(i >= 0, "negative array index");
        if (capacity_ <= i) {
            GrowTo(static_cast<std::size_t>(i) + 1);
        }
    }

    std::unique_ptr<T[]> data_;
    int capacity_ = 0;
    int size_ = 0;
    bool zeroFill_;
};

#endif
