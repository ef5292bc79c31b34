#include "report.h"

#include <fcntl.h>
#include <rapidjson/document.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>
#include <unordered_map>

#include "json.h"
#include "summary.h"

namespace cli {

namespace {

void putWarnings(JsonWriter& json, const pagerex_result* result) {
  json.Key("warnings");
  json.StartArray();
  for (uint32_t i = 0; result && i < result->warning_count; ++i) {
    const pagerex_warning& warning = result->warnings[i];
    json.StartObject();
    json.Key("code");
    json.Int(warning.code);
    putText(json, "sentence", warning.sentence);
    putText(json, "where", warning.where);
    json.Key("count");
    json.Uint(warning.count);
    json.EndObject();
  }
  json.EndArray();
}

void putNumber(JsonWriter& json, const char* name, uint64_t number) {
  json.Key(name);
  json.Uint64(number);
}

}  // namespace

std::string reportLine(const Batch& batch, const Item& item, const Outcome& outcome) {
  rapidjson::StringBuffer buffer;
  JsonWriter json(buffer);
  json.SetMaxDecimalPlaces(3);
  json.StartObject();
  putPath(json, "path", item.path);
  putText(json, "status", nameOf(outcome.status));
  putText(json, "sentence", outcome.sentence);
  putText(json, "kind", pagerex_kind_name(outcome.kind));
  putNumber(json, "bytes", outcome.bytes);
  putText(json, "sha256", outcome.hasHash ? spelled(outcome.hash) : "");
  json.Key("milliseconds");
  json.Double(outcome.milliseconds);
  putPath(json, "output", isFailure(outcome.status) ? "" : item.output);
  putNumber(json, "written_bytes", outcome.result ? outcome.result->output_bytes : 0);
  putNumber(json, "written_files", outcome.result ? outcome.result->output_files : 0);
  putWarnings(json, outcome.result);
  if (outcome.result && !isFailure(outcome.status)) putSummary(json, outcome.result->summary);
  putText(json, "version", pagerex_version());
  putText(json, "options", batch.options);
  putText(json, "limits", batch.limits);
  json.EndObject();
  return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

// The file.

std::string Report::open(const std::string& path) {
  if (path.empty()) return "";
  file_ = Descriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0666));
  struct stat info;
  if (!file_ || fstat(file_.get(), &info) != 0) return path + ": " + std::strerror(errno);
  if (!S_ISREG(info.st_mode) || info.st_size == 0) return "";
  char first = 0, last = 0;
  if (pread(file_.get(), &first, 1, 0) != 1 || pread(file_.get(), &last, 1, info.st_size - 1) != 1)
    return path + ": " + std::strerror(errno);
  if (first != '{' && first != '\n') return path + ": is there, and is no report";
  // A line that broke off stays as it is, and harms no other.
  if (last != '\n' && !writeAll(file_.get(), "\n", 1)) return path + ": " + std::strerror(errno);
  return "";
}

bool Report::append(const std::string& line) {
  if (file_) isWhole_ = writeAll(file_.get(), line.data(), line.size()) && isWhole_;
  return isWhole_;
}

// What it held before.

namespace {

using Line = rapidjson::Document;

std::string_view textOf(const Line& line, const char* name) {
  const auto member = line.FindMember(name);
  if (member == line.MemberEnd() || !member->value.IsString()) return "";
  return {member->value.GetString(), member->value.GetStringLength()};
}

/// What depends on the file system, or on how much a document may take, is worth another try.
bool holds(const Line& line, const Batch& batch, Status status) {
  const bool dependsOnLimits =
      status == Status::kTimeout || status == Status::kMemory || status == Status::kCrash;
  const bool isPassing =
      status == Status::kUnreadable || status == Status::kWriteFailed || status == Status::kRefused;
  return !isPassing && textOf(line, "version") == pagerex_version() &&
         textOf(line, "options") == batch.options &&
         (!dependsOnLimits || textOf(line, "limits") == batch.limits);
}

void takeLine(const std::string& text, const std::unordered_map<std::string_view, Item*>& items,
              const Batch& batch) {
  Line line;
  line.Parse(text.data(), text.size());
  if (line.HasParseError() || !line.IsObject()) return;
  const std::string path = pathOf(textOf(line, "path"), textOf(line, "path_bytes"));
  const auto item = items.find(path);
  if (item == items.end()) return;
  Earlier earlier;
  earlier.isThere =
      readStatus(std::string(textOf(line, "status")), earlier.status) && holds(line, batch, earlier.status);
  earlier.sha256 = textOf(line, "sha256");
  earlier.output = pathOf(textOf(line, "output"), textOf(line, "output_bytes"));
  item->second->earlier = earlier;
}

}  // namespace

void readEarlier(const std::string& path, Batch& batch) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  std::string content;
  if (!file || !readAll(file.get(), content)) return;
  std::unordered_map<std::string_view, Item*> items;
  for (Item& item : batch.items) items[item.path] = &item;
  for (size_t from = 0, to; (to = content.find('\n', from)) != std::string::npos; from = to + 1)
    takeLine(content.substr(from, to - from), items, batch);
}

}  // namespace cli
