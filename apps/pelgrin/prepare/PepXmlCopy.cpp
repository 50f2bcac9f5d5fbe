#include <algorithm>
#include <array>
#include <memory>

#include <fmt/format.h>

#include "common/Failure.h"
#include "prepare/ResultCopies.h"
#include "prepare/TextOutput.h"
#include "prepare/TitleScan.h"
#include "prepare/XmlPieces.h"
#include "run/DottedName.h"

namespace pelgrin {

namespace {

constexpr std::size_t kDeepest = 200;
constexpr std::size_t kLongestQuery = std::size_t{64} * 1024 * 1024;

constexpr const char kRun[] = "msms_run_summary";
constexpr const char kQuery[] = "spectrum_query";

/// Texts that meet other files: names of spectra, of datasets and of proteins.
bool MeetsOthers(const std::string& attribute)
{
    constexpr std::array<const char*, 3> kNames = {"spectrum", "base_name", "protein"};
    return std::find(kNames.begin(), kNames.end(), attribute) != kNames.end();
}

/// The character that an escape at the start of text stands for, where the library
/// would leave the escape; '\0' for others. size is the length of the escape.
char Unescaped(std::string_view text, std::size_t& size)
{
    const std::size_t end = text.substr(0, 9).find(';');
    if (end == std::string_view::npos) {
        return '\0';
    }
    size = end + 1;
    const std::string_view name = text.substr(1, end - 1);
    if (name == "amp") {
        // "&amp;lt;" is the text "&lt;", which must not become an escape.
        const std::string_view behind = text.substr(size, 9);
        return behind.substr(0, behind.find('&')).find(';') == std::string_view::npos ? '&' : '\0';
    }
    if (name == "apos") {
        return '\'';
    }
    if (name.size() > 1 && name.front() == '#' && IsScanNumber(name.substr(1))) {
        const auto code = LeadingNumber(name.substr(1)).value_or(0);
        const bool isPlain =
            code >= ' ' && code < 127 && code != '"' && code != '&' && code != '<' && code != '>';
        return isPlain ? static_cast<char>(code) : '\0';
    }
    return '\0';
}

/// A text that is written from its end to its beginning.
class TextFromBehind {
public:
    explicit TextFromBehind(std::size_t most) : text_(most, '\0'), begin_(most) {}

    void Put(std::string_view front)
    {
        begin_ -= front.size();
        front.copy(text_.data() + begin_, front.size());
    }
    void Drop(std::size_t size) { begin_ += size; }
    std::string_view Text() const { return std::string_view(text_).substr(begin_); }

private:
    std::string text_;
    std::size_t begin_;
};

/// The value as the library reads it right: ">" would end the tag, and only in
/// proteins are escapes resolved. From its end on, since what an escape is depends on
/// what stands behind it in the copy: then it is the same in a copy of that.
std::string ReadableValue(const XmlAttribute& attribute)
{
    constexpr std::string_view kLongest = "&quot;";
    const bool meetsOthers = MeetsOthers(attribute.name);
    TextFromBehind readable(kLongest.size() * attribute.value.size());
    for (std::size_t i = attribute.value.size(); i-- > 0;) {
        const char c = attribute.value[i];
        switch (c) {
        case '"': readable.Put(kLongest); break;
        case '>': readable.Put("&gt;"); break;
        case '<': readable.Put("&lt;"); break;
        case '\t':
        case '\r':
        case '\n': readable.Put(" "); break;
        default: readable.Put({&c, 1});
        }
        std::size_t size = 0;
        const char plain = c == '&' && meetsOthers ? Unescaped(readable.Text(), size) : '\0';
        if (plain != '\0') {
            readable.Drop(size);
            readable.Put({&plain, 1});
        }
    }
    return std::string(readable.Text());
}

class Walk {
public:
    Walk(const std::string& source,
         const std::function<std::string(std::size_t k, std::size_t n)>& pathOf,
         const NewName& newName, Copy& copy)
        : source_(source), pathOf_(pathOf), newName_(newName), copy_(copy),
          pieces_(source, copy.input)
    {
    }

