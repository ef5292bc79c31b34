// Documents in memory, converted at once in one process by handles of their own: each gives what it gives
// alone.

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "pagerex/convert.h"
#include "threads/converting.h"

using namespace threads_test;

namespace {

/// What a sink has got: contents by name.
using Files = std::map<std::string, std::string>;

struct Result {
  int code = -1;
  std::string sentence;
  Files files;

  bool operator==(const Result&) const = default;
};

struct Sink {
  Files files;

  static void* begin(void* user, const char* name, const char*) {
    return &static_cast<Sink*>(user)->files[name];
  }
  static int write(void*, void* file, const void* data, size_t length) {
    static_cast<std::string*>(file)->append(static_cast<const char*>(data), length);
    return 0;
  }
};

pagerex_input inputOf(const std::string& document) {
  pagerex_input input = {};
  input.size = sizeof(input);
  input.data = document.data();
  input.length = document.size();
  return input;
}

pagerex_output outputOf(Sink& sink) {
  pagerex_output output = {};
  output.size = sizeof(output);
  output.begin = Sink::begin;
  output.write = Sink::write;
  output.user = &sink;
  return output;
}

pagerex_options optionsOf(const pagerex_format& format) {
  pagerex_options options = {};
  options.size = sizeof(options);
  options.format = format.name;
  options.page_size = 500;
  return options;
}

/// All formats of one document, through one handle.
std::vector<Result> convertAll(const std::string& document) {
  std::vector<Result> results;
  const pagerex_input input = inputOf(document);
  pagerex_document* opened = nullptr;
  pagerex_result told = {};
  told.size = sizeof(told);
  results.push_back({pagerex_open(&input, nullptr, &opened, &told), told.sentence, {}});
  for (int i = 0; opened && pagerex_format_at(i); ++i) {
    Sink sink;
    const pagerex_output output = outputOf(sink);
    const pagerex_options options = optionsOf(*pagerex_format_at(i));
    const int code = pagerex_write(opened, &options, &output, &told);
    results.push_back({code, told.sentence, sink.files});
  }
  pagerex_close(opened);
  return results;
}

std::string read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> documents(bool withCorpus) {
  Sources sources;
  if (withCorpus) sources.addCorpus();
  std::vector<std::string> contents;
  for (const std::string& path : sources.paths()) contents.push_back(read(path));
  return contents;
}

/// How many documents come out differently in `convert(document)` than alone, all threads together.
size_t countDifferences(const std::vector<std::string>& contents,
                        const std::function<std::vector<Result>(const std::string&)>& convert) {
  constexpr size_t kThreads = 8;
  std::vector<std::vector<Result>> alone;
  for (const std::string& content : contents) alone.push_back(convertAll(content));
  std::atomic<size_t> wrong = 0;
  std::vector<std::thread> threads;
  for (size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (size_t step = 0; step < contents.size(); ++step) {
        const size_t number = (step + thread * contents.size() / kThreads) % contents.size();
        if (convert(contents[number]) != alone[number]) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  return wrong;
}

}  // namespace

TEST(CallsSideBySide, GiveWhatOneThreadGetsOfTheSameBytes) {
  EXPECT_EQ(countDifferences(documents(true), convertAll), 0u);
}

TEST(CallsSideBySide, AreNotDisturbedByTheOlderCalls) {
  Sources sources;
  convertEachOnce(sources);
  std::atomic<bool> done = false;
  std::thread older([&] {
    while (!done) convertEachOnce(sources);
  });
  const size_t wrong = countDifferences(documents(false), convertAll);
  done = true;
  older.join();
  EXPECT_EQ(wrong, 0u);
}

namespace {

/// A sink that converts another document whenever a file of its own begins.
struct Nesting {
  Sink sink;
  const std::string* other;
  const std::vector<Result>* expected;
  size_t wrong = 0, times = 0;

  static void* begin(void* user, const char* name, const char* type) {
    auto& nesting = *static_cast<Nesting*>(user);
    ++nesting.times;
    if (convertAll(*nesting.other) != *nesting.expected) ++nesting.wrong;
    return Sink::begin(&nesting.sink, name, type);
  }
};

}  // namespace

TEST(CallsSideBySide, MayBeMadeWithinEachOther) {
  const std::vector<std::string> contents = documents(false);
  const std::string& outer = contents.front();
  const std::vector<Result> alone = convertAll(outer);
  const std::vector<Result> expected = convertAll(contents.back());
  Nesting nesting{{}, &contents.back(), &expected};
  const pagerex_input input = inputOf(outer);
  pagerex_output output = outputOf(nesting.sink);
  output.begin = Nesting::begin;
  output.user = &nesting;
  const pagerex_options options = optionsOf(*pagerex_format_at(0));
  EXPECT_EQ(pagerex_convert(&input, nullptr, &options, &output, nullptr), PAGEREX_RESULT_OK);
  EXPECT_EQ(nesting.sink.files, alone[1].files);
  EXPECT_GT(nesting.times, 1u);
  EXPECT_EQ(nesting.wrong, 0u);
}

TEST(CallsSideBySide, AreCanceledFromAnotherThread) {
  const std::vector<std::string> contents = documents(false);
  int flag = 0;
  std::promise<void> begun;
  struct Waiting {
    std::promise<void>* begun;
    bool told = false;
  } waiting{&begun};
  pagerex_limits limits = {};
  limits.size = sizeof(limits);
  limits.cancel = &flag;
  Sink sink;
  const pagerex_input input = inputOf(contents.front());
  const pagerex_output output = outputOf(sink);
  pagerex_options options = optionsOf(*pagerex_format_at(0));
  options.user = &waiting;
  options.may_go_on = [](void* user) {
    auto& state = *static_cast<Waiting*>(user);
    if (!state.told) state.begun->set_value();
    state.told = true;
    return static_cast<int>(PAGEREX_WAIT);
  };
  std::thread other([&] {
    begun.get_future().wait();
    pagerex_cancel(&flag);
  });
  EXPECT_EQ(pagerex_convert(&input, &limits, &options, &output, nullptr), PAGEREX_RESULT_CANCELED);
  other.join();
}
