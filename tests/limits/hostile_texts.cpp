#include <algorithm>

#include "base/byte_view.h"
#include "limits/hostile_documents.h"
#include "support/named_sprms.h"
#include "support/word_document_writer.h"

using namespace support;

namespace {

/// Properties that make a long `style` attribute.
Sprms longFormat() {
  Sprms sprms = {align(3), leftIndent(1), rightIndent(1), firstLine(1), spaceBefore(1), spaceAfter(1)};
  for (const uint16_t border : {0xC64E, 0xC64F, 0xC650, 0xC651, 0xC652}) {
    sprms.add(borderSprm(border, {.colour = rgb(1, 2, 3), .width = 9}));
  }
  std::vector<TabStop> stops;
  for (int16_t i = 0; i < 64; ++i) stops.push_back({.position = static_cast<int16_t>(i * 7), .leader = 1});
  return sprms.add(shadingSprm(0xC64D, {.background = rgb(1, 2, 3)})).add(tabsSprm(stops));
}

Sprms longRunFormat() {
  return {bold(),
          italic(),
          fontSize(21),
          colour(rgb(1, 2, 3)),
          highlight(3),
          underline(3),
          letterSpacing(9),
          sprm(0x0837, 1),
          borderSprm(0xCA72, {.width = 9}),
          shadingSprm(0xCA71, {.background = rgb(9, 9, 9)})};
}

void end(WordDocument& document) {
  document.paragraph(kTheEnd);
}

/// Positions 0, `length`, 0, `length`, ...: every other of `count` entries spans it all.
std::vector<uint32_t> spanningPositions(uint32_t count, uint32_t length) {
  std::vector<uint32_t> positions;
  for (uint32_t i = 0; i <= count; ++i) positions.push_back(i % 2 == 0 ? 0 : length);
  return positions;
}

/// Replaces the one piece of a text of `length` characters by `count` ones that all are this text.
void repeatPiece(WordDocument& document, uint32_t length, uint32_t count) {
  document.editTable(mso_word::FCLCB_CLX, [=](Bytes& clx) {
    const Bytes piece(clx.end() - 8, clx.end());
    std::vector<uint32_t> positions;
    for (uint32_t i = 0; i <= count; ++i) positions.push_back(i * length);
    const Bytes table = positionTable(positions, std::vector<Bytes>(count, piece));
    clx = ByteWriter().u8(2).u32(static_cast<uint32_t>(table.size())).bytes(table).take();
  });
  constexpr size_t kMainTextLength = 0x4C;
  document.patchFib(kMainTextLength, length * count);
  document.table(mso_word::FCLCB_SECTIONS, positionTable({0, length * count}, {Bytes(12, 0xFF)}));
}

/// The pieces of a piece table behind which others can be put.
struct PieceTable {
  explicit PieceTable(const Bytes& clx) {
    constexpr size_t kHead = 5;
    const ByteView table(clx.data() + kHead, clx.size() - kHead);
    const size_t count = (table.size() - 4) / 12;
    for (size_t i = 0; i < count; ++i) {
      const ByteView record = table.part(4 * (count + 1) + 8 * i, 8);
      add(table.u32(4 * i), Bytes(record.data(), record.data() + record.size()));
    }
    add(table.u32(4 * count), records.back());
  }
  void add(uint32_t position, const Bytes& record) {
    positions.push_back(position);
    records.push_back(record);
  }
  Bytes clx(uint32_t end) const {
    std::vector<uint32_t> all = positions;
    all.push_back(end);
    const Bytes table = positionTable(all, records);
    return ByteWriter().u8(2).u32(static_cast<uint32_t>(table.size())).bytes(table).take();
  }

