// What files are, by their bytes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>

#include "convert/sample_files.h"
#include "pagerex/convert.h"
#include "support/compound_file_writer.h"

using support::Bytes;
using support::CompoundFile;
using support::CompoundFileWriter;
using support::SiblingTree;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr int kKinds[] = {
    PAGEREX_KIND_UNKNOWN,  PAGEREX_KIND_EMPTY,
    PAGEREX_KIND_TEXT,     PAGEREX_KIND_WORD97,
    PAGEREX_KIND_WORD95,   PAGEREX_KIND_WORD_EARLY,
    PAGEREX_KIND_XLS,      PAGEREX_KIND_WORD_ENCRYPTED,
    PAGEREX_KIND_COMPOUND, PAGEREX_KIND_PPT,
    PAGEREX_KIND_MSG,      PAGEREX_KIND_MSI,
    PAGEREX_KIND_ZIP,      PAGEREX_KIND_OOXML_ENCRYPTED,
    PAGEREX_KIND_DOCX,     PAGEREX_KIND_XLSX,
    PAGEREX_KIND_PPTX,     PAGEREX_KIND_OOXML,
    PAGEREX_KIND_ODT,      PAGEREX_KIND_ODS,
    PAGEREX_KIND_ODP,      PAGEREX_KIND_ODF,
    PAGEREX_KIND_RTF,      PAGEREX_KIND_HTML,
    PAGEREX_KIND_MHTML,    PAGEREX_KIND_XML,
    PAGEREX_KIND_WORDML,   PAGEREX_KIND_WORDPERFECT,
    PAGEREX_KIND_PDF,      PAGEREX_KIND_EMF,
    PAGEREX_KIND_WMF,      PAGEREX_KIND_PICT,
    PAGEREX_KIND_DIB,      PAGEREX_KIND_BMP,
    PAGEREX_KIND_TIFF,     PAGEREX_KIND_PNG,
    PAGEREX_KIND_JPEG,     PAGEREX_KIND_GIF,
};

/// In memory that ends where the bytes do, so that a read behind them is seen by the sanitizer.
int kindOfFirst(size_t size, const Bytes& bytes) {
  const std::unique_ptr<uint8_t[]> exact(new uint8_t[size]);
  std::copy_n(bytes.begin(), size, exact.get());
  return pagerex_detect(exact.get(), size);
}
std::string kindOf(const Bytes& bytes) {
  return pagerex_kind_name(kindOfFirst(bytes.size(), bytes));
}
std::string kindOf(std::string_view text) {
  return kindOf(bytesOf(text));
}
std::string kindOf(const CompoundFile& file) {
  return kindOf(file.bytes());
}

/// A compound file with a document, and what makes its directory some pages long.
CompoundFileWriter wordAmong(int others, const CompoundFileWriter::Options& options = {}) {
  CompoundFileWriter writer(options);
  for (int i = 0; i < others; ++i) {
    const std::string digits = std::to_string(i);
    writer.stream(u"S" + std::u16string(digits.begin(), digits.end()), Bytes(1));
  }
  const Bytes fib = support::ByteWriter().u16(0xA5EC).u16(0xC1).zeros(500).take();
  return writer.stream(u"WordDocument", fib).stream(u"0Table", Bytes(10));
}

}  // namespace

// Kinds.

TEST(Kinds, EachHasANameAndASentenceOfItsOwn) {
  std::set<std::string> names, sentences;
  for (const int kind : kKinds) {
    names.insert(pagerex_kind_name(kind));
    EXPECT_THAT(pagerex_kind_sentence(kind), AllOf(StartsWith("This "), EndsWith(".")));
    sentences.insert(pagerex_kind_sentence(kind));
  }
  EXPECT_EQ(names.size(), std::size(kKinds));
  EXPECT_EQ(sentences.size(), std::size(kKinds));
}

