// What the library reads from a file, as text.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include "FastaProteinDB.h"
#include "LintRows.h"
#include "ModificationDB.h"
#include "PeptideIdentificationIO.h"
#include "SpectraIO.h"
#include "support/Support.h"

namespace pelgrin::test {

using Vorlan::PepIdentType;

namespace {

/// "a 500/2/10/7: 100/1 200/2": m/z, charge, time and scan; the peaks.
std::string TextOf(const Vorlan::Spectrum& spectrum)
{
    std::string text = fmt::format("{} {:g}/{}/{:g}/{}:", spectrum.strTitle, spectrum.dPrecursorMz,
                                   spectrum.nCharge, spectrum.dRetentionTime, spectrum.nScan);
    for (const Vorlan::Peak& peak : spectrum.vPeaks) {
        text += fmt::format(" {:g}/{:g}", peak.dMz, peak.dIntensity);
    }
    return text;
}

void ReadSpectra(Vorlan::SpectraIO& reader, const std::string& path, std::ostream& out)
{
    reader.InitLoad(path);
    std::vector<Vorlan::Spectrum> spectra;
    while (reader.bLoadNextSpectrum(spectra)) {
        out << TextOf(spectra.back()) << "; ";
    }
    reader.EndLoad();
}

void ReadProteins(const std::string& path, std::ostream& out)
{
    Vorlan::CFastaProteinDB database;
    database.SetDBPath(path);
    if (!database.ReadFromFile()) {
        out << "fails; ";
        return;
    }
    for (const Vorlan::CProtein& protein : database.cProteins()) {
        out << fmt::format("{} [{}] {}; ", protein.strAccession, protein.strDescription,
                           protein.strSequence);
    }
}

void ReadModifications(const std::string& path, std::ostream& out)
{
    const Vorlan::CModificationsDBEngineCalvex database(path);
    const Vorlan::CResidueModification& phospho = database.getModification(
        "Phospho (S)", "S", Vorlan::CResidueModification::NUMBER_OF_TERM_SPECIFICITY);
    out << fmt::format("{} of {:g}; ", static_cast<std::string>(phospho.getFullId()),
                       phospho.getDiffMonoMass());
}

/// "run.mgf 1 GASK/2 0.5 0.1 Oxidation@1 | K.P1.A": score, shift, modifications.
std::string TextOf(const Vorlan::PeptideIdentification& match)
{
    std::string text =
        fmt::format("{} {} {}/{} {:g} {:g}", match.strDatasetName, match.strSpectrumName,
                    match.strSequence, match.nCharge, match.dMainScore, match.dMassShift);
    for (const Vorlan::IdentModification& mod : match.vMods) {
        text += fmt::format(" {}@{}", mod.strName, mod.nPos);
    }
    text += match.vAltMods.empty() ? "" : " terminal";
    text += match.bHighScoreBetter ? " high" : "";
    for (const Vorlan::PeptideEvidence& evidence : match.vEvidences) {
        text += fmt::format(" | {}.{}.{}", evidence.cBefore,
                            evidence.strProteinAccession.substr(0, 30), evidence.cAfter);
    }
    return text;
}

PepIdentType::EPepIdentType FormatOfKind(FileKind kind, const std::string& path)
{
    return FormatOf(kind, path).value_or(PepIdentType::CalvexTxt);
}

void ReadMatches(FileKind kind, const std::string& path, std::ostream& out)
{
    const PepIdentType::EPepIdentType format = FormatOfKind(kind, path);
    Vorlan::PeptideIdentificationIO* const reader =
        Vorlan::PepIdentIOFactory::pGetPepIdentIO(format);
    std::vector<Vorlan::PeptideIdentification> matches;
    std::string end;
    try {
        const std::filesystem::path whole(path);
        reader->InitLoad({whole.parent_path().string(), whole.filename().string(), format});
        reader->Load(matches);
    } catch (const OpenMS::Exception::BaseException& error) {
        end = fmt::format("throws {}; ", error.getName());
    }
    for (const Vorlan::PeptideIdentification& match : matches) {
        out << TextOf(match) << "; ";
    }
    out << end;
}

void Read(FileKind kind, const std::string& path, std::ostream& out)
{
    Vorlan::MgfIO mgf;
    Vorlan::DtaIO dta;
    Vorlan::MzMLIO mzMl;
    switch (kind) {
    case FileKind::Mgf: ReadSpectra(mgf, path, out); break;
    case FileKind::DtaFolder: ReadSpectra(dta, path, out); break;
    case FileKind::MzMl: ReadSpectra(mzMl, path, out); break;
    case FileKind::Fasta: ReadProteins(path, out); break;
    case FileKind::ModificationTable: ReadModifications(path, out); break;
    default: ReadMatches(kind, path, out); break;
    }
}

void ReadInChild(FileKind kind, const std::string& path, const std::string& target)
{
    std::ofstream out(target, std::ios::binary);
    if (std::freopen("/dev/null", "w", stdout) == nullptr
        || std::freopen("/dev/null", "w", stderr) == nullptr) {
        std::_Exit(2);
    }
    try {
        Read(kind, path, out);
    } catch (const std::exception& error) {
        out << "throws " << error.what() << "; ";
    }
    out.close();
    std::_Exit(0);
}

} // namespace

std::string ReadByLibrary(FileKind kind, const std::string& path)
{
    const Vorlan::test::TempFolder folder;
    const std::string target = folder.PathOf("reading");
    std::cout.flush();
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        ReadInChild(kind, path, target);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::string text = Vorlan::test::ReadFile(target);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        text += "ends the process; ";
    }
    return text.empty() ? "nothing" : text.substr(0, text.size() - 2);
}

std::string WriteRow(const LintRow& row, const std::string& folder)
{
    const auto write = [&](const std::string& name, const std::string& text) {
        const std::string path = folder + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    };
    if (row.kind == FileKind::DtaFolder) {
        write("a.dta", row.text);
        return folder;
    }
    if (row.kind != FileKind::MaxQuantMatches) {
        return write("file", row.text);
    }
    const std::string between = "----\n";
    const std::size_t end = row.text.find(between);
    if (end != std::string::npos) {
        write("peptides.txt", row.text.substr(end + between.size()));
    }
    return write("msms.txt", row.text.substr(0, end));
}

} // namespace pelgrin::test
