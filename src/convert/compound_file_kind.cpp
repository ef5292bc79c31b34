// Compound files by the names of the streams and storages at their top, and Word's by the FIB.

#include <algorithm>
#include <cstring>
#include <string_view>

#include "convert/file_kind.h"
#include "convert/root_folder.h"
#include "wordreader/mso_word.h"

namespace pagerex {

namespace {

/// What tells kinds apart, as bits.
enum Mark : uint32_t {
  kWordDocument = 1,
  kWordTable = 2,
  kEncryptedPackage = 4,
  kWorkbook = 8,
  kPresentation = 16,
  kMail = 32,
  kInstaller = 64,
};

struct MarkedName {
  char name[24];
  Mark mark;
};
constexpr MarkedName kMarkedNames[] = {
    {"WordDocument", kWordDocument},
    {"0Table", kWordTable},
    {"1Table", kWordTable},
    {"EncryptedPackage", kEncryptedPackage},
    {"EncryptionInfo", kEncryptedPackage},
    {"Workbook", kWorkbook},
    {"Book", kWorkbook},
    {"PowerPoint Document", kPresentation},
    {"__properties_version1.0", kMail},
};

/// The first mark that is there decides.
struct MarkedKind {
  Mark mark;
  int kind;
};
constexpr MarkedKind kMarkedKinds[] = {
    {kEncryptedPackage, PAGEREX_KIND_OOXML_ENCRYPTED},
    {kWorkbook, PAGEREX_KIND_XLS},
    {kPresentation, PAGEREX_KIND_PPT},
    {kMail, PAGEREX_KIND_MSG},
    {kInstaller, PAGEREX_KIND_MSI},
};

bool isNamed(const SotEntry& entry, std::string_view name) {
  if (entry.name[name.size()] != 0) return false;
  for (size_t i = 0; i < name.size(); ++i) {
    if (entry.name[i] != static_cast<uint8_t>(name[i])) return false;
  }
  return true;
}

/// Installer packages, patches and transforms: a class of their own at the root.
bool hasInstallerClass(const SotEntry& root) {
  constexpr size_t kClassOffset = 80;
  constexpr uint8_t kTail[] = {0x0C, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
  const ByteView identity = ByteView(&root, sizeof(root)).part(kClassOffset);
  const uint8_t number = identity.u8(0);
  const bool isKnown = number == 0x82 || number == 0x84 || number == 0x86;
  return isKnown && identity.u8(1) == 0x10 && std::memcmp(identity.data() + 2, kTail, sizeof(kTail)) == 0;
}

/// Their tables are streams with names that are packed into characters of a range of their own, behind this
/// one.
bool isInstallerTable(const SotEntry& entry) {
  constexpr uint16_t kTablePrefix = 0x4840;
  return entry.type == SotEntry::kStream && entry.name[0] == kTablePrefix;
}

int wordKind(ByteView fib, bool hasTable) {
  constexpr uint16_t kWord97 = 0xA5EC;
  constexpr uint16_t kWord95 = 0xA5DC;
  constexpr uint16_t kOldestFormatOf97 = 0xC0;
  if (fib.copyOf<mso_word::FIB_HEADER>(0).flags & mso_word::FIB_HEADER::kEncrypted)
    return PAGEREX_KIND_WORD_ENCRYPTED;
  const uint16_t identity = fib.u16(0), format = fib.u16(2);
  if (hasTable || identity == kWord97) return PAGEREX_KIND_WORD97;
  // East Asian editions have other identities.
  const bool isOlder = format > 0 && format < kOldestFormatOf97;
  return identity == kWord95 || isOlder ? PAGEREX_KIND_WORD95 : PAGEREX_KIND_COMPOUND;
}

int kindWithPagesFrom(ByteView file, uint64_t firstPage) {
  RootFolder folder(file, firstPage);
  const SotEntry* const root = folder.root();
  if (!root) return PAGEREX_KIND_COMPOUND;
  uint32_t marks = 0;
  if (hasInstallerClass(*root)) marks |= kInstaller;
  const SotEntry* document = nullptr;
  folder.forEachEntry([&](const SotEntry& entry) {
    if (isInstallerTable(entry)) marks |= kInstaller;
    for (const MarkedName& marked : kMarkedNames) {
      if (entry.type != SotEntry::kStream || !isNamed(entry, marked.name)) continue;
      marks |= marked.mark;
      if (marked.mark == kWordDocument) document = &entry;
    }
  });
  if (document) return wordKind(folder.beginningOf(*document), (marks & kWordTable) != 0);
  const auto found = std::find_if(std::begin(kMarkedKinds), std::end(kMarkedKinds),
                                  [marks](const MarkedKind& row) { return (marks & row.mark) != 0; });
  return found == std::end(kMarkedKinds) ? PAGEREX_KIND_COMPOUND : found->kind;
}

}  // namespace

/// Pages follow the header at once, or, where they are larger, behind a whole page.
int compoundFileKind(ByteView file) noexcept {
  const int kind = kindWithPagesFrom(file, sizeof(SotHeader));
  const auto* header = file.record<SotHeader>(0);
  if (kind != PAGEREX_KIND_COMPOUND || !header) return kind;
  const uint32_t pageSize = pageSizeOf(header->pageShift);
  return pageSize > sizeof(SotHeader) ? kindWithPagesFrom(file, pageSize) : kind;
}

}  // namespace pagerex
