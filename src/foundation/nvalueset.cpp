#include <tree/value_set.h>

#include "foundation/truncate.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tree_800 {

class NValueSetImp {
public:
    std::vector<std::int32_t> codes;  // in the order of adding
};

namespace {

class NValueSetIterImp : public NValueSetIter {
public:
    explicit NValueSetIterImp(NValueSetImp const& set) noexcept : set_(set) {}

    // NValueSetIter
    int GetData() const override {
        return started_ && position_ < set_.codes.size() ? set_.codes[position_] : -1;
    }

    bool Advance() override {
        if (started_ && position_ < set_.codes.size()) {
            ++position_;
        }
        started_ = true;
        return position_ < set_.codes.size();
    }

private:
    NValueSetImp const& set_;
    std::size_t position_ = 0;
    bool started_ = false;
};

}  // namespace

NValueSetIter::~NValueSetIter() = default;

NValueSet::NValueSet() : imp_(std::make_unique<NValueSetImp>()) {}

NValueSet::NValueSet(NValueSet const& other)
    : ValueSet(other), imp_(std::make_unique<NValueSetImp>(*other.imp_)) {}

NValueSet& NValueSet::operator=(NValueSet const& other) {
    *imp_ = *other.imp_;
    return *this;
}

NValueSet::~NValueSet() = default;

bool NValueSet::Contains(double value) const {
    std::int32_t const code = TruncateToInt32(value);
    if (static_cast<double>(code) != value) {
        return false;
    }
    return std::find(imp_->codes.begin(), imp_->codes.end(), code) != imp_->codes.end();
}

bool NValueSet::IsNominalValueSet() const { return true; }

NValueSetIter* NValueSet::GetIterator() const { return new NValueSetIterImp(*imp_); }

int NValueSet::GetNumElements() const { return static_cast<int>(imp_->codes.size()); }

bool NValueSet::Add(int code) {
    if (Contains(static_cast<double>(code))) {
        return false;
    }
    imp_->codes.push_back(code);
    return true;
}

}  // namespace tree_800
