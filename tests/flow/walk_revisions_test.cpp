#include <gtest/gtest.h>

#include "flow/walked_document.h"
#include "support/named_sprms.h"

using namespace flow_test;
using namespace support;
using pagerex::RevisionView;

namespace {

const uint32_t kWhen = dttm(2004, 3, 1, 12, 30);

WordDocument changedDocument() {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann"), bob = doc.author("Bob");
  doc.paragraph("a").inserted("in", ann, kWhen).deleted("out", bob).run("b");
  return doc;
}

std::u16string charactersOf(const WordDocument& doc, RevisionView view) {
  return Walked(doc, 0, {.revisions = view}).characters();
}

}  // namespace

TEST(WalkRevisions, TheFinalTextHasWhatWasInserted) {
  EXPECT_EQ(charactersOf(changedDocument(), RevisionView::kFinal), u"ainb\n");
}

TEST(WalkRevisions, TheOriginalTextHasWhatWasDeleted) {
  EXPECT_EQ(charactersOf(changedDocument(), RevisionView::kOriginal), u"aoutb\n");
}

TEST(WalkRevisions, AllOfTheTextTellsWhoAndWhen) {
  EXPECT_EQ(transcriptOf(changedDocument(), 0, {.revisions = RevisionView::kAll}), R"(
paragraph
  text "a"
  inserted author="Ann" 2004-03-01T12:30
    text "in"
  deleted author="Bob"
    text "out"
  text "b"
)");
}

TEST(WalkRevisions, WhatWasInsertedAndDeletedIsInNeitherText) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  doc.paragraph("a").run("x", insertedSprms(ann).add(deletedSprms(ann))).run("b");
  EXPECT_EQ(charactersOf(doc, RevisionView::kFinal), u"ab\n");
  EXPECT_EQ(charactersOf(doc, RevisionView::kOriginal), u"ab\n");
  EXPECT_EQ(transcriptOf(doc, 0, {.revisions = RevisionView::kAll}), R"(
paragraph
  text "a"
  inserted author="Ann"
    deleted author="Ann"
      text "x"
  text "b"
)");
}

TEST(WalkRevisions, AnotherLookDoesNotCutThem) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  doc.paragraph().inserted("plain", ann).inserted("bold", ann, 0, {bold()});
  EXPECT_EQ(transcriptOf(doc, kWithFormats, {.revisions = RevisionView::kAll}), R"(
paragraph
  inserted author="Ann"
    text "plain"
    text "bold" bold
)");
}

TEST(WalkRevisions, EndWithTheirParagraph) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  doc.paragraph().inserted("one", ann);
  doc.paragraph().inserted("two", ann);
  EXPECT_EQ(transcriptOf(doc, 0, {.revisions = RevisionView::kAll}), R"(
paragraph
  inserted author="Ann"
    text "one"
paragraph
  inserted author="Ann"
    text "two"
)");
}

TEST(WalkRevisions, StandInLinks) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  Paragraph& paragraph = doc.paragraph().fieldBegin(88).run(" HYPERLINK \\l \"a\" ").fieldSeparator();
  paragraph.run("x").inserted("y", ann).fieldEnd().run("z");
  EXPECT_EQ(transcriptOf(doc, 0, {.revisions = RevisionView::kAll}), R"(
paragraph
  link #a
    text "x"
    inserted author="Ann"
      text "y"
  text "z"
)");
}

TEST(WalkRevisions, ADeletedMarkJoinsItsParagraphWithTheNext) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  doc.paragraph("one ").mark(deletedSprms(ann));
  doc.paragraph("two");
  EXPECT_EQ(charactersOf(doc, RevisionView::kFinal), u"one two\n");
  EXPECT_EQ(charactersOf(doc, RevisionView::kOriginal), u"one \ntwo\n");
}

TEST(WalkRevisions, AnInsertedMarkIsNoneOfTheOriginal) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  doc.paragraph("one ").mark(insertedSprms(ann));
  doc.paragraph("two");
  EXPECT_EQ(charactersOf(doc, RevisionView::kOriginal), u"one two\n");
  EXPECT_EQ(charactersOf(doc, RevisionView::kFinal), u"one \ntwo\n");
}

TEST(WalkRevisions, DeletedRowsAreNotInTheFinalText) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  const Sprms shape = {defTableSprm({0, 1000})};
  doc.row({"a"}, shape);
  doc.cell().run("b", deletedSprms(ann));
  doc.rowEnd(shape).mark(deletedSprms(ann));
  doc.paragraph("end");
  EXPECT_EQ(charactersOf(doc, RevisionView::kFinal), u"a\nend\n");
  EXPECT_EQ(charactersOf(doc, RevisionView::kOriginal), u"a\nb\nend\n");
  EXPECT_EQ(transcriptOf(doc, 0, {.revisions = RevisionView::kAll}), R"(
table
  row
    cell
      paragraph
        text "a"
  row deleted
    cell
      paragraph
        deleted author="Ann"
          text "b"
paragraph
  text "end"
)");
}

TEST(WalkRevisions, CommentsAndNotesOfDeletedTextAreLeftOut) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  doc.paragraph("a").footnote("gone", {.sprms = deletedSprms(ann)}).run("b");
  EXPECT_EQ(charactersOf(doc, RevisionView::kFinal), u"ab\n");
  EXPECT_EQ(charactersOf(doc, RevisionView::kOriginal), u"ab\ngone\n");
}
