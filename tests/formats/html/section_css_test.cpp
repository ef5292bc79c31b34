#include "formats/html/section_css.h"

#include <gtest/gtest.h>

#include <functional>

namespace pagerex {
namespace {

using Change = std::function<void(SectionProperties&)>;

std::string cssOf(const Change& change) {
  SectionProperties section;
  change(section);
  std::string out;
  appendSectionCss(out, section);
  return out;
}

std::string pageOf(const Change& change, std::string_view name = {}) {
  SectionProperties section;
  change(section);
  std::string out;
  appendPageRule(out, name, section);
  return out;
}

}  // namespace

TEST(SectionCss, HasColumns) {
  EXPECT_EQ(cssOf([](auto&) {}), "");
  EXPECT_EQ(cssOf([](auto& s) { s.columnCount = 2; }), "column-count:2;column-gap:36pt;");
  EXPECT_EQ(cssOf([](auto& s) {
              s.columnCount = 3;
              s.hasLineBetweenColumns = true;
              s.columns = {{2000, 400}, {3000, 0}};
            }),
            "column-count:3;column-gap:20pt;column-rule:.5pt solid;");
  EXPECT_EQ(cssOf([](auto& s) {
              s.columnCount = 0xFFFF;
              s.columnSpace = 0;
            }),
            "column-count:45;column-gap:0;");
}

TEST(SectionCss, HasTheDirectionOfText) {
  EXPECT_EQ(cssOf([](auto& s) { s.textFlow = 1; }), "writing-mode:vertical-rl;");
  EXPECT_EQ(cssOf([](auto& s) { s.textFlow = 2; }), "writing-mode:sideways-lr;");
  EXPECT_EQ(cssOf([](auto& s) { s.textFlow = 4; }), "");
  EXPECT_EQ(cssOf([](auto& s) { s.textFlow = 6; }), "");
}

TEST(SectionCss, HasThePage) {
  EXPECT_EQ(pageOf([](auto&) {}), "@page{size:612pt 792pt;margin:72pt 90pt}");
  EXPECT_EQ(pageOf(
                [](auto& s) {
                  s.pageWidth = 16838;
                  s.pageHeight = 11906;
                  s.marginTop = -1440;
                },
                "s2"),
            "@page s2{size:841.9pt 595.3pt;margin:72pt 90pt}");
  EXPECT_EQ(pageOf([](auto& s) { s.gutter = 200; }), "@page{size:612pt 792pt;margin:72pt 90pt 72pt 100pt}");
  EXPECT_EQ(pageOf([](auto& s) { s.marginBottom = 720; }), "@page{size:612pt 792pt;margin:72pt 90pt 36pt}");
  EXPECT_EQ(pageOf([](auto& s) { s.marginLeft = s.marginRight = 1440; }),
            "@page{size:612pt 792pt;margin:72pt}");
}

TEST(SectionCss, LeavesRoomOnDamagedPages) {
  EXPECT_EQ(pageOf([](auto& s) {
              s.pageWidth = 0;
              s.pageHeight = 0xFFFF;
              s.marginTop = s.marginBottom = -32768;
            }),
            "@page{size:7.2pt 1584pt;margin:0}");
}

}  // namespace pagerex
