#include "penguins.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace examples {
namespace {

using Cells = std::vector<std::string>;  // of one line

char const* const Missing = "NA";

/// The cells of the next line, none past the end. The file quotes nothing.
Cells ReadLine(std::istream& file) {
    Cells cells;
    std::string line;
    std::getline(file, line);
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, ',');) {
        cells.push_back(std::move(cell));
    }
    return cells;
}

cart::Variable MakeVariable(std::string const& name, std::size_t column,
                            std::vector<Cells> const& lines) {
    if (name != "species" && name != "island" && name != "sex") {
        return cart::OrderedVariable(name);
    }
    std::set<std::string> categories;
    for (Cells const& cells : lines) {
        categories.insert(cells[column]);
    }
    categories.erase(Missing);
    return cart::NominalVariable(name, {categories.begin(), categories.end()});
}

double Parse(std::string const& cell, cart::Variable const& variable) {
    if (cell == Missing) {
        return systemMissingValue();
    }
    if (!variable.IsNominal()) {
        return std::stod(cell);
    }
    auto const& names = variable.categories;
    return static_cast<double>(std::find(names.begin(), names.end(), cell) - names.begin());
}

}  // namespace

cart::Dataset ReadPenguins(std::string const& path, std::string const& target) {
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    Cells const names = ReadLine(file);
    std::vector<Cells> lines;
    for (Cells cells = ReadLine(file); !cells.empty(); cells = ReadLine(file)) {
        if (cells.size() != names.size()) {
            throw std::runtime_error(path + ": a line of another length than the first");
        }
        lines.push_back(std::move(cells));
    }
    auto const targetName = std::find(names.begin(), names.end(), target);
    if (targetName == names.end()) {
        throw std::runtime_error(path + ": no column " + target);
    }
    auto const targetColumn = static_cast<std::size_t>(targetName - names.begin());

    cart::Dataset data;
    data.target = MakeVariable(target, targetColumn, lines);
    std::vector<std::size_t> columns;  // of the predictors
    for (std::size_t column = 0; column < names.size(); ++column) {
        if (column != targetColumn && names[column] != "year") {
            data.predictors.push_back(MakeVariable(names[column], column, lines));
            columns.push_back(column);
        }
    }
    for (Cells const& cells : lines) {
        if (cells[targetColumn] == Missing) {
            continue;
        }
        data.targets.push_back(Parse(cells[targetColumn], data.target));
        data.samples.push_back(tree_800::TrainingSample);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            data.values.push_back(Parse(cells[columns[i]], data.predictors[i]));
        }
    }
    return data;
}

void HoldOut(cart::Dataset& data, std::size_t n) {
    for (std::size_t row = n; row <= data.NumRows(); row += n) {
        data.samples[row - 1] = tree_800::TestSample;
    }
}

}  // namespace examples
