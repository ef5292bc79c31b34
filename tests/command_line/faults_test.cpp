// Documents that take their process down, and runs that are broken off: nobody else pays for it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string_view>

#include "command_line/program.h"

using support::TempFolder;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMemoryIsNotOurs = true;
#else
constexpr bool kMemoryIsNotOurs = *PAGEREX_EMULATOR != 0;
#endif

/// Twenty documents, of which the eighth is something else.
void fill(const TempFolder& folder, const std::string& eighth) {
  for (int i = 0; i < 20; ++i)
    folder.write("in/" + std::string(1, static_cast<char>('a' + i)) + ".doc",
                 i == 7 ? eighth : documentOf("Hello"));
}

std::vector<std::string> expected(const char* status) {
  std::vector<std::string> statuses;
  for (int i = 0; i < 20; ++i)
    statuses.push_back("in/" + std::string(1, static_cast<char>('a' + i)) +
                       ".doc: " + (i == 7 ? status : "ok"));
  return statuses;
}

/// The run goes on behind the eighth document, which alone gets the status, and leaves nothing behind.
void expectOnlyOne(const char* status, const std::string& eighth, const Arguments& options) {
  for (const char* jobs : {"-j1", "-j3"}) {
    const TempFolder folder;
    fill(folder, eighth);
    Arguments arguments = {"-o", "out", "-t", "normal", "--report", "report", jobs, "in"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Finished finished = faultyPagerex(arguments, folder.path());
    EXPECT_EQ(finished.exitCode, 2);
    EXPECT_THAT(finished.errors, HasSubstr(std::string("19 ok, 1 ") + status));
    EXPECT_EQ(statusesIn(folder), expected(status));
    EXPECT_FALSE(folder.exists("out/h.html"));
    EXPECT_THAT(folder.files(), Each(Not(EndsWith(".part"))));
    EXPECT_THAT(folder.files(), Each(Not(HasSubstr(".part/"))));
  }
}

/// Waits until the report has a line, and whatever stands behind it is on its way.
void waitForReport(const TempFolder& folder) {
  while (!folder.exists("report") || folder.read("report").find('\n') == std::string::npos) usleep(1000);
}

/// Until nothing of the process group is left. Its orphans must have come to this process.
void waitForGroup(pid_t group) {
  while (waitpid(-group, nullptr, 0) > 0 || errno == EINTR) continue;
}

}  // namespace

TEST(Faults, ACrashCostsOneDocument) {
  expectOnlyOne("crash", "CRASH AT ONCE", {});
}

TEST(Faults, ACrashInMidWriteLeavesNothing) {
  expectOnlyOne("crash", documentOf("CRASH LATER"), {});
}

TEST(Faults, AHangEndsWithItsTime) {
  expectOnlyOne("timeout", "HANG", {"--timeout", "0.3"});
  expectOnlyOne("timeout", documentOf("HANG LATER"), {"--timeout", "0.3"});
}

TEST(Faults, HungerEndsWithItsMemory) {
  if (kMemoryIsNotOurs) GTEST_SKIP() << "an emulator or a sanitizer has its own idea of memory";
  expectOnlyOne("memory", "EAT", {"--memory", "100M"});
}

TEST(Faults, MemoryIsCountedForEachDocument) {
  const TempFolder folder;
  for (const char* name : {"a.doc", "b.doc"}) folder.write(name, documentOf("Hello"));
  const Arguments arguments = {"-o", "out", "-j1", "a.doc", "b.doc", "--memory"};
  const auto withMemory = [&](const char* size) {
    Arguments all = arguments;
    all.push_back(size);
    return pagerex(all, folder.path()).errors;
  };
  EXPECT_THAT(withMemory("1K"), HasSubstr(": 2 memory\n"));
  EXPECT_THAT(withMemory("64M"), HasSubstr(": 2 ok\n"));
}

TEST(Faults, TheReportTellsWhatACrashWasAt) {
  const TempFolder folder;
  folder.write("a.doc", std::string("CRASH AT ONCE"));
  const Arguments arguments = {"-o", "out/", "--report", "report", "--resume", "a.doc"};
  EXPECT_EQ(faultyPagerex(arguments, folder.path()).exitCode, 2);
  const std::string line = linesOf(folder.read("report")).at(0);
  EXPECT_EQ(field(line, "kind"), "text");
  EXPECT_EQ(field(line, "sha256").size(), 64u);
  EXPECT_THAT(field(line, "sentence"), HasSubstr("Segmentation fault"));
  EXPECT_THAT(faultyPagerex(arguments, folder.path()).errors, HasSubstr("1 crash; 1 of them done before"));
}

TEST(Faults, ADocumentThatWasTooSlowIsTriedAgainWithMoreTime) {
  const TempFolder folder;
  folder.write("a.doc", std::string("HANG"));
  Arguments arguments = {"-o", "out/", "--report", "report", "--resume", "a.doc", "--timeout", "0.2"};
  EXPECT_THAT(faultyPagerex(arguments, folder.path()).errors, HasSubstr("1 timeout\n"));
  EXPECT_THAT(faultyPagerex(arguments, folder.path()).errors, HasSubstr("1 of them done before"));
  arguments.back() = "0.3";
  EXPECT_THAT(faultyPagerex(arguments, folder.path()).errors, HasSubstr("1 timeout\n"));
}

class Stopped : public testing::TestWithParam<int> {};

TEST_P(Stopped, LeavesASoundReportAndNothingHalf) {
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  const TempFolder folder;
  fill(folder, documentOf("WAIT"));
  for (const char* name : {"in/x.doc", "in/y.doc"}) folder.write(name, documentOf("WAIT"));
  Program program(PAGEREX_WITH_FAULTS, {"-o", "out", "--report", "report", "-j2", "in"}, folder.path());
  waitForReport(folder);
  kill(program.process(), GetParam());
  EXPECT_EQ(program.finish().signal, GetParam());
  waitForGroup(program.process());
  const std::string report = folder.read("report");
  EXPECT_EQ(report.back(), '\n');
  EXPECT_THAT(statusesIn(folder), Each(EndsWith(": ok")));
  EXPECT_THAT(folder.files(), Each(Not(HasSubstr(".part"))));
}

INSTANTIATE_TEST_SUITE_P(Signals, Stopped, testing::Values(SIGINT, SIGTERM, SIGKILL));

TEST(Faults, ARunThatWasKilledIsResumed) {
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  const TempFolder folder;
  fill(folder, documentOf("WAIT"));
  const Arguments arguments = {"-o", "out", "--report", "report", "--resume", "-j1", "in"};
  Program program(PAGEREX_WITH_FAULTS, arguments, folder.path());
  while (!folder.exists("report") || linesOf(folder.read("report")).size() < 7) usleep(1000);
  kill(program.process(), SIGKILL);
  program.finish();
  waitForGroup(program.process());
  EXPECT_THAT(pagerex(arguments, folder.path()).errors, HasSubstr("20 ok; 7 of them done before"));
  EXPECT_EQ(statusesIn(folder), expected("ok"));
}

TEST(Faults, AStoppedDocumentLeavesNothing) {
  const TempFolder folder;
  Program program(PAGEREX_WITH_FAULTS, {"-o", "x.html", "-"}, folder.path(), documentOf("WAIT"));
  while (program.errors().empty()) usleep(1000);
  kill(program.process(), SIGTERM);
  EXPECT_EQ(program.finish().signal, SIGTERM);
  EXPECT_THAT(folder.files(), testing::IsEmpty());
}