TEST(Kinds, NumbersThatAreNoneAreUnknown) {
  for (const int number : {-1, 3, 99, 1 << 30}) {
    EXPECT_STREQ(pagerex_kind_name(number), "unknown");
    EXPECT_STREQ(pagerex_kind_sentence(number), pagerex_kind_sentence(PAGEREX_KIND_UNKNOWN));
  }
}

TEST(Kinds, ASentenceSaysWhatTheFileIs) {
  EXPECT_STREQ(pagerex_kind_name(PAGEREX_KIND_DOCX), "docx");
  EXPECT_STREQ(pagerex_kind_sentence(PAGEREX_KIND_DOCX), "This is a Word document of 2007 or later (.docx).");
}

// Files.

TEST(Detect, TellsASampleOfEachKind) {
  std::set<int> told;
  for (const SampleFile& file : sampleFiles()) {
    EXPECT_EQ(kindOf(file.bytes), pagerex_kind_name(file.kind)) << file.name;
    told.insert(file.kind);
  }
  EXPECT_EQ(told.size(), std::size(kKinds));
}

TEST(Detect, TakesFilesCutAnywhere) {
  const std::set<int> kinds(std::begin(kKinds), std::end(kKinds));
  for (const SampleFile& file : sampleFiles()) {
    for (size_t size = 0; size <= std::min<size_t>(file.bytes.size(), 4096); ++size) {
      const int kind = kindOfFirst(size, file.bytes);
      EXPECT_TRUE(kinds.contains(kind)) << file.name << " cut at " << size;
      EXPECT_EQ(kind == PAGEREX_KIND_EMPTY, size == 0) << file.name << " cut at " << size;
    }
  }
}

TEST(Detect, CountsNullAsEmpty) {
  EXPECT_EQ(pagerex_detect(nullptr, 0), PAGEREX_KIND_EMPTY);
  EXPECT_EQ(pagerex_detect(nullptr, 100), PAGEREX_KIND_EMPTY);
}

// What is nearly something.

TEST(DetectText, BeginningLikeAnArchiveIsText) {
  EXPECT_EQ(kindOf("PK is a pair of letters"), "text");
}

TEST(DetectText, BeginningLikeASignatureIsText) {
  for (const char* text : {"%PDF", "{\\rt", "{rtf1", "\xFFWP", "WordDocument", "\xDB\xA5 and more", "MIME"})
    EXPECT_EQ(kindOf(text), "text") << text;
}

TEST(DetectText, MarkupWithoutKnownTagsIsText) {
  for (const char* text : {"<hello> world", "a < b", "< html>", "<htmlx>", "html", "<!-- only a comment -->",
                           "<!DOCTYPE letter>", "<>", "<", "<?php echo 1 ?>"})
    EXPECT_EQ(kindOf(text), "text") << text;
}

TEST(DetectText, SpeakingOfPdfIsText) {
  EXPECT_EQ(kindOf("A file that begins with %PDF-1.4 is one."), "text");
  EXPECT_EQ(kindOf(std::string(1020, 'x') + "\n%PDF-1.4"), "text");
}

TEST(DetectText, MayHoldFewControlCharacters) {
  EXPECT_EQ(kindOf(std::string(98, 'x') + "\1\1"), "text");
  EXPECT_EQ(kindOf(std::string(97, 'x') + "\1\1\1"), "unknown");
  EXPECT_EQ(kindOf(std::string(4095, 'x') + '\0'), "unknown");
  EXPECT_EQ(kindOf(std::string(4096, 'x') + '\0'), "text");
}

TEST(DetectText, OfTwoByteUnitsNeedsItsMark) {
  EXPECT_EQ(kindOf(utf16Of("Hello", false)), "unknown");
  EXPECT_EQ(kindOf(std::string_view("\xFF\xFE\xFE\xFF\xFF\xFF", 6)), "unknown");
}

TEST(DetectMime, NeedsTheHeaderAmongHeaders) {
  EXPECT_EQ(kindOf("Subject: a\r\nTo: b\r\n\r\nMIME-Version: 1.0\r\n"), "text");
  EXPECT_EQ(kindOf("Dear Sir,\r\nMIME-Version: 1.0\r\n"), "text");
  EXPECT_EQ(kindOf("Note: a"), "text");
}

