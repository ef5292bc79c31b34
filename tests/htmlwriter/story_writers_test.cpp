#include <gtest/gtest.h>

#include "htmlwriter/chp_writer.h"
#include "htmlwriter/chp_writer_paged.h"
#include "htmlwriter/note_writer.h"
#include "htmlwriter/writer_factory.h"
#include "htmlwriter/writer_interfaces.h"
#include "support/opened_document.h"
#include "table_test_support.h"

namespace pagerex {
namespace {

using support::WordDocument;

/// The writers of a view over one story of a document.
class WrittenStory {
 public:
  explicit WrittenStory(const WordDocument& document, VIEW view = VIEW_NORMAL,
                        mso_word::SUBDOC_TYPE type = mso_word::SUBDOC_MAIN)
      : opened_(document) {
    conversion_.document = &*opened_;
    conversion_.archive = archive.get();
    env.view = view;
    env.pageSize = 100;
    EXPECT_EQ(KWriterFactory::CreateWriterByView(env, type), Status::kOk);
  }
  ~WrittenStory() { KWriterFactory::ReleaseWriterByView(env); }

  Status WriteRange(unsigned int start, unsigned int end) {
    return env.writers->textStream->Write(start, end);
  }
  /// Writes the first run as far as it lies in these positions.
  Status WriteRun(uint32_t start, uint32_t end) {
    env.pap.papStart = env.streamStart = start;
    env.pap.papEnd = env.streamEnd = end;
    return env.writers->chp->Write(0);
  }

  RecordingArchive archive;

 private:
  OutputFiles files_;
  KHtmlConversionEnv conversion_{files_};

 public:
  KEnv env{conversion_};

 private:
  support::OpenedDocument opened_;
};

WordDocument twoParagraphs() {
  WordDocument document;
  document.paragraph("a");
  document.paragraph("b");
  return document;
}

const std::string kSpan = "<span style=\"line-height:10.5pt;\">";

std::string paragraph(const std::string& text) {
  return "<p class=\"std0\" style=\"margin-top:0pt;\">" + kSpan + text + "</span></p>\r\n";
}

TEST(TextStream, EndsWithTheStatusOfTheLastParagraphWhereTheTableEnds) {
  WrittenStory story(twoParagraphs());
  EXPECT_EQ(story.WriteRange(0, 100), Status::kOk);
  EXPECT_EQ(story.archive.text(), paragraph("a") + paragraph("b"));
}

TEST(TextStream, EndsAtAParagraphBehindItsRange) {
  WrittenStory story(twoParagraphs());
  EXPECT_EQ(story.WriteRange(0, 2), Status::kOk);
  EXPECT_EQ(story.archive.text(), paragraph("a"));
}

TEST(TextStream, OfAnEmptyRangeSucceedsAndWritesNothing) {
  WrittenStory story(twoParagraphs());
  EXPECT_EQ(story.WriteRange(2, 2), Status::kOk);
  EXPECT_EQ(story.archive.text(), "");
}

TEST(TextStream, WithoutParagraphsFailsAndWritesNothing) {
  WrittenStory story(twoParagraphs(), VIEW_NORMAL, mso_word::SUBDOC_FOOTNOTE);
  EXPECT_EQ(story.WriteRange(0, 5), Status::kFailure);
  EXPECT_EQ(story.archive.text(), "");
}

TEST(TextStream, BeginsWithTheFirstParagraphThatStartsInItsRange) {
  WrittenStory story(twoParagraphs());
  EXPECT_EQ(story.WriteRange(1, 4), Status::kOk);
  EXPECT_EQ(story.archive.text(), paragraph("b"));
}

TEST(TextStream, RefusesAStartBehindItsEnd) {
  EXPECT_EQ(WrittenStory(twoParagraphs()).WriteRange(3, 2), Status::kInvalidArgument);
}

TEST(Run, OfNoLengthHasItsSpanAndNothingInside) {
  WrittenStory normal(twoParagraphs());
  EXPECT_EQ(normal.WriteRun(4, 4), Status::kOk);
  EXPECT_EQ(normal.archive.text(), kSpan + "</span>");
  for (const VIEW paged : {VIEW_PHONE, VIEW_MULPAGES}) {
    WrittenStory story(twoParagraphs(), paged);
    EXPECT_EQ(story.WriteRun(4, 4), Status::kNothing) << "the paged views tell that it is empty";
    EXPECT_EQ(story.archive.text(), kSpan + "</span>");
  }
}

TEST(Run, OutsideItsParagraphWritesNothing) {
  WrittenStory story(twoParagraphs());
  EXPECT_EQ(story.WriteRun(5, 6), Status::kNothing);
  EXPECT_EQ(story.archive.text(), "");
}

TEST(Run, FailsToWriteAPartThatLiesOutsideOfIt) {
  KHtmlChpWriterNormal normal;
  KHtmlChpWriterPhone phone;
  KHtmlChpWriterPreview preview;
  for (KChpBase* writer : std::initializer_list<KChpBase*>{&normal, &phone, &preview}) {
    EXPECT_EQ(writer->WriteChpContent(0, 1), Status::kFailure);
    EXPECT_EQ(writer->WriteChpContent(7, 7), Status::kNothing);
  }
}

TEST(AnnotationContent, BehindTheLastReferenceIsRefused) {
  WordDocument document;
  document.paragraph("a").annotation("note");
  WrittenStory story(document);
  EXPECT_EQ(KHtmlAnnotationWriter::WriteContent(1, &story.env), Status::kInvalidArgument);
  EXPECT_EQ(KHtmlAnnotationWriter::WriteContent(0, nullptr), Status::kInvalidArgument);
  EXPECT_EQ(story.archive.text(), "");
}

}  // namespace
}  // namespace pagerex
