#include "fuzz/weighting_model.h"

#include <tree/cost.h>
#include <tree/priors.h>

#include <algorithm>
#include <memory>

namespace tree_800::fuzz {
namespace {

int DrawClass(Input& input) { return input.Draw(-1, 4); }
std::size_t AtLeast0(int n) { return static_cast<std::size_t>(std::max(n, 0)); }

}  // namespace

double CostModel::Get(int i, int j) const {
    if (std::min(i, j) < 0 || std::max(i, j) >= numClasses) {
        return -1.0;
    }
    auto const cell = cells.find({i, j});
    return cell != cells.end() ? cell->second : i == j ? 0.0 : 1.0;
}

bool CostModel::SetCell(int i, int j, double cost) {
    if (std::min(i, j) < 0 || !(cost >= 0.0) || (i == j && cost != 0.0)) {
        return false;
    }
    numClasses = std::max({numClasses, i + 1, j + 1});
    cells[{i, j}] = cost;
    return true;
}

void CostModel::Change(Input& input, CostImp& cost) {
    int const i = DrawClass(input);
    int const j = DrawClass(input);
    auto const reset = [&] {
        bool const isAccepted = i == 0 && type != 0;
        Check(cost.Set(static_cast<CostType>(i)) == isAccepted, "Set of a cost type");
        if (isAccepted) {
            cells.clear();
            type = 0;
        }
    };
    auto const resize = [&] {
        cost.Resize(i);
        numClasses = i > 0 ? i : numClasses;
        for (auto cell = cells.begin(); cell != cells.end();) {
            bool const isOut = std::max(cell->first.first, cell->first.second) >= numClasses;
            cell = isOut ? cells.erase(cell) : std::next(cell);
        }
    };
    auto const setDefault = [&] {
        cost.SetDefault(CostImp::DefaultMatrix, i);
        numDefault = i >= 0 ? i : numDefault;
    };
    auto const setWorking = [&] {
        cost.SetDefault(CostImp::WorkingMatrix, i);
        if (i >= 0) {
            cells.clear();
            numClasses = i;
        }
        type = 0;
    };
    auto const setImp = [&] {
        double const value = input.Number();
        Check(cost.SetImp(i, j, value) == SetCell(i, j, value), "SetImp");
    };
    auto const set = [&] {
        double const value = input.Number();
        bool const isAccepted = SetCell(i, j, value);
        Check(cost.SetAt(i, j, value) == isAccepted, "Set of a cost");
        type = isAccepted ? 1 : type;
    };
    DoOneOf(input, reset, resize, setDefault, setWorking, setImp, set, set, set, set, set, set);
}

void CostModel::CheckAgainst(CostImp const& cost) const {
    bool isDefault = true;
    Check(cost.GetNumClasses() == numClasses && cost.GetType() == type, "size of the costs");
    for (int i = -1; i <= numClasses; ++i) {
        for (int j = -1; j <= numClasses; ++j) {
            double const cell = Get(i, j);
            Check(Same(cost.GetAt(i, j), cell), "a cost");
            isDefault = isDefault && (i == j || cell == -1.0 || std::abs(cell - 1.0) <= 1e-12);
        }
    }
    Check(cost.IsDefault() == isDefault, "IsDefault");
    Check(cost.IsDefaultMatrix(CostImp::DefaultMatrix) == (numDefault > 0 || isDefault),
          "IsDefaultMatrix");
    Check(cost.GetMatrix(CostImp::DefaultMatrix).GetNumRows() ==
              (numDefault > 0 ? numDefault : numClasses),
          "the default matrix");
}

bool PriorsModel::SetValue(int i, double prior, int id) {
    if (i < 0 || !(prior >= 0.0)) {
        return false;
    }
    Vector vector = vectors[id].value_or(Vector{});
    auto const needed = AtLeast0(i) + 1;
    if (vector.values.empty()) {
        std::size_t const given = vectors[0]->values.size();
        std::size_t const room = std::max(given > 0 ? given : 2, needed);
        vector.values.resize(room < vector.capacity ? room : 0);
        vector.capacity = room;
    }
    vector.Resize(std::max(vector.values.size(), needed));
    vector.values[needed - 1] = prior;
    vectors[id] = vector;
    return true;
}

void PriorsModel::Store(int id, Vector vector) {
    if (id == 2 || (id % 2 == 1 && !vectors[id])) {
        vectors[id] = std::move(vector);
    }
}

bool PriorsModel::Alter(int target, int source, CostModel const& costs) {
    std::vector<double> const given = vectors[source].value_or(Vector{}).values;
    std::vector<double> altered(given.size());
    double total = 0.0;
    for (std::size_t i = 0; i < given.size(); ++i) {
        for (std::size_t j = 0; j < given.size(); ++j) {
            double const weighted = costs.Get(static_cast<int>(i), static_cast<int>(j)) * given[j];
            altered[j] += weighted;
            total += weighted;
        }
    }
    if (!(total > 0.0)) {
        return false;
    }
    std::for_each(altered.begin(), altered.end(), [total](double& value) { value /= total; });
    Store(target, {altered, altered.size()});
    return true;
}

void PriorsModel::Change(Input& input, PriorsImp& priors, CostImp const& costs,
                         CostModel const& costModel) {
    int const i = DrawClass(input);
    int const id = input.Draw(0, 3);
    auto const vector = static_cast<PriorsImp::PriorVector>(id);
    auto const reset = [&] {
        bool const isAccepted = (i == 0 || i == 1) && i != type;
        Check(priors.Set(static_cast<PriorType>(i)) == isAccepted, "Set of a prior type");
        if (isAccepted) {
            bool const keep = isToAlter;
            *this = PriorsModel{};
            isToAlter = keep;
            type = i;
        }
    };
    auto const alterValues = [&] {
        isToAlter = input.Flag();
        priors.AlterValues(isToAlter);
    };
    auto const resize = [&] {
        Check(priors.Resize(i) == (AtLeast0(i) != vectors[0]->values.size()), "Resize of priors");
        vectors[0]->Resize(AtLeast0(i));
    };
    auto const setVector = [&] {
        auto given = std::make_unique<TArray<double>>(true);
        given->Resize(i);
        Store(id, {std::vector<double>(AtLeast0(i)), AtLeast0(i)});
        priors.SetVector(vector, given.release());
    };
    auto const computeAltered = [&] {
        bool const isDone = !isToAlter || Alter(1, 0, costModel);
        if (isToAlter && isDone) {
            Alter(2, 2, costModel);
        }
        Check(priors.ComputeAltered(costs) == isDone, "ComputeAltered");
    };
    auto const alterVector = [&] {
        int const source = input.Draw(0, 3);
        Check(priors.AlterPriorVector(vector, static_cast<PriorsImp::PriorVector>(source), costs) ==
                  Alter(id, source, costModel),
              "AlterPriorVector");
    };
    auto const setInVector = [&] {
        double const value = input.Number();
        Check(priors.Set(i, value, vector) == SetValue(i, value, id), "Set in a vector");
    };
    auto const set = [&] {
        double const value = input.Number();
        bool const isAccepted = SetValue(i, value, 0);
        Check(priors.Set(i, value) == isAccepted, "Set of a prior");
        type = isAccepted ? 2 : type;
    };
    DoOneOf(input, reset, alterValues, resize, setVector, computeAltered, alterVector, alterVector,
            setInVector, set, set);
}

void PriorsModel::CheckAgainst(PriorsImp const& priors) const {
    std::vector<double> expected;
    Check(priors.GetType() == type, "type of the priors");
    Check(priors.HasAlteredValues() == isToAlter, "HasAlteredValues");
    for (int id = 0; id < 4; ++id) {
        auto const vector = static_cast<PriorsImp::PriorVector>(id);
        expected = vectors[id] ? vectors[id]->values : expected;
        auto const n = static_cast<int>(expected.size());
        Check((priors.GetVector(vector, false) != nullptr) == vectors[id].has_value(),
              "which vectors are present");
        Check(priors.GetVector(vector, true)->GetSize() == n, "size of a vector");
        for (int i = -1; i <= n; ++i) {
            double const prior = i >= 0 && i < n ? expected[AtLeast0(i)] : 0.0;
            Check(Same(priors.Get(i, vector), prior), "a prior");
        }
    }
}

}  // namespace tree_800::fuzz
