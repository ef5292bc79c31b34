#include "convert/host_properties.h"

#include "base/file_time.h"

namespace pagerex {

static_assert(static_cast<int>(Revision::kInserted) == PAGEREX_CHANGE_INSERTED &&
              static_cast<int>(Revision::kDeleted) == PAGEREX_CHANGE_DELETED &&
              static_cast<int>(Revision::kMovedHere) == PAGEREX_CHANGE_MOVED_HERE &&
              static_cast<int>(Revision::kMovedAway) == PAGEREX_CHANGE_MOVED_AWAY);
static_assert(static_cast<int>(Alignment::kStart) == PAGEREX_ALIGN_START &&
              static_cast<int>(Alignment::kCentre) == PAGEREX_ALIGN_CENTRE &&
              static_cast<int>(Alignment::kEnd) == PAGEREX_ALIGN_END &&
              static_cast<int>(Alignment::kJustify) == PAGEREX_ALIGN_JUSTIFY &&
              static_cast<int>(Alignment::kDistribute) == PAGEREX_ALIGN_DISTRIBUTE);
using LineSpacing = ParagraphProperties::LineSpacing;
static_assert(static_cast<int>(LineSpacing::kMultiple) == PAGEREX_LINES_MULTIPLE &&
              static_cast<int>(LineSpacing::kAtLeast) == PAGEREX_LINES_AT_LEAST &&
              static_cast<int>(LineSpacing::kExactly) == PAGEREX_LINES_EXACTLY);

pagerex_colour hostColour(const Colour& colour) {
  return {colour.rgb, colour.isAutomatic};
}

/// What is no line is all zeros.
pagerex_border hostBorder(const Border& border) {
  if (!border.isThere()) return {};
  return {border.kind, border.widthEighths, border.spacePoints, border.hasShadow, hostColour(border.colour)};
}

pagerex_shading hostShading(const Shading& shading) {
  return {shading.isThere, hostColour(shading.fill)};
}

pagerex_date hostDate(uint32_t dttm) {
  const LocalTime time = localTimeOfDttm(dttm);
  return {time.year, time.month, time.day, time.hour, time.minute};
}

pagerex_change hostChange(const Revision& revision) {
  if (revision.kind == Revision::kNone) return {};
  return {revision.kind, revision.author, hostDate(revision.dttm)};
}

// HostRun

const pagerex_run* HostRun::Of(const RunProperties& properties, const HostNames& names) {
  // Not by their address: of a long document properties are forgotten, and others take their place.
  if (isKnown_ && properties == last_) return &told_;
  const bool hasOtherNames =
      !isKnown_ || !(properties.fonts == last_.fonts) || properties.characterStyle != last_.characterStyle;
  isKnown_ = false;
  if (hasOtherNames) SpellNames(properties, names);
  const RunProperties& from = properties;
  pagerex_run& to = told_;
  to.size = sizeof to;
  to.bold = from.bold;
  to.italic = from.italic;
  to.strike = from.strike;
  to.double_strike = from.doubleStrike;
  to.outline = from.outline;
  to.shadow = from.shadow;
  to.emboss = from.emboss;
  to.imprint = from.imprint;
  to.small_caps = from.smallCaps;
  to.caps = from.caps;
  to.hidden = from.hidden;
  to.is_right_to_left = from.isRightToLeft;
  to.is_complex_script = from.isComplexScript;
  to.no_proof = from.noProof;
  to.underline = from.underline;
  to.highlight = from.highlight;
  to.vertical_alignment = from.verticalAlignment;
  to.emphasis_mark = from.emphasisMark;
  to.size_half_points = from.sizeHalfPoints;
  to.complex_size_half_points = from.complexSizeHalfPoints;
  to.spacing = from.spacing;
  to.scale_percent = from.scalePercent;
  to.raised_half_points = from.raisedHalfPoints;
  to.kerning_half_points = from.kerningHalfPoints;
  to.language = from.language;
  to.east_asian_language = from.eastAsianLanguage;
  to.complex_language = from.complexLanguage;
  to.character_style_index = from.characterStyle;
  to.colour = hostColour(from.colour);
  to.underline_colour = hostColour(from.underlineColour);
  to.border = hostBorder(from.border);
  to.shading = hostShading(from.shading);
  to.insertion = hostChange(from.revision);
  to.deletion = hostChange(from.deletion);
  last_ = properties;
  isKnown_ = true;
  return &told_;
}

void HostRun::SpellNames(const RunProperties& properties, const HostNames& names) {
  const FontNumbers& fonts = properties.fonts;
  texts_.Fill({{names.Font(fonts.ascii), &told_.font},
               {names.Font(fonts.eastAsian), &told_.east_asian_font},
               {names.Font(fonts.other), &told_.other_font},
               {names.Font(fonts.complex), &told_.complex_font},
               {names.Style(properties.characterStyle), &told_.character_style}});
}

// HostParagraph

void HostParagraph::Fill(const ParagraphProperties& from, pagerex_paragraph& to) {
  to.style_index = from.style;
  to.outline_level = from.outlineLevel;
  to.list_level = from.listLevel;
  to.alignment = static_cast<uint8_t>(from.alignment);
  to.is_right_to_left = from.isRightToLeft;
  to.keep_lines = from.keepLines;
  to.keep_with_next = from.keepWithNext;
  to.page_break_before = from.pageBreakBefore;
  to.widow_control = from.widowControl;
  to.spaces_only_between_styles = from.spacesOnlyBetweenStyles;
  to.no_hyphens = from.noHyphens;
  to.no_line_numbers = from.noLineNumbers;
  to.auto_space_before = from.autoSpaceBefore;
  to.auto_space_after = from.autoSpaceAfter;
  to.line_spacing = static_cast<uint8_t>(from.lineSpacing);
  to.line_height = from.lineHeight;
  to.space_before = from.spaceBefore;
  to.space_after = from.spaceAfter;
  to.text_flow = from.textFlow;
  to.indent_start = from.indentStart;
  to.indent_end = from.indentEnd;
  to.indent_first_line = from.indentFirstLine;
  to.top = hostBorder(from.top);
  to.start = hostBorder(from.start);
  to.bottom = hostBorder(from.bottom);
  to.end = hostBorder(from.end);
  to.between = hostBorder(from.between);
  to.bar = hostBorder(from.bar);
  to.shading = hostShading(from.shading);
  tabs_.clear();
  for (const TabStop& tab : from.tabs) tabs_.push_back({tab.position, tab.alignment, tab.leader});
  to.tabs = tabs_.data();
  to.tab_count = static_cast<uint32_t>(tabs_.size());
  const Frame& frame = from.frame;
  to.frame.is_there = frame.isThere;
  to.frame.is_least_height = frame.isLeastHeight;
  to.frame.horizontal_anchor = frame.horizontalAnchor;
  to.frame.vertical_anchor = frame.verticalAnchor;
  to.frame.wrap = frame.wrap;
  to.frame.drop_cap_lines = frame.dropCapLines;
  to.frame.is_drop_cap_in_margin = frame.isDropCapInMargin;
  to.frame.left = frame.left;
  to.frame.top = frame.top;
  to.frame.width = frame.width;
  to.frame.height = frame.height;
}

}  // namespace pagerex
