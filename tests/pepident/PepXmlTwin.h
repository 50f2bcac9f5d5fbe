// The slow twin of the pepXML readers: the whole tree, its elements asked for
// by name, and masses explained by the public getMod.
#ifndef VORLAN_TESTS_PEPXMLTWIN_H
#define VORLAN_TESTS_PEPXMLTWIN_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <OpenMS/CONCEPT/Constants.h>
#include <OpenMS/CONCEPT/Exception.h>

#include "PeptideIdentificationIO.h"
#include "XmlDocument.h"
#include "pepident/ResidueMasses.h"
#include "support/CLocale.h"

namespace Vorlan::test {

// ---- Texts of all fields --------------------------------------------------

inline std::string ExactText(double value)
{
    const CLocale plain;
    char text[40];
    std::snprintf(text, sizeof text, "%a", value);
    return text;
}

inline std::string FullText(const std::vector<IdentModification>& mods)
{
    std::string text;
    for (const IdentModification& mod : mods) {
        text += "{" + mod.strName + "," + ExactText(mod.dMass) + "," + mod.strSite + ","
                + mod.strPosition + "," + std::to_string(mod.nPos) + "}";
    }
    return text;
}

/// Every field, numbers to the last bit.
inline std::string FullText(const PeptideIdentification& match)
{
    std::string text = match.strDatasetName + "|" + match.strSpectrumName + "|" + match.strSequence
                       + "|charge " + std::to_string(match.nCharge) + "|MH "
                       + ExactText(match.dObsMH) + "|shift " + ExactText(match.dMassShift)
                       + "|score " + ExactText(match.dMainScore)
                       + (match.bHighScoreBetter ? " high" : " low") + "|m/z "
                       + ExactText(match.dValue1) + "|time " + ExactText(match.dValue2) + "|error "
                       + ExactText(match.dValue3) + " " + std::to_string(match.nValue4) + "|scan "
                       + std::to_string(match.nValue5) + (match.bDecoy ? "|decoy" : "") + "|";
    for (const PeptideEvidence& evidence : match.vEvidences) {
        text += std::string(1, evidence.cBefore) + "." + evidence.strProteinAccession + "."
                + evidence.cAfter + "@" + std::to_string(evidence.nStart) + ";";
    }
    return text + "|mods " + FullText(match.vMods) + "|others " + FullText(match.vAltMods);
}

inline std::vector<std::string> FullTexts(const std::vector<PeptideIdentification>& matches)
{
    std::vector<std::string> texts;
    for (const PeptideIdentification& match : matches) {
        texts.push_back(FullText(match));
    }
    return texts;
}

// ---- Reading --------------------------------------------------------------

/// How a reading ended.
struct PepXmlOutcome {
    std::vector<std::string> matches = {};
    std::string printed = {};
    std::string thrown = {}; ///< name and message of an OpenMS exception
};

class PepXmlTwin {
public:
    /// ending is that of dataset names; comet reads the score named "expect".
    PepXmlTwin(std::string ending, bool comet) : ending_(std::move(ending)), comet_(comet) {}

    PepXmlOutcome Read(const std::string& path)
    {
        PepXmlOutcome outcome;
        CXmlDocument document;
        try {
            document.ParseFile(path);
            document.cRoot();
        } catch (const CXmlException& e) {
            outcome.printed = std::string(e.szWhat()) + "\n";
            return outcome;
        }
        std::vector<PeptideIdentification> matches;
        try {
            ReadDocument(document, matches);
        } catch (const OpenMS::Exception::BaseException& e) {
            outcome.thrown = std::string(e.getName()) + ": " + e.getMessage();
        }
        outcome.matches = FullTexts(matches);
        return outcome;
    }

private:
    static int IntOf(const std::string& text)
    {
        const long value = std::strtol(text.c_str(), nullptr, 10);
        return static_cast<int>(std::clamp<long>(value, std::numeric_limits<int>::min(),
                                                 std::numeric_limits<int>::max()));
    }

    static double DoubleOf(const std::string& text)
    {
        const CLocale plain;
        return std::strtod(text.c_str(), nullptr);
    }

    static std::string Replaced(std::string text, const std::string& what, const std::string& by)
    {
        std::size_t place = 0;
        while ((place = text.find(what, place)) != std::string::npos) {
            text.replace(place, what.size(), by);
            place += by.size();
        }
        return text;
    }

    void ReadDocument(CXmlDocument& document, std::vector<PeptideIdentification>& matches)
    {
        for (CXmlNode* node : document.cNodes()) {
            if (node->eType() == XML_ELEMENT) {
                ReadRoot(static_cast<CXmlElement&>(*node), matches);
                return;
            }
        }
    }

