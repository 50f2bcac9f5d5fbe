// Tiny results of every engine, all of the one spectrum of run.mgf.
#ifndef PELGRIN_TESTS_RESULTTEXTS_H
#define PELGRIN_TESTS_RESULTTEXTS_H

#include <string>
#include <vector>

namespace pelgrin::test {

/// Cells joined by tabs, with a line feed.
std::string TabLine(const std::vector<std::string>& cells);

// Headers and rows; each row is a GASK of run.mgf.
extern const std::string kMsgfHeader;
std::string MsgfRow(const std::string& peptide = "K.GASK.A");
extern const std::string kPFind3Header;
std::string PFind3Row(const std::string& modification = "");
extern const std::string kSequestHeader;
std::string SequestRow(const std::string& rank = "1", const std::string& modifications = "");
extern const std::string kMsmsHeader;
std::string MsmsRow(const std::string& modifiedSequence = "_GASK_",
                    const std::string& modifications = "Unmodified");
extern const std::string kPeptidesHeader;
std::string PeptidesRow(const std::string& ids);

/// The head of a file of pFind 2.8, and one section.
extern const std::string kPFind28Head;
std::string PFind28Section(const std::string& modifications = "NO1_Modify_Pos=0\n"
                                                              "NO1_Modify_Name=0\n");
extern const std::string kPFind28NoCandidate;

/// A pepXML file around queries, one query around hits, one hit.
std::string PepXml(const std::string& queries, const std::string& baseName = "/data/run");
std::string Query(const std::string& hits);
std::string Hit(const std::string& inside = "", const std::string& peptide = "GASK");
/// What a hit holds for a modified residue.
std::string Modified(const std::string& position, const std::string& mass);

} // namespace pelgrin::test

#endif // PELGRIN_TESTS_RESULTTEXTS_H
