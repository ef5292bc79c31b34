#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/byte_view.h"
#include "base/file_time.h"
#include "base/warnings.h"

namespace pagerex {

/// A property that someone gave a name.
struct CustomProperty {
  enum class Kind : uint8_t { kText, kInteger, kReal, kBoolean, kTime };
  std::u16string name;
  Kind kind = Kind::kText;
  std::u16string text;
  int64_t integer = 0;  ///< and of a boolean: 0 or 1
  double real = 0;
  FileTime time = 0;
};

/// What the streams "\005SummaryInformation" and "\005DocumentSummaryInformation" say of a document. What is
/// not told is empty or 0. Texts have no control characters: breaks of lines are spaces.
struct DocumentSummary {
  std::u16string title, subject, author, keywords, comments, templateName, lastAuthor, revisionNumber,
      application;
  FileTime editingTime = 0;  ///< a length
  FileTime created = 0, saved = 0, printed = 0;
  int32_t pages = 0, words = 0, characters = 0, charactersWithSpaces = 0, lines = 0, paragraphs = 0;
  int32_t security = 0;
  std::u16string category, manager, company, contentStatus, language;
  std::vector<CustomProperty> custom;
};

/// Either stream may be empty. What is damaged is left out, and told to `warnings` (may be null).
DocumentSummary readDocumentSummary(ByteView summary, ByteView documentSummary, Warnings* warnings);

}  // namespace pagerex
