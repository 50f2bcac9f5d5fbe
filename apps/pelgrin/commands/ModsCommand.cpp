#include "commands/ModsCommand.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "mods/Mods.h"
#include "run/Parameters.h"

namespace pelgrin {

using Vorlan::CResidueModification;

namespace {

constexpr const char kExitStatus[] = R"(
Exit status: 0 all well; 1 failure; 2 wrong usage; 3 nothing was found.
)";

constexpr const char kImportExample[] = R"(Example:
  pelgrin mods import --out unimod.txt

The library finds modifications in the table unimod.txt of the working folder.
)";

constexpr const char kFindExample[] = R"(Example:
  pelgrin mods find --mass 79.9663 --tolerance 0.01 --residue S

Without an option that names a database, unimod.txt in the working folder is
asked, or else Unimod XML where OpenMS has it.
)";

constexpr const char kShowExample[] = R"(Example:
  pelgrin mods show Phospho

Names are ids (Phospho), full ids (Phospho (S)), full names (Phosphorylation)
and accessions (UniMod:21).
)";

constexpr const char kExplainExample[] = R"(Example:
  pelgrin mods explain 95.9612 --at M --params run.ini
  pelgrin mods explain 42.0106 --at n-term --residue S --before - --database

MASS is the whole mass shift of that place, fixed modifications included.
)";

void AddDatabaseOptions(CLI::App* command, DatabaseChoice& choice)
{
    CLI::Option* const params =
        command->add_option("--params", choice.params, "parameter file; its database is asked");
    CLI::Option* const unimod = command->add_option("--unimod", choice.unimod, "Unimod XML");
    CLI::Option* const engineFile = command->add_option("--engine-file", choice.engineFile,
                                                        "modification file of a search engine");
    CLI::Option* const engine =
        command->add_option("--engine", choice.engine, "whose file that is: " + EngineChoices());
    for (CLI::Option* const option : {params, unimod, engineFile}) {
        option->type_name("FILE");
    }
    engine->type_name("NAME");
    params->excludes(unimod, engineFile);
    unimod->excludes(engineFile);
    engineFile->needs(engine);
    engine->needs(engineFile);
}

// ---- Texts of options ----------------------------------------------------

double MassOf(const std::string& option, const std::string& text)
{
    const auto mass = ParseNumber(text);
    if (!mass) {
        throw UsageError(fmt::format("{}: \"{}\" is not a number of Da", option, text));
    }
    return *mass;
}

/// "0.01", "0.01Da", "20 ppm".
MassWidth WidthOf(const std::string& text)
{
    std::string_view number = text;
    std::string unit;
    while (!number.empty() && std::isalpha(static_cast<unsigned char>(number.back())) != 0) {
        unit.insert(unit.begin(),
                    static_cast<char>(std::tolower(static_cast<unsigned char>(number.back()))));
        number.remove_suffix(1);
    }
    while (!number.empty() && number.back() == ' ') {
        number.remove_suffix(1);
    }
    const auto value = ParseNumber(number);
    if (!value || *value < 0.0 || (!unit.empty() && unit != "da" && unit != "ppm")) {
        throw UsageError(fmt::format("--tolerance: \"{}\" is not a number that is not negative, "
                                     "with Da, ppm or no unit behind it",
                                     text));
    }
    return {*value, unit == "ppm"};
}

double WidthInDa(const std::string& text)
{
    const MassWidth width = WidthOf(text);
    if (width.isPpm) {
        throw UsageError("--tolerance: ppm of which mass is not known here; give it in Da");
    }
    return width.value;
}

char ResidueLetter(const std::string& option, const std::string& text)
{
    const auto residue = ResidueOf(text);
    if (!residue) {
        throw UsageError(fmt::format("{}: \"{}\" is not a residue; choose from {}", option, text,
                                     kResidueLetters));
    }
    return *residue;
}

CResidueModification::TermSpecificity TermOf(const std::string& text)
{
    std::string choices;
    const CResidueModification names;
    for (int i = 0; i < CResidueModification::NUMBER_OF_TERM_SPECIFICITY; ++i) {
        const auto term = static_cast<CResidueModification::TermSpecificity>(i);
        const std::string name = names.getTermSpecificityName(term);
        if (Lower(name) == Lower(text)) {
            return term;
        }
        choices += (i == 0 ? "\"" : ", \"") + name + "\"";
    }
    throw UsageError(fmt::format("--term: \"{}\" is not a place; choose from {}", text, choices));
}

