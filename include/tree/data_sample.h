#ifndef TREE800_DATA_SAMPLE_H
#define TREE800_DATA_SAMPLE_H

namespace tree_800 {

/// The sample that a node statistic belongs to. Every operation that takes a DataSample reads 0 as
/// the training sample and any other value as the test sample.
enum DataSample : int {
    TrainingSample = 0,  ///< the cases that the tree was grown on
    TestSample = 1       ///< the cases held out to judge it
};

}  // namespace tree_800

#endif
