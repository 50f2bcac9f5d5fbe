#include "inspect/SpectraFacts.h"

#include <filesystem>
#include <string_view>

#include "files/DtaAudit.h"
#include "files/XmlTags.h"

namespace pelgrin {

namespace {

namespace fs = std::filesystem;

/// The piece in front of ".dta" when it is a small number; else "not told".
std::string ChargeInName(std::string_view name)
{
    const std::string_view front = name.substr(0, name.size() - 4);
    const std::size_t dot = front.rfind('.');
    const std::string_view piece =
        dot == std::string_view::npos ? std::string_view() : front.substr(dot + 1);
    const bool isCharge = !piece.empty() && piece.size() <= 2
                          && piece.find_first_not_of("0123456789") == std::string_view::npos;
    return isCharge ? std::string(piece) : "not told";
}

/// "mzXML_3.2" at the end of the name space of mzXML.
std::string VersionOfNamespace(std::string_view name)
{
    const std::size_t mark = name.rfind("mzXML_");
    return mark == std::string_view::npos ? std::string() : std::string(name.substr(mark + 6));
}

} // namespace

DtaFacts DtaFactsOf(const std::string& folder)
{
    DtaFacts dta;
    for (const std::string& name : DtaFileNames(folder)) {
        ++dta.files;
        std::error_code error;
        const std::uintmax_t size = fs::file_size(fs::path(folder) / name, error);
        dta.bytes += error ? 0 : size;
        dta.charges.Add(ChargeInName(name));
    }
    return dta;
}

void Tell(const DtaFacts& dta, Facts& facts)
{
    std::vector<Counted> charges = dta.charges.Counts();
    for (Counted& counted : charges) {
        counted.text = "charge " + counted.text;
    }
    facts.push_back({"files", "Files", dta.files});
    facts.push_back({"bytes", "Bytes", dta.bytes});
    facts.push_back({"charges_in_names", "In the names", charges});
}

XmlSpectraFacts XmlSpectraFactsOf(FileKind kind, const std::string& path)
{
    const bool isMzMl = kind == FileKind::MzMl;
    XmlSpectraFacts facts;
    XmlTags tags(path);
    while (tags.Next()) {
        const std::string_view name = tags.Name();
        if (name == (isMzMl ? "spectrum" : "scan")) {
            ++facts.spectra;
        } else if (name == "mzML" && isMzMl) {
            facts.version = tags.Attribute("version");
        } else if (name == "mzXML" && !isMzMl) {
            facts.version = VersionOfNamespace(tags.Attribute("xmlns"));
        }
    }
    return facts;
}

void Tell(const XmlSpectraFacts& spectra, Facts& facts)
{
    if (!spectra.version.empty()) {
        facts.push_back({"version", "Version", spectra.version});
    }
    facts.push_back({"spectra", "Spectra", spectra.spectra});
}

} // namespace pelgrin
