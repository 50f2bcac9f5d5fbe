#include "TulkParam.h"

#include "param/ParameterReader.h"

namespace Vorlan {

std::vector<IdentModification> CSearchParam::getSpecifiedMod() const
{
    std::vector<IdentModification> mods = vFixedMods;
    mods.insert(mods.end(), vVarMods.begin(), vVarMods.end());
    return mods;
}

CTulkParam::CTulkParam() = default;

CTulkParam::~CTulkParam()
{
    clear_();
}

CTulkParam& CTulkParam::instance_()
{
    static CTulkParam* const instance = new CTulkParam; // never freed
    return *instance;
}

const CTulkParam* CTulkParam::getInstance()
{
    return &instance_();
}

const CTulkParam* CTulkParam::readFromFile(const OpenMS::String& path)
{
    instance_().readFromFile_(path);
    return &instance_();
}

void CTulkParam::readFromFile_(const OpenMS::String& path)
{
    // The path may lie in a group that goes.
    const OpenMS::String file = path; // NOLINT(performance-unnecessary-copy-initialization)
    clear_();
    cInitFile_.Load(file);
    pSearchParam_ = std::make_unique<CSearchParam>();
    const CModificationsDB& database = ReadSearch(cInitFile_, *pSearchParam_);
    pFdrControlParam_ = std::make_unique<CFdrControlParam>();
    ReadFdrControl(cInitFile_, *pFdrControlParam_);
    pLocalizeParam_ = std::make_unique<CLocalizeParam>();
    ReadLocalize(cInitFile_, database, *pLocalizeParam_);
    pAnnotateParam_ = std::make_unique<CAnnotateParam>();
    ReadAnnotate(cInitFile_, pLocalizeParam_->bLocalize, *pAnnotateParam_);
    strOutputPath_ = ReadOutput(cInitFile_);
}

void CTulkParam::clear_()
{
    pSearchParam_.reset();
    pFdrControlParam_.reset();
    pLocalizeParam_.reset();
    pAnnotateParam_.reset();
    strOutputPath_.clear();
}

OpenMS::String CTulkParam::ParamError(OpenMS::String key, OpenMS::String section)
{
    return ParameterPlace(key, section);
}

} // namespace Vorlan