  std::vector<uint32_t> positions;
  std::vector<Bytes> records;
};

/// Pieces that share a text: small paragraphs with long formats.
Bytes piecesOfOneText(uint32_t scale) {
  WordDocument document;
  for (int i = 0; i < 100; ++i) document.paragraph("x", longRunFormat()).sprms(longFormat());
  repeatPiece(document, 200, scale * 40);
  document.wordDocumentData(Bytes(size_t{scale} * 500));
  return document.build();
}

/// The same with one long run.
Bytes piecesOfOneRun(uint32_t scale) {
  WordDocument document;
  document.paragraph(std::string(size_t{scale} * 500 - 1, '<'));
  repeatPiece(document, scale * 500, scale * 40);
  return document.build();
}

/// Paragraphs of one character, each with a long format.
Bytes smallParagraphs(uint32_t scale) {
  WordDocument document;
  for (uint32_t i = 0; i < scale * 40; ++i) document.paragraph().mark(longRunFormat()).sprms(longFormat());
  end(document);
  return document.build();
}

/// Tables of the table stream that are all the same bytes.
Bytes overlappingTables(uint32_t scale) {
  WordDocument document;
  document.paragraph("text");
  end(document);
  constexpr uint32_t kUnread = 150;
  document.table(kUnread, Bytes(size_t{scale} << 10, 1));
  const WordStreams streams = document.streams();
  const auto size = static_cast<uint32_t>(streams.table.size());
  for (const uint32_t index : {mso_word::FCLCB_FOOTNOTE_REFS,
                               mso_word::FCLCB_FOOTNOTE_TEXT,
                               mso_word::FCLCB_ANNOTATION_REFS,
                               mso_word::FCLCB_ANNOTATION_TEXT,
                               mso_word::FCLCB_FIELDS_MAIN,
                               mso_word::FCLCB_FIELDS_HEADER,
                               mso_word::FCLCB_FIELDS_FOOTNOTE,
                               mso_word::FCLCB_FIELDS_ANNOTATION,
                               mso_word::FCLCB_FIELDS_MACRO,
                               mso_word::FCLCB_BOOKMARK_NAMES,
                               mso_word::FCLCB_BOOKMARK_STARTS,
                               mso_word::FCLCB_BOOKMARK_ENDS,
                               mso_word::FCLCB_ANNOTATION_OWNERS,
                               mso_word::FCLCB_SHAPE_ANCHORS,
                               mso_word::FCLCB_ENDNOTE_REFS,
                               mso_word::FCLCB_ENDNOTE_TEXT,
                               mso_word::FCLCB_FIELDS_ENDNOTE,
                               mso_word::FCLCB_DRAWINGS,
                               mso_word::FCLCB_TEXTBOXES,
                               mso_word::FCLCB_FIELDS_TEXTBOX,
                               mso_word::FCLCB_FIELDS_HEADER_TEXTBOX,
                               mso_word::FCLCB_ANNOTATION_DATES}) {
    document.patchFib(WordDocument::pairOffset(index), uint32_t{0});
    document.patchFib(WordDocument::pairOffset(index) + 4, size);
  }
  return document.build();
}

/// As many bookmarks as a table can name, all at one place.
Bytes bookmarksAtOnePlace(uint32_t scale) {
  WordDocument document;
  document.paragraph("text");
  end(document);
  const uint32_t count = std::min(scale * 60, 65534u);
  std::vector<Bytes> records(count, Bytes(4));
  document.table(mso_word::FCLCB_BOOKMARK_STARTS,
                 positionTable(std::vector<uint32_t>(count + 1, 1), records));
  document.table(mso_word::FCLCB_BOOKMARK_ENDS, positionTable(std::vector<uint32_t>(count + 1, 3)));
  document.table(mso_word::FCLCB_BOOKMARK_NAMES, stringTable(std::vector<std::u16string>(count, u"")));
  return document.build();
}

/// Runs out of order that each are the one character where all bookmarks start.
Bytes bookmarksVisitedOften(uint32_t scale) {
  WordDocument document;
  document.paragraph("0123456789");
  end(document);
  const uint32_t count = std::min(scale * 30, 65534u);
  document.table(mso_word::FCLCB_BOOKMARK_STARTS,
                 positionTable(std::vector<uint32_t>(count + 1, 5), std::vector<Bytes>(count, Bytes(4))));
  document.table(mso_word::FCLCB_BOOKMARK_ENDS, positionTable(std::vector<uint32_t>(count + 1, 6)));
  document.table(mso_word::FCLCB_BOOKMARK_NAMES, stringTable(std::vector<std::u16string>(count, u"b")));
  const uint32_t rounds = scale * 20;
  document.wordDocumentData(Bytes(size_t{rounds} * 10));
  document.editTable(mso_word::FCLCB_CLX, [=](Bytes& clx) {
    PieceTable pieces(clx);
    const Bytes first = pieces.records.front();
    std::vector<uint32_t> positions;
    for (uint32_t i = 0; i < rounds; ++i) positions.insert(positions.end(), {5, 6, 7});
    pieces.positions.insert(pieces.positions.begin(), positions.begin(), positions.end());
    pieces.records.insert(pieces.records.begin(), positions.size(), first);
    clx = pieces.clx(40);
  });
  constexpr size_t kMainTextLength = 0x4C;
  document.patchFib(kMainTextLength, 2 * rounds + 60);
  document.table(mso_word::FCLCB_SECTIONS, positionTable({0, 2 * rounds + 60}, {Bytes(12, 0xFF)}));
  return document.build();
}

/// A field table whose positions descend, and a text of nothing but field marks.
Bytes fieldsOutOfOrder(uint32_t scale) {
  WordDocument document;
  const uint32_t count = scale * 100;
  document.paragraph().special(0x13).run(std::string(count, '\x13'), {sprm(0x0855, 1)});
  end(document);
  std::vector<uint32_t> positions;
  for (uint32_t i = 0; i <= count; ++i) positions.push_back(0x7FFFFFFF - i);
  document.table(mso_word::FCLCB_FIELDS_MAIN, positionTable(positions, std::vector<Bytes>(count, Bytes(2))));
  return document.build();
}

/// Fields that open and never close.
Bytes nestedFields(uint32_t scale) {
  WordDocument document;
  document.paragraph("x").run(kTheEnd);
  Paragraph& paragraph = document.paragraph();
  for (int i = 0; i < 3; ++i) paragraph.fieldBegin(88);
  paragraph.run(std::string(size_t{scale} * 1000, '\x13'), {sprm(0x0855, 1)});
  return document.build();
}

/// Footnotes each of which is the text of all.
Bytes notesOfOneText(uint32_t scale) {
  WordDocument document;
  const uint32_t count = scale * 20;
  Paragraph& paragraph = document.paragraph();
  for (uint32_t i = 0; i < count; ++i) paragraph.footnote("note");
  end(document);
  document.table(mso_word::FCLCB_FOOTNOTE_TEXT, positionTable(spanningPositions(count, count * 5)));
  return document.build();
}

/// Notes that hold references to themselves and to all other kinds.
Bytes notesOfNotes(uint32_t scale) {
  WordDocument document;
  Paragraph& paragraph = document.paragraph();
  const auto fill = [](Story& story) {
    story.paragraph().special(2).special(5).special(2).special(5).special(1).special(8);
  };
  for (uint32_t i = 0; i < scale * 5; ++i) paragraph.footnote(fill).endnote(fill).annotation(fill);
  end(document);
  return document.build();
}

/// References to comments that are not there.
Bytes commentMarks(uint32_t scale) {
  WordDocument document;
  document.paragraph().run(std::string(size_t{scale} * 1000, '\x05'), {sprm(0x0855, 1)});
  end(document);
  return document.build();
}

/// Sections each of which is the whole text.
Bytes sectionsOfOneText(uint32_t scale) {
  WordDocument document;
  const uint32_t paragraphs = scale * 10;
  for (uint32_t i = 0; i < paragraphs; ++i) document.paragraph("text").istd(1);
  document.style(1, Style().name("heading 1"));
  const uint32_t count = scale * 30;
  document.table(mso_word::FCLCB_SECTIONS, positionTable(spanningPositions(count, paragraphs * 5),
                                                         std::vector<Bytes>(count, Bytes(12, 0xFF))));
  return document.build();
}

/// Sections that share one long property list.
Bytes sectionsOfOneList(uint32_t scale) {
  WordDocument document;
  Sprms sprms;
  for (int i = 0; i < 16000; ++i) sprms.add(sprm(0x301D, 1));
  const uint32_t count = scale * 20;
  document.paragraph(std::string(count, 'x'));
  end(document);
  const uint32_t list = document.wordDocumentData(
      ByteWriter().u16(static_cast<uint32_t>(sprms.size())).bytes(sprms.bytes()).take());
  std::vector<uint32_t> positions;
  for (uint32_t i = 0; i < count; ++i) positions.push_back(i);
  positions.push_back(count + 1 + static_cast<uint32_t>(kTheEnd.size()) + 1);
  const Bytes record = ByteWriter().u16(0).u32(list).zeros(6).take();
  document.table(mso_word::FCLCB_SECTIONS, positionTable(positions, std::vector<Bytes>(count, record)));
  return document.build();
}

/// A chain of styles, each the base of the next.
Bytes manyStyles(uint32_t scale) {
  const uint32_t count = std::min(scale * 30, 65535u);
  std::vector<std::optional<Style>> styles = {Style().papx(longFormat()).chpx(longRunFormat())};
  for (uint32_t i = 1; i < count; ++i)
    styles.push_back(Style().basedOn(static_cast<uint16_t>(std::min(i - 1, 4000u))));
  WordDocument document;
  document.paragraph("text");
  end(document);
  document.table(mso_word::FCLCB_STYLE_SHEET, styleSheetTable(styles, {.baseBytes = 10}));
  return document.build();
}

/// A list whose labels are as long as a text can be.
Bytes longLabels(uint32_t scale) {
  WordDocument document;
  const uint16_t list = document.list({.levels = {{.text = std::u16string(60000, u'&')}}});
  for (uint32_t i = 0; i < scale * 10; ++i) document.paragraph().sprms(listItem(list, 0));
  end(document);
  return document.build();
}

/// Labels of nine numbers each, which are spelled in words.
Bytes labelsOfManyNumbers(uint32_t scale) {
  WordDocument document;
  List list;
  for (int i = 0; i < 9; ++i)
    list.levels.push_back({.startAt = 65535, .numberFormat = 7, .text = u"%1%2%3%4%5%6%7%8%9"});
  const uint16_t number = document.list(list);
  for (uint32_t i = 0; i < scale * 20; ++i) document.paragraph().sprms(listItem(number, 8));
  end(document);
  return document.build();
}

/// Lists of which each paragraph begins another one.
Bytes manyLists(uint32_t scale) {
  WordDocument document;
  document.listDefinition({.lsid = 7});
  for (uint32_t i = 0; i < scale * 12; ++i) {
    document.paragraph().sprms(listItem(document.listOverride({.lsid = 7}), 0));
  }
  end(document);
  return document.build();
}

/// Authors without a name.
Bytes manyAuthors(uint32_t scale) {
  WordDocument document;
  document.paragraph("x").annotation("comment");
  end(document);
  document.table(mso_word::FCLCB_ANNOTATION_OWNERS, Bytes(size_t{scale} << 10));
  return document.build();
}

/// Picture bullets that are looked for in the whole text.
Bytes bulletsInAWideBookmark(uint32_t scale) {
  WordDocument document;
  const uint16_t list =
      document.list({.levels = {{.numberFormat = 23, .text = u"*", .chpx = {sprm(0x6887, 0)}}}});
  document.paragraph().bookmarkStart("_PictureBullets").run(std::string(size_t{scale} * 300, 'x'));
  for (uint32_t i = 0; i < scale * 10; ++i) document.paragraph().sprms(listItem(list, 0));
  document.paragraph("x").bookmarkEnd("_PictureBullets");
  end(document);
  return document.build();
}

/// Labels that look like a character style with an endless list of properties.
Bytes labelsOfOneStyle(uint32_t scale) {
  WordDocument document;
  Sprms sprms;
  for (int i = 0; i < 20000; ++i) sprms.add(sprm(0x0835, 1));
  document.style(20, Style().kind(StyleKind::kCharacter).chpx(sprms));
  const uint16_t list = document.list({});
  for (uint32_t i = 0; i < scale * 10; ++i) {
    document.paragraph("x", {sprm(0x4A30, 20)}).sprms(listItem(list, 0));
  }
  end(document);
  return document.build();
}

/// Paragraphs that name their list again and again, each time taking over its indents.
Bytes listIndentsAgain(uint32_t scale) {
  WordDocument document;
  Sprms indents;
  for (int i = 0; i < 60; ++i) indents.add(leftIndent(i));
  const uint16_t list = document.list({.levels = {{.papx = indents}}});
  Sprms sprms;
  for (int i = 0; i < 60; ++i) sprms.add(listItem(list, 0));
  for (uint32_t i = 0; i < scale * 30; ++i) document.paragraph().sprms(sprms);
  end(document);
  return document.build();
}

/// Headings, which also stand in the navigation.
Bytes headings(uint32_t scale) {
  WordDocument document;
  document.style(1, Style().name("heading 1")).style(9, Style().name("heading 9"));
  for (uint32_t i = 0; i < scale * 30; ++i) document.paragraph("<").istd(i % 2 ? 9 : 1);
  end(document);
  return document.build();
}

/// Runs of one character, each with a long format.
Bytes smallRuns(uint32_t scale) {
  WordDocument document;
  Paragraph& paragraph = document.paragraph();
  for (uint32_t i = 0; i < scale * 100; ++i) paragraph.breakRun().run("&", longRunFormat());
  end(document);
  return document.build();
}

/// Pieces out of order, so that runs reach over the whole text of the footnotes; each is searched for a
/// picture.
Bytes picturesInRunsOutOfOrder(uint32_t scale) {
  constexpr uint32_t kMainText = 28;
  WordDocument document;
  document.paragraph("0123456").special(1).footnote(
      [=](Story& story) { story.paragraph(std::string(size_t{scale} * 300, 'x'), {sprm(0x6A03, 0)}); });
  document.data({1});
  document.wordDocumentData(Bytes(size_t{scale} * 500));
  end(document);
  const uint32_t rounds = scale * 20;
  document.editTable(mso_word::FCLCB_CLX, [=](Bytes& clx) {
    PieceTable pieces(clx);
    Bytes inNote = pieces.records.back();  // its offset counts double, being that of 8-bit text
    patchInteger(inNote, 2, ByteView(inNote.data(), inNote.size()).u32(2) + 2 * (kMainText + 50));
    for (uint32_t i = 0; i < rounds; ++i) {
      for (const uint32_t position : {kMainText + 1, kMainText + 2, 5u, 6u}) pieces.add(position, inNote);
    }
    clx = pieces.clx(5);
  });
  constexpr size_t kFootnoteLength = 0x50;
  const uint32_t length = scale * 300 + rounds * 25;
  document.patchFib(kFootnoteLength, length);
  document.table(mso_word::FCLCB_FOOTNOTE_TEXT, positionTable({0, length, length}));
  return document.build();
}

}  // namespace

