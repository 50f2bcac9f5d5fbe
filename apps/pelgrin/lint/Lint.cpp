#include "lint/Lint.h"

#include <filesystem>

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/FileLines.h"
#include "files/Packed.h"
#include "files/ScratchFolder.h"
#include "lint/DtaLint.h"
#include "lint/FastaLint.h"
#include "lint/MgfLint.h"
#include "lint/ModificationTableLint.h"
#include "lint/ResultLint.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

PepIdentType::EPepIdentType PepXmlFormat(const std::string& path, const ResultFormat& format)
{
    return format ? *format : FormatOf(FileKind::PepXml, path).value_or(PepIdentType::CometPepXml);
}

void LintAs(const std::string& path, FileKind kind, const ResultFormat& format, Findings& findings)
{
    switch (kind) {
    case FileKind::Mgf: LintMgf(path, findings); break;
    case FileKind::Dta: LintDta(path, findings); break;
    case FileKind::DtaFolder: LintDtaFolder(path, findings); break;
    case FileKind::MzMl:
    case FileKind::MzXml:
        findings.Add(Rule::NotParsed, 0, "no spectrum is read; expected MGF or DTA files");
        break;
    case FileKind::PepXml: LintPepXml(path, PepXmlFormat(path, format), findings); break;
    case FileKind::NativeTable: LintNative(path, findings); break;
    case FileKind::Msgf: LintMsgf(path, findings); break;
    case FileKind::MaxQuantMatches: LintMaxQuant(path, findings); break;
    case FileKind::MaxQuantPeptides: LintMaxQuantPeptides(path, findings); break;
    case FileKind::PFind3: LintPFind3(path, findings); break;
    case FileKind::PFind28: LintPFind28(path, findings); break;
    case FileKind::Sequest: LintSequest(path, findings); break;
    case FileKind::Fasta: LintFasta(path, findings); break;
    case FileKind::ModificationTable: LintModificationTable(path, findings); break;
    default:
        throw Failure(fmt::format("{}: there are no rules for this kind of file: {}; expected "
                                  "spectra, a result, proteins or a table of modifications",
                                  path, TextOf(kind)));
    }
}

/// The kind that a result has which the user calls so.
FileKind KindOfFormat(PepIdentType::EPepIdentType format)
{
    switch (format) {
    case PepIdentType::MsFraggerPepXml:
    case PepIdentType::CometPepXml: return FileKind::PepXml;
    case PepIdentType::MsgfTsv: return FileKind::Msgf;
    case PepIdentType::MaxQuant: return FileKind::MaxQuantMatches;
    case PepIdentType::Pfind3Spectra: return FileKind::PFind3;
    case PepIdentType::Pfind28Txt: return FileKind::PFind28;
    case PepIdentType::SequestTxt: return FileKind::Sequest;
    default: return FileKind::NativeTable;
    }
}

} // namespace

void Lint(const std::string& path, FileKind kind, Findings& findings)
{
    LintAs(path, kind, std::nullopt, findings);
}

void LintFile(const std::string& path, const ResultFormat& format, Findings& findings)
{
    ScratchFolder scratch;
    std::string plain = path;
    std::error_code ignored;
    if (!std::filesystem::is_directory(path, ignored)) {
        CheckReadable(path);
        if (PackingOf(path) != Packing::None) {
            plain = scratch.PathOf(std::filesystem::path(NameWithoutPacking(path)).filename());
            Unpack(path, plain);
        }
    }
    const FileKind kind = format ? KindOfFormat(*format) : KindOf(plain);
    findings.Begin(path, kind);
    LintAs(plain, kind, format, findings);
}

} // namespace pelgrin
