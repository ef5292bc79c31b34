#include "formats/markdown/escape.h"

#include <algorithm>

#include "base/character_class.h"
#include "base/encoding.h"
#include "base/utf8.h"
#include "formats/plain_copy.h"

namespace pagerex {
namespace {

/// ASCII characters that mean something somewhere in a line.
struct Specials {
  bool is[128] = {};
  constexpr Specials() {
    for (const char c : std::string_view("\\`*_~[]<&!|:.\t")) is[static_cast<unsigned char>(c)] = true;
  }
};
constexpr Specials kSpecials;

bool isSpecial(char16_t unit) {
  return unit < 128 && kSpecials.is[unit];
}

bool isBlank(char16_t unit) {
  return unit == ' ' || unit == '\t';
}

bool isAsciiLetter(char16_t unit) {
  return (unit | 0x20) >= 'a' && (unit | 0x20) <= 'z';
}

bool isDigit(char16_t unit) {
  return unit >= '0' && unit <= '9';
}

bool isAsciiPunctuation(char16_t unit) {
  return unit > 0x20 && unit < 0x7F && !isAsciiLetter(unit) && !isDigit(unit);
}

/// A text, and what is asked of the places in it. Outside of it is 0.
class Line {
 public:
  Line(std::u16string_view text, const MarkdownPlace& place) : text_(text), place_(place) {}

  /// Whether the special character at `i` gets a backslash.
  bool IsEscaped(size_t i) const;
  /// Characters in front of that which keeps the line from beginning a block; npos when none is needed.
  size_t BlockEscape() const;

 private:
  char16_t At(size_t i) const { return i < text_.size() ? text_[i] : 0; }
  bool IsBlankOrEnd(size_t i) const { return i >= text_.size() || isBlank(text_[i]); }
  bool IsBetweenBlanks(size_t i) const { return i > 0 && isBlank(text_[i - 1]) && isBlank(At(i + 1)); }
  bool IsWithinWord(size_t i) const;
  bool BeginsEntity(size_t i) const;
  bool KeepsAddressWhole(size_t i) const;

  const std::u16string_view text_;
  const MarkdownPlace& place_;
};

bool Line::IsEscaped(size_t i) const {
  switch (const char16_t next = At(i + 1); text_[i]) {
    case '`':
    case '[':
      return true;
    case ']':
      return place_.isInBrackets;
    case '|':
      return place_.isInCell;
    case '*':
    case '~':
      return !IsBetweenBlanks(i);
    case '_':
      return !IsWithinWord(i) && !IsBetweenBlanks(i);
    case '\\':
      return next == 0 || isAsciiPunctuation(next);
    case '<':
      return next == 0 || isAsciiLetter(next) || next == '/' || next == '!' || next == '?';
    case '&':
      return BeginsEntity(i);
    case '!':
      return next == 0 && !place_.isLast;
    case ':':
      return next == '/' && At(i + 2) == '/' && !KeepsAddressWhole(i + 3);
    case '.':
      return i >= 3 && text_.substr(i - 3, 3) == u"www" && !KeepsAddressWhole(i + 1);
    default:
      return false;
  }
}

/// Letters and digits on both sides of a row of underlines.
bool Line::IsWithinWord(size_t i) const {
  size_t begin = i, end = i + 1;
  constexpr size_t kMostRow = 32;  // a longer one is escaped, so that time stays linear
  while (begin > 0 && text_[begin - 1] == '_' && i - begin < kMostRow) --begin;
  while (At(end) == '_' && end - i < kMostRow) ++end;
  return begin > 0 && isLetterOrDigit(text_[begin - 1]) && isLetterOrDigit(At(end));
}

bool Line::BeginsEntity(size_t i) const {
  constexpr size_t kLongestEntity = 34;
  size_t end = i + 1;
  if (At(end) == '#') ++end;
  while ((isAsciiLetter(At(end)) || isDigit(At(end))) && end - i < kLongestEntity) ++end;
  return end >= text_.size() ? !place_.isLast : At(end) == ';' && end > i + 1;
}

/// An address in the text becomes a link by itself, with all that follows up to a blank, as it stands: there
/// must be nothing to be escaped in it.
bool Line::KeepsAddressWhole(size_t i) const {
  if (place_.isInBrackets) return true;
  constexpr std::u16string_view kHarmful = u"\\`*~[]<|!&_";
  constexpr size_t kLongestAddress = 512;
  for (const size_t limit = i + kLongestAddress; i < limit; ++i) {
    if (i >= text_.size()) return place_.isLast;
    if (isBlank(text_[i])) return true;
    if (kHarmful.find(text_[i]) != std::u16string_view::npos && IsEscaped(i)) return false;
  }
  return false;
}

size_t Line::BlockEscape() const {
  constexpr size_t kNone = std::u16string_view::npos;
  const char16_t next = At(1);
  switch (At(0)) {
    case '#': {
      const size_t behind = std::min(text_.find_first_not_of(u'#'), text_.size());
      return behind <= 6 && IsBlankOrEnd(behind) ? 0 : kNone;
    }
    case '+':
      return IsBlankOrEnd(1) ? 0 : kNone;
    case '-':
      return IsBlankOrEnd(1) || next == '-' || next == ':' || next == '|' ? 0 : kNone;
    case '>':
      return 0;
    case '=':
    case '|':
      return place_.isFirstLine ? kNone : 0;
    case ':':
      return place_.isFirstLine || next != '-' ? kNone : 0;
    default:
      break;
  }
  size_t digits = 0;
  while (digits < 10 && isDigit(At(digits))) ++digits;
  const bool isNumber = digits > 0 && digits < 10 && (At(digits) == '.' || At(digits) == ')');
  return isNumber && IsBlankOrEnd(digits + 1) ? digits : kNone;
}

/// Characters of HTML that a text cannot hold, and tabs.
std::string_view htmlOf(char16_t unit) {
  switch (unit) {
    case '\t':
      return "\t";
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return {};
  }
}

/// UTF-8 that is gathered on the stack, so that a line grows by stretches.
class LineEnd {
 public:
  explicit LineEnd(std::string& line) : line_(line) {}

