// pepXML: both readers against a plain twin that keeps the whole tree and asks
// it by name, and the quick way through the document, in parts, against the
// reading of the whole file.
//
// The last byte of the input is the size of the parts, less one; the others are
// the file. A few modifications are specified. Reading may print the text of a
// CXmlException, or throw ElementNotFound for a mass that nothing explains. Any
// other end is a finding.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>

#include "FuzzSupport.h"
#include "PeptideIdentificationIO.h"
#include "TulkParam.h"
#include "pepident/PepXmlMatches.h"
#include "pepident/PepXmlTwin.h"
#include "util/XmlScanner.h"

namespace {

using namespace Vorlan;
using test::PepXmlOutcome;

// ---- Parameters -------------------------------------------------------------

constexpr char kTable[] =
    "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\tclassification\t"
    "diff_mono_mass\tdiff_average_mass\tneutral_loss_mono_mass\tneutral_loss_average_mass\n"
    "Oxidation\tOxidation (M)\t\t\tAnywhere\tM\tother\t15.994915\t0\t0\t0\n"
    "Phospho\tPhospho (S)\t\t\tAnywhere\tS\tother\t79.966331\t0\t0\t0\n"
    "Cap\tCap (Any N-term)\t\t\tAny N-term\tN-term\tother\t1\t0\t0\t0\n"
    "Cap\tCap (Protein N-term)\t\t\tProtein N-term\tN-term\tother\t2\t0\t0\t0\n"
    "Tail\tTail (Any C-term)\t\t\tAny C-term\tC-term\tother\t-3\t0\t0\t0\n";

constexpr char kParameters[] = R"([Search]
search_result_format = Comet (.pep.xml)
open_search = 1
precursor_matching_tolerance = 500
precursor_matching_tolerance_type = 0
fragmentation_method = 0
precursor_tol = 10
precursor_tol_type = 1
fragment_tol = 0.02
fragment_tol_type = 0
fixed_mod_number = 0
var_mod_number = 5
var_mod_1 = Oxidation (M)
var_mod_2 = Phospho (S)
var_mod_3 = Cap (Any N-term)
var_mod_4 = Cap (Protein N-term)
var_mod_5 = Tail (Any C-term)
dataset_format = mgf
dataset_number = 1
dataset_filename_1 = ./run.mgf
pep_ident_format = Comet (.pep.xml)
pep_ident_number = 1
pep_ident_filename_1 = ./run.pep.xml
[Fdr]
is_fdr_control = 0
[Localization]
is_localized = 0
[Annotation]
is_annotated = 0
[Output]
output = out
)";

/// Reads the parameters, which stay for all that follows.
bool ReadParameters()
{
    namespace fs = std::filesystem;
    std::string folder = (fs::temp_directory_path() / "pelgrin-fuzz-XXXXXX").string();
    fuzz::Check(::mkdtemp(folder.data()) != nullptr, "a temporary folder can be made");
    const fs::path former = fs::current_path();
    fs::current_path(folder);
    std::ofstream("unimod.txt") << kTable;
    std::ofstream("run.ini") << kParameters;
    const CSearchParam* const search = CTulkParam::readFromFile("run.ini")->getSearchParam();
    fs::current_path(former);
    fs::remove_all(folder);
    fuzz::Check(search->getSpecifiedMod().size() == 5, "the modifications are specified");
    return true;
}

// ---- Reading ------------------------------------------------------------------

/// Names of terminal modifications are not the twin's business.
std::vector<std::string> TextsOf(std::vector<PeptideIdentification> matches)
{
    for (PeptideIdentification& match : matches) {
        for (IdentModification& mod : match.vAltMods) {
            mod.strName.clear();
            mod.strPosition.clear();
        }
    }
    return test::FullTexts(matches);
}

/// Runs read(matches) and gives its outcome.
template <typename Read>
PepXmlOutcome OutcomeOf(Read read)
{
    std::ostringstream printed;
    std::streambuf* const former = std::cout.rdbuf(printed.rdbuf());
    PepXmlOutcome outcome;
    std::vector<PeptideIdentification> matches;
    try {
        read(matches);
    } catch (const OpenMS::Exception::ElementNotFound& e) {
        outcome.thrown = std::string(e.getName()) + ": " + e.getMessage();
    }
    std::cout.rdbuf(former);
    outcome.matches = TextsOf(std::move(matches));
    outcome.printed = printed.str();
    return outcome;
}

