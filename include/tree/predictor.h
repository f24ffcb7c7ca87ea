#ifndef TREE800_PREDICTOR_H
#define TREE800_PREDICTOR_H

#include <tree/export.h>

#include <vector>

namespace tree_800 {

/// What one predictor looks like among the cases of a node: the range of an ordered predictor, the
/// values that occur (category codes of a nominal one), and whether any case lacks it. Growers fill
/// in the one or the other or both, normally from the training cases, and document which; a range
/// that was never set reads 0.0 to 0.0. A plain value, held by its node. Any number of threads may
/// read one object at a time; a change needs it alone.
///
///     double const codes[] = {0.0, 2.0};
///     PredictorImp island;
///     island.SetValues(codes, 2);
class TREE800_EXPORT PredictorImp {
public:
    /// Range 0.0 to 0.0, no values, nothing missing.
    PredictorImp();
    virtual ~PredictorImp();

    /// Writes the two ends; always true.
    virtual bool GetValueRange(double* low, double* high) const;
    /// Writes the number of values; always true.
    virtual bool GetNumValues(int* n) const;
    /// Copies the first n values to out[0..n); false, with nothing written, when n is negative or
    /// above the number of values.
    virtual bool GetValues(double* out, int n) const;
    /// Whether any case of the node lacks the predictor.
    virtual bool HasMissingValues() const;

    /// Stores both ends as given, in whatever order.
    virtual void SetValueRange(double low, double high);
    /// Keeps the first n values and fills up with 0.0; below 0 counts as 0.
    virtual void SetNumValues(int n);
    /// Replaces the values by in[0..n); n below 0 counts as 0.
    virtual void SetValues(double const* in, int n);
    /// Range and values stay.
    virtual void SetHasMissingValues(bool has);

    /// Compares everything exactly.
    bool operator==(PredictorImp const& other) const;

private:
    double low_ = 0.0;
    double high_ = 0.0;
    std::vector<double> values_;
    bool hasMissingValues_ = false;
};

}  // namespace tree_800

#endif
