// Unimod XML: umod:unimod > umod:modifications > umod:mod > umod:specificity and
// umod:delta; the neutral losses stand inside the specificity.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ModificationDB.h"
#include "XmlDocument.h"
#include "moddb/Loading.h"
#include "moddb/ModificationTable.h"
#include "util/Console.h"
#include "util/Numbers.h"
#include "util/XmlAccess.h"

namespace Vorlan {

namespace {

/// Calls take(child) for the child elements of this tag, in order.
template <typename Take>
void ForEachChild(const CXmlElement& element, std::string_view name, Take take)
{
    for (CXmlNode* node : element.cNodes()) {
        CXmlElement* const child = XmlAccess::ElementOf(node);
        if (child != nullptr && child->strValue() == name) {
            take(*child);
        }
    }
}

std::string WithArrow(std::string_view escaped)
{
    std::string name(escaped);
    constexpr std::string_view kEscaped = "-&gt;";
    const std::size_t place = name.find(kEscaped);
    if (place != std::string::npos) {
        name.replace(place, kEscaped.size(), "->"); // Deliberate: B-41. Only the first.
    }
    return name;
}

using Masses = std::array<std::string_view, 2>;

/// The texts of the monoisotopic and the average mass.
Masses MassesOf(const CXmlElement& element)
{
    return XmlAccess::Attributes(element, Masses{"mono_mass", "avge_mass"});
}

void SetNeutralLoss(CResidueModification& record, const CXmlElement& specificity)
{
    bool found = false;
    ForEachChild(specificity, "umod:NeutralLoss", [&](const CXmlElement& loss) {
        const auto [mono, average] = MassesOf(loss);
        const double mass = found ? 0.0 : numbers::ToDouble(mono);
        if (mass > 0.0) {
            found = true;
            record.setNeutralLossMonoMass(mass);
            record.setNeutralLossAverageMass(numbers::ToDouble(average));
        }
    });
}

void AppendRecords(const CXmlElement& mod, std::vector<CResidueModification>& records)
{
    using Texts = std::array<std::string_view, 3>;
    const CXmlElement* const delta = XmlAccess::FirstChild(mod, "umod:delta");
    if (delta == nullptr) {
        return;
    }
    const auto [title, fullName, recordId] =
        XmlAccess::Attributes(mod, Texts{"title", "full_name", "record_id"});
    const auto [mono, average] = MassesOf(*delta);
    CResidueModification common;
    common.setId(WithArrow(title));
    common.setFullName(WithArrow(fullName));
    common.setUniModAccession("UniMod:" + std::string(recordId));
    common.setDiffMonoMass(numbers::ToDouble(mono));
    common.setDiffAverageMass(numbers::ToDouble(average));
    ForEachChild(mod, "umod:specificity", [&](const CXmlElement& specificity) {
        const auto [site, position, classification] =
            XmlAccess::Attributes(specificity, Texts{"site", "position", "classification"});
        CResidueModification record = common;
        record.setOrigin(std::string(site));
        record.setTermSpecificity(std::string(position));
        record.setSourceClassification(std::string(classification));
        SetNeutralLoss(record, specificity);
        records.push_back(std::move(record));
    });
}

/// "Oxidation (M)", "Acetyl (Any N-term K)", "Acetyl (Protein N-term)".
std::string FullIdOf(const CResidueModification& record)
{
    std::string site = record.getOrigin();
    if (record.getTermSpecificity() != CResidueModification::ANYWHERE) {
        const std::string term = record.getTermSpecificityName(record.getTermSpecificity());
        site = site.size() == 1 ? term + " " + site : term;
    }
    return record.getId() + " (" + site + ")";
}

/// Appends the records of the file, without full ids.
void ReadUnimod(const std::string& path, std::vector<CResidueModification>& records)
{
    CXmlDocument document;
    document.ParseFile(path);
    const CXmlElement* const mods = XmlAccess::FirstChild(document.cRoot(), "umod:modifications");
    if (mods == nullptr) {
        return;
    }
    std::size_t count = 0; // room at once: records are large
    ForEachChild(*mods, "umod:mod", [&count](const CXmlElement& mod) {
        ForEachChild(mod, "umod:specificity", [&count](const CXmlElement&) { ++count; });
    });
    records.reserve(count);
    ForEachChild(*mods, "umod:mod",
                 [&records](const CXmlElement& mod) { AppendRecords(mod, records); });
}

} // namespace

CModificationsDBUnimod* CModificationsDBUnimod::dbum_ = nullptr;

CModificationsDBUnimod::CModificationsDBUnimod(const std::string& path)
{
    readFromUnimodXMLFile(path);
}

CModificationsDBUnimod::~CModificationsDBUnimod() = default;

CModificationsDBUnimod* CModificationsDBUnimod::getInstance()
{
    return getInstance("CHEMISTRY\\unimod.xml");
}

CModificationsDBUnimod* CModificationsDBUnimod::getInstance(const std::string& path)
{
    // One thread makes it while others wait; where that throws, the next call tries
    // again. Deliberate: B-45
    static CModificationsDBUnimod* const instance = dbum_ = new CModificationsDBUnimod(path);
    return instance;
}

void CModificationsDBUnimod::readFromUnimodXMLFile(const std::string& path)
{
    try {
        AddWhatIsRead([&path](Records& records) { ReadUnimod(path, records); },
                      [this](Records records) { addModifications_(std::move(records), 0); });
    } catch (const CXmlException& error) {
        // Deliberate: B-43
        console::Print(console::Stream::Err, std::string(error.szWhat()) + "\n");
        return;
    }
    for (CResidueModification* const record : waitingModifications_()) {
        record->setFullId(FullIdOf(*record));
    }
    addModifications_({}, BY_EVERY_NAME);
    std::string origins;
    for (const CResidueModification* const record : modifications_()) {
        if (record->getTermSpecificity() != CResidueModification::ANYWHERE) {
            origins += record->getOrigin();
        }
    }
    console::Print(console::Stream::Out, origins); // Deliberate: B-42
}

} // namespace Vorlan
