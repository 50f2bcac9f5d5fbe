// Broken results among good ones: a run reads what can be read, and names the rest
// with file, line and reason.
#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

#include "ParameterFiles.h"
#include "ResultTexts.h"
#include "support/Random.h"

namespace pelgrin::test {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
using Vorlan::test::Random;
using Vorlan::test::ReadFile;
using Vorlan::test::Repeat;
using Vorlan::test::TempFolder;

using Strings = std::vector<std::string>;
using Numbers = std::set<std::size_t>;

constexpr std::size_t kRecords = 5; ///< of every file, before it is broken

/// What is done to a file, and what is left of it.
struct Break {
    const char* what;
    /// Changes the parts of a file: its head, five records, what closes it.
    void (*change)(Strings& parts);
    Numbers kept = {};
    Numbers rejected = {};  ///< records that stand in rejects.tsv
    Numbers maybe = {};     ///< records that may be kept, rejected or lost
    bool isRefused = false; ///< the file stands in rejects.tsv
};

Strings Cells(const std::string& line)
{
    Strings cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, '\t');) {
        cells.push_back(cell);
    }
    return cells;
}

void Replace(std::string& text, const std::string& from, const std::string& to)
{
    text.replace(text.find(from), from.size(), to);
}

void MakeEmpty(Strings& parts)
{
    parts.assign(kRecords + 2, "");
}

void MakeJunk(Strings& parts)
{
    Random random(9);
    MakeEmpty(parts);
    for (int i = 0; i < 3000; ++i) {
        parts[0] += static_cast<char>(random.Bits());
    }
}

/// Other bytes in place of some, none of which ends a line.
void FlipBytes(std::string& text)
{
    Random random(10);
    for (int i = 0; i < 6; ++i) {
        text[random.Below(text.size() - 1)] = static_cast<char>(0x80 + random.Below(128));
    }
}

const std::vector<Break>& BreaksOfTables()
{
    static const std::vector<Break> breaks = {
        {"nothing is in the file", MakeEmpty, {}, {}, {}, true},
        {"random bytes", MakeJunk, {}, {}, {}, true},
        {"the header is missing", [](Strings& parts) { parts[0].clear(); }, {}, {}, {}, true},
        {"a column is missing",
         [](Strings& parts) { Replace(parts[0], "ObsMH", "Mass"); },
         {},
         {},
         {},
         true},
        {"a bad number",
         [](Strings& parts) { Replace(parts[3], Row().observedMh, "5OO.5"); },
         {0, 1, 3, 4},
         {2}},
        {"bad numbers in the first and the last row",
         [](Strings& parts) {
             Replace(parts[1], Row().observedMh, "");
             Replace(parts[5], "GASK\t2", "GASK\ttwo");
         },
         {1, 2, 3},
         {0, 4}},
        {"a row that is too long",
         [](Strings& parts) { parts[3].insert(parts[3].size() - 1, Repeat("x", 81919)); },
         {0, 1, 2}},
        {"a row that is too short",
         [](Strings& parts) { parts[2] = "run.mgf\trun.00001.00001.2\n"; },
         {0, 2, 3, 4},
         {1}},
        {"an empty line", [](Strings& parts) { parts[3].insert(0, "\n"); }, {0, 1}},
        {"other bytes", [](Strings& parts) { FlipBytes(parts[4]); }, {0, 1, 2, 4}, {}, {3}}};
    return breaks;
}

