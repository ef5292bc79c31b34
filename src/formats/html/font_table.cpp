#include "formats/html/font_table.h"

#include <algorithm>
#include <iterator>

namespace pagerex {
namespace {

constexpr std::string_view kPeers[] = {
    "serif",
    "sans-serif",
    "monospace",
    "cursive",
    "fantasy",
    "Liberation Serif,Tinos,Times,serif",
    "Liberation Sans,Arimo,Helvetica,sans-serif",
    "Liberation Sans Narrow,Arimo,Helvetica,sans-serif",
    "Liberation Mono,Cousine,Courier,monospace",
    "Carlito,Lato,sans-serif",
    "Caladea,Georgia,serif",
    "Gelasio,serif",
    "DejaVu Sans,Geneva,sans-serif",
    "Palatino,TeX Gyre Pagella,URW Palladio L,serif",
    "EB Garamond,serif",
    "TeX Gyre Bonum,URW Bookman,serif",
    "TeX Gyre Schola,C059,Century Schoolbook L,serif",
    "TeX Gyre Adventor,URW Gothic,Futura,sans-serif",
    "Comic Neue,Comic Relief,cursive",
    "Z003,TeX Gyre Chorus,Apple Chancery,cursive",
    "Geeza Pro,Noto Naskh Arabic,Amiri,serif",
    "Songti SC,Noto Serif CJK SC,Noto Serif SC,serif",
    "PingFang SC,Noto Sans CJK SC,Noto Sans SC,sans-serif",
    "Kaiti SC,AR PL UKai CN,serif",
    "STFangsong,Noto Serif CJK SC,serif",
    "Songti TC,Noto Serif CJK TC,Noto Serif TC,serif",
    "PingFang TC,Noto Sans CJK TC,Noto Sans TC,sans-serif",
    "Kaiti TC,BiauKai,AR PL UKai TW,serif",
    "Hiragino Mincho ProN,Yu Mincho,Noto Serif CJK JP,Noto Serif JP,serif",
    "Hiragino Kaku Gothic ProN,Yu Gothic,Noto Sans CJK JP,Noto Sans JP,sans-serif",
    "AppleMyungjo,Noto Serif CJK KR,Noto Serif KR,serif",
    "Apple SD Gothic Neo,Noto Sans CJK KR,Noto Sans KR,sans-serif",
};
static_assert(std::size(kPeers) == static_cast<size_t>(FontPeers::kKoreanGothic) + 1);

using enum FontPeers;

constexpr KnownFont kKnownFonts[] = {
    {"Times New Roman", kTimes},
    {"Times", kTimes},
    {"Tms Rmn", kTimes},
    {"MS Serif", kTimes},
    {"Liberation Serif", kTimes},
    {"Arial", kArial},
    {"Helvetica", kArial},
    {"Helv", kArial},
    {"MS Sans Serif", kArial},
    {"Microsoft Sans Serif", kArial},
    {"Arial Unicode MS", kArial},
    {"Liberation Sans", kArial},
    {"Arial Narrow", kArialNarrow},
    {"Arial Black", kSans},
    {"Courier New", kCourier},
    {"Courier", kCourier},
    {"Liberation Mono", kCourier},
    {"Consolas", kMono},
    {"Lucida Console", kMono},
    {"Lucida Sans Typewriter", kMono},
    {"Andale Mono", kMono},
    {"Letter Gothic", kMono},
    {"Fixedsys", kMono},
    {"Terminal", kMono},
    {"Calibri", kCalibri},
    {"Calibri Light", kCalibri},
    {"Cambria", kCambria},
    {"Cambria Math", kCambria},
    {"Georgia", kGeorgia},
    {"Verdana", kVerdana},
    {"Tahoma", kVerdana},
    {"Lucida Sans Unicode", kVerdana},
    {"Lucida Sans", kVerdana},
    {"Palatino Linotype", kPalatino},
    {"Palatino", kPalatino},
    {"Book Antiqua", kPalatino},
    {"Garamond", kGaramond},
    {"Bookman Old Style", kBookman},
    {"Century Schoolbook", kSchoolbook},
    {"New Century Schoolbook", kSchoolbook},
    {"Century", kSchoolbook},
    {"Century Gothic", kGeometric},
    {"Avant Garde", kGeometric},
    {"Futura", kGeometric},
    {"Trebuchet MS", kSans},
    {"Segoe UI", kSans},
    {"Candara", kSans},
    {"Corbel", kSans},
    {"Franklin Gothic Book", kSans},
    {"Franklin Gothic Medium", kSans},
    {"Gill Sans MT", kSans},
    {"Univers", kSans},
    {"Optima", kSans},
    {"System", kSans},
    {"Constantia", kSerif},
    {"Rockwell", kSerif},
    {"Perpetua", kSerif},
    {"Symbol", kSerif},
    {"Comic Sans MS", kComic},
    {"Monotype Corsiva", kChancery},
    {"Lucida Calligraphy", kChancery},
    {"Zapf Chancery", kChancery},
    {"Lucida Handwriting", kCursive},
    {"Brush Script MT", kCursive},
    {"Bradley Hand ITC", kCursive},
    {"Edwardian Script ITC", kCursive},
    {"Freestyle Script", kCursive},
    {"French Script MT", kCursive},
    {"Kristen ITC", kCursive},
    {"Mistral", kCursive},
    {"Script MT Bold", kCursive},
    {"Segoe Print", kCursive},
    {"Segoe Script", kCursive},
    {"Vivaldi", kCursive},
    {"Impact", kFantasy},
    {"Algerian", kFantasy},
    {"Bauhaus 93", kFantasy},
    {"Broadway", kFantasy},
    {"Castellar", kFantasy},
    {"Chiller", kFantasy},
    {"Curlz MT", kFantasy},
    {"Jokerman", kFantasy},
    {"Old English Text MT", kFantasy},
    {"Papyrus", kFantasy},
    {"Ravie", kFantasy},
    {"Stencil", kFantasy},
    {"Traditional Arabic", kNaskh},
    {"Simplified Arabic", kNaskh},
    {"Arabic Transparent", kNaskh},
    {"SimSun", kSongSimplified, "宋体"},
    {"NSimSun", kSongSimplified, "新宋体"},
    {"STSong", kSongSimplified, "华文宋体"},
    {"STZhongsong", kSongSimplified, "华文中宋"},
    {"SimHei", kHeiSimplified, "黑体"},
    {"Microsoft YaHei", kHeiSimplified, "微软雅黑"},
    {"STHeiti", kHeiSimplified, "华文黑体"},
    {"STXihei", kHeiSimplified, "华文细黑"},
    {"DengXian", kHeiSimplified, "等线"},
    {"YouYuan", kHeiSimplified, "幼圆"},
    {"KaiTi", kKaiSimplified, "楷体"},
    {"KaiTi_GB2312", kKaiSimplified, "楷体_GB2312"},
    {"STKaiti", kKaiSimplified, "华文楷体"},
    {"LiSu", kKaiSimplified, "隶书"},
    {"FangSong", kFangsong, "仿宋"},
    {"FangSong_GB2312", kFangsong, "仿宋_GB2312"},
    {"STFangsong", kFangsong, "华文仿宋"},
    {"PMingLiU", kSongTraditional, "新細明體"},
    {"MingLiU", kSongTraditional, "細明體"},
    {"DFKai-SB", kKaiTraditional, "標楷體"},
    {"Microsoft JhengHei", kHeiTraditional, "微軟正黑體"},
    {"MS Mincho", kMincho, "ＭＳ 明朝"},
    {"MS PMincho", kMincho, "ＭＳ Ｐ明朝"},
    {"Yu Mincho", kMincho, "游明朝"},
    {"MS Gothic", kGothic, "ＭＳ ゴシック"},
    {"MS PGothic", kGothic, "ＭＳ Ｐゴシック"},
    {"MS UI Gothic", kGothic},
    {"Meiryo", kGothic, "メイリオ"},
    {"Yu Gothic", kGothic, "游ゴシック"},
    {"Batang", kMyeongjo, "바탕"},
    {"BatangChe", kMyeongjo, "바탕체"},
    {"Gungsuh", kMyeongjo, "궁서"},
    {"GungsuhChe", kMyeongjo, "궁서체"},
    {"Gulim", kKoreanGothic, "굴림"},
    {"GulimChe", kKoreanGothic, "굴림체"},
    {"New Gulim", kKoreanGothic, "새굴림"},
    {"Dotum", kKoreanGothic, "돋움"},
    {"DotumChe", kKoreanGothic, "돋움체"},
    {"Malgun Gothic", kKoreanGothic, "맑은 고딕"},
};

char lowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c;
}

}  // namespace

std::string_view peersAsCss(FontPeers peers) {
  return kPeers[static_cast<size_t>(peers)];
}

bool isSameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}

const KnownFont* knownFontNamed(std::string_view name) {
  if (name.empty()) return nullptr;
  for (const KnownFont& font : kKnownFonts) {
    if (isSameName(font.name, name) || isSameName(font.ownName, name)) return &font;
  }
  return nullptr;
}

}  // namespace pagerex
