// What a result says of a document that is not written whole: which warning, where, how often, and whether
// something is lost.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "convert/host.h"
#include "limits/hostile_documents.h"
#include "mutation/rich_documents.h"
#include "support/drawing_writer.h"
#include "support/word_document_writer.h"

using namespace convert_test;
using namespace support::drawing;
using support::Bytes;
using support::WordDocument;

namespace {

struct Told {
  Result result;
  /// The first of a code; null for none.
  const pagerex_warning* warning(int code) const {
    const pagerex_warning* const end = result.warnings + result.warning_count;
    const pagerex_warning* const found =
        std::find_if(result.warnings, end, [code](const pagerex_warning& each) { return each.code == code; });
    return found == end ? nullptr : found;
  }
};

Told told(const Bytes& document, int32_t pictures = PAGEREX_PICTURES_USUAL) {
  Host host(document);
  pagerex_options options = Host::quiet("normal");
  options.pictures = pictures;
  return {convert(host.memory(), host.sink(), options)};
}

/// The one warning of its code, in a conversion that comes to its end.
void expectLost(const Told& told, int code, const std::string& where) {
  const pagerex_warning* const warning = told.warning(code);
  ASSERT_NE(warning, nullptr);
  EXPECT_EQ(warning->lost, 1);
  EXPECT_EQ(warning->where, where);
  EXPECT_GE(warning->count, 1u);
  EXPECT_STRNE(warning->sentence, "");
  EXPECT_EQ(told.result.code, PAGEREX_RESULT_OK);
  EXPECT_EQ(told.result.complete, 0);
  EXPECT_TRUE(told.result.isOne());
}

const Props kFirstPicture = Props().number(0x4104, 1);

Bytes documentWithInline(const Inline& picture) {
  WordDocument document;
  document.paragraph("a").special(1, pictureRun(document, picture));
  return document.build();
}

Bytes hostile(const std::vector<HostileDocument>& documents, const std::string& name) {
  for (const HostileDocument& each : documents) {
    if (each.name == name) return each.make(64);
  }
  throw std::out_of_range(name);
}

/// A table of the FIB, and the name that it has in warnings.
struct NamedTable {
  uint32_t index;
  const char* name;
};
constexpr NamedTable kTables[] = {
    {1, "styles"},
    {2, "footnotes"},
    {3, "footnotes"},
    {6, "sections"},
    {12, "character properties"},
    {13, "paragraph properties"},
    {15, "fonts"},
    {16, "fields"},
    {21, "bookmarks"},
    {22, "bookmarks"},
    {23, "bookmarks"},
    {33, "pieces"},
    {73, "lists"},
};

/// Whole documents. The header promises that nobody has to guess.
TEST(Warnings, AreNoneForSoundDocuments) {
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const Bytes document = rich.document.build();
    for (const std::string& format : formats()) {
      Host host(document);
      const Result result = convert(host.memory(), host.sink(), Host::quiet(format.c_str()));
      EXPECT_EQ(result.warnings_total, 0u)
          << rich.name << ", " << format << ": " << result.warnings[0].sentence << result.warnings[0].where;
      EXPECT_EQ(result.complete, 1) << rich.name << ", " << format;
    }
  }
}

TEST(Warnings, TellOfATableThatReachesPastItsStream) {
  for (const NamedTable& table : kTables) {
    SCOPED_TRACE(table.index);
    WordDocument document;
    document.paragraph("a").footnote("n");
    document.patchFib<uint32_t>(WordDocument::pairOffset(table.index) + 4, 0x100000);
    const Told got = told(document.build());
    expectLost(got, PAGEREX_WARNING_TABLE_DAMAGED, table.name);
    EXPECT_EQ(got.warning(PAGEREX_WARNING_TABLE_DAMAGED)->count, 1u);
  }
}

TEST(Warnings, TellOfTextThatTheFileDoesNotHave) {
  constexpr size_t kPlaceOfFirstPiece = 5 + 8 + 2;  // behind the head, both ends of the piece, and its flags
  WordDocument document;
  document.paragraph(u"some text");
  const auto end = static_cast<uint32_t>(document.streams().wordDocument.size());
  document.editTable(
      33, [end](Bytes& pieces) { support::patchInteger(pieces, kPlaceOfFirstPiece, uint32_t{end - 4}); });
  expectLost(told(document.build()), PAGEREX_WARNING_OUTSIDE, "text");
}

