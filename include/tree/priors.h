#ifndef TREE800_PRIORS_H
#define TREE800_PRIORS_H

#include <tree/array.h>
#include <tree/export.h>

#include <memory>

namespace tree_800 {

class Cost;

/// Where the priors of a classification tree come from. The library treats the first two alike: it
/// holds no values for them, and the algorithm, which supplies them, gives them their meaning.
enum PriorType : int {
    PriorsFromData = 0,  ///< shares of the classes in the training sample; the type of a new object
    EqualPriors = 1,     ///< the same for every class
    UserPriors = 2       ///< given one class at a time; chosen by setting a value alone
};

/// Prior probabilities of the target classes, and on request the same altered by misclassification
/// costs. Values are 0.0 or more and need not sum to 1. Created by settings and callers; the
/// settings that hold them delete them. Any number of threads may read one object at a time; a
/// change needs it alone.
///
///     PriorsImp priors;
///     priors.Set(0, 0.5);
///     priors.Set(1, 0.5);
class TREE800_EXPORT Priors {
public:
    virtual ~Priors();

    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual Priors* Clone() const = 0;

    /// UserPriors as soon as one prior has been set.
    virtual PriorType GetType() const = 0;
    /// Whether the priors are to be altered by costs; not whether they have been.
    virtual bool HasAlteredValues() const = 0;
    /// Number of priors held.
    virtual int GetNumClasses() const = 0;
    /// The prior of class i; 0.0 outside [0, GetNumClasses()).
    virtual double Get(int i) const = 0;
    /// The altered prior of class i; the plain prior while none have been computed.
    virtual double GetAltered(int i) const = 0;

    /// Says whether the priors are to be altered; computes nothing.
    virtual void AlterValues(bool alter) = 0;
    /// Sets the prior of class i, growing the priors to include it, and makes the type UserPriors.
    /// False, with nothing changed, for a negative index, a value below 0.0 or NaN.
    virtual bool Set(int i, double prior) = 0;
    /// Accepts another type than the present one, UserPriors excepted, and forgets all values.
    /// False, with nothing changed, otherwise.
    virtual bool Set(PriorType type) = 0;
};

/// The priors. Besides those given it keeps up to three vectors of the same kind; where one is
/// absent, the next one below it that is present answers.
class TREE800_EXPORT PriorsImp : public Priors {
public:
    /// One of the vectors.
    enum PriorVector : int {
        GivenPriors = 0,    ///< as given; always present
        AlteredPriors = 1,  ///< made once by ComputeAltered
        SecondPriors = 2,   ///< free for an algorithm; ComputeAltered alters it in place
        ThirdPriors = 3     ///< free for an algorithm; only ever set value by value
    };

    /// No priors, PriorsFromData, not to be altered.
    PriorsImp();
    PriorsImp(PriorsImp const&) = delete;
    PriorsImp& operator=(PriorsImp const&) = delete;
    ~PriorsImp() override;

    // Priors
    [[nodiscard]] Priors* Clone() const override;
    PriorType GetType() const override;
    bool HasAlteredValues() const override;
    int GetNumClasses() const override;
    double Get(int i) const override;
    double GetAltered(int i) const override;
    void AlterValues(bool alter) override;
    bool Set(int i, double prior) override;
    bool Set(PriorType type) override;

    /// The nearest vector present at or below the given one, which must be one of the four.
    PriorVector FindValidId(PriorVector vector) const;
    /// The vector, or null when it is absent; with fallback the one that FindValidId finds.
    /// Borrowed until the vector is next replaced. @{
    TArray<double>* GetVector(PriorVector vector, bool fallback);
    TArray<double> const* GetVector(PriorVector vector, bool fallback) const;
    /// @}
    /// Element i of the vector or its fallback; 0.0 when i is out of range.
    double Get(int i, PriorVector vector) const;
    /// The first element of the vector or its fallback; null while it has no storage. Borrowed.
    double const* GetValues(PriorVector vector) const;
    /// Takes ownership of values. SecondPriors: replaces the vector held. AlteredPriors and
    /// ThirdPriors: stored only while none is held, otherwise deleted. Anything else: deleted.
    void SetVector(PriorVector vector, TArray<double>* values);
    /// Sets element i of one vector, making the vector when it is absent; the type stays. False,
    /// with nothing changed, as for Set above. An empty vector first gets room for as many elements
    /// as there are given priors (2 where there are none), and comes to that size at once when it
    /// had more room before it was emptied.
    bool Set(int i, double prior, PriorVector vector);
    /// Weights each element j of the source by the sum of column j of the costs, scales the result
    /// to sum 1 and stores it as SetVector does (altered priors: Breiman, Friedman, Olshen and
    /// Stone 1984, section 4.4). False, with the target untouched, when the source is absent or
    /// empty or the weighted elements do not sum to more than 0. A cell that the costs lack counts
    /// -1.0.
    bool AlterPriorVector(PriorVector target, PriorVector source, Cost const& costs);
    /// When the priors are to be altered: makes AlteredPriors of GivenPriors, unless they have been
    /// made before, and when that succeeds alters SecondPriors, if present, in place. The answer is
    /// that of the first alteration; true when nothing is to be done.
    bool ComputeAltered(Cost const& costs);
    /// Makes the given priors n; new ones are 0.0. False when they are n already.
    bool Resize(int n);
    /// Becomes a deep copy of the other. On a throw nothing changes.
    void Init(PriorsImp const& other);

private:
    TArray<double>* OptionalVector(PriorVector vector) const;

    TArray<double> given_;
    std::unique_ptr<TArray<double>> altered_;
    std::unique_ptr<TArray<double>> second_;
    std::unique_ptr<TArray<double>> third_;
    bool isToAlter_ = false;
    PriorType type_ = PriorsFromData;
};

}  // namespace tree_800

#endif
