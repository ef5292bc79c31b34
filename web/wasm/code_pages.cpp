// iconv by the host's own tables, which saves the module 130 KB of them. Of the code pages that a browser
// knows, or the package, to UTF-16, in one direction.

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

#define IMPORT(name) extern "C" __attribute__((import_module("host"), import_name(#name)))

/// Whether there is such a decoder. It begins anew with each text.
IMPORT(hasCodePage) int hostHasCodePage(int codePage);
/// Decodes bytes, which may end within a character unless they are the last ones, to `units`: their count.
/// One byte makes one unit at most, and one more may come of what was kept back.
IMPORT(decode)
uint32_t hostDecode(int codePage, const void* bytes, uint32_t length, int isLast, char16_t* units);

namespace {

constexpr struct {
  const char* name;
  int codePage;
} kPages[] = {{"CP932", 932}, {"CP936", 936},   {"CP949", 949},
              {"CP950", 950}, {"CP1258", 1258}, {"JOHAB", 1361}};

const iconv_t kNone = reinterpret_cast<iconv_t>(-1);

}  // namespace

extern "C" {

iconv_t iconv_open(const char* to, const char* from) {
  for (const auto& [name, codePage] : kPages) {
    if (std::strcmp(from, name) == 0 && std::strcmp(to, "UTF-16LE") == 0 && hostHasCodePage(codePage))
      return reinterpret_cast<iconv_t>(static_cast<intptr_t>(codePage));
  }
  errno = EINVAL;
  return kNone;
}

int iconv_close(iconv_t) {
  return 0;
}

/// Damaged bytes become U+FFFD here already. Without input, what was kept back comes.
size_t iconv(iconv_t converter, char** in, size_t* inLeft, char** out, size_t* outLeft) {
  if (!out || !*out) return 0;
  constexpr size_t kKeptBack = 2;
  const int codePage = static_cast<int>(reinterpret_cast<intptr_t>(converter));
  const size_t room = *outLeft / sizeof(char16_t) - kKeptBack;
  const size_t length = in && *in ? std::min(*inLeft, room) : 0;
  const uint32_t count = hostDecode(codePage, length > 0 ? *in : nullptr, static_cast<uint32_t>(length),
                                    length == 0, reinterpret_cast<char16_t*>(*out));
  *out += count * sizeof(char16_t);
  *outLeft -= count * sizeof(char16_t);
  if (length == 0) return 0;
  *in += length;
  *inLeft -= length;
  if (*inLeft == 0) return 0;
  errno = E2BIG;
  return static_cast<size_t>(-1);
}

}  // extern "C"
