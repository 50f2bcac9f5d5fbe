// Questions to a database, its dump, and how loaders fill it.
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

#include "ModificationDB.h"
#include "moddb/ClassificationTexts.h"
#include "moddb/ModificationDBErrors.h"
#include "moddb/ModificationMasses.h"
#include "moddb/ModificationTable.h"
#include "platform/Paths.h"
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
    addModifications_({}, nullptr);
}

CModificationsDB::~CModificationsDB() = default;

std::size_t CModificationsDB::getNumberOfModifications() const
{
    return Records_().size();
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

const CModificationsDB::RecordSet& CModificationsDB::RecordsNamed_(const std::string& name) const
{
    const auto place = mapNames_.find(name);
    if (place == mapNames_.end()) {
        errors::NoSuchModification(name);
    }
    return place->second;
}

void CModificationsDB::searchModifications(std::set<const CResidueModification*>& result,
                                           const std::string& name, const std::string& residue,
                                           CResidueModification::TermSpecificity specificity) const
{
    result.clear();
    for (const CResidueModification* record : RecordsNamed_(name)) {
        if (record->getFullId() != kNeverGiven && Matches_(*record, residue, specificity)) {
            result.insert(result.end(), record);
        }
    }
}

const CResidueModification&
CModificationsDB::getModification(const std::string& name, const std::string& residue,
                                  CResidueModification::TermSpecificity specificity) const
{
    RecordSet found;
    searchModifications(found, name, residue, specificity);
    if (found.empty()) {
        errors::ModificationNotAvailable(name);
    }
    return **found.begin();
}

void CModificationsDB::searchModificationsByDiffMonoMass(
    std::vector<std::string>& fullIds, double mass, double maxError, const std::string& residue,
    CResidueModification::TermSpecificity specificity) const
{
    fullIds.clear();
    for (const std::size_t number : pMasses_->Within(mass, maxError)) {
        const CResidueModification& record = Records_()[number];
        if (Matches_(record, residue, specificity)) {
            fullIds.push_back(record.getFullId());
        }
    }
}

void CModificationsDB::writeToFile(std::string path) const
{
    std::ofstream file(platform::Resolve(path), std::ios::out | std::ios::trunc);
    if (!file) {
        errors::DumpNotWritable(path);
    }
    std::string text = ModificationTableHeader() + "\n";
    for (const CResidueModification& record : Records_()) {
        if (!HasTermSpecificity(record)) {
            // Deliberate: B-40
            file.write(text.data(), static_cast<std::streamsize>(text.size()));
            file.close();
            console::PrintAndExit(
                "CModificationsDB::writeToFile calls\nError:\tUnexpected term specificity\n");
        }
        AppendRow(text, record);
    }
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) {
        errors::DumpNotWritable(path);
    }
}

void CModificationsDB::addModifications_(std::vector<CResidueModification> records, NamesOf names)
{
    auto block = std::make_unique<Records>();
    std::map<OpenMS::String, RecordSet> index;
    const std::size_t former = vBlocks_.empty() ? 0 : Records_().size();
    block->reserve(former + records.size());
    if (former > 0) {
        *block = Records_();
        block->reserve(former + records.size());
        for (const auto& [name, set] : mapNames_) {
            for (const CResidueModification* record : set) {
                index[name].insert(block->data() + (record - Records_().data()));
            }
        }
    }
    std::move(records.begin(), records.end(), std::back_inserter(*block));
    std::vector<double> masses;
    for (const CResidueModification& record : *block) {
        masses.push_back(record.getDiffMonoMass());
    }
    for (std::size_t number = former; number < block->size(); ++number) {
        const CResidueModification& record = (*block)[number];
        for (const std::string& name : names(record)) {
            RecordSet& set = index[name];
            set.insert(set.end(), &record);
        }
    }
    auto sorted = std::make_unique<const ModificationMasses>(masses);
    vBlocks_.push_back(std::move(block));
    mapNames_.swap(index);
    pMasses_ = std::move(sorted);
}

} // namespace Vorlan
