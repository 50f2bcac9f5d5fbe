// Unimod XML: umod:unimod > umod:modifications > umod:mod > umod:specificity and
// umod:delta; the neutral losses stand inside the specificity.
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ModificationDB.h"
#include "XmlDocument.h"
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

std::string TextOf(const CXmlElement& element, std::string_view attribute)
{
    return std::string(XmlAccess::Attribute(element, attribute));
}

double MassOf(const CXmlElement& element, std::string_view attribute)
{
    return numbers::ToDouble(XmlAccess::Attribute(element, attribute));
}

std::string WithArrow(std::string name)
{
    constexpr std::string_view kEscaped = "-&gt;";
    const std::size_t place = name.find(kEscaped);
    if (place != std::string::npos) {
        name.replace(place, kEscaped.size(), "->"); // Deliberate: B-41. Only the first.
    }
    return name;
}

void SetNeutralLoss(CResidueModification& record, const CXmlElement& specificity)
{
    bool found = false;
    ForEachChild(specificity, "umod:NeutralLoss", [&](const CXmlElement& loss) {
        const double mass = MassOf(loss, "mono_mass");
        if (!found && mass > 0.0) {
            found = true;
            record.setNeutralLossMonoMass(mass);
            record.setNeutralLossAverageMass(MassOf(loss, "avge_mass"));
        }
    });
}

void AppendRecords(const CXmlElement& mod, std::vector<CResidueModification>& records)
{
    const CXmlElement* const delta = XmlAccess::FirstChild(mod, "umod:delta");
    if (delta == nullptr) {
        return;
    }
    CResidueModification common;
    common.setId(WithArrow(TextOf(mod, "title")));
    common.setFullName(WithArrow(TextOf(mod, "full_name")));
    common.setUniModAccession("UniMod:" + TextOf(mod, "record_id"));
    common.setDiffMonoMass(MassOf(*delta, "mono_mass"));
    common.setDiffAverageMass(MassOf(*delta, "avge_mass"));
    ForEachChild(mod, "umod:specificity", [&](const CXmlElement& specificity) {
        CResidueModification record = common;
        record.setOrigin(TextOf(specificity, "site"));
        record.setTermSpecificity(TextOf(specificity, "position"));
        record.setSourceClassification(TextOf(specificity, "classification"));
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

std::vector<CResidueModification> ReadUnimod(const std::string& path)
{
    CXmlDocument document;
    document.ParseFile(path);
    std::vector<CResidueModification> records;
    const CXmlElement* const mods = XmlAccess::FirstChild(document.cRoot(), "umod:modifications");
    if (mods != nullptr) {
        ForEachChild(*mods, "umod:mod",
                     [&records](const CXmlElement& mod) { AppendRecords(mod, records); });
    }
    return records;
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
    if (dbum_ == nullptr) { // Deliberate: B-45
        dbum_ = new CModificationsDBUnimod(path);
    }
    return dbum_;
}

void CModificationsDBUnimod::readFromUnimodXMLFile(const std::string& path)
{
    std::vector<CResidueModification> records;
    try {
        records = ReadUnimod(path);
    } catch (const CXmlException& error) {
        // Deliberate: B-43
        console::Print(console::Stream::Err, std::string(error.szWhat()) + "\n");
        return;
    }
    std::string origins;
    for (CResidueModification& record : records) {
        record.setFullId(FullIdOf(record));
        if (record.getTermSpecificity() != CResidueModification::ANYWHERE) {
            origins += record.getOrigin();
        }
    }
    console::Print(console::Stream::Out, origins); // Deliberate: B-42
    addModifications_(std::move(records), FourNamesOf);
}

} // namespace Vorlan
