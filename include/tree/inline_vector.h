#ifndef TREE800_INLINE_VECTOR_H
#define TREE800_INLINE_VECTOR_H

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace tree_800 {

/// A sequence whose first N elements lie in the object itself and only the others elsewhere, so
/// that routing reaches the two children of a node, its primary split and the cut point of that
/// split in one step each. It is the part of std::vector that nodes and rules need, under the same
/// names and with the same guarantees; beyond those, front() of an empty sequence is a T().
template <typename T, std::size_t N>
class InlineVector {
    template <typename Vector, typename Element>
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = Element*;
        using reference = Element&;

        Iterator(Vector* vector, std::size_t pos) noexcept : vector_(vector), pos_(pos) {}

        Element& operator*() const { return (*vector_)[pos_]; }
        Element* operator->() const { return &(*vector_)[pos_]; }
        Iterator& operator++() {
            ++pos_;
            return *this;
        }
        bool operator==(Iterator const& other) const { return pos_ == other.pos_; }
        bool operator!=(Iterator const& other) const { return pos_ != other.pos_; }
        /// To an iterator not before this one.
        std::size_t operator-(Iterator const& other) const { return pos_ - other.pos_; }

    private:
        Vector* vector_;
        std::size_t pos_;
    };

public:
    /// As in std::vector; i below size(). @{
    using iterator = Iterator<InlineVector, T>;
    using const_iterator = Iterator<InlineVector const, T const>;

    InlineVector() = default;
    explicit InlineVector(std::size_t n)
        : size_(n), rest_(n > N ? std::make_unique<std::vector<T>>(n - N) : nullptr) {}
    InlineVector(InlineVector const& other)
        : size_(other.size_),
          rest_(other.rest_ != nullptr ? std::make_unique<std::vector<T>>(*other.rest_) : nullptr) {
        std::copy(other.first_, other.first_ + N, first_);
    }
    InlineVector(InlineVector&& other) noexcept { swap(other); }
    InlineVector& operator=(InlineVector other) noexcept {
        swap(other);
        return *this;
    }
    ~InlineVector() = default;

    // NOLINTBEGIN(readability-identifier-naming)
    void swap(InlineVector& other) noexcept {
        std::swap(size_, other.size_);
        std::swap(first_, other.first_);
        std::swap(rest_, other.rest_);
    }

    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    T& operator[](std::size_t i) { return i < N ? first_[i] : (*rest_)[i - N]; }
    T const& operator[](std::size_t i) const { return i < N ? first_[i] : (*rest_)[i - N]; }
    T& front() { return first_[0]; }
    T const& front() const { return first_[0]; }
    T& back() { return (*this)[size_ - 1]; }
    T const& back() const { return (*this)[size_ - 1]; }
    iterator begin() noexcept { return {this, 0}; }
    iterator end() noexcept { return {this, size_}; }
    const_iterator begin() const noexcept { return {this, 0}; }
    const_iterator end() const noexcept { return {this, size_}; }

    void reserve(std::size_t n) {
        if (n > N) {
            if (rest_ == nullptr) {
                rest_ = std::make_unique<std::vector<T>>();
            }
            rest_->reserve(n - N);
        }
    }
    void push_back(T element) {
        if (size_ < N) {
            first_[size_] = std::move(element);
        } else {
            reserve(N + 1);
            rest_->push_back(std::move(element));
        }
        ++size_;
    }
    /// Before the element i.
    void insert(std::size_t i, T element) {
        push_back(std::move(element));
        for (std::size_t last = size_ - 1; last > i; --last) {
            std::swap((*this)[last], (*this)[last - 1]);
        }
    }
    void pop_back() {
        --size_;
        if (size_ < N) {
            first_[size_] = T();
        } else {
            rest_->pop_back();
        }
    }
    void erase(std::size_t i) {
        for (; i + 1 < size_; ++i) {
            std::swap((*this)[i], (*this)[i + 1]);
        }
        pop_back();
    }
    void clear() noexcept { *this = InlineVector(); }
    // NOLINTEND(readability-identifier-naming)
    /// @}

private:
    std::size_t size_ = 0;
    T first_[N] = {};
    std::unique_ptr<std::vector<T>> rest_;
};

}  // namespace tree_800

#endif