/// '-' or a residue; X and other letters of unknown residues are taken, too.
std::optional<char> NeighbourOf(const std::string& option, const std::string& text)
{
    if (text.empty()) {
        return std::nullopt;
    }
    if (text == "-") {
        return '-';
    }
    if (text.size() != 1 || std::isalpha(static_cast<unsigned char>(text.front())) == 0) {
        throw UsageError(fmt::format(
            "{}: \"{}\" is neither a residue nor - for the end of the protein", option, text));
    }
    return static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
}

// ---- import --------------------------------------------------------------

void AddImport(CLI::App* mods, Command& chosen)
{
    CLI::App* const command =
        mods->add_subcommand("import", "Make the modification table from Unimod XML");
    const auto question = std::make_shared<ImportQuestion>();
    command->footer(std::string(kImportExample)
                    + "\nExit status: 0 all well; 1 failure; 2 wrong usage.\n");
    command
        ->add_option("--unimod", question->unimod,
                     "Unimod XML; by default that of OpenMS, where it is installed")
        ->type_name("FILE");
    command->add_option("--out", question->out, "the table")->type_name("FILE")->required();
    command->add_flag("--force", question->mayOverwrite, "overwrite the table when it exists");
    command->callback(
        [&chosen, question] { chosen.run = [question] { return RunModsImport(*question); }; });
}

// ---- find ----------------------------------------------------------------

struct FindTexts {
    DatabaseChoice database;
    std::string mass;
    std::string tolerance = "0.01";
    std::string residue;
    std::string term;
};

FindQuestion QuestionOf(const FindTexts& texts)
{
    FindQuestion question;
    question.database = texts.database;
    question.mass = MassOf("--mass", texts.mass);
    question.tolerance = WidthInDa(texts.tolerance);
    if (!texts.residue.empty()) {
        question.residue = ResidueLetter("--residue", texts.residue);
    }
    if (!texts.term.empty()) {
        question.term = TermOf(texts.term);
    }
    return question;
}

void AddFind(CLI::App* mods, Command& chosen)
{
    CLI::App* const command =
        mods->add_subcommand("find", "Find the modifications of a mass shift");
    const auto texts = std::make_shared<FindTexts>();
    command->footer(std::string(kFindExample) + kExitStatus);
    command->add_option("--mass", texts->mass, "monoisotopic mass shift, in Da")
        ->type_name("MASS")
        ->required();
    command->add_option("--tolerance", texts->tolerance, "how far it may be off, in Da")
        ->type_name("WIDTH")
        ->capture_default_str();
    command->add_option("--residue", texts->residue, "only those on this residue")
        ->type_name("LETTER");
    command->add_option("--term", texts->term, "only those of this place, such as \"Any N-term\"")
        ->type_name("PLACE");
    AddDatabaseOptions(command, texts->database);
    command->callback(
        [&chosen, texts] { chosen.run = [texts] { return RunModsFind(QuestionOf(*texts)); }; });
}

// ---- show ----------------------------------------------------------------

void AddShow(CLI::App* mods, Command& chosen)
{
    CLI::App* const command = mods->add_subcommand("show", "Show the modifications of a name");
    const auto question = std::make_shared<ShowQuestion>();
    command->footer(std::string(kShowExample) + kExitStatus);
    command->add_option("NAME", question->name, "id, full id, full name or accession")
        ->type_name("")
        ->required();
    AddDatabaseOptions(command, question->database);
    command->callback(
        [&chosen, question] { chosen.run = [question] { return RunModsShow(*question); }; });
}

// ---- explain -------------------------------------------------------------

struct ExplainTexts {
    DatabaseChoice database;
    std::string mass;
    std::string at;
    std::string residue;
    std::string before;
    std::string after;
    std::string tolerance;
    std::string mh;
    std::size_t maxSize = 0;
    std::size_t lines = 20;
    bool isWholeDatabase = false;
};

