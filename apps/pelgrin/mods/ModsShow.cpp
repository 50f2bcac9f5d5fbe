#include <algorithm>
#include <cctype>
#include <set>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/SimilarNames.h"
#include "common/Terminal.h"
#include "common/Words.h"
#include "mods/Mods.h"

namespace pelgrin {

using Vorlan::CModificationsDB;
using Vorlan::CResidueModification;

namespace {

std::set<const CResidueModification*> RecordsNamed(const CModificationsDB& database,
                                                   const std::string& name)
{
    std::set<const CResidueModification*> records;
    try {
        database.searchModifications(records, name, "",
                                     CResidueModification::NUMBER_OF_TERM_SPECIFICITY);
    } catch (const OpenMS::Exception::ElementNotFound&) {
        records.clear();
    }
    return records;
}

/// Every name that gives a record, in the order of the database.
std::vector<std::string> AllNames(const CModificationsDB& database)
{
    std::vector<std::string> names;
    std::set<std::string> known;
    for (const CResidueModification* record : AllRecords(database)) {
        for (const std::string& name : {record->getId(), record->getFullId(), record->getFullName(),
                                        record->getUniModAccession()}) {
            if (known.insert(name).second && !RecordsNamed(database, name).empty()) {
                names.push_back(name);
            }
        }
    }
    return names;
}

std::string MassesText(double mono, double average)
{
    return fmt::format("{:.6f} Da mono, {:.6f} Da average", mono, average);
}

std::string TextOf(const CResidueModification& record)
{
    const bool hasLoss =
        record.getNeutralLossMonoMass() != 0.0 || record.getNeutralLossAverageMass() != 0.0;
    const auto orDash = [](const std::string& text) { return text.empty() ? "-" : OneLine(text); };
    return fmt::format(
        "{}\n"
        "  id              {}\n"
        "  full name       {}\n"
        "  accession       {}\n"
        "  site            {}, {}\n"
        "  classification  {}\n"
        "  mass            {}\n"
        "  neutral loss    {}\n",
        OneLine(record.getFullId()), orDash(record.getId()), orDash(record.getFullName()),
        orDash(record.getUniModAccession()), orDash(record.getOrigin()),
        record.getTermSpecificityName(record.getTermSpecificity()),
        orDash(record.getSourceClassificationName(record.getSourceClassification())),
        MassesText(record.getDiffMonoMass(), record.getDiffAverageMass()),
        hasLoss ? MassesText(record.getNeutralLossMonoMass(), record.getNeutralLossAverageMass())
                : "none");
}

} // namespace

ExitStatus RunModsShow(const ShowQuestion& question)
{
    const CModificationsDB& database = OpenDatabase(question.database);
    const auto records = RecordsNamed(database, question.name);
    if (records.empty()) {
        std::string similar;
        for (const std::string& name : SimilarNames(question.name, AllNames(database))) {
            similar += (similar.empty() ? "; similar names: \"" : ", \"") + name + "\"";
        }
        spdlog::warn("no modification is named \"{}\"{}", OneLine(Clip(question.name, 80)),
                     OneLine(similar));
        return WithLosses;
    }
    std::string text;
    for (const CResidueModification* record : records) {
        text += (text.empty() ? "" : "\n") + TextOf(*record);
    }
    PrintOut(text);
    return AllWell;
}

} // namespace pelgrin
