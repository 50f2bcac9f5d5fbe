// What may stand in a file that the library reads otherwise than its user expects.
#ifndef PELGRIN_RULES_H
#define PELGRIN_RULES_H

#include <cstddef>
#include <optional>
#include <string_view>

namespace pelgrin {

/// The rules, in the order of reports.
enum class Rule : std::size_t {
    // Lines of any text.
    ByteOrderMark,
    LongLine,
    NulByte,
    LoneReturn,
    // Names of MGF records.
    SharedTitle,
    SharedFirstWord,
    SharedDottedName,
    SharedScanName,
    SharedAcrossKinds,
    CutScan,
    OddScan,
    NoTitle,
    EmptyTitle,
    OtherTLine,
    OtherBLine,
    // MGF records.
    OtherELine,
    NoPeaks,
    NoEnd,
    NoPepmass,
    NoCharge,
    NoTime,
    NoScan,
    BadValue,
    ValueList,
    NegativeCharge,
    LineInFront,
    IndentedLine,
    KeySpelling,
    IndentedPeak,
    // Peaks of MGF and DTA files.
    BlankPeakLine,
    BadPeakLine,
    NoIntensity,
    DecimalComma,
    // DTA files.
    DtaPrecursor,
    DtaEmptyLine,
    DtaPeaks,
    NotParsed,
    // FASTA files.
    FastaNoHeader,
    FastaTab,
    FastaEmptyAccession,
    FastaRepeatedAccession,
    FastaDescription,
    FastaNoResidues,
    FastaLowerCase,
    FastaOtherCharacter,
    // Tables of results.
    MissingColumn,
    ColumnSpelling,
    EmptyLineEnds,
    ShortRow,
    QuotedCell,
    NumberEndsReading,
    NumberInPart,
    ListLength,
    HighScoreBetter,
    DatasetDots,
    MsgfNoScan,
    MsgfProtein,
    MsgfMass,
    MaxQuantDecoy,
    MaxQuantIds,
    MaxQuantRows,
    MaxQuantNoPeptides,
    PFind3Separator,
    PFind3NoProtein,
    PFind3Name,
    PFind28NoSearch,
    PFind28Place,
    PFind28Blank,
    SequestPlace,
    SequestBlank,
    SequestTab,
    // pepXML.
    XmlBroken,
    XmlNameBegins,
    XmlArrow,
    XmlTagCut,
    XmlComment,
    XmlDoctype,
    XmlSingleQuotes,
    XmlEntity,
    FurtherRun,
    FurtherHit,
    FurtherProtein,
    QueryWithoutHit,
    QueryName,
    TerminalMass,
    SearchScore,
    ModifiedPosition,
    // Modification tables.
    TableFields,
    TermSpecificity,
};
constexpr std::size_t kRules = static_cast<std::size_t>(Rule::TermSpecificity) + 1;

struct RuleTexts {
    const char* id;        ///< "shared_title", as in reports and JSON
    const char* text;      ///< what happens
    const char* behaviour; ///< of docs/behaviour.md, such as "B-13"; may be empty
    const char* remedy;    ///< what "pelgrin prepare" makes of it
};

const RuleTexts& TextsOf(Rule rule);

/// The rule of an id.
std::optional<Rule> RuleOf(std::string_view id);

} // namespace pelgrin

#endif // PELGRIN_RULES_H
