#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/symbol_characters.h"

namespace pagerex {

/// Kinds of fields by their numbers in the file (FLD.flt); those that the walk treats in a way of their own.
enum class FieldType : uint8_t {
  kUnknown = 0x01,
  kBareRef = 0x02,  ///< REF with only the bookmark's name
  kRef = 0x03,
  kXe = 0x04,
  kFtnRef = 0x05,
  kSet = 0x06,
  kIf = 0x07,
  kIndex = 0x08,
  kTc = 0x09,
  kRd = 0x0B,
  kToc = 0x0D,
  kPage = 0x21,
  kPageRef = 0x25,
  kAsk = 0x26,
  kEq = 0x31,
  kGotoButton = 0x32,
  kMacroButton = 0x33,
  kAutoNumOut = 0x34,
  kAutoNumLgl = 0x35,
  kAutoNum = 0x36,
  kSymbol = 0x39,
  kEmbed = 0x3A,
  kIncludePicture = 0x43,
  kFormText = 0x46,
  kFormCheckBox = 0x47,
  kNoteRef = 0x48,
  kFormDropDown = 0x53,
  kAdvance = 0x54,
  kHyperlink = 0x58,
  kListNum = 0x5A,
  kShape = 0x5F,
};

/// What of a field is shown.
enum class FieldDisplay : uint8_t {
  kResult,        ///< the text behind the separator; nothing where there is none
  kNothing,       ///< neither code nor result: entries of an index, variables, ...
  kEquation,      ///< equationText() of the code, if it has no result
  kSymbol,        ///< symbolFieldText() of the code, if it has no result
  kFormText,      ///< the result, a form field
  kFormCheckBox,  ///< a form field without a text
  kFormDropDown,  ///< a form field; the choice stands in its data
  kButtonText,    ///< the code behind the first argument, which is text of the document
  kListNumber,    ///< a number of a list within the text
  kAutoNumber,    ///< a number of paragraphs
};

/// The number of a field: `flt` if that is one, else by the name that its code begins with. What is no name
/// of a field is that of a bookmark (kBareRef); kUnknown for a code without text.
FieldType fieldTypeOf(std::u16string_view code, uint8_t flt);
FieldDisplay fieldDisplay(FieldType type);
inline FieldDisplay fieldDisplay(uint8_t flt, std::u16string_view code) {
  return fieldDisplay(fieldTypeOf(code, flt));
}

/// A part of a field code: its name, an argument or a switch. `\* Upper` is a switch '*' and an argument.
struct FieldWord {
  std::u16string text;        ///< of a name or an argument, without quotes and escapes
  char16_t switchLetter = 0;  ///< in small letters; 0 for a name or an argument
  size_t end = 0;             ///< where it ends in the code
};

/// Reads a field code part by part. The first is the field's name.
class FieldWords {
 public:
  explicit FieldWords(std::u16string_view code) : code_(code) {}
  /// False at the end.
  bool Next(FieldWord& out);

 private:
  void ReadQuoted(FieldWord& out);
  void ReadPlain(FieldWord& out);

  std::u16string_view code_;
  size_t at_ = 0;
};

struct FieldLink {
  std::u16string address;   ///< of something outside; empty for a place in the document
  std::u16string bookmark;  ///< a place in the document, or below the address
  std::u16string title;
  std::u16string target;
};

/// Where a field leads: HYPERLINK always, references to bookmarks (REF, PAGEREF, NOTEREF, FTNREF, or a name
/// alone) if they are made to be followed (`\h`). False for all others.
bool linkOf(std::u16string_view code, uint8_t flt, FieldLink& out);

/// What a SYMBOL field shows, as Unicode; empty if it has no code. `font` is that of its run, which holds if
/// the field names none.
std::u16string symbolFieldText(std::u16string_view code, SymbolFont font = SymbolFont::kNone);

/// Where in the code the text of a button (MACROBUTTON, GOTOBUTTON) begins: behind the first argument and
/// spaces. The code's length if there is none.
size_t buttonTextStart(std::u16string_view code);

}  // namespace pagerex
