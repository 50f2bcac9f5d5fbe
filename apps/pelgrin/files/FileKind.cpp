#include "files/FileKind.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <vector>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/DtaAudit.h"
#include "files/FileLines.h"
#include "files/SpectraSource.h"
#include "files/XmlTags.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

struct KindTexts {
    const char* key;
    const char* text;
};

constexpr KindTexts kTexts[kFileKinds] = {
    {"unknown", "unknown"},
    {"mgf", "spectra (MGF)"},
    {"dta", "one spectrum (DTA)"},
    {"dta_folder", "folder of spectra (DTA)"},
    {"mzml", "spectra (mzML)"},
    {"mzxml", "spectra (mzXML)"},
    {"pepxml", "matches (pepXML)"},
    {"native_table", "matches (native table)"},
    {"msgf", "matches of MS-GF+ (.tsv)"},
    {"maxquant_matches", "matches of MaxQuant (msms.txt)"},
    {"maxquant_peptides", "peptides of MaxQuant (peptides.txt)"},
    {"pfind3", "matches of pFind 3 (.spectra)"},
    {"pfind28", "matches of pFind 2.8 (.txt)"},
    {"sequest", "matches of Proteome Discoverer (PSMs.txt)"},
    {"fasta", "proteins (FASTA)"},
    {"unimod", "modifications (Unimod XML)"},
    {"modification_table", "modifications (table)"},
    {"pfind3_modifications", "modifications (list of pFind 3)"},
    {"parameter_file", "parameters of a run"},
    {"msgf_modifications", "modifications (list of MS-GF+)"},
    {"engine_parameters", "parameters of a search engine"},
    {"other_xml", "XML of another kind"},
    {"other_table", "tab-separated table of another kind"},
};

constexpr std::size_t kHead = std::size_t{256} * 1024;
constexpr std::string_view kSpace = " \t\r\n\v\f";

/// The characteristic columns of a table, in lower case: of so many at least one
/// knows it. Columns that other tables of the engine have, too, would not do.
struct TableSign {
    FileKind kind;
    std::size_t least;
    std::vector<std::string> columns;
};

const std::vector<TableSign>& TableSigns()
{
    static const std::vector<TableSign> signs = {
        {FileKind::NativeTable,
         3,
         {"obsmh", "main score", "high score better", "identified mod name",
          "identified mod position", "protein access", "mass shift"}},
        {FileKind::Msgf,
         3,
         {"#specfile", "specid", "scannum", "specevalue", "msgfscore", "denovoscore",
          "precursorerror(ppm)", "precursorerror(da)"}},
        // evidence.txt and msmsScans.txt have some of these, but not so many
        {FileKind::MaxQuantMatches,
         4,
         {"raw file", "scan number", "modified sequence", "mass error [ppm]", "isotope index",
          "masses", "number of matches"}},
        {FileKind::MaxQuantPeptides,
         3,
         {"amino acid before", "amino acid after", "ms/ms ids", "first amino acid",
          "unique (groups)", "evidence ids", "start position"}},
        {FileKind::PFind3,
         3,
         {"file_name", "scan_no", "exp.mh+", "mass_shift(exp.-calc.)", "final_score",
          "target/decoy", "miss.clv.sites", "positions"}},
        {FileKind::Sequest,
         3,
         {"spectrum file", "first scan", "search engine rank", "identifying node", "deltam/z [da]",
          "xcorr", "theo. mh+ [da]", "mh+ [da]"}},
        {FileKind::ModificationTable,
         4,
         {"full_id", "unimod_accession", "full_name", "term_spec", "diff_mono_mass",
          "diff_average_mass", "neutral_loss_mono_mass"}},
    };
    return signs;
}

/// The ASCII characters of UTF-16; "?" for all others.
std::string NarrowOf(std::string_view bytes, std::size_t low)
{
    std::string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const char other = bytes[i + 1 - low];
        text += other == '\0' ? bytes[i + low] : '?';
    }
    return text;
}

/// The beginning of a file as text without a byte order mark.
std::string HeadOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string head(kHead, '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    if (file.bad()) {
        throw Failure(fmt::format("{}: cannot be read", path));
    }
    if (BeginsWith(head, "\xFF\xFE")) {
        return NarrowOf(head, 0);
    }
    if (BeginsWith(head, "\xFE\xFF")) {
        return NarrowOf(head, 1);
    }
    return BeginsWith(head, "\xEF\xBB\xBF") ? head.substr(3) : head;
}

/// Lines however they end, without blanks at their ends; empty ones are left out.
std::vector<std::string_view> LinesOf(std::string_view head)
{
    std::vector<std::string_view> lines;
    for (std::size_t begin = 0; begin < head.size();) {
        const std::size_t end = std::min(head.find_first_of("\r\n", begin), head.size());
        const std::string_view line = WithoutBlanks(head.substr(begin, end - begin), kSpace);
        if (!line.empty()) {
            lines.push_back(line);
        }
        begin = end + 1;
    }
    return lines;
}

