#include <gtest/gtest.h>

#include "memory_storage.h"
#include "wordreader/annotations.h"
#include "wordreader/bookmarks.h"
#include "wordreader/font_table.h"
#include "wordreader/notes.h"

using support::Bytes;
using support::ByteWriter;
using support::WordDocument;
using support::WordOptions;

namespace {

void addText(WordDocument& source) {
  source.paragraph("Main text").footnote("A note").annotation("A remark");
}

/// Opens a document after a change to it.
struct Opened : OpenedDocument {
  explicit Opened(const WordOptions& options = {}, const std::function<void(WordDocument&)>& change = {},
                  const wchar_t* tableName = L"1Table")
      : OpenedDocument(make(options, change), tableName) {}

 private:
  static WordDocument make(const WordOptions& options, const std::function<void(WordDocument&)>& change) {
    WordDocument source(options);
    addText(source);
    if (change) change(source);
    return source;
  }
};

Status statusAfter(const std::function<void(WordDocument&)>& change) {
  return Opened({}, change).status;
}

size_t pairOffset(uint32_t index) {
  return WordDocument::pairOffset(index);
}

}  // namespace

// Opening.

TEST(OpenDocument, ReadsADocument) {
  EXPECT_EQ(Opened().status, Status::kOk);
}

TEST(OpenDocument, ReadsTheTableStreamThatTheFlagNames) {
  EXPECT_EQ(Opened({.tableStream = 0}, {}, L"0Table").status, Status::kOk);
  EXPECT_EQ(Opened({.tableStream = 0}, {}, L"1Table").status, Status::kStreamNotFound);
}

TEST(OpenDocument, FailsWithoutTheTableStreamOfTheFlag) {
  EXPECT_EQ(Opened({.tableStream = 1}, {}, L"0Table").status, Status::kStreamNotFound);
}

TEST(OpenDocument, RefusesANullStorage) {
  KDRDocument document;
  EXPECT_EQ(document.OpenDocument(nullptr), Status::kInvalidArgument);
}

TEST(OpenDocument, FailsWithoutTheWordStream) {
  MemoryStorage storage;
  storage.add(L"1Table", {1, 2, 3});
  KDRDocument document;
  EXPECT_EQ(document.OpenDocument(&storage), Status::kStreamNotFound);
}

TEST(OpenDocument, RefusesAnEncryptedDocument) {
  EXPECT_EQ(Opened({.fibFlags = 0x0100}).status, Status::kEncrypted);
}

TEST(OpenDocument, DoesNotLookForTheTablesOfAnEncryptedDocument) {
  EXPECT_EQ(Opened({.fibFlags = 0x0100}, {}, L"Other").status, Status::kEncrypted);
}

TEST(OpenDocument, TakesAnyIdentAndVersion) {
  EXPECT_EQ(statusAfter([](WordDocument& source) { source.patchFib(0, uint32_t{0x12345678}); }), Status::kOk);
}

TEST(OpenDocument, FailsIfTheFibIsCutWithinItsPairs) {
  EXPECT_EQ(statusAfter([](WordDocument& source) {
              source.editWordDocument([](Bytes& stream) { stream.resize(pairOffset(100) + 7); });
            }),
            Status::kReadFault);
}

TEST(OpenDocument, FailsIfTheFibIsCutWithinItsHeader) {
  EXPECT_EQ(statusAfter([](WordDocument& source) {
              source.editWordDocument([](Bytes& stream) { stream.resize(12); });
            }),
            Status::kReadFault);
}

TEST(OpenDocument, FailsWithAnEmptyWordStream) {
  EXPECT_EQ(
      Opened(
          {}, [](WordDocument& source) { source.editWordDocument([](Bytes& stream) { stream.clear(); }); },
          L"0Table")
          .status,
      Status::kReadFault);
}

TEST(OpenDocument, FailsWithoutAPieceTable) {
  EXPECT_EQ(statusAfter([](WordDocument& source) { source.dropTable(mso_word::FCLCB_CLX); }),
            Status::kMalformed);
  EXPECT_EQ(
      statusAfter([](WordDocument& source) { source.patchFib(pairOffset(33) + 4, uint32_t{0x80000000}); }),
      Status::kMalformed);
}

