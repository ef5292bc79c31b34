#include "numformat/const_strings.h"

#include <algorithm>
#include <iterator>

#include "numformat/const_strings_data.h"

constexpr KNFConstStrings KNFCStingsInstance;

namespace {

constexpr uint32_t kNoColour = 0xFFFFFE;

template <size_t N>
const wchar_t* at(const wchar_t* const (&texts)[N], int index) {
  return index >= 0 && static_cast<size_t>(index) < N ? texts[index] : L"";
}

template <size_t M, size_t N>
const wchar_t* at(const wchar_t* const (&texts)[M][N], int form, int index) {
  return form >= 0 && static_cast<size_t>(form) < M ? at(texts[form], index) : L"";
}

template <size_t L, size_t M, size_t N>
const wchar_t* at(const wchar_t* const (&texts)[L][M][N], int area, int form, int index) {
  return area >= 0 && static_cast<size_t>(area) < L ? at(texts[area], form, index) : L"";
}

const Separators& separators(AREA_CODE_INDEX area) {
  const bool known = area >= 0 && area < kAreas;
  return kSeparators[known ? area : AREA_ENGLISH];
}

wchar_t lowerCase(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool equalInAnyCase(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return lowerCase(x) == lowerCase(y); });
}

}  // namespace

const wchar_t* KNFConstStrings::GetWeekDay(AREA_CODE_INDEX area, int day, NF_DATE_Mode mode) const {
  return at(kWeekDays, area, mode, day);
}

const wchar_t* KNFConstStrings::GetWeekDay_Vn(int day, int form) const {
  return at(kWeekDaysVn, form, day);
}

const wchar_t* KNFConstStrings::GetMonth(AREA_CODE_INDEX area, int month, NF_DATE_Mode mode) const {
  return at(kMonths, area, mode, month);
}

const wchar_t* KNFConstStrings::GetMonth_Vn(int month, int form) const {
  return at(kMonthsVn, form, month);
}

const wchar_t* KNFConstStrings::GetAM(AREA_CODE_INDEX area, NF_DATE_Mode mode) const {
  return at(kHalvesOfDay, area, mode, 0);
}

const wchar_t* KNFConstStrings::GetPM(AREA_CODE_INDEX area, NF_DATE_Mode mode) const {
  return at(kHalvesOfDay, area, mode, 1);
}

const wchar_t* KNFConstStrings::GetAMPM(int index) const {
  return at(kHalfOfDayKeywords, index);
}

const wchar_t* KNFConstStrings::GetGeneral(int index) const {
  return at(kGeneralKeywords, index);
}

const wchar_t* KNFConstStrings::GetColor(AREA_CODE_INDEX area, int colour) const {
  return at(kColours, area, colour);
}

int KNFConstStrings::FindColor(std::wstring_view name) const {
  for (const auto& language : kColours) {
    const auto* found = std::find_if(std::begin(language), std::end(language),
                                     [&](const wchar_t* colour) { return equalInAnyCase(colour, name); });
    if (found != std::end(language)) return static_cast<int>(found - language);
  }
  return -1;
}

uint32_t KNFConstStrings::GetColorWord(int colour) const {
  const bool known = colour >= 0 && static_cast<size_t>(colour) < std::size(kColourWords);
  return known ? kColourWords[colour] : kNoColour;
}

const wchar_t* KNFConstStrings::GetAreaCode(AREA_CODE_INDEX area) const {
  for (const AreaCode& code : kAreaCodes) {
    if (code.area == area) return code.text;
  }
  return L"";
}

AREA_CODE_INDEX KNFConstStrings::FindAreaCode(std::wstring_view text) const {
  for (const AreaCode& code : kAreaCodes) {
    if (code.text == text) return code.area;
  }
  return AREA_NONE;
}

wchar_t KNFConstStrings::GetPoint(AREA_CODE_INDEX area) const {
  return separators(area).point;
}

wchar_t KNFConstStrings::GetGroup(AREA_CODE_INDEX area) const {
  return separators(area).group;
}

void KNFConstStrings::TransPoint2Group(std::wstring& text, AREA_CODE_INDEX area) const {
  if (area != AREA_VIETNAMESE) return;
  for (wchar_t& c : text) {
    if (c == L'.') {
      c = L',';
    } else if (c == L',') {
      c = L'.';
    }
  }
}

const wchar_t* KNFConstStrings::GetJPYear(NF_DATE_Mode mode, int era) const {
  return at(kEras, mode, era);
}

const wchar_t* KNFConstStrings::GetJPCodePageInfo(int index) const {
  return at(kJapaneseNumerals, index);
}

const wchar_t* KNFConstStrings::GetChineseCurrency() const {
  return kChineseCurrency;
}

const wchar_t* KNFConstStrings::GetChineseCurrencyPage() const {
  return kChineseCurrencyWords;
}
