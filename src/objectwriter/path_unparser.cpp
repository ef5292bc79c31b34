#include "objectwriter/path_unparser.h"

#include "base/number_text.h"

namespace ObjectWriter {
namespace {

/// As published, rows of a key that came before included: they have no effect.
constexpr ItemPair<unsigned short, const char*> kSegmentCmds[] = {
    {0x40, "M"},  {0x40, "T"},  {0x00, "L"},  {0x00, "R"},  {0x20, "C"},  {0x20, "V"},
    {0x60, "X"},  {0x80, "E"},  {0x60, "Z"},  {0xAA, "nf"}, {0xAB, "ns"}, {0xA1, "ae"},
    {0xA2, "al"}, {0xA3, "at"}, {0xA4, "ar"}, {0xA5, "wa"}, {0xA6, "wr"}, {0xA7, "qx"},
    {0xA8, "qy"}, {0xA9, "qb"}, {0xAC, "ha"}, {0xAD, "hb"}, {0xAE, "hc"}, {0xAF, "hd"},
    {0xB0, "he"}, {0xB1, "hf"}, {0xB2, "hg"}, {0xB3, "hh"}, {0xB4, "hi"},
};
constexpr ItemPair<int, int> kCmdParameterCounts[] = {
    {0x40, 2}, {0x00, 2}, {0xA7, 2}, {0xA8, 2}, {0xA9, 2}, {0x20, 6},
    {0xA1, 6}, {0xA2, 6}, {0xA3, 8}, {0xA4, 8}, {0xA5, 8}, {0xA6, 8},
};
constexpr PathEnumMap<unsigned short, const char*> kSegmentCmdMap(kSegmentCmds, "hb");
constexpr PathEnumMap<int, int> kCmdParameterCountMap(kCmdParameterCounts, 0);

void appendPoint(std::string& path, const tagPOINT& point) {
  path += NumberText().appendInt(point.x).append(',').appendInt(point.y);
}

}  // namespace

const PathEnumMap<unsigned short, const char*>& GetSegmentCmd() {
  return kSegmentCmdMap;
}

const PathEnumMap<int, int>& GetCmdParameterCount() {
  return kCmdParameterCountMap;
}

Status WmlPathUnparser::UnParse(size_t pointCount, const tagPOINT* points, size_t segmentCount,
                                const uint16_t* segments) {
  if (pointCount == 0 || segmentCount == 0) return Status::kFailure;
  path_.clear();
  const tagPOINT* const pointsEnd = points + pointCount;
  for (const uint16_t* segment = segments; segment != segments + segmentCount; ++segment) {
    const int command = *segment >> 8;
    int numbers = 0;
    if (!GetCmdParameterCount().Find(numbers, command)) continue;
    const char* letters = nullptr;
    GetSegmentCmd().Find(letters, static_cast<unsigned short>(command));
    int repeats = *segment & 0xFF;
    if (repeats == 0) repeats = 1;
    for (; repeats > 0 && points != pointsEnd; --repeats) {
      path_ += letters;
      appendPoint(path_, *points++);
      for (int left = numbers - 2; left > 0 && points != pointsEnd; left -= 2) {
        path_ += ',';
        appendPoint(path_, *points++);
      }
    }
  }
  path_ += 'e';
  return Status::kOk;
}

}  // namespace ObjectWriter
