// Spectra from a child process: a reader that ends costs the spectrum it was asked
// for.
#include "isolation/SpectrumServer.h"

#include <csignal>
#include <filesystem>
#include <iostream>

#include <unistd.h>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Vorlan::Spectrum;
using Vorlan::test::TempFolder;
using Reply = SpectrumServer::Reply;

/// Knows every name but "none". What happens first is up to the test.
SpectrumServer::Open Knows(const std::function<void(const std::string&)>& first)
{
    return [first]() -> SpectrumServer::Answer {
        return [first](const std::string& name) -> std::optional<Spectrum> {
            first(name);
            if (name == "none") {
                return std::nullopt;
            }
            Spectrum spectrum;
            spectrum.strTitle = name;
            spectrum.dPrecursorMz = 195.6;
            spectrum.vPeaks.resize(name.size());
            return spectrum;
        };
    };
}

void ExpectFound(SpectrumServer& server, const std::string& name)
{
    Spectrum spectrum;
    EXPECT_EQ(server.Load(name, spectrum), Reply::Found);
    EXPECT_EQ(spectrum.strTitle, name);
    EXPECT_EQ(spectrum.dPrecursorMz, 195.6);
    EXPECT_EQ(spectrum.vPeaks.size(), name.size());
}

Reply ReplyTo(SpectrumServer& server, const std::string& name)
{
    Spectrum spectrum;
    spectrum.strTitle = "before";
    const Reply reply = server.Load(name, spectrum);
    EXPECT_EQ(spectrum.strTitle, "before");
    return reply;
}

TEST(SpectrumServer, AnswersWhatItIsAsked)
{
    SpectrumServer server(Knows([](const std::string&) {}));
    ExpectFound(server, "run.1.1.2");
    EXPECT_EQ(ReplyTo(server, "none"), Reply::Unknown);
    ExpectFound(server, std::string("a\0b", 3));
    ExpectFound(server, "");
    ExpectFound(server, std::string(200000, 'x'));
    EXPECT_THAT(server.Ends(), IsEmpty());
}

TEST(SpectrumServer, ANameThatEndsTheReaderTwiceIsGivenUp)
{
    for (const auto& [end, text] : std::vector<std::pair<std::function<void()>, std::string>>{
             {[] { ::raise(SIGKILL); }, "the reader ended by signal 9 (Killed)"},
             {[] {
                  std::cout << "no such peak\n";
                  ::_exit(1);
              },
              "the reader ended with status 1: no such peak"},
             {[] { throw std::runtime_error("a slip"); }, "the reader ended with status 1: a slip"},
             {[] { ::_exit(0); }, "the reader ended"}}) {
        SCOPED_TRACE(text);
        const auto endAtBad = [end = end](const std::string& name) {
            if (name == "bad") {
                end();
            }
        };
        SpectrumServer server(Knows(endAtBad));
        ExpectFound(server, "good");
        EXPECT_EQ(ReplyTo(server, "bad"), Reply::ReaderEnded);
        EXPECT_THAT(server.Ends(), ElementsAre(text, text));
        ExpectFound(server, "better");
        EXPECT_EQ(ReplyTo(server, "none"), Reply::Unknown);
        EXPECT_EQ(ReplyTo(server, "bad"), Reply::ReaderEnded);
        EXPECT_THAT(server.Ends(), SizeIs(4));
    }
}

TEST(SpectrumServer, AReaderThatIsKilledOnceIsStartedAgain)
{
    const TempFolder folder;
    SpectrumServer server(Knows([&folder](const std::string& name) {
        if (name == "second" && !std::filesystem::exists(folder.PathOf("killed"))) {
            folder.Write("killed", "");
            ::raise(SIGKILL);
        }
    }));
    ExpectFound(server, "first");
    ExpectFound(server, "second");
    ExpectFound(server, "third");
    EXPECT_THAT(server.Ends(), ElementsAre("the reader ended by signal 9 (Killed)"));
}

TEST(SpectrumServer, ADatasetThatCannotBeOpenedLosesEverySpectrum)
{
    SpectrumServer server(
        SpectrumServer::Open([]() -> SpectrumServer::Answer { throw std::runtime_error("gone"); }));
    EXPECT_EQ(ReplyTo(server, "a"), Reply::ReaderEnded);
    EXPECT_EQ(ReplyTo(server, "b"), Reply::ReaderEnded);
    EXPECT_THAT(server.Ends(), SizeIs(4));
    EXPECT_EQ(server.Ends().front(), "the reader ended with status 1: gone");
}

TEST(SpectrumServer, ServersStandBesideEachOther)
{
    std::vector<SpectrumServer> servers;
    for (int i = 0; i < 3; ++i) {
        servers.emplace_back(Knows([i](const std::string& name) {
            if (name == std::to_string(i)) {
                ::raise(SIGKILL);
            }
        }));
    }
    for (std::size_t name = 0; name < 3; ++name) {
        for (std::size_t i = 0; i < 3; ++i) {
            if (i == name) {
                EXPECT_EQ(ReplyTo(servers[i], std::to_string(name)), Reply::ReaderEnded);
            } else {
                ExpectFound(servers[i], std::to_string(name));
            }
        }
    }
}

TEST(SpectrumServer, ReadsADatasetWithTheLibrary)
{
    const TempFolder folder;
    folder.Write("run.mgf", kRunMgf);
    SpectrumServer server({folder.Path(), "run.mgf", Vorlan::DatasetType::Mgf});
    Spectrum spectrum;
    ASSERT_EQ(server.Load("run.00001.00001.2", spectrum), Reply::Found);
    EXPECT_EQ(spectrum.dPrecursorMz, 181.1);
    EXPECT_EQ(spectrum.vPeaks.size(), 4U);
    EXPECT_EQ(ReplyTo(server, "run.9.9.2"), Reply::Unknown);
    EXPECT_THAT(server.Ends(), IsEmpty());
}

} // namespace
} // namespace pelgrin::test