/// The name of the first element without its prefix: "mzML".
std::string_view RootOf(std::string_view head)
{
    for (std::size_t tag = head.find('<'); tag != std::string_view::npos;
         tag = head.find('<', tag + 1)) {
        const std::string_view rest = head.substr(tag + 1);
        if (BeginsWith(rest, "!--")) {
            tag = std::min(head.find("-->", tag), head.size() - 1);
        } else if (!rest.empty() && rest.front() != '?' && rest.front() != '!') {
            const std::string_view name = rest.substr(0, rest.find_first_of(" \t\r\n/>"));
            return name.substr(name.find(':') + 1); // without ":" from its beginning
        }
    }
    return {};
}

FileKind KindOfXml(std::string_view head)
{
    const std::string_view root = RootOf(head);
    if (root == "mzML" || root == "indexedmzML") {
        return FileKind::MzMl;
    }
    if (root == "mzXML" || root == "msRun") {
        return FileKind::MzXml;
    }
    if (root == "msms_pipeline_analysis" || root == "msms_run_summary") {
        return FileKind::PepXml;
    }
    return root == "unimod" ? FileKind::Unimod : FileKind::OtherXml;
}

/// The cells of a line at a separator, without blanks and quotes at their ends.
std::vector<std::string> CellsOf(std::string_view line, char separator)
{
    std::vector<std::string> cells;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find(separator, begin), line.size());
        std::string_view cell = WithoutBlanks(line.substr(begin, end - begin), kSpace);
        if (cell.size() > 1 && cell.front() == '"' && cell.back() == '"') {
            cell = WithoutBlanks(cell.substr(1, cell.size() - 2), kSpace);
        }
        cells.push_back(Lower(cell));
        begin = end + 1;
    }
    return cells;
}

bool IsText(std::string_view line)
{
    return std::none_of(line.begin(), line.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t'; });
}

FileKind KindOfTable(std::string_view header)
{
    if (header.find('\t') == std::string_view::npos || !IsText(header)) {
        return FileKind::Unknown;
    }
    const std::vector<std::string> cells = CellsOf(header, '\t');
    FileKind best = FileKind::OtherTable;
    std::size_t most = 0;
    for (const TableSign& sign : TableSigns()) {
        const auto found = static_cast<std::size_t>(
            std::count_if(sign.columns.begin(), sign.columns.end(), [&](const std::string& column) {
                return std::find(cells.begin(), cells.end(), column) != cells.end();
            }));
        if (found >= sign.least && found > most) {
            most = found;
            best = sign.kind;
        }
    }
    return best;
}

/// As many numbers as a line must have at least, and nothing else.
bool IsNumbers(std::string_view line, std::size_t least, std::size_t most)
{
    std::size_t count = 0;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
        if (++count > most || !ParseNumber(line.substr(0, end))) {
            return false;
        }
        line = WithoutBlanks(line.substr(end), kSpace);
    }
    return count >= least;
}

/// Mass and charge, then m/z and intensity. Peaks alone are none: their second
/// line would do, too, but hardly any first intensity is a small whole number.
bool IsDta(const std::vector<std::string_view>& lines)
{
    if (!IsNumbers(lines.front(), 2, 2)) {
        return false;
    }
    const std::string_view first = lines.front();
    const double charge = ParseNumber(first.substr(first.find_last_of(" \t") + 1)).value_or(0.0);
    if (!(charge >= 1.0 && charge <= 100.0) || charge != static_cast<int>(charge)) {
        return false;
    }
    const std::size_t end = std::min<std::size_t>(lines.size(), 10);
    return std::all_of(lines.begin() + 1, lines.begin() + static_cast<std::ptrdiff_t>(end),
                       [](std::string_view line) { return IsNumbers(line, 2, 4); });
}

/// "O1,M,opt,any,Oxidation", a comment behind it or not.
bool IsMsgfModification(std::string_view line)
{
    const std::vector<std::string> cells = CellsOf(line.substr(0, line.find('#')), ',');
    return cells.size() == 5 && (cells[2] == "fix" || cells[2] == "opt" || cells[2] == "custom");
}

/// The text before "=", in lower case; empty when there is none.
std::string KeyOfLine(std::string_view line)
{
    const std::size_t sign = line.find('=');
    return sign == std::string_view::npos ? std::string()
                                          : Lower(WithoutBlanks(line.substr(0, sign), kSpace));
}

bool IsRunKey(const std::string& key)
{
    return BeginsWith(key, "dataset_filename_") || BeginsWith(key, "pep_ident_filename_")
           || key == "dataset_number" || key == "pep_ident_number" || key == "fixed_mod_number"
           || key == "search_result_format" || key == "var_mod_number"
           || key == "fragment_tol_type";
}

bool IsEngineKey(const std::string& key)
{
    return BeginsWith(key, "variable_mod") || BeginsWith(key, "add_") || key == "database_name"
           || key == "num_threads" || key == "decoy_search" || key == "fragment_mass_tolerance"
           || key == "precursor_mass_upper" || key == "peptide_mass_tolerance"
           || key == "search_enzyme_number";
}

