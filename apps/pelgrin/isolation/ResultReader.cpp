#include "isolation/ResultReader.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <utility>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "isolation/Child.h"
#include "isolation/LibraryReading.h"
#include "isolation/RecordBytes.h"
#include "isolation/Slices.h"

namespace pelgrin {

using Record = ResultReader::Record;

namespace {

/// What a child tells.
enum Told : std::uint32_t {
    BeginPiece, ///< of so many records
    SomeRecords,
    RejectNext, ///< the next record: the reason
    Refuse,     ///< reading cannot go on, whatever the records are: the reason
    PieceFault, ///< a piece of several records failed: the reason
};

/// So often in a row a reader may end before it has given or rejected a record:
/// more often than a window can be halved.
constexpr std::size_t kMostEndsInVain = 64;
/// So many records are one message.
constexpr std::size_t kRecordsInMessage = 512;

/// Records of a file that stand together, and how far their reading is.
class WindowReading {
public:
    WindowReading(const Slices& slices, const ResultReader::Load& load,
                  Vorlan::PepIdentType::EPepIdentType format,
                  const std::vector<RecordPlace>& places)
        : slices_(slices), load_(load), format_(format), places_(places), size_(places.size())
    {
    }

    /// The window is all of this file: no piece needs to be written to read it.
    void IsWhole(const ResultFiles& files) { whole_ = &files; }

    void Read(const ResultReader::OnRecords& onRecords, std::uint64_t firstRecord,
              ResultReading& reading)
    {
        const std::size_t rejectsBefore = reading.rejects.size();
        std::size_t endsInVain = 0;
        while (next_ < places_.size()) {
            if (endsInVain > kMostEndsInVain) {
                throw Failure("no process for reading stays alive: " + reading.restarts.back());
            }
            const std::size_t before = next_;
            Child child([this](Channel& way) { WorkInChild(way); });
            const bool isInPiece = Follow(child.Way(), onRecords, firstRecord, reading);
            const ChildEnd end = child.Wait();
            if (!end.isWell || next_ < places_.size()) {
                AfterEnd(end, isInPiece, firstRecord, reading);
            }
            endsInVain = next_ > before ? 0 : endsInVain + 1;
        }
        if (reading.rejects.size() == rejectsBefore && !lastPieceFault_.empty()) {
            reading.inPieces = lastPieceFault_;
        }
    }

private:
    // ---- In the child ----

    void WorkInChild(Channel& way)
    {
        while (next_ < places_.size()) {
            size_ = std::min(size_, places_.size() - next_);
            way.Send(BeginPiece, std::to_string(size_));
            try {
                TryPiece(way);
            } catch (const Failure& error) {
                way.Send(Refuse, error.what());
                return;
            }
        }
    }

    /// Reads a piece and sends its records, or sends why not. Afterwards next_ and
    /// size_ say what comes next.
    void TryPiece(Channel& way)
    {
        std::vector<Record> records;
        try {
            const bool isWhole = whole_ != nullptr && size_ == places_.size();
            load_(format_, isWhole ? *whole_ : slices_.Write(places_, next_, next_ + size_),
                  records);
            if (records.size() == size_) {
                Send(way, records, size_);
                size_ *= 2;
                return;
            }
            throw ReadingFault(ReadingFault::Kind::Whole,
                               fmt::format("expected {} records, as counted before, but {} were "
                                           "read: the file was changed, or cannot be read to its "
                                           "end",
                                           size_, records.size()));
        } catch (const ReadingFault& fault) {
            const bool isAtRecord = fault.What() == ReadingFault::Kind::AtRecord;
            Fail(way, fault.what(), records,
                 isAtRecord && records.size() < size_ ? records.size() : 0);
        } catch (const std::bad_alloc&) {
            Fail(way, "out of memory", records, 0);
        }
    }

    void Fail(Channel& way, const std::string& reason, const std::vector<Record>& records,
              std::size_t good)
    {
        if (size_ == 1) {
            way.Send(RejectNext, reason);
            ++next_;
            return;
        }
        way.Send(PieceFault, reason);
        Send(way, records, good);
        size_ = good > 0 ? 1 : size_ / 2;
    }

    void Send(Channel& way, const std::vector<Record>& records, std::size_t count)
    {
        for (std::size_t begin = 0; begin < count; begin += kRecordsInMessage) {
            way.Send(SomeRecords,
                     BytesOf(records, begin, std::min(count, begin + kRecordsInMessage)));
        }
        next_ += count;
    }

