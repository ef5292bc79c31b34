#include "json.h"

#include <cstdint>
#include <string_view>

namespace pagerex::web {
namespace {

/// Objects and lists, one member after the other.
class Json {
 public:
  std::string Take() { return std::move(text_); }

  void Begin(const char* name, char bracket) {
    Name(name);
    text_ += bracket;
  }
  void End(char bracket) {
    if (text_.back() == ',') text_.pop_back();
    text_ += bracket;
    text_ += ',';
  }
  void EndAll() {
    End('}');
    text_.pop_back();
  }
  void Text(const char* name, std::string_view value) {
    Name(name);
    Quote(value);
    text_ += ',';
  }
  void Number(const char* name, uint64_t value) {
    Name(name);
    text_ += std::to_string(value);
    text_ += ',';
  }
  void Truth(const char* name, bool value) {
    Name(name);
    text_ += value ? "true," : "false,";
  }

 private:
  void Name(const char* name) {
    if (!name) return;
    Quote(name);
    text_ += ':';
  }
  void Quote(std::string_view value) {
    constexpr char kDigits[] = "0123456789abcdef";
    text_ += '"';
    for (const char c : value) {
      const auto byte = static_cast<unsigned char>(c);
      if (byte < 0x20) {
        text_ += "\\u00";
        text_ += kDigits[byte >> 4];
        text_ += kDigits[byte & 15];
      } else {
        if (c == '"' || c == '\\') text_ += '\\';
        text_ += c;
      }
    }
    text_ += '"';
  }

  std::string text_;
};

struct WarningName {
  int code;
  const char* name;
};
constexpr WarningName kWarningNames[] = {
    {PAGEREX_WARNING_TABLE_DAMAGED, "table_damaged"}, {PAGEREX_WARNING_OUTSIDE, "outside"},
    {PAGEREX_WARNING_ENDED_EARLY, "ended_early"},     {PAGEREX_WARNING_WORK_LIMIT, "work_limit"},
    {PAGEREX_WARNING_OUTPUT_FULL, "output_full"},     {PAGEREX_WARNING_PICTURE, "picture"},
    {PAGEREX_WARNING_LINK_REMOVED, "link_removed"},   {PAGEREX_WARNING_PICTURES_OFF, "pictures_off"},
    {PAGEREX_WARNING_FILE_SHORT, "file_short"},       {PAGEREX_WARNING_STOPPED, "stopped"},
};

const char* warningName(int code) {
  for (const WarningName& row : kWarningNames) {
    if (row.code == code) return row.name;
  }
  return "unknown";
}

constexpr const char* kPropertyKinds[] = {"text", "integer", "real", "boolean", "time"};

struct SummaryText {
  const char* name;
  const char* (*read)(const pagerex_summary& summary);
};
#define PAGEREX_TEXT(name, field)                                                     \
  SummaryText {                                                                       \
    name, [](const pagerex_summary& summary) -> const char* { return summary.field; } \
  }
constexpr SummaryText kSummaryTexts[] = {
    PAGEREX_TEXT("title", title),
    PAGEREX_TEXT("subject", subject),
    PAGEREX_TEXT("author", author),
    PAGEREX_TEXT("lastAuthor", last_author),
    PAGEREX_TEXT("keywords", keywords),
    PAGEREX_TEXT("comments", comments),
    PAGEREX_TEXT("category", category),
    PAGEREX_TEXT("manager", manager),
    PAGEREX_TEXT("company", company),
    PAGEREX_TEXT("templateName", template_name),
    PAGEREX_TEXT("application", application),
    PAGEREX_TEXT("revision", revision),
    PAGEREX_TEXT("language", language),
    PAGEREX_TEXT("created", created),
    PAGEREX_TEXT("saved", saved),
    PAGEREX_TEXT("printed", printed),
};
#undef PAGEREX_TEXT

struct SummaryNumber {
  const char* name;
  uint32_t pagerex_summary::*field;
};
constexpr SummaryNumber kSummaryNumbers[] = {
    {"editingMinutes", &pagerex_summary::editing_minutes},
    {"pages", &pagerex_summary::pages},
    {"words", &pagerex_summary::words},
    {"characters", &pagerex_summary::characters},
    {"paragraphs", &pagerex_summary::paragraphs},
    {"lines", &pagerex_summary::lines},
    {"security", &pagerex_summary::security},
};

void addCounts(Json& json, const pagerex_counts& counts) {
  json.Begin("counts", '{');
  json.Number("characters", counts.characters);
  json.Number("paragraphs", counts.paragraphs);
  json.Number("tables", counts.tables);
  json.Number("pictures", counts.pictures);
  json.Number("pages", counts.pages);
  json.End('}');
}

void addSummary(Json& json, const pagerex_summary& summary) {
  json.Begin("summary", '{');
  for (const SummaryText& row : kSummaryTexts) json.Text(row.name, row.read(summary));
  for (const SummaryNumber& row : kSummaryNumbers) json.Number(row.name, summary.*row.field);
  json.Begin("custom", '[');
  for (uint32_t i = 0; i < summary.custom_count; ++i) {
    const pagerex_property& property = summary.custom[i];
    json.Begin(nullptr, '{');
    json.Text("name", property.name);
    json.Text("value", property.value);
    json.Text("kind", kPropertyKinds[property.kind]);
    json.End('}');
  }
  json.End(']');
  json.End('}');
}

void addWarnings(Json& json, const pagerex_result& result) {
  json.Begin("warnings", '[');
  for (uint32_t i = 0; i < result.warning_count; ++i) {
    const pagerex_warning& warning = result.warnings[i];
    json.Begin(nullptr, '{');
    json.Text("code", warningName(warning.code));
    json.Truth("lost", warning.lost != 0);
    json.Number("count", warning.count);
    json.Text("where", warning.where);
    json.Text("sentence", warning.sentence);
    json.End('}');
  }
  json.End(']');
}

}  // namespace

std::string resultText(const pagerex_result& result) {
  Json json;
  json.Begin(nullptr, '{');
  json.Text("code", pagerex_result_name(result.code));
  json.Text("kind", pagerex_kind_name(result.kind));
  json.Text("sentence", result.sentence);
  json.Truth("complete", result.complete != 0);
  json.Number("warningsTotal", result.warnings_total);
  addWarnings(json, result);
  addCounts(json, result.counts);
  addSummary(json, result.summary);
  json.EndAll();
  return json.Take();
}

std::string infoText(const pagerex_document_info& info) {
  Json json;
  json.Begin(nullptr, '{');
  json.Text("kind", pagerex_kind_name(info.kind));
  json.Text("sentence", pagerex_kind_sentence(info.kind));
  json.Number("inputBytes", info.input_bytes);
  addCounts(json, info.counts);
  addSummary(json, info.summary);
  json.EndAll();
  return json.Take();
}

}  // namespace pagerex::web
