// Zip archives by the names of their entries: from the directory at the end, or, where that is not there,
// from what stands before each entry.

#include <algorithm>
#include <cstring>
#include <string_view>

#include "convert/file_kind.h"

namespace pagerex {

namespace {

using namespace std::string_view_literals;

#pragma pack(push, 1)

/// Before each entry; its name, extra bytes and content follow.
struct ZipEntryHeader {
  uint32_t signature;  // "PK\3\4"
  uint8_t unused4[2];
  uint16_t flags;   // 6: kSizeFollows
  uint16_t method;  // 8: 0 is stored as it is
  uint8_t unused10[8];
  uint32_t storedBytes;  // 18: may be 0 where it follows the content
  uint8_t unused22[4];
  uint16_t nameBytes;   // 26
  uint16_t extraBytes;  // 28
  static constexpr uint32_t kSignature = 0x04034B50;
  static constexpr uint16_t kSizeFollows = 8;
};
static_assert(sizeof(ZipEntryHeader) == 30 && offsetof(ZipEntryHeader, storedBytes) == 18);

/// One for each entry in the directory; name, extra bytes and comment follow.
struct ZipDirectoryEntry {
  uint32_t signature;  // "PK\1\2"
  uint8_t unused4[24];
  uint16_t nameBytes;     // 28
  uint16_t extraBytes;    // 30
  uint16_t commentBytes;  // 32
  uint8_t unused34[12];
  static constexpr uint32_t kSignature = 0x02014B50;
};
static_assert(sizeof(ZipDirectoryEntry) == 46 && offsetof(ZipDirectoryEntry, nameBytes) == 28);

/// Behind the directory, and before a comment that ends the file.
struct ZipEnd {
  uint32_t signature;  // "PK\5\6"
  uint8_t unused4[8];
  uint32_t directoryBytes;   // 12
  uint32_t directoryOffset;  // 16
  uint8_t unused20[2];
  static constexpr size_t kLongestComment = 0xFFFF;
};
static_assert(sizeof(ZipEnd) == 22 && offsetof(ZipEnd, directoryBytes) == 12);

#pragma pack(pop)

std::string_view textOf(ByteView bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// What the names of the entries have told.
struct PackageNames {
  bool contentTypes = false;
  int kind = PAGEREX_KIND_UNKNOWN;  ///< by the first folder that has one

  void note(ByteView name);
};

struct PartFolder {
  std::string_view name;
  int kind;
};
constexpr PartFolder kPartFolders[] = {
    {"word/"sv, PAGEREX_KIND_DOCX},
    {"xl/"sv, PAGEREX_KIND_XLSX},
    {"ppt/"sv, PAGEREX_KIND_PPTX},
};

/// Names of parts differ in no more than case; some programs write folders the other way round.
bool matches(char found, char wanted) {
  if (found >= 'A' && found <= 'Z') found = static_cast<char>(found - 'A' + 'a');
  return (found == '\\' ? '/' : found) == wanted;
}

bool beginsWith(ByteView name, std::string_view wanted) {
  const std::string_view text = textOf(name).substr(0, wanted.size());
  return std::equal(text.begin(), text.end(), wanted.begin(), wanted.end(), matches);
}

void PackageNames::note(ByteView name) {
  constexpr std::string_view kContentTypes = "[content_types].xml";
  if (name.size() == kContentTypes.size() && beginsWith(name, kContentTypes)) contentTypes = true;
  if (kind != PAGEREX_KIND_UNKNOWN) return;
  for (const PartFolder& folder : kPartFolders) {
    if (beginsWith(name, folder.name)) kind = folder.kind;
  }
}

/// OpenDocument: the first entry is the type, stored as it is.
int openDocumentKind(ByteView file) {
  constexpr PartFolder kTypes[] = {
      {"application/vnd.oasis.opendocument.text"sv, PAGEREX_KIND_ODT},
      {"application/vnd.oasis.opendocument.spreadsheet"sv, PAGEREX_KIND_ODS},
      {"application/vnd.oasis.opendocument.presentation"sv, PAGEREX_KIND_ODP},
      {"application/vnd.oasis.opendocument."sv, PAGEREX_KIND_ODF},
  };
  const auto* entry = file.record<ZipEntryHeader>(0);
  if (!entry || entry->method != 0) return PAGEREX_KIND_UNKNOWN;
  if (textOf(file.part(sizeof(*entry), entry->nameBytes)) != "mimetype") return PAGEREX_KIND_UNKNOWN;
  const ByteView type = file.part(sizeof(*entry) + entry->nameBytes + entry->extraBytes);
  for (const PartFolder& known : kTypes) {
    if (textOf(type).substr(0, known.name.size()) == known.name) return known.kind;
  }
  return PAGEREX_KIND_UNKNOWN;
}

const ZipEnd* findEnd(ByteView file) {
  constexpr size_t kFarthest = sizeof(ZipEnd) + ZipEnd::kLongestComment;
  const size_t first = file.size() > kFarthest ? file.size() - kFarthest : 0;
  const size_t at = textOf(file.part(first)).rfind("PK\5\6"sv);
  return at == std::string_view::npos ? nullptr : file.record<ZipEnd>(first + at);
}

/// True if there is an entry at `at`, with which a directory begins.
bool readDirectory(ByteView file, size_t at, PackageNames& names) {
  const size_t first = at;
  for (;;) {
    const auto* entry = file.record<ZipDirectoryEntry>(at);
    if (!entry || entry->signature != ZipDirectoryEntry::kSignature) return at != first;
    at += sizeof(*entry);
    names.note(file.part(at, entry->nameBytes));
    at += size_t{entry->nameBytes} + entry->extraBytes + entry->commentBytes;
  }
}

/// The directory begins where the end says, or, with bytes before the archive or a wrong offset, as many
/// bytes before the end as that says.
bool readDirectory(ByteView file, PackageNames& names) {
  const ZipEnd* end = findEnd(file);
  if (!end) return false;
  const auto endOffset = static_cast<size_t>(reinterpret_cast<const uint8_t*>(end) - file.data());
  if (readDirectory(file, end->directoryOffset, names)) return true;
  return end->directoryBytes <= endOffset && readDirectory(file, endOffset - end->directoryBytes, names);
}

/// Where the next entry begins: behind the content if its size is told truly, else at the next signature.
size_t nextEntry(ByteView file, const ZipEntryHeader& entry, size_t content) {
  const bool sizeIsTold = !(entry.flags & ZipEntryHeader::kSizeFollows) || entry.storedBytes != 0;
  if (sizeIsTold && content <= file.size() && entry.storedBytes <= file.size() - content) {
    const size_t next = content + entry.storedBytes;
    if (file.u32(next) == ZipEntryHeader::kSignature) return next;
  }
  return textOf(file).find("PK\3\4"sv, content);
}

void readEntries(ByteView file, PackageNames& names) {
  for (size_t at = 0; at < file.size();) {
    const auto* entry = file.record<ZipEntryHeader>(at);
    if (!entry || entry->signature != ZipEntryHeader::kSignature) return;
    at += sizeof(*entry);
    names.note(file.part(at, entry->nameBytes));
    at = nextEntry(file, *entry, at + entry->nameBytes + entry->extraBytes);
  }
}

}  // namespace

int zipKind(ByteView file) noexcept {
  if (const int kind = openDocumentKind(file)) return kind;
  PackageNames names;
  if (!readDirectory(file, names)) readEntries(file, names);
  if (!names.contentTypes) return PAGEREX_KIND_ZIP;
  return names.kind == PAGEREX_KIND_UNKNOWN ? PAGEREX_KIND_OOXML : names.kind;
}

}  // namespace pagerex
