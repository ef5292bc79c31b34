#include "numformat/placeholder_piece.h"

namespace {

constexpr bool kCaseMatters = true;

}  // namespace

// The order is that of the indices by which the dialects and the compiler name the pieces.
const KPlaceholderPiece s_PLResouce[kPieceCount] = {
    /* 0 */ {&KPlaceholderPiece_Char, &KPlaceholder_UnknownChar, L"!"},
    /* 1 */ {&KPlaceholderPiece_Char2, &KPlaceholder_UnknownChar, L"\\"},
    /* 2 */ {&KPlaceholderPiece_FillChar, &KPlaceholder_FillChar, L"*"},
    /* 3 */ {&KPlaceholderPiece_String, &KPlaceholder_CharString, L"\""},
    /* 4 */ {&KPlaceholderPiece_String, &KPlaceholder_CharString, L"'"},
    /* 5 */ {&KPlaceholderPiece_Blank, &KPlaceholder_Blank, L"_"},
    /* 6 */ {&KPlaceholderPiece_Blank2, &KPlaceholder_Blank, L" "},
    /* 7 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_General, L"G/通用格式"},
    /* 8 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_General, L"General"},
    /* 9 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_General, L"G/標準"},
    /* 10 */ {&KPlaceholder_Times, &KPlaceholder_Days, L"d"},
    /* 11 */ {&KPlaceholder_Times, &KPlaceholder_Hours, L"h"},
    /* 12 */ {&KPlaceholder_Times, &KPlaceholder_Minutes, L"m"},
    /* 13 */ {&KPlaceholder_Times, &KPlaceholder_Seconds, L"s"},
    /* 14 */ {&KPlaceholderPiece_Codepage, &KPlaceholder_Ohter, L""},
    /* 15 */ {&KPlaceholderPiece_Color, &KPlaceholder_Ohter, L""},
    /* 16 */ {&KPlaceholderPiece_ChineseCurrency, &KPlaceholder_Ohter, L""},
    /* 17 */ {&KPlaceholderPiece_AreaCode, &KPlaceholder_Ohter, L""},
    /* 18 */ {&KPlaceholderPiece_CurrencySymbol, &KPlaceholder_CurrencySymbol, L"[$"},
    /* 19 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Year0000, L"yyyy"},
    /* 20 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Year0000, L"yyy", L"yyyy"},
    /* 21 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Year00, L"yy"},
    /* 22 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Year00, L"y", L"yy"},
    /* 23 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_JP_Year_1, L"ggg"},
    /* 24 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_JP_Year_2, L"gg"},
    /* 25 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_JP_Year_3, L"g"},
    /* 26 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_JP_Year_4, L"e", nullptr, kCaseMatters},
    /* 27 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_MonthFirst, L"mmmmm"},
    /* 28 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_MonthFull, L"mmmm"},
    /* 29 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_MonthShort, L"mmm"},
    /* 30 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Month00, L"mm"},
    /* 31 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Month0, L"m"},
    /* 32 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Month00_QEL, L"MM", nullptr, kCaseMatters},
    /* 33 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Month0_QEL, L"M", nullptr, kCaseMatters},
    /* 34 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_DayFull, L"dddd"},
    /* 35 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_DayShort, L"ddd"},
    /* 36 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Day00, L"dd"},
    /* 37 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Day0, L"d"},
    /* 38 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Week000, L"www", L"aaaa"},
    /* 39 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Week00, L"ww"},
    /* 40 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Week0, L"w", L"aaa"},
    /* 41 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Week000, L"aaaa"},
    /* 42 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Week0, L"aaa"},
    /* 43 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_DayFull_C, L"DDDD", nullptr, kCaseMatters},
    /* 44 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_DayShort_C, L"DDD", nullptr, kCaseMatters},
    /* 45 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_MonthFirst_C, L"MMMMM", nullptr, kCaseMatters},
    /* 46 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_MonthFull_C, L"MMMM", nullptr, kCaseMatters},
    /* 47 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_MonthShort_C, L"MMM", nullptr, kCaseMatters},
    /* 48 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Hour00, L"HH", nullptr, kCaseMatters},
    /* 49 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Hour0, L"H", nullptr, kCaseMatters},
    /* 50 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Hour_00_12, L"hh", nullptr, kCaseMatters},
    /* 51 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Hour_0_12, L"h", nullptr, kCaseMatters},
    /* 52 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Hour00, L"hh", L"HH"},
    /* 53 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Hour0, L"h", L"H"},
    /* 54 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Minute00, L"mm"},
    /* 55 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Minute0, L"m"},
    /* 56 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Minute00_QEL, L"mm", nullptr, kCaseMatters},
    /* 57 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Minute0_QEL, L"m", nullptr, kCaseMatters},
    /* 58 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Second00, L"ss"},
    /* 59 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Second0, L"s"},
    /* 60 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Plus, L"+"},
    /* 61 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Sub, L"-"},
    /* 62 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_String, L"@"},
    /* 63 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Shape, L"#"},
    /* 64 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_ShapeH, L"#"},
    /* 65 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Zero, L"0"},
    /* 66 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_ZeroH, L"0"},
    /* 67 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Qusmk, L"?"},
    /* 68 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_QusmkH, L"?"},
    /* 69 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_XCode, L"x"},
    /* 70 */ {&KPlaceholderPiece_Point, &KPlaceholder_Point, L""},
    /* 71 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Percent, L"%"},
    /* 72 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Franction, L"/"},
    /* 73 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Exponent, L"E"},
    /* 74 */ {&KPlaceholderPiece_AMPM, &KPlaceholder_AMPM_CH, L"上午/下午"},
    /* 75 */ {&KPlaceholderPiece_AMPM, &KPlaceholder_AMPM_AM, L"AM/PM"},
    /* 76 */ {&KPlaceholderPiece_AMPM, &KPlaceholder_AMPM_am, L"am/pm"},
    /* 77 */ {&KPlaceholderPiece_AMPM, &KPlaceholder_AMPM_A, L"A/P"},
    /* 78 */ {&KPlaceholderPiece_AMPM, &KPlaceholder_AMPM_a, L"a/p"},
    /* 79 */ {&KPlaceholderPiece_AMPM, &KPlaceholder_AMPM_JP, L"午前/午後"},
    /* 80 */ {&KPlaceholderPiece_AMPM, &KPlaceholder_AMPM, L"AM/PM"},
    /* 81 */ {&KPlaceholderPiece_WestYear, &KPlaceholder_Ohter, L"b1"},
    /* 82 */ {&KPlaceholderPiece_Group, &KPlaceholder_Group, L""},
    /* 83 */ {&KPlaceholderPiece_Note, &KPlaceholder_Ohter, L"["},
    /* 84 */ {&KPlaceholderPiece_UnknownChar, &KPlaceholder_CharString, L""},
    /* 85 */ {&KPlaceholderPiece_NULL, &KPlaceholder_SignNegative, L""},
    /* 86 */ {&KPlaceholderPiece_FactionPL, &KPlaceholder_FactionPL, L""},
    /* 87 */ {&KPlaceholderPiece_NULL, &KPlaceholder_MarkFraction, L""},
    /* 88 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_DayShort, L"aaa"},
    /* 89 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Year_QEL_EE, L"EE", nullptr, kCaseMatters},
    /* 90 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Year_QEL_E, L"E", nullptr, kCaseMatters},
    /* 91 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Year_QEL_ee, L"ee", nullptr, kCaseMatters},
    /* 92 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Year_QEL_e, L"e", nullptr, kCaseMatters},
    /* 93 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Month_QEL_O, L"O", nullptr, kCaseMatters},
    /* 94 */ {&KPlaceholderPiece_NormalRoot, &KPlaceholder_Day_QEL_A, L"A", nullptr, kCaseMatters},
    /* 95 */ {&KPlaceholderPiece_Group, &KPlaceholder_GroupLast, L""},
    /* 96 */ {&KPlaceholderPiece_DateMark, &KPlaceholder_UnknownChar, L""},
    /* 97 */ {&KPlaceholderPiece_DateMark2, &KPlaceholder_UnknownChar, L""},
};

