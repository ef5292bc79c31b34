#include "wordreader/document_summary.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <iterator>
#include <optional>

#include "base/code_page_text.h"

namespace pagerex {
namespace {

/// The identity of a section.
struct Fmtid {
  uint32_t data1;
  uint16_t data2, data3;
  uint8_t data4[8];

  bool isAt(ByteView bytes, size_t offset) const {
    return bytes.contains(offset, 16) && bytes.u32(offset) == data1 && bytes.u16(offset + 4) == data2 &&
           bytes.u16(offset + 6) == data3 && std::memcmp(bytes.data() + offset + 8, data4, 8) == 0;
  }
};
constexpr Fmtid kSummary = {0xF29F85E0, 0x4FF9, 0x1068, {0xAB, 0x91, 0x08, 0x00, 0x2B, 0x27, 0xB3, 0xD9}};
constexpr Fmtid kDocumentSummary = {
    0xD5CDD502, 0x2E9C, 0x101B, {0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE}};
constexpr Fmtid kCustom = {0xD5CDD505, 0x2E9C, 0x101B, {0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE}};

/// What a property fills.
template <class T>
struct Field {
  uint32_t id;
  T DocumentSummary::*field;
};
struct Fields {
  const Fmtid& section;
  const Field<std::u16string>*texts, *textsEnd;
  const Field<FileTime>*times, *timesEnd;
  const Field<int32_t>*numbers, *numbersEnd;
};

constexpr Field<std::u16string> kSummaryTexts[] = {
    {2, &DocumentSummary::title},        {3, &DocumentSummary::subject},
    {4, &DocumentSummary::author},       {5, &DocumentSummary::keywords},
    {6, &DocumentSummary::comments},     {7, &DocumentSummary::templateName},
    {8, &DocumentSummary::lastAuthor},   {9, &DocumentSummary::revisionNumber},
    {18, &DocumentSummary::application},
};
constexpr Field<FileTime> kSummaryTimes[] = {
    {10, &DocumentSummary::editingTime},
    {11, &DocumentSummary::printed},
    {12, &DocumentSummary::created},
    {13, &DocumentSummary::saved},
};
constexpr Field<int32_t> kSummaryNumbers[] = {
    {14, &DocumentSummary::pages},
    {15, &DocumentSummary::words},
    {16, &DocumentSummary::characters},
    {19, &DocumentSummary::security},
};
constexpr Field<std::u16string> kDocumentTexts[] = {
    {2, &DocumentSummary::category},       {14, &DocumentSummary::manager},  {15, &DocumentSummary::company},
    {27, &DocumentSummary::contentStatus}, {28, &DocumentSummary::language},
};
constexpr Field<int32_t> kDocumentNumbers[] = {
    {5, &DocumentSummary::lines},
    {6, &DocumentSummary::paragraphs},
    {17, &DocumentSummary::charactersWithSpaces},
};
constexpr Fields kSummaryFields = {kSummary,
                                   std::begin(kSummaryTexts),
                                   std::end(kSummaryTexts),
                                   std::begin(kSummaryTimes),
                                   std::end(kSummaryTimes),
                                   std::begin(kSummaryNumbers),
                                   std::end(kSummaryNumbers)};
constexpr Fields kDocumentFields = {
    kDocumentSummary, std::begin(kDocumentTexts),   std::end(kDocumentTexts),  nullptr,
    nullptr,          std::begin(kDocumentNumbers), std::end(kDocumentNumbers)};

enum PropertyId : uint32_t { kDictionary = 0, kCodePage = 1, kFirstOwn = 2, kLinkBit = 0x01000000 };

/// How a value is stored.
enum class Storage : uint8_t { kSigned, kUnsigned, kFloat, kMoney, kDays, kBool, kTime, kText, kWideText };
struct Type {
  uint16_t vt;
  Storage storage;
  uint8_t bytes;  ///< of the value; of a text, of the length in front of it
};
constexpr Type kTypes[] = {
    {0x02, Storage::kSigned, 2},    // VT_I2
    {0x03, Storage::kSigned, 4},    // VT_I4
    {0x04, Storage::kFloat, 4},     // VT_R4
    {0x05, Storage::kFloat, 8},     // VT_R8
    {0x06, Storage::kMoney, 8},     // VT_CY
    {0x07, Storage::kDays, 8},      // VT_DATE
    {0x08, Storage::kText, 4},      // VT_BSTR
    {0x0B, Storage::kBool, 2},      // VT_BOOL
    {0x10, Storage::kSigned, 1},    // VT_I1
    {0x11, Storage::kUnsigned, 1},  // VT_UI1
    {0x12, Storage::kUnsigned, 2},  // VT_UI2
    {0x13, Storage::kUnsigned, 4},  // VT_UI4
    {0x14, Storage::kSigned, 8},    // VT_I8
    {0x15, Storage::kUnsigned, 8},  // VT_UI8
    {0x16, Storage::kSigned, 4},    // VT_INT
    {0x17, Storage::kUnsigned, 4},  // VT_UINT
    {0x1E, Storage::kText, 4},      // VT_LPSTR
    {0x1F, Storage::kWideText, 4},  // VT_LPWSTR
    {0x40, Storage::kTime, 8},      // VT_FILETIME
};

/// One value: a property without its name.
using Value = CustomProperty;

/// No control characters and no halves of characters; what breaks a line is a space.
std::u16string cleaned(std::u16string text) {
  size_t length = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const bool isPair = (unit & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
    if (isPair) {
      text[length++] = unit;
      text[length++] = text[++i];
    } else if (unit == u'\t' || unit == u'\n' || unit == u'\r') {
      if (length > 0 && text[length - 1] != u' ') text[length++] = u' ';
    } else if (unit >= 0x20 && (unit < 0x7F || unit > 0x9F) && (unit & 0xF800) != 0xD800) {
      text[length++] = unit;
    }
  }
  text.resize(length);
  return text;
}

/// Of days since the end of 1899.
FileTime timeOfDays(double days) {
  constexpr double kDaysFrom1601 = 109'205, kTicksPerDay = 864e9, kLast = 3e6;
  const double since1601 = days + kDaysFrom1601;
  return since1601 > 0 && since1601 < kLast ? static_cast<FileTime>(since1601 * kTicksPerDay) : 0;
}

/// One section of a stream of properties. No more is read of it than it has bytes, however often its parts
/// refer to the same ones.
class Section {
 public:
  explicit Section(ByteView bytes)
      : bytes_(bytes),
        count_(std::min<size_t>(bytes.u32(4), bytes.size() / 8)),
        isDamaged_(bytes.u32(4) > count_ || bytes.size() < 8),
        left_(bytes.size()),
        text_(codePage()) {}

