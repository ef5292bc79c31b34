#pragma once

#include <array>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/bytes.h"

namespace support::emf_plus {

/// Fields of a record or an object, one after another.
class Fields {
 public:
  Fields& u8(uint32_t value);
  Fields& u16(int32_t value);
  Fields& u32(uint32_t value);
  Fields& reals(std::initializer_list<float> values);
  Fields& shorts(std::initializer_list<int> values);
  Fields& text(std::u16string_view value);
  Fields& bytes(const Bytes& value);
  /// How many bytes, and these.
  Fields& counted(const Bytes& value);

  const Bytes& take() const { return bytes_; }
  // NOLINTNEXTLINE(google-explicit-constructor): stands for its bytes
  operator const Bytes&() const { return bytes_; }

 private:
  Bytes bytes_;
};

enum ObjectType : uint16_t {
  kBrush = 1,
  kPen = 2,
  kPath = 3,
  kRegion = 4,
  kImage = 5,
  kFont = 6,
  kStringFormat = 7,
};

constexpr uint32_t kVersion = 0xDBC01002;

/// Records of EMF+.
class Records {
 public:
  Records& add(uint16_t type, uint16_t flags, const Bytes& data = {});
  Records& object(ObjectType type, uint8_t id, const Bytes& data);
  Bytes bytes;
};

Bytes solidBrush(uint32_t argb);
/// With fields behind the width, as the flags tell them.
Bytes pen(float width, uint32_t argb = 0xFF000000, uint32_t flags = 0, const Bytes& fields = {});
Bytes path(std::initializer_list<float> coordinates, std::initializer_list<int> types);
Bytes font(float size, std::u16string_view family, uint32_t style = 0);
Bytes stringFormat(uint32_t flags, uint32_t align, uint32_t lineAlign, uint32_t hotkeys = 0);
/// A bitmap of pixels, with what stands before them: a palette.
Bytes pixelImage(int width, int height, int stride, uint32_t format, const Bytes& data);

/// An element of a picture. What an attribute does not say is empty.
struct Element {
  std::string name;
  std::map<std::string, std::string> attributes;
  std::string text;                           ///< up to the next tag
  std::string parentName;                     ///< of the element that it stands in
  std::map<std::string, std::string> parent;  ///< and that one's attributes

  std::string operator[](const std::string& attribute) const;
};

/// What was drawn on a canvas of 100 x 100 units, each a pixel of 96 to the inch.
struct Drawn {
  bool isWhole = true;
  bool isDeviceLent = false;
  std::string svg;
  std::vector<Element> elements;  ///< without the root

  /// The one of a kind with this number, from 0 on. Throws std::out_of_range where there is none.
  const Element& element(std::string_view name, size_t number = 0) const;
  size_t count(std::string_view name) const;
};

/// Plays comments one after another. Throws std::runtime_error for a picture whose tags don't match.
Drawn draw(const std::vector<Bytes>& comments, bool isNested = false, size_t mostBytes = SIZE_MAX);
Drawn draw(const Bytes& comment);
Drawn draw(const Records& records);

}  // namespace support::emf_plus
