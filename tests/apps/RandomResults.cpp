#include "RandomResults.h"

#include <algorithm>

#include "HostProgram.h"
#include "ResultTexts.h"
#include "parameters/ReaderParameters.h"

namespace pelgrin::test {

namespace {

using Vorlan::PepIdentType;
using Vorlan::test::Random;
using Vorlan::test::Repeat;

using Strings = std::vector<std::string>;

/// A row whose last cell is longer than the library's lines.
std::string LongRow(std::string row)
{
    return row.insert(row.size() - 1, "\t" + Repeat("x", 81919));
}

Strings RubbishOf(const std::string& row)
{
    return {"\n", "\r\n",         "short\trow\n", "\t\t\n", "\"\"\n", std::string("\0\n", 2),
            row,  "\"\"\t\"\"\n", LongRow(row)};
}

Row RowOf(const char* sequence, const char* modNames, const char* positions)
{
    Row row;
    row.sequence = sequence;
    row.modNames = modNames;
    row.modPositions = positions;
    return row;
}

ResultKind Native()
{
    Row bare;
    bare.protein.clear();
    bare.score = "-0.25";
    const Strings rows = {LineOf(Row()), LineOf(RowOf("GAMK", "Oxidation (M)", "3")), LineOf(bare),
                          LineOf(RowOf("ACMK", "Oxidation (M);Acetyl (N-term)", "3;0"))};
    return {PepIdentType::CalvexTxt, kTableHeader, rows, "", RubbishOf(rows[0])};
}

ResultKind Tables(PepIdentType::EPepIdentType format, const std::string& head, const Strings& rows)
{
    return {format, head, rows, "", RubbishOf(rows[0])};
}

ResultKind PFind28()
{
    const std::string modified =
        PFind28Section("NO1_Modify_Pos=1,3\nNO1_Modify_Name=1,Oxidation (M)\n");
    std::string other = PFind28Section();
    other.replace(other.find("run.1.1.2"), 9, "run.2.2.2");
    std::string bare = PFind28Section();
    bare.replace(bare.find("NO1_Proteins=1,P1"), 17, "NO1_Proteins=0");
    bare.erase(bare.find("NO1_ProteinIDs"),
               bare.find("NO1_Modify_Pos") - bare.find("NO1_ProteinIDs"));
    return {PepIdentType::Pfind28Txt,
            kPFind28Head,
            {PFind28Section(), other, modified, bare, kPFind28NoCandidate},
            "",
            {"\n", "NO1_SQ=GASK\n", "[Spectrum9]\n", "[Search]\n",
             "[Spectrum3]\n" + Repeat("x", 81920) + "\n"}};
}

ResultKind OfPepXml(PepIdentType::EPepIdentType format)
{
    const std::string document = PepXml("");
    const std::size_t middle = document.find("</msms_run_summary>");
    const std::string bareHit = "<search_hit peptide=\"AR\"/>\n";
    const std::string bareQuery =
        "<spectrum_query><search_result>" + bareHit + "</search_result></spectrum_query>";
    std::string inOneLine = Query(Hit(Modified("3", "167.0")));
    inOneLine.erase(std::remove(inOneLine.begin(), inOneLine.end(), '\n'), inOneLine.end());
    return {format,
            document.substr(0, middle),
            {Query(Hit()), Query(""), Query(Hit() + Hit("", "AAAK")), bareQuery, inOneLine,
             Query(Hit("<alternative_protein protein=\"P2->P3\"/>\n")),
             Query("</search_result>\n<search_result>\n" + Hit()),
             Query(Hit(Modified("3", "147.0354"), "GAMK")), "<!-- a <spectrum_query> -->\n",
             "<spectrum_query/>\n"},
            document.substr(middle),
            {Hit(), "</msms_run_summary>\n<msms_run_summary base_name=\"b\">\n",
             "<other a=\"x\"><search_hit/></other>\n", "<search_hit>", "</spectrum_query>", "<<",
             "<![CDATA[<search_hit>]]>"}};
}

} // namespace

const std::vector<ResultKind>& ResultKinds()
{
    static const std::vector<ResultKind> kinds = {
        Native(),
        OfPepXml(PepIdentType::CometPepXml),
        OfPepXml(PepIdentType::MsFraggerPepXml),
        Tables(PepIdentType::MsgfTsv, kMsgfHeader,
               {MsgfRow(), MsgfRow("K.GAM+15.995K.A"), MsgfRow("AAAK")}),
        Tables(PepIdentType::Pfind3Spectra, kPFind3Header,
               {PFind3Row(), PFind3Row("3,Oxidation[M];")}),
        Tables(PepIdentType::SequestTxt, kSequestHeader,
               {SequestRow(), SequestRow("2"), SequestRow("1", "S3(Phospho)")}),
        Tables(PepIdentType::MaxQuant, kMsmsHeader,
               {MsmsRow(), MsmsRow("_GAM(Oxidation (M))K_", "Oxidation (M)")}),
        PFind28()};
    return kinds;
}

std::string RandomText(Random& random, const ResultKind& kind, bool broken)
{
    std::string text = kind.head;
    for (std::size_t i = random.Below(broken ? 7 : 12); i > 0; --i) {
        std::string part = kind.parts[random.Below(kind.parts.size())];
        if (broken && random.OneIn(3)) {
            part = kind.rubbish[random.Below(kind.rubbish.size())];
        } else if (broken && random.OneIn(3)) {
            part.erase(random.Below(part.size()), random.Below(12));
        }
        text += part;
    }
    return text + kind.tail;
}

ResultFiles WriteResult(PepIdentType::EPepIdentType format, const std::string& text,
                        const Vorlan::test::TempFolder& folder, Random& random)
{
    const std::string path = folder.Write("result.txt", text);
    if (format != PepIdentType::MaxQuant) {
        return {path, ""};
    }
    std::string peptides = kPeptidesHeader;
    const std::uint64_t rows = HeldIn(format, path);
    for (std::uint64_t row = 0; row < rows;) {
        std::string ids = std::to_string(row++);
        for (; row < rows && !random.OneIn(3); ++row) {
            ids += ";" + std::to_string(row);
        }
        peptides += PeptidesRow(ids);
    }
    return {path, folder.Write("second.txt", peptides)};
}

ResultFiles RandomResult(Random& random, const ResultKind& kind, bool broken,
                         const Vorlan::test::TempFolder& folder)
{
    return WriteResult(kind.format, RandomText(random, kind, broken), folder, random);
}

void TellUsualModifications()
{
    TellModifications({"Carbamidomethyl (C)=57.021464", "Oxidation (M)=15.994915",
                       "Phospho (STY)=79.966331", "Acetyl (Protein N-term)=42.010565"});
}

} // namespace pelgrin::test
