#include <tree/validation_spec.h>

namespace tree_800 {

ValidationSpec::~ValidationSpec() = default;

ValidationSpecImp::ValidationSpecImp() = default;

ValidationSpec* ValidationSpecImp::Clone() const { return new ValidationSpecImp(*this); }

ValidationType ValidationSpecImp::GetType() const { return type_; }

int ValidationSpecImp::GetNumCVFolds() const { return numCVFolds_; }

long ValidationSpecImp::GetRandomSeed() const { return randomSeed_; }

bool ValidationSpecImp::Set(ValidationType type) {
    if (type != TestSampleValidation && type != CrossValidation) {
        return false;
    }
    type_ = type;
    return true;
}

bool ValidationSpecImp::SetNumCVFolds(int folds) {
    if (folds < 2) {
        return false;
    }
    numCVFolds_ = folds;
    return true;
}

bool ValidationSpecImp::SetRandomSeed(long seed) {
    if (seed <= 0) {
        return false;
    }
    randomSeed_ = seed;
    return true;
}

}  // namespace tree_800
