// Inputs that are not there, are no documents, or fail while they are read.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <filesystem>
#include <limits>
#include <stdexcept>

#include "convert/host.h"
#include "support/temp_folder.h"
#include "support/word_document_writer.h"

using namespace convert_test;
namespace fs = std::filesystem;

namespace {

Result opened(const pagerex_input& input) {
  return Document(input).result;
}

class PathFaults : public testing::Test {
 protected:
  Result open(const std::string& path) { return opened(inputFrom(path)); }
  const support::TempFolder folder_;
};

TEST_F(PathFaults, NoSuchFile) {
  const Result result = open(folder_.path("none.doc"));
  EXPECT_EQ(result.code, PAGEREX_RESULT_UNREADABLE);
  EXPECT_EQ(result.system_error, ENOENT);
  EXPECT_STREQ(result.sentence, "The input could not be read: No such file or directory.");
}

TEST_F(PathFaults, NoName) {
  EXPECT_EQ(open("").code, PAGEREX_RESULT_UNREADABLE);
}

TEST_F(PathFaults, Folder) {
  const Result result = open(folder_.path());
  EXPECT_EQ(result.code, PAGEREX_RESULT_UNREADABLE);
  EXPECT_EQ(result.system_error, EISDIR);
}

TEST_F(PathFaults, Device) {
  for (const char* device : {"/dev/zero", "/dev/null", "/dev/full"})
    EXPECT_EQ(open(device).code, PAGEREX_RESULT_UNREADABLE) << device;
}

TEST_F(PathFaults, PipeThatNobodyWritesTo) {
  const std::string pipe = folder_.path("pipe.doc");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
  EXPECT_EQ(open(pipe).code, PAGEREX_RESULT_UNREADABLE);
}

TEST_F(PathFaults, LinkToNothingAndInARing) {
  fs::create_symlink("none.doc", folder_.path("dangling.doc"));
  fs::create_symlink("ring.doc", folder_.path("ring.doc"));
  EXPECT_EQ(open(folder_.path("dangling.doc")).system_error, ENOENT);
  EXPECT_EQ(open(folder_.path("ring.doc")).system_error, ELOOP);
}

TEST_F(PathFaults, NameTooLong) {
  EXPECT_EQ(open(folder_.path(std::string(300, 'x'))).system_error, ENAMETOOLONG);
}

TEST_F(PathFaults, EmptyFile) {
  const Result result = open(folder_.write("empty.doc", support::Bytes()));
  EXPECT_EQ(result.code, PAGEREX_RESULT_NOT_WORD);
  EXPECT_EQ(result.kind, PAGEREX_KIND_EMPTY);
}

TEST_F(PathFaults, AnotherKind) {
  const Result result = open(folder_.write("a.doc", std::string("{\\rtf1 x}")));
  EXPECT_EQ(result.code, PAGEREX_RESULT_NOT_WORD);
  EXPECT_EQ(result.kind, PAGEREX_KIND_RTF);
  EXPECT_TRUE(result.isOne());
}

TEST_F(PathFaults, LinkIsFollowed) {
  folder_.write("in.doc", smallDocument());
  fs::create_symlink("in.doc", folder_.path("link.doc"));
  EXPECT_EQ(open(folder_.path("link.doc")).code, PAGEREX_RESULT_OK);
}

TEST_F(PathFaults, FileCutWhileItIsOpen) {
  for (const size_t left : {size_t{0}, size_t{100}, size_t{512}, size_t{5000}, richDocument().size() - 1}) {
    const std::string path = folder_.write("in.doc", richDocument());
    Host host;
    Document document(inputFrom(path));
    ASSERT_EQ(document.code(), PAGEREX_RESULT_OK);
    fs::resize_file(path, left);
    const int code = document.write(Host::quiet("normal"), host.sink());
    const bool isWhole = code == PAGEREX_RESULT_OK && host.files() == filesOf(richDocument(), "normal");
    EXPECT_TRUE(isWhole || code == PAGEREX_RESULT_UNREADABLE) << left << ": " << document.result.sentence;
    EXPECT_EQ(host.complaints(), "");
  }
}

TEST_F(PathFaults, FileRemovedWhileItIsOpen) {
  const std::string path = folder_.write("in.doc", richDocument());
  Host host;
  Document document(inputFrom(path));
  fs::remove(path);
  EXPECT_EQ(document.write(Host::quiet("normal"), host.sink()), PAGEREX_RESULT_OK);
  EXPECT_EQ(host.files(), filesOf(richDocument(), "normal"));
}

TEST_F(PathFaults, FileLargerThanTheFormatCanHold) {
  const std::string path = folder_.write("in.doc", richDocument());
  fs::resize_file(path, (uintmax_t{1} << 32) + 1);
  EXPECT_EQ(open(path).code, PAGEREX_RESULT_TOO_LARGE);
}

TEST(MemoryFault, NoBytes) {
  Host host;
  const Result result = opened(host.memory());
  EXPECT_EQ(result.code, PAGEREX_RESULT_NOT_WORD);
  EXPECT_EQ(result.kind, PAGEREX_KIND_EMPTY);
}

TEST(MemoryFault, EveryBeginningOfADocument) {
  const support::Bytes& whole = smallDocument();
  for (size_t length = 0; length < whole.size(); length += 97) {
    Host host(support::Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)));
    const Result result = convert(host.memory(), host.sink(), Host::quiet("normal"));
    const bool isTold = result.code == PAGEREX_RESULT_NOT_WORD || result.code == PAGEREX_RESULT_DAMAGED;
    const bool isWhole = result.code == PAGEREX_RESULT_OK && host.files() == filesOf(whole, "normal");
    EXPECT_TRUE(isTold || isWhole || !result.complete) << length << ": " << result.sentence;
    EXPECT_EQ(host.complaints(), "") << length;
  }
}

