#include "flow/field_code.h"

#include <algorithm>
#include <iterator>

#include "base/code_page_1252.h"
#include "base/utf16.h"

namespace pagerex {
namespace {

struct Field {
  uint8_t flt;
  std::u16string_view name;
  FieldDisplay display = FieldDisplay::kResult;
};

/// By number.
constexpr Field kFields[] = {
    {0x03, u"REF"},
    {0x04, u"XE", FieldDisplay::kNothing},
    {0x05, u"FTNREF"},
    {0x06, u"SET", FieldDisplay::kNothing},
    {0x07, u"IF"},
    {0x08, u"INDEX"},
    {0x09, u"TC", FieldDisplay::kNothing},
    {0x0A, u"STYLEREF"},
    {0x0B, u"RD", FieldDisplay::kNothing},
    {0x0C, u"SEQ"},
    {0x0D, u"TOC"},
    {0x0E, u"INFO"},
    {0x0F, u"TITLE"},
    {0x10, u"SUBJECT"},
    {0x11, u"AUTHOR"},
    {0x12, u"KEYWORDS"},
    {0x13, u"COMMENTS"},
    {0x14, u"LASTSAVEDBY"},
    {0x15, u"CREATEDATE"},
    {0x16, u"SAVEDATE"},
    {0x17, u"PRINTDATE"},
    {0x18, u"REVNUM"},
    {0x19, u"EDITTIME"},
    {0x1A, u"NUMPAGES"},
    {0x1B, u"NUMWORDS"},
    {0x1C, u"NUMCHARS"},
    {0x1D, u"FILENAME"},
    {0x1E, u"TEMPLATE"},
    {0x1F, u"DATE"},
    {0x20, u"TIME"},
    {0x21, u"PAGE"},
    {0x22, u"="},
    {0x23, u"QUOTE"},
    {0x24, u"INCLUDE"},
    {0x25, u"PAGEREF"},
    {0x26, u"ASK", FieldDisplay::kNothing},
    {0x27, u"FILLIN"},
    {0x28, u"DATA", FieldDisplay::kNothing},
    {0x29, u"NEXT"},
    {0x2A, u"NEXTIF"},
    {0x2B, u"SKIPIF"},
    {0x2C, u"MERGEREC"},
    {0x2D, u"DDE"},
    {0x2E, u"DDEAUTO"},
    {0x2F, u"GLOSSARY"},
    {0x30, u"PRINT", FieldDisplay::kNothing},
    {0x31, u"EQ", FieldDisplay::kEquation},
    {0x32, u"GOTOBUTTON", FieldDisplay::kButtonText},
    {0x33, u"MACROBUTTON", FieldDisplay::kButtonText},
    {0x34, u"AUTONUMOUT", FieldDisplay::kAutoNumber},
    {0x35, u"AUTONUMLGL", FieldDisplay::kAutoNumber},
    {0x36, u"AUTONUM", FieldDisplay::kAutoNumber},
    {0x37, u"IMPORT"},
    {0x38, u"LINK"},
    {0x39, u"SYMBOL", FieldDisplay::kSymbol},
    {0x3A, u"EMBED"},
    {0x3B, u"MERGEFIELD"},
    {0x3C, u"USERNAME"},
    {0x3D, u"USERINITIALS"},
    {0x3E, u"USERADDRESS"},
    {0x3F, u"BARCODE"},
    {0x40, u"DOCVARIABLE"},
    {0x41, u"SECTION"},
    {0x42, u"SECTIONPAGES"},
    {0x43, u"INCLUDEPICTURE"},
    {0x44, u"INCLUDETEXT"},
    {0x45, u"FILESIZE"},
    {0x46, u"FORMTEXT", FieldDisplay::kFormText},
    {0x47, u"FORMCHECKBOX", FieldDisplay::kFormCheckBox},
    {0x48, u"NOTEREF"},
    {0x49, u"TOA"},
    {0x4A, u"TA", FieldDisplay::kNothing},
    {0x4B, u"MERGESEQ"},
    {0x4D, u"PRIVATE", FieldDisplay::kNothing},
    {0x4E, u"DATABASE"},
    {0x4F, u"AUTOTEXT"},
    {0x50, u"COMPARE"},
    {0x51, u"ADDIN"},
    {0x53, u"FORMDROPDOWN", FieldDisplay::kFormDropDown},
    {0x54, u"ADVANCE", FieldDisplay::kNothing},
    {0x55, u"DOCPROPERTY"},
    {0x57, u"CONTROL"},
    {0x58, u"HYPERLINK"},
    {0x59, u"AUTOTEXTLIST"},
    {0x5A, u"LISTNUM", FieldDisplay::kListNumber},
    {0x5B, u"HTMLCONTROL"},
    {0x5C, u"BIDIOUTLINE"},
    {0x5D, u"ADDRESSBLOCK"},
    {0x5E, u"GREETINGLINE"},
    {0x5F, u"SHAPE"},
};

const Field* fieldWithNumber(uint8_t flt) {
  const Field* const found =
      std::lower_bound(std::begin(kFields), std::end(kFields), flt,
                       [](const Field& row, uint8_t number) { return row.flt < number; });
  return found != std::end(kFields) && found->flt == flt ? found : nullptr;
}

bool isBlank(char16_t c) {
  return c <= u' ' || c == u'\u00A0';
}

bool isOpeningQuote(char16_t c) {
  return c == u'"' || c == u'\u201C' || c == u'\u201D' || c == u'\u201E';
}

bool closes(char16_t quote, char16_t opening) {
  return opening == u'"' ? quote == u'"' : quote == u'\u201C' || quote == u'\u201D';
}

/// A number in decimal or, behind "0x", in hexadecimal digits; -1 for other text.
int32_t numberOf(std::u16string_view text) {
  const bool isHex = text.size() > 2 && text[0] == u'0' && (text[1] | 0x20) == u'x';
  if (isHex) text.remove_prefix(2);
  if (text.empty() || text.size() > 6) return -1;
  int32_t value = 0;
  for (const char16_t c : text) {
    const char16_t upper = upperAscii(c);
    if (upper >= u'0' && upper <= u'9') {
      value = value * (isHex ? 16 : 10) + (upper - u'0');
    } else if (isHex && upper >= u'A' && upper <= u'F') {
      value = value * 16 + (upper - u'A' + 10);
    } else {
      return -1;
    }
  }
  return value;
}

bool readHyperlink(FieldWords words, FieldLink& out) {
  char16_t lastSwitch = 0;
  bool hasAddress = false;
  for (FieldWord word; words.Next(word);) {
    if (word.switchLetter != 0) {
      lastSwitch = word.switchLetter;
      if (lastSwitch == u'n') out.target = u"_blank";
      continue;
    }
    switch (lastSwitch) {
      case u'l':
        out.bookmark = word.text;
        break;
      case u'o':
        out.title = word.text;
        break;
      case u't':
        out.target = word.text;
        break;
      case u'*':
      case u'@':
      case u'#':
      case u's':
        break;
      default:
        if (!hasAddress) out.address = word.text;
        hasAddress = true;
        break;
    }
    lastSwitch = 0;
  }
  if (out.bookmark.empty() && out.address.starts_with(u'#')) {
    out.bookmark = out.address.substr(1);
    out.address.clear();
  }
  return !out.address.empty() || !out.bookmark.empty();
}

/// The bookmark stands first; `\h` may stand anywhere behind it.
bool readReference(FieldWords words, FieldLink& out) {
  FieldWord word;
  if (!words.Next(word) || word.switchLetter != 0) return false;
  std::u16string bookmark = word.text;
  while (words.Next(word)) {
    if (word.switchLetter != u'h') continue;
    out.bookmark = std::move(bookmark);
    return !out.bookmark.empty();
  }
  return false;
}

/// What a SYMBOL field says.
struct SymbolField {
  int32_t code = -1;
  bool isUnicode = false;
  bool isShiftJis = false;
  SymbolFont font = SymbolFont::kNone;
};

SymbolField readSymbol(std::u16string_view code, SymbolFont font) {
  SymbolField field;
  field.font = font;
  FieldWords words(code);
  FieldWord word;
  words.Next(word);
  for (char16_t lastSwitch = 0; words.Next(word); lastSwitch = word.switchLetter) {
    if (word.switchLetter == u'u') field.isUnicode = true;
    if (word.switchLetter == u'j') field.isShiftJis = true;
    if (word.switchLetter != 0 || word.text.empty()) continue;
    if (lastSwitch == u'f') {
      field.font = symbolFontNamed(word.text);
    } else if (lastSwitch != u's' && field.code < 0) {
      field.code = numberOf(word.text);
      if (field.code < 0) field.code = word.text[0];
    }
  }
  return field;
}

void appendShiftJis(uint32_t code, std::u16string& out) {
  if (code < 0x80) out += static_cast<char16_t>(code);
  if (code >= 0xA1 && code <= 0xDF) out += static_cast<char16_t>(0xFF61 + (code - 0xA1));
}

}  // namespace

FieldType fieldTypeOf(std::u16string_view code, uint8_t flt) {
  if (fieldWithNumber(flt) || flt == static_cast<uint8_t>(FieldType::kBareRef)) {
    return static_cast<FieldType>(flt);
  }
  FieldWord word;
  if (!FieldWords(code).Next(word) || word.text.empty()) return FieldType::kUnknown;
  if (word.text[0] == u'=') word.text.resize(1);
  const Field* const found = std::find_if(std::begin(kFields), std::end(kFields),
                                          [&](const Field& row) { return isSameWord(row.name, word.text); });
  return found != std::end(kFields) ? static_cast<FieldType>(found->flt) : FieldType::kBareRef;
}

FieldDisplay fieldDisplay(FieldType type) {
  const Field* const field = fieldWithNumber(static_cast<uint8_t>(type));
  return field ? field->display : FieldDisplay::kResult;
}

bool FieldWords::Next(FieldWord& out) {
  while (at_ < code_.size() && isBlank(code_[at_])) ++at_;
  if (at_ >= code_.size()) return false;
  out.text.clear();
  out.switchLetter = 0;
  if (isOpeningQuote(code_[at_])) {
    ReadQuoted(out);
  } else if (code_[at_] == u'\\' && at_ + 1 < code_.size() && code_[at_ + 1] != u'\\' &&
             !isBlank(code_[at_ + 1])) {
    const char16_t letter = code_[at_ + 1];
    out.switchLetter = letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter + 0x20) : letter;
    at_ += 2;
  } else {
    ReadPlain(out);
  }
  out.end = at_;
  return true;
}

