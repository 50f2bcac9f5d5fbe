// The host's own look at a FASTA file: what the library passes over in silence.
//
// The library takes a file without headers for an empty database, drops every
// character of a sequence line but the letters A to Z, and reads lines that end
// in a carriage return alone as one line.
#ifndef PELGRIN_FASTAAUDIT_H
#define PELGRIN_FASTAAUDIT_H

#include <cstdint>
#include <string>

namespace pelgrin {

struct FastaAudit {
    std::uint64_t headers = 0;        ///< lines that begin with ">"
    std::uint64_t residues = 0;       ///< upper-case letters of sequence lines
    std::uint64_t lowerCase = 0;      ///< lower-case letters of sequence lines
    std::uint64_t firstLowerCase = 0; ///< line of the first one; 0 none
    std::uint64_t others = 0; ///< what else is dropped there, blanks apart: "*", "-", digits
};

/// Throws Failure, with file and line, for a file that cannot be read, has no
/// header in its first line, or has a carriage return inside a line.
FastaAudit AuditFasta(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_FASTAAUDIT_H
