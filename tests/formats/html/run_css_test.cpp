#include "formats/html/run_css.h"

#include <gtest/gtest.h>

#include <functional>

namespace pagerex {
namespace {

class Fonts final : public ToldFonts {
 public:
  std::u16string_view NameOf(uint16_t ftc) const override { return FactsOf(ftc).name; }
  FontFacts FactsOf(uint16_t ftc) const override {
    static constexpr const char16_t* kNames[] = {u"A", u"B", u"C", u"D"};
    return {ftc < 4 ? kNames[ftc] : u"", {}, 0, 0, 0, {}};
  }
};

using Change = std::function<void(RunProperties&)>;

std::string cssBetween(const RunProperties& run, const RunProperties& base, Tags tags = 0,
                       const Grounds& grounds = {}, FontScript script = FontScript::kAscii) {
  const Fonts fonts;
  FontFamilies families(&fonts);
  std::string out;
  appendRunCss(out, run, base, script, tags, families, grounds);
  return out;
}

RunProperties changed(const Change& change, RunProperties run = {}) {
  change(run);
  return run;
}

std::string cssOf(const Change& change, Tags tags = 0, const Grounds& grounds = {}) {
  return cssBetween(changed(change), {}, tags, grounds);
}

constexpr Colour kBlack = {0x000000, false}, kWhite = {0xFFFFFF, false}, kRed = {0xFF0000, false};

}  // namespace

TEST(RunCss, IsNothingWhereNothingDiffers) {
  EXPECT_EQ(cssBetween({}, {}), "");
  const RunProperties red = changed([](RunProperties& run) { run.colour = kRed; });
  EXPECT_EQ(cssBetween(red, red), "");
}

TEST(RunCss, SaysEachPropertyThatDiffers) {
  const struct {
    Change change;
    const char* css;
  } kCases[] = {
      {[](RunProperties& run) { run.bold = true; }, "font-weight:bold;"},
      {[](RunProperties& run) { run.italic = true; }, "font-style:italic;"},
      {[](RunProperties& run) { run.sizeHalfPoints = 25; }, "font-size:12.5pt;"},
      {[](RunProperties& run) { run.sizeHalfPoints = 0xFFFF; }, "font-size:1638pt;"},
      {[](RunProperties& run) { run.fonts.ascii = 1; }, "font-family:\"B\",serif;"},
      {[](RunProperties& run) { run.colour = kRed; }, "color:#f00;"},
      {[](RunProperties& run) { run.highlight = 7; }, "background-color:#ff0;"},
      {[](RunProperties& run) { run.highlight = 200; }, ""},
      {[](RunProperties& run) {
         run.shading = {true, kRed};
       },
       "background-color:#f00;"},
      {[](RunProperties& run) {
         run.shading = {true, {}};
       },
       ""},
      {[](RunProperties& run) {
         run.border = {1, 4, 0, false, {}};
       },
       "border:.5pt solid;"},
      {[](RunProperties& run) { run.caps = true; }, "text-transform:uppercase;"},
      {[](RunProperties& run) { run.smallCaps = true; }, "font-variant-caps:small-caps;"},
      {[](RunProperties& run) { run.spacing = 30; }, "letter-spacing:1.5pt;"},
      {[](RunProperties& run) { run.spacing = -5; }, "letter-spacing:-.25pt;"},
      {[](RunProperties& run) { run.scalePercent = 80; }, "font-stretch:80%;"},
      {[](RunProperties& run) { run.scalePercent = 600; }, "font-stretch:200%;"},
      {[](RunProperties& run) { run.scalePercent = 0; }, ""},
      {[](RunProperties& run) { run.raisedHalfPoints = 6; }, "vertical-align:3pt;"},
      {[](RunProperties& run) { run.raisedHalfPoints = -5; }, "vertical-align:-2.5pt;"},
      {[](RunProperties& run) { run.raisedHalfPoints = -32768; }, "vertical-align:-1638pt;"},
      {[](RunProperties& run) { run.kerningHalfPoints = 16; }, "font-kerning:auto;"},
      {[](RunProperties& run) { run.kerningHalfPoints = 28; }, ""},
      {[](RunProperties& run) { run.shadow = true; }, "text-shadow:.06em .06em .04em #888;"},
      {[](RunProperties& run) { run.emboss = true; }, "text-shadow:-.04em -.04em #fff,.04em .04em #888;"},
      {[](RunProperties& run) { run.imprint = true; }, "text-shadow:-.04em -.04em #888,.04em .04em #fff;"},
      {[](RunProperties& run) { run.outline = true; },
       "-webkit-text-stroke:.03em;-webkit-text-fill-color:#0000;"},
      {[](RunProperties& run) { run.emphasisMark = 1; }, "text-emphasis:filled dot;"},
      {[](RunProperties& run) { run.emphasisMark = 4; },
       "text-emphasis:filled dot;text-emphasis-position:under right;"},
      {[](RunProperties& run) { run.emphasisMark = 255; }, ""},
      {[](RunProperties& run) { run.hidden = true; },
       "text-decoration-line:underline;text-decoration-style:dotted;"},
      {[](RunProperties& run) { run.isRightToLeft = true; }, ""},
  };
  for (size_t i = 0; i < std::size(kCases); ++i) EXPECT_EQ(cssOf(kCases[i].change), kCases[i].css) << i;
}

TEST(RunCss, IsInOneOrder) {
  EXPECT_EQ(cssOf([](RunProperties& run) {
              run.spacing = 20;
              run.colour = kRed;
              run.italic = run.bold = true;
              run.sizeHalfPoints = 24;
            }),
            "font-size:12pt;font-weight:bold;font-style:italic;color:#f00;letter-spacing:1pt;");
}

TEST(RunCss, UndoesWhatTheRunDoesNotHave) {
  EXPECT_EQ(cssBetween({}, changed([](RunProperties& run) {
                         run.bold = run.italic = run.caps = run.smallCaps = run.shadow = run.outline = true;
                         run.spacing = 20;
                         run.colour = kRed;
                         run.highlight = 7;
                       })),
            "font-weight:normal;font-style:normal;color:#000;background-color:#0000;text-transform:none;"
            "font-variant-caps:normal;letter-spacing:normal;text-shadow:none;-webkit-text-stroke:0;"
            "-webkit-text-fill-color:currentcolor;");
}

TEST(RunCss, LeavesOutWhatTagsSay) {
  EXPECT_EQ(cssOf([](RunProperties& run) { run.bold = run.italic = true; }, kTagBold | kTagItalic), "");
  EXPECT_EQ(cssOf([](RunProperties& run) { run.bold = run.italic = true; }, kTagBold), "font-style:italic;");
  EXPECT_EQ(cssOf([](RunProperties& run) { run.underline = 1; }, kTagUnderline), "");
  EXPECT_EQ(cssOf([](RunProperties& run) { run.strike = true; }, kTagStrike), "");
  EXPECT_EQ(cssOf(
                [](RunProperties& run) {
                  run.strike = true;
                  run.underline = 1;
                },
                kTagStrike | kTagUnderline),
            "");
  EXPECT_EQ(cssOf(
                [](RunProperties& run) {
                  run.strike = true;
                  run.underline = 1;
                },
                kTagUnderline),
            "text-decoration-line:underline line-through;");
}

TEST(RunCss, HasAllKindsOfLines) {
  const struct {
    uint8_t kind;
    const char* css;
  } kCases[] = {
      {1, ""},
      {2, ""},
      {3, "text-decoration-style:double;"},
      {4, "text-decoration-style:dotted;"},
      {6, "text-decoration-thickness:.12em;"},
      {7, "text-decoration-style:dashed;"},
      {10, "text-decoration-style:dashed;"},
      {11, "text-decoration-style:wavy;"},
      {27, "text-decoration-style:wavy;text-decoration-thickness:.12em;"},
      {55, "text-decoration-style:dashed;text-decoration-thickness:.12em;"},
      {255, ""},
  };
  for (const auto& row : kCases) {
    EXPECT_EQ(cssOf([&](RunProperties& run) { run.underline = row.kind; }, kTagUnderline), row.css)
        << int{row.kind};
    EXPECT_EQ(cssOf([&](RunProperties& run) { run.underline = row.kind; }),
              std::string("text-decoration-line:underline;") + row.css);
  }
  EXPECT_EQ(cssOf([](RunProperties& run) { run.doubleStrike = true; }, kTagStrike),
            "text-decoration-style:double;");
  EXPECT_EQ(cssOf(
                [](RunProperties& run) {
                  run.underline = 1;
                  run.underlineColour = kRed;
                },
                kTagUnderline),
            "text-decoration-color:#f00;");
}

TEST(RunCss, KeepsTheSizeOfRaisedTextInItsTags) {
  const auto super = [](RunProperties& run) { run.verticalAlignment = 1; };
  EXPECT_EQ(cssOf(super, kTagRaised), "");
  EXPECT_EQ(cssOf(super), "font-size:6.5pt;vertical-align:super;");
  EXPECT_EQ(cssOf([](RunProperties& run) { run.verticalAlignment = 2; }, kTagLowered), "");
  EXPECT_EQ(cssOf(
                [](RunProperties& run) {
                  run.verticalAlignment = 1;
                  run.sizeHalfPoints = 40;
                },
                kTagRaised),
            "font-size:13pt;");
  EXPECT_EQ(cssOf([](RunProperties& run) { run.raisedHalfPoints = 12; }, kTagRaised),
            "font-size:10pt;vertical-align:6pt;");
}

TEST(RunCss, TakesFontAndSizeOfTheScript) {
  const RunProperties run = changed([](RunProperties& properties) {
    properties.fonts = {0, 1, 2, 3};
    properties.complexSizeHalfPoints = 30;
  });
  EXPECT_EQ(cssBetween(run, run), "");
  EXPECT_EQ(cssBetween(run, run, 0, {}, FontScript::kEastAsian), "font-family:\"B\",serif;");
  EXPECT_EQ(cssBetween(run, run, 0, {}, FontScript::kOther), "font-family:\"C\",serif;");
  EXPECT_EQ(cssBetween(run, run, 0, {}, FontScript::kComplex), "font-family:\"D\",serif;font-size:15pt;");
  EXPECT_EQ(cssBetween(changed([](RunProperties& r) { r.isComplexScript = true; }, run), run),
            "font-family:\"D\",serif;font-size:15pt;");
}

TEST(RunCss, HasAutomaticColoursThatCanBeRead) {
  const auto plain = [](RunProperties&) {};
  EXPECT_EQ(cssOf(plain, 0, {kBlack, kBlack}), "");
  EXPECT_EQ(cssOf(plain, 0, {kBlack, {}}), "color:#fff;");
  EXPECT_EQ(cssOf([](RunProperties& run) { run.highlight = 1; }), "color:#fff;background-color:#000;");
  EXPECT_EQ(cssOf(
                [](RunProperties& run) {
                  run.shading = {true, kWhite};
                },
                0, {kBlack, kBlack}),
            "color:#000;background-color:#fff;");
  EXPECT_EQ(cssOf([](RunProperties& run) { run.colour = kBlack; }, 0, {kBlack, kBlack}), "color:#000;");
  EXPECT_EQ(cssBetween({}, changed([](RunProperties& run) { run.colour = kRed; }), 0, {kBlack, kBlack}),
            "color:#fff;");
}

TEST(RunCss, LetsHighlightsLieOverShading) {
  EXPECT_EQ(cssOf([](RunProperties& run) {
              run.shading = {true, kBlack};
              run.highlight = 7;
            }),
            "background-color:#ff0;");
}

TEST(RunCss, SaysAllThatABrowserDoesNot) {
  EXPECT_EQ(cssBetween({}, unstyledRun()), "font-family:\"A\",serif;font-size:10pt;font-kerning:none;");
}

TEST(RunCss, LeavesBlocksWhatTheyCanHave) {
  const RunProperties run = changed([](RunProperties& r) {
    r.underline = 1;
    r.strike = r.doubleStrike = r.hidden = r.bold = true;
    r.highlight = 3;
    r.shading = {true, kRed};
    r.border = {1, 4, 0, false, {}};
    r.verticalAlignment = 1;
    r.raisedHalfPoints = 4;
  });
  EXPECT_EQ(cssBetween(lookOfBlock(run), {}), "font-weight:bold;");
}

TEST(RunCss, IsTheSameForWhatDoesNotShow) {
  const RunProperties run;
  EXPECT_TRUE(looksAlike(run, changed([](RunProperties& r) {
                           r.noProof = true;
                           r.language = r.eastAsianLanguage = r.complexLanguage = 0x407;
                           r.characterStyle = 12;
                           r.revision.kind = Revision::kInserted;
                           r.deletion.kind = Revision::kDeleted;
                         })));
  EXPECT_FALSE(looksAlike(run, changed([](RunProperties& r) { r.bold = true; })));
  EXPECT_FALSE(looksAlike(run, changed([](RunProperties& r) { r.fonts.complex = 9; })));
}

}  // namespace pagerex
