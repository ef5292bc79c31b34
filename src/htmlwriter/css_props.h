#pragma once

#include "base/write_archive.h"
#include "story/page_safety.h"
#include "wordreader/mso_word.h"
#include "wordreader/paragraph_prop.h"
#include "wordreader/span_prop.h"

class KDRFontTable;

namespace pagerex {

struct KEnv;

/// Paragraph properties as CSS. A null `prop` or `archive` writes nothing. `lineSpacing` is what the runs of
/// the paragraph need: odd, a percentage plus one; even, twips; unchanged when the paragraph has no line
/// spacing.
void WritePapProps(const KDRParagraphProp* prop, IWriteArchive* archive, int& lineSpacing);

/// Character properties as CSS. `lineSpacing` -1 means none; `fonts` may be null; `baseSize` in points.
void WriteChProps(const KDRSpanProp* prop, IWriteArchive* archive, const KDRFontTable* fonts, int lineSpacing,
                  float baseSize, const KPageSafety& safety = {});

/// Writes one border as a CSS property, by the CSS or the "mso" names of the border types. A border whose
/// width, type and space are all zero is undefined: `fallback`, if given, is written in its place. With
/// `compare`, a border that equals it in these is "none". Returns true if the border itself was written.
/// `ignored` is not looked at.
bool ConvertBorderEx(IWriteArchive* archive, const mso_word::BRCEX* brc, const char* property,
                     const char* ignored, const mso_word::BRCEX* fallback, const mso_word::BRCEX* compare);
bool MsoConvertBorderEx(IWriteArchive* archive, const mso_word::BRCEX* brc, const char* property,
                        const char* ignored, const mso_word::BRCEX* fallback, const mso_word::BRCEX* compare);

/// The CSS and the "mso" word of a border type; "none" above 27.
const char* BRCTYPE2Cssval(unsigned int type);
const char* BRCTYPE2MsoCssval(unsigned int type);

/// Font size in points of style `istd`, or `fallback` if there is none.
float GetBaseFontSize(const KEnv* env, unsigned int istd, float fallback);

/// True for the style indexes 1 to 9, the built-in headings.
constexpr bool IsTitle(unsigned int istd) {
  return istd >= 1 && istd <= 9;
}

}  // namespace pagerex
