#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "support/bytes.h"
#include "support/word_text.h"

namespace support {

/// A property that someone gave a name.
struct NamedProperty {
  struct Time {
    uint64_t fileTime = 0;
  };
  Text name = {};
  std::variant<Text, int32_t, double, bool, Time> value = Text();
};

/// What the two streams of a document's summary say; what is empty or 0 is not written. Texts of other code
/// pages than 1200 and 65001 are stated as their bytes: `.title = "\xCF\xF0", .codePage = 1251`.
struct Summary {
  uint16_t codePage = 1252;
  Text title = {}, subject = {}, author = {}, keywords = {}, comments = {}, templateName = {};
  Text lastAuthor = {}, revisionNumber = {}, application = {};
  uint64_t editingTime = 0, printed = 0, created = 0, saved = 0;  ///< FILETIME
  int32_t pages = 0, words = 0, characters = 0, security = 0;
  Text category = {}, manager = {}, company = {}, contentStatus = {}, language = {};
  int32_t lines = 0, paragraphs = 0, charactersWithSpaces = 0;
  std::vector<NamedProperty> custom = {};

  Bytes summaryStream() const;
  Bytes documentSummaryStream() const;
};

/// FILETIME of a date, UTC.
uint64_t fileTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

/// One section of a stream of properties: `PropertySection(1252).text(2, "Title").number(14, 3)`.
class PropertySection {
 public:
  explicit PropertySection(uint16_t codePage);

  PropertySection& text(uint32_t id, const Text& text);
  PropertySection& wideText(uint32_t id, const Text& text);
  PropertySection& number(uint32_t id, int32_t value);
  PropertySection& real(uint32_t id, double value);
  PropertySection& boolean(uint32_t id, bool value);
  PropertySection& time(uint32_t id, uint64_t fileTime);
  /// Any type (VT_...) with the bytes behind it.
  PropertySection& value(uint32_t id, uint16_t type, const Bytes& bytes);
  /// The names of properties: identifier 0.
  PropertySection& names(const std::vector<std::pair<uint32_t, Text>>& names);
  /// Bytes of a property from its type on.
  PropertySection& raw(uint32_t id, const Bytes& bytes);

  Bytes bytes() const;

 private:
  Bytes encoded(const Text& text) const;

  uint16_t codePage_;
  std::vector<std::pair<uint32_t, Bytes>> properties_;
};

enum class PropertySetKind { kSummary, kDocumentSummary, kCustom };

/// A stream of these sections.
Bytes propertySetStream(const std::vector<std::pair<PropertySetKind, PropertySection>>& sections);

}  // namespace support
