// Small texts: letter case, blanks, numbers, words of a shell.
#ifndef PELGRIN_WORDS_H
#define PELGRIN_WORDS_H

#include <optional>
#include <string>
#include <string_view>

namespace pelgrin {

/// text with its ASCII letters in lower case.
std::string Lower(std::string_view text);

/// text without the blanks at its ends, which are any of these characters.
std::string_view WithoutBlanks(std::string_view text, std::string_view blanks = " ");

/// text begins with front.
bool BeginsWith(std::string_view text, std::string_view front);

/// The first bytes of text, at most so many, without a letter of UTF-8 that is cut.
std::string Clip(std::string_view text, std::size_t most);

/// The finite number that text is as a whole, with "." whatever the locale.
std::optional<double> ParseNumber(std::string_view text);

/// Takes the decimal at the front of text, white space before it passed over.
/// False, as for the library, for "inf", "nan" and an exponent without digits.
bool TakeNumber(std::string_view& text, double& value);
/// text as one word of a shell, quoted only when it must be.
std::string ShellWord(const std::string& text);

} // namespace pelgrin

#endif // PELGRIN_WORDS_H
