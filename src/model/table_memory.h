#ifndef TREE800_MODEL_TABLE_MEMORY_H
#define TREE800_MODEL_TABLE_MEMORY_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace tree_800 {

/// A constant array that starts at a cache line; a large one asks for huge pages, since walks
/// through it would otherwise wait for address translation at every step.
template <typename T>
class TableMemory {
public:
    static constexpr std::size_t Large = std::size_t{8} << 20;  ///< bytes

    TableMemory() = default;
    explicit TableMemory(std::vector<T> const& elements)
        : size_(elements.size()),
          memory_(::operator new(Bytes(), Alignment()), Release{Alignment()}) {
#ifdef __linux__
        if (IsLarge()) {
            madvise(memory_.get(), Bytes(), MADV_HUGEPAGE);  // a hint: it may well fail
        }
#endif
        std::uninitialized_copy(elements.begin(), elements.end(), static_cast<T*>(memory_.get()));
    }

    T const* Data() const noexcept { return static_cast<T const*>(memory_.get()); }
    T const& operator[](int i) const noexcept { return Data()[i]; }
    std::size_t Size() const noexcept { return size_; }
    std::size_t Bytes() const noexcept {
        return size_ * sizeof(T);  // NOLINT(bugprone-sizeof-expression): T may be a pointer
    }
    bool IsLarge() const noexcept { return Bytes() > Large; }

private:
    struct Release {
        std::align_val_t alignment;
        void operator()(void* memory) const noexcept { ::operator delete(memory, alignment); }
    };

    std::align_val_t Alignment() const noexcept {
        return static_cast<std::align_val_t>(IsLarge() ? std::size_t{2} << 20 : 64);
    }

    std::size_t size_ = 0;
    std::unique_ptr<void, Release> memory_{nullptr, Release{}};
};

}  // namespace tree_800

#endif
