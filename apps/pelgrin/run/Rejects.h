// What could not be read of the result files, and why.
#ifndef PELGRIN_REJECTS_H
#define PELGRIN_REJECTS_H

#include <cstdint>
#include <string>
#include <vector>

namespace pelgrin {

struct RejectedPart {
    std::string file;
    std::uint64_t line = 0; ///< 0: the whole file, or unknown
    std::string spectrum;   ///< empty when it cannot be seen
    std::string reason;
    bool isFile = false;       ///< nothing of the file was read
    std::uint64_t records = 1; ///< that are lost; of a file what it holds

    /// "psms.txt:12: spectrum "...": reason" as one line.
    std::string Text() const;
};

struct Rejects {
    std::vector<RejectedPart> parts; ///< by file and line, in the order of the inputs
    /// "psms.txt: the reader ended by signal 9 (Killed)", for each restart.
    std::vector<std::string> restarts;
    /// "psms.pep.xml: reason" of files that were read in pieces.
    std::vector<std::string> inPieces;

    /// The text of rejects.tsv: a header line, and one line for each part.
    std::string Table() const;
    /// Warns of the first ones and tells where all are.
    void Warn(const std::string& place) const;
};

} // namespace pelgrin

#endif // PELGRIN_REJECTS_H
