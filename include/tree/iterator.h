#ifndef TREE800_ITERATOR_H
#define TREE800_ITERATOR_H

namespace MCTree_800 {

/// A generic walk over borrowed objects. Implemented by the node iterators. An iterator may be used
/// by one thread at a time; any number of iterators may walk the same objects.
template <typename T>
class AIterator {
public:
    virtual ~AIterator() = default;

    /// See the implementation: PrefixNodeIterator answers the opposite of what the name says.
    virtual bool HasMore() const = 0;
    /// The next object, or null when the walk is finished; borrowed.
    virtual T const* Next() = 0;
    /// Why there is no current object: 1 when there is none, 0 when there is one.
    virtual int GetFailReason() const = 0;
};

}  // namespace MCTree_800

#endif
