#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "numformat/normal_format.h"
#include "numformat/placeholder_piece.h"
#include "numformat/sectioned_format.h"

/// Writes a format back as text, which compiles to a format that shows the same. What a dialect has no
/// keyword for is written as the dialect has it that comes nearest.
class KNFDeCompile {
 public:
  /// `locale`: in force when the text is read again.
  KNFDeCompile(DecompileType type, AREA_CODE_INDEX locale);

  std::wstring DeCompile(const KNFSect& format) const;

 private:
  /// The texts of a section's tokens, each of them one token.
  using Tokens = std::vector<std::wstring>;

  std::wstring section(const KNFBase& section) const;
  void writeBrackets(const KNFBase& section, std::wstring& out) const;
  void writeTokens(const KNFBase& section, Tokens& out) const;
  void writeToken(const KNFBase& section, const PlaceholderRecord& record, Tokens& out) const;
  static bool writeChineseYear(const PlaceholderRecord& record, Tokens& out);
  void writeExponentMark(const KNFExponent& section, Tokens& out) const;
  void writeLiteral(const PlaceholderRecord& record, Tokens& out) const;
  void DeCompileNumPL(const KNFBase& section, Tokens& out) const;
  std::wstring canonicalText(const PlaceholderRecord& record) const;
  std::wstring join(const Tokens& tokens) const;

  DecompileType type_;
  AREA_CODE_INDEX locale_;
  PieceList pieces_;  ///< of the dialect
};
