// The forms of titles in MGF files, by the programs that write them.
#ifndef PELGRIN_MGFTITLES_H
#define PELGRIN_MGFTITLES_H

#include <cstddef>
#include <string_view>

namespace pelgrin {

enum class TitleForm : std::size_t {
    Empty,
    Tpp,              ///< run.5.5.2 File:"run.raw", NativeID:"... scan=5"
    Thermo,           ///< controllerType=0 controllerNumber=1 scan=5
    FileConverter,    ///< 617.3_5000.1_controllerType=0 controllerNumber=1 scan=5_run
    PParse,           ///< run.5.5.2.0.dta
    DottedWithCharge, ///< run.5.5.2
    Dotted,           ///< run.5.5
    Distiller,        ///< 1: Scan 73 (rt=10.7878, f=3, i=1) [run.raw]
    Cmpd,             ///< Cmpd 636, +MSn(730.3981), 66.9 min
    ProteinPilot,     ///< File: a, Sample: b (sample number 1), ...
    NativeId,         ///< scan=5
    Other,
};
constexpr std::size_t kTitleForms = 12;

/// The key in JSON, such as "pparse".
const char* KeyOf(TitleForm form);
/// The words of the report.
const char* TextOf(TitleForm form);

/// Of what stands behind "TITLE=".
TitleForm FormOf(std::string_view title);

} // namespace pelgrin

#endif // PELGRIN_MGFTITLES_H
