#include "numformat/date_tokens.h"

#include <algorithm>

namespace {

using TokenList = std::vector<NFCompilePiece>;

bool isIn(int id, int first, int last) {
  return id >= first && id <= last;
}

/// A separator is the locale's own ("/", but "-" in Chinese) or a character as it stands.
void resolveSeparators(TokenList& tokens, AREA_CODE_INDEX locale) {
  const auto separator = [](bool ofLocale) {
    return &s_PLResouce[ofLocale ? kPieceDateMark : kPieceDateMark2];
  };
  for (NFCompilePiece& token : tokens) {
    const int id = idOf(token);
    if (id == kIdFranction) token.second = separator(locale != AREA_CHINESE);
    if (id == kIdSub) token.second = separator(locale == AREA_CHINESE);
    if (id == kIdUnknownChar && (token.first == L"-" || token.first == L"/")) token.second = separator(false);
  }
}

bool isDateField(int id) {
  return isIn(id, kIdYear00, kIdSeconds);
}

bool isHour(int id) {
  return isIn(id, kIdHour0, kIdHour0012) || id == kIdHours;
}

bool isSecond(int id) {
  return id == kIdSecond0 || id == kIdSecond00;
}

/// "m" and "mm" behind an hour or before a second are minutes.
void resolveMinutes(TokenList& tokens) {
  NFCompilePiece* before = nullptr;  // the last field
  for (NFCompilePiece& token : tokens) {
    const int id = idOf(token);
    if (!isDateField(id)) continue;
    const auto makeMinute = [](NFCompilePiece& month) {
      if (idOf(month) == kIdMonth0) month.second = &s_PLResouce[kPieceMinute0];
      if (idOf(month) == kIdMonth00) month.second = &s_PLResouce[kPieceMinute00];
    };
    if (before && isHour(idOf(*before))) makeMinute(token);
    if (before && isSecond(id)) makeMinute(*before);
    before = &token;
  }
}

/// Fields of which two in a row are one too many.
struct LikeFields {
  int first;  ///< id
  int last;
  int group;
};
constexpr LikeFields kLikeFields[] = {
    {kIdYear00, kIdYear0000, 0},  {kIdJpYear1, kIdJpYear3, 1},       {kIdJpYear4, kIdJpYear4, 2},
    {kIdMonth0, kIdMonth00, 3},   {kIdMonthShort, kIdMonthFirst, 3}, {kIdDay0, kIdDayFull, 4},
    {kIdWeek0, kIdWeek000, 5},    {kIdHour0, kIdHour0012, 6},        {kIdMinute0, kIdMinute00, 7},
    {kIdSecond0, kIdSecond00, 8},
};
constexpr int kNoGroup = -1;

int groupOf(int id) {
  for (const LikeFields& row : kLikeFields) {
    if (isIn(id, row.first, row.last)) return row.group;
  }
  return kNoGroup;
}

void removeDuplicates(TokenList& tokens) {
  const auto alike = [](const NFCompilePiece& a, const NFCompilePiece& b) {
    const int group = groupOf(idOf(a));
    return group != kNoGroup && group == groupOf(idOf(b));
  };
  tokens.erase(std::unique(tokens.begin(), tokens.end(), alike), tokens.end());
}

/// In Chinese a year is written in full by two letters that stand by themselves.
void resolveChineseYears(TokenList& tokens) {
  const auto isYear = [](const NFCompilePiece& token) {
    return isIn(idOf(token), kIdYearQelTwo, kIdYearQelOne);
  };
  TokenList kept;
  for (NFCompilePiece& token : tokens) {
    if (isYear(token) && !kept.empty() && isYear(kept.back())) {
      kept.back().second = &s_PLResouce[kPieceYearQelEE];
      continue;
    }
    if (idOf(token) == kIdYearQelTwo) token.second = &s_PLResouce[kPieceYearQelE];
    kept.push_back(std::move(token));
  }
  tokens = std::move(kept);
}

/// With a half of the day there are 12 hours.
void resolveHours(TokenList& tokens) {
  const bool halves = std::any_of(tokens.begin(), tokens.end(), [](const NFCompilePiece& token) {
    return isIn(idOf(token), kIdAmPmAM, kIdAmPm);
  });
  if (!halves) return;
  for (NFCompilePiece& token : tokens) {
    if (idOf(token) == kIdHour0) token.second = &s_PLResouce[kPieceHour012];
    if (idOf(token) == kIdHour00) token.second = &s_PLResouce[kPieceHour0012];
  }
}

/// What a field says of the section.
struct FieldFlag {
  int first;  ///< id
  int last;
  uint32_t flag;
};
constexpr FieldFlag kFieldFlags[] = {
    {kIdYear00, kIdYearQelOne, NF_STYLE_YEAR},
    {kIdMonth0, kIdMonthQelO, NF_STYLE_MONTH},
    {kIdDay0, kIdWeek000, NF_STYLE_DAY},
    {kIdHour0, kIdHour0012, NF_STYLE_HOUR},
    {kIdMinute0, kIdMinute00Qel, NF_STYLE_MINUTE},
    {kIdSecond0, kIdSecond00, NF_STYLE_SECOND},
    {kIdDays, kIdDays, NF_STYLE_DAY},
    {kIdHours, kIdHours, NF_STYLE_HOUR},
    {kIdMinutes, kIdMinutes, NF_STYLE_MINUTE},
    {kIdSeconds, kIdSeconds, NF_STYLE_SECOND},
    {kIdAmPmAM, kIdAmPm, NF_STYLE_TIME},
};
constexpr uint32_t kDateFields = NF_STYLE_YEAR | NF_STYLE_MONTH | NF_STYLE_DAY;
constexpr uint32_t kTimeFields = NF_STYLE_HOUR | NF_STYLE_MINUTE | NF_STYLE_SECOND;

uint32_t fieldFlags(const TokenList& tokens) {
  uint32_t flags = 0;
  for (const NFCompilePiece& token : tokens) {
    for (const FieldFlag& row : kFieldFlags) {
      if (isIn(idOf(token), row.first, row.last)) flags |= row.flag;
    }
  }
  if (flags & kTimeFields) flags |= NF_STYLE_TIME;
  if ((flags & kDateFields) || !(flags & NF_STYLE_TIME)) flags |= NF_STYLE_DATE;
  return flags;
}

}  // namespace

void resolveDateTokens(SectionTokens& section) {
  resolveSeparators(section.tokens, section.locale);
  resolveMinutes(section.tokens);
  removeDuplicates(section.tokens);
  if (section.area == AREA_CHINESE) resolveChineseYears(section.tokens);
  resolveHours(section.tokens);
  section.style.flags |= fieldFlags(section.tokens);
}
