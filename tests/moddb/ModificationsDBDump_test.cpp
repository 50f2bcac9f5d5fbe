// The dump of a database.
#include <clocale>
#include <limits>
#include <string>

#include <sys/stat.h>

#include "moddb/ModificationText.h"

namespace Vorlan::test {
namespace {

using Modification = CResidueModification;

const std::string kHeader =
    "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\tclassification\tdiff_mono_mass\t"
    "diff_average_mass\tneutral_loss_mono_mass\tneutral_loss_average_mass\n";

const std::string kUnexpected =
    "CModificationsDB::writeToFile calls\nError:\tUnexpected term specificity\n";

CResidueModification Phospho()
{
    CResidueModification record = MakeRecord("Phospho", "S", 79.966331);
    record.setSourceClassification(Modification::POSTTRANSLATIONAL);
    record.setDiffAverageMass(79.9799);
    record.setNeutralLossMonoMass(97.976896);
    record.setNeutralLossAverageMass(97.9952);
    return record;
}

const std::string kPhosphoRow =
    "Phospho\tPhospho (S)\tUniMod:7\tthe Phospho\tAnywhere\tS\tpost-translational\t79.966331\t"
    "79.979900\t97.976896\t97.995200\n";

/// The cells of masses of a record with this monoisotopic one.
std::string RowWithMass(double mass)
{
    const std::string dump = DumpFileOf(OwnDatabase({MakeRecord("a", "M", mass)}));
    const std::string row = dump.substr(kHeader.size());
    const std::string before = "a\ta (M)\tUniMod:1\tthe a\tAnywhere\tM\tartifact\t";
    EXPECT_EQ(row.substr(0, before.size()), before);
    return row.substr(before.size());
}

std::string NotWritable(const std::string& path)
{
    return Error("FileNotReadable", 459, "CModificationsDB::writeToFile", NotReadableText(path));
}

TEST(ModificationsDBDump, OfAnEmptyDatabaseIsTheHeader)
{
    EXPECT_EQ(DumpFileOf(OwnDatabase()), kHeader);
}

TEST(ModificationsDBDump, OneLineForEachRecordInTheOrderOfTheDatabase)
{
    const OwnDatabase database(
        {Phospho(), MakeRecord("Acetyl", "N-term", 42.010565, Modification::PROTEIN_N_TERM),
         Phospho()});
    EXPECT_EQ(DumpFileOf(database), kHeader + kPhosphoRow
                                        + "Acetyl\tAcetyl (N-term)\tUniMod:6\tthe Acetyl\tProtein "
                                          "N-term\tN-term\tartifact\t42.010565\t0.000000\t0.000000"
                                          "\t0.000000\n"
                                        + kPhosphoRow);
}

TEST(ModificationsDBDump, NamesOfAllTermSpecificities)
{
    const std::vector<std::string> names = {"Anywhere", "Any C-term", "Any N-term",
                                            "Protein C-term", "Protein N-term"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const OwnDatabase database({MakeRecord("a", "M", 0.0, static_cast<Specificity>(i))});
        EXPECT_THAT(DumpFileOf(database), testing::HasSubstr("\t" + names[i] + "\tM\t"));
    }
}

TEST(ModificationsDBDump, B38_AClassificationAboveFifteenIsAnEmptyCell)
{
    for (const int value : {16, 17, 100, -1}) {
        CResidueModification record = MakeRecord("a", "M");
        record.setSourceClassification(static_cast<Modification::SourceClassification>(value));
        EXPECT_THAT(DumpFileOf(OwnDatabase({record})), testing::HasSubstr("\tM\t\t0.000000\t"));
    }
}

TEST(ModificationsDBDump, MassesHaveSixDecimals)
{
    const std::string rest = "\t0.000000\t0.000000\t0.000000\n";
    EXPECT_EQ(RowWithMass(0.0), "0.000000" + rest);
    EXPECT_EQ(RowWithMass(-0.0), "-0.000000" + rest);
    EXPECT_EQ(RowWithMass(-17.0265491), "-17.026549" + rest);
    EXPECT_EQ(RowWithMass(0.0000005), "0.000000" + rest) << "the double is below the half";
    EXPECT_EQ(RowWithMass(0.0000015), "0.000002" + rest);
    EXPECT_EQ(RowWithMass(0.5000005), MassText(0.5000005, "%.6f") + rest);
    EXPECT_EQ(RowWithMass(1e20), "100000000000000000000.000000" + rest);
    EXPECT_EQ(RowWithMass(1e300), MassText(1e300, "%.6f") + rest);
    EXPECT_EQ(RowWithMass(std::numeric_limits<double>::infinity()), "inf" + rest);
    EXPECT_EQ(RowWithMass(-std::numeric_limits<double>::infinity()), "-inf" + rest);
    EXPECT_EQ(RowWithMass(std::numeric_limits<double>::quiet_NaN()), "nan" + rest);
}

TEST(ModificationsDBDump, TheLocaleOfTheHostChangesNothing)
{
    const std::locale former = std::locale::global(std::locale::classic());
    const char* const set = std::setlocale(LC_ALL, "de_DE.UTF-8");
    const std::string dump = DumpFileOf(OwnDatabase({Phospho()}));
    std::setlocale(LC_ALL, "C");
    std::locale::global(former);
    EXPECT_EQ(dump, kHeader + kPhosphoRow);
    if (set == nullptr) {
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    }
}

TEST(ModificationsDBDump, AFileThatIsThereIsReplaced)
{
    const TempFolder folder;
    const std::string path = folder.Write("dump.txt", std::string(100000, 'x'));
    OwnDatabase().writeToFile(path);
    EXPECT_EQ(ReadFile(path), kHeader);
}

TEST(ModificationsDBDump, ABackslashInThePathIsASeparator)
{
    const TempFolder folder;
    ASSERT_EQ(::mkdir(folder.PathOf("sub").c_str(), 0700), 0);
    OwnDatabase().writeToFile(folder.Path() + "\\sub\\dump.txt");
    EXPECT_EQ(ReadFile(folder.PathOf("sub/dump.txt")), kHeader);
}

TEST(ModificationsDBDump, TheDatabaseIsAskedAsBefore)
{
    const OwnDatabase database({Phospho()});
    EXPECT_EQ(DumpFileOf(database), DumpFileOf(database));
    EXPECT_EQ(Dump(Named(database, "Phospho")), Dump(Records{Phospho()}));
}

TEST(ModificationsDBDump, B39_WhatCannotBeOpenedIsNotReadable)
{
    const TempFolder folder;
    for (const std::string& path :
         {folder.PathOf("missing/dump.txt"), folder.Path(), std::string()}) {
        EXPECT_EQ(ErrorOf([&] { OwnDatabase().writeToFile(path); }), NotWritable(path));
    }
}

TEST(ModificationsDBDump, APathWithANulIsAnErrorAndNotTheFileInFrontOfIt)
{
    const TempFolder folder;
    const std::string path = folder.Write("dump.txt", "former");
    EXPECT_EQ(ThrownBy([&] { OwnDatabase().writeToFile(path + '\0'); }).name, "FileNotReadable");
    EXPECT_EQ(ReadFile(path), "former");
}

TEST(ModificationsDBDump, B39_AFailedWriteIsToldToo)
{
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "the system has no /dev/full";
    }
    const Records many(2000, Phospho());
    for (const Records& records : {Records(), many}) {
        EXPECT_EQ(ErrorOf([&] { OwnDatabase(records).writeToFile("/dev/full"); }),
                  NotWritable("/dev/full"));
    }
}

TEST(ModificationsDBDump, B40_AnUnexpectedSpecificityEndsTheProcess)
{
    const TempFolder folder;
    for (const int value : {5, 6, -1, 255}) {
        const OwnDatabase database({MakeRecord("a", "M", 0.0, static_cast<Specificity>(value))});
        EXPECT_EXIT(database.writeToFile(folder.PathOf("dump.txt")), testing::ExitedWithCode(1),
                    testing::Eq(kUnexpected));
    }
}

TEST(ModificationsDBDump, B40_TheRowsBeforeItAreOnDisk)
{
    const TempFolder folder;
    const std::string path = folder.PathOf("dump.txt");
    Records records(5000, Phospho());
    records.push_back(MakeRecord("a", "M", 0.0, kAnySpecificity));
    records.push_back(Phospho());
    const OwnDatabase database(records);
    EXPECT_EXIT(database.writeToFile(path), testing::ExitedWithCode(1), testing::Eq(kUnexpected));
    EXPECT_EQ(ReadFile(path), kHeader + Repeat(kPhosphoRow, 5000));
}

TEST(ModificationsDBDump, B40_TheHeaderIsOnDiskWithoutRowsBeforeIt)
{
    const TempFolder folder;
    const std::string path = folder.PathOf("dump.txt");
    const OwnDatabase database({MakeRecord("a", "M", 0.0, kAnySpecificity)});
    EXPECT_EXIT(database.writeToFile(path), testing::ExitedWithCode(1), testing::Eq(kUnexpected));
    EXPECT_EQ(ReadFile(path), kHeader);
}

TEST(ModificationsDBDump, B40_NothingIsSaidOnStandardOutput)
{
    const TempFolder folder;
    const OwnDatabase database({MakeRecord("a", "M", 0.0, kAnySpecificity)});
    const auto write = [&] {
        // What goes to standard output joins the text that is compared.
        std::cout.rdbuf(std::cerr.rdbuf());
        database.writeToFile(folder.PathOf("dump.txt"));
    };
    EXPECT_EXIT(write(), testing::ExitedWithCode(1), testing::Eq(kUnexpected));
}

} // namespace
} // namespace Vorlan::test
