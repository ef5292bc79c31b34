#pragma once

#include <cstdint>

#include "support/named_sprms.h"
#include "support/word_document_writer.h"

/// The documents that the tests of the page look at. Each text that a test asks for stands once in its
/// document.
namespace pages {

enum StyleIndex : uint16_t {
  kHeading1 = 1,
  kHeading2 = 2,
  kHeading3 = 3,
  kQuote = 15,
  kStrong = 16,
  kListParagraph = 17,
  kNoteText = 18,
  kNoteReference = 19,
  kContents1 = 20,
  kContents2 = 21,
  kHyperlink = 22,
};

enum FontIndex : uint16_t {
  kSerif,
  kSans,
  kMono,
  kScript,
  kFancy,
  kUnknownSans,
  kUnknownMono,
  kOddName,
  kSymbol
};

constexpr uint16_t kPaperWidth = 11906, kPaperHeight = 16838, kMargin = 1440;
constexpr uint16_t kTextWidth = kPaperWidth - 2 * kMargin;

/// Paper with margins of an inch.
support::Sprms paper(uint16_t width = kPaperWidth, uint16_t height = kPaperHeight);
inline support::Bytes inFont(uint16_t font) {
  return support::Sprms{support::sprm(0x4A4F, font), support::sprm(0x4A51, font)}.bytes();
}

void addStylesAndFonts(support::WordDocument& doc);

void fillCharacters(support::WordDocument& doc);
void fillParagraphs(support::WordDocument& doc);
void fillTabs(support::WordDocument& doc);
void fillDirections(support::WordDocument& doc);
void fillLists(support::WordDocument& doc);
void fillTables(support::WordDocument& doc);
void fillNotes(support::WordDocument& doc);
void fillChanges(support::WordDocument& doc);
void fillContents(support::WordDocument& doc);
void fillSections(support::WordDocument& doc);
void fillSmallPaper(support::WordDocument& doc);
void fillPictures(support::WordDocument& doc);
void fillMetafiles(support::WordDocument& doc);
void fillShapes(support::WordDocument& doc);

}  // namespace pages
