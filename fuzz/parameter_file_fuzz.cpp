// The parameter file: reading it against the rules of
// docs/formats/parameters.md written out in the plainest way, and a saved file
// against the one that was loaded.
//
// The input is the text of a file (see Expanded). Both modification databases
// are read before, so that no input can name another one. Reading may end in
// InvalidParameter; what was read before it must be the same, too. Any other end
// is a finding.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>

#include "FuzzSupport.h"
#include "InitFile.h"
#include "ModificationDB.h"
#include "PlainParameters.h"
#include "TulkParam.h"

namespace {

using namespace Vorlan;
using fuzz::Outcome;

// ---- The databases --------------------------------------------------------

/// Reads both databases. They stay for all that follows (B-45).
bool ReadDatabases()
{
    fuzz::MemoryFile table;
    table.Write(fuzz::TableOf({fuzz::kEngineRows.begin(), fuzz::kEngineRows.end()}));
    CModificationsDBEngine::getInstance(table.Path(), SearchEngineType::CalvexTxt);

    // The default table has its place in the working folder.
    namespace fs = std::filesystem;
    std::string folder = (fs::temp_directory_path() / "pelgrin-fuzz-XXXXXX").string();
    fuzz::Check(::mkdtemp(folder.data()) != nullptr, "a temporary folder can be made");
    const fs::path former = fs::current_path();
    fs::current_path(folder);
    std::ofstream("unimod.txt") << fuzz::TableOf(
        {fuzz::kDefaultRows.begin(), fuzz::kDefaultRows.end()});
    CModificationsDBCalvexDefault::getInstance();
    fs::current_path(former);
    fs::remove_all(folder);
    return true;
}

// ---- What was read, as text -----------------------------------------------

class Text {
public:
    Text& operator<<(const std::string& value)
    {
        text_ += value + "|";
        return *this;
    }
    Text& operator<<(const char* value) { return *this << std::string(value); }
    template <typename Integer>
    Text& Int(Integer value)
    {
        return *this << std::to_string(value);
    }
    Text& Bits(double value)
    {
        char digits[40];
        std::snprintf(digits, sizeof digits, "%a", value);
        return *this << digits;
    }
    Text& Mods(const std::vector<IdentModification>& mods)
    {
        for (const IdentModification& mod : mods) {
            *this << mod.strName << mod.strSite << mod.strPosition;
            Bits(mod.dMass).Int(mod.nPos);
        }
        return *this << "\n";
    }
    template <typename Source>
    Text& Sources(const std::vector<Source>& sources)
    {
        for (const Source& source : sources) {
            *this << source.strFirst << source.strSecond;
            Int(static_cast<int>(source.eType));
        }
        return *this << "\n";
    }
    const std::string& Get() const { return text_; }

private:
    std::string text_;
};

void Append(Text& text, const CSearchParam& param)
{
    text.Int(static_cast<int>(param.eSearchEngine)).Int(param.bOpenSearch);
    text.Bits(param.dPrecursorMatchingTol).Int(static_cast<int>(param.ePrecursorMatchingTolType));
    text.Int(static_cast<int>(param.eFragMethod));
    text.Bits(param.dPrecursorTol).Int(static_cast<int>(param.ePrecursorTolType));
    text.Bits(param.dFragmentTol).Int(static_cast<int>(param.eFragmentTolType));
    text << param.strModificationDatabase;
    text.Mods(param.vFixedMods).Mods(param.vVarMods).Mods(param.getSpecifiedMod());
    text.Int(static_cast<int>(param.eDatasetFormat)).Int(param.nDatasetNumber);
    text.Sources(param.vDatasets);
    text.Int(static_cast<int>(param.ePepIdentFormat)).Int(param.nPepIdentNumber);
    text.Sources(param.vPepIdentSources);
}

std::string TextOf(const Outcome& outcome)
{
    Text text;
    if (outcome.search) {
        Append(text << "search", *outcome.search);
    }
    if (outcome.fdr) {
        text << "fdr" << outcome.fdr->strDecoyTag;
        text.Int(outcome.fdr->bFdrControl).Bits(outcome.fdr->dFdrThreshold);
        text.Int(static_cast<int>(outcome.fdr->eFdrMethod));
        text.Int(static_cast<int>(outcome.fdr->eTdFdrType));
    }
    if (outcome.localize) {
        text << "localize" << outcome.localize->strFilterMethod;
        text.Int(outcome.localize->bLocalize).Int(outcome.localize->nMinModNumber);
        text.Int(outcome.localize->bUsePrior).Bits(outcome.localize->dFilterThreshold);
        text.Mods(outcome.localize->vTargetMods);
    }
    if (outcome.annotate) {
        text << "annotate" << outcome.annotate->strProteinDatabase;
        text.Int(outcome.annotate->bAnnotate);
    }
    return (text << outcome.output << outcome.error).Get();
}

// ---- The library ----------------------------------------------------------

Outcome Read(const std::string& path)
{
    Outcome outcome;
    try {
        CTulkParam::readFromFile(path);
    } catch (const OpenMS::Exception::InvalidParameter& error) {
        outcome.error = std::string(error.getFile()) + ": " + error.what();
    }
    const CTulkParam& param = *CTulkParam::getInstance();
    const auto copy = [](const auto* group, auto& to) {
        if (group != nullptr) {
            to = *group;
        }
    };
    copy(param.getSearchParam(), outcome.search);
    copy(param.getFdrControlParam(), outcome.fdr);
    copy(param.getLocalizeParam(), outcome.localize);
    copy(param.getAnnotateParam(), outcome.annotate);
    outcome.output = param.getOutputPath();
    return outcome;
}

// ---- What always holds ----------------------------------------------------

void CheckRules(const Outcome& outcome)
{
    const char* const rule = "what holds for parameters that were accepted";
    const CSearchParam& search = *outcome.search;
    fuzz::Check(search.dPrecursorTol > 0 && search.dFragmentTol > 0, rule);
    fuzz::Check(search.bOpenSearch == (search.dPrecursorMatchingTol > 0), rule);
    fuzz::Check(static_cast<std::size_t>(search.nDatasetNumber) == search.vDatasets.size(), rule);
    fuzz::Check(static_cast<std::size_t>(search.nPepIdentNumber) == search.vPepIdentSources.size(),
                rule);
    fuzz::Check(!search.vDatasets.empty() && !search.vPepIdentSources.empty(), rule);
    fuzz::Check(outcome.fdr->dFdrThreshold >= 0 && outcome.fdr->dFdrThreshold <= 1, rule);
    fuzz::Check(!outcome.localize->bLocalize || outcome.localize->nMinModNumber >= 5, rule);
    fuzz::Check(!outcome.annotate->bAnnotate || outcome.localize->bLocalize, rule);
    fuzz::Check(!outcome.output.empty(), rule);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    static const bool hasDatabases = ReadDatabases();
    static_cast<void>(hasDatabases);
    fuzz::SilenceConsole();
    file.Write(fuzz::Expanded(fuzz::TextOf(data, size)));
    const Outcome outcome = Read(file.Path());
    const std::string text = TextOf(outcome);

    InitFile loaded;
    try {
        loaded.Load(file.Path());
    } catch (const OpenMS::Exception::InvalidParameter& error) {
        Outcome nothing;
        nothing.error = std::string("InitFile: ") + error.what();
        fuzz::CheckSame(text, TextOf(nothing), "a file that cannot be loaded leaves nothing");
        return 0;
    }
    fuzz::CheckSame(text, TextOf(fuzz::PlainRead(loaded)),
                    "a file reads as through the plain reader");
    if (outcome.error.empty()) {
        CheckRules(outcome);
    }
    loaded.Save(file.Path());
    fuzz::CheckSame(TextOf(Read(file.Path())), text, "a saved file reads as the one before");
    return 0;
}
