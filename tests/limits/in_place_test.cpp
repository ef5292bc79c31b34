// What is read from memory stays there: nothing is copied, nothing written to it, and no file is opened.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>

#include <cstring>
#include <map>
#include <string>

#include "limits/memory_count.h"
#include "pagerex/convert.h"
#include "support/canvas.h"
#include "support/small_pictures.h"
#include "support/word_document_writer.h"

using support::Bytes;
using support::WordDocument;
using support::drawing::Blip;
using support::drawing::Drawing;
using support::drawing::Inline;
using support::drawing::Shape;

namespace {

constexpr size_t kPicture = 8 << 20;

/// Shows a picture.
Shape shape(uint32_t picture) {
  return Shape(75).props(support::drawing::Props().number(0x4104, picture));
}

/// Text, and a large picture twice: in the line, and floating.
Bytes documentWithPictures() {
  WordDocument document;
  Drawing drawing;
  Bytes picture = support::smallPng();
  picture.resize(kPicture, 0x5A);
  document.paragraph("Before ").special(
      1, pictureRun(document, Inline{.shape = shape(1), .blips = {Blip{.data = picture, .uid = 1}}}));
  document.paragraph().special(8);
  const uint32_t stored = drawing.blip({.data = picture, .uid = 2, .delayed = true});
  drawing.shape(9, shape(stored), {.rect = {0, 0, 2000, 1000}});
  drawing.addTo(document);
  return document.build();
}

/// Counts what comes and keeps nothing.
struct Counter {
  size_t bytes = 0;
  size_t largestWrite = 0;

  static void* begin(void* user, const char*, const char*) { return user; }
  static int write(void* user, void*, const void*, size_t length) {
    auto& counter = *static_cast<Counter*>(user);
    counter.bytes += length;
    counter.largestWrite = std::max(counter.largestWrite, length);
    return 0;
  }
};

int convert(const void* data, size_t size, Counter& counter, pagerex_result* result = nullptr,
            const char* format = "normal") {
  const pagerex_input input = {.size = sizeof(input),
                               .path = nullptr,
                               .data = data,
                               .length = size,
                               .byte_count = nullptr,
                               .read_at = nullptr,
                               .user = nullptr};
  const pagerex_output output = {.size = sizeof(output),
                                 .path = nullptr,
                                 .begin = Counter::begin,
                                 .write = Counter::write,
                                 .end = nullptr,
                                 .user = &counter,
                                 .main_name = nullptr};
  pagerex_options options = {};
  options.size = sizeof(options);
  options.format = format;
  return pagerex_convert(&input, nullptr, &options, &output, result);
}

/// No file can be opened for as long as the object lives.
class NoFiles {
 public:
  NoFiles() {
    getrlimit(RLIMIT_NOFILE, &before_);
    rlimit none = before_;
    none.rlim_cur = 0;
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~NoFiles() { setrlimit(RLIMIT_NOFILE, &before_); }

 private:
  rlimit before_;
};

}  // namespace

TEST(InMemory, NothingIsCopiedOfTheInput) {
  const Bytes document = documentWithPictures();
  ASSERT_GT(document.size(), 2 * kPicture);
  Counter counter;
  const MemoryCount memory;
  EXPECT_EQ(convert(document.data(), document.size(), counter), PAGEREX_RESULT_OK);
  EXPECT_GT(counter.bytes, 2 * kPicture) << "both pictures came out";
  EXPECT_LT(memory.peakBytes(), int64_t{2} << 20);
}

TEST(InMemory, APictureIsHandedOnInOnePiece) {
  const Bytes document = documentWithPictures();
  Counter counter;
  EXPECT_EQ(convert(document.data(), document.size(), counter), PAGEREX_RESULT_OK);
  EXPECT_GE(counter.largestWrite, kPicture);
}

TEST(InMemory, NothingIsWrittenToTheInput) {
  const Bytes document = documentWithPictures();
  void* const pages =
      mmap(nullptr, document.size(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(pages, MAP_FAILED);
  std::memcpy(pages, document.data(), document.size());
  ASSERT_EQ(mprotect(pages, document.size(), PROT_READ), 0);
  Counter counter;
  EXPECT_EQ(convert(pages, document.size(), counter), PAGEREX_RESULT_OK);
  munmap(pages, document.size());
}

TEST(InMemory, NoFileIsOpened) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer opens pipes to look at memory";
#endif
  const Bytes document = documentWithPictures();
  for (const char* const format : {"normal", "html"}) {
    Counter counter;
    pagerex_result result = {};
    result.size = sizeof(result);
    int code;
    {
      const NoFiles none;
      code = convert(document.data(), document.size(), counter, &result, format);
    }
    EXPECT_EQ(code, PAGEREX_RESULT_OK) << result.sentence;
    EXPECT_EQ(result.complete, 1) << format;
  }
}
