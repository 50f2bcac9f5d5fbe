#include "support/Proteins.h"

#include <fstream>

#include "support/Inputs.h"

namespace bench {

namespace {

/// Each residue as often as it is met among 100, roughly.
constexpr char kResidues[] = "AAAAAAAACDDDDDEEEEEEEFFFFGGGGGGGHHIIIIIIKKKKKKLLLLLLLLLLMMNNNN"
                             "PPPPPQQQQRRRRRRSSSSSSSTTTTTVVVVVVVWYYY";
constexpr std::size_t kLineLength = 60;

void AppendHeader(std::string& text, Random& random)
{
    constexpr const char* kFamilies[] = {"Serine/threonine-protein kinase", "Zinc finger protein",
                                         "Probable ATP-dependent helicase",
                                         "Ubiquitin carboxyl-terminal hydrolase"};
    const std::string number = std::to_string(random.Between(10000, 99999));
    text.append(">sp|P").append(number).append("|GN").append(number).append("_HUMAN ");
    text.append(kFamilies[random.Between(0, 3)]).append(" ").append(number);
    text.append(" OS=Homo sapiens OX=9606 GN=GN").append(number).append(" PE=1 SV=2\n");
}

void AppendSequence(std::string& text, Random& random, std::size_t length)
{
    constexpr std::size_t kNumber = sizeof kResidues - 1;
    for (std::size_t i = 1; i <= length; ++i) {
        text += kResidues[random.Between(0, kNumber - 1)];
        if (i % kLineLength == 0 || i == length) {
            text += '\n';
        }
    }
}

} // namespace

std::uint64_t WriteProteins(const std::string& path, std::size_t count)
{
    Random random(10);
    std::ofstream file(path, std::ios::binary);
    std::uint64_t residues = 0;
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t length = random.Between(100, 800);
        text.clear();
        AppendHeader(text, random);
        AppendSequence(text, random, length);
        file << text;
        residues += length;
    }
    return residues;
}

} // namespace bench