/// The sections' place lies outside, which nothing can be made of.
TEST(Warnings, TellWhyADocumentIsDamaged) {
  WordDocument document;
  document.paragraph("a");
  document.patchFib<uint32_t>(WordDocument::pairOffset(6), 0x100000);
  const Told got = told(document.build());
  EXPECT_EQ(got.result.code, PAGEREX_RESULT_DAMAGED);
  EXPECT_TRUE(got.result.warns(PAGEREX_WARNING_TABLE_DAMAGED, "sections"));
  EXPECT_TRUE(got.result.warns(PAGEREX_WARNING_OUTSIDE));
  EXPECT_TRUE(got.result.isOne());
}

TEST(Warnings, TellWhereTheTextEndsEarly) {
  const Told got = told(hostile(hostileTexts(), "PiecesOfOneText"));
  expectLost(got, PAGEREX_WARNING_ENDED_EARLY, std::to_string(got.result.counts.characters));
}

TEST(Warnings, TellOfTextWithoutParagraphsThatItEndsAtOnce) {
  WordDocument document;
  document.paragraph("some text");
  document.dropTable(13);
  expectLost(told(document.build()), PAGEREX_WARNING_ENDED_EARLY, "0");
}

TEST(Warnings, TellWhichWorkWasTooMuch) {
  expectLost(told(hostile(hostileTables(), "Columns")), PAGEREX_WARNING_WORK_LIMIT, "cells without content");
  expectLost(told(hostile(hostileObjects(), "GroupDrawnOften")), PAGEREX_WARNING_WORK_LIMIT, "shapes");
  expectLost(told(hostile(hostileTexts(), "NotesOfOneText")), PAGEREX_WARNING_WORK_LIMIT, "text");
}

TEST(Warnings, TellOfAShapeWhosePictureIsNotThere) {
  WordDocument document;
  document.paragraph("a").special(8);
  Drawing().shape(1, Shape(75).props(kFirstPicture)).addTo(document);
  expectLost(told(document.build()), PAGEREX_WARNING_PICTURE, "");
}

TEST(Warnings, TellOfAPictureInTheLineThatIsNotThere) {
  expectLost(told(documentWithInline({.shape = Shape(75).props(kFirstPicture)})), PAGEREX_WARNING_PICTURE,
             "");
}

TEST(Warnings, TellOfPicturesThatWereNotWantedAndLoseNothing) {
  const Bytes document = documentWithInline({.shape = Shape(75).props(kFirstPicture), .blips = {Blip()}});
  const Told got = told(document, PAGEREX_PICTURES_NONE);
  const pagerex_warning* const warning = got.warning(PAGEREX_WARNING_PICTURES_OFF);
  ASSERT_NE(warning, nullptr);
  EXPECT_EQ(warning->lost, 0);
  EXPECT_EQ(got.result.complete, 1);
  EXPECT_EQ(told(document).result.warnings_total, 0u);
}

TEST(Warnings, TellOfAFileThatWasCutAtItsEnd) {
  Bytes document = mutation::richDocuments().back().document.build();
  document.resize(document.size() - 1024);
  expectLost(told(document), PAGEREX_WARNING_FILE_SHORT, "tables");
}

TEST(Warnings, TellOfAFileThatWasCutWithinItsPictures) {
  WordDocument document;
  document.paragraph("a");
  document.data(Bytes(60000));
  const support::Sprms run =
      pictureRun(document, {.shape = Shape(75).props(kFirstPicture), .blips = {Blip()}});
  document.paragraph("b").special(1, run);
  support::CompoundFile file = document.compound().build();
  file.truncate(file.pageOffset(file.startPage(u"Data")) + 30000);
  expectLost(told(file.bytes()), PAGEREX_WARNING_FILE_SHORT, "pictures and other data");
}

/// A file may end within its last page.
TEST(Warnings, AreNoneForAFileWhoseLastPageIsNotFull) {
  WordDocument document;
  document.paragraph("a");
  Bytes file = document.build();
  while (file.back() == 0) file.pop_back();
  EXPECT_EQ(told(file).result.warnings_total, 0u);
}

}  // namespace
