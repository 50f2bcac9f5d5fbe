// The Unimod database against its rules, written out with the questions that
// the XML model answers by number, and everything that it prints.
//
// The input is a document. An exception for an unknown position is expected,
// any other end is a finding.
#include <cstdint>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>

#include "FuzzSupport.h"
#include "ModificationDB.h"
#include "PlainModifications.h"
#include "XmlDocument.h"

namespace {

using namespace Vorlan;
using Mods = std::vector<CResidueModification>;

constexpr auto kAny = CResidueModification::NUMBER_OF_TERM_SPECIFICITY;

class UnimodProbe : public CModificationsDBUnimod {
public:
    explicit UnimodProbe(const std::string& path) : CModificationsDBUnimod(path) {}
};

/// Takes what is printed while it lives.
class Captured {
public:
    Captured() : out_(std::cout.rdbuf(outText_.rdbuf())), err_(std::cerr.rdbuf(errText_.rdbuf())) {}
    ~Captured()
    {
        std::cout.rdbuf(out_);
        std::cerr.rdbuf(err_);
    }
    std::string Out() const { return outText_.str(); }
    std::string Err() const { return errText_.str(); }

private:
    std::ostringstream outText_;
    std::ostringstream errText_;
    std::streambuf* out_;
    std::streambuf* err_;
};

/// Everything that a load leaves behind.
struct Outcome {
    Mods mods;
    std::string out;
    std::string err;
    std::string exception;
};

// ---- The plain loader -----------------------------------------------------

std::string WithArrow(std::string name)
{
    const std::size_t arrow = name.find("-&gt;");
    return arrow == std::string::npos ? name
                                      : name.substr(0, arrow) + "->" + name.substr(arrow + 5);
}

CResidueModification PlainRecord(CXmlElement& mod, CXmlElement& specificity)
{
    CXmlElement& delta = *mod.pItem("umod:delta", 0);
    CResidueModification record;
    record.setId(WithArrow(mod["title"]));
    record.setFullName(WithArrow(mod["full_name"]));
    record.setUniModAccession("UniMod:" + mod["record_id"]);
    record.setOrigin(specificity["site"]);
    record.setTermSpecificity(specificity["position"]);
    record.setSourceClassification(OpenMS::String(specificity["classification"]));
    record.setDiffMonoMass(fuzz::Number(delta["mono_mass"]));
    record.setDiffAverageMass(fuzz::Number(delta["avge_mass"]));
    for (std::size_t i = 0; i < specificity.tCount("umod:NeutralLoss"); ++i) {
        CXmlElement& loss = *specificity.pItem("umod:NeutralLoss", i);
        if (fuzz::Number(loss["mono_mass"]) > 0.0) {
            record.setNeutralLossMonoMass(fuzz::Number(loss["mono_mass"]));
            record.setNeutralLossAverageMass(fuzz::Number(loss["avge_mass"]));
            break;
        }
    }
    return record;
}

void PlainLoad(const std::string& path, Outcome& outcome)
{
    CXmlDocument document;
    document.ParseFile(path);
    CXmlElement* const list = document.cRoot().pItem("umod:modifications", 0);
    const std::size_t count = list == nullptr ? 0 : list->tCount("umod:mod");
    for (std::size_t i = 0; i < count; ++i) {
        CXmlElement& mod = *list->pItem("umod:mod", i);
        if (mod.pItem("umod:delta", 0) == nullptr) {
            continue;
        }
        for (std::size_t j = 0; j < mod.tCount("umod:specificity"); ++j) {
            outcome.mods.push_back(PlainRecord(mod, *mod.pItem("umod:specificity", j)));
        }
    }
    for (CResidueModification& record : outcome.mods) {
        const std::string term = record.getTermSpecificityName(kAny);
        std::string site = record.getOrigin();
        if (term != "Anywhere") {
            outcome.out += site;
            site = site.size() == 1 ? term + " " + site : term;
        }
        record.setFullId(record.getId() + " (" + site + ")");
    }
}

Outcome PlainOutcome(const std::string& path)
{
    Outcome outcome;
    try {
        PlainLoad(path, outcome);
    } catch (const CXmlException& error) {
        outcome = {};
        outcome.err = std::string(error.szWhat()) + "\n";
    } catch (const OpenMS::Exception::InvalidValue& error) {
        outcome = {};
        outcome.exception = error.what();
    }
    return outcome;
}

// ---- Comparing ------------------------------------------------------------

/// The records under a name: all with this name, in the order of the database.
void CheckName(const CModificationsDB& database, const Mods& mods, const std::string& name)
{
    std::string expected;
    for (const CResidueModification& record : mods) {
        const bool hasName = name == record.getFullId() || name == record.getId()
                             || name == record.getFullName() || name == record.getUniModAccession();
        if (hasName && record.getFullId() != "Oxidation (Protein N-term") {
            expected += fuzz::Dump(record);
        }
    }
    std::set<const CResidueModification*> found;
    database.searchModifications(found, name, "", kAny);
    std::string seen;
    for (const CResidueModification* record : found) {
        seen += fuzz::Dump(*record);
    }
    fuzz::CheckSame(seen, expected, "the records under a name");
}

void CheckDatabase(const CModificationsDB& database, const Mods& mods)
{
    constexpr std::size_t kMostNamed = 20; // each walks over all records
    fuzz::Check(database.getNumberOfModifications() == mods.size(), "the number of records");
    for (std::size_t i = 0; i < mods.size() && i < kMostNamed; ++i) {
        for (const std::string& name : {mods[i].getFullId(), mods[i].getId(), mods[i].getFullName(),
                                        mods[i].getUniModAccession()}) {
            CheckName(database, mods, name);
        }
    }
    std::vector<std::string> seen;
    database.searchModificationsByDiffMonoMass(seen, 16.0, 1.0, "", kAny);
    std::string expected;
    for (const CResidueModification& record : mods) {
        const double error = record.getDiffMonoMass() - 16.0;
        expected += error >= -1.0 && error <= 1.0 ? record.getFullId() + "\n" : "";
    }
    std::string joined;
    for (const std::string& fullId : seen) {
        joined += fullId + "\n";
    }
    fuzz::CheckSame(joined, expected, "the records near a mass");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    file.Write(fuzz::TextOf(data, size));
    const Outcome expected = PlainOutcome(file.Path());
    Outcome seen;
    {
        const Captured captured;
        try {
            const UnimodProbe database(file.Path());
            CheckDatabase(database, expected.mods);
        } catch (const OpenMS::Exception::InvalidValue& error) {
            seen.exception = error.what();
        }
        seen.out = captured.Out();
        seen.err = captured.Err();
    }
    fuzz::CheckSame(seen.exception, expected.exception, "the exception");
    fuzz::CheckSame(seen.out, expected.out, "the text on standard output");
    fuzz::CheckSame(seen.err, expected.err, "the text on standard error");
    return 0;
}
