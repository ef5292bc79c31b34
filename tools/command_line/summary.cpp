#include "summary.h"

#include <cstddef>
#include <iterator>

namespace cli {

namespace {

struct Field {
  const char* name;
  size_t offset;
};
constexpr Field kTexts[] = {
    {"title", offsetof(pagerex_summary, title)},
    {"subject", offsetof(pagerex_summary, subject)},
    {"author", offsetof(pagerex_summary, author)},
    {"last_author", offsetof(pagerex_summary, last_author)},
    {"keywords", offsetof(pagerex_summary, keywords)},
    {"comments", offsetof(pagerex_summary, comments)},
    {"category", offsetof(pagerex_summary, category)},
    {"manager", offsetof(pagerex_summary, manager)},
    {"company", offsetof(pagerex_summary, company)},
    {"template", offsetof(pagerex_summary, template_name)},
    {"application", offsetof(pagerex_summary, application)},
    {"revision", offsetof(pagerex_summary, revision)},
    {"language", offsetof(pagerex_summary, language)},
    {"created", offsetof(pagerex_summary, created)},
    {"saved", offsetof(pagerex_summary, saved)},
    {"printed", offsetof(pagerex_summary, printed)},
};
constexpr Field kNumbers[] = {
    {"editing_minutes", offsetof(pagerex_summary, editing_minutes)},
    {"pages", offsetof(pagerex_summary, pages)},
    {"words", offsetof(pagerex_summary, words)},
    {"characters", offsetof(pagerex_summary, characters)},
    {"paragraphs", offsetof(pagerex_summary, paragraphs)},
    {"lines", offsetof(pagerex_summary, lines)},
    {"security", offsetof(pagerex_summary, security)},
};
/// In the order of the library's numbers.
constexpr const char* kKinds[] = {"text", "integer", "real", "boolean", "time"};

void putCustom(JsonWriter& json, const pagerex_summary& summary) {
  json.Key("custom");
  json.StartArray();
  for (uint32_t i = 0; i < summary.custom_count; ++i) {
    const pagerex_property& property = summary.custom[i];
    const auto kind = static_cast<size_t>(property.kind);
    json.StartObject();
    putText(json, "name", property.name);
    putText(json, "value", property.value);
    putText(json, "kind", kind < std::size(kKinds) ? kKinds[kind] : "unknown");
    json.EndObject();
  }
  json.EndArray();
}

}  // namespace

void putSummary(JsonWriter& json, const pagerex_summary& summary) {
  const char* const first = reinterpret_cast<const char*>(&summary);
  json.Key("summary");
  json.StartObject();
  for (const Field& field : kTexts) {
    if (first[field.offset]) putText(json, field.name, first + field.offset);
  }
  for (const Field& field : kNumbers) {
    const uint32_t number = *reinterpret_cast<const uint32_t*>(first + field.offset);
    if (number == 0) continue;
    json.Key(field.name);
    json.Uint(number);
  }
  if (summary.custom_count) putCustom(json, summary);
  json.EndObject();
}

}  // namespace cli
