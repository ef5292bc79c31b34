#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"
#include "pagerex/numformat.h"

class KNFSect;

/// Formats values under format strings of the dialect OQ. Owns the formats that it has compiled, each of them
/// once. An instance serves one thread at a time and shares nothing that changes with any other: a conversion
/// has one of its own.
class NumberFormatService {
 public:
  NumberFormatService() = default;
  NumberFormatService(const NumberFormatService&) = delete;
  NumberFormatService& operator=(const NumberFormatService&) = delete;

  /// Sets `out` to the text of `value`, or empties it if there is none. kInvalidArgument for a malformed
  /// format.
  Status Format(const tagVARIANT& value, std::wstring_view format, std::wstring& out);

  /// The same under a format that the caller knows by a number: `formatString(key)` is asked for its string
  /// only the first time.
  template <class FormatString>
  Status FormatByKey(const tagVARIANT& value, unsigned key, const FormatString& formatString,
                     std::wstring& out) {
    out.clear();
    const KNFSect* format = FindByKey(key);
    if (!format) {
      const Status status = CompileForKey(key, formatString(key), &format);
      if (failed(status)) return status;
    }
    return FormatUnder(*format, value, out);
  }

  /// The format of that string if it was compiled, else null.
  KNFSect* Find(std::wstring_view format) const;
  /// That format, compiled with `param` if there is none yet; null and kInvalidArgument if it is malformed.
  /// The service keeps it, and adds no reference for the caller.
  Status Compile(std::wstring_view format, const NF_FORMAT_PARAM* param, KNFSect** out);

 private:
  struct GiveBack {
    void operator()(KNFSect* format) const;
  };
  using KeptFormat = std::unique_ptr<KNFSect, GiveBack>;  ///< counted as a reference
  struct KeyedFormat {
    unsigned key;
    const KNFSect* format;  ///< of `formats_`
  };

  const KNFSect* FindByKey(unsigned key) const;
  Status CompileForKey(unsigned key, std::wstring_view text, const KNFSect** out);
  static Status FormatUnder(const KNFSect& format, const tagVARIANT& value, std::wstring& out);

  std::map<std::wstring, KeptFormat, std::less<>> formats_;
  std::vector<KeyedFormat> keyed_;  ///< few: they are searched one by one
};
