#include "drawing/blip_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "read_drawing.h"
#include "support/opened_document.h"

using namespace drawing_test;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

Bytes bytesOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

/// An entry as it lies in the store: the fields that count, then whatever is embedded at offset 36.
Bytes entry(uint32_t size, uint32_t delayOffset, const Bytes& embedded, uint8_t nameBytes = 0) {
  return record(0xF007, 6, 2,
                ByteWriter()
                    .u8(6)
                    .u8(6)
                    .fill(16, 0xAB)
                    .u16(0)
                    .u32(size)
                    .u32(9)
                    .u32(delayOffset)
                    .u8(0)
                    .u8(nameBytes)
                    .u16(0)
                    .bytes(embedded)
                    .take());
}

class Store {
 public:
  explicit Store(const Bytes& entry) : read_(groupOf({entry})) {}
  const MsoROBlip* embedded() const { return read_.store().GetBlipNoDelayStrm(0); }
  const MsoROBlipStore* operator->() const { return &read_.store(); }

 private:
  ReadDrawings read_;
};

Store storeWith(const Bytes& embedded) {
  return Store(entry(static_cast<uint32_t>(embedded.size()), 0, embedded));
}

TEST(BlipStore, GivesTheEntriesByIndex) {
  const ReadDrawings read(groupOf({Blip{.uid = 1}.entry(), Blip{.uid = 2}.entry()}));
  EXPECT_EQ(read.store().GetCount(), 2u);
  EXPECT_EQ(read.store().GetFBSE(1).u8(_FBSE::kUid), 2);
}

TEST(BlipStore, HasNothingOutsideItsEntries) {
  const ReadDrawings read(groupOf({Blip().entry()}));
  EXPECT_TRUE(read.store().GetFBSE(1).empty());
  EXPECT_EQ(read.store().GetBlipNoDelayStrm(1), nullptr);
  EXPECT_EQ(read.store().GetBlipWithDelayStrm(0xFFFFFFFF, nullptr), nullptr);
}

TEST(BlipStore, CountsTheEntriesThatAreThere) {
  Bytes store = container(0xF001, {Blip().entry(), record(0xF008, 0, 0, {}), Blip().entry()});
  store[0] = 0xFF;  // an instance of 4095
  store[1] = 0xFF;
  EXPECT_EQ(ReadDrawings(container(0xF000, {store})).store().GetCount(), 2u);
}

TEST(BlipStore, DecodesABitmapBehindItsTag) {
  const Store store(Blip{.type = 6, .data = {7, 8, 9}}.entry());
  const MsoROBlip* blip = store.embedded();
  ASSERT_NE(blip, nullptr);
  EXPECT_EQ(blip->type, uint32_t{kBlipPng});
  EXPECT_THAT(bytesOf(blip->data), ElementsAre(7, 8, 9));
  EXPECT_TRUE(blip->metafileHeader.empty());
  EXPECT_EQ(blip->refs, 1u);
}

TEST(BlipStore, DecodesAMetafileBehindItsHeader) {
  const Store store(Blip{.type = 3, .data = {7, 8}, .rawSize = 500, .compression = 0}.entry());
  const MsoROBlip* blip = store.embedded();
  ASSERT_NE(blip, nullptr);
  EXPECT_EQ(blip->metafileHeader.size(), 34u);
  EXPECT_EQ(blip->metafileHeader.u32(0), 500u);
  EXPECT_EQ(blip->metafileHeader.u8(32), 0);
  EXPECT_THAT(bytesOf(blip->data), ElementsAre(7, 8));
}

TEST(BlipStore, StepsOverTwoIdentitiesOfAnOddInstance) {
  const Bytes two = ByteWriter().fill(16, 1).fill(16, 2).u8(0xFF).u8(42).take();
  EXPECT_THAT(bytesOf(storeWith(record(0xF01D, 0x46B, 0, two)).embedded()->data), ElementsAre(42));
  EXPECT_EQ(storeWith(record(0xF01D, 0x46A, 0, two)).embedded()->data.size(), 17u);
}

TEST(BlipStore, TellsBitmapsFromMetafilesByTheKindAlone) {
  for (unsigned int type = 0; type < 8; ++type) {
    const Bytes blip = record(static_cast<uint16_t>(0xF018 + type), 0, 0, Bytes(100));
    const bool isMetafile = type >= 2 && type <= 4;
    EXPECT_EQ(storeWith(blip).embedded()->metafileHeader.size(), isMetafile ? 34u : 0u) << type;
    EXPECT_EQ(storeWith(blip).embedded()->data.size(), isMetafile ? 50u : 83u) << type;
  }
}

