#include "flow/property_memo.h"

#include <cstddef>

namespace pagerex {
namespace {

uint64_t mixed(uint64_t state, uint64_t value) {
  constexpr uint64_t kOdd = 0x9E3779B97F4A7C15;
  state = (state ^ value) * kOdd;
  return state ^ state >> 29;
}

uint64_t mixed(uint64_t state, ByteView bytes) {
  state = mixed(state, bytes.size());
  size_t at = 0;
  for (; at + sizeof(uint64_t) <= bytes.size(); at += sizeof(uint64_t)) {
    state = mixed(state, bytes.copyOf<uint64_t>(at));
  }
  return at < bytes.size() ? mixed(state, bytes.copyOf<uint64_t>(at)) : state;
}

uint64_t mixed(uint64_t state, const Colour& colour) {
  return mixed(state, colour.rgb | uint64_t{colour.isAutomatic} << 32);
}

uint64_t mixed(uint64_t state, const Revision& revision) {
  return mixed(state, revision.dttm | uint64_t{revision.author} << 32 | uint64_t{revision.kind} << 48);
}

bool haveEqualBytes(ByteView a, ByteView b) {
  return a.size() == b.size() &&
         (a.data() == b.data() || a.empty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

}  // namespace

bool PropertyKey::operator==(const PropertyKey& other) const {
  if (istd != other.istd || isLabel != other.isLabel || !(place == other.place)) return false;
  for (size_t i = 0; i < 3; ++i) {
    if (!haveEqualBytes(lists[i], other.lists[i])) return false;
  }
  return true;
}

size_t PropertyKeyHash::operator()(const PropertyKey& key) const {
  uint64_t state = mixed(seed, uint64_t{key.istd} | uint64_t{key.place.istd} << 16 |
                                   uint64_t{key.place.conditions} << 32 | uint64_t{key.isLabel} << 48);
  for (const ByteView list : key.lists) state = mixed(state, list);
  return static_cast<size_t>(state);
}

size_t RunPropertiesHash::operator()(const RunProperties& properties) const {
  // From flags to sizes, and from fonts to the style, there are no bytes between the fields.
  constexpr size_t kFirstEnd = offsetof(RunProperties, kerningHalfPoints) + sizeof(uint16_t);
  static_assert(kFirstEnd == 14 + 4 + 6 * sizeof(uint16_t));
  constexpr size_t kSecond = offsetof(RunProperties, fonts);
  constexpr size_t kSecondEnd = offsetof(RunProperties, characterStyle) + sizeof(uint16_t);
  static_assert(kSecondEnd - kSecond == 8 * sizeof(uint16_t));

  uint64_t state = mixed(0, ByteView(&properties, kFirstEnd));
  state = mixed(state, ByteView(&properties, kSecondEnd).part(kSecond));
  state = mixed(state, properties.colour);
  state = mixed(state, properties.underlineColour);
  const Border& border = properties.border;
  state = mixed(state, border.kind | uint64_t{border.widthEighths} << 8 | uint64_t{border.spacePoints} << 16 |
                           uint64_t{border.hasShadow} << 24);
  state = mixed(state, border.colour);
  state = mixed(state, properties.shading.fill);
  state = mixed(state, uint64_t{properties.shading.isThere});
  state = mixed(state, properties.revision);
  return static_cast<size_t>(mixed(state, properties.deletion));
}

}  // namespace pagerex
