// What the plain twins of the modification readers share.
#ifndef VORLAN_FUZZ_PLAINMODIFICATIONS_H
#define VORLAN_FUZZ_PLAINMODIFICATIONS_H

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>

#include "ModificationDB.h"
#include "PlainLines.h"
#include "util/LineReader.h"

namespace Vorlan::fuzz {

/// Records and the exception that ended the reading; empty: none.
struct ModOutcome {
    std::vector<CResidueModification> records;
    std::string exception;
};

/// "InvalidValue 148 label message"
inline std::string ExceptionText(const OpenMS::Exception::BaseException& error)
{
    return std::string(error.getName()) + " " + std::to_string(error.getLine()) + " "
           + error.getFunction() + " " + error.what();
}

/// Runs read, which appends records, and keeps the two documented exceptions.
template <typename Read>
ModOutcome ModOutcomeOf(Read read)
{
    ModOutcome outcome;
    try {
        read(outcome.records);
    } catch (const OpenMS::Exception::InvalidValue& error) {
        outcome.exception = ExceptionText(error);
    } catch (const OpenMS::Exception::InvalidParameter& error) {
        outcome.exception = ExceptionText(error);
    }
    return outcome;
}

/// One more than there are separators; none of an empty text.
inline std::vector<std::string> Pieces(const std::string& text, const std::string& separator)
{
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t hit = 0; !text.empty() && hit != std::string::npos;
         begin = hit + separator.size()) {
        hit = text.find(separator, begin);
        pieces.push_back(text.substr(begin, hit - begin));
    }
    return pieces;
}

inline double Number(const std::string& text)
{
    return std::atof(text.c_str());
}

inline std::string MassText(double mass, const char* format)
{
    char text[400];
    std::snprintf(text, sizeof text, format, mass);
    return std::string("\t") + text;
}

/// Every field; doubles with all of their digits.
inline std::string Dump(const CResidueModification& record, const char* format = "%.17g")
{
    return record.getId() + "\t" + record.getFullId() + "\t" + record.getUniModAccession() + "\t"
           + record.getFullName() + "\t" + std::to_string(record.getTermSpecificity()) + "\t"
           + record.getOrigin() + "\t" + std::to_string(record.getSourceClassification())
           + MassText(record.getDiffMonoMass(), format)
           + MassText(record.getDiffAverageMass(), format)
           + MassText(record.getNeutralLossMonoMass(), format)
           + MassText(record.getNeutralLossAverageMass(), format) + "\n";
}

inline std::string Dump(const std::vector<CResidueModification>& records)
{
    std::string text;
    for (const CResidueModification& record : records) {
        text += Dump(record);
    }
    return text;
}

} // namespace Vorlan::fuzz

#endif // VORLAN_FUZZ_PLAINMODIFICATIONS_H
