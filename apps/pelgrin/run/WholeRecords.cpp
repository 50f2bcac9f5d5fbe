#include "run/WholeRecords.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "TulkParam.h"

namespace pelgrin {

using Vorlan::IdentModification;
using Vorlan::PepIdentType;
using Vorlan::PeptideIdentification;

namespace {

void TakeNamedTermini(PeptideIdentification& record)
{
    std::vector<IdentModification> rest;
    for (IdentModification& mod : record.vAltMods) {
        (mod.strName.empty() ? rest : record.vMods).push_back(std::move(mod));
    }
    record.vAltMods = std::move(rest);
}

void TrimAccessions(PeptideIdentification& record)
{
    for (Vorlan::PeptideEvidence& evidence : record.vEvidences) {
        std::string& accession = evidence.strProteinAccession;
        accession.erase(accession.find_last_not_of(' ') + 1);
        accession.erase(0, accession.find_first_not_of(' '));
    }
}

void AddAt(std::int32_t position, const IdentModification& mod, PeptideIdentification& record)
{
    const auto& mods = record.vMods;
    const bool isTaken = std::any_of(
        mods.begin(), mods.end(), [position](const auto& other) { return other.nPos == position; });
    if (!isTaken) {
        record.vMods.push_back(mod);
        record.vMods.back().nPos = position;
    }
}

/// Modifications of one residue anywhere or of a terminus of any peptide.
void AddFixed(const IdentModification& mod, PeptideIdentification& record)
{
    const std::string& sequence = record.strSequence;
    if (mod.strPosition == "Anywhere" && !mod.strSite.empty()) {
        for (std::size_t i = 0; i < sequence.size(); ++i) {
            if (mod.strSite.find(sequence[i]) != std::string::npos) {
                AddAt(static_cast<std::int32_t>(i + 1), mod, record);
            }
        }
    } else if (mod.strPosition == "Any N-term" && mod.strSite == "N-term") {
        AddAt(0, mod, record);
    } else if (mod.strPosition == "Any C-term" && mod.strSite == "C-term") {
        AddAt(static_cast<std::int32_t>(sequence.size() + 1), mod, record);
    }
}

} // namespace

std::vector<IdentModification> FixedModifications()
{
    const Vorlan::CSearchParam* const search = Vorlan::CTulkParam::getInstance()->getSearchParam();
    return search == nullptr ? std::vector<IdentModification>() : search->vFixedMods;
}

void MakeWhole(PepIdentType::EPepIdentType format, const std::vector<IdentModification>& fixed,
               PeptideIdentification& record)
{
    const std::size_t before = record.vMods.size();
    TakeNamedTermini(record);
    if (format != PepIdentType::CalvexTxt) {
        TrimAccessions(record);
    }
    if (format == PepIdentType::MaxQuant) {
        for (const IdentModification& mod : fixed) {
            AddFixed(mod, record);
        }
    }
    if (record.vMods.size() > before) {
        record.SortMod();
    }
}

} // namespace pelgrin
