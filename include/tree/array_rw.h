#ifndef TREE800_ARRAY_RW_H
#define TREE800_ARRAY_RW_H

#include <tree/precondition.h>

#include <cstddef>
#include <vector>

/// Generic array interfaces and their one implementation over a standard vector. None of them owns
/// what pointer elements point to. i must lie in [0, GetNumElements()) everywhere. Any number of
/// threads may read one array at a time; a change needs it alone.
///
///     MCTree_800::ArrayRW<VariableSettings*> predictors;
///     predictors.Add(age);  // the array borrows age
namespace MCTree_800 {

/// A read-only array.
template <typename T>
class AArrayRO {
public:
    virtual ~AArrayRO() = default;
    /// One more than the last index.
    virtual int GetNumElements() const = 0;
    /// Element i; borrowed until the array changes.
    virtual T const& operator[](int i) const = 0;
};

/// A read-write array.
template <typename T>
class AArrayRW : public AArrayRO<T> {
public:
    using AArrayRO<T>::operator[];

    /// Appends a copy of the value.
    virtual void Add(T const& value) = 0;
    /// Makes the array empty.
    virtual void Clear() = 0;
    /// Element i, to be changed in place; borrowed until the array changes otherwise.
    virtual T& operator[](int i) = 0;
    /// Overwrites element i with a copy of the value.
    virtual void SetAt(int i, T& value) = 0;
};

/// The array over a standard vector. Add grows it as the vector grows; Clear keeps the storage.
template <typename T>
class ArrayRW : public AArrayRW<T> {
public:
    // AArrayRO and AArrayRW
    int GetNumElements() const override { return static_cast<int>(elements_.size()); }
    T const& operator[](int i) const override { return elements_[Index(i)]; }
    void Add(T const& value) override { elements_.push_back(value); }
    void Clear() override { elements_.clear(); }
    T& operator[](int i) override { return elements_[Index(i)]; }
    void SetAt(int i, T& value) override { elements_[Index(i)] = value; }

    /// A copy of element i.
    virtual T GetAt(int i) const { return elements_[Index(i)]; }

private:
    std::size_t Index(int i) const {
        TREE800_REQUIRE(0 <= i && i < GetNumElements(), "array index out of range");
        return static_cast<std::size_t>(i);
    }

    std::vector<T> elements_;
};

}  // namespace MCTree_800

#endif