namespace {

// Spelled out, since the order of trial is what a dialect is.
constexpr unsigned char kOQ[] = {0,  1,  2,  3,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17,
                                 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 34, 35, 36,
                                 37, 38, 39, 40, 41, 42, 48, 50, 49, 51, 54, 55, 58, 59, 60, 61, 62,
                                 63, 65, 67, 69, 70, 71, 72, 73, 75, 81, 82, 83, 84, 85, 86, 87};
constexpr unsigned char kExcel[] = {0,  1,  2,  3,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17,
                                    18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 34, 35, 36,
                                    37, 38, 39, 40, 41, 42, 48, 52, 49, 53, 54, 55, 58, 59, 60, 61, 62,
                                    63, 65, 67, 69, 70, 71, 72, 73, 75, 81, 82, 83, 84, 85, 86, 87};
constexpr unsigned char kWord[] = {
    0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17, 18, 89, 91, 90, 92, 19, 20, 21,
    22, 23, 24, 25, 26, 45, 27, 46, 28, 47, 29, 32, 33, 93, 34, 35, 36, 37, 38, 39, 40, 88, 42, 48, 50, 49,
    51, 56, 57, 58, 59, 60, 61, 62, 63, 65, 67, 69, 70, 71, 72, 73, 75, 81, 94, 82, 83, 84, 85, 86, 87};
constexpr unsigned char kQel[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                  16, 17, 18, 89, 91, 90, 92, 19, 20, 21, 22, 23, 24, 25, 26, 45,
                                  27, 46, 28, 47, 29, 32, 33, 93, 43, 34, 44, 35, 36, 37, 38, 39,
                                  40, 88, 42, 48, 50, 49, 51, 56, 57, 58, 59, 60, 61, 62, 63, 65,
                                  67, 69, 70, 71, 72, 73, 75, 81, 94, 82, 83, 84, 85, 86, 87};

static_assert(sizeof(kOQ) == 67 && sizeof(kExcel) == 67 && sizeof(kWord) == 77 && sizeof(kQel) == 79);

}  // namespace

const PieceList s_PLResouce_OQ = kOQ;
const PieceList s_PLResouce_EXCEL = kExcel;
const PieceList s_PLResouce_WORD = kWord;
const PieceList s_PLResouce_QEL = kQel;

int identifyToken(PieceList pieces, std::wstring_view text, KIdentifyInfo* info,
                  const KPlaceholderPiece** piece) {
  for (unsigned char index : pieces) {
    const int consumed = s_PLResouce[index].Identify(text, info);
    if (consumed == 0) continue;
    *piece = &s_PLResouce[index];
    return consumed;
  }
  *piece = nullptr;
  return 0;
}
