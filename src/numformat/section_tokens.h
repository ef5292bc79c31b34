#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "numformat/placeholder_piece.h"

/// A token: its text and its piece; a null piece is a deleted token.
using NFCompilePiece = std::pair<std::wstring, const KPlaceholderPiece*>;

/// A section cut into tokens, and what they make of it.
class SectionTokens {
 public:
  /// `locale`: in force where the format is read.
  explicit SectionTokens(AREA_CODE_INDEX formatLocale) : locale(formatLocale) {}

  /// Cuts a section's text into tokens and decides its kind. `lastOfFour`: it stands where a text section is
  /// expected. False for a malformed section.
  bool Read(PieceList pieces, std::wstring_view text, bool lastOfFour);

  std::vector<NFCompilePiece> tokens;  ///< none of them deleted
  NF_SORT kind = NF_SORT_UNDECIDED;
  NFSTYLE style = kDefaultStyle;
  AREA_CODE_INDEX locale;
  AREA_CODE_INDEX area = AREA_NONE;  ///< that the section names
  int westYear = -1;                 ///< as in KNFBase
  int scale = 0;                     ///< count of scale commas

 private:
  bool tokenise(PieceList pieces, std::wstring_view text);
  bool take(const KIdentifyInfo& info, const KPlaceholderPiece* piece);
  bool setArea(AREA_CODE_INDEX newArea);
  bool setColour(uint32_t colour);
  bool classify();
  bool isRemovedInDate(int id) const;
  void takeGroupSeparators();
  void takeScaleCommas(size_t behindLastDigit);
  void removeGroups(size_t end);
  NF_SORT decidedKind(bool lastOfFour) const;

  bool colourSeen_ = false;
  bool codePageSeen_ = false;
  bool currencySeen_ = false;
  bool groupSeen_ = false;
};

/// Kind id of a token's placeholder; -1 for a deleted token.
int idOf(const NFCompilePiece& token);

/// "#", "0" and "?".
bool IsNumPH(int id);
/// These, and the "x".
bool isDigitToken(int id);
