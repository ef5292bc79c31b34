#include "document_input.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>

#include "pagerex/pagerex.h"
#include "scratch_folder.h"
#include "support/compound_file_writer.h"

namespace fuzz {

using support::Bytes;
using support::ByteWriter;

namespace {

constexpr size_t kFibFlags = 10;
constexpr uint8_t kUses1Table = 0x02;  // in the second byte of the flags

Bytes takeFront(const uint8_t*& input, size_t& size, size_t wanted) {
  const size_t count = std::min(size, wanted);
  Bytes taken(input, input + count);
  input += count;
  size -= count;
  return taken;
}

uint32_t takeLength(const uint8_t*& input, size_t& size) {
  Bytes bytes = takeFront(input, size, 4);
  bytes.resize(4);
  return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | uint32_t{bytes[3]} << 24;
}

[[noreturn]] void reject(const char* why, uintmax_t number) {
  std::fprintf(stderr, "ERROR: %s: %ju\n", why, number);
  std::abort();
}

void checkResult(int result) {
  constexpr int kResults[] = {PAGEREX_OK, PAGEREX_FAILED, PAGEREX_CANNOT_OPEN};
  if (std::find(std::begin(kResults), std::end(kResults), result) == std::end(kResults))
    reject("no result of a conversion", static_cast<uintmax_t>(result));
}

/// No document that is as small as the inputs has so much to say.
void checkOutput() {
  constexpr uintmax_t kMost = 64 << 20;
  uintmax_t size = 0;
  for (const auto& file : std::filesystem::recursive_directory_iterator(scratchFolder())) {
    if (file.is_regular_file()) size += file.file_size();
  }
  if (size > kMost) reject("bytes were written, which is too much", size);
}

}  // namespace

bool isCompoundFile(const uint8_t* input, size_t size) {
  constexpr uint8_t kSignature[] = {0xD0, 0xCF, 0x11, 0xE0};
  return size >= sizeof(kSignature) && std::equal(std::begin(kSignature), std::end(kSignature), input);
}

DocumentStreams splitStreams(const uint8_t* input, size_t size) {
  const uint32_t wordDocumentLength = takeLength(input, size);
  const uint32_t tableLength = takeLength(input, size);
  DocumentStreams streams;
  streams.wordDocument = takeFront(input, size, wordDocumentLength);
  streams.table = takeFront(input, size, tableLength);
  streams.data = takeFront(input, size, size);
  return streams;
}

Bytes joinStreams(const DocumentStreams& streams) {
  return ByteWriter()
      .u32(static_cast<uint32_t>(streams.wordDocument.size()))
      .u32(static_cast<uint32_t>(streams.table.size()))
      .bytes(streams.wordDocument)
      .bytes(streams.table)
      .bytes(streams.data)
      .take();
}

Bytes documentOf(const uint8_t* input, size_t size) {
  if (isCompoundFile(input, size)) return Bytes(input, input + size);
  const DocumentStreams streams = splitStreams(input, size);
  const Bytes& fib = streams.wordDocument;
  const bool uses1Table = fib.size() > kFibFlags + 1 && (fib[kFibFlags + 1] & kUses1Table) != 0;
  support::CompoundFileWriter writer;
  writer.stream(u"WordDocument", fib).stream(uses1Table ? u"1Table" : u"0Table", streams.table);
  if (!streams.data.empty()) writer.stream(u"Data", streams.data);
  return writer.bytes();
}

int convert(const Bytes& document, const char* view, std::vector<std::string> more) {
  const std::string source = writeScratchFile("document.doc", document.data(), document.size());
  const std::string target = scratchFolder() + "/document.html";
  std::string viewOption = std::string("view=") + view;
  // Pages of all sizes, by something that an input has anyway.
  constexpr int kPageSizes[] = {500, 40, 5000};
  std::string pageSize =
      "pagesize=" + std::to_string(kPageSizes[document.size() / 512 % std::size(kPageSizes)]);
  std::vector<char*> options = {viewOption.data(), pageSize.data()};
  for (std::string& each : more) options.push_back(each.data());
  const int result =
      PageRex(source.c_str(), target.c_str(), static_cast<int>(options.size()), options.data());
  checkResult(result);
  checkOutput();
  return result;
}

}  // namespace fuzz
