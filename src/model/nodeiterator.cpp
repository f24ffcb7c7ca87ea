#include <tree/node_iterator.h>

#include <tree/node.h>

namespace tree_800 {

namespace {

// The position of a child among its parent's children; -1 when the parent does not list it.
int PositionIn(Node const& parent, Node const* child) {
    int const numChildren = parent.GetNumChildren();
    for (int pos = 0; pos < numChildren; ++pos) {
        if (parent.GetChild(static_cast<unsigned int>(pos)) == child) {
            return pos;
        }
    }
    return -1;
}

}  // namespace

NodeIterator::~NodeIterator() = default;

PrefixNodeIterator::PrefixNodeIterator(Node const* root) : root_(root) {}

bool PrefixNodeIterator::HasMore() const { return PrefixFindNext(root_, current_) == nullptr; }

Node const* PrefixNodeIterator::Next() {
    Node const* const next = PrefixFindNext(root_, current_);
    if (next != nullptr) {
        current_ = next;
    }
    return next;
}

int PrefixNodeIterator::GetFailReason() const { return current_ == nullptr ? 1 : 0; }

Node const* PrefixFindNext(Node const* root, Node const* current) {
    if (current == nullptr) {
        return root;
    }
    if (current->GetNumChildren() > 0) {
        return current->GetChild(0);
    }
    for (Node const* node = current; node != root;) {
        Node const* const parent = node->GetParent();
        int const pos = parent != nullptr ? PositionIn(*parent, node) : -1;
        if (pos < 0) {
            return nullptr;
        }
        if (pos + 1 < parent->GetNumChildren()) {
            return parent->GetChild(static_cast<unsigned int>(pos) + 1);
        }
        node = parent;
    }
    return nullptr;
}

}  // namespace tree_800
