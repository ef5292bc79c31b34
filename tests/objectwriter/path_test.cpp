#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "objectwriter/path_unparser.h"

namespace {

using ObjectWriter::WmlPathUnparser;

/// Points 1,2 3,4 5,6 and so on.
std::vector<tagPOINT> pointsOf(int count) {
  std::vector<tagPOINT> points;
  for (int i = 0; i < count; ++i) points.push_back({2 * i + 1, 2 * i + 2});
  return points;
}

/// The path of these segments over so many points; "-" when there is none.
std::string pathOf(const std::vector<uint16_t>& segments, const std::vector<tagPOINT>& points) {
  WmlPathUnparser path;
  const Status status = path.UnParse(points.size(), points.data(), segments.size(), segments.data());
  return status == Status::kOk ? path.GetPath() : "-";
}
std::string pathOf(const std::vector<uint16_t>& segments, int points) {
  return pathOf(segments, pointsOf(points));
}

TEST(Path, MoveLineCloseAndEnd) {
  const std::vector<tagPOINT> points = {{0, 0}, {10, 20}};
  EXPECT_EQ(pathOf({0x4000, 0x0001, 0x6001, 0x8000}, points), "M0,0L10,20e");
}

TEST(Path, LineThatIsRepeatedTakesAPointEachTime) {
  EXPECT_EQ(pathOf({0x0003}, 3), "L1,2L3,4L5,6e");
}

TEST(Path, CurveTakesThreePoints) {
  EXPECT_EQ(pathOf({0x2001}, 3), "C1,2,3,4,5,6e");
  EXPECT_EQ(pathOf({0x2002}, 6), "C1,2,3,4,5,6C7,8,9,10,11,12e");
}

TEST(Path, RepeatCountOfZeroIsOnce) {
  EXPECT_EQ(pathOf({0x0000}, 3), "L1,2e");
}

TEST(Path, CloseAddsNoLetter) {
  EXPECT_EQ(pathOf({0x4000, 0x6001}, 1), "M1,2e");
  EXPECT_EQ(pathOf({0x6001}, 1), "e");
}

TEST(Path, CommandWithoutPointsEnoughTakesWhatIsLeft) {
  EXPECT_EQ(pathOf({0x2001, 0x0001}, 2), "C1,2,3,4e");
  EXPECT_EQ(pathOf({0x20FF}, 4), "C1,2,3,4,5,6C7,8e");
}

TEST(Path, PointsThatAreLeftAreDropped) {
  EXPECT_EQ(pathOf({0x4001, 0x8000}, 3), "M1,2e");
}

TEST(Path, NeedsPointsAndSegments) {
  EXPECT_EQ(pathOf({}, 2), "-");
  EXPECT_EQ(pathOf({0x4000}, 0), "-");
}

TEST(Path, NumbersMayBeNegative) {
  EXPECT_EQ(pathOf({0x4000}, std::vector<tagPOINT>{{-2147483647 - 1, -5}}), "M-2147483648,-5e");
}

TEST(Path, IsMadeAnewEachTime) {
  WmlPathUnparser path;
  const std::vector<tagPOINT> points = pointsOf(1);
  const uint16_t segment = 0x4001;
  path.UnParse(1, points.data(), 1, &segment);
  path.UnParse(1, points.data(), 1, &segment);
  EXPECT_EQ(path.GetPath(), "M1,2e");
}

/// What is known of a command, by the high byte of a segment.
struct Command {
  unsigned short key;
  const char* letters;
  int numbers;  ///< 0: never written
};
constexpr Command kCommands[] = {
    {0x40, "M", 2},  {0x00, "L", 2},  {0x20, "C", 6},  {0x60, "X", 0},  {0x80, "E", 0},
    {0xAA, "nf", 0}, {0xAB, "ns", 0}, {0xA1, "ae", 6}, {0xA2, "al", 6}, {0xA3, "at", 8},
    {0xA4, "ar", 8}, {0xA5, "wa", 8}, {0xA6, "wr", 8}, {0xA7, "qx", 2}, {0xA8, "qy", 2},
    {0xA9, "qb", 2}, {0xAC, "ha", 0}, {0xAD, "hb", 0}, {0xAE, "hc", 0}, {0xAF, "hd", 0},
    {0xB0, "he", 0}, {0xB1, "hf", 0}, {0xB2, "hg", 0}, {0xB3, "hh", 0}, {0xB4, "hi", 0},
};

const Command* knownCommand(int key) {
  for (const Command& each : kCommands) {
    if (each.key == key) return &each;
  }
  return nullptr;
}

TEST(PathCommands, LettersOfEachKey) {
  for (int key = 0; key <= 0x1FF; ++key) {
    const Command* const known = knownCommand(key);
    const char* letters = nullptr;
    EXPECT_EQ(ObjectWriter::GetSegmentCmd().Find(letters, static_cast<unsigned short>(key)), known != nullptr)
        << key;
    EXPECT_STREQ(letters, known ? known->letters : "hb") << key;
  }
}

TEST(PathCommands, NumbersOfEachKey) {
  for (int key = -1; key <= 0x1FF; ++key) {
    const Command* const known = knownCommand(key);
    const int expected = known ? known->numbers : 0;
    int numbers = -1;
    EXPECT_EQ(ObjectWriter::GetCmdParameterCount().Find(numbers, key), expected != 0) << key;
    EXPECT_EQ(numbers, expected) << key;
  }
}

TEST(PathCommands, OnlyThoseThatTakeNumbersAreWritten) {
  const std::map<int, std::string> numbers = {{2, "1,2"}, {6, "1,2,3,4,5,6"}, {8, "1,2,3,4,5,6,7,8"}};
  for (int key = 0; key <= 0xFF; ++key) {
    const Command* const known = knownCommand(key);
    const bool isWritten = known && known->numbers > 0;
    const std::string expected = isWritten ? known->letters + numbers.at(known->numbers) + "e" : "e";
    EXPECT_EQ(pathOf({static_cast<uint16_t>(key << 8 | 1)}, 9), expected) << key;
  }
}

}  // namespace