/// Functions of which one lies or fails.
class FunctionFaults : public testing::Test {
 protected:
  /// Of read_at, in the place of the host's own.
  using Read = int64_t (*)(void* user, uint64_t offset, void* buffer, size_t length);
  Result opened(Read read) {
    pagerex_input input = host_.functions();
    input.read_at = read;
    return ::opened(input);
  }
  Result openedWithCount(int64_t (*count)(void*)) {
    pagerex_input input = host_.functions();
    input.byte_count = count;
    return convert(input, host_.sink(), Host::quiet("normal"));
  }

  Host host_{richDocument()};
};

TEST_F(FunctionFaults, ReadsNothing) {
  EXPECT_EQ(opened([](void*, uint64_t, void*, size_t) -> int64_t { return 0; }).code,
            PAGEREX_RESULT_UNREADABLE);
}

TEST_F(FunctionFaults, ReadsLessThanNothing) {
  const Result result = opened([](void*, uint64_t, void*, size_t) -> int64_t {
    errno = ENXIO;
    return -1;
  });
  EXPECT_EQ(result.code, PAGEREX_RESULT_UNREADABLE);
  EXPECT_EQ(result.system_error, ENXIO);
}

TEST_F(FunctionFaults, ReadsTheLeastNumber) {
  EXPECT_EQ(opened([](void*, uint64_t, void*, size_t) -> int64_t { return INT64_MIN; }).code,
            PAGEREX_RESULT_UNREADABLE);
}

TEST_F(FunctionFaults, ReadsMoreThanWasAskedFor) {
  EXPECT_EQ(opened([](void*, uint64_t, void*, size_t length) -> int64_t {
              return static_cast<int64_t>(length) + 1;
            }).code,
            PAGEREX_RESULT_UNREADABLE);
  EXPECT_EQ(opened([](void*, uint64_t, void*, size_t) -> int64_t { return INT64_MAX; }).code,
            PAGEREX_RESULT_UNREADABLE);
}

TEST_F(FunctionFaults, ThrowsWhileReading) {
  EXPECT_EQ(
      opened([](void*, uint64_t, void*, size_t) -> int64_t { throw std::runtime_error("of the host"); }).code,
      PAGEREX_RESULT_CANCELED);
}

TEST_F(FunctionFaults, CountsLessThanNothing) {
  EXPECT_EQ(openedWithCount([](void*) -> int64_t { return -1; }).code, PAGEREX_RESULT_UNREADABLE);
  EXPECT_EQ(openedWithCount([](void*) -> int64_t { return INT64_MIN; }).code, PAGEREX_RESULT_UNREADABLE);
}

TEST_F(FunctionFaults, ThrowsWhileCounting) {
  EXPECT_EQ(openedWithCount([](void*) -> int64_t { throw 1; }).code, PAGEREX_RESULT_CANCELED);
}

TEST_F(FunctionFaults, CountsNothing) {
  EXPECT_EQ(openedWithCount([](void*) -> int64_t { return 0; }).kind, PAGEREX_KIND_EMPTY);
}

