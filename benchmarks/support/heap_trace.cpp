#include "benchmarks/support/heap_trace.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace {

tree_800::bench::HeapTrace* recording = nullptr;

// Stops the recording for as long as the trace itself asks for memory.
class Pause {
public:
    Pause() : trace_(std::exchange(recording, nullptr)) {}
    Pause(Pause const&) = delete;
    Pause& operator=(Pause const&) = delete;
    ~Pause() { recording = trace_; }

    tree_800::bench::HeapTrace& Trace() const { return *trace_; }

private:
    tree_800::bench::HeapTrace* trace_;
};

}  // namespace

// NOLINTBEGIN(cppcoreguidelines-no-malloc)

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = std::malloc(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    if (recording != nullptr) {
        Pause().Trace().Allocated(block, size);
    }
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    if (recording != nullptr) {
        Pause().Trace().Released(block);
    }
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

namespace tree_800::bench {

void HeapTrace::Record(std::function<void()> const& work) {
    recording = this;
    work();
    recording = nullptr;
}

void HeapTrace::Allocated(void const* block, std::size_t size) {
    requests_.push_back({blocks_.size(), size, false});
    live_[block] = requests_.back();
    blocks_.push_back(nullptr);
    numLiveBytes_ += size;
}

void HeapTrace::Released(void const* block) {
    auto const found = live_.find(block);
    if (found != live_.end()) {
        requests_.push_back({found->second.block, found->second.size, true});
        numLiveBytes_ -= found->second.size;
        live_.erase(found);
    }
}

void HeapTrace::Replay(std::size_t first, std::size_t last) {
    for (std::size_t i = first; i < last; ++i) {
        Request const& request = requests_[i];
        void*& block = blocks_[request.block];
        if (request.isRelease) {
            std::free(block);
        } else {
            block = std::malloc(request.size);
        }
    }
}

// NOLINTEND(cppcoreguidelines-no-malloc)

}  // namespace tree_800::bench