/// A backslash makes a quote or a backslash text; before others it is one itself, as paths have them. A
/// straight quote that no other one follows is closed by one that is not.
void FieldWords::ReadQuoted(FieldWord& out) {
  char16_t opening = code_[at_++];
  const bool isOnlyOne = opening == u'"' && code_.find(u'"', at_) == std::u16string_view::npos;
  if (isOnlyOne) opening = u'\u201C';
  for (; at_ < code_.size() && !closes(code_[at_], opening); ++at_) {
    const bool isEscape =
        code_[at_] == u'\\' && at_ + 1 < code_.size() && (code_[at_ + 1] == u'\\' || code_[at_ + 1] == u'"');
    if (isEscape) ++at_;
    out.text += code_[at_];
  }
  if (at_ < code_.size()) ++at_;
}

void FieldWords::ReadPlain(FieldWord& out) {
  for (; at_ < code_.size() && !isBlank(code_[at_]) && !isOpeningQuote(code_[at_]); ++at_) {
    const bool isEscape =
        code_[at_] == u'\\' && at_ + 1 < code_.size() && (code_[at_ + 1] == u'\\' || code_[at_ + 1] == u'"');
    if (isEscape) ++at_;
    out.text += code_[at_];
  }
}

bool linkOf(std::u16string_view code, uint8_t flt, FieldLink& out) {
  out = {};
  const FieldType type = fieldTypeOf(code, flt);
  FieldWords words(code);
  FieldWord name;
  switch (type) {
    case FieldType::kHyperlink:
      return words.Next(name) && readHyperlink(words, out);
    case FieldType::kRef:
    case FieldType::kPageRef:
    case FieldType::kNoteRef:
    case FieldType::kFtnRef:
      return words.Next(name) && readReference(words, out);
    case FieldType::kBareRef:
      return readReference(words, out);
    default:
      return false;
  }
}

std::u16string symbolFieldText(std::u16string_view code, SymbolFont font) {
  std::u16string text;
  const SymbolField field = readSymbol(code, font);
  if (field.code < 0) return text;
  const auto character = static_cast<uint32_t>(field.code);
  const bool isByte = character <= 0xFF;
  const char32_t sign =
      character <= 0xFFFF ? symbolCharacter(field.font, static_cast<char16_t>(character)) : 0;
  if (sign != 0) {
    appendCharacter(sign, text);
  } else if (field.isShiftJis) {
    appendShiftJis(character, text);
  } else if (isByte && !field.isUnicode) {
    const auto byte = static_cast<unsigned char>(character);
    unsigned short widened = 0;
    MsoCP1252ToWcsByOnes(&byte, 1, &widened);
    text += static_cast<char16_t>(widened);
  } else {
    appendCharacter(character, text);
  }
  return text;
}

size_t buttonTextStart(std::u16string_view code) {
  FieldWords words(code);
  FieldWord word;
  size_t end = code.size();
  if (words.Next(word) && words.Next(word)) end = word.end;
  while (end < code.size() && code[end] == u' ') ++end;
  return end;
}

}  // namespace pagerex
