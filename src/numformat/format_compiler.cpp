#include "numformat/format_compiler.h"

#include "numformat/section_factory.h"

namespace {

bool isText(NF_SORT kind) {
  return kind == NF_SORT_TEXT;
}

/// Whether the only section of a format, or the first of several, writes the sign of a negative number.
bool takesAutoMinus(NF_SORT kind, int sections) {
  if (kind == NF_SORT_NUMBER) return sections == 1;
  return kind >= NF_SORT_EXPONENT && kind <= NF_SORT_FRACTION;
}

/// Whether sections of these kinds may stand side by side: only the last may be for texts, and the last of
/// four has to be.
bool isInOrder(const NF_SORT* kinds, int count) {
  for (int i = 0; i < count; ++i) {
    if (kinds[i] > 99) return false;
    if (i < count - 1 && isText(kinds[i])) return false;
  }
  const NF_SORT last = kinds[count - 1];
  return count < kMaxSections || isText(last) || last == NF_SORT_EMPTY;
}

/// Which section, by its place in the string, serves which values.
struct SlotRow {
  int count;
  bool lastIsText;
  int slots[KNFSect::kSlots];  ///< positive, negative, zero, text
};
constexpr SlotRow kSlotRows[] = {
    {1, false, {0, 0, 0, 0}}, {1, true, {0, 0, 0, 0}},  //
    {2, false, {0, 1, 0, 0}}, {2, true, {0, 0, 0, 1}},  //
    {3, false, {0, 1, 2, 0}}, {3, true, {0, 1, 0, 2}},  //
    {4, false, {0, 1, 2, 3}}, {4, true, {0, 1, 2, 3}},
};

void assignSlots(KNFSect& format, int count, bool lastIsText) {
  for (const SlotRow& row : kSlotRows) {
    if (row.count != count || row.lastIsText != lastIsText) continue;
    for (int slot = 0; slot < KNFSect::kSlots; ++slot) {
      format.SetSect(static_cast<KNFSect::Slot>(slot), format.GetSetcReal(row.slots[slot]));
    }
  }
}

}  // namespace

Status KNFCompile::Compile(PieceList pieces, KNFSect** out, const NF_FORMAT_PARAM* param) const {
  *out = nullptr;
  auto compiled = std::make_unique<KNFSect>();
  if (format_.empty()) {
    compiled->SetSectReal(0, CreatePureGeneral());
    assignSlots(*compiled, 1, false);
    *out = compiled.release();
    return Status::kOk;
  }
  Sections sections;
  if (format_.size() > kLongestFormat || !GetSectBegins(format_, sections)) return Status::kInvalidArgument;

  const int count = sections.count;
  NF_SORT kinds[kMaxSections] = {};
  for (int i = 0; i < count; ++i) {
    std::unique_ptr<KNFBase> section;
    kinds[i] = CompileSect(pieces, sections.texts[i], areaOf(param), i == kMaxSections - 1, section);
    if (kinds[i] == NF_SORT_MALFORMED) return Status::kInvalidArgument;
    compiled->SetSectReal(i, std::move(section));
  }
  if (!isInOrder(kinds, count)) return Status::kInvalidArgument;

  const bool lastIsText = isText(kinds[count - 1]);
  KNFBase* first = compiled->GetSetcReal(0);
  if (first && (takesAutoMinus(kinds[0], count) || (count == 2 && lastIsText))) first->InsertAutoMinus();
  assignSlots(*compiled, count, lastIsText);
  compiled->SetSectCount(count);
  *out = compiled.release();
  return Status::kOk;
}

namespace {

constexpr size_t kUnterminated = std::wstring_view::npos;

/// The position behind what stands at `at`: a character, or all that it hides from being a separator.
size_t skipHidden(std::wstring_view format, size_t at) {
  const auto behind = [format](wchar_t closing, size_t from) {
    const size_t end = format.find(closing, from);
    return end == std::wstring_view::npos ? kUnterminated : end + 1;
  };
  switch (format[at]) {
    case L'!':
    case L'\\':
    case L'_':
    case L'*':
      return at + 2 <= format.size() ? at + 2 : kUnterminated;
    case L'"':
      return behind(L'"', at + 1);
    case L'[':
      return format.substr(at + 1).starts_with(L'!') ? behind(L']', at + 2) : at + 1;
    default:
      return at + 1;
  }
}

}  // namespace

bool KNFCompile::GetSectBegins(std::wstring_view format, Sections& sections) {
  size_t begin = 0;
  for (size_t at = 0; at < format.size();) {
    if (format[at] != L';') {
      at = skipHidden(format, at);
      if (at == kUnterminated) return false;
      continue;
    }
    if (sections.count == kMaxSections - 1) return false;
    sections.texts[sections.count++] = format.substr(begin, at - begin);
    begin = ++at;
  }
  sections.texts[sections.count++] = format.substr(begin);
  return true;
}

NF_SORT KNFCompile::CompileSect(PieceList pieces, std::wstring_view text, AREA_CODE_INDEX locale,
                                bool lastOfFour, std::unique_ptr<KNFBase>& out) {
  if (text.empty() || pieces.empty()) return NF_SORT_EMPTY;
  SectionTokens tokens(locale);
  if (!tokens.Read(pieces, text, lastOfFour)) return NF_SORT_MALFORMED;
  const NF_SORT kind = tokens.kind;
  out = CreateNF(std::move(tokens));
  return out ? kind : NF_SORT_MALFORMED;
}
