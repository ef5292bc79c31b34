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

void formatOne(KNumericalFormat* format, const tagVARIANT& value, const NF_FORMAT_PARAM& param) {
  wchar_t* out = nullptr;
  NFSTYLE style = {};
  if (_XNFFormatEx(&value, format, &out, &style, &param) == NF_OK) _XNFFreeText(out);
}

void formatAll(KNumericalFormat* format, double number, const wchar_t* text, const NF_FORMAT_PARAM& param) {
  constexpr uint16_t kTags[] = {NF_VT_EMPTY, NF_VT_I2,  NF_VT_I4,  NF_VT_R4,  NF_VT_R8,  NF_VT_DATE,
                                NF_VT_BOOL,  NF_VT_UI1, NF_VT_UI2, NF_VT_UI4, NF_VT_INT, NF_VT_UINT};
  tagVARIANT value = {};
  for (const uint16_t tag : kTags) {
    value.vt = tag;
    value.dblVal = number;
    if (tag == NF_VT_R4) value.fltVal = static_cast<float>(number);
    formatOne(format, value, param);
  }
  value.vt = NF_VT_BSTR;
  value.bstrVal = text;
  formatOne(format, value, param);
  value.vt = NF_VT_BSTR | NF_VT_BYREF;
  value.pbstrVal = &text;
  formatOne(format, value, param);
}

void writeNumber(double number, uint8_t options) {
  for (auto write : {_ftog, _ftot, _ftoe}) {
    wchar_t buffer[40];
    int length = 0;
    write(number, options % 20, buffer, 1 + options % 39, options & 1, options & 2, options >> 2 & 15,
          &length);
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

  writeNumber(number, input[0]);
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
