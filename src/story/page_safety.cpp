#include "story/page_safety.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/number_text.h"
#include "base/write_archive.h"

namespace pagerex {
namespace {

struct Escape {
  char character;
  std::string_view text;
};
/// The closing bracket too: much of a page stands in comments, which "-->" would end.
constexpr Escape kMarkup[] = {
    {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"},
};

std::string escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    const auto* const row = std::find_if(std::begin(kMarkup), std::end(kMarkup),
                                         [c](const Escape& each) { return each.character == c; });
    if (row == std::end(kMarkup)) {
      out += c;
    } else {
      out += row->text;
    }
  }
  return out;
}

bool isLetterOrDigit(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

/// Neither CSS nor HTML gives it a meaning in a name.
bool isPlainInName(char c) {
  return isLetterOrDigit(c) || !isAscii(c) || c == ' ' || c == '-' || c == '_';
}

void appendPercent(std::string& out, char c) {
  out += NumberText().append('%').appendHexByte(static_cast<unsigned char>(c));
}

/// How many bytes the character in front takes; 0 if these are no UTF-8.
size_t utf8Length(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const size_t length = lead < 0x80   ? 1
                        : lead < 0xC2 ? 0
                        : lead < 0xE0 ? 2
                        : lead < 0xF0 ? 3
                        : lead < 0xF5 ? 4
                                      : 0;
  if (length == 0 || length > text.size()) return 0;
  for (size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  return length;
}

/// The narrow path of a file comes in a code page that nobody tells: its bytes stay what they are, and can
/// take none of the page's with them.
std::string asUtf8(std::string_view address) {
  std::string out;
  while (!address.empty()) {
    const size_t length = utf8Length(address);
    if (length == 0) appendPercent(out, address[0]);
    out += address.substr(0, length);
    address.remove_prefix(std::max<size_t>(length, 1));
  }
  return out;
}

}  // namespace

std::string KPageSafety::Text(std::string text) const {
  if (!on) return text;
  return escaped(text);
}

/// A name with other characters than those of usual ones is a string, all of these escaped.
std::string KPageSafety::FontName(std::string name, const char* quote) const {
  const bool isPlain = std::all_of(name.begin(), name.end(), isPlainInName);
  if (!on || isPlain) return quote + name + quote;
  std::string out = "'";
  for (const char c : name) {
    if (isPlainInName(c)) {
      out += c;
    } else {
      out += NumberText().append('\\').appendHexByte(static_cast<unsigned char>(c)).append(' ');
    }
  }
  return out + "'";
}

std::string KPageSafety::Path(std::string path) const {
  if (!on) return path;
  std::string out;
  for (const char c : path) {
    if (isPlainInName(c) || c == '/' || c == '.') {
      out += c;
    } else {
      appendPercent(out, c);
    }
  }
  return out;
}

void KPageSafety::AddAddress(IWriteArchive& archive, const char* name, const std::string& address,
                             const char* ns) const {
  if (!Keeps(address)) {
    if (warnings) warnings->Add(WarningCode::kLinkRemoved, schemeOf(address));
    return;
  }
  archive.AddAttribute(name, on ? std::string_view(escaped(asUtf8(address))) : std::string_view(address), ns);
}

}  // namespace pagerex