TEST(OpenDocument, FailsIfTheFibHasNoPairForThePieceTable) {
  EXPECT_EQ(statusAfter([](WordDocument& source) { source.patchFib(pairOffset(0) - 2, uint16_t{33}); }),
            Status::kMalformed);
}

TEST(OpenDocument, FailsWithAMalformedPieceTable) {
  EXPECT_EQ(statusAfter([](WordDocument& source) {
              source.editTable(mso_word::FCLCB_CLX, [](Bytes& clx) { clx[0] = 1; });
            }),
            Status::kMalformed);
}

TEST(OpenDocument, ThrowsIfThePieceTableLiesOutsideTheStream) {
  EXPECT_THROW(statusAfter([](WordDocument& source) {
                 source.patchFib(pairOffset(mso_word::FCLCB_CLX), uint32_t{0x7FFFFFFF});
               }),
               int);
}

TEST(OpenDocument, ReadsAPieceTableThatIsCutShort) {
  // Of the only piece the stream holds the positions; its descriptor reads as zero.
  const Opened opened({}, [](WordDocument& source) {
    const Bytes clx = ByteWriter().u8(2).u32(16).u32(0).u32(5).take();
    source.table(182, clx);
    source.patchFib(pairOffset(mso_word::FCLCB_CLX),
                    static_cast<uint32_t>(source.streams().table.size() - 13));
    source.patchFib(pairOffset(mso_word::FCLCB_CLX) + 4, uint32_t{21});
  });
  EXPECT_EQ(opened.status, Status::kOk);
  EXPECT_EQ(opened.document.GetTextPool(mso_word::SUBDOC_MAIN).size(), 5u);
}

TEST(OpenDocument, GivesItsReferencesBackWhenItFails) {
  const Opened opened({.fibFlags = 0x0100});
  EXPECT_EQ(opened.storage.references(), 0u);
  EXPECT_EQ(opened.storage.openStreams(), 0);
  EXPECT_FALSE(opened.storage.outlivedByStream());
}

// The counts of the FIB.

namespace {

/// A "WordDocument" stream with counts of its own and one pair, for a document without text.
MemoryStorage storageWithCounts(uint16_t csw, const std::vector<uint32_t>& rglw, uint16_t pairs = 34) {
  ByteWriter fib;
  fib.zeros(10).u16(mso_word::FIB_HEADER::kTable1).zeros(20);
  fib.u16(csw).zeros(csw * size_t{2}).u16(rglw.size());
  for (uint32_t value : rglw) fib.u32(value);
  fib.u16(pairs).zeros(33 * 8).u32(0).u32(9).zeros((pairs - 34u) * 8);
  MemoryStorage storage;
  storage.add(L"WordDocument", fib.take());
  storage.add(L"1Table", ByteWriter().u8(2).u32(4).u32(0).take());
  return storage;
}

}  // namespace

TEST(Fib, TakesItsSizesFromItsCounts) {
  MemoryStorage storage = storageWithCounts(3, {0, 0, 0, 10, 20, 30, 40, 50, 60, 70, 80, 999, 999});
  KDRDocument document;
  EXPECT_EQ(document.OpenDocument(&storage), Status::kNothing);  // a piece table without pieces
  const KDRFib& fib = document.GetDocFile().getTableStrm();
  EXPECT_EQ(fib.GetSubDocCPBegin(mso_word::SUBDOC_MAIN), 0u);
  EXPECT_EQ(fib.GetSubDocCPEnd(mso_word::SUBDOC_MAIN), 10u);
  EXPECT_EQ(fib.GetSubDocCPBegin(mso_word::SUBDOC_HEADER_TEXTBOX), 280u);
  EXPECT_EQ(fib.GetSubDocCPEnd(mso_word::SUBDOC_HEADER_TEXTBOX), 360u);
}

