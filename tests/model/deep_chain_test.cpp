#include "support/probe_rule.h"
#include "support/tree_builder.h"

#include <tree/tree_statistics.h>

#include <gtest/gtest.h>

#include <pthread.h>

namespace tree_800 {
namespace {

using namespace test;

constexpr unsigned int Depth = 1000000;
constexpr std::size_t SmallStack = 256UL * 1024;

// Each node is the only child of the one before; the last is a leaf of class 1.
std::unique_ptr<NodeImp> Chain() {
    auto root = std::make_unique<NodeImp>();
    NodeImp* node = root.get();
    for (unsigned int id = 1; id < Depth; ++id) {
        SetCompetitors(*node, std::make_unique<ProbeRule>(std::vector<int>{0}));
        node->SetNumChildren(1);
        node->SetChild(0, new NodeImp);
        node = node->GetChildImp(0);
        node->SetId(id);
    }
    node->SetClsInfo(Counts(1, {2.0, 5.0}).release(), TrainingSample);
    return root;
}

void* UseChain(void* /*unused*/) {
    auto const root = Chain();
    double const obs[] = {0.0};
    EXPECT_EQ(root->DropObservationThroughTree(obs, nullptr)->GetId(), Depth - 1);

    TreeStatisticsImp statistics;
    statistics.SetIsCls(true);
    statistics.SetNumClasses(2);
    statistics.AddMisclassificationInfo(root.get(), TrainingSample);
    EXPECT_EQ(statistics.GetMisclassificationCount(1, 0), 2.0);

    std::unique_ptr<NodeImp> clone(root->Clone());
    EXPECT_TRUE(*root == *clone);
    *clone = *clone->GetChildImp(0);
    EXPECT_EQ(clone->DropObservationThroughTree(obs, nullptr)->GetId(), Depth - 1);
    clone.reset();
    root->RemoveChild(0);
    EXPECT_EQ(ProbeRule::alive, 1);
    return nullptr;
}

// No operation recurses over the depth of the tree: a chain this deep would overflow the stack.
TEST(DeepChain, EveryOperationFitsASmallStack) {
    pthread_attr_t attributes;
    pthread_t thread{};
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, SmallStack), 0);
    ASSERT_EQ(pthread_create(&thread, &attributes, UseChain, nullptr), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    EXPECT_EQ(pthread_attr_destroy(&attributes), 0);
}

}  // namespace
}  // namespace tree_800
