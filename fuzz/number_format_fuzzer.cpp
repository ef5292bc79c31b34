// Compiles a number format in one of the dialects, formats values with it and writes it back.
//
// Input: dialect, language and flags, width, 8 bytes of a number, then the format, one character a byte. The
// bytes from 128 on stand for characters that formats of Asian languages know.

#include <cstring>
#include <iterator>
#include <string>

#include "pagerex/numformat.h"

namespace {

constexpr wchar_t kWide[] =
    L"年月日时分秒上午下午星期元圆亿万千百十零一二三四五六七八九〇壹贰叁"
    L"肆伍陆柒捌玖拾佰仟時間平成昭和曜￥€£　。，／＋－〔〕◎𠀀黑色蓝绿青红洋白黄前後通用格式常规";

constexpr uint32_t kLanguages[] = {1033, 1041, 2052, 1066, 1042, 1054, 0, 0xFFFF};

wchar_t characterOf(uint8_t byte) {
  if (byte < 128) return static_cast<wchar_t>(byte == 0 ? 1 : byte);
  return kWide[(byte - 128u) % (std::size(kWide) - 1)];
}

void formatAll(KNumericalFormat* format, double number, const wchar_t* text, const NF_FORMAT_PARAM& param) {
  tagVARIANT values[4] = {};
  values[0].vt = NF_VT_R8;
  values[0].dblVal = number;
  values[1].vt = NF_VT_UI4;
  values[1].ulVal = static_cast<uint32_t>(text[0]);
  values[2].vt = NF_VT_BSTR;
  values[2].bstrVal = text;
  values[3].vt = NF_VT_EMPTY;
  for (const tagVARIANT& value : values) {
    wchar_t* out = nullptr;
    NFSTYLE style = {};
    if (_XNFFormatEx(&value, format, &out, &style, &param) == NF_OK) _XNFFreeText(out);
  }
}

void writeBack(KNumericalFormat* format, const NF_FORMAT_PARAM& param) {
  for (auto uncompile : {_XNFUnCompile, _XNFUnCompileForExcel, _XNFUnCompileForWord}) {
    wchar_t* text = nullptr;
    if (uncompile(format, &text, &param) == NF_OK) _XNFFreeText(text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  constexpr size_t kHead = 11;
  if (size <= kHead) return 0;
  constexpr decltype(&_XNFCompile) kCompilers[] = {_XNFCompile, _XNFCompileForOQ, _XNFCompileForExcel,
                                                   _XNFCompileForWord, _XNFCompileForQel};
  NF_FORMAT_PARAM param = {static_cast<int8_t>(input[2]), input[1] & 0x0Fu, kLanguages[input[1] >> 4 & 7]};
  double number = 0;
  std::memcpy(&number, input + 3, sizeof(number));
  std::wstring text;
  for (size_t i = kHead; i < size; ++i) text += characterOf(input[i]);

  _XNFInit();
  KNumericalFormat* format = nullptr;
  if (kCompilers[input[0] % std::size(kCompilers)](text.c_str(), &format, &param) == NF_OK && format) {
    formatAll(format, number, text.c_str(), param);
    _XNFFormatPrecision(format, &number);
    NF_SECTS_INFO info = {};
    _XNF_GetSectsInfo(format, &info);
    bool single = false;
    _XNF_OQ_IsSingleStringSect(format, &single);
    writeBack(format, param);
    _XNFRelease(format);
  }
  _XNFUnInit();
  _XNF_ClearNFTableCache();
  return 0;
}
