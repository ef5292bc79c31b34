#pragma once

#include <cstdint>
#include <string>

#include "base/byte_view.h"
#include "base/status.h"

/// Decodes the persisted form of a hyperlink (property 0x0382 of a shape): 24 bytes of header, `HLINK`, then
/// the strings that its flags announce. What is cut short reads as far as it goes.
namespace hyperLink {

/// The flags word, at offset 20 of the header.
enum HLINK_GRBITS : uint32_t {
  HLINK_MONIKER = 0x01,         ///< an address follows
  HLINK_ABSOLUTE = 0x02,        ///< the address is absolute
  HLINK_DISPLAY = 0x04,         ///< a display text follows
  HLINK_LOCATION = 0x08,        ///< a location in the target follows
  HLINK_FRAME = 0x80,           ///< a frame name follows
  HLINK_MONIKER_STRING = 0x100  ///< the address is a plain string
};

constexpr size_t kHlinkSize = 24;
constexpr size_t kHlinkFlags = 20;

enum class HLinkType {
  kNone = 0,
  kLocation = 1,  ///< a location in this document
  kRelative = 2,
  kFile = 3,    ///< an absolute file address
  kString = 4,  ///< an address stored as a string
  kUrl = 5,
};

/// A decoded link. Texts are UTF-8, but for the narrow address of a file, which stays as it is.
struct HYPERLINK {
  HLinkType type = HLinkType::kNone;
  std::string display;
  std::string address;
  std::string location;
};

/// Reads forward through bytes of a file; at their end it stands still.
class Cursor {
 public:
  explicit Cursor(ByteView bytes) : bytes_(bytes) {}
  /// The next `length` bytes, or what is left of them.
  ByteView take(size_t length) {
    const ByteView taken = bytes_.part(0, length);
    bytes_ = bytes_.part(taken.size());
    return taken;
  }
  /// The next integer; bytes that are not there are zero.
  template <class T>
  T ReadAndProceed() {
    return take(sizeof(T)).copyOf<T>(0);
  }
  bool atEnd() const { return bytes_.empty(); }

 private:
  ByteView bytes_;
};

namespace _PRV::hl_hlp {

/// A 32-bit length, in characters or in bytes, and that many 16-bit characters, which count up to the first
/// zero.
void read_hl_addr(Cursor& cursor, std::string& out, bool lengthInBytes);
/// A file moniker: a narrow path, and often the same as 16-bit text, which then counts.
void read_hl_addr_ex(Cursor& cursor, std::string& out);

}  // namespace _PRV::hl_hlp

/// The display or frame string.
void ReadHyLinkStr(Cursor& cursor, std::string& out, bool lengthInBytes);

/// What follows the display and frame strings: the address, told apart by the flags and by a class identity,
/// and the location. kNothing when the bytes hold an absolute address of unknown kind: type and texts stay
/// empty then.
Status DecodeHyperlink(uint32_t flags, Cursor& cursor, HLinkType& type, std::string& address,
                       std::string& location);

/// The whole property.
HYPERLINK ReadHyperlink(ByteView property);

}  // namespace hyperLink
