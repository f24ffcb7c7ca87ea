#ifndef TREE800_HOST_H
#define TREE800_HOST_H

#include <tree/export.h>

/// The two functions that the library takes from its host.
///
/// The library calls them and does not define them. A program that defines neither gets the values
/// of the small library that is linked along with tree800; a program that defines them itself,
/// with these signatures at global scope, gets its own values everywhere in the library.
/// Both must answer the same value for as long as the process runs.

/// The double that marks a missing observation value and an unset statistic.
/// The default host answers the largest negative finite double.
TREE800_EXPORT double systemMissingValue();

/// Positive infinity: where a regression node's minimum starts.
TREE800_EXPORT double GetInfinity();

#endif