    std::vector<std::string> Take()
    {
        CountRuns();
        while (pieces_.Next()) {
            TakePiece();
        }
        if (!open_.empty()) {
            EndCutOff();
        }
        return paths_;
    }

private:
    void CountRuns()
    {
        XmlPieces pieces(source_, copy_.input);
        while (pieces.Next()) {
            runs_ += pieces.PieceKind() == XmlPieces::Kind::Open && pieces.Name() == kRun ? 1 : 0;
        }
        if (runs_ == 0) {
            throw Failure(
                fmt::format("{}: expected pepXML with an element msms_run_summary", copy_.input));
        }
    }

    void TakePiece()
    {
        switch (pieces_.PieceKind()) {
        case XmlPieces::Kind::Other:
            copy_.Change("markup_dropped", pieces_.Line(), isDeclaration_ ? 0 : 1);
            isDeclaration_ = false;
            break;
        case XmlPieces::Kind::Open: TakeOpen(); break;
        case XmlPieces::Kind::Empty:
            if (pieces_.Name() == kRun) { // it would be taken for the first run (B-52)
                copy_.Change("empty_run", pieces_.Line());
                break;
            }
            if (pieces_.Name() == kQuery) {
                BeginQuery();
            }
            Put(TagText("/>"));
            if (pieces_.Name() == kQuery) {
                EndQuery();
            }
            break;
        case XmlPieces::Kind::Close: TakeClose(); break;
        }
    }

    void TakeOpen()
    {
        if (open_.size() >= kDeepest) {
            throw Failure(fmt::format("{}:{}: expected pepXML, found {} elements in each other",
                                      copy_.input, pieces_.Line(), kDeepest));
        }
        if (pieces_.Name() == kRun) {
            BeginRun();
        } else if (pieces_.Name() == kQuery) {
            BeginQuery();
        }
        open_.push_back(pieces_.Name());
        Put(TagText(">"));
    }

    void TakeClose()
    {
        if (open_.empty() || open_.back() != pieces_.Name()) {
            throw Failure(fmt::format("{}:{}: expected </{}>, found </{}>", copy_.input,
                                      pieces_.Line(), open_.empty() ? "" : open_.back(),
                                      pieces_.Name()));
        }
        Put("</" + pieces_.Name() + ">");
        open_.pop_back();
        if (pieces_.Name() == kQuery) {
            EndQuery();
        } else if (pieces_.Name() == kRun) {
            EndRun();
        }
    }

    void BeginQuery()
    {
        if (output_ == nullptr || isInQuery_) {
            throw Failure(fmt::format("{}:{}: expected {} in a {} alone", copy_.input,
                                      pieces_.Line(), kQuery, kRun));
        }
        ++copy_.held;
        isInQuery_ = true;
        isNameOfSeveral_ = false;
        queryLine_ = pieces_.Line();
    }

    void EndQuery()
    {
        isInQuery_ = false;
        if (isNameOfSeveral_) {
            copy_.LeaveOut("name_of_several", queryLine_);
        } else {
            Put(query_);
            ++copy_.written;
        }
        query_.clear();
    }

