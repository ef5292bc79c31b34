#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/utf8.h"

namespace pagerex {

/// What a character is to the rules of where emphasis may begin and end. Of an unclear one readers differ.
enum class Flank : uint8_t { kSpace, kPunctuation, kWord, kUnclear };

Flank flankOf(char32_t code);
/// Of a text's first and last character; the text is not empty.
Flank firstFlank(std::u16string_view text);
Flank lastFlank(std::u16string_view text);

/// Where a text stands that is to be escaped.
struct MarkdownPlace {
  bool isInCell = false;      ///< of a pipe table
  bool isInBrackets = false;  ///< of a link or a picture
  bool isLineStart = false;
  bool isFirstLine = true;
  bool isBehindReference = false;  ///< "[^1]" is in front
  bool isLast = false;             ///< nothing follows on the line or in the cell
};

/// Appends a text so that Markdown shows it as it is; tabs become spaces. Escaped is only what would mean
/// something in its place.
void appendEscaped(std::string& out, std::u16string_view text, const MarkdownPlace& place);

/// Appends a text between tags or in an attribute.
void appendHtml(std::string& out, std::u16string_view text);
void appendHtml(std::string& out, std::string_view text);

/// Appends an address, with all that ends one in Markdown or HTML as percent escapes.
void appendAddress(std::string& out, std::u16string_view address);

/// Appends such an address in "[text](address)".
void appendDestination(std::string& out, std::string_view address);

/// Appends what stands between the quotes of a link's title.
void appendTitle(std::string& out, std::u16string_view title, bool isInCell);

/// Text that fits a line: line ends become spaces, controls are left out.
std::u16string onOneLine(std::u16string_view text);

}  // namespace pagerex
