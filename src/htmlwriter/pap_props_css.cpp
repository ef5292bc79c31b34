#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "base/number_text.h"
#include "htmlwriter/css_props.h"
#include "story/colour.h"

namespace pagerex {
namespace {

/// Hundredths of a character, which counts as 10.5 points.
NumberText characters(int hundredths) {
  return pointsOf(hundredths / 100.0 * 10.5);
}

/// An indent: the character form wins unless it is zero.
void writeIndent(const KDRParagraphProp& prop, IWriteArchive* archive, const char* property,
                 PropMask charsMask, int16_t chars, PropMask twipsMask, int16_t twips) {
  if (prop.has(charsMask) && chars != 0) {
    archive->AddCssProp(property, characters(chars).c_str());
  } else if (prop.has(twipsMask)) {
    archive->AddCssProp(property, points(twips).c_str());
  }
}

void writeSpacing(const KDRParagraphProp& prop, IWriteArchive* archive) {
  namespace mask = paragraph_mask;
  writeIndent(prop, archive, "margin-left", mask::dxcLeft, prop.dxcLeft, mask::dxaLeft, prop.dxaLeft);
  writeIndent(prop, archive, "text-indent", mask::dxcLeft1, prop.dxcLeft1, mask::dxaLeft1, prop.dxaLeft1);
  writeIndent(prop, archive, "margin-right", mask::dxcRight, prop.dxcRight, mask::dxaRight, prop.dxaRight);
  if (prop.has(mask::dyaAfter)) archive->AddCssProp("margin-bottom", points(prop.dyaAfter).c_str());
  archive->AddCssProp("margin-top", prop.has(mask::dyaBefore) ? points(prop.dyaBefore).c_str() : "0pt");
}

/// Bottom and left have no mso- prefix in their second name: readers of these pages rely on it.
struct BorderSide {
  PropMask mask;
  mso_word::BRCEX __ParagraphData::*brc;
  const char* property;
  const char* msoProperty;
};
constexpr BorderSide kBorderSides[] = {
    {paragraph_mask::brcTop, &__ParagraphData::brcTop, "border-top", "mso-border-top"},
    {paragraph_mask::brcRight, &__ParagraphData::brcRight, "border-right", "mso-border-right"},
    {paragraph_mask::brcBottom, &__ParagraphData::brcBottom, "border-bottom", "border-bottom"},
    {paragraph_mask::brcLeft, &__ParagraphData::brcLeft, "border-left", "border-left"},
};

void writeBorders(const KDRParagraphProp& prop, IWriteArchive* archive) {
  const auto present = [&](const BorderSide& side) { return prop.has(side.mask); };
  if (std::any_of(std::begin(kBorderSides), std::end(kBorderSides), present)) {
    FixedText<260> padding;
    for (const BorderSide& side : kBorderSides) {
      if (padding.size() > 0) padding.append(' ');
      if (!present(side)) {
        padding.append("0pt");
        continue;
      }
      const mso_word::BRCEX& brc = prop.*side.brc;
      ConvertBorderEx(archive, &brc, side.property, nullptr, nullptr, nullptr);
      MsoConvertBorderEx(archive, &brc, side.msoProperty, nullptr, nullptr, nullptr);
      padding.append(points(brc.space & 0x1F));
    }
    archive->AddCssProp("padding", padding.c_str());
  }
  if (prop.has(paragraph_mask::brcBar)) {
    ConvertBorderEx(archive, &prop.brcBar, "border", nullptr, nullptr, nullptr);
    MsoConvertBorderEx(archive, &prop.brcBar, "border", nullptr, nullptr, nullptr);
  }
}

/// A flag that has one CSS word when it is present with a certain value.
struct FlagWord {
  PropMask mask;
  uint8_t __ParagraphData::*flag;
  bool when;
  const char* property;
  const char* value;
};
constexpr FlagWord kFlagWords[] = {
    {paragraph_mask::fAdjustRight, &__ParagraphData::fAdjustRight, false, "layout-grid-mode", "char"},
    {paragraph_mask::fAutoSpaceDN, &__ParagraphData::fAutoSpaceDN, true, "text-autospace",
     "ideograph-numeric"},
    {paragraph_mask::fAutoSpaceDE, &__ParagraphData::fAutoSpaceDE, true, "text-autospace", "ideograph-other"},
    {paragraph_mask::fKeepFollow, &__ParagraphData::fKeepFollow, true, "page-break-after", "void"},
    {paragraph_mask::fOverflowPunct, &__ParagraphData::fOverflowPunct, true, "word-break", "simple"},
    {paragraph_mask::fPageBreakBefore, &__ParagraphData::fPageBreakBefore, true, "page-break-before",
     "always"},
    {paragraph_mask::fTopLinePunct, &__ParagraphData::fTopLinePunct, true, "punctuation-trim", "leading"},
    {paragraph_mask::fWordWrap, &__ParagraphData::fWordWrap, false, "word-break", "break-all"},
};

void writeFlags(const KDRParagraphProp& prop, IWriteArchive* archive) {
  for (const FlagWord& word : kFlagWords) {
    if (prop.has(word.mask) && (prop.*word.flag != 0) == word.when) {
      archive->AddCssProp(word.property, word.value);
    }
  }
}

const char* sprmPJc2Cssval(unsigned int jc) {
  constexpr const char* kWords[] = {"left", "center", "right", "justify", "justify"};
  return jc < std::size(kWords) ? kWords[jc] : "left";
}

const char* sprmPWAlignFont2Cssval(unsigned int alignment) {
  constexpr const char* kWords[] = {"top", "middle", "baseline", "bottom", ""};
  return alignment < std::size(kWords) ? kWords[alignment] : "baseline";
}

void writeAlignment(const KDRParagraphProp& prop, IWriteArchive* archive) {
  constexpr unsigned kDistribute = 4;
  if (prop.has(paragraph_mask::jc)) {
    archive->AddCssProp("text-align", sprmPJc2Cssval(prop.jc));
    if (prop.jc == kDistribute) archive->AddCssProp("text-justify", "distribute-all-lines");
  }
  if (prop.has(paragraph_mask::wAlignFont)) {
    archive->AddCssProp("vertical-align", sprmPWAlignFont2Cssval(prop.wAlignFont & 0xFF));
  }
}

void writeLineSpacing(const KDRParagraphProp& prop, IWriteArchive* archive, int& lineSpacing) {
  if (!prop.has(paragraph_mask::dyaLine)) return;
  if (prop.fMultLinespace == 1) {
    const int percent = std::max(prop.dyaLine * 100 / 240, 100);
    archive->AddCssProp("line-height", NumberText().appendInt(percent).append('%').c_str());
    lineSpacing = percent | 1;
  } else if (prop.fMultLinespace == 0) {
    lineSpacing = std::abs(int{prop.dyaLine});
    const double height = std::max(lineSpacing / 20.0, 10.5);
    archive->AddCssProp("line-height", NumberText().appendFixed(height, 1).append("pt").c_str());
  }
}

}  // namespace

void WritePapProps(const KDRParagraphProp* prop, IWriteArchive* archive, int& lineSpacing) {
  if (!prop || !archive) return;
  writeSpacing(*prop, archive);
  writeBorders(*prop, archive);
  writeFlags(*prop, archive);
  writeAlignment(*prop, archive);
  if (prop->has(paragraph_mask::shd)) {
    const uint32_t colour = MixColor(prop->shd);
    if (colour != mso_word::kAutomaticColour) archive->AddCssProp("background", wordColour(colour).c_str());
  }
  writeLineSpacing(*prop, archive, lineSpacing);
}

}  // namespace pagerex
