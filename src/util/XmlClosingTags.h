// Where elements end.
#ifndef VORLAN_UTIL_XMLCLOSINGTAGS_H
#define VORLAN_UTIL_XMLCLOSINGTAGS_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Vorlan {

/// Finds closing tags in a text.
///
/// Searches plainly as long as the characters so read stay within a small
/// multiple of the text. Then it makes an index: all places of "</", sorted by
/// the word behind them. The words that begin with a name are neighbours
/// there, and a tree over their places tells the first one that was not passed
/// yet. A text of n characters with c closing tags takes O(n log c) time.
class XmlClosingTags {
public:
    /// text must outlive the object.
    explicit XmlClosingTags(std::string_view text);

    static constexpr std::size_t kNone = std::string_view::npos;

    /// The first place in [from, end) with "</" and name, all of it in front of
    /// end, or kNone. from may not go back from call to call; name holds none
    /// of the characters that end a tag name.
    std::size_t Find(std::size_t from, std::size_t end, std::string_view name);

private:
    std::size_t Search(std::size_t from, std::size_t end, std::string_view name);
    void MakeIndex(std::size_t from);
    std::size_t PlaceOf(std::string_view word) const;
    void Pass(std::size_t from);
    std::size_t FirstIn(std::size_t begin, std::size_t end) const;

    std::string_view text_;
    std::size_t mayRead_; ///< characters that plain searches may still read
    bool hasIndex_ = false;

    std::vector<std::string_view> words_; ///< behind each "</", up to what ends a name
    std::vector<std::uint32_t> sorted_;   ///< numbers of words, sorted by their texts
    std::vector<std::uint32_t> ranks_;    ///< number of a word -> where it is in sorted_
    std::vector<std::uint32_t> tree_;     ///< smallest number below each node; leaves last
    std::size_t passed_ = 0;              ///< words before this number are passed
};

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLCLOSINGTAGS_H
