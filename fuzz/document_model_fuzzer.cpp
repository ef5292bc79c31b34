// Opens a document from memory and asks for everything in it, what no view shows included.

#include "document_input.h"
#include "wordreader/memory_storage.h"
#include "wordreader/walk_document.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  fuzz::DocumentStreams streams = fuzz::splitStreams(input, size);
  MemoryStorage storage;
  storage.add(L"WordDocument", std::move(streams.wordDocument));
  storage.add(L"0Table", streams.table);
  storage.add(L"1Table", std::move(streams.table));
  storage.add(L"Data", std::move(streams.data));
  KDRDocument document;
  try {
    if (document.OpenDocument(&storage) != Status::kOk) return 0;
  } catch (int) {
    return 0;
  }
  // A getter that threw is not asked again, so that the walk gets on.
  for (int i = 0; i < 40; ++i) {
    try {
      DocumentWalk(document).walk();
      return 0;
    } catch (int) {
    }
  }
  return 0;
}
