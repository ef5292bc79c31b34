#include "pictures/metafile_text.h"

#include <algorithm>
#include <iterator>

#include "base/encoding.h"

namespace pagerex {
namespace {

struct CharsetRow {
  uint8_t charset;
  uint16_t codePage;
  bool hasPairs;  ///< of bytes, for one character
};
constexpr uint8_t kSymbolCharset = 2;
constexpr CharsetRow kCharsets[] = {
    {77, 10000, false}, {128, 932, true},   {129, 949, true},   {130, 1361, true},
    {134, 936, true},   {136, 950, true},   {161, 1253, false}, {162, 1254, false},
    {163, 1258, false}, {177, 1255, false}, {178, 1256, false}, {186, 1257, false},
    {204, 1251, false}, {222, 874, false},  {238, 1250, false}, {255, 437, false},
};
constexpr CharsetRow kWestern{0, 1252, false};

const CharsetRow& rowOf(uint8_t charset) {
  const auto* row = std::find_if(std::begin(kCharsets), std::end(kCharsets),
                                 [charset](const CharsetRow& each) { return each.charset == charset; });
  return row == std::end(kCharsets) ? kWestern : *row;
}

/// The first byte of a pair: those of half-width Katakana stand alone.
bool isLead(uint8_t byte, uint16_t codePage) {
  const bool isKatakana = codePage == 932 && byte >= 0xA0 && byte <= 0xDF;
  return byte > 0x80 && byte < 0xFF && !isKatakana;
}

}  // namespace

std::u16string MetafileText::Read(ByteView bytes, uint8_t charset, std::vector<double>& advances) {
  if (charset == kSymbolCharset) return std::u16string(bytes.data(), bytes.data() + bytes.size());
  const CharsetRow& row = rowOf(charset);
  if (!reader_ || charset_ != charset) reader_ = std::make_unique<CodePageText>(row.codePage);
  charset_ = charset;
  std::u16string text = reader_->Read(bytes);
  if (!row.hasPairs || advances.size() < bytes.size()) return text;
  std::vector<double> merged;
  for (size_t i = 0; i < bytes.size(); ++i) {
    merged.push_back(advances[i]);
    if (isLead(bytes.u8(i), row.codePage) && i + 1 < bytes.size()) merged.back() += advances[++i];
  }
  advances = std::move(merged);
  return text;
}

std::string fontFamily(std::u16string_view name) {
  std::string family;
  Utf16Joiner joiner;
  for (const char16_t unit : name.substr(0, name.find(u'\0'))) appendUtf8(family, joiner.Join(unit));
  // A name that begins with "@" is of the same font, with its East Asian characters lying down.
  return family.starts_with('@') ? family.substr(1) : family;
}

}  // namespace pagerex
