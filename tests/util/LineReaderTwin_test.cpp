// The line reader and slow, obvious twins agree on random files, and its
// offsets lead back to its lines.
#include "util/LineReader.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "support/Random.h"
#include "support/Sanitized.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Random;
using test::TempFolder;

constexpr std::size_t kMax = LineReader::kMaxLineLength;
constexpr std::size_t kFirstRead = 8 * 1024;
constexpr std::size_t kBuffer = 256 * 1024;
constexpr std::string_view kAlphabet{"BTE1 \t\r\n\n\n\0\xEF\xBB\xBF", 14};

/// What reading a whole file gave.
struct Reading {
    std::vector<std::string> lines;
    bool endedByLimit = false;
};

/// getline with a buffer of 81,920 characters.
Reading SlowReading(std::istream& in)
{
    Reading reading;
    std::vector<char> buffer(kMax + 1);
    while (in.getline(buffer.data(), static_cast<std::streamsize>(buffer.size()))) {
        reading.lines.emplace_back(buffer.data());
    }
    reading.endedByLimit = !in.eof() || in.gcount() > 0;
    if (reading.endedByLimit) {
        reading.lines.emplace_back(buffer.data());
    }
    return reading;
}

Reading SlowBinary(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return SlowReading(in);
}

/// What text mode leaves of the bytes of a file.
std::string AsText(const std::string& bytes)
{
    std::string text;
    for (std::size_t i = bytes.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0; i < bytes.size(); ++i) {
        if (bytes.compare(i, 2, "\r\n") != 0) {
            text.push_back(bytes[i]);
        }
    }
    return text;
}

Reading SlowText(const std::string& bytes)
{
    std::istringstream in(AsText(bytes));
    return SlowReading(in);
}

Reading ReadingOf(const std::string& path, LineReader::Mode mode)
{
    Reading reading;
    LineReader reader;
    EXPECT_TRUE(reader.Open(path, mode));
    std::string_view line;
    while (reader.Next(line)) {
        reading.lines.emplace_back(line);
        reading.endedByLimit = reader.Failed();
    }
    return reading;
}

/// Small files of a few lines.
std::string SmallFile(Random& random)
{
    return random.Text(kAlphabet, random.Below(random.OneIn(4) ? 400 : 30));
}

/// Up to four stretches: lines about as long as the limit allows, stretches
/// that end near an edge of a read or of the buffer, small ones.
std::string BigFile(Random& random)
{
    std::string bytes;
    for (std::size_t parts = 1 + random.Below(4); parts > 0; --parts) {
        std::size_t length = kMax - 3 + random.Below(7);
        if (random.OneIn(3)) {
            length = kFirstRead - 2 + random.Below(5);
        } else if (random.OneIn(3)) {
            const std::size_t edge = (bytes.size() / kBuffer + 1) * kBuffer - 2 + random.Below(5);
            length = edge - std::min(edge, bytes.size());
        }
        // Mostly one long line; else short ones all over.
        if (random.OneIn(3)) {
            bytes += test::Repeat("T23456\r\n", length / 8) + std::string(length % 8, '1');
        } else {
            bytes += std::string(length, 'B');
        }
        bytes += random.Text(kAlphabet, random.Below(6));
        bytes += random.OneIn(4) ? "" : random.OneIn(2) ? "\r\n" : "\n";
    }
    return bytes;
}

void ExpectSame(const Reading& reading, const Reading& slow)
{
    EXPECT_EQ(reading.endedByLimit, slow.endedByLimit);
    ASSERT_EQ(reading.lines.size(), slow.lines.size());
    for (std::size_t i = 0; i < slow.lines.size(); ++i) {
        ASSERT_TRUE(reading.lines[i] == slow.lines[i])
            << "line " << i << ": " << reading.lines[i].size() << " characters, expected "
            << slow.lines[i].size();
    }
}

