#include "flow/equation_text.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "base/utf16.h"

namespace pagerex {
namespace {

using Text = std::u16string_view;

constexpr unsigned kDeepest = 32;

/// One of the parts in a switch's brackets.
struct Item {
  std::u16string text;
  bool isRaised = false;  ///< it is all above the line, as ruby is
};
using Items = std::vector<Item>;

/// What stands between a switch and its brackets.
struct Options {
  char16_t left = 0, right = 0;  ///< brackets
  char16_t sign = 0;             ///< of an integral
  bool isUp = false, isDown = false;
};

bool isLetter(char16_t c) {
  return upperAscii(c) >= u'A' && upperAscii(c) <= u'Z';
}

char16_t lower(char16_t c) {
  return isLetter(c) ? static_cast<char16_t>(c | 0x20) : c;
}

char16_t mirrored(char16_t bracket) {
  constexpr Text kOpening = u"([{<", kClosing = u")]}>";
  const size_t at = kOpening.find(bracket);
  return at != Text::npos ? kClosing[at] : bracket;
}

/// The text in small digits; as it is if it has other signs.
std::u16string inSmall(Text text, bool isUp) {
  constexpr Text kPlain = u"0123456789+-=()", kUp = u"⁰¹²³⁴⁵⁶⁷⁸⁹⁺⁻⁼⁽⁾", kDown = u"₀₁₂₃₄₅₆₇₈₉₊₋₌₍₎";
  std::u16string small;
  for (const char16_t c : text) {
    const size_t at = kPlain.find(c);
    if (at == Text::npos) return std::u16string(text);
    small += (isUp ? kUp : kDown)[at];
  }
  return small;
}

/// In brackets if it has more than one part.
std::u16string asOne(const std::u16string& text) {
  const bool isOne = text.find_first_of(u" +-−±=/*·,;") == Text::npos;
  return isOne ? text : u"(" + text + u")";
}

std::u16string trimmed(const std::u16string& text) {
  const size_t begin = text.find_first_not_of(u' ');
  return begin == Text::npos ? std::u16string() : text.substr(begin, text.find_last_not_of(u' ') - begin + 1);
}

std::u16string joined(const Items& items, Text between) {
  std::u16string text;
  for (size_t i = 0; i < items.size(); ++i) {
    if (i > 0) text += between;
    text += items[i].text;
  }
  return text;
}

std::u16string fraction(const Items& items) {
  if (items.size() < 2) return joined(items, {});
  return asOne(items[0].text) + u'/' + asOne(items[1].text);
}

std::u16string root(const Items& items) {
  if (items.empty()) return u"√";
  const std::u16string degree = items.size() > 1 ? inSmall(items[0].text, true) : u"";
  return degree + u"√(" + items.back().text + u')';
}

std::u16string integral(const Items& items, const Options& options) {
  std::u16string text(1, options.sign != 0 ? options.sign : u'∫');
  if (!items.empty() && !items[0].text.empty()) text += u'_' + asOne(items[0].text);
  if (items.size() > 1 && !items[1].text.empty()) text += u'^' + asOne(items[1].text);
  if (items.size() > 2) text += u' ' + items[2].text;
  return text;
}

std::u16string bracketed(const Items& items, const Options& options) {
  if (items.empty()) return {};
  const bool isPlain = options.left == 0 && options.right == 0;
  std::u16string text;
  if (isPlain || options.left != 0) text += isPlain ? u'(' : options.left;
  text += joined(items, {});
  if (isPlain || options.right != 0) text += isPlain ? u')' : options.right;
  return text;
}

/// Signs over each other: a number in a circle, a base with ruby, or others in their order.
std::u16string overstruck(const Items& items, RubyText& ruby) {
  if (items.size() == 2 && (items[0].text == u"○" || items[0].text == u"◯")) {
    constexpr Text kNumbers[] = {u"1",  u"2",  u"3",  u"4",  u"5",  u"6",  u"7",  u"8",  u"9",  u"10",
                                 u"11", u"12", u"13", u"14", u"15", u"16", u"17", u"18", u"19", u"20"};
    const auto* const found = std::find(std::begin(kNumbers), std::end(kNumbers), items[1].text);
    if (found != std::end(kNumbers))
      return std::u16string(1, static_cast<char16_t>(u'①' + (found - kNumbers)));
  }
  if (items.size() == 2 && items[0].isRaised != items[1].isRaised) {
    const bool isFirst = items[0].isRaised;
    ruby = {items[isFirst ? 1 : 0].text, items[isFirst ? 0 : 1].text};
    return ruby.base + u'(' + ruby.above + u')';
  }
  return joined(items, {});
}

/// Reads the code of an EQ field from its start to its end.
class EquationReader {
 public:
  /// The country decides which sign stands between items; the other one is text then.
  explicit EquationReader(Text code) : code_(code), separator_(code.find(u';') != Text::npos ? u';' : u',') {}