const std::vector<Break>& BreaksOfPepXml()
{
    static const std::vector<Break> breaks = {
        {"nothing is in the file", MakeEmpty, {}, {}, {}, true},
        {"random bytes", MakeJunk, {}, {}, {}, true},
        {"the file ends in the middle of a hit",
         [](Strings& parts) {
             parts[4].resize(parts[4].find("</search_hit>"));
             parts[5].clear();
             parts[6].clear();
         },
         {0, 1, 2},
         {3}},
        {"an end tag has another name, which the library does not mind",
         [](Strings& parts) { Replace(parts[3], "</search_hit>", "</search_hits>"); },
         {0, 1, 2, 3, 4}},
        {"a hit has no end",
         [](Strings& parts) { Replace(parts[3], "</search_hit>", ""); },
         {0, 1, 3, 4},
         {2}},
        {"a mass that no modification explains",
         [](Strings& parts) {
             Replace(parts[2], "</search_hit>", Modified("3", "123.4") + "</search_hit>");
         },
         {0, 2, 3, 4},
         {1}},
        {"a stray bracket",
         [](Strings& parts) { Replace(parts[3], "</search_result>", "<</search_result>"); },
         {0, 1, 3, 4},
         {},
         {2}},
        {"a query has no end",
         [](Strings& parts) { Replace(parts[3], "</spectrum_query>\n", ""); },
         {0, 1, 3, 4},
         {2}},
        {"other bytes", [](Strings& parts) { FlipBytes(parts[4]); }, {0, 1, 2, 4}, {}, {3}},
        {"the file ends behind the last query",
         [](Strings& parts) { parts[6].clear(); },
         {0, 1, 2, 3, 4}},
        {"a comment has no end",
         [](Strings& parts) { parts[3].insert(0, "<!-- "); },
         {0, 1, 3, 4},
         {},
         {2}}};
    return breaks;
}

/// "f7r3": the protein by which a record is known in the output.
std::string NameOf(std::size_t file, std::size_t record)
{
    return "f" + std::to_string(file) + "r" + std::to_string(record);
}

Strings PartsOfTable(std::size_t file)
{
    Strings parts = {kTableHeader};
    for (std::size_t i = 0; i < kRecords; ++i) {
        Row row;
        row.protein = NameOf(file, i);
        parts.push_back(LineOf(row));
    }
    parts.emplace_back();
    return parts;
}

Strings PartsOfPepXml(std::size_t file)
{
    const std::string document = PepXml("");
    const std::size_t middle = document.find("</msms_run_summary>");
    Strings parts = {document.substr(0, middle)};
    for (std::size_t i = 0; i < kRecords; ++i) {
        std::string query = Query(Hit());
        Replace(query, "protein=\"P1\"", "protein=\"" + NameOf(file, i) + "\"");
        parts.push_back(query);
    }
    parts.push_back(document.substr(middle));
    return parts;
}

/// The line at which a record of a file begins.
std::size_t LineIn(const Strings& parts, std::size_t record)
{
    std::size_t line = 1;
    for (std::size_t i = 0; i <= record; ++i) {
        line += static_cast<std::size_t>(std::count(parts[i].begin(), parts[i].end(), '\n'));
    }
    return line;
}

/// A folder of files, every second one broken.
class BrokenFolder {
public:
    static constexpr std::size_t kFiles = 100;

    BrokenFolder(const char* format, Strings (*partsOf)(std::size_t),
                 const std::vector<Break>& breaks)
        : format_(format), breaks_(breaks)
    {
        for (std::size_t i = 0; i < kFiles; ++i) {
            Strings parts = partsOf(i);
            if (BreakOf(i) != nullptr) {
                BreakOf(i)->change(parts);
            }
            std::string text;
            for (const std::string& part : parts) {
                text += part;
            }
            place_.Write(PathOf(i), text);
            parts_.push_back(std::move(parts));
        }
    }

    Outcome Run(const Strings& more = {}) const
    {
        Ini ini = Ini()
                      .With("Search", "pep_ident_format", format_)
                      .With("Search", "pep_ident_number", std::to_string(kFiles));
        for (std::size_t i = 0; i < kFiles; ++i) {
            ini = ini.With("Search", "pep_ident_filename_" + std::to_string(i + 1), PathOf(i));
        }
        Strings arguments = {"run"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return place_.Pelgrin(arguments, ini);
    }

    void ExpectWhatIsLeft() const
    {
        ExpectResults();
        ExpectRejects();
        ExpectLedger();
    }

    /// The files of the output by name.
    std::map<std::string, std::string> Outputs() const
    {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::directory_iterator(place_.PathOf("out"))) {
            const std::string name = entry.path().filename().string();
            if (name != "run.json") { // tells when it was
                files[name] = ReadFile(entry.path().string());
            }
        }
        return files;
    }

private:
    static std::string PathOf(std::size_t file) { return "./psms" + std::to_string(file) + ".txt"; }

