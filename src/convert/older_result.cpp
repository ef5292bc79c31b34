#include "convert/older_result.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <memory>
#include <new>
#include <string_view>

#include "pagerex/convert.h"

namespace pagerex {
namespace {

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, FolderCloser>;

OpenFolder openFolder(int parent, const char* name) {
  const int folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  DIR* const opened = folder >= 0 ? fdopendir(folder) : nullptr;
  if (!opened && folder >= 0) close(folder);
  return OpenFolder(opened);
}

/// Calls `visit` with each name in a folder until it returns false; false then.
template <class Visit>
bool visitAll(DIR* folder, const Visit& visit) {
  while (const dirent* const entry = readdir(folder)) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != ".." && !visit(entry->d_name)) return false;
  }
  return true;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// The number behind `front`, and `back` behind that; a null `back` for any extension of letters.
struct NumberedName {
  std::string_view front, back;
};
constexpr NumberedName kNumberedNames[] = {{"", ".htm"}, {"image", ""}, {"picture-", ""}};
constexpr std::string_view kFixedNames[] = {"style.css", "shapejs.js", "navigation.html"};

bool isExtension(std::string_view text) {
  return text.size() > 1 && text[0] == '.' && std::all_of(text.begin() + 1, text.end(), [](char c) {
           return isDigit(c) || (c >= 'a' && c <= 'z');
         });
}

bool matches(std::string_view name, const NumberedName& pattern) {
  if (!name.starts_with(pattern.front)) return false;
  name.remove_prefix(pattern.front.size());
  const size_t digits =
      static_cast<size_t>(std::find_if_not(name.begin(), name.end(), isDigit) - name.begin());
  const std::string_view rest = name.substr(digits);
  return digits > 0 && (pattern.back.empty() ? isExtension(rest) : rest == pattern.back);
}

bool isNameOfResult(std::string_view name) {
  return std::find(std::begin(kFixedNames), std::end(kFixedNames), name) != std::end(kFixedNames) ||
         std::any_of(std::begin(kNumberedNames), std::end(kNumberedNames),
                     [name](const NumberedName& pattern) { return matches(name, pattern); });
}

/// Whether the bytes have the form of UTF-8, with no zeros; the last character may be cut. Marks of a
/// document that no text file has stand in pages too.
bool mayBePage(std::string_view bytes) {
  size_t following = 0;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const bool follows = (byte & 0xC0) == 0x80;
    if (byte == 0 || byte > 0xF7 || follows != (following > 0)) return false;
    following = follows ? following - 1 : byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : byte >= 0xC0 ? 1 : 0;
  }
  return true;
}

/// What a file is, by its beginning, which tells the families apart; PAGEREX_KIND_UNKNOWN also for one that
/// cannot be read.
int kindOfFile(int parent, const char* name) {
  constexpr size_t kBeginning = 4096;
  const int file = openat(parent, name, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) return PAGEREX_KIND_UNKNOWN;
  char bytes[kBeginning];
  const ssize_t count = read(file, bytes, sizeof(bytes));
  close(file);
  if (count < 0) return PAGEREX_KIND_UNKNOWN;
  const int kind = pagerex_detect(bytes, static_cast<size_t>(count));
  const bool isPage = kind == PAGEREX_KIND_UNKNOWN && mayBePage({bytes, static_cast<size_t>(count)});
  return isPage ? PAGEREX_KIND_TEXT : kind;
}

constexpr int kKindsOfResults[] = {PAGEREX_KIND_EMPTY, PAGEREX_KIND_TEXT, PAGEREX_KIND_HTML, PAGEREX_KIND_XML,
                                   PAGEREX_KIND_MHTML};
constexpr int kKindsOfPictures[] = {PAGEREX_KIND_EMPTY, PAGEREX_KIND_XML, PAGEREX_KIND_PNG};

template <size_t N>
bool isAmong(const int (&kinds)[N], int kind) {
  return std::find(kinds, kinds + N, kind) != kinds + N;
}

}  // namespace

bool mayReplaceFile(int parent, const char* name, bool byPicture) {
  struct stat info;
  if (fstatat(parent, name, &info, 0) != 0)
    return errno == ENOENT && fstatat(parent, name, &info, AT_SYMLINK_NOFOLLOW) != 0;
  if (!S_ISREG(info.st_mode)) return false;
  const int kind = kindOfFile(parent, name);
  return byPicture ? isAmong(kKindsOfPictures, kind) : isAmong(kKindsOfResults, kind);
}

bool mayReplaceFolder(int parent, const char* name) {
  struct stat info;
  if (fstatat(parent, name, &info, AT_SYMLINK_NOFOLLOW) != 0) return errno == ENOENT;
  const OpenFolder folder = openFolder(parent, name);
  if (!folder && errno == ENOMEM) throw std::bad_alloc();
  return folder && visitAll(folder.get(), [&](const char* entry) {
           return isNameOfResult(entry) &&
                  fstatat(dirfd(folder.get()), entry, &info, AT_SYMLINK_NOFOLLOW) == 0 &&
                  S_ISREG(info.st_mode);
         });
}

void removeFlatFolder(int parent, const char* name) {
  if (const OpenFolder folder = openFolder(parent, name)) {
    visitAll(folder.get(), [&](const char* entry) {
      unlinkat(dirfd(folder.get()), entry, 0);
      return true;
    });
  }
  unlinkat(parent, name, AT_REMOVEDIR);
}

}  // namespace pagerex
