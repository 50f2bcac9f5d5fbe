// Files that shrink, grow, go or are no files at all while they are read: every
// reader comes back with what there is, throws, or ends the process as it says it
// may. No signal, no hanging.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include "FastaProteinDB.h"
#include "InitFile.h"
#include "PeptideIdentificationIO.h"
#include "SpectraIO.h"
#include "contract/IdentificationExamples.h"
#include "moddb/UnimodText.h"
#include "support/EndOf.h"
#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

using testing::AnyOf;

/// Reading in two steps; the second is empty where one does it all.
struct Reading {
    std::string name;
    std::string file; ///< the path of the file that changes
    std::function<void()> begin;
    std::function<void()> goOn;

    void All() const
    {
        begin();
        goOn();
    }
};

/// What stands between two places of a text, once and then up to so many bytes more.
std::string Longer(const std::string& text, std::size_t begin, std::size_t end, std::size_t bytes)
{
    const std::string body = text.substr(begin, end - begin);
    return text.substr(0, end) + Repeat(body, bytes / body.size()) + text.substr(end);
}

std::string Longer(const std::string& text, std::size_t bytes)
{
    return Longer(text, 0, text.size(), bytes);
}

/// With more rows, sections or queries.
std::string Longer(const IdentificationExample& example, std::size_t bytes)
{
    const std::string& text = example.text;
    return example.IsPepXml()
               ? Longer(text, text.find("<spectrum_query"), text.find("</msms_run"), bytes)
               : Longer(text, text.find('\n') + 1, text.size(), bytes);
}

/// The second file of MaxQuant, with the numbers of as many rows.
std::string SecondOf(const IdentificationExample& example, const std::string& text)
{
    std::string second = example.secondText;
    const std::size_t ids = second.rfind("0;1");
    if (ids != std::string::npos) {
        const auto lines = std::count(text.begin(), text.end(), '\n');
        for (auto row = 2; row + 1 < lines; ++row) {
            second.insert(second.size() - 1, ";" + std::to_string(row));
        }
    }
    return second;
}

void AddIdentifications(const TempFolder& folder, std::size_t bytes, std::vector<Reading>& all)
{
    for (const IdentificationExample& example : IdentificationExamples()) {
        std::filesystem::create_directories(folder.PathOf(example.testName));
        const std::string path = example.testName + "/" + example.fileName;
        const std::string text = Longer(example, bytes);
        folder.Write(path, text);
        if (!example.secondName.empty()) {
            folder.Write(example.testName + "/" + example.secondName, SecondOf(example, text));
        }
        const std::shared_ptr<PeptideIdentificationIO> reader(
            PepIdentIOFactory::pGetPepIdentIO(example.type));
        const PepIdentSource source(folder.PathOf(example.testName), example.fileName,
                                    example.type);
        all.push_back({example.testName, folder.PathOf(path), [=] { reader->InitLoad(source); },
                       [=] {
                           std::vector<PeptideIdentification> matches;
                           reader->Load(matches);
                           reader->EndLoad();
                       }});
    }
}

void AddSpectra(const TempFolder& folder, std::size_t bytes, std::vector<Reading>& all)
{
    const auto add = [&](const std::string& name, DatasetType::EDatasetType type,
                         const std::string& dataset, const std::string& file,
                         const std::string& spectrum) {
        const std::shared_ptr<SpectraIO> reader(SpecIOFactory::pGetSpectraIO(type));
        all.push_back({name, file, [=] { reader->InitLoad(dataset); },
                       [=] {
                           std::vector<Spectrum> spectra;
                           reader->bLoadOneSpectrum(spectrum, spectra);
                           reader->tLoadAllSpectra(spectra);
                           reader->EndLoad();
                       }});
    };
    const std::string mgf = folder.Write(
        "a.mgf", Longer("BEGIN IONS\nTITLE=first\nPEPMASS=400.5\nCHARGE=3+\nRTINSECONDS=30\n"
                        "SCANS=5\n150 5\n151.5 7\nEND IONS\n",
                        bytes));
    add("Mgf", DatasetType::Mgf, mgf, mgf, "first");
    std::filesystem::create_directories(folder.PathOf("run"));
    const std::string dta =
        folder.Write("run/run.7.7.1.dta", Longer("500.25 1\n200.5 10\n100.25 30\n", bytes));
    add("Dta", DatasetType::Dta, folder.PathOf("run"), dta, "run.7.7.1.dta");
}

void AddOthers(const TempFolder& folder, std::size_t bytes, std::vector<Reading>& all)
{
    const std::string fasta =
        folder.Write("a.fasta", Longer(">P1 first\nMKLVPEPMK\nSAMPLER\n", bytes));
    all.push_back({"Fasta", fasta,
                   [=] {
                       CFastaProteinDB database;
                       database.SetDBPath(fasta);
                       database.OpenFile() && database.ReadFromFile();
                   },
                   [] {}});
    const std::string mod = Mod("Oxidation", Site("M") + kOxidationDelta);
    const std::string unimod =
        folder.Write("unimod.xml", UnimodText(Repeat(mod, 1 + bytes / mod.size())));
    all.push_back({"Unimod", unimod, [=] { const UnimodProbe probe(unimod); }, [] {}});
    const std::string ini = folder.Write("a.ini", Longer("[Search]\nkey = value\n", bytes));
    all.push_back({"Parameters", ini, [=] { InitFile().Load(ini); }, [] {}});
}