    const Break* BreakOf(std::size_t file) const
    {
        return file % 2 == 0 ? nullptr : &breaks_[file / 2 % breaks_.size()];
    }

    void ExpectResults() const
    {
        Strings written;
        std::istringstream stream(place_.Output("results.txt"));
        for (std::string line; std::getline(stream, line);) {
            written.push_back(Cells(line).at(10));
        }
        Strings expected = {"Protein Access"};
        for (std::size_t file = 0; file < kFiles; ++file) {
            for (std::size_t i = 0; i < kRecords; ++i) {
                const Break* const broken = BreakOf(file);
                const bool isThere =
                    std::find(written.begin(), written.end(), NameOf(file, i)) != written.end();
                if (broken == nullptr || broken->kept.count(i) > 0
                    || (broken->maybe.count(i) > 0 && isThere)) {
                    expected.push_back(NameOf(file, i));
                }
            }
        }
        written.erase(std::remove_if(written.begin(), written.end(),
                                     [](const std::string& name) {
                                         return std::any_of(name.begin(), name.end(), [](char c) {
                                             return static_cast<unsigned char>(c) >= 0x80;
                                         });
                                     }),
                      written.end());
        EXPECT_EQ(written, expected);
    }

    void ExpectRejects() const
    {
        const std::string table = place_.Output("rejects.tsv");
        std::set<std::string> told;
        std::istringstream stream(table);
        std::string line;
        std::getline(stream, line);
        EXPECT_EQ(line, "File\tLine\tSpectrum\tRecords\tReason");
        while (std::getline(stream, line)) {
            const Strings cells = Cells(line);
            ASSERT_EQ(cells.size(), 5U) << line;
            EXPECT_NE(cells[4], "") << line;
            told.insert(cells[0] + (cells[2].empty() ? "" : ":" + cells[1] + " " + cells[2]));
        }
        for (std::size_t file = 0; file < kFiles; ++file) {
            const Break* const broken = BreakOf(file);
            SCOPED_TRACE(broken == nullptr ? "good" : broken->what);
            Strings expected;
            for (std::size_t i = 0; broken != nullptr && i < kRecords; ++i) {
                if (broken->rejected.count(i) > 0) {
                    expected.push_back(PathOf(file) + ":" + std::to_string(LineIn(parts_[file], i))
                                       + " run.00001.00001.2");
                }
            }
            if (broken != nullptr && broken->isRefused) {
                expected.push_back(PathOf(file));
            }
            for (const std::string& one : expected) {
                EXPECT_EQ(told.erase(one), 1U) << one;
            }
        }
        for (const std::string& one : told) { // what is left is of records that may be lost
            const std::size_t file = std::stoul(one.substr(6));
            ASSERT_NE(BreakOf(file), nullptr) << one;
            EXPECT_FALSE(BreakOf(file)->maybe.empty()) << one;
        }
    }

    void ExpectLedger() const
    {
        const nlohmann::json ledger = nlohmann::json::parse(place_.Output("ledger.json"));
        EXPECT_EQ(ledger["has_losses"], true);
        for (const auto& [key, page] : ledger["pages"].items()) {
            std::uint64_t named = page["kept"].get<std::uint64_t>();
            for (const auto& [name, one] : page["classes"].items()) {
                named += one["in_sum"].get<bool>() ? one["count"].get<std::uint64_t>() : 0;
            }
            EXPECT_EQ(page["held"].get<std::uint64_t>(), named) << key;
        }
        const nlohmann::json& matches = ledger["pages"]["matches"];
        EXPECT_EQ(matches["files"].size(), kFiles);
        const std::string results = place_.Output("results.txt");
        EXPECT_EQ(matches["kept"].get<std::int64_t>(),
                  std::count(results.begin(), results.end(), '\n') - 1);
        EXPECT_GT(matches["classes"]["file_unknown"]["count"].get<int>(), 0);
        EXPECT_GT(matches["classes"]["record_rejected"]["count"].get<int>(), 0);
    }

