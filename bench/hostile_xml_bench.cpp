// Hostile XML: what a document costs that was made to hurt, beside libxml2 and
// pugixml. Prints a table of its own.
//
// Every cell is a process of its own with a limit of time and of memory: it
// parses the file, writes the tree and destroys it.
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <new>
#include <sstream>
#include <string>

#include <sys/wait.h>

#include "support/Inputs.h"
#include "support/OwnProcess.h"
#include "support/XmlTrees.h"

namespace {

using bench::LibXml2Tree;
using bench::OurTree;
using bench::PugiTree;

constexpr bench::Limits kLimits = {60, std::size_t{4} << 30};

// ---- The documents --------------------------------------------------------------

/// A text of pieces; piece(text, i) appends the one with number i.
template <typename Piece>
std::string Repeated(std::size_t count, Piece piece)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        piece(text, i);
    }
    return text;
}

std::string Repeated(std::size_t count, const char* piece)
{
    return Repeated(count, [piece](std::string& text, std::size_t) { text += piece; });
}

/// Names of one length: none begins with another, which would end it (B-28).
void AppendTag(std::string& text, const char* opening, std::size_t number)
{
    const std::string digits = std::to_string(number);
    text.append(opening).append(7 - digits.size(), '0').append(digits).append(">");
}

std::string OpenTags(std::size_t count)
{
    return Repeated(count, [](std::string& text, std::size_t i) { AppendTag(text, "<e", i); });
}

std::string NestedTags(std::size_t count)
{
    return OpenTags(count) + Repeated(count, [count](std::string& text, std::size_t i) {
               AppendTag(text, "</e", count - 1 - i);
           });
}

std::string NestedSameTags(std::size_t count)
{
    return Repeated(count, "<e>") + Repeated(count, "</e>");
}

std::string SameOpenTags(std::size_t count)
{
    return Repeated(count, "<e>");
}

std::string Attributes(std::size_t count)
{
    return "<e"
           + Repeated(count,
                      [](std::string& text, std::size_t i) {
                          text.append(" a").append(std::to_string(i)).append("=\"1\"");
                      })
           + "/>";
}

std::string Siblings(std::size_t count)
{
    return "<r>" + Repeated(count, "<e a=\"1\"></e>") + "</r>";
}

/// The comment makes the whole text hard: it might end the element.
std::string SiblingsAndComment(std::size_t count)
{
    return "<r>" + Repeated(count, "<e a=\"1\"></e>") + "<!-- </e> --></r>";
}

std::string Comment(std::size_t bytes)
{
    return "<r><!--" + std::string(bytes, 'c') + "--></r>";
}

std::string Data(std::size_t bytes)
{
    return "<r><![CDATA[" + std::string(bytes, 'c') + "]]></r>";
}

std::string LessThans(std::size_t count)
{
    return std::string(count, '<');
}

std::string EndlessTag(std::size_t bytes)
{
    return "<" + std::string(bytes, 'e');
}

struct Document {
    const char* name;
    std::size_t size; ///< what the name counts, at full scale
    const char* unit; ///< behind the size
    std::string (*make)(std::size_t);
};

constexpr std::size_t kMillion = 1000000;

constexpr Document kDocuments[] = {
    {"nested tags, all different", 1000, "", NestedTags},
    {"nested tags, all different", 10000, "", NestedTags},
    {"nested tags, all different", 100000, "", NestedTags},
    {"nested tags of one name", 100000, "", NestedSameTags},
    {"unclosed tags of one name", kMillion, "", SameOpenTags},
    {"unclosed tags, all different", kMillion, "", OpenTags},
    {"attributes in one tag", kMillion, "", Attributes},
    {"siblings", kMillion, "", Siblings},
    {"siblings, then a comment with a closing tag", kMillion, "", SiblingsAndComment},
    {"a comment", 50 * kMillion, " bytes", Comment},
    {"a CDATA section", 50 * kMillion, " bytes", Data},
    {"\"<\", nothing else", 100000, "", LessThans},
    {"a tag that never ends", 200 * kMillion, " bytes", EndlessTag},
};

// ---- One cell ---------------------------------------------------------------------

constexpr char kMeasureOption[] = "--parse-save-destroy";

/// Begins a step by its name: what is printed last is where a process ended.
void Tell(const char* step)
{
    std::printf("%s\n", step);
    std::fflush(stdout);
}

template <typename Tree>
void ParseSaveDestroy(const std::string& path)
{
    const std::string copy = path + ".copy";
    Tree tree;
    const double memory = bench::ResidentMegabytes();
    const double begin = bench::CpuSeconds();
    const char* result = "done";
    try {
        Tell("parsing");
        if (tree.Parse(path)) {
            Tell("writing");
            result = tree.Save(copy) ? "done" : "not written";
        } else {
            result = "refused";
        }
        Tell("destroying");
        tree.LetGo();
    } catch (const std::bad_alloc&) {
        result = "out of memory";
    }
    const double seconds = bench::CpuSeconds() - begin;
    std::printf("%s, %.3f s, %.0f MB\n", result, seconds, bench::PeakResidentMegabytes() - memory);
}

int ParseSaveDestroy(const std::string& name, const std::string& path)
{
    if (name == OurTree::kName) {
        ParseSaveDestroy<OurTree>(path);
    } else if (name == LibXml2Tree::kName) {
        ParseSaveDestroy<LibXml2Tree>(path);
    } else {
        ParseSaveDestroy<PugiTree>(path);
    }
    return 0;
}

std::string LastLine(const std::string& text)
{
    std::istringstream lines(text);
    std::string last;
    for (std::string line; std::getline(lines, line);) {
        last = line;
    }
    return last;
}

std::string Cell(const std::string& name, const std::string& path)
{
    const bench::OwnProcessResult child = bench::RunMyself({kMeasureOption, name, path}, kLimits);
    const std::string last = LastLine(child.output);
    if (WIFSIGNALED(child.status)) {
        const int signal = WTERMSIG(child.status);
        return signal == SIGXCPU || signal == SIGKILL
                   ? "**over " + std::to_string(kLimits.seconds) + " s**, " + last
                   : "**crash** (" + std::string(::strsignal(signal)) + "), " + last;
    }
    return child.status == 0 ? last : "**failed**, " + last;
}

std::string WithCommas(std::size_t number)
{
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3;) {
        place -= 3;
        digits.insert(place, ",");
    }
    return digits;
}

void PrintRow(const Document& document)
{
    const bench::TemporaryFolder folder;
    const std::string path = folder.File("hostile.xml");
    const std::size_t size = bench::Scaled(document.size);
    std::ofstream(path, std::ios::binary) << document.make(size);
    std::cout << "| " << document.name << " | " << WithCommas(size) << document.unit;
    for (const char* const name : {OurTree::kName, LibXml2Tree::kName, PugiTree::kName}) {
        std::cout << " | " << Cell(name, path) << std::flush;
    }
    std::cout << " |\n" << std::flush;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4 && std::strcmp(argv[1], kMeasureOption) == 0) {
        return ParseSaveDestroy(argv[2], argv[3]);
    }
    std::cout << "| document | size | ours | " << LibXml2Tree::kName << " | " << PugiTree::kName
              << " |\n|---|---|---|---|---|\n";
    for (const Document& document : kDocuments) {
        PrintRow(document);
    }
    return 0;
}
