#include <gtest/gtest.h>

#include <random>

#include "memory_storage.h"
#include "support/temp_folder.h"
#include "walk_document.h"

using support::Bytes;
using support::WordDocument;

namespace {

/// A document that has something of everything that is read.
WordDocument richDocument() {
  WordDocument source;
  source.section({support::sprm(0xB01F, 15840)});
  source.paragraph("Title")
      .istd(1)
      .bookmarkStart("top")
      .run(" bold", {support::sprm(0x0835, 1)})
      .bookmarkEnd("top");
  source.paragraph("With ").field(88, " HYPERLINK x ", support::Text("a link")).run(".");
  source.paragraph("Note").footnote("Footnote").endnote("Endnote");
  source.paragraph("Re").annotationStart(3).run("mark").annotationEnd(3).annotation("Remark",
                                                                                    {.rangeTag = 3});
  const uint32_t group = source.propertyGroup({support::sprm(0x0835, 1), support::sprm(0x2461, 1)});
  source.paragraph("fast ")
      .newPiece({.prm = support::prmOfGroup(group), .fileOrder = 2})
      .run("saved ")
      .newPiece({.width = support::Piece::Width::k16, .fileOrder = 1})
      .run("text");
  source.section({support::sprm(0x3009, 1)});
  source.row({"a", "b"}, {support::defTableSprm({0, 1000, 2000})});
  source.story(mso_word::SUBDOC_TEXTBOX).paragraph("box");
  source.font(support::Font{.name = u"Arial", .alternateName = u"Helvetica"});
  source.style(1, support::Style().name("heading 1").basedOn(0));
  source.list({.lsid = 5});
  return source;
}

/// Opens the streams and asks for everything; a refused open and a refused seek are fine.
void tryToRead(const support::WordStreams& streams) {
  MemoryStorage storage;
  storage.add(L"WordDocument", streams.wordDocument);
  storage.add(L"1Table", streams.table);
  storage.add(L"Data", streams.data);
  KDRDocument document;
  try {
    if (failed(document.OpenDocument(&storage))) return;
  } catch (int) {
    return;
  }
  for (int i = 0; i < 40; ++i) {  // a getter that threw is not asked again, so the walk gets on
    try {
      DocumentWalk(document).walk();
      return;
    } catch (int) {
    }
  }
}

/// Numbers that lie on or beyond the bounds of something.
constexpr uint32_t kAwkward[] = {0,      1,      2,      0x7F,       0x80,       0xFF,
                                 0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

}  // namespace

TEST(HostileDocument, OfWhichEachNumberOfTheFibIsAwkward) {
  const support::WordStreams sound = richDocument().streams();
  for (size_t offset = 10; offset < WordDocument::pairOffset(183); offset += 2) {
    for (uint32_t number : kAwkward) {
      support::WordStreams streams = sound;
      support::patchInteger(streams.wordDocument, offset, number);
      tryToRead(streams);
    }
  }
}

TEST(HostileDocument, OfWhichBytesOfTheTablesAreAwkward) {
  const support::WordStreams sound = richDocument().streams();
  for (size_t offset = 0; offset + 4 <= sound.table.size(); ++offset) {
    for (uint32_t number : {0xFFFFFFFFu, 0x7FFFFFFFu, 0u}) {
      support::WordStreams streams = sound;
      support::patchInteger(streams.table, offset, number);
      tryToRead(streams);
    }
  }
}

TEST(HostileDocument, OfWhichBytesAreRandom) {
  const support::WordStreams sound = richDocument().streams();
  std::mt19937 random(20240601);
  for (int round = 0; round < 2000; ++round) {
    support::WordStreams streams = sound;
    for (int i = 0; i < 8; ++i) {
      Bytes& stream = random() % 2 ? streams.table : streams.wordDocument;
      stream[random() % stream.size()] = static_cast<uint8_t>(random());
    }
    tryToRead(streams);
  }
}

TEST(HostileDocument, OfWhichAStreamIsCut) {
  const support::WordStreams sound = richDocument().streams();
  for (size_t size = 0; size < sound.table.size(); size += 7) {
    support::WordStreams streams = sound;
    streams.table.resize(size);
    tryToRead(streams);
  }
  for (size_t size = 0; size < sound.wordDocument.size(); size += 61) {
    support::WordStreams streams = sound;
    streams.wordDocument.resize(size);
    tryToRead(streams);
  }
}

TEST(SoundDocument, IsReadWhole) {
  MemoryStorage storage;
  OpenedDocument opened(richDocument());
  DocumentWalk walk(opened.document);
  EXPECT_GT(walk.walk(), 0u);
  EXPECT_GT(walk.characters(), 100u);
  EXPECT_GT(walk.paragraphs(), 10u);
}

// From a file.

TEST(DocumentFile, OpensWhateverFlagsItIsGiven) {
  const support::TempFolder folder;
  richDocument().save(folder.path("test.doc"));
  for (unsigned int flags : {0u, 0x10000u, 0xFFFFFFFFu}) {
    KDRDocument document;
    EXPECT_EQ(document.OpenDocument(folder.path("test.doc").c_str(), flags), Status::kOk);
    EXPECT_EQ(textOf(document, mso_word::SUBDOC_MAIN).substr(0, 11), u"Title bold\r");
  }
}

TEST(DocumentFile, IsRefusedIfItIsAbsentOrNoCompoundFile) {
  const support::TempFolder folder;
  folder.write("text.doc", std::string(2000, 'x'));
  KDRDocument document;
  EXPECT_EQ(document.OpenDocument(folder.path("text.doc").c_str(), 0), Status::kCorruptCompoundFile);
  EXPECT_EQ(document.OpenDocument(folder.path("absent.doc").c_str(), 0), Status::kCorruptCompoundFile);
}

TEST(DocumentFile, CanBeOpenedAfterARefusal) {
  const support::TempFolder folder;
  folder.write("text.doc", std::string(2000, 'x'));
  richDocument().save(folder.path("test.doc"));
  KDRDocument document;
  EXPECT_TRUE(failed(document.OpenDocument(folder.path("text.doc").c_str(), 0)));
  EXPECT_EQ(document.OpenDocument(folder.path("test.doc").c_str(), 0), Status::kOk);
}