std::vector<Reading> Readings(const TempFolder& folder, std::size_t bytes)
{
    std::vector<Reading> all;
    AddIdentifications(folder, bytes, all);
    AddSpectra(folder, bytes, all);
    AddOthers(folder, bytes, all);
    return all;
}

void Truncate(const std::string& path, std::size_t size)
{
    if (::truncate(path.c_str(), static_cast<off_t>(size)) != 0) {
        ::_exit(126);
    }
}

TEST(ChangingFiles, ThatShrinkBetweenTwoStepsEndInFewerRecordsOrAnError)
{
    const TempFolder folder;
    for (const Reading& reading : Readings(folder, 0)) {
        SCOPED_TRACE(reading.name);
        const std::string text = ReadFile(reading.file);
        for (std::size_t size = 0; size < text.size(); size += 11) {
            std::ofstream(reading.file, std::ios::binary) << text;
            const int end = EndOf([&] {
                reading.begin();
                Truncate(reading.file, size);
                reading.goOn();
            });
            ASSERT_THAT(end, AnyOf(kCameBack, kEnded)) << "cut to " << size;
        }
    }
}

/// A process that cuts a file and completes it, again and again.
class Changer {
public:
    Changer(const std::string& path, std::uint64_t seed) : process_(::fork())
    {
        if (process_ == 0) {
            Change(path, seed);
        }
    }
    ~Changer()
    {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }
    Changer(const Changer&) = delete;
    Changer& operator=(const Changer&) = delete;

private:
    [[noreturn]] static void Change(const std::string& path, std::uint64_t seed)
    {
        ::alarm(300);
        const std::string text = ReadFile(path);
        Random random(seed);
        for (;;) {
            const std::size_t size = random.OneIn(4) ? 0 : random.Below(text.size());
            Truncate(path, size);
            ::usleep(static_cast<useconds_t>(random.Below(400)));
            std::ofstream(path, std::ios::binary | std::ios::app) << text.substr(size);
            ::usleep(static_cast<useconds_t>(random.Below(400)));
        }
    }

    pid_t process_;
};

TEST(ChangingFiles, ThatShrinkAndGrowWhileTheyAreReadEndNoProcessBySignal)
{
    constexpr int kProcesses = 2;
    constexpr int kReadings = 3;
    const TempFolder folder;
    std::uint64_t seed = 40;
    for (const Reading& reading : Readings(folder, 150000)) {
        const Changer changer(reading.file, ++seed);
        for (int i = 0; i < kProcesses; ++i) {
            const int end = EndOf([&] {
                for (int k = 0; k < kReadings; ++k) {
                    try {
                        reading.All();
                    } catch (const std::exception&) { // what it says of half a file
                    }
                }
            });
            EXPECT_THAT(end, AnyOf(kCameBack, kEnded)) << reading.name;
        }
    }
}

/// What may stand where a file was, by name; made at a path where nothing is.
const std::vector<std::pair<const char*, std::function<void(const std::string&)>>> kNoFiles = {
    {"nothing", [](const std::string&) {}},
    {"a file without a byte", [](const std::string& path) { std::ofstream(path).flush(); }},
    {"a folder", [](const std::string& path) { std::filesystem::create_directory(path); }},
    {"a pipe that nobody writes", [](const std::string& path) { ::mkfifo(path.c_str(), 0600); }},
    {"a dangling link",
     [](const std::string& path) { std::filesystem::create_symlink("gone", path); }},
    {"a link to itself",
     [](const std::string& path) { std::filesystem::create_symlink(path, path); }},
    {"an empty device",
     [](const std::string& path) { std::filesystem::create_symlink("/dev/null", path); }},
    {"one line feed", [](const std::string& path) { std::ofstream(path) << "\n"; }},
    {"NULs", [](const std::string& path) { std::ofstream(path) << std::string(5000, '\0'); }},
};

TEST(ChangingFiles, ThatAreReplacedByNoFileEndInAnErrorAndNotInWaiting)
{
    const TempFolder folder;
    for (const Reading& reading : Readings(folder, 0)) {
        const std::string text = ReadFile(reading.file);
        for (const auto& [name, make] : kNoFiles) {
            SCOPED_TRACE(reading.name + ": " + name);
            const auto replace = [&, make = make] {
                std::filesystem::remove_all(reading.file);
                make(reading.file);
            };
            const auto fromTheStart = [&] {
                replace();
                reading.All();
            };
            EXPECT_THAT(EndOf(fromTheStart), AnyOf(kCameBack, kEnded));
            std::filesystem::remove_all(reading.file);
            std::ofstream(reading.file, std::ios::binary) << text;
            const auto betweenSteps = [&] {
                reading.begin();
                replace();
                reading.goOn();
            };
            EXPECT_THAT(EndOf(betweenSteps), AnyOf(kCameBack, kEnded));
            std::filesystem::remove_all(reading.file);
            std::ofstream(reading.file, std::ios::binary) << text;
        }
    }
}

} // namespace
} // namespace Vorlan::test
