// Runs programs as child processes, and writes their inputs.
#ifndef PELGRIN_TESTS_HOSTPROGRAM_H
#define PELGRIN_TESTS_HOSTPROGRAM_H

#include <map>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "support/Support.h"

namespace pelgrin::test {

struct Outcome {
    int status = -1; ///< exit status; 128 + number after a signal
    std::string out;
    std::string err;
};

/// Where and how a program runs.
struct Setting {
    std::string folder;                           ///< working folder; empty: this one
    std::map<std::string, std::string> variables; ///< added to the environment
    std::string outPath;                          ///< standard output goes there; empty: captured
};

Outcome RunProgram(const std::vector<std::string>& command, const Setting& setting = {});

/// Runs "pelgrin" with arguments.
Outcome RunPelgrin(std::vector<std::string> arguments, const Setting& setting = {});

/// One row of a native table.
struct Row {
    std::string dataset = "run.mgf";
    std::string spectrum = "run.00001.00001.2";
    std::string sequence = "GASK";
    std::string charge = "2";
    std::string massShift = "0";
    std::string modNames;
    std::string modPositions;
    std::string observedMh = "361.192724"; ///< of the spectrum in run.mgf
    std::string score = "1.5";
    std::string highBetter = "1";
    std::string protein = "P1"; ///< empty: no protein at all
};

extern const char* const kTableHeader;

/// One line with its line feed.
std::string LineOf(const Row& row);
std::string TableOf(const std::vector<Row>& rows);

/// A folder with run.mgf, one spectrum of GASK that holds b1, b2 and y1, and
/// what a test adds.
class Workplace {
public:
    Workplace();

    /// Runs "pelgrin annotate" on run.mgf and a table of rows, with 20 ppm, b
    /// and y, into the folder "out".
    Outcome Annotate(const std::vector<Row>& rows, std::vector<std::string> more = {}) const;
    Outcome AnnotateTable(const std::string& table, std::vector<std::string> more = {}) const;

    std::string PathOf(const std::string& name) const { return folder_.PathOf(name); }
    std::string Write(const std::string& name, const std::string& bytes) const
    {
        return folder_.Write(name, bytes);
    }
    std::string Output(const std::string& name) const;
    nlohmann::json Summary() const;

private:
    Vorlan::test::TempFolder folder_;
};

extern const char* const kRunMgf;

/// What annotations.tsv holds behind its header for a GASK in run.mgf.
extern const char* const kGaskLines;

/// The refusal is one line on standard error and nothing else.
void ExpectRefusal(const Outcome& outcome, int status, const std::string& text);

/// The run finished without a record, which it tells with text.
void ExpectReject(const Outcome& outcome, const std::string& text);

/// Adds up summary.json: records read = annotated + every reason.
void ExpectCountsAddUp(const nlohmann::json& summary);

} // namespace pelgrin::test

#endif // PELGRIN_TESTS_HOSTPROGRAM_H
