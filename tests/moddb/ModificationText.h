// Modifications as text, databases that tests fill, and what a call ends in.
#ifndef VORLAN_TESTS_MODIFICATIONTEXT_H
#define VORLAN_TESTS_MODIFICATIONTEXT_H

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <limits>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "ModificationDB.h"
#include "support/CLocale.h"
#include "support/Exceptions.h"
#include "support/Printed.h"
#include "support/Support.h"

namespace Vorlan::test {

using Records = std::vector<CResidueModification>;
using RecordSet = std::set<const CResidueModification*>;
using Specificity = CResidueModification::TermSpecificity;

inline constexpr Specificity kAnySpecificity = CResidueModification::NUMBER_OF_TERM_SPECIFICITY;

// ---- Exceptions -----------------------------------------------------------

/// "InvalidValue|ModificationDB|148|label|message", empty when nothing is
/// thrown. Other exceptions pass through.
template <typename Call>
std::string ErrorOf(Call call)
{
    try {
        call();
    } catch (const OpenMS::Exception::BaseException& e) {
        return std::string(e.getName()) + "|" + e.getFile() + "|" + std::to_string(e.getLine())
               + "|" + e.getFunction() + "|" + e.getMessage();
    }
    return {};
}

/// What ErrorOf gives for the exceptions of the unit.
inline std::string Error(const std::string& name, int line, const std::string& label,
                         const std::string& message)
{
    return name + "|ModificationDB|" + std::to_string(line) + "|" + label + "|" + message;
}

/// "name|unit|label|message", for exceptions whose line number is not fixed.
template <typename Call>
std::string ErrorWithoutLine(Call call)
{
    const Thrown thrown = ThrownBy(call);
    return thrown.name + "|" + thrown.file + "|" + thrown.function + "|" + thrown.message;
}

inline std::string InvalidValueText(const std::string& value, const std::string& message)
{
    return "the value '" + value + "' was used but is not valid; " + message;
}

inline std::string NotReadableText(const std::string& path)
{
    return "the file '" + path + "' is not readable for the current user";
}

inline const std::string kInvalidPosition = "Invalid term specificity";

inline std::string InvalidPosition(const std::string& text)
{
    return Error("InvalidValue", 148, "CResidueModification::setTermSpecificity",
                 InvalidValueText(text, kInvalidPosition));
}

// ---- Records --------------------------------------------------------------

inline std::string MassText(double mass, const char* format = "%.17g")
{
    const CLocale plain;
    char text[400];
    std::snprintf(text, sizeof text, format, mass);
    return text;
}

/// Everything, in the order of the fields:
/// "id|full id|accession|full name|term|origin|classification|average|mono|loss mono|loss avge"
inline std::string Dump(const CResidueModification& record, const char* format = "%.17g")
{
    return record.getId() + "|" + record.getFullId() + "|" + record.getUniModAccession() + "|"
           + record.getFullName() + "|" + std::to_string(record.getTermSpecificity()) + "|"
           + record.getOrigin() + "|" + std::to_string(record.getSourceClassification()) + "|"
           + MassText(record.getDiffAverageMass(), format) + "|"
           + MassText(record.getDiffMonoMass(), format) + "|"
           + MassText(record.getNeutralLossMonoMass(), format) + "|"
           + MassText(record.getNeutralLossAverageMass(), format);
}

inline std::vector<std::string> Dump(const Records& records, const char* format = "%.17g")
{
    std::vector<std::string> texts;
    for (const CResidueModification& record : records) {
        texts.push_back(Dump(record, format));
    }
    return texts;
}

/// The records that read(records) appends.
template <typename Read>
Records RecordsBy(Read read)
{
    Records records;
    read(records);
    return records;
}

/// A record that asks and dumps find something in.
inline CResidueModification MakeRecord(const std::string& id, const std::string& origin,
                                       double mass = 0.0,
                                       Specificity specificity = CResidueModification::ANYWHERE)
{
    CResidueModification record;
    record.setId(id);
    record.setFullId(id + " (" + origin + ")");
    record.setUniModAccession("UniMod:" + std::to_string(id.size()));
    record.setFullName("the " + id);
    record.setOrigin(origin);
    record.setTermSpecificity(specificity);
    record.setDiffMonoMass(mass);
    return record;
}

// ---- Databases ------------------------------------------------------------

/// A database that the test fills. Its base has a Records of its own.
class OwnDatabase : public CModificationsDB {
public:
    OwnDatabase() = default;
    explicit OwnDatabase(test::Records records) { Add(std::move(records)); }