TEST(BlipStore, HasNoBlipOfAnUnknownType) {
  EXPECT_EQ(storeWith(record(0xF020, 0, 0, Bytes(100))).embedded(), nullptr);
  EXPECT_EQ(storeWith(record(0xF117, 0, 0, Bytes(100))).embedded(), nullptr);
  EXPECT_EQ(storeWith(record(0xF017, 0, 0, Bytes(100))).embedded(), nullptr);
  EXPECT_EQ(storeWith(record(0xF118, 0, 0, Bytes(100))).embedded(), nullptr);
}

TEST(BlipStore, HasNoBlipInAnEntryOfSizeZero) {
  EXPECT_EQ(Store(entry(0, 0, Blip().bytes())).embedded(), nullptr);
  EXPECT_NE(Store(entry(1, 0, Blip().bytes())).embedded(), nullptr);
}

TEST(BlipStore, SeeksTheBlipAt36AlsoInAnEntryWithAName) {
  const Bytes named = joined({ByteWriter().text16(u"pic").u16(0).take(), Blip().bytes()});
  EXPECT_EQ(Store(entry(100, 0, named, 8)).embedded(), nullptr) << "the name is no blip";
  EXPECT_NE(Store(entry(100, 0, Blip().bytes(), 8)).embedded(), nullptr);
}

TEST(BlipStore, CutsABlipThatOverruns) {
  Bytes blip = Blip{.data = {1, 2, 3}}.bytes();
  support::patchInteger(blip, 4, uint32_t{0x10000});
  EXPECT_THAT(bytesOf(storeWith(blip).embedded()->data), ElementsAre(1, 2, 3));
}

TEST(BlipStore, HasAnEmptyImageInABlipThatEndsBeforeIt) {
  EXPECT_TRUE(storeWith(record(0xF01E, 0, 0, Bytes(16))).embedded()->data.empty());
  EXPECT_TRUE(storeWith(record(0xF01B, 0, 0, Bytes(20))).embedded()->data.empty());
}

TEST(BlipStore, HasNoBlipInAnEntryThatIsCut) {
  EXPECT_EQ(Store(record(0xF007, 6, 2, Bytes(30, 1))).embedded(), nullptr);
  EXPECT_EQ(Store(record(0xF007, 6, 2, Bytes(40, 1))).embedded(), nullptr);
}

TEST(BlipStore, KeepsABlipThatWasAskedFor) {
  const Store store(Blip().entry());
  EXPECT_EQ(store.embedded(), store.embedded());
}

TEST(BlipSignatures, AreThoseOfTheFormat) {
  const uint16_t signatures[] = {0, 0, 0x3D4, 0x216, 0x542, 0x46A, 0x6E0, 0x7A8, 0};
  const uint8_t kinds[] = {0xFE, 0xFE, 0, 0, 0, 0xFE, 0xFE, 0xFE, 0};
  for (unsigned int i = 0; i < 9; ++i) {
    EXPECT_EQ(GetBlipSignature(i).signature, signatures[i]);
    EXPECT_EQ(GetBlipSignature(i).kind, kinds[i]);
  }
}

TEST(BlipSignatures, HaveOneForAllThatIsOutside) {
  EXPECT_EQ(GetBlipSignature(31).signature, 0);
  EXPECT_EQ(GetBlipSignature(32).signature, 0x800);
  EXPECT_EQ(GetBlipSignature(0xFFFFFFFF).kind, 0xFE);
}

// The delay stream.

/// A document whose store has entries that point into "WordDocument".
class DelayedStore {
 public:
  explicit DelayedStore(support::WordDocument& document, const std::vector<uint32_t>& offsets,
                        uint32_t size = 0)
      : opened_(withStore(document, offsets, size)) {}

  const MsoROBlip* blip(unsigned int i = 0) const {
    return store().GetBlipWithDelayStrm(i, &opened_->GetDocFile().getWordDocumentStrm());
  }
  const MsoROBlipStore& store() const { return opened_->GetDrawingGroup().GetBlipStore(); }

 private:
  static const support::WordDocument& withStore(support::WordDocument& document,
                                                const std::vector<uint32_t>& offsets, uint32_t size) {
    std::vector<Bytes> entries;
    for (const uint32_t offset : offsets) entries.push_back(entry(size, offset, {}));
    document.table(mso_word::FCLCB_DRAWINGS, groupOf(entries));
    return document;
  }

  support::OpenedDocument opened_;
};

TEST(DelayedBlip, IsReadFromItsOffset) {
  support::WordDocument document;
  document.paragraph("Text");
  document.wordDocumentData(Bytes(33));
  const DelayedStore store(document, {document.wordDocumentData(Blip{.data = {4, 5, 6}}.bytes())});
  ASSERT_NE(store.blip(), nullptr);
  EXPECT_THAT(bytesOf(store.blip()->data), ElementsAre(4, 5, 6));
  EXPECT_EQ(store.blip()->refs, 9u);
}