std::vector<HostileDocument> hostileTexts() {
  return {
      {"PiecesOfOneText", piecesOfOneText, false},
      {"PiecesOfOneRun", piecesOfOneRun, false},
      {"SmallParagraphs", smallParagraphs},
      {"SmallRuns", smallRuns},
      {"OverlappingTables", overlappingTables},
      {"BookmarksAtOnePlace", bookmarksAtOnePlace},
      {"BookmarksVisitedOften", bookmarksVisitedOften, false},
      {"ManyLists", manyLists},
      {"ManyAuthors", manyAuthors},
      {"FieldsOutOfOrder", fieldsOutOfOrder},
      {"NestedFields", nestedFields},
      {"NotesOfOneText", notesOfOneText},
      {"NotesOfNotes", notesOfNotes},
      {"CommentMarks", commentMarks},
      {"SectionsOfOneText", sectionsOfOneText, false, false},
      {"SectionsOfOneList", sectionsOfOneList},
      {"ManyStyles", manyStyles},
      {"LongLabels", longLabels},
      {"LabelsOfManyNumbers", labelsOfManyNumbers},
      {"BulletsInAWideBookmark", bulletsInAWideBookmark},
      {"LabelsOfOneStyle", labelsOfOneStyle},
      {"ListIndentsAgain", listIndentsAgain},
      {"Headings", headings},
      {"PicturesInRunsOutOfOrder", picturesInRunsOutOfOrder},
  };
}
