#include <tree/tree_statistics.h>

#include <ostream>

namespace tree_800 {

std::ostream& operator<<(std::ostream& stream, TreeStatisticsImp const& statistics) {
    if (statistics.IsCls()) {
        int const n = statistics.GetNumClasses();
        stream << "Classification tree." << std::endl;
        stream << "Number of target classes = " << n << std::endl;
        for (int predicted = 0; predicted < n; ++predicted) {
            stream << std::endl;
            for (int observed = 0; observed < n; ++observed) {
                stream << statistics.GetMisclassificationCount(predicted, observed) << "  ";
            }
        }
    } else {
        stream << "Regression tree." << std::endl;
    }
    stream << "Risk estimate " << statistics.GetRisk() << std::endl;
    stream << "Standard error of risk estimate " << statistics.GetStdError() << std::endl;
    return stream;
}

}  // namespace tree_800
