// XML: a pepXML file as a tree, beside the trees of Xerces, libxml2 and pugixml.
// Parsed, parsed and let go, parsed and asked; and the memory for it.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "support/Claims.h"
#include "support/Inputs.h"
#include "support/OwnProcess.h"
#include "support/XmlTrees.h"

namespace {

using bench::LibXml2Tree;
using bench::OurTree;
using bench::PugiTree;
using bench::XercesTree;

constexpr std::size_t kFullSize = 200000000; // bytes

// ---- The input --------------------------------------------------------------

/// What a tree answers about its spectrum queries and search hits.
struct Answers {
    std::size_t elements = 0; ///< queries and hits
    std::size_t sum = 0;      ///< made of all values that were asked for

    template <typename View>
    void Add(const View& value)
    {
        sum = 31 * sum + value.size() + (value.empty() ? 0 : static_cast<std::size_t>(value[0]));
    }

    bool operator==(const Answers& other) const
    {
        return elements == other.elements && sum == other.sum;
    }
};

std::string Decimal(bench::Random& random, std::uint64_t low, std::uint64_t high,
                    std::size_t decimals)
{
    std::string text;
    bench::AppendDecimal(text, random.Between(low, high), decimals);
    return text;
}

/// Composes a result file as search engines write it, one query after another,
/// and keeps what a tree of it has to answer.
class PepXmlText {
public:
    static constexpr const char* kHead =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<msms_pipeline_analysis date=\"2026-11-20T10:00:00\" summary_xml=\"run01.pep.xml\">\n"
        " <msms_run_summary base_name=\"run01\" raw_data_type=\"raw\" raw_data=\".mzML\">\n"
        "  <sample_enzyme name=\"Trypsin\">\n"
        "   <specificity cut=\"KR\" no_cut=\"P\" sense=\"C\"/>\n"
        "  </sample_enzyme>\n"
        "  <search_summary base_name=\"run01\" search_engine=\"an engine\" search_id=\"1\">\n"
        "   <search_database local_path=\"human.fasta\" type=\"AA\"/>\n"
        "  </search_summary>\n";
    static constexpr const char* kTail = " </msms_run_summary>\n</msms_pipeline_analysis>\n";

    /// The text of the next query.
    const std::string& NextQuery()
    {
        text_.clear();
        ++scan_;
        const std::string scan = std::to_string(scan_);
        const std::string charge = std::to_string(random_.Between(2, 4));
        const std::string spectrum = "run01." + scan + '.' + scan + '.' + charge;
        text_.append("  <spectrum_query");
        Attribute("spectrum", spectrum);
        Attribute("spectrumNativeID", "File:&quot;run01.raw&quot; scan=" + scan);
        Attribute("start_scan", scan);
        Attribute("end_scan", scan);
        Attribute("precursor_neutral_mass", Decimal(random_, 700000000, 3500000000, 6));
        Attribute("assumed_charge", charge);
        Attribute("index", scan);
        Attribute("retention_time_sec", Decimal(random_, 1000, 72000, 1));
        text_.append(">\n   <search_result>\n");
        Keep({spectrum, scan, charge});
        const std::uint64_t hits = random_.Between(1, 3);
        for (std::uint64_t rank = 1; rank <= hits; ++rank) {
            AppendHit(rank);
        }
        text_.append("   </search_result>\n  </spectrum_query>\n");
        return text_;
    }

    const Answers& Expected() const { return expected_; }

private:
    void Attribute(const char* name, const std::string& value)
    {
        text_.append(" ").append(name).append("=\"").append(value).append("\"");
    }

    void Keep(std::initializer_list<std::string_view> values)
    {
        ++expected_.elements;
        for (const std::string_view value : values) {
            expected_.Add(value);
        }
    }

    std::string Protein()
    {
        const std::string number = std::to_string(random_.Between(10000, 99999));
        return (random_.Between(0, 1) == 0 ? "sp|P" : "DECOY_sp|P") + number + "|GENE" + number
               + "_HUMAN";
    }

