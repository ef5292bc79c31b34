#include <string>

#include "numformat/code_page_data.h"
#include "numformat/decimal_text.h"
#include "numformat/number_spelling.h"

namespace {

constexpr unsigned long kLargestEnglishNumber = 999999;

/// From 1 to 99, 999 and 999999.
void SerialNumber_En_1000(unsigned long n, std::wstring& out);
void SerialNumber_En_999(unsigned long n, std::wstring& out);
void SerialNumber_En_99(unsigned long n, std::wstring& out);

void replaceEnd(std::wstring& text, size_t count, const wchar_t* end) {
  text.replace(text.size() - count, count, end);
}

void capitaliseFirst(std::wstring& text) {
  if (!text.empty()) text[0] -= 32;
}

}  // namespace

Status KNFCodePage::SerialNumber_En_th(unsigned long n, std::wstring& out) const {
  const bool teen = n % 100 / 10 == 1;
  const bool ownEnding = !teen && n % 10 <= 3;
  out = decimalText(n);
  out += EnglishNumber_th[ownEnding ? n % 10 : 0];
  return Status::kOk;
}

Status KNFCodePage::SerialNumber_En_One(unsigned long n, bool capitalise, std::wstring& out) const {
  out.clear();
  if (n > kLargestEnglishNumber) return Status::kOk;
  if (n == 0) {
    out = EnglishNumber_D0[0];
  } else {
    SerialNumber_En_1000(n, out);
  }
  if (capitalise) capitaliseFirst(out);
  return Status::kOk;
}

Status KNFCodePage::SerialNumber_En_First(unsigned long n, std::wstring& out) const {
  SerialNumber_En_One(n, false, out);
  if (out.empty()) return Status::kOk;
  const wchar_t lastLetter = out.back();
  const unsigned long digit = n % 10;
  if (lastLetter == L'e') {
    if (digit == 1) replaceEnd(out, 3, EnglishNumber_First);
    if (digit == 2 || digit == 5) replaceEnd(out, 2, EnglishNumber_Fifth);
    if (digit == 3) replaceEnd(out, 5, EnglishNumber_Third);
    if (digit == 9) replaceEnd(out, 1, EnglishNumber_th[0]);
  } else if (lastLetter == L'o' && digit == 2) {
    replaceEnd(out, 3, EnglishNumber_Second);
  } else if (lastLetter == L't') {
    replaceEnd(out, 1, EnglishNumber_th[0]);
  } else if (lastLetter == L'y') {
    replaceEnd(out, 1, EnglishNumber_tieth);
  } else {
    out += EnglishNumber_th[0];
  }
  capitaliseFirst(out);
  return Status::kOk;
}

namespace {

void SerialNumber_En_1000(unsigned long n, std::wstring& out) {
  if (n >= 1000) {
    SerialNumber_En_999(n / 1000, out);
    out += L' ';
    out += EnglishNumber_1000;
    if (n % 1000 == 0) return;
    out += L' ';
  }
  SerialNumber_En_999(n % 1000, out);
}

void SerialNumber_En_999(unsigned long n, std::wstring& out) {
  if (n >= 100) {
    out += EnglishNumber_D0[n / 100];
    out += L' ';
    out += EnglishNumber_100;
    if (n % 100 == 0) return;
    out += L' ';
  }
  SerialNumber_En_99(n % 100, out);
}

void SerialNumber_En_99(unsigned long n, std::wstring& out) {
  if (n < 10) {
    out += EnglishNumber_D0[n];
  } else if (n < 20) {
    out += EnglishNumber_1x[n - 10];
  } else {
    out += EnglishNumber_Tens[n / 10];
    if (n % 10 == 0) return;
    out += L'-';
    out += EnglishNumber_D0[n % 10];
  }
}

}  // namespace
