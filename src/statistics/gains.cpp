#include <tree/gains.h>

#include <tree/host.h>

namespace tree_800 {

GainsIntf::~GainsIntf() = default;

Gains::Gains() = default;

Gains::~Gains() = default;

Gains& Gains::operator=(GainsIntf const& table) {
    table_.reset(table.Clone());
    return *this;
}

int Gains::GetNumRows() const { return table_ != nullptr ? table_->GetNumRows() : 0; }

bool Gains::HasColumn(int column) const { return table_ != nullptr && table_->HasColumn(column); }

int Gains::GetNumNodes(int row) const { return table_ != nullptr ? table_->GetNumNodes(row) : 0; }

Node const* Gains::GetNode(int row, int position) const {
    return table_ != nullptr ? table_->GetNode(row, position) : nullptr;
}

double Gains::GetValue(int row, int column) const {
    return table_ != nullptr ? table_->GetValue(row, column) : systemMissingValue();
}

}  // namespace tree_800
