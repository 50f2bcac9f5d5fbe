// What the inputs hold, what came back, and under which class the rest stands.
//
// A page counts one kind of thing: matches in result files, spectra in files of
// spectra, records of the run. Held = kept + all classes that are in the sum; the
// program ends before it writes a ledger that does not add up. There is no class
// for what is left: everything has a name.
#ifndef PELGRIN_LEDGER_H
#define PELGRIN_LEDGER_H

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "run/Counts.h"
#include "run/Identifications.h"
#include "run/NativeTable.h"
#include "run/Spectra.h"

namespace pelgrin {

struct LedgerClass {
    std::string key;
    std::string text;
    std::uint64_t count = 0;
    bool isInSum = true; ///< else a part of something that was kept, or nothing that is held
    bool isLoss = true;  ///< else nothing is missing
    std::vector<std::string> examples; ///< "psms.txt:12", the first ones
};

struct LedgerPage {
    struct File {
        std::string path;
        std::uint64_t held = 0;
        std::uint64_t kept = 0;
        std::vector<LedgerClass> classes;
    };

    std::string key;  ///< "matches"
    std::string text; ///< "matches in the result files"
    std::uint64_t held = 0;
    std::uint64_t kept = 0;
    std::vector<LedgerClass> classes; ///< that are not empty
    std::vector<File> files;          ///< what stands where
};

class Ledger {
public:
    /// allowed: keys of classes that may be lost.
    explicit Ledger(std::set<std::string> allowed) : allowed_(std::move(allowed)) {}

    /// Does nothing when the inputs were read as they came.
    void AddPrepared(const std::vector<PreparedInput>& inputs);
    void AddMatches(const ResultsRead& results, const Counts& counts);
    void AddSpectra(const std::vector<SpectraFile>& files);
    void AddRecords(const Counts& counts);
    /// What does not read back from the native table at path. Does nothing when all does.
    void AddTable(const NotHeldCounts& notHeld, const std::string& path);

    const std::vector<LedgerPage>& Pages() const { return pages_; }
    /// A class is not empty, is a loss, and was not allowed.
    bool HasLosses() const;
    /// The closing table of a report.
    std::string Text() const;
    /// The text of ledger.json.
    std::string Json() const;

private:
    /// Throws std::logic_error when held is not kept and the sum of the classes.
    void Add(LedgerPage page);

    std::set<std::string> allowed_;
    std::vector<LedgerPage> pages_;
};

/// The keys of all classes, in order.
std::vector<std::string> LossClasses();

/// "further_hit,blank_row", each option a list: the keys. Throws UsageError for one
/// that is no class, and none of more.
std::set<std::string> ParseAllowed(const std::vector<std::string>& texts,
                                   const std::vector<std::string>& more = {});

} // namespace pelgrin

#endif // PELGRIN_LEDGER_H
