#include "numformat/section_tokens.h"

#include <algorithm>

int idOf(const NFCompilePiece& token) {
  return token.second ? token.second->placeholder->id : -1;
}

bool IsNumPH(int id) {
  return id >= 0 && id < kIdPoint;
}

bool isDigitToken(int id) {
  return IsNumPH(id) || id == kIdXCode;
}

bool SectionTokens::Read(PieceList pieces, std::wstring_view text, bool lastOfFour) {
  if (!tokenise(pieces, text) || !classify()) return false;
  takeGroupSeparators();
  std::erase_if(tokens, [](const NFCompilePiece& token) { return !token.second; });
  kind = decidedKind(lastOfFour);
  return true;
}

bool SectionTokens::tokenise(PieceList pieces, std::wstring_view text) {
  KIdentifyInfo info;
  info.area = locale;
  while (!text.empty()) {
    info.flags = 0;
    info.id = -1;
    const KPlaceholderPiece* piece;
    const int consumed = identifyToken(pieces, text, &info, &piece);
    if (consumed <= 0 || !take(info, info.id >= 0 ? &s_PLResouce[info.id] : piece)) return false;
    text.remove_prefix(static_cast<size_t>(consumed));
  }
  // The style was built up by the tokens and, for what they only told, here.
  style.fillChar = info.style.fillChar;
  style.codePage |= info.style.codePage;
  return true;
}

bool SectionTokens::take(const KIdentifyInfo& info, const KPlaceholderPiece* piece) {
  if (info.flags & kTokenAreaCode) return setArea(static_cast<AREA_CODE_INDEX>(info.value));
  if (info.flags & kTokenColour) return setColour(static_cast<uint32_t>(info.value));
  if (info.flags & kTokenCodePage) {
    setCodePage(style, info.value);
    codePageSeen_ = true;
    return true;
  }
  if (info.flags & kTokenChineseMoney) {
    style.flags |= NF_STYLE_CHINESE_MONEY;
    return true;
  }
  if (info.flags & kTokenWestYear) westYear = info.value;
  if (info.flags & kTokenCurrency) {
    if (currencySeen_) return false;
    currencySeen_ = true;
  }
  const int id = piece->placeholder->id;
  if (id == kIdAmPmJapanese && !setArea(AREA_JAPANESE)) return false;
  groupSeen_ |= id == kIdGroup;
  tokens.emplace_back(info.text, piece);
  return true;
}

bool SectionTokens::setArea(AREA_CODE_INDEX newArea) {
  if (area != AREA_NONE && area != newArea) return false;
  area = newArea;
  return true;
}

bool SectionTokens::setColour(uint32_t colour) {
  if (style.color != kNoColour && style.color != colour) return false;
  style.color = colour;
  colourSeen_ = true;
  return true;
}

namespace {

/// What a token makes of its section.
NF_SORT JudgeType(int id) {
  switch (id) {
    case kIdShape:
    case kIdZero:
    case kIdQusmk:
    case kIdPoint:
    case kIdXCode:
      return NF_SORT_NUMBER;
    case kIdGroup:
    case kIdPlus:
    case kIdSub:
    case kIdCharString:
    case kIdFillChar:
    case kIdBlank:
    case kIdUnknownChar:
    case kIdOhter:
    case kIdCurrencySymbol:
      return NF_SORT_UNDECIDED;
    case kIdExponent:
      return NF_SORT_EXPONENT;
    case kIdPercent:
      return NF_SORT_PERCENT;
    case kIdThousandth:
      return NF_SORT_PER_MILLE;
    case kIdFranction:
      return NF_SORT_FRACTION;
    case kIdString:
      return NF_SORT_TEXT;
    case kIdGeneral:
      return NF_SORT_GENERAL;
    default:
      return id > kIdCurrencySymbol ? NF_SORT_MALFORMED : NF_SORT_DATE;
  }
}

/// Whether a token of that type may stand in a section of that kind, which it may change.
bool TypePriority(NF_SORT& kind, NF_SORT type) {
  if (type >= NF_SORT_UNDECIDED) return true;
  switch (kind) {
    case NF_SORT_UNDECIDED:
      kind = type;
      return true;
    case NF_SORT_NUMBER:
      if (type == NF_SORT_GENERAL || type == NF_SORT_TEXT) return false;
      kind = type;
      return true;
    case NF_SORT_GENERAL:
      if (type != NF_SORT_GENERAL && type != NF_SORT_DATE) return false;
      kind = type;
      return true;
    case NF_SORT_DATE:
      return type == NF_SORT_GENERAL || type == NF_SORT_DATE || type == NF_SORT_NUMBER;
    case NF_SORT_TEXT:
      return false;
    default:
      return type == NF_SORT_NUMBER;
  }
}

bool isLoneE(int id) {
  return id == kIdJpYear4 || id == kIdYearQelOne;
}

}  // namespace

bool SectionTokens::classify() {
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (!tokens[i].second) continue;
    const int id = idOf(tokens[i]);
    if (isRemovedInDate(id)) {
      tokens[i].second = nullptr;
      continue;
    }
    NF_SORT type = JudgeType(id);
    if (kind == NF_SORT_DATE && type == NF_SORT_FRACTION) type = NF_SORT_DATE;
    if (kind == NF_SORT_NUMBER && type == NF_SORT_DATE) {
      if (!isLoneE(id)) {  // a date after all: look at what came before in that light
        kind = NF_SORT_DATE;
        i = static_cast<size_t>(-1);
        continue;
      }
      tokens[i].second = &s_PLResouce[kPieceExponent];
      type = NF_SORT_EXPONENT;
    }
    if (!TypePriority(kind, type)) return false;
  }
  return true;
}

bool SectionTokens::isRemovedInDate(int id) const {
  return kind == NF_SORT_DATE && isDigitToken(id);
}

void SectionTokens::takeGroupSeparators() {
  const bool isNumber = kind == NF_SORT_NUMBER || kind == NF_SORT_PERCENT || kind == NF_SORT_PER_MILLE;
  if (!groupSeen_ || !isNumber) {
    if (kind != NF_SORT_DATE && kind != NF_SORT_TEXT) removeGroups(tokens.size());
    return;
  }
  const auto lastDigit = std::find_if(tokens.rbegin(), tokens.rend(),
                                      [](const NFCompilePiece& token) { return isDigitToken(idOf(token)); });
  const auto behindLastDigit = static_cast<size_t>(tokens.rend() - lastDigit);
  removeGroups(behindLastDigit);
  takeScaleCommas(behindLastDigit);
}

void SectionTokens::takeScaleCommas(size_t behindLastDigit) {
  for (size_t i = behindLastDigit; i < tokens.size(); ++i) {
    const int id = idOf(tokens[i]);
    if (id == kIdPoint) continue;
    if (id != kIdGroup) return;
    tokens[i].second = &s_PLResouce[kPieceGroupLast];
    style.flags |= NF_STYLE_SCALE_COMMAS;
    ++scale;
  }
}

void SectionTokens::removeGroups(size_t end) {
  for (size_t i = 0; i < end; ++i) {
    if (idOf(tokens[i]) == kIdGroup) tokens[i].second = nullptr;
  }
}

NF_SORT SectionTokens::decidedKind(bool lastOfFour) const {
  if (kind < NF_SORT_UNDECIDED) return kind;
  if (lastOfFour) return NF_SORT_TEXT;
  return colourSeen_ || codePageSeen_ ? NF_SORT_GENERAL : NF_SORT_NUMBER;
}
