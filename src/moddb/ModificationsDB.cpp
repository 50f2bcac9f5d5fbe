// Questions to a database, its dump, and how loaders fill it.
#include <fstream>
#include <string_view>
#include <utility>

#include "ModificationDB.h"
#include "moddb/ClassificationTexts.h"
#include "moddb/ModificationAccess.h"
#include "moddb/ModificationDBErrors.h"
#include "moddb/ModificationMasses.h"
#include "moddb/ModificationNames.h"
#include "moddb/ModificationTable.h"
#include "platform/OutputFile.h"
#include "util/Console.h"
#include "util/Numbers.h"

namespace Vorlan {

namespace {

// Deliberate: B-37. A record of this full id, without its closing parenthesis,
// is never given.
constexpr std::string_view kNeverGiven = "Oxidation (Protein N-term";

bool HasTermSpecificity(const CResidueModification& record)
{
    return record.getTermSpecificity() >= 0
           && record.getTermSpecificity() < CResidueModification::NUMBER_OF_TERM_SPECIFICITY;
}

void AppendRow(std::string& text, const CResidueModification& record)
{
    const std::string cells[] = {
        record.getId(),
        record.getFullId(),
        record.getUniModAccession(),
        record.getFullName(),
        record.getTermSpecificityName(record.getTermSpecificity()),
        record.getOrigin(),
        std::string(DumpTextOf(record.getSourceClassification())),
    };
    for (const std::string& cell : cells) {
        text.append(cell).append("\t");
    }
    numbers::AppendFixed6(text, record.getDiffMonoMass());
    for (const double mass : {record.getDiffAverageMass(), record.getNeutralLossMonoMass(),
                              record.getNeutralLossAverageMass()}) {
        text.append("\t");
        numbers::AppendFixed6(text, mass);
    }
    text.append("\n");
}

} // namespace

CModificationsDB::CModificationsDB()
{
    addModifications_({}, 0); // the lists that questions go to
}

CModificationsDB::~CModificationsDB() = default;

std::size_t CModificationsDB::getNumberOfModifications() const
{
    return vRecords_.size();
}

bool CModificationsDB::residuesMatch_(const std::string& wanted, const std::string& residue) const
{
    return wanted.empty() || wanted == residue;
}

bool CModificationsDB::Matches_(const CResidueModification& record, const std::string& residue,
                                CResidueModification::TermSpecificity specificity) const
{
    return residuesMatch_(residue, record.getOrigin())
           && (specificity == CResidueModification::NUMBER_OF_TERM_SPECIFICITY
               || specificity == record.getTermSpecificity());
}

/// Calls take(record) for the matching records under name, in order, as long as
/// it gives true. False for an unknown name.
template <typename Take>
bool CModificationsDB::ForEachNamed_(const std::string& name, const std::string& residue,
                                     CResidueModification::TermSpecificity specificity,
                                     Take take) const
{
    const std::vector<std::size_t> numbers = pNames_->Find(vRecords_, name);
    for (const std::size_t number : numbers) {
        const CResidueModification& record = *vRecords_[number];
        if (record.getFullId() != kNeverGiven && Matches_(record, residue, specificity)
            && !take(record)) {
            break;
        }
    }
    return !numbers.empty();
}

std::vector<const CResidueModification*> ModificationAccess::Named(const CModificationsDB& database,
                                                                   const std::string& name)
{
    std::vector<const CResidueModification*> records;
    database.ForEachNamed_(name, "", CResidueModification::NUMBER_OF_TERM_SPECIFICITY,
                           [&records](const CResidueModification& record) {
                               records.push_back(&record);
                               return true;
                           });
    return records;
}

void CModificationsDB::searchModifications(std::set<const CResidueModification*>& result,
                                           const std::string& name, const std::string& residue,
                                           CResidueModification::TermSpecificity specificity) const
{
    result.clear();
    const auto insert = [&result](const CResidueModification& record) {
        result.insert(result.end(), &record); // mostly its place
        return true;
    };
    if (!ForEachNamed_(name, residue, specificity, insert)) {
        errors::NoSuchModification(name);
    }
}

const CResidueModification&
CModificationsDB::getModification(const std::string& name, const std::string& residue,
                                  CResidueModification::TermSpecificity specificity) const
{
    const CResidueModification* first = nullptr;
    const auto takeFirst = [&first](const CResidueModification& record) {
        first = &record;
        return false;
    };
    if (!ForEachNamed_(name, residue, specificity, takeFirst)) {
        errors::NoSuchModification(name);
    }
    if (first == nullptr) {
        errors::ModificationNotAvailable(name);
    }
    return *first;
}

void CModificationsDB::searchModificationsByDiffMonoMass(
    std::vector<std::string>& fullIds, double mass, double maxError, const std::string& residue,
    CResidueModification::TermSpecificity specificity) const
{
    const std::string wanted = residue; // which may be one of the full ids that go
    fullIds.clear();
    pMasses_->ForEachWithin(mass, maxError, [&](std::size_t number) {
        const CResidueModification& record = *vRecords_[number];
        if (Matches_(record, wanted, specificity)) {
            fullIds.push_back(record.getFullId());
        }
    });
}

void CModificationsDB::writeToFile(std::string path) const
{
    std::ofstream file;
    platform::OpenOutput(file, path);
    if (!file) {
        errors::DumpNotWritable(path);
    }
    std::string text = ModificationTableHeader() + "\n";
    for (const CResidueModification* const record : vRecords_) {
        if (!HasTermSpecificity(*record)) {
            // Deliberate: B-40
            file.write(text.data(), static_cast<std::streamsize>(text.size()));
            file.close();
            console::PrintAndExit(
                console::Stream::Err,
                "CModificationsDB::writeToFile calls\nError:\tUnexpected term specificity\n");
        }
        AppendRow(text, *record);
    }
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) {
        errors::DumpNotWritable(path);
    }
}

void CModificationsDB::addModifications_(Records records, unsigned nameFields)
{
    auto block = std::make_unique<Records>(std::move(records));
    std::vector<const CResidueModification*> all = vRecords_;
    all.reserve(vRecords_.size() + block->size());
    for (const CResidueModification& record : *block) {
        all.push_back(&record);
    }
    // All is made before anything changes.
    std::unique_ptr<const ModificationMasses> sorted;
    if (pMasses_ == nullptr || !block->empty()) {
        std::vector<double> masses;
        masses.reserve(all.size());
        for (const CResidueModification* const record : all) {
            masses.push_back(record->getDiffMonoMass());
        }
        sorted = std::make_unique<const ModificationMasses>(masses);
    }
    std::unique_ptr<ModificationNames> names;
    if (pNames_ == nullptr || nameFields != 0) {
        names = pNames_ == nullptr ? std::make_unique<ModificationNames>()
                                   : std::make_unique<ModificationNames>(*pNames_);
        names->Add(all, nameFields);
    }
    vBlocks_.push_back(std::move(block));
    vRecords_ = std::move(all);
    if (sorted != nullptr) {
        pMasses_ = std::move(sorted);
    }
    if (names != nullptr) {
        pNames_ = std::move(names);
    }
}

std::vector<CResidueModification*> CModificationsDB::waitingModifications_()
{
    std::vector<CResidueModification*> waiting;
    std::size_t number = 0;
    for (const std::unique_ptr<Records>& block : vBlocks_) {
        for (CResidueModification& record : *block) {
            if (number++ >= pNames_->Added()) {
                waiting.push_back(&record);
            }
        }
    }
    return waiting;
}

} // namespace Vorlan
