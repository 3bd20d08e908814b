// Numbers as text, and texts from files made fit to show. Everything is the same in every locale.
#pragma once

#include <cstddef>
#include <string>

namespace oxd {

// The number with up to six significant digits, which is as many as a file keeps of the limits of an axis.
std::string ToText(double number);

// The number with as few digits as tell it from any other.
std::string ToExactText(double number);

// `text` with each control character replaced by a question mark, so that what a file holds cannot command the
// terminal.
std::string Printable(const std::string& text);

// The same for a text of several lines, which keeps its line feeds.
std::string PrintableLines(const std::string& text);

// `text` itself if it is UTF-8, else with every byte beyond ASCII replaced by a question mark. Codes that stand for no
// character, such as U+FFFE, count as not UTF-8.
std::string ValidUtf8(const std::string& text);

// `text` itself if it has at most `characters`, else as many of them and an ellipsis.
std::string Shortened(const std::string& text, std::size_t characters);

// A cell of a table with commas: in quotes, so that a comma in the text begins no new column.
std::string QuotedCell(const std::string& text);

// The number of characters of a text in UTF-8.
std::size_t CharacterCount(const std::string& text);

} // namespace oxd
