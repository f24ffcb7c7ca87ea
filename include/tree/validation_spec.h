#ifndef TREE800_VALIDATION_SPEC_H
#define TREE800_VALIDATION_SPEC_H

#include <tree/export.h>

namespace tree_800 {

/// How a grown tree is judged.
enum ValidationType : int {
    NoValidation = 0,          ///< on the training sample
    TestSampleValidation = 1,  ///< on a held-out test sample
    CrossValidation = 2        ///< by cross-validation; no misclassification matrix is built
};

/// How a grown tree is validated. Which cases make up the test sample is not told here: host and
/// grower agree on it with the data. Created by the caller, cloned by the settings that hold it. A
/// setter answers whether it accepted the value; a refused one changes nothing. Any number of
/// threads may read one object at a time; a change needs it alone.
///
///     ValidationSpecImp validation;
///     validation.Set(CrossValidation);
///     validation.SetNumCVFolds(5);
class TREE800_EXPORT ValidationSpec {
public:
    virtual ~ValidationSpec();

    /// A copy; the caller deletes it.
    [[nodiscard]] virtual ValidationSpec* Clone() const = 0;

    /// NoValidation until another type is set.
    virtual ValidationType GetType() const = 0;
    /// Number of cross-validation folds, 2 or more.
    virtual int GetNumCVFolds() const = 0;
    /// Seed of the random assignment to folds, 1 or more.
    virtual long GetRandomSeed() const = 0;

    /// Accepts TestSampleValidation and CrossValidation alone: there is no way back to
    /// NoValidation.
    virtual bool Set(ValidationType type) = 0;
    /// Accepts 2 or more.
    virtual bool SetNumCVFolds(int folds) = 0;
    /// Accepts 1 or more.
    virtual bool SetRandomSeed(long seed) = 0;
};

/// The validation specification. Defaults: NoValidation, 10 folds, seed 2000000.
class TREE800_EXPORT ValidationSpecImp : public ValidationSpec {
public:
    ValidationSpecImp();

    // ValidationSpec
    [[nodiscard]] ValidationSpec* Clone() const override;
    ValidationType GetType() const override;
    int GetNumCVFolds() const override;
    long GetRandomSeed() const override;
    bool Set(ValidationType type) override;
    bool SetNumCVFolds(int folds) override;
    bool SetRandomSeed(long seed) override;

private:
    long randomSeed_ = 2000000;
    ValidationType type_ = NoValidation;
    int numCVFolds_ = 10;
};

}  // namespace tree_800

#endif
