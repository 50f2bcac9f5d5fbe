// A whole host: parameters, spectra, identifications, annotation, output.
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>

#include <sys/wait.h>
#include <unistd.h>

#include <OpenMS/CONCEPT/Exception.h>

#include "PeptideIdentificationIO.h"
#include "SpectraIO.h"
#include "TulkParam.h"

using namespace Vorlan;

using Matches = std::vector<PeptideIdentification>;

/// Sends standard output elsewhere: what the library prints is not for our users.
class Elsewhere {
public:
    explicit Elsewhere(int descriptor) : former_((std::cout.flush(), dup(STDOUT_FILENO)))
    {
        dup2(descriptor, STDOUT_FILENO);
    }
    ~Elsewhere()
    {
        std::cout.flush();
        dup2(former_, STDOUT_FILENO);
        close(former_);
    }
    Elsewhere(const Elsewhere&) = delete;
    Elsewhere& operator=(const Elsewhere&) = delete;

private:
    int former_;
};

/// Does work in a child, whose end is not ours. What the child said when the library
/// ended it, "" when its work came to an end, by an exception or not.
std::string LastWordsOf(const std::function<void()>& work)
{
    std::cout.flush(); // else the child writes it, too
    std::FILE* const said = std::tmpfile();
    const pid_t child = fork();
    if (child == 0) {
        dup2(fileno(said), STDOUT_FILENO);
        dup2(fileno(said), STDERR_FILENO);
        try {
            work();
        } catch (...) { // we shall meet it ourselves
        }
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::string words;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        words = "the reading ended:\n";
        std::rewind(said);
        std::array<char, 256> line{};
        while (std::fgets(line.data(), line.size(), said) != nullptr) {
            words += line.data();
        }
        std::replace(words.begin(), words.end(), '\t', ' ');
    }
    std::fclose(said);
    return words;
}

/// Appends the matches of one result.
void Load(const PepIdentSource& source, Matches& matches)
{
    PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(source.eType);
    if (pReader == nullptr) {
        throw OpenMS::Exception::InvalidParameter("06_host.cpp", __LINE__, "Load", "no reader");
    }
    try {
        pReader->InitLoad(source);
        pReader->Load(matches);
    } catch (...) {
        PepIdentIOFactory::DesctroyPepIdentIO(pReader);
        throw;
    }
    pReader->EndLoad();
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);
}

/// The y1 ion of a tryptic peptide: water, proton, and lysine or arginine.
Peak Y1Of(const PeptideIdentification& match)
{
    Peak ion;
    ion.setMz(match.strSequence.back() == 'K' ? 147.11280 : 175.11895);
    return ion;
}

int Run(const std::string& parameterFile, const std::string& out)
{
    std::FILE* const unread = std::tmpfile();

    // 1. Parameters. A malformed modification table ends the process: a child tries it.
    std::string trouble = LastWordsOf([&] { CTulkParam::readFromFile(parameterFile); });
    if (!trouble.empty()) {
        std::cout << parameterFile << ": " << trouble;
        return 1;
    }
    const CTulkParam* const parameters = CTulkParam::readFromFile(parameterFile);
    const CSearchParam& search = *parameters->getSearchParam();
    std::cout << "parameters: fragments within " << search.dFragmentTol << " "
              << TolType::typeToName(search.eFragmentTolType) << "\n";

    // 2. Spectra. A file that cannot be opened is told on standard output, which nobody
    // sees here; the dataset is then without names.
    DatasetIOPool pool;
    {
        const Elsewhere quiet(fileno(unread));
        pool.InitLoad(search.vDatasets);
    }
    std::cout << "spectra: " << pool.tGetSpecNumber() << " names\n";

    // 3. Identifications. A table without its columns may end the process, too.
    Matches matches;
    for (const PepIdentSource& source : search.vPepIdentSources) {
        trouble = LastWordsOf([&] {
            Matches tried;
            Load(source, tried);
        });
        if (!trouble.empty()) {
            std::cout << source.strSecond << ": " << trouble;
            return 1;
        }
        const Elsewhere quiet(fileno(unread));
        Load(source, matches);
    }
    std::cout << "identifications: " << matches.size() << " matches\n";

    // 4. Annotation. Asking first says nothing and throws nothing.
    std::vector<Spectrum> annotated;
    std::size_t unmet = 0;
    std::size_t found = 0;
    for (const PeptideIdentification& match : matches) {
        if (!pool.bHasSpectrum(match.strDatasetName, match.strSpectrumName)) {
            ++unmet;
            continue;
        }
        pool.bLoadOneSpectrum(match.strDatasetName, match.strSpectrumName, annotated);
        Spectrum& spectrum = annotated.back();
        spectrum.CreateHashTable();
        Peak ion = Y1Of(match);
        found += spectrum.GetHitPeak(ion, search.dFragmentTol, search.eFragmentTolType, true) >= 0;
        spectrum.ReleaseHashTable();
    }
    std::cout << "annotation: y1 in " << found << " of " << annotated.size() << " spectra, "
              << unmet << " matches met none\n";

    // 5. Output.
    TulkTXTPepIdentIO table;
    {
        const Elsewhere quiet(fileno(unread));
        table.InitSave(out + "/matches.txt");
        table.Save(matches);
        table.EndSave();
    }
    MgfIO spectra;
    spectra.InitSave(out + "/annotated.mgf");
    const std::uint64_t written = spectra.tSaveSpectra(annotated, 0, annotated.size());
    spectra.EndSave();
    std::cout << "output: " << matches.size() << " rows and " << written << " spectra\n";
    std::fclose(unread);
    return 0;
}

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : "examples/data";
    const std::filesystem::path out =
        std::filesystem::temp_directory_path() / ("pelgrin-host-" + std::to_string(getpid()));
    std::filesystem::create_directory(out);
    int status = 1;
    try {
        status = Run(folder + "/demo.ini", out.string());
    } catch (const OpenMS::Exception::BaseException& error) {
        std::cout << error.getFile() << ", " << error.getFunction() << ": " << error.what() << "\n";
    } catch (const std::exception& error) { // std::bad_alloc, for one
        std::cout << error.what() << "\n";
    }
    std::filesystem::remove_all(out);
    return status;
}
