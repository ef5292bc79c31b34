#include "word_count_format/word_count.h"

#include <gtest/gtest.h>

#include <memory>

#include "base/byte_source.h"
#include "storage/com_interfaces.h"
#include "storage/compound_file.h"
#include "support/memory_sink.h"
#include "support/word_document_writer.h"
#include "wordreader/word_file.h"

using namespace support;

namespace pagerex {
namespace {

class NoListener final : public FormatListener {
  void Reached(uint32_t) override {}
  Status PageFinished(int, const char*) override { return Status::kOk; }
};

/// What the example makes of a document.
std::string countsOf(const WordDocument& document) {
  const Bytes bytes = document.build();
  MemorySource source(bytes.data(), bytes.size());
  IStorage* storage = nullptr;
  EXPECT_EQ(OpenCompoundFile(source, nullptr, &storage), Status::kOk);
  MemorySink sink;
  OutputFiles files(sink);
  {
    Warnings warnings;
    WordFile word;
    EXPECT_EQ(word.Open(storage, nullptr, &warnings), Status::kOk);
    RunControl control;
    NoListener listener;
    const FlowChoices choices;
    FormatJob job{nullptr, &word,    files,    "counts", 1, LinkPolicy{}, PAGEREX_PICTURES_NONE,
                  control, warnings, listener, choices,  {}};
    EXPECT_EQ(writeWordCount(job), Status::kOk);
  }
  storage->Release();
  return sink.files["counts"];
}

}  // namespace

TEST(WordCountFormat, CountsTheWordsBelowEachHeading) {
  WordDocument doc;
  doc.style(1, Style().name("heading 1").sti(1).basedOn(0));
  doc.header(0, HeaderSlot::kOddHeader).paragraph("not counted");
  doc.paragraph("three words here");
  doc.paragraph("One").istd(1);
  doc.paragraph("four w").run("ords", {sprm(0x0835, 1)}).run("  and\tmore");
  doc.paragraph("Two").istd(1);
  EXPECT_EQ(countsOf(doc), "In front: 3\nOne: 4\nTwo: 0\n");
}

}  // namespace pagerex
