// Opens a compound file and reads its streams to their ends, and at places all over them.

#include <memory>
#include <vector>

#include "scratch_folder.h"
#include "storage/sot_storage.h"

namespace {

void readStream(SotRoStream& stream) {
  char buffer[777];
  for (int i = 0; i < 4096 && stream.read(buffer, sizeof(buffer)) > 0; ++i) {
  }
  for (const long place : {0L, 1L, 511L, 512L, 4095L, 4096L, 70000L, 0x7FFFFFFFL}) {
    for (const int whence : {0, 1, 2}) {
      stream.seek(place, whence);
      stream.bytesLeft();
      stream.read(buffer, 100);
    }
  }
}

void readStorage(const SotRoStorage& storage, int depth) {
  for (const wchar_t* name : {L"WordDocument", L"0Table", L"1Table", L"Data", L"A", L"B"}) {
    if (SotRoStream* stream = storage.openStream(name)) readStream(*stream);
  }
  for (const wchar_t* name : {L"ObjectPool", L"_1", L"S"}) {
    const SotRoStorage* child = depth > 0 ? storage.openStorage(name) : nullptr;
    if (child) readStorage(*child, depth - 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  const std::string path = fuzz::writeScratchFile("compound", input, size);
  try {
    if (const std::unique_ptr<SotRoStorage> root = SotRoStorage::open(path.c_str())) readStorage(*root, 3);
  } catch (int) {
    // A loop in a chain.
  }
  return 0;
}
