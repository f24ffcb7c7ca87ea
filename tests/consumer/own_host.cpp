#include <tree/host.h>

double systemMissingValue() { return -999.0; }

double GetInfinity() { return 1e300; }
