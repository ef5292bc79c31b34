#pragma once

#include <memory>
#include <string_view>

#include "base/status.h"
#include "numformat/section_tokens.h"
#include "numformat/sectioned_format.h"

/// Turns a format string into a format. Lives for one compilation.
class KNFCompile {
 public:
  /// An empty `format` is General.
  explicit KNFCompile(std::wstring_view format) : format_(format) {}

  /// Reads the format in the dialect of `pieces` and the locale of `param`, which may be null; without pieces
  /// every section is an empty one. `*out` starts with one reference. kInvalidArgument and a null `*out` for
  /// a malformed format.
  Status Compile(PieceList pieces, KNFSect** out, const NF_FORMAT_PARAM* param) const;

 private:
  /// The texts of the sections, cut at their separators.
  struct Sections {
    std::wstring_view texts[kMaxSections];
    int count = 0;
  };

  static bool GetSectBegins(std::wstring_view format, Sections& sections);
  static NF_SORT CompileSect(PieceList pieces, std::wstring_view text, AREA_CODE_INDEX locale,
                             bool lastOfFour, std::unique_ptr<KNFBase>& out);

  std::wstring_view format_;
};
