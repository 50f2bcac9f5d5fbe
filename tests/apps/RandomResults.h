// Small results of every format, put together by chance.
#ifndef PELGRIN_TESTS_RANDOMRESULTS_H
#define PELGRIN_TESTS_RANDOMRESULTS_H

#include <string>
#include <vector>

#include "DataStructures.h"
#include "files/ResultAudit.h"
#include "support/Random.h"
#include "support/Support.h"

namespace pelgrin::test {

/// What files of a format are put together from.
struct ResultKind {
    Vorlan::PepIdentType::EPepIdentType format;
    std::string head;
    std::vector<std::string> parts; ///< records, and here and there something else
    std::string tail;
    std::vector<std::string> rubbish = {}; ///< what may stand between records of a bad file
};

/// All formats that there are.
const std::vector<ResultKind>& ResultKinds();

/// Parts in any order. broken: with rubbish, and with bytes that are missing here and
/// there.
std::string RandomText(Vorlan::test::Random& random, const ResultKind& kind, bool broken);

/// A file with such a text, and the second file that names its rows, in folder.
ResultFiles RandomResult(Vorlan::test::Random& random, const ResultKind& kind, bool broken,
                         const Vorlan::test::TempFolder& folder);

/// Files of a text: as a pair of MaxQuant, peptides name the rows in groups.
ResultFiles WriteResult(Vorlan::PepIdentType::EPepIdentType format, const std::string& text,
                        const Vorlan::test::TempFolder& folder, Vorlan::test::Random& random);

/// Tells the readers the masses of the modifications that the parts bear.
void TellUsualModifications();

} // namespace pelgrin::test

#endif // PELGRIN_TESTS_RANDOMRESULTS_H
