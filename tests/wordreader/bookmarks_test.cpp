#include "wordreader/bookmarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "memory_storage.h"

using mso_word::SUBDOC_FOOTNOTE;
using mso_word::SUBDOC_MAIN;
using support::Bytes;
using support::ByteWriter;
using support::WordDocument;
using testing::ElementsAre;
using testing::Pair;

namespace {

std::u16string nameOf(const KDRPlcfBkf& bookmarks, int i) {
  return reinterpret_cast<const char16_t*>(bookmarks.Item(i).name.text);
}

/// A FIB with these lengths of sub-documents.
struct Fib : KDRFib {
  explicit Fib(const SubDocLengths& lengths) { SetSubDocLengths(lengths); }
};

/// Starts with names "a", "b" and so on at these positions (one more than starts).
struct Starts {
  explicit Starts(const std::vector<uint32_t>& positions) {
    WordDocument source;
    source.paragraph("x");
    std::vector<Bytes> records;
    std::vector<std::u16string> names;
    for (size_t i = 0; i + 1 < positions.size(); ++i) {
      records.push_back(ByteWriter().u16(i).u16(0).take());
      names.push_back(std::u16string(1, static_cast<char16_t>(u'a' + i)));
    }
    source.table(mso_word::FCLCB_BOOKMARK_STARTS, support::positionTable(positions, records));
    source.table(mso_word::FCLCB_BOOKMARK_NAMES, support::stringTable(names));
    opened = std::make_unique<OpenedDocument>(source);
    status = starts.Read(opened->document);
  }
  std::unique_ptr<OpenedDocument> opened;
  KBookmarkStarts starts;
  Status status;
};

KDRPlcfBkf viewOf(const KBookmarkStarts& starts, mso_word::SUBDOC_TYPE type,
                  const KDRFib::SubDocLengths& lengths) {
  KDRPlcfBkf view;
  view.Init(Fib(lengths), type, &starts);
  return view;
}

}  // namespace

TEST(BookmarkStarts, JoinPositionsAndNames) {
  const Starts read({3, 5, 9});
  EXPECT_EQ(read.status, Status::kOk);
  ASSERT_EQ(read.starts.Count(), 2u);
  const auto item = read.starts.Item(1);
  EXPECT_EQ(item.range.start, 5u);
  EXPECT_EQ(item.range.end, 9u);
  EXPECT_EQ(item.bkf.ibkl + 0, 1);
  EXPECT_EQ(item.name.text[0], u'b');
}

TEST(BookmarkStarts, AreNoneIfNamesAndPositionsDifferInNumber) {
  WordDocument source;
  source.paragraph().bookmarkStart("a").run("x").bookmarkEnd("a");
  source.table(mso_word::FCLCB_BOOKMARK_NAMES, support::stringTable({u"a", u"b"}));
  const OpenedDocument opened(source);
  KBookmarkStarts starts;
  EXPECT_EQ(starts.Read(opened.document), Status::kFailure);
  EXPECT_EQ(starts.Count(), 0u);
  EXPECT_EQ(opened.document.GetBookMarks().GetStarts(SUBDOC_MAIN).Count(), 0u);
  EXPECT_TRUE(opened.document.GetBookMarks().GetCPStarts(SUBDOC_MAIN).empty());
}

TEST(BookmarkStarts, ThrowForAnIndexWithoutAName) {
  const Starts read({3, 5, 9});
  EXPECT_THROW(read.starts.Item(2), std::out_of_range);
  EXPECT_THROW(read.starts.Item(65535), std::out_of_range);
}

TEST(BookmarkView, TakesThoseOfItsSubDocument) {
  const Starts read({3, 5, 12, 14, 20, 99});
  const KDRPlcfBkf view = viewOf(read.starts, SUBDOC_FOOTNOTE, {10, 8});
  ASSERT_EQ(view.Count(), 2u);
  EXPECT_EQ(view.Item(0).range.start, 2u);
  EXPECT_EQ(view.Item(1).range.start, 4u);
  EXPECT_EQ(view.Item(1).range.end, 10u);
  EXPECT_EQ(view.Item(1).bkf.ibkl + 0, 1);
  EXPECT_EQ(nameOf(view, 0), u"c");
}

TEST(BookmarkView, OfAnEmptySubDocumentFindsNothing) {
  const Starts read({3, 10, 99});
  EXPECT_EQ(viewOf(read.starts, SUBDOC_FOOTNOTE, {10, 0}).Count(), 0u);
}

TEST(BookmarkView, StopsAtTheFirstBehindItsSubDocument) {
  const Starts read({3, 20, 5, 99});
  EXPECT_EQ(viewOf(read.starts, SUBDOC_MAIN, {10}).Count(), 1u);
}

