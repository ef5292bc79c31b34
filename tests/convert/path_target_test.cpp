// Results at a path: whole or not at all, and nothing replaced that no conversion has made.

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>

#include "convert/host.h"
#include "convert/sample_files.h"
#include "mutation/rich_documents.h"
#include "support/corpus.h"
#include "support/snapshot.h"
#include "support/temp_folder.h"

using namespace convert_test;
namespace fs = std::filesystem;

namespace {

/// A document in a folder, and the place of its result in another.
class PathTarget : public testing::Test {
 protected:
  Result run(const std::string& target, const char* format = "normal") {
    return convertPaths(source_, target, format);
  }
  Result run() { return run(target_); }
  support::Snapshot now() const { return support::snapshotOf(to_.path()); }
  /// The call ends so, and nothing changes.
  void expectRefused(int code, int error, const std::string& target) {
    const support::Snapshot before = now();
    const Result result = run(target);
    EXPECT_EQ(result.code, code) << result.sentence;
    EXPECT_EQ(result.system_error, error);
    EXPECT_TRUE(result.isOne());
    EXPECT_EQ(support::differences(now(), before), "");
  }
  void expectRefused() { expectRefused(PAGEREX_RESULT_REFUSED, EEXIST, target_); }

  const support::TempFolder from_, to_;
  const std::string source_ = from_.write("in.doc", smallDocument());
  const std::string target_ = to_.path("out.html");
  int steps_ = 0;  ///< of progress that were told
};

TEST_F(PathTarget, InAMissingFolder) {
  expectRefused(PAGEREX_RESULT_CANNOT_WRITE, ENOENT, to_.path("none/out.html"));
}

TEST_F(PathTarget, BelowAFile) {
  to_.write("file", std::string("x"));
  expectRefused(PAGEREX_RESULT_CANNOT_WRITE, ENOTDIR, to_.path("file/out.html"));
}

TEST_F(PathTarget, ThatIsAFolder) {
  fs::create_directory(target_);
  expectRefused(PAGEREX_RESULT_CANNOT_WRITE, EISDIR, target_);
}

TEST_F(PathTarget, ThatIsNoName) {
  for (const char* name : {"/", "/.", "/.."})
    expectRefused(PAGEREX_RESULT_CANNOT_WRITE, EISDIR, to_.path() + name);
  expectRefused(PAGEREX_RESULT_CANNOT_WRITE, EINVAL, to_.path("a\nb.html"));
  expectRefused(PAGEREX_RESULT_CANNOT_WRITE, ENAMETOOLONG, to_.path(std::string(231, 'x')));
}

TEST_F(PathTarget, ThatIsItsOwnFilesFolder) {
  expectRefused(PAGEREX_RESULT_CANNOT_WRITE, EINVAL, to_.path("out.files"));
}

TEST_F(PathTarget, OfALongName) {
  const std::string target = to_.path(std::string(225, 'x') + ".html");
  EXPECT_EQ(run(target).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(run(target).code, PAGEREX_RESULT_OK);
}

TEST_F(PathTarget, ThatIsTheInput) {
  const std::string target = from_.path("in.doc"), hard = from_.path("hard.html"),
                    soft = from_.path("soft.html");
  fs::create_hard_link(source_, hard);
  fs::create_symlink("in.doc", soft);
  for (const std::string& each : {target, hard, soft})
    EXPECT_EQ(run(each).code, PAGEREX_RESULT_REFUSED) << each;
  EXPECT_EQ(from_.read("in.doc"), std::string(smallDocument().begin(), smallDocument().end()));
  EXPECT_EQ(from_.files().size(), 3u);
}

TEST_F(PathTarget, ThatHoldsWhatNoConversionMakes) {
  for (const SampleFile& file : sampleFiles()) {
    if (file.kind == PAGEREX_KIND_UNKNOWN) continue;  // some might be pages
    constexpr int kReplaced[] = {PAGEREX_KIND_EMPTY, PAGEREX_KIND_TEXT, PAGEREX_KIND_HTML, PAGEREX_KIND_XML,
                                 PAGEREX_KIND_MHTML};
    to_.write("out.html", file.bytes);
    const bool isReplaced =
        std::find(std::begin(kReplaced), std::end(kReplaced), file.kind) != std::end(kReplaced);
    if (!isReplaced) expectRefused();
    if (isReplaced) {
      EXPECT_EQ(run().code, PAGEREX_RESULT_OK) << file.name;
    }
    fs::remove_all(to_.path("out.files"));
  }
}

TEST_F(PathTarget, ThatHoldsAPicture) {
  to_.write("out.html", support::Bytes{0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13});
  expectRefused();
  to_.write("out.html", support::Bytes{0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J', 'F', 'I', 'F', 0});
  expectRefused();
}

TEST_F(PathTarget, ThatHoldsBytesThatAreNoText) {
  to_.write("out.html", std::string("text\0text", 9));
  expectRefused();
  to_.write("out.html", std::string("\xC3\x28\x01"));
  expectRefused();
}

TEST_F(PathTarget, ThatIsADevice) {
  EXPECT_EQ(run("/dev/null").code, PAGEREX_RESULT_REFUSED);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(PathTarget, ThatIsAPipe) {
  ASSERT_EQ(mkfifo(target_.c_str(), 0666), 0);
  expectRefused();
}

TEST_F(PathTarget, ThatIsALinkIsWrittenThrough) {
  fs::create_directory(to_.path("real"));
  to_.write("real/page.html", std::string("older"));
  fs::create_symlink("real/page.html", target_);
  EXPECT_EQ(run().code, PAGEREX_RESULT_OK);
  EXPECT_TRUE(fs::is_symlink(target_));
  EXPECT_EQ(to_.read("real/page.html").find("older"), std::string::npos);
  EXPECT_TRUE(to_.exists("real/page.files"));
  EXPECT_FALSE(to_.exists("out.files"));
}

TEST_F(PathTarget, ThatIsALinkToNothing) {
  fs::create_symlink("none.html", target_);
  expectRefused();
}

TEST_F(PathTarget, WithForeignFilesInItsFolder) {
  to_.write("out.files/thesis.txt", std::string("x"));
  expectRefused();
}

TEST_F(PathTarget, WithAFolderInItsFolder) {
  fs::create_directories(to_.path("out.files/1.htm"));
  expectRefused();
}

TEST_F(PathTarget, WithALinkInItsFolder) {
  to_.write("victim.txt", std::string("x"));
  fs::create_directory(to_.path("out.files"));
  fs::create_symlink("../victim.txt", to_.path("out.files/1.htm"));
  expectRefused();
}

TEST_F(PathTarget, WithALinkOrAFileInThePlaceOfItsFolder) {
  fs::create_directory(to_.path("elsewhere"));
  fs::create_symlink("elsewhere", to_.path("out.files"));
  expectRefused();
  fs::remove(to_.path("out.files"));
  to_.write("out.files", std::string("x"));
  expectRefused();
}

TEST_F(PathTarget, WithAnEmptyFolder) {
  fs::create_directory(to_.path("out.files"));
  EXPECT_EQ(run().code, PAGEREX_RESULT_OK);
}

TEST_F(PathTarget, TakesThePlaceOfAnOlderResult) {
  const support::TempFolder fresh;
  ASSERT_EQ(run(fresh.path("out.html")).code, PAGEREX_RESULT_OK);
  for (const std::string& older : formats()) {
    fs::remove_all(to_.path("out.files"));
    ASSERT_EQ(convertPaths(from_.write("rich.doc", richDocument()), target_, older.c_str()).code,
              PAGEREX_RESULT_OK);
    EXPECT_EQ(run().code, PAGEREX_RESULT_OK) << older;
    EXPECT_EQ(support::differences(now(), support::snapshotOf(fresh.path())), "") << older;
  }
}

TEST_F(PathTarget, TakesThePlaceOfItsOwnResultWhateverThatBeginsWith) {
  std::vector<std::string> sources;
  for (const mutation::NamedDocument& made : mutation::richDocuments())
    sources.push_back(from_.write(made.name + std::string(".doc"), made.document.build()));
  for (const auto& real : support::corpusDocuments()) sources.push_back(real.string());
  for (const std::string& source : sources) {
    for (const std::string& format : formats()) {
      fs::remove_all(to_.path("out.files"));
      fs::remove(target_);
      if (convertPaths(source, target_, format.c_str()).code != PAGEREX_RESULT_OK) continue;
      EXPECT_EQ(convertPaths(source, target_, format.c_str()).code, PAGEREX_RESULT_OK) << source << format;
    }
  }
}

TEST_F(PathTarget, KeepsTheOlderResultWhereItsDocumentIsNone) {
  ASSERT_EQ(run().code, PAGEREX_RESULT_OK);
  from_.write("in.doc", std::string("no document"));
  expectRefused(PAGEREX_RESULT_NOT_WORD, 0, target_);
}

TEST_F(PathTarget, LeavesNoFolderWhereTheMainFileCannotTakeItsPlace) {
  Host host(smallDocument());
  host.onCall = [this](Call call) {
    if (call == Call::kProgress && steps_++ == 0) fs::create_directory(target_);
    return true;
  };
  const Result result = convert(host.memory(), outputTo(target_), host.options("normal"));
  EXPECT_EQ(result.code, PAGEREX_RESULT_CANNOT_WRITE);
  EXPECT_EQ(result.system_error, EISDIR);
  EXPECT_EQ(now().size(), 1u);
}

TEST_F(PathTarget, KeepsTheOlderFilesWhereTheMainFileCannotTakeItsPlace) {
  ASSERT_EQ(run().code, PAGEREX_RESULT_OK);
  const support::Snapshot older = support::snapshotOf(to_.path("out.files"));
  Host host(richDocument());
  host.onCall = [this](Call call) {
    if (call == Call::kProgress && steps_++ == 0) fs::remove(target_), fs::create_directory(target_);
    return true;
  };
  EXPECT_EQ(convert(host.memory(), outputTo(target_), host.options("normal")).code,
            PAGEREX_RESULT_CANNOT_WRITE);
  EXPECT_EQ(support::differences(support::snapshotOf(to_.path("out.files")), older), "");
  EXPECT_EQ(now().size(), older.size() + 2);
}

TEST_F(PathTarget, DoesNotReplaceAFolderThatOthersPutThereMeanwhile) {
  Host host(smallDocument());
  host.onCall = [this](Call call) {
    if (call == Call::kProgress && steps_++ == 0) to_.write("out.files/thesis.txt", std::string("x"));
    return true;
  };
  EXPECT_EQ(convert(host.memory(), outputTo(target_), host.options("normal")).code,
            PAGEREX_RESULT_CANNOT_WRITE);
  EXPECT_EQ(to_.files(), std::vector<std::string>{"out.files/thesis.txt"});
}

/// In a child, whose files may not be longer than this: the code of the call.
int codeWithFileSize(rlim_t bytes, const std::string& source, const std::string& target) {
  const pid_t child = fork();
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
    const Result result = convertPaths(source, target);
    _exit(result.code == PAGEREX_RESULT_CANNOT_WRITE && result.system_error != EFBIG ? 100 : result.code);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(PathTarget, KeepsTheOlderResultWhereFilesMayNotBeSoLong) {
  ASSERT_EQ(run().code, PAGEREX_RESULT_OK);
  const support::Snapshot older = now();
  size_t longest = 0;
  for (const auto& [name, content] : filesOf(smallDocument(), "normal"))
    longest = std::max(longest, content.size());
  for (size_t bytes = 0; bytes < longest; bytes += longest / 40) {
    EXPECT_EQ(codeWithFileSize(bytes, source_, target_), PAGEREX_RESULT_CANNOT_WRITE) << bytes;
    ASSERT_EQ(support::differences(now(), older), "") << bytes;
  }
  EXPECT_EQ(codeWithFileSize(longest, source_, target_), PAGEREX_RESULT_OK);
}

TEST_F(PathTarget, MayBeGivenByALonelyName) {
  const fs::path before = fs::current_path();
  fs::current_path(to_.path());
  const int code = run("out.html").code;
  fs::current_path(before);
  EXPECT_EQ(code, PAGEREX_RESULT_OK);
  EXPECT_TRUE(to_.exists("out.files/1.htm"));
}

}  // namespace
