// A result file, read by the library in child processes.
//
// An exception, an exit or a crash of a reader is the matter of one record: the
// file is cut at its record borders and halved until that record stands alone.
// All others are kept. Of a large file only a window is read at a time.
#ifndef PELGRIN_RESULTREADER_H
#define PELGRIN_RESULTREADER_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "files/ResultAudit.h"
#include "files/ScratchFolder.h"

namespace pelgrin {

/// A record that its reader did not give.
struct Reject {
    std::uint64_t record = 0; ///< among those of the audit, from 0
    std::uint64_t line = 0;
    std::string spectrum; ///< empty when it cannot be seen
    std::string reason;
};

struct ResultReading {
    std::uint64_t records = 0; ///< that were given
    std::vector<Reject> rejects;
    /// How a reader ended in the middle of its work, for each time that another one
    /// had to go on.
    std::vector<std::string> restarts;
    /// Why the file could not be read as it stands though each record could; empty
    /// when it could, or when a record is to blame.
    std::string inPieces;
};

class ResultReader {
public:
    using Record = Vorlan::PeptideIdentification;
    /// Appends the records of a file, as LoadRecords does.
    using Load = std::function<void(Vorlan::PepIdentType::EPepIdentType, const ResultFiles&,
                                    std::vector<Record>&)>;
    using OnRecords = std::function<void(std::vector<Record>&&)>;

    /// How much of a file a child reads at once.
    struct Window {
        std::uint64_t bytes = std::uint64_t{16} * 1024 * 1024;
        std::size_t records = std::size_t{64} * 1024;
    };

    /// Pieces of files stand in scratch.
    explicit ResultReader(ScratchFolder& scratch);
    ResultReader(ScratchFolder& scratch, Load load, Window window);

    /// Reads the records of a file that was audited, in order. Throws Failure when
    /// the disk is full, the file has gone or no process can be started.
    ResultReading Read(Vorlan::PepIdentType::EPepIdentType format, const ResultFiles& files,
                       const OnRecords& onRecords);

private:
    ScratchFolder& scratch_;
    Load load_;
    Window window_;
    std::uint64_t read_ = 0; ///< files so far: each has its own folder
};

} // namespace pelgrin

#endif // PELGRIN_RESULTREADER_H