    // ---- In the host ----

    /// Takes what the child tells until it ends. Gives whether it ended while the
    /// library was reading.
    bool Follow(Channel& way, const ResultReader::OnRecords& onRecords, std::uint64_t firstRecord,
                ResultReading& reading)
    {
        bool isInPiece = false;
        Channel::Message message;
        while (way.Receive(message)) {
            isInPiece = message.type == BeginPiece;
            if (message.type == BeginPiece) {
                size_ = std::stoul(message.bytes);
            } else if (message.type == SomeRecords) {
                std::vector<Record> records;
                AppendRecords(message.bytes, records);
                next_ += records.size();
                hasFailedAlone_ = false; // that was another record
                reading.records += records.size();
                size_ = std::max<std::size_t>(1, size_ - std::min(size_, records.size()));
                onRecords(std::move(records));
            } else if (message.type == RejectNext) {
                Reject(firstRecord, message.bytes, reading);
            } else if (message.type == Refuse) {
                throw Failure(message.bytes);
            } else {
                lastPieceFault_ = message.bytes;
            }
        }
        return isInPiece;
    }

    void Reject(std::uint64_t firstRecord, const std::string& reason, ResultReading& reading)
    {
        const RecordPlace& place = places_[next_];
        reading.rejects.push_back(
            {firstRecord + next_, place.line, slices_.SpectrumAt(place), reason});
        ++next_;
    }

    /// The child came to no end of its work.
    void AfterEnd(const ChildEnd& end, bool isInPiece, std::uint64_t firstRecord,
                  ResultReading& reading)
    {
        const std::string printed = WithoutProgress(end.printed);
        const std::string reason = fmt::format("the reader {}{}{}", end.isWell ? "ended" : end.text,
                                               printed.empty() ? "" : ": ", OneLine(printed));
        if (isInPiece && size_ == 1 && hasFailedAlone_) {
            Reject(firstRecord, reason, reading);
            hasFailedAlone_ = false;
            return;
        }
        // A record that stands alone gets a second try: the end may have come from
        // outside.
        hasFailedAlone_ = isInPiece && size_ == 1;
        reading.restarts.push_back(reason);
        size_ = std::max<std::size_t>(1, size_ / 2);
    }

    const Slices& slices_;
    const ResultReader::Load& load_;
    Vorlan::PepIdentType::EPepIdentType format_;
    const std::vector<RecordPlace>& places_;
    const ResultFiles* whole_ = nullptr;
    std::size_t next_ = 0; ///< record to be read next
    std::size_t size_;     ///< records of the next piece
    bool hasFailedAlone_ = false;
    std::string lastPieceFault_;
};

} // namespace

ResultReader::ResultReader(ScratchFolder& scratch) : ResultReader(scratch, LoadRecords, Window{}) {}

ResultReader::ResultReader(ScratchFolder& scratch, Load load, Window window)
    : scratch_(scratch), load_(std::move(load)), window_(window)
{
}

ResultReading ResultReader::Read(Vorlan::PepIdentType::EPepIdentType format,
                                 const ResultFiles& files, const OnRecords& onRecords)
{
    ResultReading reading;
    const std::string folder = scratch_.PathOf(std::to_string(read_++));
    std::filesystem::create_directory(folder);
    const Slices slices(format, files, folder);
    std::vector<RecordPlace> places;
    std::uint64_t bytes = 0;
    std::uint64_t done = 0;
    const auto readWindow = [&](bool isWhole) {
        WindowReading window(slices, load_, format, places);
        if (isWhole) {
            window.IsWhole(files);
        }
        window.Read(onRecords, done, reading);
        done += places.size();
        places.clear();
        bytes = 0;
    };
    AuditResult(format, files, [&](const RecordPlace& place) {
        if (bytes > 0
            && (bytes + place.end - place.begin > window_.bytes
                || places.size() == window_.records)) {
            readWindow(false);
        }
        places.push_back(place);
        bytes += place.end - place.begin;
    });
    if (places.empty()) {
        return reading;
    }
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(files.path, error);
    readWindow(done == 0 && !error && size <= 2 * window_.bytes);
    std::filesystem::remove_all(folder, error);
    return reading;
}

} // namespace pelgrin
