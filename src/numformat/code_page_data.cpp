#include "numformat/code_page_data.h"

// clang-format off

namespace {

constexpr wchar_t kMoneyNumerals[] = L"零壹贰叁肆伍陆柒捌玖拾佰仟万亿兆正负点";

}  // namespace

const KNFCodePage::_CodePage kCodePages[23] = {
    {DBNum0, L"DBNum0", L"0123456789", 10, 10},
    {DBNum1, L"DBNum1", L"\u25CB一二三四五六七八九十百千万亿兆正负点", 19, 11},
    {DBNum2, L"DBNum2", kMoneyNumerals, 19, 11},
    {DBNum3, L"DBNum3", L"０１２３４５６７８９", 10, 10},
    {DBNum4, L"DBNum4", L"ⅠⅡⅢⅣⅤⅥⅦⅧⅨⅩ", 7, 0},
    {DBNum5, L"DBNum5", L"ⅰⅱⅲⅳⅴⅵⅶⅷⅸⅹ", 7, 0},
    {DBNum6, L"DBNum6", L"ABCDEFGHIJKLMNOPQRSTUVWXYZ", 26, 26},
    {DBNum7, L"DBNum7", L"abcdefghijklmnopqrstuvwxyz", 26, 26},
    {DBNum8, L"DBNum8", L"", 0, 0},
    {DBNum9, L"DBNum9", L"", 0, 0},
    {DBNum10, L"DBNum10", L"", 0, 0},
    {DBNum11, L"DBNum11", L"0123456789ABCDEF", 16, 16},
    {DBNum12, L"DBNum12", L"甲乙丙丁戊己庚辛壬癸", 10, 10},
    {DBNum13, L"DBNum13", L"子丑寅卯辰巳午未申酉戌亥", 12, 12},
    {DBNum14, L"DBNum14", L"⒈⒉⒊⒋⒌⒍⒎⒏⒐⒑⒒⒓⒔⒕⒖⒗⒘⒙⒚⒛", 20, 20},
    {DBNum15, L"DBNum15", L"⑴⑵⑶⑷⑸⑹⑺⑻⑼⑽⑾⑿⒀⒁⒂⒃⒄⒅⒆⒇", 20, 20},
    {DBNum16, L"DBNum16", L"①②③④⑤⑥⑦⑧⑨⑩", 10, 10},
    {DBNum17, L"DBNum17", L"㈠㈡㈢㈣㈤㈥㈦㈧㈨㈩", 10, 10},
    {DBNum18, L"DBNum18", L"ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩ", 24, 24},
    {DBNum19, L"DBNum19", L"αβγδεζηθικλμνξοπρστυφχψω", 24, 24},
    {DBNum20, L"DBNum20", kMoneyNumerals, 19, 11},
    {DBNum21, L"DBNum21", L"アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲン", 46, 46},
    {DBNum22, L"DBNum22", L"イロハニホヘトチリヌルヲワカヨタレソツネナラムウヰノオクヤマケフコエテアサキユメミシヱヒモセスン", 48, 48},
};

const wchar_t* const kRomanUpper[28] = {
    L"I", L"II", L"III", L"IV", L"V", L"VI", L"VII", L"VIII", L"IX",
    L"X", L"XX", L"XXX", L"XL", L"L", L"LX", L"LXX", L"LXXX", L"XC",
    L"C", L"CC", L"CCC", L"CD", L"D", L"DC", L"DCC", L"DCCC", L"CM",
    L"M",
};

const wchar_t* const kRomanLower[28] = {
    L"i", L"ii", L"iii", L"iv", L"v", L"vi", L"vii", L"viii", L"ix",
    L"x", L"xx", L"xxx", L"xl", L"l", L"lx", L"lxx", L"lxxx", L"xc",
    L"c", L"cc", L"ccc", L"cd", L"d", L"dc", L"dcc", L"dccc", L"cm",
    L"m",
};

const JapanesePage kJapanesePages[4] = {{0, false}, {1, true}, {2, false}, {1, false}};

const wchar_t* const EnglishNumber_D0[10] = {
    L"zero", L"one", L"two", L"three", L"four", L"five", L"six", L"seven", L"eight", L"nine",
};
const wchar_t* const EnglishNumber_1x[10] = {
    L"ten", L"eleven", L"twelve", L"thirteen", L"fourteen", L"fifteen", L"sixteen", L"seventeen",
    L"eightteen",  // with two t, as it has always been written
    L"nineteen",
};
const wchar_t* const EnglishNumber_Tens[10] = {
    L"", L"ten", L"twenty", L"thirty", L"forty", L"fifty", L"sixty", L"seventy", L"eighty", L"ninety",
};
const wchar_t EnglishNumber_100[] = L"hundred";
const wchar_t EnglishNumber_1000[] = L"thousand";
const wchar_t* const EnglishNumber_th[4] = {L"th", L"st", L"nd", L"rd"};
const wchar_t EnglishNumber_First[] = L"first";
const wchar_t EnglishNumber_Second[] = L"second";
const wchar_t EnglishNumber_Third[] = L"third";
const wchar_t EnglishNumber_Fifth[] = L"fth";
const wchar_t EnglishNumber_tieth[] = L"ieth";