TEST(Fib, CountsTheLengthsThatItDoesNotHoldAsZero) {
  MemoryStorage storage = storageWithCounts(0, {0, 0, 0, 10, 20});
  KDRDocument document;
  document.OpenDocument(&storage);
  const KDRFib& fib = document.GetDocFile().getTableStrm();
  EXPECT_EQ(fib.GetSubDocCPEnd(mso_word::SUBDOC_FOOTNOTE), 30u);
  EXPECT_EQ(fib.GetSubDocCPEnd(mso_word::SUBDOC_HEADER_TEXTBOX), 30u);
}

TEST(Fib, DoesNotMindATailThatTheStreamCuts) {
  EXPECT_EQ(statusAfter([](WordDocument& source) { source.patchFib(24, uint16_t{0xFFFF}); }), Status::kOk);
  EXPECT_EQ(statusAfter([](WordDocument& source) { source.patchFib(24, uint16_t{0}); }), Status::kOk);
}

// Tables.

TEST(TableStream, TellsWhereATableLies) {
  const Opened opened;
  mso_word::FCLCB place{};
  EXPECT_EQ(opened.document.GetRecInfo(mso_word::FCLCB_CLX, &place), Status::kOk);
  EXPECT_GT(place.lcb, 0u);
}

TEST(TableStream, HasNoTablesBehindItsPairs) {
  const Opened opened({.fibPairs = 108});
  mso_word::FCLCB place{7, 7};
  EXPECT_EQ(opened.document.GetRecInfo(mso_word::FCLCB_ANNOTATION_DATES, &place), Status::kNothing);
  EXPECT_EQ(opened.document.GetRecInfo(0xFFFFFFFF, &place), Status::kNothing);
  EXPECT_EQ(place.fc, 7u);
}

TEST(TableStream, TakesALengthThatIsNotPositiveAsAbsent) {
  for (uint32_t length : {0u, 0x80000000u, 0xFFFFFFFFu}) {
    const Opened opened({}, [=](WordDocument& source) { source.patchFib(pairOffset(15) + 4, length); });
    mso_word::FCLCB place{};
    EXPECT_EQ(opened.document.GetRecInfo(mso_word::FCLCB_FONTS, &place), Status::kNothing);
    EXPECT_EQ(place.lcb, length);
  }
}

TEST(TableStream, ReadsATable) {
  const Opened opened({}, [](WordDocument& source) { source.table(100, {5, 6, 7}); });
  KDRTableRecord record;
  EXPECT_EQ(opened.document.GetTableRecord(&record, 100), Status::kOk);
  ASSERT_EQ(record.bytes.size(), 3u);
  EXPECT_EQ(record.bytes.u8(2), 7);
}

TEST(TableStream, CutsATableThatRunsPastIt) {
  const Opened opened({}, [](WordDocument& source) {
    source.table(182, {5, 6, 7});  // the last one in the stream
    source.patchFib(pairOffset(182) + 4, uint32_t{0x7FFFFFFF});
  });
  KDRTableRecord record;
  EXPECT_EQ(opened.document.GetTableRecord(&record, 182), Status::kNothing);
  EXPECT_EQ(record.place.lcb, 0x7FFFFFFFu);
  EXPECT_EQ(record.bytes.size(), 3u);
  EXPECT_EQ(record.bytes.u32(0), 0x00070605u);
}

TEST(TableStream, ReadsIntoACallersBuffer) {
  const Opened opened({}, [](WordDocument& source) { source.table(182, {5, 6, 7, 8}); });
  mso_word::FCLCB place{};
  ASSERT_EQ(opened.document.GetRecInfo(182, &place), Status::kOk);
  uint8_t buffer[8] = {};
  EXPECT_EQ(opened.document.GetRecord({place.fc + 1, 2}, buffer), Status::kOk);
  EXPECT_EQ(buffer[1], 7);
  EXPECT_EQ(opened.document.GetRecord({place.fc, 8}, buffer), Status::kNothing);
  EXPECT_EQ(buffer[3], 8);
  EXPECT_THROW(opened.document.GetRecord({place.fc + 4, 1}, buffer), int);
}

// Tables on demand.

TEST(DocumentTables, AreNotReadBeforeTheyAreAskedFor) {
  Opened opened;
  const unsigned int before = opened.storage.content(L"1Table").reads;
  opened.document.GetFontTable();
  EXPECT_EQ(opened.storage.content(L"1Table").reads, before + 1);
}

