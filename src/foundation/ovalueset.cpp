#include <tree/value_set.h>

#include "foundation/tolerance.h"
#include "foundation/truncate.h"

#include <cmath>
#include <cstdint>

namespace tree_800 {

namespace {

enum EndFlag : std::uint32_t { OpenEnd = 1, BoundedEnd = 2 };

void Assign(std::uint32_t& flags, EndFlag flag, bool on) noexcept {
    flags = on ? flags | flag : flags & ~static_cast<std::uint32_t>(flag);
}

}  // namespace

class OValueSetImp {
public:
    OValueSetImp() = default;
    OValueSetImp(double leftEnd, double rightEnd) noexcept
        : left(leftEnd),
          right(rightEnd),
          leftFlags(OpenEnd | BoundedEnd),
          rightFlags(OpenEnd | BoundedEnd) {}
    OValueSetImp(OValueSetImp const&) = default;
    OValueSetImp& operator=(OValueSetImp const&) = default;

    virtual bool Contains(double value) const;
    virtual ~OValueSetImp() = default;

    bool IsOpenLeft() const noexcept { return (leftFlags & OpenEnd) != 0; }
    bool IsOpenRight() const noexcept { return (rightFlags & OpenEnd) != 0; }
    bool IsBoundedLeft() const noexcept { return (leftFlags & BoundedEnd) != 0; }
    bool IsBoundedRight() const noexcept { return (rightFlags & BoundedEnd) != 0; }

    double left = 0.0;
    double right = 0.0;
    std::uint32_t leftFlags = OpenEnd;
    std::uint32_t rightFlags = OpenEnd;
};

bool OValueSetImp::Contains(double value) const {
    bool const isLeftEnd = std::fabs(value - left) < Tolerance;
    if (IsBoundedLeft()) {
        if (TruncateToInt32(value - (left + Tolerance)) < 0) {
            return false;
        }
        if (isLeftEnd && IsOpenLeft()) {
            return false;
        }
    }
    if (IsBoundedRight()) {
        if (TruncateToInt32(right - (value + Tolerance)) < 0) {
            return false;
        }
        if (isLeftEnd) {
            return !IsOpenRight();
        }
    }
    return true;
}

OValueSet::OValueSet() : imp_(std::make_unique<OValueSetImp>()) {}

OValueSet::OValueSet(double left, double right)
    : imp_(std::make_unique<OValueSetImp>(left, right)) {}

OValueSet::OValueSet(OValueSet const& other)
    : ValueSet(other), imp_(std::make_unique<OValueSetImp>(*other.imp_)) {}

OValueSet& OValueSet::operator=(OValueSet const& other) {
    if (this != &other) {
        *imp_ = *other.imp_;
    }
    return *this;
}

OValueSet::~OValueSet() = default;

bool OValueSet::Contains(double value) const { return imp_->Contains(value); }

bool OValueSet::IsNominalValueSet() const { return false; }

bool OValueSet::operator<(OValueSet const& other) const {
    if (!IsBoundedLeft()) {
        return other.IsBoundedLeft();
    }
    return GetLeftEnd() < other.GetLeftEnd();
}

bool OValueSet::operator==(OValueSet const& other) const {
    if (!IsBoundedLeft() && !other.IsBoundedLeft()) {
        return true;
    }
    return GetLeftEnd() == other.GetLeftEnd();
}

double OValueSet::GetLeftEnd() const { return imp_->left; }

double OValueSet::GetRightEnd() const { return imp_->right; }

bool OValueSet::IsOpenLeft() const { return imp_->IsOpenLeft(); }

bool OValueSet::IsOpenRight() const { return imp_->IsOpenRight(); }

bool OValueSet::IsBoundedLeft() const { return imp_->IsBoundedLeft(); }

bool OValueSet::IsBoundedRight() const { return imp_->IsBoundedRight(); }

bool OValueSet::IsEmpty() const {
    double const left = imp_->left;
    double const right = imp_->right;
    if (TruncateToInt32((right - Tolerance) - left) > 0) {
        return false;
    }
    bool const isPoint = std::fabs(right - left) < Tolerance;
    if (!isPoint) {
        return true;
    }
    if (!IsBoundedLeft() || !IsBoundedRight()) {
        return false;
    }
    return IsOpenLeft() || IsOpenRight();
}

void OValueSet::SetLeftEnd(double value) {
    imp_->left = value;
    SetBoundedLeft(true);
}

void OValueSet::SetRightEnd(double value) {
    imp_->right = value;
    SetBoundedRight(true);
}

void OValueSet::SetOpenLeft(bool open) { Assign(imp_->leftFlags, OpenEnd, open); }

void OValueSet::SetOpenRight(bool open) { Assign(imp_->rightFlags, OpenEnd, open); }

void OValueSet::SetBoundedLeft(bool bounded) {
    Assign(imp_->leftFlags, BoundedEnd, bounded);
    if (!bounded) {
        imp_->left = imp_->right;
    }
}

void OValueSet::SetBoundedRight(bool bounded) {
    Assign(imp_->rightFlags, BoundedEnd, bounded);
    if (!bounded) {
        imp_->right = imp_->left;
    }
}

void OValueSet::Empty() {
    SetLeftEnd(0.0);
    SetRightEnd(0.0);
    SetOpenLeft(true);
}

}  // namespace tree_800
