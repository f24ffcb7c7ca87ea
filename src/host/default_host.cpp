#include <tree/host.h>

#include <limits>

double systemMissingValue() { return std::numeric_limits<double>::lowest(); }

double GetInfinity() { return std::numeric_limits<double>::infinity(); }
