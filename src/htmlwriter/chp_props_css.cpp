#include <algorithm>

#include "base/encoding.h"
#include "base/number_text.h"
#include "htmlwriter/css_props.h"
#include "htmlwriter/env.h"
#include "story/colour.h"
#include "wordreader/font_table.h"

namespace pagerex {
namespace {

namespace mask = span_mask;

/// Steps of a run's properties in the order in which they come out.
class ChpCss {
 public:
  ChpCss(const KDRSpanProp& prop, IWriteArchive* archive, const KDRFontTable* fonts,
         const KPageSafety& safety)
      : prop_(prop), archive_(archive), fonts_(fonts), safety_(safety) {}

  void write(int lineSpacing, float baseSize) {
    if (hasColour()) add("color", wordColour(prop_.cv).c_str());
    if (prop_.has(mask::dxaSpace)) add("letter-spacing", points(prop_.dxaSpace).c_str());
    addSwitch(mask::fBold, prop_.fBold, "font-weight", "bold", "normal");
    addSwitch(mask::fCaps, prop_.fCaps, "text-transform", "uppercase", "none");
    addSwitch(mask::kcd, prop_.kcd, "font-emphasize", "dot", "none");
    writeDecorations();
    if (isSet(mask::fEmboss, prop_.fEmboss)) add("color", "gray");
    if (isSet(mask::fImprint, prop_.fImprint)) add("color", "gray");
    addSwitch(mask::fItalic, prop_.fItalic, "font-style", "italic", "normal");
    if (isSet(mask::fOutline, prop_.fOutline)) add("font-weight", "bold");
    if (isSet(mask::fShadow, prop_.fShadow)) add("font-weight", "bold");
    addSwitch(mask::fSmallCaps, prop_.fSmallCaps, "font-variant", "small-caps", "normal");
    if (isSet(mask::fVanish, prop_.fVanish)) add("display", "none");
    const double size = writeSize(baseSize);
    writePosition();
    writeHighlight();
    writeFont();
    if (prop_.has(mask::shd)) writeBackground(MixColor(prop_.shd));
    if (lineSpacing != -1) writeLineHeight(lineSpacing, size);
  }

 private:
  void add(const char* property, const char* value) { archive_->AddCssProp(property, value); }

  bool isSet(PropMask field, int value) const { return prop_.has(field) && value != 0; }

  void addSwitch(PropMask field, int value, const char* property, const char* on, const char* off) {
    if (prop_.has(field)) add(property, value != 0 ? on : off);
  }

  /// An automatic colour is none: it is not written, and a revision may colour the text.
  bool hasColour() const { return prop_.has(mask::cv) && prop_.cv != mso_word::kAutomaticColour; }

  bool isStruck() const {
    if (prop_.has(mask::fStrike)) return prop_.fStrike != 0;
    return isSet(mask::fDStrike, prop_.fDStrike);
  }

  /// Only the presence of the revision marks counts, so that a revision always shows and is never resolved.
  void writeDecorations() {
    FixedText<64> text;
    const auto append = [&text](const char* word) {
      if (text.size() > 0) text.append(' ');
      text.append(word);
    };
    if (isStruck()) append("line-through");
    if (isSet(mask::kul, prop_.kul)) append("underline");
    if (prop_.has(mask::fRMark)) {
      append("underline");
      if (!hasColour()) add("color", "#0000FF");
    }
    if (prop_.has(mask::fRMarkDel)) {
      append("line-through");
      if (!hasColour()) add("color", "#FF0000");
    }
    if (text.size() > 0) add("text-decoration", text.c_str());
  }

  /// The size in points that the run ends up with, written or not.
  double writeSize(float baseSize) {
    const bool raised = isSet(mask::hpsPos, prop_.hpsPos);
    const bool script = prop_.has(mask::iss) && (prop_.iss == 1 || prop_.iss == 2);
    double size = prop_.has(mask::hps) ? prop_.hps / 2.0 : double{baseSize};
    if (raised || script) size *= 0.83;
    if (prop_.has(mask::hps) || raised || script) add("font-size", pointsOf(size).c_str());
    return size;
  }

  void writePosition() {
    if (isSet(mask::hpsPos, prop_.hpsPos)) add("vertical-align", prop_.hpsPos > 0 ? "super" : "sub");
    if (!prop_.has(mask::iss)) return;
    if (prop_.iss == 1) add("vertical-align", "super");
    if (prop_.iss == 2) add("vertical-align", "sub");
  }

  void writeHighlight() {
    if (prop_.has(mask::highlight)) writeBackground(Ico2RGB(prop_.highlight));
  }

  void writeBackground(uint32_t colour) {
    if (colour != mso_word::kAutomaticColour) add("background", wordColour(colour).c_str());
  }

  /// A run that names its font without a hint gets none.
  void writeFont() {
    if (!fonts_) return;
    unsigned int index;
    if (prop_.has(mask::symbol)) {
      index = prop_.ftcSym;
    } else if (isSet(mask::idctHint, prop_.idctHint) && prop_.has(mask::rgftc1)) {
      index = prop_.rgftc[1];
    } else if (prop_.has(mask::idctHint) && prop_.idctHint == 0 && prop_.has(mask::rgftc0)) {
      index = prop_.rgftc[0];
    } else {
      return;
    }
    KFontX font;
    if (fonts_->Item(index, &font) != Status::kOk || !font.name) return;
    if (safety_.on) {
      add("font-family", safety_.FontName(KEncoding::WCHAR2BitToString(65001, font.name)).c_str());
    } else {
      archive_->AddCssProp("font-family", font.name);
    }
  }

  /// A line is never lower than the run's own size, and never below 10.5 points.
  void writeLineHeight(int lineSpacing, double size) {
    NumberText text;
    if (lineSpacing & 1) {
      text.appendInt(lineSpacing - 1).append('%');
    } else {
      text.appendFixed(std::max({lineSpacing / 20.0, 10.5, size}), 1).append("pt");
    }
    add("line-height", text.c_str());
  }

  const KDRSpanProp& prop_;
  IWriteArchive* archive_;
  const KDRFontTable* fonts_;
  const KPageSafety& safety_;
};

}  // namespace

void WriteChProps(const KDRSpanProp* prop, IWriteArchive* archive, const KDRFontTable* fonts, int lineSpacing,
                  float baseSize, const KPageSafety& safety) {
  if (prop && archive) ChpCss(*prop, archive, fonts, safety).write(lineSpacing, baseSize);
}

float GetBaseFontSize(const KEnv* env, unsigned int istd, float fallback) {
  if (!env || istd == mso_word::kNoCharacterStyle) return fallback;
  const std::vector<float>& sizes = env->conversion->styleFontSizes;
  return istd < sizes.size() && sizes[istd] >= 0 ? sizes[istd] : fallback;
}

}  // namespace pagerex