TEST(DelayedBlip, DoesNotAskForTheEntrysSize) {
  support::WordDocument document;
  document.paragraph("Text");
  const uint32_t offset = document.wordDocumentData(Blip().bytes());
  EXPECT_NE(DelayedStore(document, {offset}, 0).blip(), nullptr);
  EXPECT_NE(DelayedStore(document, {offset}, 1u << 30).blip(), nullptr);
}

TEST(DelayedBlip, IsKept) {
  support::WordDocument document;
  document.paragraph("Text");
  const DelayedStore store(document, {document.wordDocumentData(Blip().bytes())});
  const MsoROBlip* first = store.blip();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(store.blip(), first);
  EXPECT_EQ(store.store().GetBlipWithDelayStrm(0, nullptr), first);
  EXPECT_EQ(store.store().GetBlipNoDelayStrm(0), first);
}

TEST(DelayedBlip, NeedsAStream) {
  support::WordDocument document;
  document.paragraph("Text");
  const DelayedStore store(document, {document.wordDocumentData(Blip().bytes())});
  EXPECT_EQ(store.store().GetBlipWithDelayStrm(0, nullptr), nullptr);
  EXPECT_NE(store.blip(), nullptr) << "asked for again";
}

TEST(DelayedBlip, IsAbsentWhereNoBlipLies) {
  support::WordDocument document;
  document.paragraph("Text");
  EXPECT_EQ(DelayedStore(document, {0}).blip(), nullptr);
  EXPECT_EQ(DelayedStore(document, {document.wordDocumentData(record(0xF020, 0, 0, Bytes(99)))}).blip(),
            nullptr);
}

TEST(DelayedBlip, IsAbsentOutsideTheStream) {
  support::WordDocument document;
  document.paragraph("Text");
  const DelayedStore store(document, {0x100000, 0x7FFFFFFF, 0xFFFFFFFF});
  for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(store.blip(i), nullptr);
}

TEST(DelayedBlip, IsCutAtTheEndOfTheStream) {
  Bytes blip = Blip{.data = {4, 5, 6}}.bytes();
  support::patchInteger(blip, 4, uint32_t{0x7FFFFFFF});
  support::WordDocument document;
  document.paragraph("Text");
  const DelayedStore store(document, {document.wordDocumentData(blip)});
  ASSERT_NE(store.blip(), nullptr);
  EXPECT_GT(store.blip()->data.size(), 3u);
  EXPECT_LT(store.blip()->data.size(), 0x10000u);
  EXPECT_EQ(store.blip()->data.u8(2), 6);
}

TEST(DelayedBlip, OfNegativeLengthIsAbsent) {
  Bytes blip = Blip().bytes();
  support::patchInteger(blip, 4, uint32_t{0x80000000});
  support::WordDocument document;
  document.paragraph("Text");
  EXPECT_EQ(DelayedStore(document, {document.wordDocumentData(blip)}).blip(), nullptr);
}

TEST(DelayedBlip, IsSharedByEntriesThatNameIt) {
  support::WordDocument document;
  document.paragraph("Text");
  const std::vector<uint32_t> offsets(50, document.wordDocumentData(Blip{.data = Bytes(20000)}.bytes()));
  const DelayedStore store(document, offsets);
  for (unsigned int i = 0; i < offsets.size(); ++i) {
    ASSERT_NE(store.blip(i), nullptr);
    EXPECT_EQ(store.blip(i)->data.data(), store.blip(0)->data.data());
  }
}

TEST(DelayedBlip, OfAnUnknownTypeTakesNothingFromOthers) {
  support::WordDocument document;
  document.paragraph("Text");
  const uint32_t unknown = document.wordDocumentData(record(0xF02B, 0, 0, Bytes(100000)));
  const DelayedStore store(document, {unknown, document.wordDocumentData(Blip().bytes())});
  for (int i = 0; i < 10; ++i) EXPECT_EQ(store.blip(0), nullptr);
  EXPECT_NE(store.blip(1), nullptr);
}

TEST(DelayedBlip, TakesNoMemoryWithoutEndWhereAllOverlap) {
  // Headers of blips, each of which claims all the rest of the stream.
  constexpr uint32_t kCount = 2000;
  ByteWriter headers;
  for (uint32_t i = 0; i < kCount; ++i) headers.u16(0).u16(0xF01E).u32(0x7FFFFFFF);
  support::WordDocument document;
  document.paragraph("Text");
  std::vector<uint32_t> offsets(kCount);
  offsets[0] = document.wordDocumentData(headers.take());
  for (uint32_t i = 1; i < kCount; ++i) offsets[i] = offsets[0] + i * 8;
  const DelayedStore store(document, offsets);
  size_t sum = 0;
  for (unsigned int i = 0; i < kCount; ++i) sum += store.blip(i) ? store.blip(i)->data.size() : 0;
  EXPECT_GT(sum, 0u);
  EXPECT_LT(sum, 3u * kCount * 8u);
}

}  // namespace