TEST_F(FunctionFaults, CountsMoreThanThereIs) {
  for (int64_t (*const count)(void*) :
       {+[](void*) -> int64_t { return INT64_MAX; }, +[](void*) -> int64_t { return int64_t{1} << 40; },
        +[](void*) -> int64_t { return int64_t{1} << 31; },
        +[](void*) -> int64_t { return int64_t{1} << 20; }}) {
    host_.forget();
    const Result result = openedWithCount(count);
    EXPECT_TRUE(result.code == PAGEREX_RESULT_TOO_LARGE || result.code == PAGEREX_RESULT_UNREADABLE)
        << result.sentence;
  }
}

TEST_F(FunctionFaults, CountsLessThanThereIs) {
  const Result result = openedWithCount([](void*) -> int64_t { return 4096; });
  EXPECT_TRUE(result.code == PAGEREX_RESULT_DAMAGED || (result.code == PAGEREX_RESULT_OK && !result.complete))
      << result.sentence;
}

TEST_F(FunctionFaults, GivesFewerBytesThanAskedAgainAndAgain) {
  static Host* host;
  host = &host_;
  pagerex_input input = host_.functions();
  input.read_at = [](void*, uint64_t offset, void* buffer, size_t length) -> int64_t {
    const pagerex_input whole = host->functions();
    return whole.read_at(whole.user, offset, buffer, std::min<size_t>(length, 1000));
  };
  EXPECT_EQ(convert(input, host_.sink(), Host::quiet("normal")).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(host_.files(), filesOf(richDocument(), "normal"));
}

/// How a function fails at its n-th call.
struct Failure {
  const char* name;
  bool (*fail)(Call);
  int code;
};
constexpr Failure kFailures[] = {
    {"Fails", [](Call) { return false; }, PAGEREX_RESULT_UNREADABLE},
    {"Throws", [](Call) -> bool { throw std::runtime_error("of the host"); }, PAGEREX_RESULT_CANCELED},
};

class EachRead : public testing::TestWithParam<Failure> {};
INSTANTIATE_TEST_SUITE_P(Of, EachRead, testing::ValuesIn(kFailures),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

TEST_P(EachRead, IsTold) {
  Host host(richDocument());
  int failing = 1;
  for (;; ++failing) {
    int seen = 0;
    host.forget();
    host.onCall = [&](Call call) {
      const bool reads = call == Call::kRead || call == Call::kByteCount;
      return !reads || ++seen != failing || GetParam().fail(call);
    };
    const Result result = convert(host.functions(), host.sink(), Host::quiet("normal"));
    EXPECT_EQ(host.complaints(), "") << failing;
    if (seen < failing) break;
    EXPECT_EQ(result.code, GetParam().code) << failing;
  }
  EXPECT_GT(failing, 2);
}

TEST_P(EachRead, LeavesAHandleThatReadsAgain) {
  const Files whole = filesOf(richDocument(), "normal");
  for (int failing = 1;; ++failing) {
    Host host(richDocument());
    Document document(host.functions());
    int seen = 0;
    host.onCall = [&](Call call) {
      return call != Call::kRead || ++seen != failing || GetParam().fail(call);
    };
    const int code = document.write(Host::quiet("normal"), host.sink());
    if (seen < failing) break;
    EXPECT_EQ(code, GetParam().code) << failing;
    host.forget();
    host.onCall = nullptr;
    EXPECT_EQ(document.write(Host::quiet("normal"), host.sink()), PAGEREX_RESULT_OK) << failing;
    EXPECT_EQ(host.files(), whole) << failing;
    EXPECT_EQ(document.result.kind, PAGEREX_KIND_WORD97);
  }
}

TEST(ReadsOfInfo, AreToldWhereTheyFail) {
  support::WordDocument large;
  for (int i = 0; i < 100; ++i) large.paragraph(std::string(3000, 'x'));
  Host host(large.build());
  const Document document(host.functions());
  host.onCall = [](Call call) { return call != Call::kRead; };
  pagerex_document_info info = {};
  info.size = sizeof(info);
  EXPECT_EQ(pagerex_info(document.get(), &info), PAGEREX_RESULT_UNREADABLE);
  host.onCall = nullptr;
  EXPECT_EQ(pagerex_info(document.get(), &info), PAGEREX_RESULT_OK);
}

}  // namespace
