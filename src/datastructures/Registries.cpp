// The seven registries. All maps stand in this one file, so that they are built
// together and no order of static initialisation between files can matter.
#include "DataStructures.h"

#include <algorithm>

#include "util/LetterCase.h"

namespace Vorlan {

namespace {

bool EqualNoCase(const std::string& a, const std::string& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToUpperAscii(x) == ToUpperAscii(y); });
}

template <typename Value>
OpenMS::String NameOf(const std::map<Value, OpenMS::String>& names, Value value)
{
    const auto entry = names.find(value);
    return entry == names.end() ? OpenMS::String() : entry->second;
}

template <typename Value>
Value ValueOf(const std::map<Value, OpenMS::String>& names, const OpenMS::String& name)
{
    const auto entry = std::find_if(names.begin(), names.end(), [&name](const auto& candidate) {
        return EqualNoCase(candidate.second, name);
    });
    return entry == names.end() ? static_cast<Value>(0) : entry->first;
}

} // namespace

// ---- DatasetType ---------------------------------------------------------

std::map<DatasetType::EDatasetType, OpenMS::String> DatasetType::initializeMap_()
{
    return {{Unknown, "unknown"}, {Dta, "dta"}, {Mgf, "mgf"}, {MzXml, "mzXML"}, {MzMl, "mzML"}};
}

const std::map<DatasetType::EDatasetType, OpenMS::String> DatasetType::mapNames_ =
    DatasetType::initializeMap_();

OpenMS::String DatasetType::typeToName(EDatasetType value)
{
    return NameOf(mapNames_, value);
}

DatasetType::EDatasetType DatasetType::nameToType(const OpenMS::String& name)
{
    return ValueOf(mapNames_, name);
}

// ---- FdrEstimateType -----------------------------------------------------

std::map<FdrEstimateType::EFdrEstimateType, OpenMS::String> FdrEstimateType::initializeMap_()
{
    return {{Unknown, "unknown"},
            {Global, "global"},
            {Separate, "separate"},
            {Transferred, "transferred"}};
}

const std::map<FdrEstimateType::EFdrEstimateType, OpenMS::String> FdrEstimateType::mapNames_ =
    FdrEstimateType::initializeMap_();

OpenMS::String FdrEstimateType::typeToName(EFdrEstimateType value)
{
    return NameOf(mapNames_, value);
}

FdrEstimateType::EFdrEstimateType FdrEstimateType::nameToType(const OpenMS::String& name)
{
    return ValueOf(mapNames_, name);
}

// ---- FragMethodType ------------------------------------------------------

std::map<FragMethodType::EFragType, OpenMS::String> FragMethodType::initializeMap_()
{
    return {{Unknown, "unknown"}, {CidHcd, "CID/HCD"}, {Etd, "ETD"}};
}

const std::map<FragMethodType::EFragType, OpenMS::String> FragMethodType::mapNames_ =
    FragMethodType::initializeMap_();

OpenMS::String FragMethodType::typeToName(EFragType value)
{
    return NameOf(mapNames_, value);
}

FragMethodType::EFragType FragMethodType::nameToType(const OpenMS::String& name)
{
    return ValueOf(mapNames_, name);
}

// ---- PepIdentType --------------------------------------------------------

std::map<PepIdentType::EPepIdentType, OpenMS::String> PepIdentType::initializeMap_()
{
    return {{Unknown, "unknown"},
            {Pfind28Txt, "pFind 2.8 (.txt)"},
            {PBuildCsv, "pBuild_CSV"},
            {MsFraggerPepXml, "MSFragger (.pepXML)"},
            {SequestTxt, "Sequest (.txt)"},
            {MascotDat, "Mascot_dat"},
            {MascotPepXml, "Mascot_PepXML"},
            {MaxQuant, "MaxQuant"},
            {XTandem, "X!Tandem"},
            {CalvexTxt, "Calvex (.txt)"},
            {Pfind3Spectra, "pFind 3 (.spectra)"},
            {MsgfTsv, "MSGF (.tsv)"},
            {CometPepXml, "Comet (.pep.xml)"}};
}

const std::map<PepIdentType::EPepIdentType, OpenMS::String> PepIdentType::mapNames_ =
    PepIdentType::initializeMap_();

OpenMS::String PepIdentType::typeToName(EPepIdentType value)
{
    return NameOf(mapNames_, value);
}

PepIdentType::EPepIdentType PepIdentType::nameToType(const OpenMS::String& name)
{
    return ValueOf(mapNames_, name);
}

// ---- SearchEngineType ----------------------------------------------------

std::map<SearchEngineType::ESearchEngineType, OpenMS::String> SearchEngineType::initializeMap_()
{
    // Deliberate: B-02. Other numbers than PepIdentType, and "Maxquant".
    return {{Unknown, "unknown"},
            {Pfind28Txt, "pFind 2.8 (.txt)"},
            {Pfind3Spectra, "pFind 3 (.spectra)"},
            {MsFraggerPepXml, "MSFragger (.pepXML)"},
            {Mascot, "Mascot"},
            {SequestTxt, "Sequest (.txt)"},
            {MaxQuant, "Maxquant"},
            {XTandem, "X!Tandem"},
            {CalvexTxt, "Calvex (.txt)"},
            {MsgfTsv, "MSGF (.tsv)"},
            {CometPepXml, "Comet (.pep.xml)"}};
}

const std::map<SearchEngineType::ESearchEngineType, OpenMS::String> SearchEngineType::mapNames_ =
    SearchEngineType::initializeMap_();

OpenMS::String SearchEngineType::typeToName(ESearchEngineType value)
{
    return NameOf(mapNames_, value);
}

SearchEngineType::ESearchEngineType SearchEngineType::nameToType(const OpenMS::String& name)
{
    return ValueOf(mapNames_, name);
}

// ---- TdFdrType -----------------------------------------------------------

std::map<TdFdrType::ETdFdrType, OpenMS::String> TdFdrType::initializeMap_()
{
    return {{Unknown, "unknown"},
            {DecoyByTarget, "decoy/target"},
            {DecoyPlusOneByTarget, "(decoy+1)/target"}};
}

const std::map<TdFdrType::ETdFdrType, OpenMS::String> TdFdrType::mapNames_ =
    TdFdrType::initializeMap_();

OpenMS::String TdFdrType::typeToName(ETdFdrType value)
{
    return NameOf(mapNames_, value);
}

TdFdrType::ETdFdrType TdFdrType::nameToType(const OpenMS::String& name)
{
    return ValueOf(mapNames_, name);
}

// ---- TolType -------------------------------------------------------------

std::map<TolType::ETolType, OpenMS::String> TolType::initializeMap_()
{
    return {{Unknown, "unknown"}, {Da, "Da"}, {Ppm, "ppm"}};
}

const std::map<TolType::ETolType, OpenMS::String> TolType::mapNames_ = TolType::initializeMap_();

OpenMS::String TolType::typeToName(ETolType value)
{
    return NameOf(mapNames_, value);
}

TolType::ETolType TolType::nameToType(const OpenMS::String& name)
{
    return ValueOf(mapNames_, name);
}

} // namespace Vorlan