    void ReadRoot(CXmlElement& root, std::vector<PeptideIdentification>& matches)
    {
        CXmlElement* const run = root.pItem("msms_run_summary", 0);
        if (run == nullptr) {
            return;
        }
        const std::string dataset = run->strGetValue("base_name") + "." + ending_;
        const std::size_t queries = run->tCount("spectrum_query");
        for (std::size_t i = 0; i < queries; ++i) {
            CXmlElement& query = *run->pItem("spectrum_query", i);
            CXmlElement* const result = query.pItem("search_result", 0);
            CXmlElement* const hit = result == nullptr ? nullptr : result->pItem("search_hit", 0);
            if (hit != nullptr) {
                matches.push_back(MatchOf(query, *hit, dataset));
            }
        }
    }

    PeptideIdentification MatchOf(CXmlElement& query, CXmlElement& hit, const std::string& dataset)
    {
        PeptideIdentification match;
        match.strDatasetName = dataset;
        const std::string spectrum = query.strGetValue("spectrum");
        match.strSpectrumName = spectrum.substr(0, spectrum.find(' '));
        const int charge = IntOf(query.strGetValue("assumed_charge"));
        match.nCharge = static_cast<std::uint64_t>(static_cast<std::int64_t>(charge));
        const double proton = OpenMS::Constants::PROTON_MASS_U;
        match.dObsMH = DoubleOf(query.strGetValue("precursor_neutral_mass")) + proton;
        match.dValue1 = charge > 0 ? (match.dObsMH + (charge - 1) * proton) / charge : 0.0;
        match.nValue5 = IntOf(query.strGetValue("start_scan"));
        match.dValue2 = DoubleOf(query.strGetValue("retention_time_sec"));
        match.strSequence = hit.strGetValue("peptide");
        match.dMassShift = DoubleOf(hit.strGetValue("massdiff"));
        PeptideEvidence protein;
        protein.strProteinAccession =
            Replaced(Replaced(hit.strGetValue("protein"), "&apos;", "'"), "&gt;", ">");
        const std::string before = hit.strGetValue("peptide_prev_aa");
        const std::string after = hit.strGetValue("peptide_next_aa");
        protein.cBefore = before.empty() ? 'X' : before[0];
        protein.cAfter = after.empty() ? 'X' : after[0];
        match.vEvidences.push_back(protein);
        match.dMainScore = ScoreOf(hit);
        if (CXmlElement* const info = hit.pItem("modification_info", 0)) {
            TakeTermini(*info, match);
            TakeModifications(*info, match);
        }
        return match;
    }

    double ScoreOf(CXmlElement& hit) const
    {
        const std::size_t scores = hit.tCount("search_score");
        for (std::size_t i = 0; i < scores; ++i) {
            CXmlElement& one = *hit.pItem("search_score", i);
            if (comet_ ? one.strGetValue("name") == "expect" : i == 2) {
                return DoubleOf(one.strGetValue("value"));
            }
        }
        return 0.0;
    }

    /// Names are compared by the tests that write them out.
    static void TakeTermini(CXmlElement& info, PeptideIdentification& match)
    {
        const auto length = static_cast<std::int32_t>(match.strSequence.size());
        const std::string nTerm = info.strGetValue("mod_nterm_mass");
        const std::string cTerm = info.strGetValue("mod_cterm_mass");
        if (!nTerm.empty()) {
            match.vAltMods.emplace_back("", DoubleOf(nTerm) - 1.007825, "N-term", "", 0);
        }
        if (!cTerm.empty()) {
            match.vAltMods.emplace_back("", DoubleOf(cTerm) - 17.002740, "C-term", "", length + 1);
        }
    }

    void TakeModifications(CXmlElement& info, PeptideIdentification& match)
    {
        const std::string& sequence = match.strSequence;
        const std::size_t count = info.tCount("mod_aminoacid_mass");
        for (std::size_t i = 0; i < count; ++i) {
            CXmlElement& one = *info.pItem("mod_aminoacid_mass", i);
            const int place = IntOf(one.strGetValue("position"));
            if (place < 1 || static_cast<std::size_t>(place) > sequence.size()) {
                continue;
            }
            const char residue = sequence[static_cast<std::size_t>(place) - 1];
            const PeptideEvidence& protein = match.vEvidences[0];
            std::vector<IdentModification> found;
            reader_.getMod(found, DoubleOf(one.strGetValue("mass")) - ResidueMass(residue), place,
                           residue, protein.cBefore, protein.cAfter);
            for (IdentModification& mod : found) {
                const bool cutOff = mod.strSite == "M" && place == 1 && sequence[0] != 'M'
                                    && protein.cBefore == '-';
                const std::string& type = mod.strPosition;
                mod.nPos = type.find("N-term") != std::string::npos   ? 0
                           : type.find("C-term") != std::string::npos ? place + 1
                           : cutOff                                   ? 0
                                                                      : place;
                match.vMods.push_back(mod);
            }
        }
    }

    std::string ending_;
    bool comet_;
    MSFraggerPepXMLPepIdentIO reader_;
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_PEPXMLTWIN_H
