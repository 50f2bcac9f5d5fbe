// Records and spectra as bytes, for the way from a child process to the host.
#ifndef PELGRIN_RECORDBYTES_H
#define PELGRIN_RECORDBYTES_H

#include <cstddef>
#include <string>
#include <vector>

#include "DataStructures.h"

namespace pelgrin {

/// Records begin to end - 1. Every field goes the way, whatever it holds.
std::string BytesOf(const std::vector<Vorlan::PeptideIdentification>& records, std::size_t begin,
                    std::size_t end);
/// Appends the records that BytesOf made bytes of.
void AppendRecords(const std::string& bytes, std::vector<Vorlan::PeptideIdentification>& records);

/// A spectrum without matches and hash table: one that was only read.
std::string BytesOf(const Vorlan::Spectrum& spectrum);
Vorlan::Spectrum SpectrumOf(const std::string& bytes);

} // namespace pelgrin

#endif // PELGRIN_RECORDBYTES_H