TEST(DetectXml, OfOtherNamespacesIsXml) {
  const std::string head = "<?xml version='1.0'?>";
  for (const char* rest : {"<?mso-application progid='Excel.Sheet'?><Workbook "
                           "xmlns='urn:schemas-microsoft-com:office:spreadsheet'>",
                           "<w:wordDocument xmlns:w='http://example.com'>", "<html:p>", "<title>",
                           "<w:document xmlns:w='http://schemas.microsoft.com/office/word/2003/wordml'>", ""})
    EXPECT_EQ(kindOf(head + rest), "xml") << rest;
}

TEST(DetectXml, ADeclarationMustBeOne) {
  EXPECT_EQ(kindOf("<?xml-stylesheet href='a'?><a>"), "text");
}

// Compound files.

TEST(DetectCompound, LooksAtTheTopOnly) {
  const Bytes fib = support::ByteWriter().u16(0xA5EC).u16(0xC1).zeros(500).take();
  const auto holding = [&](const char16_t* stream, const char16_t* folder) {
    return kindOf(CompoundFileWriter()
                      .stream(std::u16string(folder) + u"/WordDocument", fib)
                      .stream(std::u16string(folder) + u"/1Table", Bytes(10))
                      .stream(stream, Bytes(10))
                      .bytes());
  };
  EXPECT_EQ(holding(u"Workbook", u"MBD0001"), "xls");
  EXPECT_EQ(holding(u"__properties_version1.0", u"__attach"), "msg");
  EXPECT_EQ(holding(u"A", u"B"), "compound");
}

TEST(DetectCompound, AStorageOrAnotherCaseIsAnotherName) {
  EXPECT_EQ(kindOf(CompoundFileWriter().stream(u"Workbook/A", Bytes(1)).bytes()), "compound");
  EXPECT_EQ(kindOf(compoundOf({u"WORKBOOK"})), "compound");
  EXPECT_EQ(kindOf(compoundOf({u"Workbook2"})), "compound");
}

TEST(DetectCompound, FindsTheDocumentHoweverTheFileIsLaidOut) {
  using Options = CompoundFileWriter::Options;
  for (const Options& options :
       {Options{}, Options{.pageShift = 12}, Options{.pageShift = 12, .headerFillsPage = true},
        Options{.pageShift = 7}, Options{.tinyCutoff = 0}, Options{.tree = SiblingTree::kRightChain},
        Options{.tree = SiblingTree::kLeftChain}, Options{.reverseChains = true}})
    EXPECT_EQ(kindOf(wordAmong(300, options).bytes()), "word97");
}

TEST(DetectCompound, FindsTheTableOfPagesBehindTheHeadersList) {
  const uint32_t numbersOnPage = 32, inHeader = 109, onFirstPageOfList = 31;
  const CompoundFile file = wordAmong(4, {.pageShift = 7}).stream(u"Large", Bytes(19'000'000)).build();
  ASSERT_GT(file.entryOffset(0), file.pageOffset((inHeader + onFirstPageOfList) * numbersOnPage));
  EXPECT_EQ(kindOf(file), "word97");
}

TEST(DetectCompound, TellsNoMoreOfABrokenDirectory) {
  const auto broken = [](const auto& damage) {
    CompoundFile file = wordAmong(20).build();
    damage(file);
    return kindOf(file);
  };
  EXPECT_EQ(
      broken([](CompoundFile& file) { file.setHeader(support::kHeaderFirstDirectoryPage, 0x00FFFFFFu); }),
      "compound");
  EXPECT_EQ(broken([](CompoundFile& file) { file.setEntry(0, support::kEntryChild, 0x7FFFFFFF); }),
            "compound");
  EXPECT_EQ(broken([](CompoundFile& file) { file.setEntry(0, support::kEntryChild, 0); }), "compound");
  EXPECT_EQ(broken([](CompoundFile& file) { file.setHeader(support::kHeaderPageShift, uint16_t{2}); }),
            "compound");
  EXPECT_EQ(broken([](CompoundFile& file) { file.setHeader(support::kHeaderPageShift, uint16_t{40}); }),
            "compound");
}

