#ifndef TREE800_NODE_ITERATOR_H
#define TREE800_NODE_ITERATOR_H

#include <tree/export.h>
#include <tree/iterator.h>

namespace tree_800 {

class Node;

/// A walk over the nodes of a subtree.
class TREE800_EXPORT NodeIterator : public MCTree_800::AIterator<Node> {
public:
    ~NodeIterator() override;
};

/// Walks a subtree in pre-order: a node before its children, children in position order. Reads the
/// tree through Node alone, borrows every node and allocates nothing. The subtree must stay
/// unchanged during the walk. An iterator may be used by one thread at a time; any number of
/// iterators may walk one tree.
///
///     PrefixNodeIterator walk(root);
///     while (Node const* node = walk.Next()) {
///         Print(node);
///     }
class TREE800_EXPORT PrefixNodeIterator : public NodeIterator {
public:
    /// A walk over the subtree of root, which may be null: the walk is then finished at once.
    explicit PrefixNodeIterator(Node const* root);

    // NodeIterator
    /// True when there is NO next node: the sense is the opposite of the name's, deliberately. Loop
    /// on Next until it answers null, or while HasMore is false.
    bool HasMore() const override;
    /// The root on the first call, then each next node; null when the walk is finished. The node
    /// last answered stays the current one.
    Node const* Next() override;
    /// 1 before the first node and over a null root, otherwise 0, also after the last node.
    int GetFailReason() const override;

private:
    Node const* current_ = nullptr;
    Node const* root_;
};

/// The node after current in the pre-order walk of root's subtree, root itself when current is
/// null; null after the last. current must be in root's subtree, which the walk then never leaves.
/// An empty child slot, and a node that its parent does not list, end the walk. Costs a scan of one
/// or more lists of siblings.
TREE800_EXPORT Node const* PrefixFindNext(Node const* root, Node const* current);

}  // namespace tree_800

#endif