template <typename Reader>
PepXmlOutcome ReadFile(const fuzz::MemoryFile& file)
{
    return OutcomeOf([&](std::vector<PeptideIdentification>& matches) {
        Reader reader;
        reader.InitLoad({file.Folder(), file.Name(), PepIdentType::Unknown});
        reader.Load(matches);
        reader.EndLoad();
    });
}

std::string Joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts) {
        all += text + "\n";
    }
    return all;
}

void CheckSameOutcome(const PepXmlOutcome& seen, const PepXmlOutcome& expected)
{
    fuzz::CheckSame(seen.printed, expected.printed, "what is printed");
    fuzz::CheckSame(seen.thrown, expected.thrown, "what is thrown");
    fuzz::CheckSame(Joined(seen.matches), Joined(expected.matches), "the matches");
    fuzz::Check(seen.printed.empty() || (seen.matches.empty() && seen.thrown.empty()),
                "a broken file gives no matches");
}

// ---- In parts -----------------------------------------------------------------

class Teller {
public:
    explicit Teller(XmlListener& listener) : listener_(listener) {}

    void Begin(std::string_view name, const char* attributes, const char* attributesEnd)
    {
        listener_.Begin(name, xml::View(attributes, attributesEnd));
    }
    void End() { listener_.End(); }
    void Unknown(std::string_view) {}

private:
    XmlListener& listener_;
};

/// Tells the quick way through text in parts; false when it gives up.
bool TellInParts(const std::string& text, std::size_t size, XmlListener& listener)
{
    Teller teller(listener);
    XmlScanner<Teller> scanner(teller);
    std::string rest;
    for (std::size_t place = 0;;) {
        const std::string part = rest + text.substr(place, size);
        place = std::min(text.size(), place + size);
        const bool isLast = place == text.size();
        // Memory of its own, so that reading beyond it is seen.
        const std::unique_ptr<char[]> memory(new char[part.size()]);
        std::copy(part.begin(), part.end(), memory.get());
        const char* const end = memory.get() + part.size();
        const char* const next = scanner.Read(memory.get(), end, isLast);
        if (next == nullptr || isLast) {
            return next != nullptr;
        }
        rest.assign(next, end);
    }
}

/// As a file is read in text mode.
std::string TextOfFile(std::string text)
{
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        text.erase(0, 3);
    }
    for (std::size_t place = 0; (place = text.find("\r\n", place)) != std::string::npos;) {
        text.erase(place++, 1);
    }
    return text;
}

void CompareParts(const std::string& bytes, std::size_t size, const PepXmlOutcome& expected)
{
    PepXmlMatches matches(PepXmlScore::Expect, "mgf", SpecifiedModifications());
    if (!TellInParts(TextOfFile(bytes), size, matches)) {
        return;
    }
    if (!matches.HasRoot()) {
        fuzz::Check(!expected.printed.empty(), "a file without elements is told");
        return;
    }
    const PepXmlOutcome seen =
        OutcomeOf([&](std::vector<PeptideIdentification>& all) { matches.MoveTo(all); });
    CheckSameOutcome(seen, expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool isReady = ReadParameters();
    fuzz::Check(isReady, "the parameters are read");
    std::string text(fuzz::TextOf(data, size));
    std::size_t partSize = 1;
    if (!text.empty()) {
        partSize += static_cast<unsigned char>(text.back());
        text.pop_back();
    }
    static fuzz::MemoryFile file;
    file.Write(text);

    CheckSameOutcome(ReadFile<MSFraggerPepXMLPepIdentIO>(file),
                     test::PepXmlTwin("mgf", false).Read(file.Path()));
    const PepXmlOutcome comet = ReadFile<CometPepXMLPepIdentIO>(file);
    CheckSameOutcome(comet, test::PepXmlTwin("mgf", true).Read(file.Path()));
    CompareParts(text, partSize, comet);
    return 0;
}
