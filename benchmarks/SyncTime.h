#pragma once

#include <vector>

/// How long each call of fsync and fdatasync took, in seconds, since the last question. The
/// benchmark program times these calls itself, whoever makes them: a shared disk answers in a tenth
/// of a millisecond now and in four a moment later, which would drown everything else.
std::vector<double> TakeSyncTimes();
