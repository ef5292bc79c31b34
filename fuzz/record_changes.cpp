#include "record_changes.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/byte_view.h"

namespace fuzz {

using support::Bytes;

namespace {

constexpr uint16_t kWmfKinds[] = {
    0x0035, 0x0037, 0x0102, 0x0103, 0x0104, 0x0106, 0x0107, 0x0108, 0x0127, 0x0139, 0x0142, 0x0149,
    0x0201, 0x0209, 0x0211, 0x0213, 0x0214, 0x0220, 0x0228, 0x0231, 0x0234, 0x0324, 0x0325, 0x020A,
    0x020B, 0x020C, 0x020D, 0x020E, 0x020F, 0x0410, 0x0412, 0x0415, 0x0416, 0x0418, 0x0419, 0x0429,
    0x0436, 0x0521, 0x0538, 0x0548, 0x041B, 0x041F, 0x061C, 0x061D, 0x001E, 0x081A, 0x0B23, 0x0626,
    0x012A, 0x012B, 0x012C, 0x012D, 0x012E, 0x0817, 0x0830, 0x0922, 0x0A32, 0x0D33, 0x0940, 0x0B41,
    0x0F43, 0x01F0, 0x00F7, 0x01F9, 0x02FA, 0x02FB, 0x02FC, 0x06FF, 0x0000};

constexpr auto countedFrom(uint16_t first) {
  std::array<uint16_t, 122> kinds{};
  for (size_t i = 0; i < kinds.size(); ++i) kinds[i] = static_cast<uint16_t>(first + i);
  return kinds;
}
constexpr auto kEmfKinds = countedFrom(1);
constexpr auto kEmfPlusKinds = countedFrom(0x4001);

constexpr uint32_t kValues[] = {
    0,      1,      2,          3,          8,          16,         0x7F,       0x80,
    0xFF,   0x100,  0x3FFF,     0x7FFF,     0x8000,     0xFFFF,     0x10000,    0x00CC0020,
    0x5A49, 0x42,   0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x3F800000, 0x7F800000, 0x7FC00000,
    40,     0x2000, 0x80000005, 0x01000001, 0x02000000, 0x4B000000, 0xBF800000, 0x358637BD};

using Place = std::pair<size_t, size_t>;  // begin and end

ByteView viewOf(const Bytes& bytes) {
  return ByteView(bytes.data(), bytes.size());
}

std::vector<Place> recordsIn(const Bytes& bytes, size_t begin, const RecordForm& form) {
  std::vector<Place> places;
  while (begin < bytes.size() && bytes.size() - begin >= form.head) {
    const uint64_t told = uint64_t{viewOf(bytes).u32(begin + form.sizeOffset)} * form.sizeUnit;
    const uint64_t size = std::clamp<uint64_t>(told, form.head, bytes.size() - begin);
    places.emplace_back(begin, begin + size);
    begin += size;
  }
  return places;
}

void setSize(Bytes& record, const RecordForm& form) {
  record.resize(std::max((record.size() + form.sizeUnit - 1) / form.sizeUnit * form.sizeUnit, form.head));
  if (form.sizeUnit == 1) record.resize((record.size() + 3) / 4 * 4);
  support::patchInteger(record, form.sizeOffset, static_cast<uint32_t>(record.size() / form.sizeUnit));
  if (form.dataOffset)
    support::patchInteger(record, form.dataOffset, static_cast<uint32_t>(record.size() - form.head));
}

void setParameter(Bytes& record, const RecordForm& form, Random& random) {
  const size_t count = (record.size() - form.head) / form.parameter;
  if (count == 0) return;
  const size_t at = form.head + random() % std::min<size_t>(count, 64) * form.parameter;
  uint32_t value = kValues[random() % std::size(kValues)];
  if (random() % 3 == 0) value = viewOf(record).u32(at) + random() % 33 - 16;
  if (form.parameter == 2) return support::patchInteger(record, at, static_cast<uint16_t>(value));
  support::patchInteger(record, at, value);
}

void setKind(Bytes& record, const RecordForm& form, Random& random) {
  support::patchInteger(record, form.kindOffset, form.kinds[random() % form.kinds.size()]);
}

Bytes newRecord(const RecordForm& form, Random& random) {
  Bytes record(form.head + random() % 16 * form.parameter);
  setSize(record, form);
  setKind(record, form, random);
  for (int i = 0; i < 8; ++i) setParameter(record, form, random);
  return record;
}

void changeBody(Bytes& record, const RecordForm& form, size_t room) {
  Bytes body(record.begin() + static_cast<ptrdiff_t>(form.head), record.end());
  changeBytes(body, room);
  record.resize(form.head);
  record.insert(record.end(), body.begin(), body.end());
  setSize(record, form);
}

void replace(Bytes& bytes, const Place& place, const Bytes& by) {
  const auto at = [&](size_t offset) { return bytes.begin() + static_cast<ptrdiff_t>(offset); };
  bytes.insert(bytes.erase(at(place.first), at(place.second)), by.begin(), by.end());
}

constexpr uint16_t kComment = 70;
constexpr size_t kEmfPlusRecords = 16;  // behind type, size, size of the data and "EMF+"

bool hasEmfPlus(const Bytes& record) {
  const ByteView view = viewOf(record);
  return view.u32(0) == kComment && view.u32(12) == 0x2B464D45;
}

}  // namespace

const RecordForm kWmfForm = {6, 4, 0, 2, 0, 2, kWmfKinds};
const RecordForm kEmfForm = {8, 0, 4, 1, 0, 4, kEmfKinds};
const RecordForm kEmfPlusForm = {12, 0, 4, 1, 8, 4, kEmfPlusKinds};

void changeRecordList(Bytes& bytes, size_t begin, const RecordForm& form, size_t room, Random& random) {
  const std::vector<Place> places = recordsIn(bytes, begin, form);
  if (places.empty()) return changeBytes(bytes, room);
  const Place place = places[random() % places.size()];
  const Place other = places[random() % places.size()];
  const auto part = [&](const Place& of) {
    return Bytes(&bytes[of.first], &bytes[of.first] + (of.second - of.first));
  };
  Bytes record = part(place);
  switch (random() % 12) {
    case 0:
      record.clear();
      break;
    case 1:  // one of the others stands in front of it
      if (other.second - other.first <= room) {
        const Bytes moved = part(other);
        record.insert(record.begin(), moved.begin(), moved.end());
      }
      break;
    case 2: {
      const Bytes made = newRecord(form, random);
      if (made.size() <= room) record.insert(record.begin(), made.begin(), made.end());
      break;
    }
    case 3:
      setKind(record, form, random);
      break;
    case 4:
    case 5:
      changeBody(record, form, room > 8 ? room - 8 : 0);
      break;
    case 6:
      changeInPlace(record, form.head, record.size());
      break;
    case 7:
      changeInPlace(record, 0, record.size());
      break;
    default:
      for (uint32_t i = random() % 4 + 1; i > 0; --i) setParameter(record, form, random);
  }
  replace(bytes, place, record);
}

void takeRecord(Bytes& bytes, size_t begin, const Bytes& other, size_t otherBegin, const RecordForm& form,
                Random& random) {
  const std::vector<Place> places = recordsIn(bytes, begin, form),
                           others = recordsIn(other, otherBegin, form);
  if (places.empty() || others.empty()) return;
  const size_t at = places[random() % places.size()].first;
  const Place taken = others[random() % others.size()];
  bytes.insert(bytes.begin() + static_cast<ptrdiff_t>(at), &other[taken.first],
               &other[taken.first] + (taken.second - taken.first));
}

size_t wmfRecords(const Bytes& bytes) {
  const size_t before = viewOf(bytes).u32(0) == 0x9AC6CDD7 ? 22 : 0;
  return before + 18;
}

void changeEmf(Bytes& bytes, size_t room, Random& random) {
  const std::vector<Place> places = recordsIn(bytes, 0, kEmfForm);
  for (int tries = 0; tries < 3 && !places.empty(); ++tries) {
    const Place place = places[random() % places.size()];
    Bytes record(&bytes[place.first], &bytes[place.first] + (place.second - place.first));
    if (!hasEmfPlus(record) || record.size() < kEmfPlusRecords) continue;
    changeRecordList(record, kEmfPlusRecords, kEmfPlusForm, room, random);
    if (record.size() < kEmfPlusRecords) record.resize(kEmfPlusRecords);
    setSize(record, kEmfForm);
    support::patchInteger(record, 8, static_cast<uint32_t>(record.size() - 12));
    return replace(bytes, place, record);
  }
  changeRecordList(bytes, 0, kEmfForm, room, random);
}

}  // namespace fuzz
