#include <algorithm>

#include "base/byte_view.h"
#include "limits/hostile_documents.h"
#include "support/compound_file_writer.h"
#include "support/word_document_writer.h"

using namespace support;

namespace {

WordDocument plain() {
  WordDocument document;
  document.paragraph("text");
  document.paragraph(kTheEnd);
  return document;
}

/// Streams that all are the longest chain of the file.
Bytes streamsOfOneChain(uint32_t scale) {
  WordDocument document = plain();
  document.stream(u"Long", Bytes(size_t{scale} * 800));
  for (uint32_t i = 0; i < scale; ++i) {
    document.stream(u"S" + std::u16string(1, static_cast<char16_t>(0x4E00 + i)), Bytes(8));
  }
  CompoundFile file = document.compound().build();
  const uint32_t start = file.startPage(u"Long");
  for (uint32_t i = 0; i < scale; ++i) {
    const uint32_t entry = file.entryIndex(u"S" + std::u16string(1, static_cast<char16_t>(0x4E00 + i)));
    file.setEntry(entry, kEntryStartPage, start + i);
    file.setEntry(entry, kEntrySize, uint32_t{0xFFFFFFFF});
  }
  return file.bytes();
}

/// A directory of nothing but small streams.
Bytes directoryOfManyEntries(uint32_t scale) {
  WordDocument document = plain();
  for (uint32_t i = 0; i < scale * 7; ++i) {
    std::u16string name(30, u'n');
    name[0] = static_cast<char16_t>(0x4E00 + i);
    document.stream(name, {});
  }
  return document.build();
}

/// Streams that claim to be 4 GiB long.
Bytes streamsThatLie(uint32_t scale) {
  WordDocument document = plain();
  document.data(Bytes(size_t{scale} << 10, 3));
  document.wordDocumentData(Bytes(5000));
  CompoundFile file = document.compound().build();
  for (const char16_t* name : {u"WordDocument", u"1Table", u"Data"}) {
    if (file.startPage(name) > 0) file.setEntry(name, kEntrySize, uint32_t{0xFFFFFFFF});
  }
  return file.bytes();
}

/// The list of FAT pages names the one FAT page there is over and over.
Bytes fatOfOnePage(uint32_t scale) {
  WordDocument document = plain();
  document.data(Bytes(size_t{scale} << 10, 3));
  CompoundFile file = document.compound().build();
  const ByteView bytes(file.bytes().data(), file.bytes().size());
  const uint32_t first = bytes.u32(kHeaderFatPages);
  for (uint32_t i = file.fatPageCount(); i < 109; ++i) file.setFatPage(i, first);
  return file.bytes();
}

/// Tiny pages, of which each has to be looked for.
Bytes tinyPages(uint32_t scale) {
  WordOptions options;
  options.compound.tinyCutoff = 0xFFFFFFF0;
  options.compound.tinyPageShift = 3;
  options.compound.reverseChains = true;
  WordDocument document(options);
  document.paragraph(std::string(size_t{scale} * 500, 'x'));
  document.paragraph(kTheEnd);
  return document.build();
}

/// Pages of 16 bytes in reverse, which no cache keeps.
Bytes smallPages(uint32_t scale) {
  WordOptions options;
  options.compound.pageShift = 4;
  options.compound.tinyPageShift = 0;
  options.compound.tinyCutoff = 0;
  options.compound.reverseChains = true;
  WordDocument document(options);
  for (uint32_t i = 0; i < scale * 5; ++i)
    document.paragraph("x").newPiece({.fileOrder = -static_cast<int>(i)});
  document.paragraph(kTheEnd);
  return document.build();
}

/// The same with pieces that jump to and fro between pages of properties that put each other out of their
/// cache.
Bytes pagesOutOfCache(uint32_t scale) {
  WordOptions options;
  options.maxFkpEntries = 1;
  options.compound.pageShift = 4;
  options.compound.tinyPageShift = 0;
  options.compound.tinyCutoff = 0;
  options.compound.reverseChains = true;
  WordDocument document(options);
  constexpr uint32_t kPagesKept = 128;
  for (uint32_t i = 0; i <= kPagesKept; ++i) document.paragraph("x");
  const uint32_t rounds = scale * 40;
  document.editTable(mso_word::FCLCB_CLX, [=](Bytes& clx) {
    const Bytes first(clx.end() - 8, clx.end());
    Bytes far = first;
    patchInteger(far, 2, ByteView(first.data(), first.size()).u32(2) + 2 * 2 * kPagesKept);
    std::vector<uint32_t> positions = {0};
    std::vector<Bytes> records;
    for (uint32_t i = 0; i < rounds; ++i) {
      positions.push_back(2 * i + 2);
      records.push_back(i % 2 == 0 ? first : far);
    }
    const Bytes table = positionTable(positions, records);
    clx = ByteWriter().u8(2).u32(static_cast<uint32_t>(table.size())).bytes(table).take();
  });
  constexpr size_t kMainTextLength = 0x4C;
  document.patchFib(kMainTextLength, 2 * rounds);
  document.table(mso_word::FCLCB_SECTIONS, positionTable({0, 2 * rounds}, {Bytes(12, 0xFF)}));
  document.wordDocumentData(Bytes(3 * rounds));
  return document.build();
}

}  // namespace

std::vector<HostileDocument> hostileFiles() {
  return {
      {"StreamsOfOneChain", streamsOfOneChain},
      {"DirectoryOfManyEntries", directoryOfManyEntries},
      {"StreamsThatLie", streamsThatLie},
      {"FatOfOnePage", fatOfOnePage},
      {"TinyPages", tinyPages},
      {"SmallPages", smallPages},
      {"PagesOutOfCache", pagesOutOfCache, false},
  };
}