TEST(BookmarkView, IsEmptyOutsideItsEntries) {
  const Starts read({3, 20, 99});
  const KDRPlcfBkf view = viewOf(read.starts, SUBDOC_MAIN, {10});
  EXPECT_EQ(nameOf(view, 1), u"");
  EXPECT_EQ(nameOf(view, -1), u"");
  EXPECT_EQ(nameOf(KDRPlcfBkf(), 0), u"");
}

TEST(BookmarkEnds, ArePairedByTheirPlaceInTheTable) {
  const Starts read({2, 12, 13, 99});  // whose records name the ends 0, 1, 2
  const Bytes endBytes = support::positionTable({4, 18, 15, 99});
  KBookmarkEnds ends;
  ends.ReadRecord(ByteView(endBytes.data(), endBytes.size()));
  const KDRPlcfBkf starts = viewOf(read.starts, SUBDOC_FOOTNOTE, {10, 10});
  KDRPlcfBkl view;
  view.Init(Fib({10, 10}), SUBDOC_FOOTNOTE, &starts, &ends);
  EXPECT_EQ(view.Item(0), 8u);
  EXPECT_EQ(view.Item(1), 5u);
}

TEST(Bookmarks, AreFoundByPosition) {
  WordDocument source;
  source.paragraph("ab").bookmarkStart("one").run("cd").bookmarkEnd("one").run("ef");
  const OpenedDocument opened(source);
  const KDRBookMarks& bookmarks = opened.document.GetBookMarks();
  ASSERT_EQ(bookmarks.GetStarts(SUBDOC_MAIN).Count(), 1u);
  EXPECT_EQ(nameOf(bookmarks.GetStarts(SUBDOC_MAIN), 0), u"one");
  EXPECT_THAT(bookmarks.GetCPStarts(SUBDOC_MAIN), ElementsAre(Pair(2, 0)));
}

TEST(Bookmarks, InAFootnoteHavePositionsInItsSubDocument) {
  WordDocument source;
  source.paragraph("main text").footnote([](support::Story& note) {
    note.paragraph("xyz").bookmarkStart("n").run("w").bookmarkEnd("n");
  });
  const OpenedDocument opened(source);
  const KDRBookMarks& bookmarks = opened.document.GetBookMarks();
  EXPECT_EQ(bookmarks.GetStarts(SUBDOC_MAIN).Count(), 0u);
  EXPECT_THAT(bookmarks.GetCPStarts(SUBDOC_FOOTNOTE), ElementsAre(Pair(4, 0)));  // behind the reference mark
  EXPECT_EQ(bookmarks.GetStarts(SUBDOC_FOOTNOTE).Item(0).range.start, 4u);
}

TEST(Bookmarks, AtOnePositionStandInOrderOfEntry) {
  WordDocument source;
  source.paragraph("x")
      .bookmarkStart("first")
      .bookmarkStart("second")
      .bookmarkStart("third")
      .run("y")
      .bookmarkEnd("first")
      .bookmarkEnd("second")
      .bookmarkEnd("third");
  const OpenedDocument opened(source);
  EXPECT_THAT(opened.document.GetBookMarks().GetCPStarts(SUBDOC_MAIN),
              ElementsAre(Pair(1, 0), Pair(1, 1), Pair(1, 2)));
}

TEST(Bookmarks, StandByPositionAlsoIfTheirTableDescends) {
  WordDocument source;
  source.paragraph("0123456789");
  const Bytes record(4);
  source.table(mso_word::FCLCB_BOOKMARK_STARTS,
               support::positionTable({5, 2, 5, 2, 11}, {record, record, record, record}));
  source.table(mso_word::FCLCB_BOOKMARK_ENDS, support::positionTable({6, 6, 6, 6, 11}));
  source.table(mso_word::FCLCB_BOOKMARK_NAMES, support::stringTable({u"a", u"b", u"c", u"d"}));
  const OpenedDocument opened(source);
  EXPECT_THAT(opened.document.GetBookMarks().GetCPStarts(SUBDOC_MAIN),
              ElementsAre(Pair(2, 1), Pair(2, 3), Pair(5, 0), Pair(5, 2)));
}

TEST(Bookmarks, AreThereAlsoWithoutEnds) {
  WordDocument source;
  source.paragraph().bookmarkStart("a").run("x").bookmarkEnd("a");
  source.dropTable(mso_word::FCLCB_BOOKMARK_ENDS);
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetBookMarks().GetStarts(SUBDOC_MAIN).Count(), 1u);
}

TEST(Bookmarks, AreNoneInADocumentWithout) {
  WordDocument source;
  source.paragraph("x");
  const OpenedDocument opened(source);
  for (uint32_t type = 0; type < mso_word::kSubDocCount; ++type) {
    EXPECT_EQ(opened.document.GetBookMarks().GetStarts(static_cast<mso_word::SUBDOC_TYPE>(type)).Count(), 0u);
  }
}