template <typename MakeFile>
void CompareWithTwins(std::uint64_t seed, int rounds, MakeFile makeFile)
{
    const TempFolder folder;
    Random random(seed);
    for (int round = 0; round < rounds / test::kRandomShare; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        const std::string bytes = makeFile(random);
        const std::string path = folder.Write("lines", bytes);
        ExpectSame(ReadingOf(path, LineReader::Mode::Binary), SlowBinary(path));
        ExpectSame(ReadingOf(path, LineReader::Mode::Text), SlowText(bytes));
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

TEST(LineReaderTwin, AgreesWithGetlineOnSmallFiles)
{
    CompareWithTwins(11, 4000, SmallFile);
}

TEST(LineReaderTwin, AgreesWithGetlineOnBigFiles)
{
    CompareWithTwins(12, 400, BigFile);
}

// ---- NextBeginningWith -----------------------------------------------------

/// The loop that NextBeginningWith stands for.
bool SlowNextBeginningWith(LineReader& reader, char first, std::string_view& line)
{
    while (reader.NextWhole(line)) {
        if (FirstOf(line) == first) {
            return true;
        }
    }
    return false;
}

template <typename MakeFile>
void CompareSearches(std::uint64_t seed, int rounds, MakeFile makeFile)
{
    const TempFolder folder;
    Random random(seed);
    for (int round = 0; round < rounds / test::kRandomShare; ++round) {
        const std::string path = folder.Write("lines", makeFile(random));
        LineReader quick;
        LineReader slow;
        ASSERT_TRUE(quick.Open(path, LineReader::Mode::Binary));
        ASSERT_TRUE(slow.Open(path, LineReader::Mode::Binary));
        for (bool found = true; found;) {
            const char first = random.OneOf("BTE1x");
            std::string_view line;
            std::string_view slowLine;
            found = SlowNextBeginningWith(slow, first, slowLine);
            ASSERT_EQ(quick.NextBeginningWith(first, line), found) << "round " << round;
            ASSERT_EQ(quick.Failed(), slow.Failed()) << "round " << round;
            if (found) {
                ASSERT_TRUE(line == slowLine) << "round " << round;
                ASSERT_EQ(quick.Offset(), slow.Offset()) << "round " << round;
            }
        }
    }
}

TEST(LineReaderTwin, NextBeginningWithAgreesWithItsLoopOnSmallFiles)
{
    CompareSearches(13, 4000, SmallFile);
}

TEST(LineReaderTwin, NextBeginningWithAgreesWithItsLoopOnBigFiles)
{
    CompareSearches(14, 400, BigFile);
}

// ---- Random walks ----------------------------------------------------------

/// A reader of bytes in memory that knows nothing of buffers. Binary mode.
class SlowReader {
public:
    explicit SlowReader(std::string bytes) : bytes_(std::move(bytes)) {}

    bool Failed() const { return failed_; }
    std::uint64_t Offset() const { return offset_; }
    void Seek(std::uint64_t offset)
    {
        offset_ = offset;
        failed_ = false;
    }
    /// The bytes from here on; none behind a failure.
    std::string_view Rest() const
    {
        return failed_ ? "" : std::string_view(bytes_).substr(std::min(offset_, Size()));
    }
    bool Next(std::string& line)
    {
        if (failed_ || offset_ >= bytes_.size()) {
            failed_ = true;
            return false;
        }
        const std::size_t begin = static_cast<std::size_t>(offset_);
        const std::size_t feed = bytes_.find('\n', begin);
        const std::size_t end = std::min(feed, bytes_.size());
        offset_ = feed == std::string::npos ? end : end + 1;
        failed_ = end - begin > kMax;
        line = bytes_.substr(begin, std::min(end - begin, kMax));
        line = line.substr(0, line.find('\0'));
        return true;
    }

private:
    std::uint64_t Size() const { return bytes_.size(); }

    std::string bytes_;
    std::uint64_t offset_ = 0;
    bool failed_ = false;
};

/// Some of the whole lines that stand in the memory of reader.
void SkipBoth(Random& random, LineReader& reader, SlowReader& slow)
{
    const std::string_view ahead = reader.Ahead();
    ASSERT_TRUE(ahead == slow.Rest().substr(0, ahead.size()));
    const std::size_t feed = ahead.find('\n', ahead.empty() ? 0 : random.Below(ahead.size()));
    if (feed != std::string_view::npos) {
        reader.Skip(feed + 1);
        slow.Seek(slow.Offset() + feed + 1);
    }
}

/// One step of the same kind for both.
void StepBoth(Random& random, std::size_t size, LineReader& reader, SlowReader& slow)
{
    if (slow.Failed() || random.OneIn(3)) {
        const std::uint64_t near = slow.Offset() + random.Below(40);
        const std::uint64_t place =
            random.OneIn(2) ? random.Below(size + 20) : near - std::min<std::uint64_t>(near, 20);
        reader.Seek(place);
        slow.Seek(place);
    } else if (random.OneIn(4)) {
        SkipBoth(random, reader, slow);
    } else {
        std::string_view line;
        std::string slowLine;
        const bool got = slow.Next(slowLine);
        ASSERT_EQ(reader.Next(line), got);
        ASSERT_TRUE(!got || line == slowLine);
    }
    ASSERT_EQ(reader.Failed(), slow.Failed());
    if (!slow.Failed()) {
        ASSERT_EQ(reader.Offset(), slow.Offset());
    }
}

template <typename MakeFile>
void WalkBoth(std::uint64_t seed, int rounds, int steps, MakeFile makeFile)
{
    const TempFolder folder;
    Random random(seed);
    for (int round = 0; round < rounds / test::kRandomShare; ++round) {
        const std::string bytes = makeFile(random);
        LineReader reader;
        SlowReader slow(bytes);
        ASSERT_TRUE(reader.Open(folder.Write("lines", bytes), LineReader::Mode::Binary));
        for (int step = 0; step < steps; ++step) {
            StepBoth(random, bytes.size(), reader, slow);
            ASSERT_FALSE(testing::Test::HasFatalFailure())
                << "round " << round << ", step " << step;
        }
    }
}

TEST(LineReaderTwin, SeeksSkipsAndReadsAtRandomInSmallFiles)
{
    WalkBoth(15, 2000, 30, SmallFile);
}

TEST(LineReaderTwin, SeeksSkipsAndReadsAtRandomInBigFiles)
{
    WalkBoth(16, 200, 60, BigFile);
}

} // namespace
} // namespace Vorlan
