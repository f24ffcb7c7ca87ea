#include <tree/priors.h>

#include <tree/cost.h>
#include <tree/precondition.h>

#include <algorithm>
#include <new>
#include <utility>

namespace tree_800 {

namespace {

using Vector = TArray<double>;

constexpr int SmallestVector = 2;

std::unique_ptr<Vector> NewVector() { return std::make_unique<Vector>(true); }

std::unique_ptr<Vector> CopyOf(std::unique_ptr<Vector> const& vector) {
    if (vector == nullptr) {
        return nullptr;
    }
    std::unique_ptr<Vector> copy = NewVector();
    *copy = *vector;
    return copy;
}

// Init, less the leak: the vector forgets the block that it held so far.
void InitOrThrow(Vector& vector, int n) {
    double const* const held = vector.GetData();
    if (!vector.Init(n)) {
        throw std::bad_alloc();
    }
    std::unique_ptr<double const[]> const forgotten(held);
}

// Each element weighted by its column of the costs, all scaled to sum 1; null where the values are
// absent or empty or the weighted sum is not above 0.
std::unique_ptr<Vector> Altered(Vector const* values, Cost const& costs) {
    if (values == nullptr || values->GetSize() == 0) {
        return nullptr;
    }
    int const n = values->GetSize();
    std::unique_ptr<Vector> altered = NewVector();
    InitOrThrow(*altered, n);
    double total = 0.0;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            double const weighted = costs.Get(i, j) * (*values)[j];
            altered->AddAtGrow(j, weighted);
            total += weighted;
        }
    }
    if (!(total > 0.0)) {
        return nullptr;
    }
    for (int j = 0; j < n; ++j) {
        (*altered)[j] /= total;
    }
    return altered;
}

bool IsPrior(int i, double prior) noexcept { return i >= 0 && prior >= 0.0; }

}  // namespace

Priors::~Priors() = default;

PriorsImp::PriorsImp() : given_(true) {}

PriorsImp::~PriorsImp() = default;

Priors* PriorsImp::Clone() const {
    auto copy = std::make_unique<PriorsImp>();
    copy->Init(*this);
    return copy.release();
}

PriorType PriorsImp::GetType() const { return type_; }

bool PriorsImp::HasAlteredValues() const { return isToAlter_; }

int PriorsImp::GetNumClasses() const { return given_.GetSize(); }

double PriorsImp::Get(int i) const { return Get(i, GivenPriors); }

double PriorsImp::GetAltered(int i) const { return Get(i, AlteredPriors); }

void PriorsImp::AlterValues(bool alter) { isToAlter_ = alter; }

bool PriorsImp::Set(int i, double prior) {
    if (!IsPrior(i, prior)) {
        return false;
    }
    Set(i, prior, GivenPriors);
    type_ = UserPriors;
    return true;
}

bool PriorsImp::Set(PriorType type) {
    if ((type != PriorsFromData && type != EqualPriors) || type == type_) {
        return false;
    }
    type_ = type;
    given_.Clear();
    altered_.reset();
    second_.reset();
    third_.reset();
    return true;
}

PriorsImp::PriorVector PriorsImp::FindValidId(PriorVector vector) const {
    TREE800_REQUIRE(GivenPriors <= vector && vector <= ThirdPriors, "no such vector of priors");
    if (vector == ThirdPriors && third_ != nullptr) {
        return ThirdPriors;
    }
    if (vector >= SecondPriors && second_ != nullptr) {
        return SecondPriors;
    }
    return vector >= AlteredPriors && altered_ != nullptr ? AlteredPriors : GivenPriors;
}

TArray<double>* PriorsImp::OptionalVector(PriorVector vector) const {
    switch (vector) {
        case AlteredPriors:
            return altered_.get();
        case SecondPriors:
            return second_.get();
        case ThirdPriors:
            return third_.get();
        case GivenPriors:
            break;
    }
    return nullptr;
}

TArray<double> const* PriorsImp::GetVector(PriorVector vector, bool fallback) const {
    PriorVector const found = fallback ? FindValidId(vector) : vector;
    return found == GivenPriors ? &given_ : OptionalVector(found);
}

TArray<double>* PriorsImp::GetVector(PriorVector vector, bool fallback) {
    PriorVector const found = fallback ? FindValidId(vector) : vector;
    return found == GivenPriors ? &given_ : OptionalVector(found);
}

double PriorsImp::Get(int i, PriorVector vector) const {
    Vector const& values = *GetVector(vector, true);
    return 0 <= i && i < values.GetSize() ? values[i] : 0.0;
}

double const* PriorsImp::GetValues(PriorVector vector) const {
    return GetVector(vector, true)->GetData();
}

void PriorsImp::SetVector(PriorVector vector, TArray<double>* values) {
    std::unique_ptr<Vector> owned(values);
    if (vector == SecondPriors) {
        second_ = std::move(owned);
    } else if (vector == AlteredPriors && altered_ == nullptr) {
        altered_ = std::move(owned);
    } else if (vector == ThirdPriors && third_ == nullptr) {
        third_ = std::move(owned);
    }
}

bool PriorsImp::Set(int i, double prior, PriorVector vector) {
    if (!IsPrior(i, prior)) {
        return false;
    }
    std::unique_ptr<Vector> made;
    Vector* target = GetVector(vector, false);
    if (target == nullptr) {
        made = NewVector();
        target = made.get();
    }
    if (target->GetSize() == 0) {
        int const size = given_.GetSize() > 0 ? given_.GetSize() : SmallestVector;
        if (size > i) {  // otherwise the element's own growth makes the room
            InitOrThrow(*target, size);
        }
    }
    target->SetAtGrow(i, prior);
    if (made != nullptr) {
        SetVector(vector, made.release());
    }
    return true;
}

bool PriorsImp::AlterPriorVector(PriorVector target, PriorVector source, Cost const& costs) {
    std::unique_ptr<Vector> altered = Altered(GetVector(source, false), costs);
    if (altered == nullptr) {
        return false;
    }
    SetVector(target, altered.release());
    return true;
}

bool PriorsImp::ComputeAltered(Cost const& costs) {
    if (!isToAlter_) {
        return true;
    }
    std::unique_ptr<Vector> altered = Altered(&given_, costs);
    if (altered == nullptr) {
        return false;
    }
    std::unique_ptr<Vector> second = Altered(second_.get(), costs);
    SetVector(AlteredPriors, altered.release());
    if (second != nullptr) {
        second_ = std::move(second);
    }
    return true;
}

bool PriorsImp::Resize(int n) { return given_.Resize(n); }

void PriorsImp::Init(PriorsImp const& other) {
    Vector given(true);
    given = other.given_;
    std::unique_ptr<Vector> altered = CopyOf(other.altered_);
    std::unique_ptr<Vector> second = CopyOf(other.second_);
    std::unique_ptr<Vector> third = CopyOf(other.third_);
    type_ = other.GetType();
    given_.Swap(given);
    isToAlter_ = other.isToAlter_;
    altered_ = std::move(altered);
    second_ = std::move(second);
    third_ = std::move(third);
}

}  // namespace tree_800
