#include "base/link_policy.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

namespace pagerex {
namespace {

constexpr std::string_view kSafeSchemes[] = {
    "http", "https", "mailto", "ftp", "ftps", "sftp", "tel", "sms", "news",
};

/// The character references by name that can stand for a part of a scheme, or hide another reference. One
/// is read without its semicolon too.
struct Reference {
  std::string_view name;
  char character;
};
constexpr Reference kReferences[] = {
    {"Tab;", '\t'}, {"NewLine;", '\n'}, {"nbsp;", ' '}, {"shy;", ' '},   {"amp;", '&'},
    {"amp", '&'},   {"AMP;", '&'},      {"AMP", '&'},   {"num;", '#'},   {"percnt;", '%'},
    {"semi;", ';'}, {"colon;", ':'},    {"sol;", '/'},  {"bsol;", '\\'}, {"quest;", '?'},
};

constexpr char toLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// A scheme is made of printable ASCII alone: leaving out the rest can only bring one to light.
std::string printable(std::string_view text) {
  std::string kept;
  std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
               [](char c) { return c > ' ' && c < 0x7F; });
  return kept;
}

/// A number in front of `text`, which loses it. One of no ASCII character counts as a blank.
char takeCharacter(std::string_view& text, int base, size_t mostDigits) {
  unsigned value = 0;
  const char* const end = text.data() + std::min(text.size(), mostDigits);
  const auto [behind, error] = std::from_chars(text.data(), end, value, base);
  text.remove_prefix(static_cast<size_t>(behind - text.data()));
  return error == std::errc() && value < 0x7F ? static_cast<char>(value) : ' ';
}

/// What stands behind "&#".
char takeNumericReference(std::string_view& text) {
  const bool isHex = text.size() > 1 && toLower(text[0]) == 'x';
  if (isHex) text.remove_prefix(1);
  const char character = takeCharacter(text, isHex ? 16 : 10, text.size());
  if (text.starts_with(';')) text.remove_prefix(1);
  return character;
}

bool isHexDigit(char c) {
  return (c >= '0' && c <= '9') || (toLower(c) >= 'a' && toLower(c) <= 'f');
}

bool isDigitAt(std::string_view text, size_t at, int base) {
  return at < text.size() && (base == 16 ? isHexDigit(text[at]) : text[at] >= '0' && text[at] <= '9');
}

/// The first character of `text`, which loses what stood for it.
char takeOne(std::string_view& text) {
  if (text[0] == '%' && isDigitAt(text, 1, 16) && isDigitAt(text, 2, 16)) {
    text.remove_prefix(1);
    return takeCharacter(text, 16, 2);
  }
  const bool isHex = text.size() > 2 && toLower(text[2]) == 'x';
  if (text.starts_with("&#") && (isDigitAt(text, 2, 10) || (isHex && isDigitAt(text, 3, 16)))) {
    text.remove_prefix(2);
    return takeNumericReference(text);
  }
  for (const Reference& each : kReferences) {
    if (text[0] != '&' || !text.substr(1).starts_with(each.name)) continue;
    text.remove_prefix(1 + each.name.size());
    return each.character;
  }
  const char itself = text[0];
  text.remove_prefix(1);
  return itself;
}

std::string readEscapes(std::string_view text) {
  std::string read;
  while (!text.empty()) read += takeOne(text);
  return read;
}

bool isOfScheme(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

/// By what a text would be opened, as `schemeOf` tells it.
std::string schemeIn(std::string_view text) {
  constexpr size_t kLongest = 32;
  const auto isSlash = [text](size_t at) {
    return at < text.size() && (text[at] == '/' || text[at] == '\\');
  };
  if (isSlash(0) && isSlash(1)) return "file";
  const size_t end = text.find_first_of(":/?#\\");
  if (end == std::string_view::npos || text[end] != ':') return "";
  std::string scheme(text.substr(0, end));
  std::transform(scheme.begin(), scheme.end(), scheme.begin(), toLower);
  const bool isScheme =
      !scheme.empty() && scheme.size() <= kLongest && std::all_of(scheme.begin(), scheme.end(), isOfScheme);
  return isScheme ? scheme : "?";
}

bool isSafe(std::string_view scheme) {
  return scheme.empty() ||
         std::find(std::begin(kSafeSchemes), std::end(kSafeSchemes), scheme) != std::end(kSafeSchemes);
}

/// The first scheme that is not safe of an address as it stands and each time that escapes have been read in
/// it.
std::optional<std::string> unsafeScheme(std::string_view address) {
  constexpr int kDeepest = 8;  // nobody escapes an honest address so often
  std::string text = printable(address);
  for (int depth = 0; depth < kDeepest; ++depth) {
    std::string scheme = schemeIn(text);
    if (!isSafe(scheme)) return scheme;
    std::string read = printable(readEscapes(text));
    if (read == text) return std::nullopt;
    text = std::move(read);
  }
  return "?";
}

}  // namespace

bool keepsAddress(LinkPolicy policy, std::string_view address) {
  if (policy == LinkPolicy::kSafe) return !unsafeScheme(address);
  return policy == LinkPolicy::kAll;
}

std::string schemeOf(std::string_view address) {
  return unsafeScheme(address).value_or(schemeIn(printable(address)));
}

}  // namespace pagerex