  bool isDamaged() const { return isDamaged_; }
  size_t count() const { return count_; }
  uint32_t idAt(size_t i) const { return bytes_.u32(8 + i * 8); }
  /// Nothing if it is damaged, or of a type that has no place here.
  std::optional<Value> ValueAt(size_t i);

  /// Names by identifier, in its order.
  struct Name {
    uint32_t id;
    std::u16string text;
  };
  std::vector<Name> ReadNames();

 private:
  /// From the property's offset on; empty and damaged when it lies outside.
  ByteView bytesAt(size_t i);
  uint16_t codePage();
  bool ReadText(ByteView bytes, uint64_t length, bool isWide, std::u16string& text);
  static bool ReadNumber(const Type& type, uint64_t raw, Value& value);

  ByteView bytes_;
  size_t count_;
  bool isDamaged_;
  size_t left_;
  CodePageText text_;
};

ByteView Section::bytesAt(size_t i) {
  const ByteView bytes = bytes_.part(bytes_.u32(12 + i * 8));
  if (bytes.size() < 4) isDamaged_ = true;
  return bytes;
}

uint16_t Section::codePage() {
  for (size_t i = 0; i < count_; ++i) {
    if (idAt(i) == kCodePage) return bytesAt(i).u16(4);
  }
  return 0;
}

std::optional<Value> Section::ValueAt(size_t i) {
  const ByteView bytes = bytesAt(i);
  const auto* type = std::find_if(std::begin(kTypes), std::end(kTypes),
                                  [vt = bytes.u32(0)](const Type& each) { return each.vt == (vt & 0xFFFF); });
  if (type == std::end(kTypes)) return {};
  if (!bytes.contains(4, type->bytes)) {
    isDamaged_ = true;
    return {};
  }
  uint64_t raw = 0;
  std::memcpy(&raw, bytes.data() + 4, type->bytes);
  Value value;
  const bool isWide = type->storage == Storage::kWideText;
  const bool isText = isWide || type->storage == Storage::kText;
  const bool isThere =
      isText ? ReadText(bytes.part(8), raw, isWide, value.text) : ReadNumber(*type, raw, value);
  return isThere ? std::optional(std::move(value)) : std::nullopt;
}

/// `length` counts bytes, or units of wide text.
bool Section::ReadText(ByteView bytes, uint64_t length, bool isWide, std::u16string& text) {
  const uint64_t wanted = length * (isWide ? 2 : 1);
  if (wanted > bytes.size() || wanted > left_) {
    isDamaged_ = true;
    return false;
  }
  left_ -= static_cast<size_t>(wanted);
  const ByteView part = bytes.part(0, static_cast<size_t>(wanted));
  text = cleaned(isWide ? utf16Text(part) : text_.Read(part));
  return true;
}

bool Section::ReadNumber(const Type& type, uint64_t raw, Value& value) {
  using Kind = CustomProperty::Kind;
  const unsigned unusedBits = 64 - type.bytes * 8u;
  value.kind = Kind::kInteger;
  switch (type.storage) {
    case Storage::kSigned:
      value.integer = static_cast<int64_t>(raw << unusedBits) >> unusedBits;
      return true;
    case Storage::kUnsigned:
      value.integer = static_cast<int64_t>(std::min<uint64_t>(raw, INT64_MAX));
      return true;
    case Storage::kBool:
      value.kind = Kind::kBoolean;
      value.integer = raw != 0;
      return true;
    case Storage::kTime:
      value.kind = Kind::kTime;
      value.time = raw > INT64_MAX ? 0 : raw;
      return true;
    case Storage::kDays:
      value.kind = Kind::kTime;
      value.time = timeOfDays(std::bit_cast<double>(raw));
      return true;
    case Storage::kMoney:
      value.real = static_cast<double>(static_cast<int64_t>(raw)) / 10'000;
      break;
    default:
      value.real = type.bytes == 4 ? static_cast<double>(std::bit_cast<float>(static_cast<uint32_t>(raw)))
                                   : std::bit_cast<double>(raw);
  }
  value.kind = Kind::kReal;
  return std::isfinite(value.real);
}

std::vector<Section::Name> Section::ReadNames() {
  constexpr size_t kLeastEntry = 9;
  std::vector<Name> names;
  size_t i = 0;
  while (i < count_ && idAt(i) != kDictionary) ++i;
  if (i == count_) return names;
  ByteView rest = bytesAt(i);
  const uint32_t entries = rest.u32(0);
  rest = rest.part(4);
  for (uint32_t n = 0; n < entries; ++n) {
    const uint64_t bytes = uint64_t{rest.u32(4)} * (text_.isUtf16() ? 2 : 1);
    if (rest.size() < kLeastEntry || bytes > rest.size() - 8) {
      isDamaged_ = true;
      break;
    }
    names.push_back({rest.u32(0), cleaned(text_.Read(rest.part(8, static_cast<size_t>(bytes))))});
    const uint64_t padded = text_.isUtf16() ? (bytes + 3) / 4 * 4 : bytes;
    rest = rest.part(static_cast<size_t>(std::min<uint64_t>(8 + padded, rest.size())));
  }
  std::stable_sort(names.begin(), names.end(), [](const Name& a, const Name& b) { return a.id < b.id; });
  return names;
}

/// Puts a value in the field of its identifier, if it is told for the first time.
template <class T>
void fill(const Field<T>* first, const Field<T>* last, uint32_t id, const T& value, DocumentSummary& out) {
  const auto* found = std::find_if(first, last, [id](const Field<T>& each) { return each.id == id; });
  if (found != last && out.*(found->field) == T{}) out.*(found->field) = value;
}

void readFields(Section& section, const Fields& fields, DocumentSummary& out) {
  using Kind = CustomProperty::Kind;
  for (size_t i = 0; i < section.count(); ++i) {
    const uint32_t id = section.idAt(i);
    if (id < kFirstOwn || id >= 0x80) continue;
    const std::optional<Value> value = section.ValueAt(i);
    if (!value) continue;
    if (value->kind == Kind::kText) fill(fields.texts, fields.textsEnd, id, value->text, out);
    if (value->kind == Kind::kTime) fill(fields.times, fields.timesEnd, id, value->time, out);
    const bool isCount = value->integer >= 0 && value->integer <= INT32_MAX;
    if (value->kind == Kind::kInteger && isCount)
      fill(fields.numbers, fields.numbersEnd, id, static_cast<int32_t>(value->integer), out);
  }
}

/// What only programs know of, and no dialog shows.
bool isHidden(std::u16string_view name) {
  return name.empty() || name.starts_with(u"_PID_");
}

void readCustom(Section& section, DocumentSummary& out) {
  std::vector<Section::Name> names = section.ReadNames();
  for (size_t i = 0; i < section.count(); ++i) {
    const uint32_t id = section.idAt(i);
    if (id < kFirstOwn || id >= kLinkBit) continue;
    const auto name =
        std::lower_bound(names.begin(), names.end(), id,
                         [](const Section::Name& each, uint32_t wanted) { return each.id < wanted; });
    if (name == names.end() || name->id != id || isHidden(name->text)) continue;
    std::optional<Value> value = section.ValueAt(i);
    if (!value) continue;
    value->name = std::move(name->text);  // so that a second one of this identifier has none
    name->text.clear();
    out.custom.push_back(std::move(*value));
  }
}

/// The section of that identity in a stream; no bytes if it has none.
ByteView findSection(ByteView stream, const Fmtid& fmtid) {
  constexpr uint16_t kByteOrder = 0xFFFE;
  constexpr size_t kHeader = 28, kEntry = 20, kMostSections = 2;
  if (stream.u16(0) != kByteOrder) return {};
  const size_t count = std::min<size_t>(stream.u32(24), kMostSections);
  for (size_t i = 0; i < count; ++i) {
    const size_t entry = kHeader + i * kEntry;
    if (!fmtid.isAt(stream, entry)) continue;
    const ByteView section = stream.part(stream.u32(entry + 16));
    const size_t size = section.u32(0);
    // A size that tells less than nothing does not end what is there.
    return size < 8 ? section : section.part(0, size);
  }
  return {};
}

constexpr std::string_view kPlaces[] = {"SummaryInformation", "DocumentSummaryInformation"};

}  // namespace

DocumentSummary readDocumentSummary(ByteView summary, ByteView documentSummary, Warnings* warnings) {
  DocumentSummary out;
  const ByteView streams[] = {summary, documentSummary};
  const Fields* const fields[] = {&kSummaryFields, &kDocumentFields};
  for (size_t i = 0; i < std::size(streams); ++i) {
    if (streams[i].empty()) continue;
    const ByteView bytes = findSection(streams[i], fields[i]->section);
    Section section(bytes);
    readFields(section, *fields[i], out);
    if (section.isDamaged()) warn(warnings, WarningCode::kTableDamaged, kPlaces[i]);
  }
  const ByteView bytes = findSection(documentSummary, kCustom);
  if (bytes.empty()) return out;
  Section section(bytes);
  readCustom(section, out);
  if (section.isDamaged()) warn(warnings, WarningCode::kTableDamaged, kPlaces[1]);
  return out;
}

}  // namespace pagerex
