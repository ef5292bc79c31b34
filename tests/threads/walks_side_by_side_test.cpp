// Walks for hosts on many threads at once, which the preset "tsan" watches.

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "mutation/rich_documents.h"
#include "pagerex/convert.h"
#include "pagerex/walk.h"

namespace {

/// The text of a document, with the fonts that it stands in, and the bytes of its pictures.
std::string toldOf(const support::Bytes& bytes) {
  pagerex_handler handler = {};
  handler.size = sizeof handler;
  handler.text = [](void* user, const char* text, size_t length, const pagerex_run* run) {
    std::string& told = *static_cast<std::string*>(user);
    told.append(text, length).append(run->font.data, run->font.length);
    return 0;
  };
  handler.picture = [](void* user, const pagerex_picture* picture) {
    pagerex_picture_data data = {};
    data.size = sizeof data;
    if (pagerex_picture_read(picture, &data) == PAGEREX_RESULT_OK)
      static_cast<std::string*>(user)->append(static_cast<const char*>(data.data), data.length);
    return 0;
  };
  pagerex_input input = {};
  input.size = sizeof input;
  input.data = bytes.data();
  input.length = bytes.size();
  pagerex_document* document = nullptr;
  std::string told;
  if (pagerex_open(&input, nullptr, &document, nullptr) != PAGEREX_RESULT_OK) return "not opened";
  if (pagerex_walk(document, nullptr, &handler, &told, nullptr) != PAGEREX_RESULT_OK) told += "not whole";
  pagerex_close(document);
  return told;
}

/// Its page of the format "html".
std::string pageOf(const support::Bytes& bytes) {
  pagerex_input input = {};
  input.size = sizeof input;
  input.data = bytes.data();
  input.length = bytes.size();
  pagerex_options options = {};
  options.size = sizeof options;
  options.format = "html";
  std::string page;
  pagerex_output output = {};
  output.size = sizeof output;
  output.user = &page;
  output.begin = [](void* user, const char*, const char*) { return user; };
  output.write = [](void*, void* file, const void* data, size_t length) {
    static_cast<std::string*>(file)->append(static_cast<const char*>(data), length);
    return 0;
  };
  const int code = pagerex_convert(&input, nullptr, &options, &output, nullptr);
  return code == PAGEREX_RESULT_OK ? page : "not written";
}

/// What many threads get of the same bytes as one alone gets of them.
void expectTheSameOnThreads(std::string (*get)(const support::Bytes&)) {
  constexpr size_t kThreads = 8;
  std::vector<support::Bytes> files;
  std::vector<std::string> alone;
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    files.push_back(rich.document.build());
    alone.push_back(get(files.back()));
    EXPECT_EQ(alone.back().find("not "), std::string::npos) << rich.name;
  }
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (size_t step = 0; step < files.size(); ++step) {
        const size_t number = (step + thread) % files.size();
        if (get(files[number]) != alone[number]) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace

TEST(WalksSideBySide, TellWhatOneThreadIsToldOfTheSameBytes) {
  expectTheSameOnThreads(toldOf);
}

TEST(WalksSideBySide, WriteThePageThatOneThreadWrites) {
  expectTheSameOnThreads(pageOf);
}
