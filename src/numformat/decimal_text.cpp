#include "numformat/decimal_text.h"

#include <charconv>
#include <iterator>

std::wstring decimalText(unsigned long long n) {
  char digits[24];
  return {digits, std::to_chars(digits, std::end(digits), n).ptr};
}

int signedNumber(std::wstring_view text) {
  const bool negative = text.starts_with(L'-');
  if (negative || text.starts_with(L'+')) text.remove_prefix(1);
  int number = 0;
  for (const wchar_t digit : text) number = number * 10 + (digit - L'0');
  return negative ? -number : number;
}
