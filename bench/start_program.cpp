// A program that does nothing but link OpenMS, and the library too where
// WITH_PELGRIN says so: start_bench starts both.
#include <OpenMS/DATASTRUCTURES/String.h>

#ifdef WITH_PELGRIN
#include "DataStructures.h"
#endif

int main()
{
    const OpenMS::String one(1); // keeps libOpenMS needed
    const OpenMS::String two = one + "2";
#ifdef WITH_PELGRIN
    Vorlan::Spectrum spectrum;
    spectrum.sortByMz();
    return two.empty() || spectrum.Size() != 0;
#else
    return two.empty();
#endif
}
