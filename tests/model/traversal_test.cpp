#include "support/tree_builder.h"

#include <tree/node_iterator.h>

#include <gtest/gtest.h>

#include <vector>

namespace tree_800 {
namespace {

using test::Cut;
using test::Leaf;
using test::Split;

std::vector<Node const*> Walk(Node const* root) {
    PrefixNodeIterator walk(root);
    std::vector<Node const*> nodes;
    EXPECT_EQ(walk.GetFailReason(), 1);
    EXPECT_EQ(walk.HasMore(), root == nullptr) << "the sense of HasMore is inverted";
    while (Node const* const node = walk.Next()) {
        nodes.push_back(node);
        EXPECT_EQ(walk.GetFailReason(), 0);
        EXPECT_EQ(walk.HasMore(), PrefixFindNext(root, node) == nullptr);
    }
    EXPECT_TRUE(walk.HasMore());
    EXPECT_EQ(walk.Next(), nullptr) << "a finished walk stays finished";
    EXPECT_EQ(walk.GetFailReason(), nodes.empty() ? 1 : 0);
    return nodes;
}

TEST(PrefixNodeIteratorTest, WalksTheSubtreeInPreOrder) {
    auto const root = Split(Cut(0, 1.0), Split(Cut(0, 0.5), Leaf(0), Leaf(1), Leaf(2)),
                            Split(Cut(1, 0.5), Leaf(3)), Leaf(4));
    NodeImp const* const a = root->GetChildImp(0);
    NodeImp const* const b = root->GetChildImp(1);
    using Nodes = std::vector<Node const*>;
    Nodes const underA{a, a->GetChild(0), a->GetChild(1), a->GetChild(2)};
    Nodes all{root.get()};
    all.insert(all.end(), underA.begin(), underA.end());
    all.insert(all.end(), {b, b->GetChild(0), root->GetChild(2)});
    EXPECT_EQ(Walk(root.get()), all);
    EXPECT_EQ(Walk(a), underA);
    EXPECT_EQ(Walk(b), (Nodes{b, b->GetChild(0)}));
    EXPECT_EQ(Walk(root->GetChild(2)), Nodes{root->GetChild(2)});
    EXPECT_EQ(Walk(nullptr), Nodes());
}

TEST(PrefixNodeIteratorTest, EndsAtANodeOutsideTheTree) {
    NodeImp const stray;
    auto const root = Split(Cut(0, 1.0), Leaf(0), Leaf(1));
    EXPECT_EQ(PrefixFindNext(root.get(), &stray), nullptr);
    NodeImp* const forgotten = root->GetChildImp(1);
    root->SetChild(1, Leaf(1).release());
    EXPECT_EQ(PrefixFindNext(root.get(), forgotten), nullptr);
    delete forgotten;
}

}  // namespace
}  // namespace tree_800
