#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/bytes.h"

/// A small file of a kind, made by hand.
struct SampleFile {
  std::string name;
  int kind;
  support::Bytes bytes;
};

/// At least one of each kind.
std::vector<SampleFile> sampleFiles();

support::Bytes bytesOf(std::string_view text);
/// The text as UTF-16 without a mark.
support::Bytes utf16Of(std::string_view text, bool bigEndian);

/// An archive in the making: entries that are stored as they are, then the directory.
class ZipWriter {
 public:
  ZipWriter& entry(std::string_view name, std::string_view content = "content");
  /// The sizes of what follows stand behind the content, as in archives that were written in one go.
  ZipWriter& sizesFollow();
  /// Entries without a directory, as of a file that is cut.
  support::Bytes entries() const { return entries_; }
  /// The whole archive; the end states `directoryOffset`, if it is not negative, and `comment`.
  support::Bytes bytes(int64_t directoryOffset = -1, std::string_view comment = {}) const;

 private:
  support::Bytes entries_;
  support::Bytes directory_;
  uint16_t flags_ = 0;
};

/// The streams of this name with nothing that matters in them, in a compound file.
support::Bytes compoundOf(const std::vector<std::u16string>& streams);
/// One with a "WordDocument" that begins with these fields of the FIB, and a table stream or none.
support::Bytes wordOf(uint16_t identity, uint16_t format, uint16_t flags, const char16_t* table = nullptr);