    void Add(test::Records records, unsigned nameFields = BY_ID | BY_FULL_ID)
    {
        addModifications_(std::move(records), nameFields);
    }
    using CModificationsDB::BY_ACCESSION;
    using CModificationsDB::BY_FULL_ID;
    using CModificationsDB::BY_FULL_NAME;
    using CModificationsDB::BY_ID;
    using CModificationsDB::residuesMatch_;
};

/// The records of a question by name, in the order of the result: that of the
/// database when all come from one load.
inline Records Named(const CModificationsDB& database, const std::string& name,
                     const std::string& residue = "", Specificity specificity = kAnySpecificity)
{
    RecordSet found;
    database.searchModifications(found, name, residue, specificity);
    Records records;
    for (const CResidueModification* record : found) {
        records.push_back(*record);
    }
    return records;
}

inline std::vector<std::string> FullIds(const Records& records)
{
    std::vector<std::string> ids;
    for (const CResidueModification& record : records) {
        ids.push_back(record.getFullId());
    }
    return ids;
}

inline std::vector<std::string> WithMass(const CModificationsDB& database, double mass,
                                         double maxError, const std::string& residue = "",
                                         Specificity specificity = kAnySpecificity)
{
    std::vector<std::string> fullIds = {"from before"};
    database.searchModificationsByDiffMonoMass(fullIds, mass, maxError, residue, specificity);
    return fullIds;
}

/// All records, in order, of a database that was loaded once, registers full ids
/// and has masses that are numbers: their addresses ascend.
inline Records AllRecords(const CModificationsDB& database)
{
    RecordSet all;
    for (const std::string& id : WithMass(database, 0.0, std::numeric_limits<double>::infinity())) {
        RecordSet found;
        database.searchModifications(found, id, "", kAnySpecificity);
        all.insert(found.begin(), found.end());
    }
    Records records;
    for (const CResidueModification* record : all) {
        records.push_back(*record);
    }
    return records;
}

inline std::string DumpFileOf(const CModificationsDB& database)
{
    const TempFolder folder;
    database.writeToFile(folder.PathOf("dump.txt"));
    return ReadFile(folder.PathOf("dump.txt"));
}

// ---- Processes ------------------------------------------------------------

/// Goes into a folder; for processes that end there.
inline void GoTo(const TempFolder& folder)
{
    std::filesystem::current_path(folder.Path());
}

// ---- Instances ------------------------------------------------------------

/// How many different instances threads get that ask for one at the same time.
template <typename Get>
std::string InstancesOfThreads(Get get)
{
    constexpr std::size_t kThreads = 4;
    std::array<const void*, kThreads> instances = {};
    std::atomic<std::size_t> late = kThreads;
    std::vector<std::thread> threads;
    for (const void*& instance : instances) {
        threads.emplace_back([&instance, &late, &get] {
            for (--late; late > 0;) {
            }
            instance = get();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return std::to_string(std::set<const void*>(instances.begin(), instances.end()).size());
}

} // namespace Vorlan::test

/// Calls call() in a process of its own, where no singleton was made so far,
/// and compares the text that it gives.
#define PELGRIN_EXPECT_IN_OWN_PROCESS(call, text)                                                  \
    EXPECT_EXIT(                                                                                   \
        {                                                                                          \
            std::cerr << (call)();                                                                 \
            std::exit(EXIT_SUCCESS);                                                               \
        },                                                                                         \
        testing::ExitedWithCode(EXIT_SUCCESS), testing::Eq(text))

#endif // VORLAN_TESTS_MODIFICATIONTEXT_H
