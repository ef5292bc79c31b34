#pragma once

#include <memory>
#include <string_view>

#include "base/status.h"
#include "numformat/section_tokens.h"
#include "numformat/sectioned_format.h"

/// Turns a format string into a format. Lives for one compilation.
class KNFCompile {
 public:
  /// Makes the keywords known. The tables are constants, so that this costs nothing.
  static void InitResource();
  static void UninitResource();
  static bool IsInitialised();
  /// The keywords of a dialect; none before InitResource, which makes every section an empty one.
  static PieceList Pieces(PieceList dialect);

  /// A null `format` is an empty one, which is General.
  explicit KNFCompile(const wchar_t* format) : format_(format ? format : L"") {}

  /// Reads the format in the dialect of `pieces` and the locale of `param`, which may be null. `*out` starts
  /// with one reference. kInvalidArgument and a null `*out` for a malformed format.
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