  std::u16string Read() {
    Item all;
    while (!AtEnd()) {
      ReadItem(0, all);
      if (!AtEnd()) all.text += code_[at_++];
    }
    return trimmed(all.text);
  }
  /// The last that was read.
  const RubyText& ruby() const { return ruby_; }

 private:
  bool AtEnd() const { return at_ >= code_.size(); }
  char16_t Peek(size_t ahead = 0) const { return at_ + ahead < code_.size() ? code_[at_ + ahead] : u'\0'; }
  void SkipBlanks() {
    while (Peek() == u' ') ++at_;
  }

  void ReadItem(unsigned depth, Item& out);
  void ReadBackslash(unsigned depth, Item& out);
  void ReadSwitch(char16_t letter, unsigned depth, Item& out);
  void ReadScripts(unsigned depth, Item& out);
  Items ReadItems(unsigned depth);
  Options ReadOptions();
  bool ReadOption(Options& options);
  char16_t ReadSign();
  void SkipFormat();

  Text code_;
  size_t at_ = 0;
  char16_t separator_;
  RubyText ruby_;
};

/// Up to a separator or the closing bracket that is not text.
void EquationReader::ReadItem(unsigned depth, Item& out) {
  unsigned brackets = 0;
  while (!AtEnd()) {
    const char16_t c = code_[at_];
    if (brackets == 0 && (c == separator_ || c == u')')) return;
    if (c == u'\\') {
      ReadBackslash(depth, out);
      continue;
    }
    if (c == u'(') ++brackets;
    if (c == u')') --brackets;
    if (c != u' ') out.isRaised = false;
    out.text += c;
    ++at_;
  }
}

void EquationReader::ReadBackslash(unsigned depth, Item& out) {
  constexpr Text kSwitches = u"abdfilorsx";
  const char16_t c = lower(Peek(1));
  if (c == u'*') return SkipFormat();
  at_ += 1;
  if (AtEnd()) return;
  if (kSwitches.find(c) == Text::npos) {
    out.text += code_[at_++];
    out.isRaised = false;
    return;
  }
  ++at_;
  if (depth < kDeepest) ReadSwitch(c, depth, out);
}

void EquationReader::ReadSwitch(char16_t letter, unsigned depth, Item& out) {
  if (letter == u's') return ReadScripts(depth, out);
  const Options options = ReadOptions();
  const Items items = ReadItems(depth);
  out.isRaised = false;
  switch (letter) {
    case u'a':
      out.text += joined(items, u" ");
      break;
    case u'b':
      out.text += bracketed(items, options);
      break;
    case u'd':
      break;
    case u'f':
      out.text += fraction(items);
      break;
    case u'i':
      out.text += integral(items, options);
      break;
    case u'l':
      out.text += joined(items, Text(&separator_, 1));
      break;
    case u'o':
      out.text += overstruck(items, ruby_);
      break;
    case u'r':
      out.text += root(items);
      break;
    default:
      out.text += joined(items, u" ");
      break;
  }
}

/// Each `\up` and `\do` has brackets of its own.
void EquationReader::ReadScripts(unsigned depth, Item& out) {
  for (;;) {
    const Options options = ReadOptions();
    if (Peek() != u'(') return;
    const std::u16string text = joined(ReadItems(depth), u" ");
    const bool isFirst = trimmed(out.text).empty();
    const bool isSmall = !isFirst && options.isUp != options.isDown;
    out.isRaised = isFirst && options.isUp;
    out.text += isSmall ? inSmall(text, options.isUp) : text;
    if (Peek() != u'\\') return;
  }
}

Items EquationReader::ReadItems(unsigned depth) {
  Items items;
  if (Peek() != u'(') return items;
  while (!AtEnd() && (items.empty() || code_[at_] != u')')) {
    ++at_;
    Item item;
    ReadItem(depth + 1, item);
    item.text = trimmed(item.text);
    items.push_back(std::move(item));
  }
  if (!AtEnd()) ++at_;
  return items;
}

Options EquationReader::ReadOptions() {
  Options options;
  const size_t begin = at_;
  SkipBlanks();
  size_t end = at_;
  while (Peek() == u'\\' && ReadOption(options)) {
    SkipBlanks();
    end = at_;
  }
  // Blanks belong to the switch only if brackets follow.
  at_ = Peek() == u'(' || end != begin ? end : begin;
  return options;
}

/// Two letters, and behind them a number or a sign. False for anything else.
bool EquationReader::ReadOption(Options& options) {
  constexpr Text kNumbers = u"al ac ar ad co vs hs fo ba li su pr in ai up di do to bo le ri ";
  constexpr Text kSigns = u"lc rc bc fc vc ";
  const char16_t name[] = {lower(Peek(1)), lower(Peek(2)), u' '};
  if (!isLetter(name[0]) || !isLetter(name[1])) return false;
  const Text option(name, 3);
  if (kSigns.find(option) != Text::npos) {
    at_ += 3;
    const char16_t sign = ReadSign();
    if (option == u"lc " || option == u"bc ") options.left = sign;
    if (option == u"rc ") options.right = sign;
    if (option == u"bc ") options.right = mirrored(sign);
    if (option == u"fc " || option == u"vc ") options.sign = sign;
    return true;
  }
  if (kNumbers.find(option) == Text::npos) return false;
  at_ += 3;
  SkipBlanks();
  while ((Peek() >= u'0' && Peek() <= u'9') || Peek() == u'-') ++at_;
  if (option == u"su ") options.sign = u'∑';
  if (option == u"pr ") options.sign = u'∏';
  if (option == u"up ") options.isUp = true;
  if (option == u"do ") options.isDown = true;
  return true;
}

/// Behind a backslash.
char16_t EquationReader::ReadSign() {
  SkipBlanks();
  if (Peek() == u'\\') ++at_;
  return AtEnd() ? u'\0' : code_[at_++];
}

/// `\* Upper`: how the field looks.
void EquationReader::SkipFormat() {
  at_ += 2;
  SkipBlanks();
  const bool isQuoted = Peek() == u'"';
  if (isQuoted) ++at_;
  while (!AtEnd() && Peek() != (isQuoted ? u'"' : u' ') && (isQuoted || Peek() != u'\\')) ++at_;
  if (isQuoted && !AtEnd()) ++at_;
  SkipBlanks();
}

}  // namespace

std::u16string equationText(std::u16string_view code) {
  RubyText ruby;
  return equationText(code, ruby);
}

std::u16string equationText(std::u16string_view code, RubyText& ruby) {
  const size_t begin = std::min(code.find_first_not_of(u' '), code.size());
  code.remove_prefix(begin);
  if (isSameWord(code.substr(0, 2), u"EQ") && (code.size() == 2 || !isLetter(code[2]))) code.remove_prefix(2);
  EquationReader reader(code);
  std::u16string text = reader.Read();
  if (reader.ruby().base + u'(' + reader.ruby().above + u')' == text) ruby = reader.ruby();
  return text;
}

}  // namespace pagerex