    std::string format_;
    const std::vector<Break>& breaks_;
    ParameterWorkplace place_;
    std::vector<Strings> parts_;
};

void ExpectAllButTheBrokenIsRead(const BrokenFolder& folder)
{
    const Outcome outcome = folder.Run();
    ASSERT_EQ(outcome.status, 3) << outcome.err;
    folder.ExpectWhatIsLeft();
    const auto first = folder.Outputs();
    EXPECT_GE(first.size(), 6U);
    const Outcome again = folder.Run();
    EXPECT_EQ(again.status, 3);
    EXPECT_EQ(again.out, outcome.out);
    EXPECT_EQ(again.err, outcome.err);
    EXPECT_EQ(folder.Outputs(), first);
}

TEST(PelgrinLosses, OfBrokenTablesAmongGoodOnesAreNamed)
{
    ExpectAllButTheBrokenIsRead(BrokenFolder("Calvex (.txt)", PartsOfTable, BreaksOfTables()));
}

TEST(PelgrinLosses, OfBrokenPepXmlAmongGoodOnesAreNamed)
{
    ExpectAllButTheBrokenIsRead(BrokenFolder("Comet (.pep.xml)", PartsOfPepXml, BreaksOfPepXml()));
}

// ---- --allow ------------------------------------------------------------------

Row BadRow()
{
    Row row;
    row.charge = "two";
    return row;
}

TEST(PelgrinLosses, ThatAreAllowedAreNoReasonForStatus3)
{
    const Workplace workplace;
    EXPECT_EQ(workplace.Annotate({Row(), BadRow()}).status, 3);
    EXPECT_EQ(workplace.Annotate({Row(), BadRow()}, {"--allow", "further_hit"}).status, 3);
    const Outcome outcome = workplace.Annotate(
        {Row(), BadRow()}, {"--allow", "record_rejected,further_hit", "--allow", "lower_rank"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("    allowed        1  record_rejected: "));
    const nlohmann::json ledger = nlohmann::json::parse(workplace.Output("ledger.json"));
    EXPECT_EQ(ledger["allowed"], nlohmann::json({"further_hit", "lower_rank", "record_rejected"}));
    EXPECT_EQ(ledger["has_losses"], false);
    // What was lost is told all the same.
    EXPECT_THAT(workplace.Output("rejects.tsv"), HasSubstr("\t3\trun.00001.00001.2\t1\t"));
    EXPECT_THAT(outcome.err, HasSubstr("psms.txt:3: "));
}

TEST(PelgrinLosses, AClassThatIsNoneIsWrongUsage)
{
    const Workplace workplace;
    const std::string told = "--allow: \"all\" is no class of losses; there is: ";
    const Outcome outcome = workplace.Annotate({Row()}, {"--allow", "all"});
    ExpectRefusal(outcome, 2, told);
    EXPECT_THAT(outcome.err, HasSubstr("record_rejected"));
    EXPECT_FALSE(fs::exists(workplace.PathOf("out")));
    const std::string table = workplace.Write("psms.txt", TableOf({Row()}));
    ExpectRefusal(RunPelgrin({"convert", "--format", "Calvex (.txt)", "--in", table, "--out",
                              workplace.PathOf("t.txt"), "--allow", "all"}),
                  2, told);
    const ParameterWorkplace place;
    ExpectRefusal(place.Pelgrin({"run", "--allow", "all"}, Ini()), 2, told);
}

// ---- pelgrin convert ----------------------------------------------------------

TEST(PelgrinLosses, OfAConversionGoWhereTheyAreAskedFor)
{
    const Workplace workplace;
    const std::string in = workplace.Write("psms.txt", TableOf({Row(), BadRow(), Row()}));
    const Outcome outcome =
        RunPelgrin({"convert", "--format", "Calvex (.txt)", "--in", in, "--out",
                    workplace.PathOf("table.txt"), "--rejects", workplace.PathOf("rejects.tsv"),
                    "--ledger", workplace.PathOf("ledger.json")});
    EXPECT_EQ(outcome.status, 3);
    const std::string table = ReadFile(workplace.PathOf("table.txt"));
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 3);
    EXPECT_THAT(ReadFile(workplace.PathOf("rejects.tsv")),
                HasSubstr("Reason\n" + in + "\t3\trun.00001.00001.2\t1\texpected numbers in "));
    const nlohmann::json ledger = nlohmann::json::parse(ReadFile(workplace.PathOf("ledger.json")));
    EXPECT_EQ(ledger["pages"]["matches"]["held"], 3);
    EXPECT_EQ(ledger["pages"]["matches"]["kept"], 2);
}

