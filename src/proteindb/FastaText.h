// What the two readers of FASTA files share.
#ifndef VORLAN_PROTEINDB_FASTATEXT_H
#define VORLAN_PROTEINDB_FASTATEXT_H

#include <string_view>

namespace Vorlan::fasta {

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

inline constexpr std::string_view kNoHeader =
    "FASTA Format error!One Protein Entry must start with char '>'!\n";

inline bool BeginsEntry(std::string_view line)
{
    return !line.empty() && line.front() == '>';
}

/// Other characters of a sequence line are dropped. Deliberate: B-76.
inline bool IsResidue(char c)
{
    return c >= 'A' && c <= 'Z';
}

} // namespace Vorlan::fasta

#endif // VORLAN_PROTEINDB_FASTATEXT_H
