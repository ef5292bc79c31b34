#include "numformat/const_strings_data.h"

// clang-format off

const wchar_t* const kWeekDays[kAreas][3][7] = {
    {{L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"},
     {L"Sunday", L"Monday", L"Tuesday", L"Wednesday", L"Thursday", L"Friday", L"Saturday"},
     {L"Sunday", L"Monday", L"Tuesday", L"Wednesday", L"Thursday", L"Friday", L"Saturday"}},
    {{L"日", L"月", L"火", L"水", L"木", L"金", L"土"},
     {L"日曜日", L"月曜日", L"火曜日", L"水曜日", L"木曜日", L"金曜日", L"土曜日"},
     {L"日曜日", L"月曜日", L"火曜日", L"水曜日", L"木曜日", L"金曜日", L"土曜日"}},
    {{L"日", L"一", L"二", L"三", L"四", L"五", L"六"},
     {L"星期日", L"星期一", L"星期二", L"星期三", L"星期四", L"星期五", L"星期六"},
     {L"周日", L"周一", L"周二", L"周三", L"周四", L"周五", L"周六"}},
    {{L"cn", L"hai", L"ba", L"t\u01B0", L"n\u0103m", L"sa\u0301u", L"ba\u0309y"},
     {L"chu\u0309 nh\u00E2\u0323t", L"th\u01B0\u0301 hai", L"th\u01B0\u0301 ba", L"th\u01B0\u0301 t\u01B0",
      L"th\u01B0\u0301 n\u0103m", L"th\u01B0\u0301 sa\u0301u", L"th\u01B0\u0301 ba\u0309y"},
     {L"cn", L"hai", L"ba", L"t\u01B0", L"n\u0103m", L"sa\u0301u", L"ba\u0309y"}},
};

const wchar_t* const kWeekDaysVn[2][7] = {
    {L"Chu\u0309 Nh\u00E2\u0323t", L"Th\u01B0\u0301 Hai", L"Th\u01B0\u0301 Ba", L"Th\u01B0\u0301 T\u01B0",
     L"Th\u01B0\u0301 N\u0103m", L"Th\u01B0\u0301 Sa\u0301u", L"Th\u01B0\u0301 Ba\u0309y"},
    {L"Cn", L"Hai", L"Ba", L"T\u01B0", L"N\u0103m", L"Sa\u0301u", L"Ba\u0309y"},
};

const wchar_t* const kMonths[kAreas][3][12] = {
    {{L"J", L"F", L"M", L"A", L"M", L"J", L"J", L"A", L"S", L"O", L"N", L"D"},
     {L"January", L"February", L"March", L"April", L"May", L"June",
      L"July", L"August", L"September", L"October", L"November", L"December"},
     {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun", L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"}},
    {{L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9", L"10", L"11", L"12"},
     {L"1月", L"2月", L"3月", L"4月", L"5月", L"6月", L"7月", L"8月", L"9月", L"10月", L"11月", L"12月"},
     {L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9", L"10", L"11", L"12"}},
    {{L"一", L"二", L"三", L"四", L"五", L"六", L"七", L"八", L"九", L"十", L"十一", L"十二"},
     {L"一月", L"二月", L"三月", L"四月", L"五月", L"六月",
      L"七月", L"八月", L"九月", L"十月", L"十一月", L"十二月"},
     {L"一月", L"二月", L"三月", L"四月", L"五月", L"六月",
      L"七月", L"八月", L"九月", L"十月", L"十一月", L"十二月"}},
    {{L"t", L"t", L"t", L"t", L"t", L"t", L"t", L"t", L"t", L"t", L"t", L"t"},
     {L"tha\u0301ng m\u00F4\u0323t", L"tha\u0301ng hai", L"tha\u0301ng ba", L"tha\u0301ng t\u01B0",
      L"tha\u0301ng n\u0103m", L"tha\u0301ng sa\u0301u", L"tha\u0301ng ba\u0309y", L"tha\u0301ng ta\u0301m",
      L"tha\u0301ng chi\u0301n", L"tha\u0301ng m\u01B0\u01A1\u0300i",
      L"tha\u0301ng m\u01B0\u01A1\u0300i m\u00F4\u0323t", L"tha\u0301ng m\u01B0\u01A1\u0300i hai"},
     {L"th1", L"th2", L"th3", L"th4", L"th5", L"th6", L"th7", L"th8", L"th9", L"th10", L"th11", L"th12"}},
};

const wchar_t* const kMonthsVn[2][12] = {
    {L"Tha\u0301ng m\u00F4\u0323t", L"Tha\u0301ng hai", L"Tha\u0301ng ba", L"Tha\u0301ng t\u01B0",
     L"Tha\u0301ng n\u0103m", L"Tha\u0301ng sa\u0301u", L"Tha\u0301ng ba\u0309y", L"Tha\u0301ng ta\u0301m",
     L"Tha\u0301ng chi\u0301n", L"Tha\u0301ng m\u01B0\u01A1\u0300i",
     L"Tha\u0301ng m\u01B0\u01A1\u0300i m\u00F4\u0323t", L"Tha\u0301ng m\u01B0\u01A1\u0300i hai"},
    {L"Th1", L"Th2", L"Th3", L"Th4", L"Th5", L"Th6", L"Th7", L"Th8", L"Th9", L"Th10", L"Th11", L"Th12"},
};

const wchar_t* const kHalvesOfDay[kAreas][6][2] = {
    {{L"AM", L"PM"}, {L"AM", L"PM"}, {L"A", L"P"}, {L"a", L"p"}, {L"AM", L"PM"}, {L"AM", L"PM"}},
    {{L"午前", L"午後"}, {L"午前", L"午後"}, {L"午前", L"午後"},
     {L"午前", L"午後"}, {L"午前", L"午後"}, {L"午前", L"午後"}},
    {{L"AM", L"PM"}, {L"AM", L"PM"}, {L"A", L"P"}, {L"a", L"p"}, {L"上午", L"下午"}, {L"上午", L"下午"}},
    {{L"SA", L"CH"}, {L"SA", L"CH"}, {L"SA", L"CH"}, {L"SA", L"CH"}, {L"SA", L"CH"}, {L"SA", L"CH"}},
};

const wchar_t* const kHalfOfDayKeywords[8] = {
    L"AM/PM", L"am/pm", L"A/P", L"a/p", L"AMPM", L"午前/午後", L"上午/下午", L"AM/PM",
};

const wchar_t* const kGeneralKeywords[kAreas] = {L"General", L"G/標準", L"G/通用格式", L"General"};

const wchar_t* const kColours[kAreas][8] = {
    {L"Black", L"Blue", L"Cyan", L"Green", L"Magenta", L"Red", L"Yellow", L"White"},
    {L"黒", L"青", L"水", L"緑", L"紫", L"赤", L"黄", L"白"},
    {L"黑色", L"蓝色", L"青色", L"绿色", L"洋红", L"红色", L"黄色", L"白色"},
    {L"Black", L"Blue", L"Cyan", L"Green", L"Magenta", L"Red", L"Yellow", L"White"},
};

const uint32_t kColourWords[8] = {
    0xFF000000, 0xFF0000FF, 0xFF00FFFF,
    0xFF008000,  // darker than the green of the same name elsewhere
    0xFFFF00FF, 0xFFFF0000, 0xFFFFFF00, 0xFFFFFFFF,
};

const wchar_t* const kEras[3][4] = {
    {L"M", L"T", L"S", L"H"},
    {L"明", L"大", L"昭", L"平"},
    {L"明治", L"大正", L"昭和", L"平成"},
};

const wchar_t* const kJapaneseNumerals[3] = {
    L"〇一二三四五六七八九十百千万億兆-.",
    L"〇壱弐参四伍六七八九拾百阡萬億兆-.",
    L"０１２３４５６７８９十百千万億兆",
};

const wchar_t kChineseCurrency[] = L"$RMB";
const wchar_t kChineseCurrencyWords[] = L"元角分整";

const AreaCode kAreaCodes[5] = {
    {L"$-409", AREA_ENGLISH},
    {L"$-411", AREA_JAPANESE},
    {L"$-804", AREA_CHINESE},
    {L"$-42A", AREA_VIETNAMESE},
    {L"$-101042A", AREA_VIETNAMESE},
};

const Separators kSeparators[kAreas] = {{L'.', L','}, {L'.', L','}, {L'.', L','}, {L',', L'.'}};
