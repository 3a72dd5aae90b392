#pragma once

#include <string>

namespace delven::test {

/// The lines of the dump `after` that `before` lacks (marked +) and the reverse (marked -): the readable part
/// of a failed comparison.
std::string dumpDifference(const std::string& before, const std::string& after);

}  // namespace delven::test