    std::string Peptide()
    {
        std::string peptide(random_.Between(7, 25), 'A');
        for (char& residue : peptide) {
            residue = "ACDEFGHIKLMNPQRSTVWY"[random_.Between(0, 19)];
        }
        return peptide;
    }

    void AppendHit(std::uint64_t rank)
    {
        const std::string peptide = Peptide();
        const std::string protein = Protein();
        const std::string massdiff = Decimal(random_, 0, 20000, 6);
        const std::uint64_t others = random_.Between(0, 2);
        text_.append("    <search_hit");
        Attribute("hit_rank", std::to_string(rank));
        Attribute("peptide", peptide);
        Attribute("peptide_prev_aa", "K");
        Attribute("peptide_next_aa", "A");
        Attribute("protein", protein);
        Attribute("num_tot_proteins", std::to_string(others + 1));
        Attribute("num_matched_ions", std::to_string(random_.Between(0, 30)));
        Attribute("tot_num_ions", std::to_string(2 * peptide.size() - 2));
        Attribute("calc_neutral_pep_mass", Decimal(random_, 700000000, 3500000000, 6));
        Attribute("massdiff", massdiff);
        Attribute("num_tol_term", "2");
        Attribute("num_missed_cleavages", std::to_string(random_.Between(0, 2)));
        text_.append(">\n");
        Keep({peptide, protein, massdiff});
        for (std::uint64_t i = 0; i < others; ++i) {
            text_.append("     <alternative_protein");
            Attribute("protein", Protein());
            text_.append("/>\n");
        }
        AppendModifications(peptide);
        AppendScores();
        text_.append("    </search_hit>\n");
    }

    /// One hit in three has one or two.
    void AppendModifications(const std::string& peptide)
    {
        if (random_.Between(0, 2) != 0) {
            return;
        }
        text_.append("     <modification_info");
        Attribute("modified_peptide", peptide.substr(0, 3) + "[147]" + peptide.substr(3));
        text_.append(">\n");
        const std::uint64_t count = random_.Between(1, 2);
        for (std::uint64_t i = 0; i < count; ++i) {
            text_.append("      <mod_aminoacid_mass");
            Attribute("position", std::to_string(random_.Between(1, peptide.size())));
            Attribute("mass", "147.035385");
            text_.append("/>\n");
        }
        text_.append("     </modification_info>\n");
    }

    void AppendScores()
    {
        constexpr const char* names[] = {"xcorr",   "deltacn", "deltacnstar",
                                         "spscore", "sprank",  "expect"};
        const std::uint64_t count = random_.Between(4, 6);
        for (std::uint64_t i = 0; i < count; ++i) {
            text_.append("     <search_score");
            Attribute("name", names[i]);
            Attribute("value", Decimal(random_, 0, 999999, 3));
            text_.append("/>\n");
        }
    }

