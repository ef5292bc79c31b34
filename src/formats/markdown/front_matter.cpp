#include "formats/markdown/front_matter.h"

#include <chrono>
#include <string_view>

#include "base/utf8.h"
#include "formats/markdown/escape.h"

namespace pagerex {
namespace {

struct TextRow {
  std::string_view key;
  std::u16string DocumentSummary::*text;
};
constexpr TextRow kTexts[] = {
    {"title", &DocumentSummary::title},          {"subject", &DocumentSummary::subject},
    {"author", &DocumentSummary::author},        {"keywords", &DocumentSummary::keywords},
    {"description", &DocumentSummary::comments}, {"category", &DocumentSummary::category},
    {"company", &DocumentSummary::company},      {"manager", &DocumentSummary::manager},
};

struct TimeRow {
  std::string_view key;
  FileTime DocumentSummary::*time;
};
constexpr TimeRow kTimes[] = {
    {"created", &DocumentSummary::created},
    {"modified", &DocumentSummary::saved},
};

/// In double quotes all is text but these two and line ends.
void appendQuoted(std::string& out, std::u16string_view text) {
  std::u16string escaped;
  for (const char16_t unit : text) {
    if (unit == '"' || unit == '\\') escaped += u'\\';
    const bool isLineEnd = unit == '\n' || unit == '\r' || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
    const bool isControl = unit >= 0x7F && unit < 0xA0;
    if (isLineEnd) {
      escaped += u' ';
    } else if (!isControl) {
      escaped += unit;
    }
  }
  out += '"';
  appendUtf8(out, escaped);
  out += '"';
}

/// A number in decimal, filled up with zeros.
void appendDigits(std::string& out, unsigned value, int digits) {
  unsigned power = 1;
  while (--digits > 0) power *= 10;
  for (; power > 0; power /= 10) out += static_cast<char>('0' + value / power % 10);
}

/// Numbers with what stands between them.
struct Part {
  unsigned value;
  int digits;
  std::string_view behind;
};
std::string joined(std::initializer_list<Part> parts) {
  std::string text;
  for (const Part& part : parts) {
    appendDigits(text, part.value, part.digits);
    text += part.behind;
  }
  return text;
}

}  // namespace

std::string frontMatter(const DocumentSummary& summary) {
  std::string lines;
  for (const TextRow& row : kTexts) {
    const std::u16string& text = summary.*row.text;
    if (text.empty()) continue;
    lines.append(row.key).append(": ");
    appendQuoted(lines, text);
    lines += '\n';
  }
  for (const TimeRow& row : kTimes) {
    const std::string time = summary.*row.time != 0 ? isoTime(summary.*row.time) : std::string();
    if (!time.empty()) lines.append(row.key).append(": ").append(time) += '\n';
  }
  return lines.empty() ? lines : "---\n" + lines + "---\n";
}

std::string isoTime(FileTime time) {
  constexpr uint64_t kUnitsInSecond = 10000000, kSecondsInDay = 86400;
  constexpr int64_t kDaysTo1970 = 134774;
  const uint64_t seconds = time / kUnitsInSecond;
  const auto days = static_cast<int64_t>(seconds / kSecondsInDay) - kDaysTo1970;
  constexpr int64_t kLastDay = 2932896;  // of the year 9999
  if (days > kLastDay) return {};
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(days))};
  const auto second = static_cast<unsigned>(seconds % kSecondsInDay);
  return joined({{static_cast<unsigned>(static_cast<int>(date.year())), 4, "-"},
                 {static_cast<unsigned>(date.month()), 2, "-"},
                 {static_cast<unsigned>(date.day()), 2, "T"},
                 {second / 3600, 2, ":"},
                 {second / 60 % 60, 2, ":"},
                 {second % 60, 2, "Z"}});
}

std::string dttmText(uint32_t dttm) {
  const unsigned minute = dttm & 63, hour = dttm >> 6 & 31, day = dttm >> 11 & 31, month = dttm >> 16 & 15;
  const unsigned year = 1900 + (dttm >> 20 & 511);
  if (minute > 59 || hour > 23 || day == 0 || month == 0 || month > 12) return {};
  return joined({{year, 4, "-"}, {month, 2, "-"}, {day, 2, " "}, {hour, 2, ":"}, {minute, 2, ""}});
}

}  // namespace pagerex
