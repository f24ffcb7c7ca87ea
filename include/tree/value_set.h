#ifndef TREE800_VALUE_SET_H
#define TREE800_VALUE_SET_H

#include <tree/export.h>

#include <memory>

namespace tree_800 {

class NValueSetImp;
class OValueSetImp;

/// A set of values of one predictor: an interval (OValueSet) or a set of category codes
/// (NValueSet). Split rules take value sets to learn which values a child receives and hand them
/// out to say so; what a getter hands out belongs to the caller. Value sets are plain values;
/// any number of threads may read one set, a change needs it alone.
class TREE800_EXPORT ValueSet {
public:
    virtual ~ValueSet();

    /// Whether the value belongs to the set.
    virtual bool Contains(double value) const = 0;

    /// True for an NValueSet, false for an OValueSet.
    virtual bool IsNominalValueSet() const = 0;
};

/// An interval of an ordered predictor. Each end is bounded or infinite, and open or closed.
///
/// An end that is not bounded is infinite, but a value stays stored for it: SetBounded...
/// (false) copies the other end into it.
///
/// Membership is deliberately coarse near the ends: a value less than one whole unit outside a
/// bounded end still counts as inside. See Contains and IsEmpty before relying on either; split
/// rules route by their cut points and never by Contains.
///
///     OValueSet below;         // the whole real line
///     below.SetRightEnd(5.0);  // (-inf, 5), open
///     below.SetOpenRight(false);
class TREE800_EXPORT OValueSet : public ValueSet {
public:
    /// The whole real line: open and unbounded at both ends, 0.0 stored for each.
    OValueSet();

    /// The open interval (left, right). Ends in the wrong order are stored as given.
    OValueSet(double left, double right);

    /// A deep copy. @{
    OValueSet(OValueSet const& other);
    OValueSet& operator=(OValueSet const& other);
    /// @}
    ~OValueSet() override;

    /// Coarse membership. With T(d) the difference d truncated toward zero to a 32-bit integer (NaN
    /// and anything beyond that range count as negative) and e = 1e-12, in this order:
    /// - bounded on the left: outside when T(x - (left + e)) < 0, or when x is within e of the left
    ///   end and the set is open on the left;
    /// - bounded on the right: outside when T(right - (x + e)) < 0; when x is within e of the LEFT
    ///   end, inside exactly when the set is not open on the right.
    ///
    /// So (0, 10) contains -0.5, 10 and 10.5 but neither 0, -1 nor 11; nothing lies 2^31 or more
    /// beyond a bounded left end; NaN belongs only to the unbounded set.
    bool Contains(double value) const override;
    bool IsNominalValueSet() const override;

    /// Orders by the left end: false when neither set is bounded on the left, true when only the
    /// other is; otherwise the stored left ends compare, the other's also when it is not bounded.
    virtual bool operator<(OValueSet const& other) const;

    /// True when neither set is bounded on the left, or when the stored left ends are exactly
    /// equal. Right ends and open flags do not take part.
    virtual bool operator==(OValueSet const& other) const;

    /// The stored ends, also where an end is not bounded. @{
    virtual double GetLeftEnd() const;
    virtual double GetRightEnd() const;
    /// @}

    /// Whether the end itself is left out; without meaning while the end is not bounded. @{
    virtual bool IsOpenLeft() const;
    virtual bool IsOpenRight() const;
    /// @}
    /// False where the interval reaches to infinity. @{
    virtual bool IsBoundedLeft() const;
    virtual bool IsBoundedRight() const;
    /// @}

    /// Whether the set is empty, as coarsely as Contains: an interval counts as empty unless its
    /// ends lie more than one unit (and 1e-12) apart, so also [0, 1], or it is one closed point. An
    /// unbounded set is never empty while its stored ends are equal and finite.
    virtual bool IsEmpty() const;

    /// Stores the end and makes it bounded; the open flag stays. @{
    virtual void SetLeftEnd(double value);
    virtual void SetRightEnd(double value);
    /// @}

    /// Sets the flag alone; the end stays. @{
    virtual void SetOpenLeft(bool open);
    virtual void SetOpenRight(bool open);
    /// @}

    /// True makes the end bounded at its stored value; false makes it infinite and stores the other
    /// end's value for it. @{
    virtual void SetBoundedLeft(bool bounded);
    virtual void SetBoundedRight(bool bounded);
    /// @}

    /// Makes the set empty: both ends 0.0 and bounded, open on the left; the open-right flag stays.
    virtual void Empty();

private:
    std::unique_ptr<OValueSetImp> imp_;
};

/// Walks the codes of an NValueSet in the order in which they were added. Made by
/// NValueSet::GetIterator; the caller deletes it. The set must outlive the iterator and stay
/// unchanged meanwhile.
class TREE800_EXPORT NValueSetIter {
public:
    virtual ~NValueSetIter();

    /// The code at the position; -1 before the first Advance and after the last.
    virtual int GetData() const = 0;

    /// Moves to the first code on the first call and one code on afterwards; false past the end.
    virtual bool Advance() = 0;
};

/// A set of category codes of a nominal predictor, without duplicates, in the order of adding.
///
///     NValueSet codes;
///     codes.Add(3);
///     codes.Contains(3.0);  // true; 3.5 and NaN are in no set of codes
class TREE800_EXPORT NValueSet : public ValueSet {
public:
    /// The empty set.
    NValueSet();

    /// A deep copy. @{
    NValueSet(NValueSet const& other);
    NValueSet& operator=(NValueSet const& other);
    /// @}
    ~NValueSet() override;

    /// Whether the value is exactly one of the codes.
    bool Contains(double value) const override;
    bool IsNominalValueSet() const override;

    /// A new iterator before the first code; the caller deletes it.
    [[nodiscard]] virtual NValueSetIter* GetIterator() const;

    /// Number of codes, each counted once.
    virtual int GetNumElements() const;

    /// Appends the code; false, with nothing changed, when the set has it already.
    virtual bool Add(int code);

private:
    std::unique_ptr<NValueSetImp> imp_;
};

}  // namespace tree_800

#endif
