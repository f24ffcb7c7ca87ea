#ifndef TREE800_BENCHMARKS_SUPPORT_HEAP_TRACE_H
#define TREE800_BENCHMARKS_SUPPORT_HEAP_TRACE_H

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

namespace tree_800::bench {

/// What pieces of work ask of operator new and operator delete, in order, so that malloc and free
/// alone can be asked the same again: the share of the allocator in the work.
class HeapTrace {
public:
    /// Does the work and appends its requests. Releases of blocks that were not allocated under
    /// record are left out.
    void Record(std::function<void()> const& work);

    std::size_t NumRequests() const { return requests_.size(); }
    /// Bytes allocated and not released by the end of the trace.
    std::size_t NumLiveBytes() const { return numLiveBytes_; }

    /// Repeats the requests from first up to last, last excluded. A block must have been allocated
    /// by a replay before its release is replayed.
    void Replay(std::size_t first, std::size_t last);

    // For operator new and operator delete. @{
    void Allocated(void const* block, std::size_t size);
    void Released(void const* block);
    // @}

private:
    struct Request {
        std::size_t block;  // index into blocks_
        std::size_t size;
        bool isRelease;
    };

    std::vector<Request> requests_;
    std::vector<void*> blocks_;
    std::unordered_map<void const*, Request> live_;
    std::size_t numLiveBytes_ = 0;
};

}  // namespace tree_800::bench

#endif
