#include "formats/html/run_css.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "flow/word_colour.h"
#include "formats/html/css_values.h"

namespace pagerex {
namespace {

enum Property : uint8_t {
  kFamily,
  kSize,
  kWeight,
  kStyle,
  kStretch,
  kColour,
  kBackground,
  kBorder,
  kLine,
  kLineStyle,
  kLineThickness,
  kLineColour,
  kVerticalAlign,
  kTransform,
  kCaps,
  kSpacing,
  kKerning,
  kShadow,
  kStroke,
  kFill,
  kEmphasis,
  kEmphasisPosition,
  kPropertyCount
};

constexpr CssProperty kProperties[] = {
    {"font-family", "serif"},
    {"font-size", "medium"},
    {"font-weight", "normal"},
    {"font-style", "normal"},
    {"font-stretch", "normal"},
    {"color", "#000"},
    {"background-color", "#0000"},
    {"border", "0"},
    {"text-decoration-line", "none"},
    {"text-decoration-style", "solid"},
    {"text-decoration-thickness", "auto"},
    {"text-decoration-color", "currentcolor"},
    {"vertical-align", "baseline"},
    {"text-transform", "none"},
    {"font-variant-caps", "normal"},
    {"letter-spacing", "normal"},
    {"font-kerning", "auto"},
    {"text-shadow", "none"},
    {"-webkit-text-stroke", "0"},
    {"-webkit-text-fill-color", "currentcolor"},
    {"text-emphasis", "none"},
    {"text-emphasis-position", "over right"},
};
static_assert(std::size(kProperties) == kPropertyCount);

using Values = std::array<std::string, kPropertyCount>;

/// Kinds of underlines (kul) that are not one plain line.
struct UnderlineKind {
  uint8_t kind;
  bool isThick;
  const char* style;  ///< empty for solid
};

constexpr UnderlineKind kUnderlines[] = {
    {3, false, "double"},   // double
    {4, false, "dotted"},   // dotted
    {6, true, ""},          // thick
    {7, false, "dashed"},   // dash
    {9, false, "dashed"},   // dot, dash
    {10, false, "dashed"},  // dot, dot, dash
    {11, false, "wavy"},    // wave
    {20, true, "dotted"},   // dotted, heavy
    {23, true, "dashed"},   // dash, heavy
    {25, true, "dashed"},   // dot, dash, heavy
    {26, true, "dashed"},   // dot, dot, dash, heavy
    {27, true, "wavy"},     // wave, heavy
    {39, false, "dashed"},  // long dash
    {43, false, "wavy"},    // double wave
    {55, true, "dashed"},   // long dash, heavy
};

constexpr UnderlineKind kSingleUnderline = {1, false, ""};

UnderlineKind underlineKindOf(uint8_t kind) {
  const auto* found = std::find_if(std::begin(kUnderlines), std::end(kUnderlines),
                                   [kind](const UnderlineKind& row) { return row.kind == kind; });
  return found != std::end(kUnderlines) ? *found : kSingleUnderline;
}

/// Marks of emphasis (kcd).
constexpr const char* kEmphasisMarks[] = {"", "filled dot", "filled sesame", "open circle", "filled dot"};
constexpr uint8_t kDotBelow = 4;

std::string colourText(uint32_t rgb) {
  std::string text;
  appendColour(text, rgb);
  return text;
}

/// What lies right under the text.
Colour groundOf(const RunProperties& run, const Colour& below) {
  if (const Colour highlight = colourOfIndex(run.highlight); !highlight.isAutomatic) return highlight;
  return run.shading.isThere && !run.shading.fill.isAutomatic ? run.shading.fill : below;
}

uint16_t fontOf(const RunProperties& run, FontScript script) {
  if (run.isComplexScript) script = FontScript::kComplex;
  switch (script) {
    case FontScript::kEastAsian:
      return run.fonts.eastAsian;
    case FontScript::kOther:
      return run.fonts.other;
    case FontScript::kComplex:
      return run.fonts.complex;
    case FontScript::kAscii:
      break;
  }
  return run.fonts.ascii;
}

/// In half-points, before it is raised; 0 for none.
int32_t sizeOf(const RunProperties& run, FontScript script) {
  constexpr int32_t kMost = 3276;
  const bool isComplex = run.isComplexScript || script == FontScript::kComplex;
  return std::min<int32_t>(isComplex ? run.complexSizeHalfPoints : run.sizeHalfPoints, kMost);
}

std::string sizeText(int32_t halfPoints, bool isRaised) {
  std::string text;
  if (halfPoints != 0) appendHundredths(text, halfPoints * (isRaised ? kRaisedPercent : 100) / 2, "pt");
  return text;
}

void setFont(const RunProperties& run, FontScript script, FontFamilies& fonts, Values& values) {
  const int32_t size = sizeOf(run, script);
  values[kFamily] = fonts.Of(fontOf(run, script));
  values[kSize] = sizeText(size, run.verticalAlignment != 0);
  if (run.bold) values[kWeight] = "bold";
  if (run.italic) values[kStyle] = "italic";
  // Only fonts with narrow or wide faces show it: to squeeze glyphs there is nothing that lets text flow on.
  constexpr int32_t kNarrowest = 50, kWidest = 200;
  if (run.scalePercent != 100 && run.scalePercent != 0) {
    values[kStretch] = std::to_string(std::clamp<int32_t>(run.scalePercent, kNarrowest, kWidest)) + '%';
  }
  if (run.kerningHalfPoints == 0 || (size != 0 && size < run.kerningHalfPoints)) values[kKerning] = "none";
  if (run.caps) values[kTransform] = "uppercase";
  if (run.smallCaps) values[kCaps] = "small-caps";
  if (run.spacing != 0) appendPoints(values[kSpacing], run.spacing);
}

void setColours(const RunProperties& run, const Colour& below, Values& values) {
  const Colour ground = groundOf(run, below), own = groundOf(run, {});
  values[kColour] = colourText(run.colour.isAutomatic ? automaticColourOn(ground) : run.colour.rgb);
  if (!own.isAutomatic) values[kBackground] = colourText(own.rgb);
  if (run.border.isThere()) appendBorder(values[kBorder], run.border);
}

/// Hidden text that is shown has dots below it, as on Word's screen.
void setLines(const RunProperties& run, Values& values) {
  const bool isDotted = run.hidden && run.underline == 0;
  const UnderlineKind kind = underlineKindOf(run.underline);
  if (run.underline != 0 || isDotted) values[kLine] = "underline";
  if (run.strike || run.doubleStrike)
    values[kLine] += values[kLine].empty() ? "line-through" : " line-through";
  if (isDotted) {
    values[kLineStyle] = "dotted";
  } else if (run.underline == 0) {
    if (run.doubleStrike) values[kLineStyle] = "double";
  } else {
    values[kLineStyle] = kind.style;
    if (kind.isThick) values[kLineThickness] = ".12em";
    if (!run.underlineColour.isAutomatic) values[kLineColour] = colourText(run.underlineColour.rgb);
  }
}

void setPlace(const RunProperties& run, Values& values) {
  if (run.verticalAlignment != 0) {
    values[kVerticalAlign] = run.verticalAlignment == 1 ? "super" : "sub";
  } else if (run.raisedHalfPoints != 0) {
    appendHalfPoints(values[kVerticalAlign], run.raisedHalfPoints);
  }
}

void setEffects(const RunProperties& run, Values& values) {
  if (run.emboss) {
    values[kShadow] = "-.04em -.04em #fff,.04em .04em #888";
  } else if (run.imprint) {
    values[kShadow] = "-.04em -.04em #888,.04em .04em #fff";
  } else if (run.shadow) {
    values[kShadow] = ".06em .06em .04em #888";
  }
  if (run.outline) {
    values[kStroke] = ".03em";
    values[kFill] = "#0000";
  }
  if (run.emphasisMark == 0 || run.emphasisMark >= std::size(kEmphasisMarks)) return;
  values[kEmphasis] = kEmphasisMarks[run.emphasisMark];
  if (run.emphasisMark == kDotBelow) values[kEmphasisPosition] = "under right";
}

Values valuesOf(const RunProperties& run, FontScript script, FontFamilies& fonts, const Colour& below) {
  Values values;
  setFont(run, script, fonts, values);
  setColours(run, below, values);
  setLines(run, values);
  setPlace(run, values);
  setEffects(run, values);
  return values;
}

/// What text shows in these elements, before they have a class.
void addTags(Tags tags, const RunProperties& base, Values& values) {
  if (tags & kTagBold) values[kWeight] = "bold";
  if (tags & kTagItalic) values[kStyle] = "italic";
  // Lines of what is around an element are none of its own.
  for (const Property property : {kLine, kLineStyle, kLineThickness, kLineColour}) values[property].clear();
  if (tags & kTagUnderline) values[kLine] = "underline";
  if (tags & kTagStrike) values[kLine] += tags & kTagUnderline ? " line-through" : "line-through";
  if (tags & (kTagRaised | kTagLowered)) {
    values[kVerticalAlign] = tags & kTagRaised ? "super" : "sub";
    values[kSize] = sizeText(sizeOf(base, FontScript::kAscii), true);
  }
}

}  // namespace

void appendRunCss(std::string& out, const RunProperties& run, const RunProperties& base, FontScript script,
                  Tags tags, FontFamilies& fonts, const Grounds& grounds) {
  const Values values = valuesOf(run, script, fonts, grounds.run);
  Values baseValues = valuesOf(base, FontScript::kAscii, fonts, grounds.base);
  addTags(tags, base, baseValues);
  appendDifferences(out, kProperties, values, baseValues);
}

RunProperties lookOfBlock(const RunProperties& run) {
  RunProperties block = run;
  block.underline = 0;
  block.underlineColour = {};
  block.strike = block.doubleStrike = block.hidden = false;
  block.highlight = 0;
  block.shading = {};
  block.border = {};
  block.verticalAlignment = 0;
  block.raisedHalfPoints = 0;
  return block;
}

RunProperties unstyledRun() {
  RunProperties run;
  run.sizeHalfPoints = run.complexSizeHalfPoints = 0;
  run.kerningHalfPoints = 1;
  run.fonts = {0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF};
  return run;
}

bool looksAlike(const RunProperties& a, const RunProperties& b) {
  RunProperties other = b;
  other.noProof = a.noProof;
  other.language = a.language;
  other.eastAsianLanguage = a.eastAsianLanguage;
  other.complexLanguage = a.complexLanguage;
  other.characterStyle = a.characterStyle;
  other.revision = a.revision;
  other.deletion = a.deletion;
  return other == a;
}

}  // namespace pagerex
