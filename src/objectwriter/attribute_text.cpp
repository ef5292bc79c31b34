#include "objectwriter/attribute_text.h"

#include "drawing/colour_format.h"
#include "drawing/unit_switch.h"

namespace ObjectWriter {

LongNumberText joinedNumbers(std::initializer_list<double> values, int decimals, const char* unit) {
  LongNumberText text;
  for (const double value : values) {
    if (text.size() > 0) text.append(',');
    text.append(NumberText().appendFixed(value, decimals)).append(unit);
  }
  return text;
}

LongNumberText joinedIntegers(std::initializer_list<int> values) {
  LongNumberText text;
  for (const int value : values) {
    if (text.size() > 0) text.append(',');
    text.appendInt(value);
  }
  return text;
}

LongNumberText joinedPoints(std::initializer_list<int> lengths) {
  LongNumberText text;
  for (const int length : lengths) {
    if (text.size() > 0) text.append(',');
    text.append(pointText(UnitSwitch::EMU2Pt(length)));
  }
  return text;
}

std::string colourText(int colour) {
  NumberText text;
  object::GetColorFormat(static_cast<uint32_t>(colour), &text);
  return text.c_str();
}

void writeAttribute(IWriteArchive* archive, const ShapeProps& props, const AttributeRow& row) {
  const std::optional<int> operand = props.number(row.id);
  if (!operand) return;
  switch (row.form) {
    case Form::kInteger:
      return archive->AddAttribute(row.name, *operand);
    case Form::kFraction:
      return archive->AddAttribute(row.name, fractionText(*operand).c_str());
    case Form::kColour:
      return archive->AddAttribute(row.name, colourText(*operand).c_str());
    case Form::kPoints:
      return archive->AddAttribute(row.name, pointText(UnitSwitch::EMU2Pt(*operand)).c_str());
    case Form::kEmuDouble:
      return archive->AddAttribute(row.name, double{UnitSwitch::EMU2Pt(*operand)});
    case Form::kWholeFixed:
      return archive->AddAttribute(row.name, static_cast<int>(FixNumConv(*operand)));
    case Form::kFixedDouble:
      return archive->AddAttribute(row.name, double{FixNumConv(*operand)});
    case Form::kWord:
      return archive->AddAttribute(row.name, row.word(*operand));
  }
}

}  // namespace ObjectWriter
