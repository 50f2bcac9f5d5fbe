// Random MGF texts: mostly well formed, with every kind of mistake thrown in.
#ifndef VORLAN_TESTS_RANDOMMGF_H
#define VORLAN_TESTS_RANDOMMGF_H

#include <random>
#include <string>

namespace Vorlan::test {

std::string RandomMgf(std::mt19937& random);

} // namespace Vorlan::test

#endif // VORLAN_TESTS_RANDOMMGF_H
