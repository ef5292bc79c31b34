// Writes the documents that the tests of the page convert and look at, into a folder: make_page_documents
// FOLDER

#include <cstdio>
#include <exception>
#include <string>

#include "pages/page_documents.h"

namespace pages {

using namespace support;

Sprms paper(uint16_t width, uint16_t height) {
  return {sprm(0xB01F, width),   sprm(0xB020, height),  sprm(0xB021, kMargin),
          sprm(0xB022, kMargin), sprm(0x9023, kMargin), sprm(0x9024, kMargin)};
}

namespace {

void addFonts(WordDocument& doc) {
  doc.font({.name = "Times New Roman"});
  doc.font({.name = "Arial", .family = 2});
  doc.font({.name = "Courier New", .family = 3, .pitch = 1});
  doc.font({.name = "Brush Script MT", .family = 4});
  doc.font({.name = "Jokerman", .family = 5});
  doc.font({.name = "Frobnitz", .family = 2});
  doc.font({.name = "Quux Letters", .family = 3, .pitch = 1});
  doc.font({.name = "Odd\"}</style>\\Name", .family = 2});
  doc.font({.name = "Symbol", .charset = 2});
}

void addHeadingStyle(WordDocument& doc, uint16_t istd, int halfPoints) {
  doc.style(istd, Style()
                      .name("heading " + std::to_string(istd))
                      .sti(istd)
                      .basedOn(0)
                      .next(0)
                      .papx({spaceBefore(240), spaceAfter(60), outlineLevel(istd - 1)})
                      .chpx({fontSize(halfPoints), bold(), inFont(kSans)}));
}

void addContentsStyle(WordDocument& doc, uint16_t istd, int level) {
  doc.style(istd, Style()
                      .name("toc " + std::to_string(level))
                      .sti(static_cast<uint16_t>(18 + level))
                      .basedOn(0)
                      .papx({leftIndent(220 * (level - 1)), tabsSprm({{kTextWidth, 2, 1}})}));
}

}  // namespace

void addStylesAndFonts(WordDocument& doc) {
  addFonts(doc);
  doc.style(0, Style().name("Normal").sti(0).chpx({fontSize(22), sprm(0x4873, 0x0409)}));
  addHeadingStyle(doc, kHeading1, 32);
  addHeadingStyle(doc, kHeading2, 28);
  addHeadingStyle(doc, kHeading3, 26);
  const auto character = StyleKind::kCharacter;
  doc.style(10, Style().name("Default Paragraph Font").sti(65).kind(character));
  doc.style(kQuote,
            Style().name("Quote").basedOn(0).papx({leftIndent(720), spaceAfter(200)}).chpx({italic()}));
  doc.style(kStrong, Style().name("Strong").sti(87).kind(character).basedOn(10).chpx({bold()}));
  doc.style(
      kListParagraph,
      Style().name("List Paragraph").basedOn(0).papx({spaceAfter(200), spaceBefore(200), sprm(0x246D, 1)}));
  doc.style(kNoteText, Style().name("footnote text").sti(29).basedOn(0).chpx({fontSize(18)}));
  doc.style(kNoteReference,
            Style().name("footnote reference").sti(38).kind(character).basedOn(10).chpx({sprm(0x2A48, 1)}));
  addContentsStyle(doc, kContents1, 1);
  addContentsStyle(doc, kContents2, 2);
  doc.style(kHyperlink, Style()
                            .name("Hyperlink")
                            .sti(85)
                            .kind(character)
                            .basedOn(10)
                            .chpx({colour(rgb(0, 0, 255)), underline(1)}));
}

namespace {

struct Named {
  const char* name;
  void (*fill)(WordDocument&);
};

constexpr Named kDocuments[] = {
    {"characters", fillCharacters}, {"paragraphs", fillParagraphs}, {"tabs", fillTabs},
    {"directions", fillDirections}, {"lists", fillLists},           {"tables", fillTables},
    {"notes", fillNotes},           {"changes", fillChanges},       {"contents", fillContents},
    {"sections", fillSections},     {"small", fillSmallPaper},      {"pictures", fillPictures},
    {"metafiles", fillMetafiles},   {"shapes", fillShapes},
};

void save(const std::string& folder, const Named& each) {
  WordDocument doc;
  addStylesAndFonts(doc);
  each.fill(doc);
  doc.save(folder + "/" + each.name + ".doc");
}

}  // namespace
}  // namespace pages

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  try {
    for (const pages::Named& each : pages::kDocuments) pages::save(argv[1], each);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
  return 0;
}
