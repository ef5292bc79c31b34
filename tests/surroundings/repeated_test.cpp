// Many conversions one after the other in a process, in several processes at once, and in threads that take
// turns.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <thread>

#include "surroundings/surroundings.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer) && !defined(__SANITIZE_ADDRESS__)
#define __SANITIZE_ADDRESS__ 1
#endif
#endif
#ifdef __SANITIZE_ADDRESS__
extern "C" size_t __sanitizer_get_current_allocated_bytes();  // GCC comes without the header
#endif

namespace fs = std::filesystem;

namespace {

const std::vector<std::vector<std::string>> kViews = {{"view=normal"},
                                                      {"view=phone", "pagesize=300"},
                                                      {"view=preview", "pagesize=300"},
                                                      {"view=mulpages", "pagesize=300"}};

/// How often, or with how many processes: PAGEREX_CONVERSIONS=10000 for a longer run than the usual.
size_t countOf(const char* variable, size_t usual) {
  const char* const text = std::getenv(variable);
  return text ? std::strtoul(text, nullptr, 10) : usual;
}

/// Documents with shapes, pictures, notes, tables and lists; with many pages; damaged ones; no document.
class Sources {
 public:
  Sources() {
    fs::copy_file(PAGEREX_SAMPLE_DOCUMENT, add("sample.doc"));
    richDocument().save(add("rich.doc"));
    longDocument(60).save(add("long.doc"));
    const std::string sample = folder_.read("sample.doc");
    write("cut.doc", sample.substr(0, sample.size() * 2 / 3));
    write("scratched.doc", damaged(sample, 401));
    write("torn.doc", damaged(sample, 61));
    write("text.doc", "no document");
  }

  const std::vector<std::string>& paths() const { return paths_; }

 private:
  std::string add(const std::string& name) { return paths_.emplace_back(folder_.path(name)); }

  void write(const std::string& name, const std::string& content) {
    add(name);
    folder_.write(name, content);
  }

  /// One byte in `step` is wrong; the header of the file is whole.
  static std::string damaged(std::string document, size_t step) {
    for (size_t i = 1531; i < document.size(); i += step) document[i] = static_cast<char>(document[i] ^ 0x5A);
    return document;
  }

  support::TempFolder folder_;
  std::vector<std::string> paths_;
};

/// Converts each source in each view to a place of its own below `folder`.
std::vector<Outcome> convertAll(const Sources& sources, const std::string& folder) {
  std::vector<Outcome> outcomes;
  for (size_t source = 0; source < sources.paths().size(); ++source) {
    for (size_t view = 0; view < kViews.size(); ++view) {
      const std::string place = folder + "/" + std::to_string(source) + "-" + std::to_string(view);
      fs::create_directory(place);
      outcomes.push_back(convert(sources.paths()[source], place + "/out.htm", kViews[view]));
    }
  }
  return outcomes;
}

#ifdef __SANITIZE_ADDRESS__
size_t uneven() {
  return 0;
}
size_t heapInUse() {
  return __sanitizer_get_current_allocated_bytes();
}
#else
/// Free blocks that malloc keeps for the thread count as in use, unless it keeps none, as CTest asks it to.
size_t uneven() {
  const char* const tunables = std::getenv("GLIBC_TUNABLES");
  return tunables && std::strcmp(tunables, "glibc.malloc.tcache_count=0") == 0 ? 0 : 0x10000;
}
size_t heapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}
#endif

size_t residentBytes() {
  size_t whole = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> whole >> resident;
  return resident * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

struct Use {
  size_t heap = heapInUse();
  size_t descriptors = openDescriptors();
};

void print(size_t conversions) {
  std::printf("%6zu conversions: resident %zu KiB, heap %zu bytes, %zu descriptors\n", conversions,
              residentBytes() / 1024, heapInUse(), openDescriptors());
}

}  // namespace

