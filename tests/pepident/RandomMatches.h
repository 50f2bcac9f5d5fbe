// Random matches for round trips and for the comparison with the plain twin.
#ifndef VORLAN_TESTS_RANDOMMATCHES_H
#define VORLAN_TESTS_RANDOMMATCHES_H

#include <random>
#include <vector>

#include "DataStructures.h"

namespace Vorlan::test {

/// Matches that the native table holds without loss: numbers with six decimals,
/// modifications in order, texts without separators.
std::vector<PeptideIdentification> RandomMatches(std::mt19937& random, std::size_t count);

/// Any numbers, modifications in any order, odd names.
std::vector<PeptideIdentification> RandomOddMatches(std::mt19937& random, std::size_t count);

} // namespace Vorlan::test

#endif // VORLAN_TESTS_RANDOMMATCHES_H
