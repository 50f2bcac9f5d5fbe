// Proteins as UniProt writes them, made up.
#ifndef PELGRIN_BENCH_PROTEINS_H
#define PELGRIN_BENCH_PROTEINS_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace bench {

/// Writes a FASTA file of so many proteins: headers of about 90 characters, 100 to
/// 800 residues each, as frequent as they are in proteins, 60 a line. Gives the
/// number of residues.
std::uint64_t WriteProteins(const std::string& path, std::size_t count);

} // namespace bench

#endif // PELGRIN_BENCH_PROTEINS_H
