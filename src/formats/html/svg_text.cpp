#include "formats/html/svg_text.h"

#include <charconv>
#include <cmath>

#include "base/encoding.h"

namespace pagerex {

void appendLength(std::string& out, double length) {
  constexpr double kMost = 1 << 30;
  char digits[16];
  const long whole = length > -kMost && length < kMost ? std::lround(length) : 0;
  const auto end = std::to_chars(digits, digits + sizeof(digits), whole);
  out.append(digits, end.ptr);
}

void appendDecimal(std::string& out, double value) {
  const long hundredths = std::abs(value) < (1 << 20) ? std::lround(std::abs(value) * 100) : 0;
  if (value < 0 && hundredths > 0) out += '-';
  const long whole = hundredths / 100;
  appendLength(out, static_cast<double>(whole));
  if (hundredths % 100 == 0) return;
  out += '.';
  out += static_cast<char>('0' + hundredths / 10 % 10);
  if (hundredths % 10 != 0) out += static_cast<char>('0' + hundredths % 10);
}

void appendPoint(std::string& out, PathPoint point) {
  appendLength(out, point.x);
  out += ' ';
  appendLength(out, point.y);
}

void appendRgb(std::string& out, uint32_t rgb) {
  constexpr char kDigits[] = "0123456789abcdef";
  out += '#';
  for (int shift = 20; shift >= 0; shift -= 4) out += kDigits[rgb >> shift & 0x0F];
}

void appendPart(std::string& out, double part) {
  const long thousandths = part > 0 ? std::lround(part < 1 ? part * 1000 : 1000) : 0;
  if (thousandths == 1000) {
    out += '1';
    return;
  }
  char digits[] = {'.', static_cast<char>('0' + thousandths / 100),
                   static_cast<char>('0' + thousandths / 10 % 10), static_cast<char>('0' + thousandths % 10)};
  size_t count = sizeof(digits);
  while (count > 1 && digits[count - 1] == '0') --count;
  count > 1 ? out.append(digits, count) : out.append("0");
}

void appendLengthAttribute(std::string& out, std::string_view name, double length) {
  out.append(" ").append(name).append("=\"");
  appendLength(out, length);
  out += '"';
}

void appendRgbAttribute(std::string& out, std::string_view name, uint32_t rgb) {
  out.append(" ").append(name).append("=\"");
  appendRgb(out, rgb);
  out += '"';
}

void appendOpacity(std::string& out, std::string_view name, double opacity) {
  if (opacity >= 1) return;
  out.append(" ").append(name).append("=\"");
  appendPart(out, opacity);
  out += '"';
}

void appendSteps(std::string& out, const ShapePath::Part& part) {
  using Kind = ShapePath::Step::Kind;
  constexpr char kLetters[] = {'M', 'L', 'C', 'Z'};
  Kind last = Kind::kClose;
  for (const ShapePath::Step& step : part.steps) {
    // A letter counts until the next; behind a move come lines.
    const bool isRepeated = step.kind == last && (last == Kind::kLine || last == Kind::kCurve);
    out += isRepeated ? ' ' : kLetters[static_cast<size_t>(step.kind)];
    last = step.kind;
    if (step.kind == Kind::kClose) continue;
    if (step.kind == Kind::kCurve) {
      appendPoint(out, step.first);
      out += ' ';
      appendPoint(out, step.second);
      out += ' ';
    }
    appendPoint(out, step.end);
  }
}

void appendEscaped(std::string& out, std::u16string_view text) {
  std::string utf8;
  Utf16Joiner joiner;
  for (const char16_t unit : text) appendUtf8(utf8, joiner.Join(unit));
  appendEscaped(out, std::string_view(utf8));
}

void appendEscaped(std::string& out, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        if (static_cast<unsigned char>(c) >= ' ') out += c;
        break;
    }
  }
}

uint32_t mixedRgb(uint32_t first, uint32_t second, double share) {
  uint32_t result = 0;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const double a = first >> shift & 0xFF, b = second >> shift & 0xFF;
    result |= static_cast<uint32_t>(std::lround(a + (b - a) * share)) << shift;
  }
  return result;
}

}  // namespace pagerex
