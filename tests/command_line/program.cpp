#include "command_line/program.h"

#include <fcntl.h>
#include <rapidjson/document.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace {

/// The words that start a program, which in a cross build are those of the emulator first.
Arguments wordsOf(const std::string& program, const Arguments& arguments) {
  std::istringstream emulator(PAGEREX_EMULATOR);
  Arguments words;
  for (std::string word; emulator >> word;) words.push_back(word);
  words.push_back(program);
  words.insert(words.end(), arguments.begin(), arguments.end());
  return words;
}

void openAs(int number, const std::string& path, int flags) {
  const int file = open(path.c_str(), flags, 0600);
  if (file < 0 || dup2(file, number) < 0) _exit(126);
}

}  // namespace

Program::Program(const std::string& path, const Arguments& arguments, const std::string& folder,
                 const std::string& input) {
  Arguments words = wordsOf(path, arguments);
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  streams_.write("in", input);
  process_ = fork();
  if (process_ != 0) return;
  setpgid(0, 0);
  openAs(0, streams_.path("in"), O_RDONLY);
  openAs(1, streams_.path("out"), O_WRONLY | O_CREAT);
  openAs(2, streams_.path("err"), O_WRONLY | O_CREAT);
  if (chdir(folder.c_str()) == 0) execvp(argv[0], argv.data());
  _exit(127);
}

Finished Program::finish() {
  int status = 0;
  waitpid(process_, &status, 0);
  Finished finished;
  if (WIFEXITED(status)) finished.exitCode = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) finished.signal = WTERMSIG(status);
  finished.output = streams_.read("out");
  finished.errors = streams_.read("err");
  return finished;
}

Finished pagerex(const Arguments& arguments, const std::string& folder, const std::string& input) {
  return Program(PAGEREX_CLI, arguments, folder, input).finish();
}

Finished faultyPagerex(const Arguments& arguments, const std::string& folder) {
  return Program(PAGEREX_WITH_FAULTS, arguments, folder).finish();
}

std::string documentOf(const std::string& text) {
  support::WordDocument document;
  document.paragraph(text.c_str());
  const support::Bytes bytes = document.build();
  return {bytes.begin(), bytes.end()};
}

std::vector<std::string> linesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string field(const std::string& line, const char* name) {
  rapidjson::Document json;
  json.Parse(line.data(), line.size());
  if (json.HasParseError() || !json.IsObject() || !json.HasMember(name)) return "?";
  const rapidjson::Value& value = json[name];
  if (value.IsString()) return {value.GetString(), value.GetStringLength()};
  return value.IsNumber() ? std::to_string(value.GetDouble()) : "?";
}

std::vector<std::string> statusesIn(const support::TempFolder& folder, const std::string& report) {
  std::vector<std::string> statuses;
  for (const std::string& line : linesOf(folder.read(report)))
    statuses.push_back(field(line, "path") + ": " + field(line, "status"));
  std::sort(statuses.begin(), statuses.end());
  return statuses;
}