    bench::Random random_{5};
    std::uint64_t scan_ = 0;
    std::string text_;
    Answers expected_;
};

/// Writes a file of at least so many bytes.
Answers WritePepXml(const std::string& path, std::size_t bytes)
{
    PepXmlText queries;
    std::ofstream file(path, std::ios::binary);
    file << PepXmlText::kHead;
    for (std::size_t written = 0; written < bytes;) {
        const std::string& query = queries.NextQuery();
        file.write(query.data(), static_cast<std::streamsize>(query.size()));
        written += query.size();
    }
    file << PepXmlText::kTail;
    return queries.Expected();
}

struct Input {
    bench::TemporaryFolder folder;
    std::string path = folder.File("run01.pep.xml");
    Answers expected = WritePepXml(path, bench::Scaled(kFullSize));
    std::uint64_t bytes = std::filesystem::file_size(path);
};

/// Made by the first benchmark that needs it.
const Input& TheInput()
{
    static const Input input;
    return input;
}

// ---- Are the trees the same? --------------------------------------------------

template <typename Tree>
bool IsDescribedAs(const std::string& expected, const std::string& path)
{
    Tree tree;
    std::string xml;
    if (tree.Parse(path)) {
        bench::AppendDescription<Tree>(xml, tree.Root());
    }
    if (xml != expected) {
        std::cerr << "the tree of " << Tree::kName << " differs from ours\n";
    }
    return xml == expected;
}

/// Compares all elements and attributes of a small file.
bool TreesAgree()
{
    const bench::TemporaryFolder folder;
    const std::string path = folder.File("small.pep.xml");
    WritePepXml(path, 100000);
    OurTree ours;
    if (!ours.Parse(path)) {
        return false;
    }
    const std::string expected = ours.Root()->strToXml();
    return IsDescribedAs<XercesTree>(expected, path) && IsDescribedAs<LibXml2Tree>(expected, path)
           && IsDescribedAs<PugiTree>(expected, path);
}

// ---- Questions ----------------------------------------------------------------

using bench::XmlName;

constexpr XmlName kRun = PELGRIN_BENCH_XML_NAME("msms_run_summary");
constexpr XmlName kQuery = PELGRIN_BENCH_XML_NAME("spectrum_query");
constexpr XmlName kResult = PELGRIN_BENCH_XML_NAME("search_result");
constexpr XmlName kHit = PELGRIN_BENCH_XML_NAME("search_hit");
constexpr XmlName kOfQuery[] = {PELGRIN_BENCH_XML_NAME("spectrum"),
                                PELGRIN_BENCH_XML_NAME("start_scan"),
                                PELGRIN_BENCH_XML_NAME("assumed_charge")};
constexpr XmlName kOfHit[] = {PELGRIN_BENCH_XML_NAME("peptide"), PELGRIN_BENCH_XML_NAME("protein"),
                              PELGRIN_BENCH_XML_NAME("massdiff")};

template <typename Tree, typename Take>
void ForEachNamed(typename Tree::Element element, const XmlName& name, Take take)
{
    Tree::ForEachChild(element, [&name, &take](typename Tree::Element child) {
        if (Tree::Is(child, name)) {
            take(child);
        }
    });
}

template <typename Tree>
void AskOne(typename Tree::Element element, const XmlName (&names)[3], Answers& answers)
{
    ++answers.elements;
    for (const XmlName& name : names) {
        answers.Add(Tree::Value(element, name));
    }
}

template <typename Tree>
Answers AskAll(Tree& tree)
{
    using Element = typename Tree::Element;
    Answers answers;
    ForEachNamed<Tree>(tree.Root(), kRun, [&answers](Element run) {
        ForEachNamed<Tree>(run, kQuery, [&answers](Element query) {
            AskOne<Tree>(query, kOfQuery, answers);
            ForEachNamed<Tree>(query, kResult, [&answers](Element result) {
                ForEachNamed<Tree>(result, kHit,
                                   [&answers](Element hit) { AskOne<Tree>(hit, kOfHit, answers); });
            });
        });
    });
    return answers;
}

/// Sets the rate, and reports an error where the work was not done.
void Conclude(benchmark::State& state, const Answers& answers)
{
    if (!(answers == TheInput().expected)) {
        state.SkipWithError("the tree is not that of the file");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(TheInput().bytes));
}

// ---- Time -----------------------------------------------------------------------

template <typename Tree>
void Parse(benchmark::State& state)
{
    const std::string& path = TheInput().path;
    Answers answers;
    for (auto _ : state) {
        Tree tree;
        tree.Parse(path);
        state.PauseTiming(); // Neither letting go is measured nor the check.
        answers = AskAll(tree);
        tree.LetGo();
        ::malloc_trim(0);
        state.ResumeTiming();
    }
    Conclude(state, answers);
}

template <typename Tree>
void ParseAndLetGo(benchmark::State& state)
{
    const std::string& path = TheInput().path;
    for (auto _ : state) {
        Tree tree;
        tree.Parse(path);
        tree.LetGo();
        state.PauseTiming();
        ::malloc_trim(0);
        state.ResumeTiming();
    }
    Conclude(state, TheInput().expected);
}

template <typename Tree>
void ParseAndAsk(benchmark::State& state)
{
    const std::string& path = TheInput().path;
    Answers answers;
    for (auto _ : state) {
        Tree tree;
        tree.Parse(path);
        answers = AskAll(tree);
        state.PauseTiming();
        tree.LetGo();
        ::malloc_trim(0);
        state.ResumeTiming();
    }
    Conclude(state, answers);
}

// ---- Memory ---------------------------------------------------------------------

constexpr char kGrowthOption[] = "--print-growth-by-parsing";

/// Growth of the resident set by parsing, at its highest. Only a process that
/// has done nothing before can tell.
template <typename Tree>
int PrintGrowthByParsing(const std::string& path)
{
    Tree tree;
    const double before = bench::ResidentMegabytes();
    const bool isWhole = tree.Parse(path);
    std::printf("%f\n", bench::PeakResidentMegabytes() - before);
    return isWhole ? 0 : 1;
}

int PrintGrowthByParsing(const std::string& name, const std::string& path)
{
    return name == OurTree::kName       ? PrintGrowthByParsing<OurTree>(path)
           : name == XercesTree::kName  ? PrintGrowthByParsing<XercesTree>(path)
           : name == LibXml2Tree::kName ? PrintGrowthByParsing<LibXml2Tree>(path)
                                        : PrintGrowthByParsing<PugiTree>(path);
}

template <typename Tree>
void Memory(benchmark::State& state)
{
    bench::OwnProcessResult child;
    for (auto _ : state) {
        child = bench::RunMyself({kGrowthOption, Tree::kName, TheInput().path});
    }
    if (child.status != 0) {
        state.SkipWithError("the measuring process failed");
    }
    state.counters["MB"] = std::atof(child.output.c_str());
}

// ---- What is wanted ---------------------------------------------------------

/// The rows against another library.
template <typename Tree>
void AddClaims(std::vector<bench::Claim>& claims, bench::Claim::Kind kind, double bound)
{
    const std::string other = Tree::kName;
    const std::string what = "XML: parse pepXML";
    const double most = 4e-6 * static_cast<double>(bench::Scaled(kFullSize));
    claims.push_back({what, "Parse/ours", other, "Parse/" + other, kind, bound});
    claims.push_back({what + ", and let go", "LetGo/ours", other, "LetGo/" + other, kind, bound});
    claims.push_back({what + ", and ask", "Ask/ours", other, "Ask/" + other, kind, bound});
    claims.push_back({"XML: memory for parsing, at its highest", "Memory/ours", other,
                      "Memory/" + other, bench::Claim::Megabytes, most});
}

template <typename Tree>
void Register()
{
    const auto add = [](const char* what, int repetitions, void (*function)(benchmark::State&)) {
        benchmark::RegisterBenchmark((std::string(what) + Tree::kName).c_str(), function)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(repetitions);
    };
    add("Parse/", 3, Parse<Tree>);
    add("LetGo/", 3, ParseAndLetGo<Tree>);
    add("Ask/", 3, ParseAndAsk<Tree>);
    add("Memory/", 1, Memory<Tree>);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4 && std::strcmp(argv[1], kGrowthOption) == 0) {
        return PrintGrowthByParsing(argv[2], argv[3]);
    }
    if (!TreesAgree()) {
        return 1;
    }
    Register<OurTree>();
    Register<XercesTree>();
    Register<LibXml2Tree>();
    Register<PugiTree>();
    std::vector<bench::Claim> claims;
    AddClaims<XercesTree>(claims, bench::Claim::TimesFaster, 4.0);
    AddClaims<LibXml2Tree>(claims, bench::Claim::TimesFaster, bench::Claim::kNothingWanted);
    AddClaims<PugiTree>(claims, bench::Claim::TimesTheTime, 2.0);
    claims.push_back({"XML: memory for parsing, at its highest", "Memory/ours", PugiTree::kName,
                      std::string("Memory/") + PugiTree::kName, bench::Claim::TimesTheMemory, 1.5});
    return bench::Run(argc, argv, claims);
}