  void Put(char c) {
    MakeRoom();
    bytes_[used_++] = c;
  }
  void Put(std::string_view bytes) {
    Flush();
    line_ += bytes;
  }
  /// The plain characters at the beginning of a text, as many as there is room for, and their count.
  template <size_t (*copyPlain)(const char16_t*, size_t, char*)>
  size_t PutPlain(std::u16string_view text) {
    MakeRoom();
    const size_t count = copyPlain(text.data(), std::min(text.size(), kSize - used_), bytes_ + used_);
    used_ += count;
    return count;
  }
  /// What is no ASCII at the beginning of a text, and controls but for tabs, and its count.
  size_t PutOthers(std::u16string_view text) {
    size_t i = 0;
    while (i < text.size()) {
      MakeRoom();
      const char16_t unit = text[i];
      if (unit >= 0x800 && unit < 0xD800) {
        bytes_[used_] = static_cast<char>(0xE0 | unit >> 12);
        bytes_[used_ + 1] = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
        bytes_[used_ + 2] = static_cast<char>(0x80 | (unit & 0x3F));
        used_ += 3;
        ++i;
        continue;
      }
      if ((unit >= 0x20 && unit < 0x80) || unit == '\t') break;
      const CharacterAt next = characterAt(text.data() + i, text.size() - i);
      if (!isNoText(next.code)) used_ += encodeUtf8(next.code, bytes_ + used_);
      i += next.units;
    }
    return i;
  }
  void Flush() {
    line_.append(bytes_, used_);
    used_ = 0;
  }

 private:
  static constexpr size_t kSize = 1024, kLeastRoom = 64;

  void MakeRoom() {
    if (used_ > kSize - kLeastRoom) Flush();
  }

