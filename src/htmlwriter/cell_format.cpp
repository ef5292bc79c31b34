#include "htmlwriter/cell_format.h"

#include <cstring>

#include "base/number_text.h"
#include "story/colour.h"

namespace pagerex {

namespace {

/// "%.2f" of `hundredths` / 100, exactly.
FixedText<64>& appendHundredths(FixedText<64>& text, int hundredths) {
  const unsigned magnitude =
      hundredths < 0 ? 0u - static_cast<unsigned>(hundredths) : static_cast<unsigned>(hundredths);
  if (hundredths < 0) text.append('-');
  text.appendUnsigned(magnitude / 100).append('.');
  return text.append(static_cast<char>('0' + magnitude / 10 % 10))
      .append(static_cast<char>('0' + magnitude % 10));
}

/// "%.2fpt" of `twips` / 20.
void appendPoints(FixedText<64>& text, int32_t twips) {
  appendHundredths(text, twips * 5).append("pt");
}

void writeSidePadding(IWriteArchive* archive, const char* property, uint8_t unit, int32_t value) {
  if (unit == UNIT_AUTO) return;
  FixedText<64> text;
  if (unit == UNIT_PERCENT) {
    text.appendInt(int64_t{value} * 50).append('%');  // multiplied, though the file counts in fiftieths
  } else {
    appendPoints(text, value);
  }
  archive->AddCssProp(property, text.c_str());
}

void appendSide(FixedText<64>& text, uint8_t unit, int32_t value) {
  if (unit == UNIT_PERCENT) {
    appendHundredths(text, value * 50).append('%');
  } else {
    appendPoints(text, value);
  }
}

}  // namespace

Status WritePadding(const PADDING& padding, IWriteArchive* archive) {
  if (!archive) return Status::kInvalidArgument;
  if (padding.unitTop == UNIT_AUTO || padding.unitLeft == UNIT_AUTO || padding.unitBottom == UNIT_AUTO ||
      padding.unitRight == UNIT_AUTO) {
    writeSidePadding(archive, "padding-left", padding.unitLeft, padding.left);
    writeSidePadding(archive, "padding-top", padding.unitTop, padding.top);
    writeSidePadding(archive, "padding-right", padding.unitRight, padding.right);
    writeSidePadding(archive, "padding-bottom", padding.unitBottom, padding.bottom);
    return Status::kOk;
  }
  FixedText<64> text;
  appendSide(text, padding.unitTop, padding.top);
  text.append(' ');
  appendSide(text, padding.unitRight, padding.right);
  text.append(' ');
  appendSide(text, padding.unitBottom, padding.bottom);
  text.append(' ');
  appendSide(text, padding.unitLeft, padding.left);
  archive->AddCssProp("padding", text.c_str());
  return Status::kOk;
}

const char* GetBorderType(BRCTYPE type) {
  switch (type) {
    case 3:
      return "double";
    case 26:
      return "outset";
    case 27:
      return "inset";
    default:
      return "solid";
  }
}

namespace {

/// "%02d" of a byte.
void appendChannel(FixedText<64>& text, uint32_t value) {
  if (value < 10) text.append('0');
  text.appendUnsigned(value);
}

/// "%.2fpt %s rgb(%02d,%02d,%02d)"; the three lines of a double border count three times.
void borderText(uint8_t widthEighths, BRCTYPE type, uint32_t colour, char* buffer, unsigned int size) {
  // An eighth has three decimals and the last is a 5: two of them round to the even neighbour.
  static constexpr uint8_t kHundredthsOfEighths[] = {0, 12, 25, 38, 50, 62, 75, 88};
  const int eighths = type == 3 ? widthEighths * 3 : widthEighths;
  FixedText<64> text;
  appendHundredths(text, eighths / 8 * 100 + kHundredthsOfEighths[eighths % 8]);
  text.append("pt ").append(GetBorderType(type)).append(" rgb(");
  appendChannel(text, colour & 0xFF);
  text.append(',');
  appendChannel(text, colour >> 8 & 0xFF);
  text.append(',');
  appendChannel(text, colour >> 16 & 0xFF);
  text.append(')');
  const size_t length = text.size() < size ? text.size() : size - 1;
  std::memcpy(buffer, text.c_str(), length);
  buffer[length] = 0;
}

}  // namespace

Status GetBorderStr(const mso_word::BRC* brc, char* buffer, unsigned int size) {
  static constexpr mso_word::BRC kNone = {0xFF, 0xFF, 0xFF, 0xFF};
  if (!brc || !buffer || size == 0) return Status::kFailure;
  if (std::memcmp(brc, &kNone, sizeof kNone) == 0) return Status::kFailure;
  borderText(brc->width, brc->type, Ico2RGB(brc->ico), buffer, size);
  return Status::kOk;
}

Status GetBorderStr(const mso_word::BRCEX* brc, char* buffer, unsigned int size) {
  if (!brc || !buffer || size == 0) return Status::kFailure;
  borderText(brc->width, brc->type, brc->colour, buffer, size);
  return Status::kOk;
}

}  // namespace pagerex
