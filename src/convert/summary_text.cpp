#include "convert/summary_text.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/file_time.h"
#include "base/language_tag.h"
#include "base/utf8.h"
#include "convert/structures.h"
#include "flow/property_resolver.h"
#include "wordreader/style_table.h"

namespace pagerex {
namespace {

static_assert(static_cast<int>(CustomProperty::Kind::kText) == PAGEREX_PROPERTY_TEXT &&
              static_cast<int>(CustomProperty::Kind::kInteger) == PAGEREX_PROPERTY_INTEGER &&
              static_cast<int>(CustomProperty::Kind::kReal) == PAGEREX_PROPERTY_REAL &&
              static_cast<int>(CustomProperty::Kind::kBoolean) == PAGEREX_PROPERTY_BOOLEAN &&
              static_cast<int>(CustomProperty::Kind::kTime) == PAGEREX_PROPERTY_TIME);

using pagerex::copyText;

/// `N` units take as many bytes at least, so that no more of a text is looked at.
template <size_t N>
void copyText(std::u16string_view text, char (&out)[N]) {
  char bytes[mostUtf8(N)];
  text = text.substr(0, N);
  copyText(std::string_view(bytes, utf8FromUtf16(text.data(), text.size(), bytes)), out);
}

uint32_t counted(int32_t count) {
  return static_cast<uint32_t>(std::max(count, 0));
}

/// As few digits as tell the number from others, with a full stop whatever the host's locale has. The
/// standard library's own way would bring tables of 100 KB along.
std::string spelled(double number) {
  char digits[64];
  for (int precision = 15; precision <= 17; ++precision) {
    std::snprintf(digits, sizeof(digits), "%.*g", precision, number);
    if (std::strtod(digits, nullptr) == number) break;
  }
  std::string text;
  for (const char* c = digits; *c; ++c) {
    const bool isOfNumber = std::isalnum(static_cast<unsigned char>(*c)) || *c == '-' || *c == '+';
    if (isOfNumber) {
      text += *c;
    } else if (text.empty() || text.back() != '.') {
      text += '.';
    }
  }
  return text;
}

std::string spelledValue(const CustomProperty& property) {
  switch (property.kind) {
    case CustomProperty::Kind::kInteger:
      return std::to_string(property.integer);
    case CustomProperty::Kind::kReal:
      return spelled(property.real);
    case CustomProperty::Kind::kBoolean:
      return property.integer != 0 ? "true" : "false";
    case CustomProperty::Kind::kTime:
      return iso8601(property.time);
    case CustomProperty::Kind::kText:
      break;
  }
  return {};
}

void copyCustom(const DocumentSummary& summary, pagerex_summary& out) {
  for (const CustomProperty& property : summary.custom) {
    if (out.custom_count == PAGEREX_MOST_PROPERTIES) return;
    pagerex_property& told = out.custom[out.custom_count++];
    copyText(property.name, told.name);
    told.kind = static_cast<int32_t>(property.kind);
    if (property.kind == CustomProperty::Kind::kText) {
      copyText(property.text, told.value);
    } else {
      copyText(spelledValue(property), told.value);
    }
  }
}

void copyTexts(const DocumentSummary& summary, pagerex_summary& out) {
  copyText(summary.title, out.title);
  copyText(summary.subject, out.subject);
  copyText(summary.author, out.author);
  copyText(summary.lastAuthor, out.last_author);
  copyText(summary.keywords, out.keywords);
  copyText(summary.comments, out.comments);
  copyText(summary.category, out.category);
  copyText(summary.manager, out.manager);
  copyText(summary.company, out.company);
  copyText(summary.templateName, out.template_name);
  copyText(summary.application, out.application);
  copyText(summary.revisionNumber, out.revision);
  copyText(summary.language, out.language);
  copyText(iso8601(summary.created), out.created);
  copyText(iso8601(summary.saved), out.saved);
  copyText(iso8601(summary.printed), out.printed);
}

void copyNumbers(const DocumentSummary& summary, pagerex_summary& out) {
  constexpr FileTime kMinute = 600'000'000;
  out.editing_minutes = static_cast<uint32_t>(std::min<FileTime>(summary.editingTime / kMinute, UINT32_MAX));
  out.pages = counted(summary.pages);
  out.words = counted(summary.words);
  out.characters = counted(summary.characters);
  out.paragraphs = counted(summary.paragraphs);
  out.lines = counted(summary.lines);
  out.security = static_cast<uint32_t>(summary.security);
}

std::string_view languageOfText(WordFile& file) {
  constexpr uint16_t kNormal = 0;
  StyleTable styles;
  styles.Read(file.Table(mso_word::FCLCB_STYLE_SHEET), nullptr);
  PropertyResolver resolver(styles, nullptr);
  return languageTag(resolver.ParagraphStyleRun(kNormal).language);
}

}  // namespace

pagerex_summary summaryOf(WordFile& file) {
  const DocumentSummary& summary = file.Summary();
  pagerex_summary out = {};
  copyTexts(summary, out);
  copyNumbers(summary, out);
  copyCustom(summary, out);
  if (!*out.language) copyText(languageOfText(file), out.language);
  return out;
}

}  // namespace pagerex
