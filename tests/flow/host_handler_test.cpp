// Each field of what a host gets of text and paragraphs: values that all differ, handed to the adapter
// itself.

#include "flow/handed.h"

using namespace flow_test;

namespace pagerex {
namespace {

const ParagraphProperties kPlain;
const RunProperties kPlainRun;

ParagraphFacts factsOf(const ParagraphProperties& properties, const RunProperties& mark = kPlainRun) {
  return {properties, u"Body", 0, u"", nullptr, ParagraphFacts::Follow::kTab, false, false, 0, 0, 0, mark, 0};
}

}  // namespace

TEST(HostHandler, HandsOnFlagsOfText) {
  static constexpr struct {
    bool RunProperties::*from;
    uint8_t pagerex_run::*to;
  } kFlags[] = {
      {&RunProperties::bold, &pagerex_run::bold},
      {&RunProperties::italic, &pagerex_run::italic},
      {&RunProperties::strike, &pagerex_run::strike},
      {&RunProperties::doubleStrike, &pagerex_run::double_strike},
      {&RunProperties::outline, &pagerex_run::outline},
      {&RunProperties::shadow, &pagerex_run::shadow},
      {&RunProperties::emboss, &pagerex_run::emboss},
      {&RunProperties::imprint, &pagerex_run::imprint},
      {&RunProperties::smallCaps, &pagerex_run::small_caps},
      {&RunProperties::caps, &pagerex_run::caps},
      {&RunProperties::hidden, &pagerex_run::hidden},
      {&RunProperties::isRightToLeft, &pagerex_run::is_right_to_left},
      {&RunProperties::isComplexScript, &pagerex_run::is_complex_script},
      {&RunProperties::noProof, &pagerex_run::no_proof},
  };
  HostRun host;
  for (const auto& flag : kFlags) {
    RunProperties properties;
    properties.*flag.from = true;
    const pagerex_run told = *host.Of(properties, {});
    for (const auto& other : kFlags) EXPECT_EQ(told.*other.to, &other == &flag ? 1 : 0);
  }
}

TEST(HostHandler, HandsOnPropertiesOfText) {
  RunProperties p;
  p.underline = 3, p.highlight = 4, p.verticalAlignment = 2, p.emphasisMark = 5;
  p.sizeHalfPoints = 31, p.complexSizeHalfPoints = 32, p.spacing = -33, p.scalePercent = 134;
  p.raisedHalfPoints = -6, p.kerningHalfPoints = 36;
  p.colour = {0x112233, false}, p.underlineColour = {0x445566, false};
  p.border = border(6);
  p.shading = {true, {0x778899, false}};
  p.fonts = {0, 1, 2, 3};
  p.language = 0x0407, p.eastAsianLanguage = 0x0411, p.complexLanguage = 0x040D;
  p.characterStyle = 7;
  p.revision = {Revision::kMovedHere, 8, kDttm};
  p.deletion = {Revision::kDeleted, 9, kDttm};
  const Styles styles;
  const Fonts fonts;
  HostRun host;
  const pagerex_run& told = *host.Of(p, {&styles, &fonts});
  EXPECT_EQ(told.size, sizeof told);
  EXPECT_EQ(spelled(told.font), "Arial");
  EXPECT_EQ(spelled(told.east_asian_font), "SimSun");
  EXPECT_EQ(spelled(told.other_font), "Symbol");
  EXPECT_EQ(spelled(told.complex_font), "Miriam");
  EXPECT_EQ(spelled(told.character_style), "Strong");
  EXPECT_EQ(told.character_style_index, 7);
  EXPECT_EQ(told.underline, 3);
  EXPECT_EQ(told.highlight, 4);
  EXPECT_EQ(told.vertical_alignment, 2);
  EXPECT_EQ(told.emphasis_mark, 5);
  EXPECT_EQ(told.size_half_points, 31);
  EXPECT_EQ(told.complex_size_half_points, 32);
  EXPECT_EQ(told.spacing, -33);
  EXPECT_EQ(told.scale_percent, 134);
  EXPECT_EQ(told.raised_half_points, -6);
  EXPECT_EQ(told.kerning_half_points, 36);
  EXPECT_EQ(told.language, 0x0407);
  EXPECT_EQ(told.east_asian_language, 0x0411);
  EXPECT_EQ(told.complex_language, 0x040D);
  EXPECT_EQ(told.colour.rgb, 0x112233u);
  EXPECT_EQ(told.underline_colour.rgb, 0x445566u);
  expectBorder(told.border, 6);
  EXPECT_EQ(told.shading.is_there, 1);
  EXPECT_EQ(told.shading.fill.rgb, 0x778899u);
  EXPECT_EQ(told.insertion.kind, PAGEREX_CHANGE_MOVED_HERE);
  EXPECT_EQ(told.insertion.author, 8u);
  expectDate(told.insertion.date);
  EXPECT_EQ(told.deletion.kind, PAGEREX_CHANGE_DELETED);
  EXPECT_EQ(told.deletion.author, 9u);
}

TEST(HostHandler, TellsPropertiesAnewWhereOthersTookTheirPlace) {
  const Fonts fonts;
  HostRun host;
  RunProperties place;
  EXPECT_EQ(spelled(host.Of(place, {nullptr, &fonts})->font), "Arial");
  place.fonts.ascii = 1;
  place.bold = true;
  EXPECT_EQ(spelled(host.Of(place, {nullptr, &fonts})->font), "SimSun");
  EXPECT_EQ(host.Of(place, {nullptr, &fonts})->bold, 1);
}

TEST(HostHandler, GivesNoNamesWhereNobodyTellsThem) {
  HostRun host;
  const pagerex_run& told = *host.Of(kPlainRun, {});
  EXPECT_EQ(told.font.length, 0u);
  EXPECT_NE(told.font.data, nullptr);
  EXPECT_EQ(told.character_style.length, 0u);
}

TEST(HostHandler, HandsOnWhatAParagraphIs) {
  Handed<pagerex_paragraph> handed(&pagerex_handler::begin_paragraph, [](const pagerex_paragraph& p) {
    EXPECT_EQ(p.position, 11u);
    EXPECT_EQ(p.style_index, 12u);
    EXPECT_EQ(spelled(p.style), "List");
    EXPECT_EQ(p.heading_level, 2);
    EXPECT_EQ(p.outline_level, 3);
    EXPECT_EQ(p.list_level, 4);
    EXPECT_EQ(spelled(p.label), "\xE2\x80\xA2");
    EXPECT_EQ(p.label_run->bold, 1);
    EXPECT_EQ(p.mark_run->italic, 1);
    EXPECT_EQ(p.mark_run->bold, 0);
    EXPECT_EQ(p.label_follow, PAGEREX_FOLLOW_NOTHING);
    EXPECT_EQ(p.is_list_item, 1);
    EXPECT_EQ(p.is_bullet, 1);
    EXPECT_EQ(p.list_id, -5);
    EXPECT_EQ(p.number, 6);
    EXPECT_EQ(p.number_format, 23);
  });
  ParagraphProperties properties;
  properties.style = 12, properties.outlineLevel = 3, properties.listLevel = 4;
  RunProperties label, mark;
  label.bold = mark.italic = true;
  handed.handler.BeginParagraph({properties, u"List", 2, u"\u2022", &label, ParagraphFacts::Follow::kNothing,
                                 true, true, -5, 6, 23, mark, 11});
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostHandler, HandsOnFlagsOfParagraphs) {
  static constexpr struct {
    bool ParagraphProperties::*from;
    uint8_t pagerex_paragraph::*to;
  } kFlags[] = {
      {&ParagraphProperties::isRightToLeft, &pagerex_paragraph::is_right_to_left},
      {&ParagraphProperties::keepLines, &pagerex_paragraph::keep_lines},
      {&ParagraphProperties::keepWithNext, &pagerex_paragraph::keep_with_next},
      {&ParagraphProperties::pageBreakBefore, &pagerex_paragraph::page_break_before},
      {&ParagraphProperties::widowControl, &pagerex_paragraph::widow_control},
      {&ParagraphProperties::spacesOnlyBetweenStyles, &pagerex_paragraph::spaces_only_between_styles},
      {&ParagraphProperties::noHyphens, &pagerex_paragraph::no_hyphens},
      {&ParagraphProperties::noLineNumbers, &pagerex_paragraph::no_line_numbers},
      {&ParagraphProperties::autoSpaceBefore, &pagerex_paragraph::auto_space_before},
      {&ParagraphProperties::autoSpaceAfter, &pagerex_paragraph::auto_space_after},
  };
  for (const auto& flag : kFlags) {
    Handed<pagerex_paragraph> handed(&pagerex_handler::begin_paragraph, [&](const pagerex_paragraph& p) {
      for (const auto& other : kFlags) EXPECT_EQ(p.*other.to, &other == &flag ? 1 : 0);
    });
    ParagraphProperties properties;
    properties.widowControl = false;
    properties.*flag.from = true;
    handed.handler.BeginParagraph(factsOf(properties));
    EXPECT_EQ(handed.calls, 1);
  }
}

TEST(HostHandler, HandsOnHowAParagraphLooks) {
  Handed<pagerex_paragraph> handed(&pagerex_handler::begin_paragraph, [](const pagerex_paragraph& p) {
    EXPECT_EQ(p.alignment, PAGEREX_ALIGN_JUSTIFY);
    EXPECT_EQ(p.line_spacing, PAGEREX_LINES_EXACTLY);
    EXPECT_EQ(p.line_height, 300);
    EXPECT_EQ(p.space_before, 21);
    EXPECT_EQ(p.space_after, 22);
    EXPECT_EQ(p.text_flow, 3);
    EXPECT_EQ(p.indent_start, 24);
    EXPECT_EQ(p.indent_end, 25);
    EXPECT_EQ(p.indent_first_line, -26);
    expectBorder(p.top, 1);
    expectBorder(p.start, 2);
    expectBorder(p.bottom, 3);
    expectBorder(p.end, 4);
    expectBorder(p.between, 5);
    expectBorder(p.bar, 6);
    EXPECT_EQ(p.shading.fill.rgb, 0xABCDEFu);
    ASSERT_EQ(p.tab_count, 2u);
    EXPECT_EQ(p.tabs[1].position, 900);
    EXPECT_EQ(p.tabs[1].alignment, 2);
    EXPECT_EQ(p.tabs[1].leader, 1);
    EXPECT_EQ(p.label_run, nullptr);
  });
  ParagraphProperties properties;
  properties.alignment = Alignment::kJustify;
  properties.lineSpacing = ParagraphProperties::LineSpacing::kExactly, properties.lineHeight = 300;
  properties.spaceBefore = 21, properties.spaceAfter = 22, properties.textFlow = 3;
  properties.indentStart = 24, properties.indentEnd = 25, properties.indentFirstLine = -26;
  properties.top = border(1), properties.start = border(2), properties.bottom = border(3);
  properties.end = border(4), properties.between = border(5), properties.bar = border(6);
  properties.shading = {true, {0xABCDEF, false}};
  properties.tabs = {{100, 0, 0}, {900, 2, 1}};
  handed.handler.BeginParagraph(factsOf(properties));
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostHandler, HandsOnFrames) {
  Handed<pagerex_paragraph> handed(&pagerex_handler::begin_paragraph, [](const pagerex_paragraph& p) {
    EXPECT_EQ(p.frame.is_there, 1);
    EXPECT_EQ(p.frame.left, -4);
    EXPECT_EQ(p.frame.top, 5);
    EXPECT_EQ(p.frame.width, 6);
    EXPECT_EQ(p.frame.height, 7);
    EXPECT_EQ(p.frame.is_least_height, 1);
    EXPECT_EQ(p.frame.horizontal_anchor, 2);
    EXPECT_EQ(p.frame.vertical_anchor, 1);
    EXPECT_EQ(p.frame.wrap, 3);
    EXPECT_EQ(p.frame.drop_cap_lines, 8);
    EXPECT_EQ(p.frame.is_drop_cap_in_margin, 1);
  });
  ParagraphProperties properties;
  properties.frame = {true, -4, 5, 6, 7, true, 2, 1, 3, 8, true};
  handed.handler.BeginParagraph(factsOf(properties));
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostHandler, LeavesControlsOutOfTexts) {
  std::string all;
  pagerex_handler host = {};
  host.size = sizeof host;
  host.text = [](void* user, const char* text, size_t length, const pagerex_run*) {
    static_cast<std::string*>(user)->append(text, length).append("|");
    return 0;
  };
  RunControl control;
  HostHandler handler(host, &all, control);
  handler.Text(
      u"a\x0001"
      u"b\xD800",
      kPlainRun);
  handler.Text(u"\x0002", kPlainRun);
  EXPECT_EQ(all, "ab\xEF\xBF\xBD|");
}

}  // namespace pagerex
