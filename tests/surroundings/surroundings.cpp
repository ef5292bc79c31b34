#include "surroundings/surroundings.h"

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>

#include "support/drawing_writer.h"

namespace fs = std::filesystem;

namespace {

std::function<void(int)> pageHook;

void finishPage(int page, const char*) {
  if (pageHook) pageHook(page);
}

int goOn() {
  return PAGEREX_GO_ON;
}

bool writeText(const char* path, const std::string& text) {
  return static_cast<bool>(std::ofstream(path) << text << std::flush);
}

/// One in which this user may mount.
bool enterUserNamespace() {
  const std::string user = std::to_string(geteuid()), group = std::to_string(getegid());
  if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  return writeText("/proc/self/setgroups", "deny") && writeText("/proc/self/uid_map", "0 " + user + " 1") &&
         writeText("/proc/self/gid_map", "0 " + group + " 1");
}

/// The functions of "shapejs.js" are written once in a process, so that only what follows can be compared.
void writeScriptOnce() {
  static bool written = false;
  if (written) return;
  const support::TempFolder folder;
  richDocument().save(folder.path("in.doc"));
  PageRex(folder.path("in.doc").c_str(), folder.path("out.htm").c_str(), 0, nullptr);
  written = true;
}

}  // namespace

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << "result " << outcome.result << ", error " << outcome.error << ", signal " << outcome.killedBy
       << (outcome.whole ? ", whole" : "") << (outcome.skipped ? ", skipped" : "");
}

Outcome convert(const std::string& source, const std::string& target,
                const std::vector<std::string>& options) {
  std::vector<char*> argv;
  for (const std::string& option : options) argv.push_back(const_cast<char*>(option.c_str()));
  const int result = PageRex(source.c_str(), target.c_str(), static_cast<int>(argv.size()), argv.data());
  return outcome(result, PageRexOutputError());
}

Outcome convertPages(const std::string& source, const std::string& target, int pageSize,
                     const std::function<void(int)>& onPage) {
  pageHook = onPage;
  IPageRexCallBack callbacks = {finishPage, nullptr, goOn};
  const int result = pageRex(source.c_str(), target.c_str(), pageSize, &callbacks);
  pageHook = nullptr;
  return outcome(result, PageRexOutputError());
}

Outcome inChild(const std::function<Outcome()>& work) {
  int ends[2];
  if (pipe(ends) != 0) return {.skipped = true};
  const pid_t child = fork();
  if (child == 0) {
    const Outcome outcome = work();
    const bool told = write(ends[1], &outcome, sizeof outcome) == ssize_t{sizeof outcome};
    _exit(told ? 0 : 1);
  }
  close(ends[1]);
  Outcome outcome;
  const bool told = read(ends[0], &outcome, sizeof outcome) == ssize_t{sizeof outcome};
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (!told) outcome = {.killedBy = WIFSIGNALED(status) ? WTERMSIG(status) : -1};
  return outcome;
}

bool becomeUser() {
  if (geteuid() != 0) return true;
  constexpr unsigned kNobody = 65534;
  return setgroups(0, nullptr) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0;
}

bool mountTmpfs(const std::string& folder, const std::string& options, unsigned long flags) {
  if (unshare(CLONE_NEWNS) != 0 && !enterUserNamespace()) return false;
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  return mount("tmpfs", folder.c_str(), "tmpfs", flags, options.c_str()) == 0;
}

Finished runShell(const std::string& command) {
  FILE* const pipe = popen(("{ " + command + "; } 2>&1 </dev/null").c_str(), "r");
  Finished finished;
  char buffer[4096];
  while (const size_t size = fread(buffer, 1, sizeof buffer, pipe)) finished.output.append(buffer, size);
  const int status = pclose(pipe);
  if (WIFEXITED(status)) finished.exitCode = WEXITSTATUS(status);
  return finished;
}

size_t openDescriptors() {
  return static_cast<size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

support::WordDocument longDocument(int count) {
  support::WordDocument document;
  for (int i = 1; i <= count; ++i) document.paragraph("This is paragraph number " + std::to_string(i) + ".");
  return document;
}

support::WordDocument richDocument() {
  using namespace support::drawing;
  support::WordDocument document;
  Inline picture;
  picture.shape = Shape(75).props(Props().number(0x4104, 1));
  picture.blips = {Blip{.data = {7, 8, 9}}};
  const support::Sprms run = pictureRun(document, picture);
  document.style(0, support::Style().name("Normal").sti(0));
  document.style(1, support::Style().name("heading 1").sti(1).papx({support::sprm(0x2640, 0)}));
  document.paragraph("A heading").istd(1);
  const size_t place = 12;
  document.paragraph().run("a ").special(8).run("b").special(1, run);
  document.paragraph("A note").footnote(" of the foot");
  Drawing().shape(place, Shape(3), {.rect = {0, 0, 2000, 1000}}).addTo(document);
  return document;
}

Place::Place(const support::WordDocument& document) {
  writeScriptOnce();
  document.save(source());
  folder_.write("bystander.txt", std::string("none of its business"));
  folder_.write("elsewhere/victim.txt", std::string("do not touch"));
  folder_.write("out.files.txt/near", std::string("a name that begins alike"));
  settle();
}

bool Place::untouched(std::vector<std::string> except) const {
  Snapshot before = before_;
  for (const std::string& name : except) before.erase(name);
  except.insert(except.end(), kOutput.begin(), kOutput.end());
  return snapshotOf(path(), except) == before;
}
