#include "base/file_time.h"

#include <gtest/gtest.h>

#include "support/property_sets.h"
#include "support/sprms.h"

using pagerex::iso8601;
using pagerex::iso8601OfDttm;

TEST(FileTime, IsWrittenAsADate) {
  EXPECT_EQ(iso8601(support::fileTime(2004, 3, 1, 12)), "2004-03-01T12:00:00Z");
  EXPECT_EQ(iso8601(support::fileTime(1999, 12, 31, 23, 59, 59) + 9'999'999), "1999-12-31T23:59:59Z");
  EXPECT_EQ(iso8601(1), "1601-01-01T00:00:00Z");
}

TEST(FileTime, KnowsLeapYears) {
  EXPECT_EQ(iso8601(support::fileTime(2000, 2, 29)), "2000-02-29T00:00:00Z");
  EXPECT_EQ(iso8601(support::fileTime(1900, 3, 1) - 1), "1900-02-28T23:59:59Z");
  EXPECT_EQ(iso8601(support::fileTime(2400, 2, 29)), "2400-02-29T00:00:00Z");
}

TEST(FileTime, IsEmptyForNoneAndOutOfRange) {
  EXPECT_EQ(iso8601(0), "");
  EXPECT_EQ(iso8601(support::fileTime(9999, 12, 31)), "9999-12-31T00:00:00Z");
  EXPECT_EQ(iso8601(support::fileTime(10000, 1, 1)), "");
  EXPECT_EQ(iso8601(UINT64_MAX), "");
}

TEST(FileTime, DttmIsWrittenWithoutAZone) {
  EXPECT_EQ(iso8601OfDttm(support::dttm(2004, 3, 1, 12, 5)), "2004-03-01T12:05");
  EXPECT_EQ(iso8601OfDttm(support::dttm(2004, 2, 29, 0, 0)), "2004-02-29T00:00");
}

TEST(FileTime, DttmThatIsNoDateIsEmpty) {
  EXPECT_EQ(iso8601OfDttm(0), "");
  EXPECT_EQ(iso8601OfDttm(support::dttm(2003, 2, 29, 0, 0)), "");
  EXPECT_EQ(iso8601OfDttm(support::dttm(2003, 13, 1, 0, 0)), "");
  EXPECT_EQ(iso8601OfDttm(support::dttm(2003, 1, 1, 24, 0)), "");
  EXPECT_EQ(iso8601OfDttm(support::dttm(2003, 1, 1, 0, 60)), "");
  EXPECT_EQ(iso8601OfDttm(0xFFFFFFFF), "");
}