FileKind KindOfKeys(const std::vector<std::string_view>& lines)
{
    std::size_t run = 0;
    std::size_t engine = 0;
    for (const std::string_view line : lines) {
        const std::string key = KeyOfLine(line);
        run += IsRunKey(key) ? 1 : 0;
        engine += IsEngineKey(key) ? 1 : 0;
        if (IsMsgfModification(line) || key == "nummods") {
            return FileKind::MsgfModifications;
        }
    }
    if (run >= 2 || engine >= 2) {
        return run >= engine ? FileKind::ParameterFile : FileKind::EngineParameters;
    }
    return FileKind::Unknown;
}

/// By lines that stand in no other kind of file.
FileKind KindOfMarks(const std::vector<std::string_view>& lines)
{
    for (const std::string_view line : lines) {
        if (BeginsWith(line, "BEGIN IONS") || BeginsWith(line, "END IONS")) {
            return FileKind::Mgf;
        }
        if (BeginsWith(line, "[Spectrum") && line.back() == ']') {
            return FileKind::PFind28;
        }
    }
    return FileKind::Unknown;
}

bool IsPFind3List(const std::vector<std::string_view>& lines)
{
    return BeginsWith(lines.front(), "@NUMBER_MODIFICATION")
           || (lines.size() > 1 && BeginsWith(lines.front(), "name")
               && KeyOfLine(lines.front()).find_first_not_of("0123456789", 4) == std::string::npos
               && lines[1].find("]=") != std::string_view::npos);
}

FileKind KindOfText(std::string_view head)
{
    const std::vector<std::string_view> lines = LinesOf(head);
    if (lines.empty()) {
        return FileKind::Unknown;
    }
    if (lines.front().front() == '<') {
        return KindOfXml(head);
    }
    if (lines.front().front() == '>') {
        return IsText(lines.front()) ? FileKind::Fasta : FileKind::Unknown;
    }
    const FileKind table = KindOfTable(lines.front());
    if (table != FileKind::Unknown && table != FileKind::OtherTable) {
        return table;
    }
    if (IsPFind3List(lines)) {
        return FileKind::PFind3Modifications;
    }
    if (const FileKind kind = KindOfMarks(lines); kind != FileKind::Unknown) {
        return kind;
    }
    if (IsDta(lines)) {
        return FileKind::Dta;
    }
    const FileKind kind = KindOfKeys(lines);
    return kind == FileKind::Unknown ? table : kind;
}

/// What the first search_summary says, in front of the queries.
PepXmlEngine EngineIn(const std::string& path)
{
    XmlTags tags(path);
    while (tags.Next() && tags.Name() != "spectrum_query") {
        if (tags.Name() == "search_summary") {
            return EngineOf(tags.Attribute("search_engine"),
                            tags.Attribute("search_engine_version"));
        }
    }
    return {};
}

std::optional<PepIdentType::EPepIdentType> FormatOfPepXml(const std::string& path)
{
    const std::string engine = EngineIn(path).name;
    if (engine == "MSFragger") {
        return PepIdentType::MsFraggerPepXml;
    }
    if (engine == "Comet" || engine.empty()) {
        return PepIdentType::CometPepXml;
    }
    return std::nullopt;
}

} // namespace

const char* KeyOf(FileKind kind)
{
    return kTexts[static_cast<std::size_t>(kind)].key;
}

const char* TextOf(FileKind kind)
{
    return kTexts[static_cast<std::size_t>(kind)].text;
}

FileKind KindOf(const std::string& path)
{
    if (IsFolder(path)) {
        return DtaFileNames(path).empty() ? FileKind::Unknown : FileKind::DtaFolder;
    }
    CheckReadable(path);
    return KindOfText(HeadOf(path));
}

PepXmlEngine EngineOf(std::string_view engine, std::string_view version)
{
    constexpr std::string_view kFragger = "MSFragger";
    if (!BeginsWith(version, kFragger)) {
        const bool isFragger = Lower(engine) == "msfragger";
        const bool isComet = Lower(engine) == "comet";
        return {isFragger ? "MSFragger"
                : isComet ? "Comet"
                          : std::string(engine),
                std::string(version)};
    }
    version.remove_prefix(kFragger.size());
    version.remove_prefix(std::min(version.find_first_not_of("-. "), version.size()));
    return {std::string(kFragger), std::string(version)};
}

std::optional<PepIdentType::EPepIdentType> FormatOf(FileKind kind, const std::string& path)
{
    switch (kind) {
    case FileKind::PepXml: return FormatOfPepXml(path);
    case FileKind::NativeTable: return PepIdentType::CalvexTxt;
    case FileKind::Msgf: return PepIdentType::MsgfTsv;
    case FileKind::MaxQuantMatches: return PepIdentType::MaxQuant;
    case FileKind::PFind3: return PepIdentType::Pfind3Spectra;
    case FileKind::PFind28: return PepIdentType::Pfind28Txt;
    case FileKind::Sequest: return PepIdentType::SequestTxt;
    default: return std::nullopt;
    }
}

} // namespace pelgrin