TEST(DocumentTables, AreBuiltOnce) {
  Opened opened;
  const KDRFontTable& first = opened.document.GetFontTable();
  const unsigned int before = opened.storage.content(L"1Table").reads;
  EXPECT_EQ(&opened.document.GetFontTable(), &first);
  EXPECT_EQ(opened.storage.content(L"1Table").reads, before);
}

TEST(DocumentTables, AreBuiltOnceAlsoIfTheyCannotBeRead) {
  Opened opened({}, [](WordDocument& source) { source.table(mso_word::FCLCB_FONTS, {0, 0, 0, 0}); });
  EXPECT_EQ(opened.document.GetFontTable().Count(), 0u);
  const unsigned int before = opened.storage.content(L"1Table").reads;
  EXPECT_EQ(opened.document.GetFontTable().Count(), 0u);
  EXPECT_EQ(opened.storage.content(L"1Table").reads, before);
}

TEST(DocumentTables, AreBuiltOnceAlsoIfReadingThrows) {
  Opened opened({}, [](WordDocument& source) {
    source.patchFib(pairOffset(mso_word::FCLCB_FONTS), uint32_t{0x7FFFFFFF});
  });
  EXPECT_THROW(opened.document.GetFontTable(), int);
  EXPECT_EQ(opened.document.GetFontTable().Count(), 0u);
}

TEST(DocumentTables, OutliveTheStreams) {
  Opened opened;
  const KDRFootnotes& notes = opened.document.GetFootnotes();
  opened.document.Close();
  EXPECT_EQ(notes.GetPositions().Count(), 1u);
  EXPECT_EQ(notes.GetPositions().Position(0), 9u);
}

// Streams.

TEST(DocumentStreams, AreGivenBackBeforeTheStorage) {
  Opened opened({}, [](WordDocument& source) { source.data({1}); });
  EXPECT_TRUE(opened.document.GetDocFile().getDataStrm().good());
  EXPECT_EQ(opened.storage.openStreams(), 3);
  opened.document.Close();
  EXPECT_EQ(opened.storage.openStreams(), 0);
  EXPECT_EQ(opened.storage.references(), 0u);
  EXPECT_FALSE(opened.storage.outlivedByStream());
}

TEST(DocumentStreams, CanBeClosedTwice) {
  Opened opened;
  opened.document.Close();
  opened.document.Close();
  EXPECT_EQ(opened.storage.references(), 0u);
}

TEST(DocumentStreams, OpenDataOnDemand) {
  Opened opened({}, [](WordDocument& source) { source.data({1, 2, 3}); });
  EXPECT_EQ(opened.storage.content(L"Data").openStreams, 0);
  EXPECT_EQ(opened.document.GetDocFile().getDataStrm().size(), 3u);
  opened.document.GetDocFile().getDataStrm();
  EXPECT_EQ(opened.storage.content(L"Data").openStreams, 1);
}

TEST(DocumentStreams, DoWithoutData) {
  Opened opened;
  EXPECT_FALSE(opened.document.GetDocFile().getDataStrm().good());
  opened.document.Close();
  EXPECT_FALSE(opened.document.GetDocFile().getDataStrm().good());
}

TEST(DocumentStreams, HoldNoTablesOnceClosed) {
  Opened opened;
  opened.document.Close();
  mso_word::FCLCB place{};
  EXPECT_EQ(opened.document.GetRecInfo(mso_word::FCLCB_CLX, &place), Status::kNothing);
}

// Reading bytes.

TEST(ReadBytes, TakesNoMoreThanThereIs) {
  MemoryStorage storage;
  storage.add(L"x", {1, 2, 3, 4, 5});
  IStream* stream = nullptr;
  storage.OpenStream(L"x", nullptr, 16, 0, &stream);
  DsMemReadArchive archive(stream);
  stream->Release();
  ChainAllocator allocator;
  EXPECT_EQ(ReadBytes(archive, 2, allocator).u16(0), 0x0201);
  EXPECT_EQ(ReadBytes(archive, 0xFFFFFFFF, allocator).size(), 3u);
  EXPECT_TRUE(ReadBytes(archive, 1, allocator).empty());
}
