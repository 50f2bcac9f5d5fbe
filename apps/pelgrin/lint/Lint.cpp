#include "lint/Lint.h"

#include <filesystem>

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/FileLines.h"
#include "files/MaxQuantAudit.h"
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

/// A file as it is looked at.
struct Looked {
    FileKind kind = FileKind::Unknown;
    ResultFormat format;
    SecondFile second;
};

void LintAs(const std::string& path, const Looked& looked, Findings& findings)
{
    const auto& [kind, format, second] = looked;
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
    case FileKind::MaxQuantMatches: LintMaxQuant(path, second, findings); break;
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

/// The other file of a pair. A packed one is taken beside a packed one only: the
/// library would not find it.
SecondFile SecondOf(const std::string& path, FileKind kind, ScratchFolder& scratch)
{
    SecondFile second;
    if (kind == FileKind::MaxQuantMatches) {
        second.given = PeptidesBeside(path, PackingOf(path) != Packing::None);
        second.plain = second.given.empty() ? "" : Unpacked(second.given, scratch);
    }
    return second;
}

} // namespace

void Lint(const std::string& path, FileKind kind, Findings& findings)
{
    ScratchFolder scratch;
    LintAs(path, {kind, std::nullopt, SecondOf(path, kind, scratch)}, findings);
}

void LintFile(const std::string& path, const ResultFormat& format, Findings& findings)
{
    ScratchFolder scratch;
    std::string plain = path;
    std::error_code ignored;
    if (!std::filesystem::is_directory(path, ignored)) {
        CheckReadable(path);
        plain = Unpacked(path, scratch);
    }
    const FileKind kind = format ? KindOfFormat(*format) : KindOf(plain);
    findings.Begin(path, kind);
    const SecondFile second = SecondOf(path, kind, scratch);
    try {
        LintAs(plain, {kind, format, second}, findings);
    } catch (const Failure& failure) {
        const std::string text = WithGivenPath(failure.what(), plain, path);
        throw Failure(second.plain.empty() ? text
                                           : WithGivenPath(text, second.plain, second.given));
    }
}

} // namespace pelgrin
