// Walks a document in memory and writes it as text and as Markdown, in ways that the last byte chooses: all
// states of tracked changes, hidden text, lines that are wrapped or not, pictures as files or embedded.

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "base/byte_source.h"
#include "document_input.h"
#include "flow/walk.h"
#include "formats/markdown/markdown_writer.h"
#include "formats/text/text_writer.h"
#include "storage/com_interfaces.h"
#include "storage/compound_file.h"
#include "support/memory_sink.h"

namespace {

using namespace pagerex;

constexpr size_t kMostOutput = 64 << 20;

/// What a byte chooses.
struct Choice {
  explicit Choice(uint8_t byte)
      : walk{static_cast<RevisionView>((byte & 3) % 3), (byte & 4) != 0}, flag((byte & 8) != 0) {}

  WalkOptions walk;
  bool flag;  ///< of the format
};

void writeText(WordFile& file, const Choice& choice, Utf8Output& out) {
  TextWriter writer(out, {.width = choice.flag ? 40 : 0, .headers = true});
  RunControl control;
  walk(file, choice.walk, control, nullptr, writer);
}

void writeMarkdown(WordFile& file, const Choice& choice, OutputFiles& files, Utf8Output& out) {
  Warnings warnings;
  const std::unique_ptr<PictureOutput> pictures =
      choice.flag ? makeEmbeddedPictures(1 << 20, &warnings) : makePictureFiles(files, "x.files", &warnings);
  const MarkdownOptions options{.commonMarkOnly = choice.flag,
                                .frontMatter = choice.flag,
                                .pageBreaks = true,
                                .htmlTables = !choice.flag};
  MarkdownWriter writer(out, options, pictures.get(), &warnings);
  RunControl control;
  walk(file, choice.walk, control, nullptr, writer);
}

/// Each format has the file opened for it, as hosts do.
template <class Write>
void writeOnce(IStorage* storage, const Write& write) {
  Warnings warnings;
  WordFile file;
  if (file.Open(storage, nullptr, &warnings) != Status::kOk) return;
  support::MemorySink sink;
  OutputFiles files(sink);
  Utf8Output out(files);
  if (out.Open("x")) write(file, files, out);
  if (out.written() < kMostOutput) return;
  std::fprintf(stderr, "ERROR: far more text than a document has\n");
  std::abort();
}

/// Null for what is no compound file. A loop in a chain of its pages throws, which hosts do not see.
IStorage* opened(MemorySource& source) {
  IStorage* storage = nullptr;
  try {
    if (OpenCompoundFile(source, nullptr, &storage) != Status::kOk) return nullptr;
  } catch (int) {
    return nullptr;
  }
  return storage;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  if (size == 0) return 0;
  const Choice choice(input[size - 1]);
  const auto bytes = fuzz::documentOf(input, size);
  MemorySource source(bytes.data(), bytes.size());
  IStorage* const storage = opened(source);
  if (!storage) return 0;
  writeOnce(storage, [&](WordFile& file, OutputFiles&, Utf8Output& out) { writeText(file, choice, out); });
  writeOnce(storage, [&](WordFile& file, OutputFiles& files, Utf8Output& out) {
    writeMarkdown(file, choice, files, out);
  });
  storage->Release();
  return 0;
}
