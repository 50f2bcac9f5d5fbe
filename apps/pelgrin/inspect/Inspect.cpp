#include "inspect/Inspect.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/FileLines.h"
#include "files/Packed.h"
#include "files/ScratchFolder.h"
#include "files/SpectraSource.h"
#include "inspect/EntryFacts.h"
#include "inspect/FastaFacts.h"
#include "inspect/MgfFacts.h"
#include "inspect/PepXmlFacts.h"
#include "inspect/Reading.h"
#include "inspect/SpectraFacts.h"
#include "inspect/TableFacts.h"
#include "inspect/TextFacts.h"

namespace pelgrin {

namespace {

namespace fs = std::filesystem;

void TellEngine(const std::string& engine, const std::string& version, Facts& facts)
{
    if (!engine.empty()) {
        facts.push_back({"engine", "Engine", engine});
    }
    if (!version.empty()) {
        facts.push_back({"version", "Version", version});
    }
}

void TellPepXml(const std::string& path, Facts& facts)
{
    const PepXmlFacts pepXml = PepXmlFactsOf(path);
    const auto run = std::find_if(pepXml.runs.begin(), pepXml.runs.end(),
                                  [](const PepXmlRun& one) { return !one.engine.empty(); });
    if (run != pepXml.runs.end()) { // an empty one may stand in front
        TellEngine(run->engine, run->version, facts);
    }
    Tell(pepXml, facts);
}

void TellContent(FileKind kind, const std::string& path, Facts& facts)
{
    switch (kind) {
    case FileKind::Mgf: Tell(MgfFactsOf(path), facts); break;
    case FileKind::DtaFolder: Tell(DtaFactsOf(path), facts); break;
    case FileKind::MzMl:
    case FileKind::MzXml: Tell(XmlSpectraFactsOf(kind, path), facts); break;
    case FileKind::PepXml: TellPepXml(path, facts); break;
    case FileKind::PFind28:
        TellEngine(EngineOfTable(kind), "", facts);
        Tell(PFind28FactsOf(path), facts);
        break;
    case FileKind::NativeTable:
    case FileKind::Msgf:
    case FileKind::MaxQuantMatches:
    case FileKind::MaxQuantPeptides:
    case FileKind::PFind3:
    case FileKind::Sequest:
    case FileKind::OtherTable:
        TellEngine(EngineOfTable(kind), "", facts);
        Tell(TableFactsOf(kind, path), facts);
        break;
    case FileKind::Fasta: Tell(FastaFactsOf(path), facts); break;
    case FileKind::Unimod:
    case FileKind::ModificationTable:
    case FileKind::PFind3Modifications:
    case FileKind::MsgfModifications:
    case FileKind::ParameterFile:
    case FileKind::EngineParameters: Tell(EntryFactsOf(kind, path), facts); break;
    case FileKind::Unknown:
    case FileKind::Dta:
    case FileKind::OtherXml: break;
    }
}

void TellKind(FileKind kind, Facts& facts)
{
    facts.push_back({"kind", "", std::string(KeyOf(kind))});
    facts.push_back({"", "Kind", std::string(TextOf(kind))});
}

Facts InspectFolder(const std::string& path)
{
    CheckDtaFolder(path);
    Facts facts;
    TellKind(FileKind::DtaFolder, facts);
    TellContent(FileKind::DtaFolder, path, facts);
    Tell(ReadingOf(FileKind::DtaFolder, path, path), facts);
    return facts;
}

/// path is the unpacked file.
void TellFile(const std::string& path, const std::string& given, Facts& facts)
{
    const TextFacts text = TextFactsOf(path);
    const FileKind kind = KindOf(path);
    facts.insert(facts.begin(),
                 {{"kind", "", std::string(KeyOf(kind))}, {"", "Kind", std::string(TextOf(kind))}});
    Tell(text, facts);
    if (text.encoding == Encoding::Utf16Low || text.encoding == Encoding::Utf16High) {
        facts.push_back(
            {"refusal", "Not read",
             fmt::format("{}: expected bytes, found UTF-16: convert it to UTF-8", given)});
        return;
    }
    TellContent(kind, path, facts);
    Reading reading = ReadingOf(kind, path, given);
    reading.refusal = WithGivenPath(std::move(reading.refusal), path, given);
    Tell(reading, facts);
}

void TellPacking(Packing packing, const std::string& path, Facts& facts)
{
    std::error_code ignored;
    const std::uint64_t bytes = fs::file_size(path, ignored);
    facts.push_back({"packing", "", std::string(TextOf(packing))});
    facts.push_back({"packed_bytes", "", bytes});
    facts.push_back({"", "Packed", fmt::format("{}, {} bytes", TextOf(packing), bytes)});
}

} // namespace

Facts Inspect(const std::string& path)
{
    if (IsFolder(path)) {
        return InspectFolder(path);
    }
    CheckReadable(path);
    Facts facts;
    const Packing packing = PackingOf(path);
    if (packing == Packing::None) {
        TellFile(path, path, facts);
        return facts;
    }
    TellPacking(packing, path, facts);
    ScratchFolder scratch;
    TellFile(Unpacked(path, scratch), path, facts);
    return facts;
}

} // namespace pelgrin
