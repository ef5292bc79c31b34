// Walks for hosts where memory runs out, and where the input fails, at each place where some is asked for.

#include <gtest/gtest.h>

#include <string>

#include "convert/host.h"
#include "convert/memory_faults.h"
#include "pagerex/walk.h"
#include "support/word_document_writer.h"

using namespace convert_test;

namespace {

/// What a walk told: bytes of text and of pictures, and what is open.
struct Told {
  size_t text = 0, pictures = 0;
  int open = 0;
  friend bool operator==(const Told&, const Told&) = default;
};

template <class... Given>
int begins(void* user, Given...) {
  ++static_cast<Told*>(user)->open;
  return 0;
}

int ends(void* user) {
  --static_cast<Told*>(user)->open;
  return 0;
}

pagerex_handler handlerOf() {
  pagerex_handler handler = {};
  handler.size = sizeof handler;
  handler.begin_document = begins;
  handler.end_document = ends;
  handler.begin_section = begins;
  handler.end_section = ends;
  handler.begin_paragraph = begins;
  handler.end_paragraph = ends;
  handler.begin_cell = begins;
  handler.end_cell = ends;
  handler.begin_note = begins;
  handler.end_note = ends;
  handler.text = [](void* user, const char*, size_t length, const pagerex_run*) {
    static_cast<Told*>(user)->text += length;
    return 0;
  };
  handler.picture = [](void* user, const pagerex_picture* picture) {
    pagerex_picture_data data = {};
    data.size = sizeof data;
    pagerex_picture_read(picture, &data);
    static_cast<Told*>(user)->pictures += data.length;
    return 0;
  };
  return handler;
}

int walk(Document& document, Told& told) {
  const pagerex_handler handler = handlerOf();
  told = {};
  return pagerex_walk(document.get(), nullptr, &handler, &told, &document.result);
}

/// Larger than what is read of it at once.
support::Bytes longDocument() {
  support::WordDocument document;
  for (int i = 0; i < 3000; ++i) document.paragraph(std::string(300, 'a'));
  return document.build();
}

Told toldOf(const support::Bytes& bytes) {
  const Host host(bytes);
  Document document(host.memory());
  Told told;
  EXPECT_EQ(walk(document, told), PAGEREX_RESULT_OK);
  EXPECT_GT(told.text, 0u);
  EXPECT_EQ(told.open, 0);
  return told;
}

}  // namespace

TEST(WalkFaults, MemoryThatRunsOutIsTold) {
  const Told whole = toldOf(richDocument());
  EXPECT_GT(whole.pictures, 0u);
  const Host host(richDocument());
  Document document(host.memory());
  bool isThere = true;
  int64_t failing = 1;
  for (; isThere; ++failing) {
    Told told;
    int code;
    {
      const MemoryFaults faults(failing);
      code = walk(document, told);
      isThere = faults.haveFailed();
    }
    const bool isWhole = code == PAGEREX_RESULT_OK && told == whole;
    ASSERT_TRUE(isWhole || code == PAGEREX_RESULT_OUT_OF_MEMORY)
        << failing << ": " << document.result.sentence;
  }
  EXPECT_GT(failing, 50);
  Told again;
  EXPECT_EQ(walk(document, again), PAGEREX_RESULT_OK);
  EXPECT_EQ(again, whole);
}

TEST(WalkFaults, InputThatFailsIsToldAndAllEndsAre) {
  const Told whole = toldOf(longDocument());
  const support::Bytes bytes = longDocument();
  bool isThere = true;
  int failed = 0;
  for (int failing = 1; isThere; ++failing) {
    Host host(bytes);
    Document document(host.functions());
    ASSERT_EQ(document.code(), PAGEREX_RESULT_OK);
    int reads = 0;
    host.onCall = [&](Call call) { return call != Call::kRead || ++reads != failing; };
    Told told;
    const int code = walk(document, told);
    isThere = reads >= failing;
    ASSERT_EQ(code, isThere ? PAGEREX_RESULT_UNREADABLE : PAGEREX_RESULT_OK) << failing;
    ASSERT_EQ(told.open, 0) << failing;
    if (!isThere) {
      EXPECT_EQ(told, whole);
    }
    failed += isThere;
  }
  EXPECT_GT(failed, 2);
}