TEST(Repeated, ConversionsLeaveNeitherMemoryNorDescriptorsBehind) {
  const Sources sources;
  const support::TempFolder output;
  const size_t wanted = countOf("PAGEREX_CONVERSIONS", 240);
  // What a process takes once is there after the first round.
  size_t done = convertAll(sources, output.path()).size();
  const std::vector<Outcome> outcomes = convertAll(sources, output.path());
  const Snapshot written = snapshotOf(output.path());
  for (const int result : {PAGEREX_OK, PAGEREX_FAILED, PAGEREX_CANNOT_OPEN})
    ASSERT_THAT(outcomes, testing::Contains(outcome(result)));
  const Use before;
  done += outcomes.size();
  for (size_t next = 100; done < wanted; done += outcomes.size()) {
    ASSERT_EQ(convertAll(sources, output.path()), outcomes);
    if (done + outcomes.size() < next) continue;
    print(done + outcomes.size());
    next *= 10;
  }
  const Use after;
  EXPECT_LE(after.heap, before.heap + uneven());
  EXPECT_EQ(after.descriptors, before.descriptors);
  EXPECT_EQ(differences(snapshotOf(output.path()), written), "");
}

namespace {

/// `count` processes that start at once, each with its number. True when all of them ended well.
bool sideBySide(size_t count, const std::function<bool(size_t number)>& work) {
  int gate[2];
  if (pipe(gate) != 0) return false;
  std::vector<pid_t> children;
  for (size_t number = 0; number < count; ++number) {
    const pid_t child = fork();
    if (child == 0) {
      close(gate[1]);
      char ignored;
      const bool opened = read(gate[0], &ignored, 1) == 0;
      _exit(opened && work(number) ? 0 : 1);
    }
    children.push_back(child);
  }
  close(gate[0]);
  close(gate[1]);
  return std::count_if(children.begin(), children.end(), [](pid_t child) {
           int status = 0;
           return waitpid(child, &status, 0) == child && status == 0;
         }) == static_cast<std::ptrdiff_t>(count);
}

}  // namespace

TEST(SideBySide, ProcessesWriteWhatOneWritesAlone) {
  const Sources sources;
  const support::TempFolder output;
  const size_t count = countOf("PAGEREX_PROCESSES", 8), rounds = countOf("PAGEREX_ROUNDS", 2);
  const auto convertInto = [&](const std::string& folder) {
    fs::create_directory(folder);
    for (size_t round = 0; round < rounds; ++round) convertAll(sources, folder);
    return true;
  };
  ASSERT_TRUE(sideBySide(1, [&](size_t) { return convertInto(output.path("alone")); }));
  const Snapshot alone = snapshotOf(output.path("alone"));
  EXPECT_GT(alone.size(), 100u);
  ASSERT_TRUE(
      sideBySide(count, [&](size_t number) { return convertInto(output.path(std::to_string(number))); }));
  for (size_t number = 0; number < count; ++number)
    EXPECT_EQ(differences(snapshotOf(output.path(std::to_string(number))), alone), "") << number;
}

TEST(SideBySide, ThreadsThatTakeTurnsWriteWhatOneWritesAlone) {
  const Sources sources;
  const support::TempFolder output;
  fs::create_directory(output.path("alone"));
  convertAll(sources, output.path("alone"));
  const std::vector<Outcome> outcomes = convertAll(sources, output.path("alone"));
  std::mutex turn;
  std::vector<std::vector<Outcome>> got(4);
  std::vector<std::thread> threads;
  for (size_t number = 0; number < got.size(); ++number) {
    fs::create_directory(output.path(std::to_string(number)));
    threads.emplace_back([&, number] {
      for (size_t round = 0; round < 2; ++round) {
        const std::lock_guard<std::mutex> lock(turn);
        got[number] = convertAll(sources, output.path(std::to_string(number)));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  const Snapshot alone = snapshotOf(output.path("alone"));
  for (size_t number = 0; number < got.size(); ++number) {
    EXPECT_EQ(got[number], outcomes);
    EXPECT_EQ(differences(snapshotOf(output.path(std::to_string(number))), alone), "") << number;
  }
}

TEST(SideBySide, EachThreadHasTheErrorOfItsOwnConversion) {
  const Place place;
  convert(place.source(), "/dev/full", {"view=preview", "pagesize=100"});
  int elsewhere = -1, afterwards = -1;
  std::thread([&] {
    elsewhere = PageRexOutputError();
    afterwards = convert(place.source(), place.target()).error;
  }).join();
  EXPECT_EQ(elsewhere, 0);
  EXPECT_EQ(afterwards, 0);
  EXPECT_EQ(PageRexOutputError(), ENOSPC);
}
