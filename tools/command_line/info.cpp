#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "files.h"
#include "json.h"
#include "messages.h"
#include "one_document.h"
#include "single_call.h"
#include "sized.h"
#include "summary.h"

namespace cli {

namespace {

struct Info {
  int kind = PAGEREX_KIND_UNKNOWN;
  uint64_t bytes = 0;
  Sha256 hash = {};
  bool isOpened = false;
  pagerex_result result = {};
  pagerex_document_info document = {};
};

void putCounts(JsonWriter& json, const pagerex_counts& counts) {
  const std::pair<const char*, uint64_t> numbers[] = {{"characters", counts.characters},
                                                      {"paragraphs", counts.paragraphs},
                                                      {"tables", counts.tables},
                                                      {"pictures", counts.pictures},
                                                      {"pages", counts.pages}};
  json.Key("counts");
  json.StartObject();
  for (const auto& [name, count] : numbers) {
    json.Key(name);
    json.Uint64(count);
  }
  json.EndObject();
}

void print(const std::string& path, const Info& info) {
  rapidjson::StringBuffer buffer;
  JsonWriter json(buffer);
  json.StartObject();
  putPath(json, "path", path);
  putText(json, "kind", pagerex_kind_name(info.kind));
  putText(json, "sentence", pagerex_kind_sentence(info.kind));
  json.Key("bytes");
  json.Uint64(info.bytes);
  putText(json, "sha256", spelled(info.hash));
  putText(json, "result", pagerex_result_name(info.result.code));
  if (info.isOpened) {
    putCounts(json, info.document.counts);
    putSummary(json, info.document.summary);
  }
  putText(json, "version", pagerex_version());
  json.EndObject();
  std::printf("%s\n", buffer.GetString());
}

void open(const pagerex_input& input, const Request& request, Info& info) {
  auto limits = sized<pagerex_limits>();
  limits.memory = request.memory;
  limits.deadline_ms = request.timeoutMs;
  pagerex_document* document = nullptr;
  info.result.size = sizeof info.result;
  info.document.size = sizeof info.document;
  if (pagerex_open(&input, &limits, &document, &info.result) == PAGEREX_RESULT_OK)
    info.isOpened = pagerex_info(document, &info.document) == PAGEREX_RESULT_OK;
  pagerex_close(document);
}

/// False if the file cannot be read; it has been said why.
bool tell(const std::string& path, const Request& request) {
  Info info;
  std::string content, error;
  auto input = sized<pagerex_input>();
  if (!prepareInput(path, content, input))
    return fail(0, std::string("standard input: ") + std::strerror(errno));
  if (input.path) {
    struct stat file;
    const Descriptor opened = openRegular(path, file, error);
    if (opened && !sha256OfFile(opened.get(), info.hash)) error = std::strerror(errno);
    if (!error.empty()) return fail(0, shown(path) + ": " + error);
    info.bytes = static_cast<uint64_t>(file.st_size);
    info.kind = detectFile(path, file);
  } else {
    info.bytes = content.size();
    info.kind = pagerex_detect(content.data(), content.size());
    info.hash = sha256Of(content);
  }
  open(input, request, info);
  print(path, info);
  return true;
}

}  // namespace

int tellInfo(const Request& request) {
  std::signal(SIGPIPE, SIG_IGN);
  bool areRead = true;
  for (const std::string& path : request.files) areRead = tell(path, request) && areRead;
  if (std::fflush(stdout) != 0 && errno != EPIPE)
    areRead = fail(0, std::string("standard output: ") + std::strerror(errno));
  return areRead ? kSuccess : kSomeFailed;
}

}  // namespace cli