TEST(PelgrinLosses, OfAConversionCannotTakeThePlaceOfAnotherFile)
{
    const Workplace workplace;
    const std::string in = workplace.Write("psms.txt", TableOf({Row(), BadRow()}));
    for (const char* const option : {"--rejects", "--ledger"}) {
        for (const std::string& path :
             {in, workplace.PathOf("table.txt"), workplace.PathOf("none/file")}) {
            SCOPED_TRACE(option + path);
            const Outcome outcome =
                RunPelgrin({"convert", "--format", "Calvex (.txt)", "--in", in, "--out",
                            workplace.PathOf("table.txt"), option, path});
            EXPECT_EQ(outcome.status, 1);
            EXPECT_THAT(outcome.err, HasSubstr(path + ": "));
            EXPECT_EQ(ReadFile(in), TableOf({Row(), BadRow()}));
            EXPECT_FALSE(fs::exists(workplace.PathOf("table.txt")));
        }
    }
}

TEST(PelgrinLosses, OfMappedProteinsCannotTakeThePlaceOfAnotherFile)
{
    const Workplace workplace;
    const std::string table = TableOf({Row(), BadRow()});
    const std::string in = workplace.Write("psms.txt", table);
    const std::string fasta = workplace.Write("db.fasta", ">P1 one\nAAKGASKA\n");
    const std::string out = workplace.PathOf("table.txt");
    const std::string proteins = workplace.PathOf("proteins.tsv");
    for (const char* const option : {"--rejects", "--ledger"}) {
        for (const std::string& path : {in, fasta, out, proteins}) {
            SCOPED_TRACE(option + path);
            const Outcome outcome =
                RunPelgrin({"map-proteins", "--fasta", fasta, "--psms", in, "--format",
                            "Calvex (.txt)", "--out", out, "--proteins", proteins, option, path});
            EXPECT_EQ(outcome.status, 1);
            EXPECT_THAT(outcome.err, HasSubstr(path + ": "));
            EXPECT_EQ(ReadFile(in), table);
            EXPECT_EQ(ReadFile(fasta), ">P1 one\nAAKGASKA\n");
            EXPECT_FALSE(fs::exists(out));
        }
    }
}

TEST(PelgrinLosses, RejectsAndLedgerAreTwoFiles)
{
    const Workplace workplace;
    const std::string in = workplace.Write("psms.txt", TableOf({Row(), BadRow()}));
    ExpectRefusal(RunPelgrin({"convert", "--format", "Calvex (.txt)", "--in", in, "--out",
                              workplace.PathOf("table.txt"), "--rejects", workplace.PathOf("lost"),
                              "--ledger", workplace.PathOf("./lost")}),
                  1, "--rejects and --ledger are one file");
}

} // namespace
} // namespace pelgrin::test
