#include "wordreader/sub_doc_iterator.h"

#include <gtest/gtest.h>

namespace {

using Lengths = KDRFib::SubDocLengths;

_SubDocIterator iteratorOver(const Lengths& lengths) {
  _SubDocIterator iterator;
  iterator.Init(lengths);
  return iterator;
}

}  // namespace

TEST(SubDocIterator, StartsAtAnEmptyMainText) {
  const Lengths lengths = {0, 5};
  const _SubDocIterator iterator = iteratorOver(lengths);
  EXPECT_EQ(iterator.GetType(), mso_word::SUBDOC_MAIN);
  EXPECT_EQ(iterator.GetRemain(), 0u);
}

TEST(SubDocIterator, SkipsEmptySubDocuments) {
  const Lengths lengths = {10, 0, 0, 0, 4, 0, 2, 0};
  _SubDocIterator iterator = iteratorOver(lengths);
  ++iterator;
  EXPECT_EQ(iterator.GetType(), mso_word::SUBDOC_ANNOTATION);
  EXPECT_EQ(iterator.GetTotal(), 10u);
  EXPECT_EQ(iterator.GetSubDocLen(), 4u);
  EXPECT_EQ(iterator.GetRemain(), 4u);
  ++iterator;
  EXPECT_EQ(iterator.GetType(), mso_word::SUBDOC_TEXTBOX);
  EXPECT_EQ(iterator.GetTotal(), 14u);
}

TEST(SubDocIterator, IsFinishedBehindTheLastFilledOne) {
  const Lengths lengths = {10};
  _SubDocIterator iterator = iteratorOver(lengths);
  ++iterator;
  EXPECT_TRUE(iterator.Finished());
  EXPECT_EQ(iterator.GetRemain(), 0u);
  EXPECT_EQ(iterator.GetSubDocLen(), 0u);
}

TEST(SubDocIterator, CountsCharactersOff) {
  const Lengths lengths = {10, 3};
  _SubDocIterator iterator = iteratorOver(lengths);
  iterator.ReduceHandCount(4);
  EXPECT_EQ(iterator.GetRemain(), 6u);
  EXPECT_EQ(iterator.GetSubDocLen(), 10u);
  iterator.ReduceHandCount(6);
  EXPECT_EQ(iterator.GetType(), mso_word::SUBDOC_FOOTNOTE);
  EXPECT_EQ(iterator.GetRemain(), 3u);
}

TEST(SubDocIterator, LeavesAnEmptyMainTextByCountingOffNothing) {
  const Lengths lengths = {0, 0, 7};
  _SubDocIterator iterator = iteratorOver(lengths);
  iterator.ReduceHandCount(0);
  EXPECT_EQ(iterator.GetType(), mso_word::SUBDOC_HEADER);
  EXPECT_EQ(iterator.GetTotal(), 0u);
}