TEST(DetectCompound, FollowsNoLoopForEver) {
  CompoundFile file = wordAmong(20).build();
  const uint32_t directory = 1;  // behind the one page of the table
  ASSERT_EQ(file.entryOffset(0), file.pageOffset(directory));
  file.setFat(directory, directory);
  EXPECT_EQ(kindOf(file), "compound");

  CompoundFile siblings = wordAmong(20).build();
  for (uint32_t i = 1; i < siblings.entryCount(); ++i) {
    siblings.setEntry(i, support::kEntryLeft, 1);
    siblings.setEntry(i, support::kEntryRight, i + 1);
  }
  siblings.setEntry(0, support::kEntryChild, 1);
  EXPECT_EQ(kindOf(siblings), "word97");
}

TEST(DetectCompound, ALoopBehindTheTinyPagesEnds) {
  CompoundFile file = wordAmong(0).build();
  file.setEntry(u"", support::kEntryStartPage, 1u);
  file.setFat(1, 1);
  file.setEntry(u"WordDocument", support::kEntryStartPage, 0x0FFFFFFFu);
  EXPECT_EQ(kindOf(file), "word97");
}

TEST(DetectCompound, WithoutItsFibATableStreamTells) {
  CompoundFile with = wordAmong(0).build();
  EXPECT_EQ(kindOf(with.setEntry(u"WordDocument", support::kEntryStartPage, 0x00FFFFFFu)), "word97");
  CompoundFile without = CompoundFileWriter().stream(u"WordDocument", Bytes(10)).build();
  EXPECT_EQ(kindOf(without), "compound");
}

// Archives.

TEST(DetectZip, ADirectoryThatLiesIsFoundBeforeItsEnd) {
  const ZipWriter zip = ZipWriter().entry("[Content_Types].xml").entry("word/document.xml");
  for (const int64_t offset : {int64_t{0}, int64_t{5}, int64_t{0x7FFFFFFF}, int64_t{0xFFFFFFFF}})
    EXPECT_EQ(kindOf(zip.bytes(offset)), "docx") << offset;
  EXPECT_EQ(kindOf(zip.bytes(-1, "a comment")), "docx");
}

TEST(DetectZip, WithoutADirectoryTheEntriesTell) {
  Bytes file = ZipWriter().entry("[Content_Types].xml").entry("xl/workbook.xml").bytes();
  const size_t end = file.size() - 22;
  support::patchInteger(file, end + 12, 0xFFFFFFFFu);
  support::patchInteger(file, end + 16, 0xFFFFFFFFu);
  EXPECT_EQ(kindOf(file), "xlsx");
}

TEST(DetectZip, AnEntryThatLiesAboutItsSizeIsSteppedOver) {
  for (const uint32_t size : {0u, 3u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
    Bytes file = ZipWriter().entry("[Content_Types].xml").entry("ppt/presentation.xml").entries();
    support::patchInteger(file, 18, size);
    EXPECT_EQ(kindOf(file), "pptx") << size;
  }
}

TEST(DetectZip, AnOpenDocumentTellsItsTypeFirstAndPlainly) {
  const std::string_view type = "application/vnd.oasis.opendocument.text";
  EXPECT_EQ(kindOf(ZipWriter().entry("a").entry("mimetype", type).bytes()), "zip");
  EXPECT_EQ(kindOf(ZipWriter().entry("mimetype", "application/epub+zip").bytes()), "zip");
  Bytes packed = ZipWriter().entry("mimetype", type).bytes();
  support::patchInteger(packed, 8, uint16_t{8});
  EXPECT_EQ(kindOf(packed), "zip");
}
