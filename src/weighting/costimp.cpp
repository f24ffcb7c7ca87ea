#include <tree/cost.h>

#include "foundation/tolerance.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace tree_800 {

namespace {

double DefaultCost(int i, int j) noexcept { return i == j ? 0.0 : 1.0; }

// Room for n x n cells in an empty matrix.
void InitOrThrow(TMatrix<double>& matrix, int n) {
    if (n > 0 && !matrix.Init(n, n)) {
        throw std::bad_alloc();
    }
}

}  // namespace

Cost::~Cost() = default;

double Cost::GetAt(int i, int j) const { return Get(i, j); }

bool Cost::SetAt(int i, int j, double cost) { return Set(i, j, cost); }

CostImp::CostImp() : working_(true), default_(true) {}

CostImp::~CostImp() = default;

Cost* CostImp::Clone() const { return new CostImp(*this); }

int CostImp::GetNumClasses() const { return working_.GetNumRows(); }

double CostImp::Get(int i, int j) const {
    int const n = GetNumClasses();
    return 0 <= i && i < n && 0 <= j && j < n ? working_.GetAt(i, j) : -1.0;
}

bool CostImp::IsDefault() const { return IsDefaultMatrix(WorkingMatrix); }

CostType CostImp::GetType() const { return type_; }

bool CostImp::Set(CostType type) {
    if (type != DefaultCosts || type_ == DefaultCosts) {
        return false;
    }
    SetDefault(WorkingMatrix, GetNumClasses());
    return true;
}

bool CostImp::Set(int i, int j, double cost) {
    if (!SetImp(i, j, cost)) {
        return false;
    }
    type_ = UserCosts;
    return true;
}

TMatrix<double> const& CostImp::GetMatrix(CostMatrix matrix) const {
    return matrix == DefaultMatrix && default_.GetNumRows() > 0 ? default_ : working_;
}

bool CostImp::IsDefaultMatrix(CostMatrix matrix) const {
    if (matrix == DefaultMatrix && default_.GetNumRows() > 0) {
        return true;
    }
    int const n = GetNumClasses();
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            if (i != j && std::fabs(working_.GetAt(i, j) - 1.0) > Tolerance) {
                return false;
            }
        }
    }
    return true;
}

void CostImp::SetDefault(CostMatrix matrix, int n) {
    if (n >= 0) {
        TMatrix<double>& target = matrix == DefaultMatrix ? default_ : working_;
        if (n != target.GetNumRows()) {
            TMatrix<double> fresh(true);
            InitOrThrow(fresh, n);
            target.Swap(fresh);
        }
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j) {
                target.SetAt(i, j, DefaultCost(i, j));
            }
        }
    }
    if (matrix == WorkingMatrix) {
        type_ = DefaultCosts;
    }
}

bool CostImp::SetImp(int i, int j, double cost) {
    bool const isCost = i == j ? cost == 0.0 : cost >= 0.0;
    if (i < 0 || j < 0 || !isCost) {
        return false;
    }
    int const oldSize = GetNumClasses();
    int const last = std::max(i, j);
    if (last >= oldSize) {
        working_.SetAtGrow(last, last, 0.0);
        for (int r = 0; r <= last; ++r) {
            for (int c = r < oldSize ? oldSize : 0; c <= last; ++c) {
                working_.SetAt(r, c, DefaultCost(r, c));
            }
        }
    }
    working_.SetAt(i, j, cost);
    return true;
}

void CostImp::Resize(int n) {
    int const oldSize = GetNumClasses();
    if (n > oldSize) {
        SetImp(n - 1, n - 1, 0.0);
    } else if (0 < n && n < oldSize) {
        TMatrix<double> block(true);
        InitOrThrow(block, n);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j) {
                block.SetAt(i, j, working_.GetAt(i, j));
            }
        }
        working_.Swap(block);
    }
}

}  // namespace tree_800