    /// Every file has the root and what stands before the runs.
    void BeginRun()
    {
        if (output_ != nullptr || open_.size() != 1) {
            throw Failure(fmt::format("{}:{}: expected {} below the root alone", copy_.input,
                                      pieces_.Line(), kRun));
        }
        paths_.push_back(pathOf_(paths_.size() + 1, runs_));
        copy_.Change("run_split", pieces_.Line(), paths_.size() > 1 ? 1 : 0);
        output_ = std::make_unique<TextOutput>(paths_.back());
        output_->Line("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        output_->Write(head_);
        dataset_ = ValueOf("base_name");
    }

    void EndRun()
    {
        output_->Line("</" + open_.front() + ">");
        output_->Finish();
        output_.reset();
    }

    /// The file ends early: what is whole stays, the query that is not goes.
    void EndCutOff()
    {
        if (isInQuery_) {
            copy_.LeaveOut("cut_off", queryLine_);
            while (open_.back() != kQuery) {
                open_.pop_back();
            }
            open_.pop_back();
            query_.clear();
        }
        copy_.Change("end_added", pieces_.Line());
        while (output_ != nullptr && open_.size() > 1) {
            output_->Line("</" + open_.back() + ">");
            if (open_.back() == kRun) {
                EndRun();
            }
            open_.pop_back();
        }
    }

    /// Behind the first run nothing but runs is copied.
    void Put(const std::string& text)
    {
        if (isInQuery_) {
            query_ += query_.empty() ? text : "\n" + text;
            if (query_.size() > kLongestQuery) {
                throw Failure(fmt::format("{}:{}: expected queries of at most {} characters",
                                          copy_.input, queryLine_, kLongestQuery));
            }
        } else if (output_ != nullptr) {
            output_->Line(text);
        } else if (paths_.empty()) {
            head_ += text + "\n";
            if (head_.size() > kLongestQuery) {
                throw Failure(fmt::format("{}:{}: expected at most {} characters before the runs",
                                          copy_.input, pieces_.Line(), kLongestQuery));
            }
        }
    }

    std::string ValueOf(const char* name) const
    {
        for (const XmlAttribute& attribute : pieces_.Attributes()) {
            if (attribute.name == name) {
                return ReadableValue(attribute);
            }
        }
        return {};
    }

    std::string TagText(const char* end)
    {
        std::string text = "<" + pieces_.Name();
        for (const XmlAttribute& attribute : pieces_.Attributes()) {
            std::string value = ReadableValue(attribute);
            copy_.Change("attribute_quotes", pieces_.Line(), attribute.quote == '"' ? 0 : 1);
            copy_.Change("attribute_text", pieces_.Line(), value == attribute.value ? 0 : 1);
            if (pieces_.Name() == kQuery && attribute.name == "spectrum") {
                Rename(value);
            }
            text += fmt::format(" {}=\"{}\"", attribute.name, value);
        }
        return text + end;
    }

    /// The library cuts the name at its first blank.
    void Rename(std::string& spectrum)
    {
        for (const std::string& name : {spectrum, spectrum.substr(0, spectrum.find(' '))}) {
            if (const auto known = newName_(dataset_, name)) {
                isNameOfSeveral_ = known->empty();
                if (isNameOfSeveral_) {
                    return;
                }
                spectrum = *known;
                copy_.Change("spectrum_renamed", pieces_.Line());
                return;
            }
        }
    }

    std::string source_;
    const std::function<std::string(std::size_t k, std::size_t n)>& pathOf_;
    const NewName& newName_;
    Copy& copy_;
    XmlPieces pieces_;
    std::size_t runs_ = 0;
    std::vector<std::string> paths_;
    std::unique_ptr<TextOutput> output_; ///< of the run that is open
    std::vector<std::string> open_;      ///< elements, from the root on
    std::string head_;                   ///< from the root on to the first run
    std::string dataset_;
    std::string query_;
    bool isInQuery_ = false;
    bool isNameOfSeveral_ = false; ///< the query tells a spectrum that is nobody's
    std::uint64_t queryLine_ = 0;
    bool isDeclaration_ = true; ///< the first piece is the declaration of XML
};

} // namespace

std::vector<std::string>
CopyPepXml(const std::string& source,
           const std::function<std::string(std::size_t k, std::size_t n)>& pathOf,
           const NewName& newName, Copy& copy)
{
    return Walk(source, pathOf, newName, copy).Take();
}

} // namespace pelgrin
