#pragma once

#include <utility>
#include <vector>

#include "support/bytes.h"

namespace support {

/// Makes a TIFF of one directory, in either order of bytes.
class TiffMaker {
 public:
  explicit TiffMaker(bool isBig = false) : isBig_(isBig) {}

  TiffMaker& Short(uint32_t tag, const std::vector<uint32_t>& values) { return Add(tag, 3, values); }
  TiffMaker& Long(uint32_t tag, const std::vector<uint32_t>& values) { return Add(tag, 4, values); }
  /// What offsets and sizes are of.
  TiffMaker& Segments(std::vector<Bytes> segments, bool areTiles = false) {
    segments_ = std::move(segments);
    areTiles_ = areTiles;
    return *this;
  }
  Bytes Make();

 private:
  struct Field {
    uint32_t tag, type;
    std::vector<uint32_t> values;
  };

  TiffMaker& Add(uint32_t tag, uint32_t type, const std::vector<uint32_t>& values) {
    fields_.push_back({tag, type, values});
    return *this;
  }
  void Number(Bytes& to, uint32_t value, unsigned bytes) const {
    for (unsigned i = 0; i < bytes; ++i)
      to.push_back(static_cast<uint8_t>(value >> 8 * (isBig_ ? bytes - 1 - i : i)));
  }

  const bool isBig_;
  bool areTiles_ = false;
  std::vector<Field> fields_;
  std::vector<Bytes> segments_;
};

inline Bytes TiffMaker::Make() {
  Bytes data;
  std::vector<uint32_t> offsets, sizes;
  for (const Bytes& segment : segments_) {
    offsets.push_back(static_cast<uint32_t>(8 + data.size()));
    sizes.push_back(static_cast<uint32_t>(segment.size()));
    data.insert(data.end(), segment.begin(), segment.end());
  }
  Long(areTiles_ ? 324 : 273, offsets).Long(areTiles_ ? 325 : 279, sizes);
  Bytes directory;
  Number(directory, static_cast<uint32_t>(fields_.size()), 2);
  for (const Field& field : fields_) {
    const unsigned width = field.type == 3 ? 2 : 4;
    Number(directory, field.tag, 2);
    Number(directory, field.type, 2);
    Number(directory, static_cast<uint32_t>(field.values.size()), 4);
    Bytes values;
    for (const uint32_t value : field.values) Number(values, value, width);
    if (values.size() > 4) {
      const size_t at = 8 + data.size();
      data.insert(data.end(), values.begin(), values.end());
      values.clear();
      Number(values, static_cast<uint32_t>(at), 4);
    }
    values.resize(4);
    directory.insert(directory.end(), values.begin(), values.end());
  }
  Bytes file(2, isBig_ ? 'M' : 'I');
  Number(file, 42, 2);
  Number(file, static_cast<uint32_t>(8 + data.size()), 4);
  file.insert(file.end(), data.begin(), data.end());
  file.insert(file.end(), directory.begin(), directory.end());
  file.resize(file.size() + 4);
  return file;
}

}  // namespace support