Site SiteOf(const ExplainTexts& texts)
{
    Site site;
    site.before = NeighbourOf("--before", texts.before);
    site.after = NeighbourOf("--after", texts.after);
    const std::string at = Lower(texts.at);
    if (at == "n-term" || at == "c-term") {
        site.kind = at == "n-term" ? Site::Kind::NTerm : Site::Kind::CTerm;
        if (!texts.residue.empty()) {
            site.residue = ResidueLetter("--residue", texts.residue);
        }
        return site;
    }
    if (!texts.residue.empty()) {
        throw UsageError("--residue: belongs to --at n-term or --at c-term");
    }
    site.residue = ResidueOf(texts.at);
    if (!site.residue) {
        throw UsageError(fmt::format("--at: \"{}\" is not a place; choose n-term, c-term or a "
                                     "residue of {}",
                                     texts.at, kResidueLetters));
    }
    return site;
}

ExplainQuestion QuestionOf(const ExplainTexts& texts)
{
    if (texts.database.params.empty() && !texts.isWholeDatabase) {
        throw UsageError("--params with the modifications is missing, or --database for all");
    }
    ExplainQuestion question;
    question.database = texts.database;
    question.mass = MassOf("MASS", texts.mass);
    question.site = SiteOf(texts);
    if (!texts.tolerance.empty()) {
        question.tolerance = WidthOf(texts.tolerance);
    }
    if (!texts.mh.empty()) {
        question.mh = MassOf("--mh", texts.mh);
        if (!(*question.mh > 0.0)) {
            throw UsageError(fmt::format("--mh: \"{}\" is not above zero", texts.mh));
        }
    }
    question.isWholeDatabase = texts.isWholeDatabase;
    question.maxSize = texts.maxSize;
    question.lines = texts.lines;
    return question;
}

void AddExplainOptions(CLI::App* command, ExplainTexts& texts)
{
    command->add_option("MASS", texts.mass, "mass shift of the place, in Da")
        ->type_name("")
        ->required();
    command->add_option("--at", texts.at, "a residue, n-term or c-term")
        ->type_name("PLACE")
        ->required();
    command
        ->add_option("--residue", texts.residue,
                     "the residue at that terminus, whose side chain then counts as well")
        ->type_name("LETTER");
    command
        ->add_option("--before", texts.before,
                     "residue before the peptide; - at the start of the protein")
        ->type_name("LETTER");
    command
        ->add_option("--after", texts.after,
                     "residue behind the peptide; - at the end of the protein")
        ->type_name("LETTER");
    command
        ->add_option("--tolerance", texts.tolerance,
                     "such as 0.01Da or 20ppm; by default precursor_tol of the parameter file, "
                     "or 0.01Da without one")
        ->type_name("WIDTH");
    command->add_option("--mh", texts.mh, "MH of the peptide, in Da, for a tolerance in ppm")
        ->type_name("MASS");
    command
        ->add_option("--max-size", texts.maxSize,
                     "most modifications at the place; by default 4, with --database 3")
        ->type_name("NUMBER")
        ->check(CLI::Range(1, 8));
    command->add_option("--lines", texts.lines, "most lines of each list")
        ->type_name("NUMBER")
        ->check(CLI::Range(1, 100000))
        ->capture_default_str();
    command->add_flag("--database", texts.isWholeDatabase,
                      "try every record of the database, not only the specified ones");
}

void AddExplain(CLI::App* mods, Command& chosen)
{
    CLI::App* const command = mods->add_subcommand(
        "explain", "Explain a mass shift at a place by combinations of modifications");
    const auto texts = std::make_shared<ExplainTexts>();
    command->footer(std::string(kExplainExample) + kExitStatus);
    AddExplainOptions(command, *texts);
    AddDatabaseOptions(command, texts->database);
    command->callback(
        [&chosen, texts] { chosen.run = [texts] { return RunModsExplain(QuestionOf(*texts)); }; });
}

} // namespace

void AddModsCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const mods = app.add_subcommand("mods", "Ask the modification databases");
    mods->require_subcommand(1);
    mods->footer("Try: pelgrin mods find --help");
    AddImport(mods, chosen);
    AddFind(mods, chosen);
    AddShow(mods, chosen);
    AddExplain(mods, chosen);
}

} // namespace pelgrin
