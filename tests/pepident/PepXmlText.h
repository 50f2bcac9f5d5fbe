// A small pepXML document that tests change piece by piece, and its reading.
#ifndef VORLAN_TESTS_PEPXMLTEXT_H
#define VORLAN_TESTS_PEPXMLTEXT_H

#include <string>
#include <string_view>
#include <vector>

#include <OpenMS/CONCEPT/Constants.h>

#include "PeptideIdentificationIO.h"
#include "param/ParameterText.h"
#include "pepident/MatchText.h"
#include "pepident/PepXmlTwin.h"

namespace Vorlan::test {

inline const std::string kPepXml =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<msms_pipeline_analysis date="2026-11-20T10:00:00">
<msms_run_summary base_name="data/run01" raw_data_type="raw" raw_data=".mzML">
<search_summary base_name="data/run01" search_engine="Engine">
<aminoacid_modification aminoacid="M" massdiff="15.994915" mass="147.0354" variable="Y"/>
</search_summary>
<spectrum_query spectrum="run01.00007.00007.2 extra" start_scan="7" end_scan="8" precursor_neutral_mass="1000.5" assumed_charge="2" index="1" retention_time_sec="61.5">
<search_result>
<search_hit hit_rank="1" peptide="PEPMIDEK" peptide_prev_aa="K" peptide_next_aa="R" protein="sp|P1|A" num_tot_proteins="1" massdiff="0.25">
<modification_info modified_peptide="PEPM[147]IDEK">
<mod_aminoacid_mass position="4" mass="147.0354"/>
</modification_info>
<search_score name="xcorr" value="2.5"/>
<search_score name="deltacn" value="0.5"/>
<search_score name="spscore" value="12.5"/>
<search_score name="expect" value="1.5e-3"/>
</search_hit>
</search_result>
</spectrum_query>
</msms_run_summary>
</msms_pipeline_analysis>
)";

inline constexpr char kDocumentEnd[] = "</msms_run_summary>\n</msms_pipeline_analysis>\n";

/// The text with its only piece from in another form.
inline std::string Changed(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    EXPECT_EQ(text.find(from, place + 1), std::string::npos) << from;
    return place == std::string::npos ? text : text.replace(place, from.size(), to);
}

/// From where begin stands first to the end of the end that follows it.
inline std::string Piece(const std::string& text, const std::string& begin, const std::string& end)
{
    const std::size_t first = text.find(begin);
    const std::size_t last = text.find(end, first);
    EXPECT_NE(first, std::string::npos) << begin;
    EXPECT_NE(last, std::string::npos) << end;
    return text.substr(first, last + end.size() - first);
}

inline std::string WithCarriageReturns(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        result += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return result;
}

/// The match of kPepXml.
inline PeptideIdentification PepXmlMatch()
{
    const double kProton = OpenMS::Constants::PROTON_MASS_U;
    PeptideIdentification match;
    match.strDatasetName = "data/run01.mgf";
    match.strSpectrumName = "run01.00007.00007.2";
    match.strSequence = "PEPMIDEK";
    match.nCharge = 2;
    match.dObsMH = 1000.5 + kProton;
    match.dValue1 = (1000.5 + kProton + kProton) / 2;
    match.dValue2 = 61.5;
    match.nValue5 = 7;
    match.dMassShift = 0.25;
    match.dMainScore = 12.5;
    match.vEvidences = {{"sp|P1|A", -1, -1, 'K', 'R'}};
    match.vMods = {{"Oxidation", 15.994915, "M", "Anywhere", 4}};
    return match;
}

/// Reads a file of pepXML into matches.
template <typename Reader = MSFraggerPepXMLPepIdentIO>
Reading ReadPepXmlFile(const std::string& folder, const std::string& name,
                       std::vector<PeptideIdentification> matches = {})
{
    Reading reading;
    reading.matches = std::move(matches);
    const CoutInMemory output;
    reading.thrown = ThrownBy([&] {
        Reader reader;
        reader.InitLoad({folder, name, PepIdentType::Unknown});
        reader.Load(reading.matches);
        reader.EndLoad();
    });
    reading.output = output.Text();
    return reading;
}

/// Oxidation (M), Cap at any start, the protein's start and any end, Ring (K)
/// are specified; datasets end with "mgf".
class PepXmlTest : public ParameterTest {
protected:
    PepXmlTest()
    {
        EXPECT_EQ(Read(FullParameters()
                           .SetMods("fixed_mod", {"Carbamidomethyl (C)"})
                           .SetMods("var_mod",
                                    {"Oxidation (M)", "Cap (Any N-term)", "Cap (Protein N-term)",
                                     "Cap (Any C-term)", "Cap (Protein C-term)", "Ring (K)"})),
                  Thrown{});
    }

    template <typename Reader = MSFraggerPepXMLPepIdentIO>
    Reading ReadText(const std::string& text, std::vector<PeptideIdentification> matches = {}) const
    {
        std::filesystem::remove(results_.PathOf("r.pepXML"));
        results_.Write("r.pepXML", text);
        return ReadPepXmlFile<Reader>(results_.Path(), "r.pepXML", std::move(matches));
    }

    /// The matches of a document that is read without a word.
    template <typename Reader = MSFraggerPepXMLPepIdentIO>
    std::vector<std::string> TextsOf(const std::string& text) const
    {
        const Reading reading = ReadText<Reader>(text);
        EXPECT_EQ(reading.output, "");
        EXPECT_EQ(reading.thrown, Thrown{});
        return FullTexts(reading.matches);
    }

    const TempFolder results_;
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_PEPXMLTEXT_H