  std::string& line_;
  size_t used_ = 0;
  char bytes_[kSize];
};

bool standsInAddress(char16_t unit) {
  return unit > 0x20 && unit != 0x7F &&
         std::u16string_view(u"\"<>\\^`{|}()").find(unit) == std::u16string_view::npos;
}

}  // namespace

Flank flankOf(char32_t code) {
  if (code < 0x80) {
    const auto unit = static_cast<char16_t>(code);
    if (code <= 0x20) return Flank::kSpace;
    return isAsciiPunctuation(unit) ? Flank::kPunctuation : Flank::kWord;
  }
  constexpr char16_t kSpaces[] = {0xA0, 0x1680, 0x202F, 0x205F, 0x3000};
  if ((code >= 0x2000 && code <= 0x200A) || std::count(std::begin(kSpaces), std::end(kSpaces), code)) {
    return Flank::kSpace;
  }
  return code < 0x10000 && isLetterOrDigit(static_cast<uint16_t>(code)) ? Flank::kWord : Flank::kUnclear;
}

Flank firstFlank(std::u16string_view text) {
  return flankOf(characterAt(text.data(), text.size()).code);
}

/// Halves of characters are as unclear as whole ones beyond 16 bits.
Flank lastFlank(std::u16string_view text) {
  return flankOf(text.back());
}

void appendEscaped(std::string& out, std::u16string_view text, const MarkdownPlace& place) {
  if (text.empty()) return;
  const Line line(text, place);
  size_t firstEscape = place.isLineStart ? line.BlockEscape() : std::u16string_view::npos;
  if (place.isBehindReference && (text[0] == '(' || text[0] == ':')) firstEscape = 0;
  LineEnd end(out);
  size_t i = 0;
  // The last character is looked at in any case: what follows it is not known here.
  for (const size_t last = text.size() - 1; i <= last;) {
    if (i < last && firstEscape == std::u16string_view::npos)
      i += end.PutPlain<copyPlainMarkdown>(text.substr(i, last - i));
    const char16_t unit = text[i];
    if (unit == '\t') {
      end.Put(' ');
      ++i;
    } else if (unit < 0x20 || unit >= 0x80) {
      i += end.PutOthers(text.substr(i));
    } else {
      if (i == firstEscape || (isSpecial(unit) && line.IsEscaped(i))) end.Put('\\');
      if (i == firstEscape) firstEscape = std::u16string_view::npos;
      end.Put(static_cast<char>(unit));
      ++i;
    }
  }
  end.Flush();
}

void appendHtml(std::string& out, std::u16string_view text) {
  LineEnd end(out);
  for (size_t i = 0; i < text.size();) {
    i += end.PutPlain<copyPlainHtml>(text.substr(i));
    if (i == text.size()) break;
    const std::string_view spelled = htmlOf(text[i]);
    if (!spelled.empty()) {
      end.Put(spelled);
      ++i;
    } else {
      i += end.PutOthers(text.substr(i));
    }
  }
  end.Flush();
}

void appendHtml(std::string& out, std::string_view text) {
  for (const char c : text) {
    const std::string_view spelled = htmlOf(static_cast<unsigned char>(c));
    if (spelled.empty()) {
      out += c;
    } else {
      out += spelled;
    }
  }
}

void appendAddress(std::string& out, std::u16string_view address) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  for (size_t i = 0; i < address.size();) {
    const CharacterAt next = characterAt(address.data() + i, address.size() - i);
    const std::u16string_view spelled = address.substr(i, next.units);
    i += next.units;
    if (next.code >= 0x80 && !isNoText(next.code)) {
      appendUtf8(out, spelled);
    } else if (next.code < 0x80 && standsInAddress(spelled[0])) {
      out += static_cast<char>(next.code);
    } else if (next.code < 0x80 && !isNoText(next.code)) {
      out += {'%', kDigits[next.code >> 4], kDigits[next.code & 15]};
    }
  }
}

void appendDestination(std::string& out, std::string_view address) {
  constexpr std::string_view kNameCharacters =
      "#0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  for (size_t i = 0; i < address.size(); ++i) {
    out += address[i];
    if (address[i] != '&') continue;
    const size_t end = address.find_first_not_of(kNameCharacters, i + 1);
    if (end != std::string_view::npos && address[end] == ';') out += "amp;";
  }
}

/// A backslash is spelled as a number: some readers take one in front of the last quote for its escape.
void appendTitle(std::string& out, std::u16string_view title, bool isInCell) {
  std::u16string escaped;
  for (const char16_t unit : title) {
    if (unit == '\\') {
      escaped += u"&#92;";
      continue;
    }
    if (unit == '"' || unit == '&' || (unit == '|' && isInCell)) escaped += u'\\';
    escaped += unit;
  }
  appendUtf8(out, escaped);
}

std::u16string onOneLine(std::u16string_view text) {
  std::u16string line;
  line.reserve(text.size());
  for (const char16_t unit : text) {
    if (unit == '\r' || unit == '\n' || unit == '\t' || unit == '\v') {
      line += u' ';
    } else if (!isNoText(unit)) {
      line += unit;
    }
  }
  return line;
}

}  // namespace pagerex
