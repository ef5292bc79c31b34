#include "base/file_time.h"

#include <cstdio>

namespace pagerex {
namespace {

constexpr uint64_t kTicksPerSecond = 10'000'000;
constexpr uint32_t kSecondsPerDay = 86'400;
constexpr uint32_t kDaysPer4Years = 1'461;
constexpr uint32_t kDaysPer400Years = 146'097;
constexpr uint32_t kDaysFromMarch1600To1601 = 306;
/// From 1601 to the end of the year 9999.
constexpr uint64_t kDaysTo10000 = 3'067'671;

struct Date {
  uint32_t year, month, day;
};

/// Years begin in March here, so that a leap day is the last one of its year.
Date dateOf(uint32_t daysSince1601) {
  const uint32_t days = daysSince1601 + kDaysFromMarch1600To1601;
  const uint32_t era = days / kDaysPer400Years;
  const uint32_t dayOfEra = days % kDaysPer400Years;
  const uint32_t yearOfEra =
      (dayOfEra - dayOfEra / (kDaysPer4Years - 1) + dayOfEra / 36'524 - dayOfEra / (kDaysPer400Years - 1)) /
      365;
  const uint32_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const uint32_t monthFromMarch = (5 * dayOfYear + 2) / 153;
  const uint32_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
  return {1600 + 400 * era + yearOfEra + (month <= 2 ? 1 : 0), month,
          dayOfYear - (153 * monthFromMarch + 2) / 5 + 1};
}

uint32_t daysOf(uint32_t month, uint32_t year) {
  constexpr uint8_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool isLeapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return kDays[month - 1] + (month == 2 && isLeapYear ? 1u : 0u);
}

}  // namespace

std::string iso8601(FileTime time) {
  const uint64_t seconds = time / kTicksPerSecond;
  const uint64_t days = seconds / kSecondsPerDay;
  if (time == 0 || days >= kDaysTo10000) return {};
  const Date date = dateOf(static_cast<uint32_t>(days));
  const auto second = static_cast<uint32_t>(seconds % kSecondsPerDay);
  char text[80];
  std::snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u:%02uZ", date.year, date.month, date.day,
                second / 3600, second / 60 % 60, second % 60);
  return text;
}

LocalTime localTimeOfDttm(uint32_t dttm) {
  const uint32_t minute = dttm & 63, hour = dttm >> 6 & 31;
  const uint32_t day = dttm >> 11 & 31, month = dttm >> 16 & 15, year = 1900 + (dttm >> 20 & 511);
  if (minute > 59 || hour > 23 || month < 1 || month > 12 || day < 1 || day > daysOf(month, year)) return {};
  return {static_cast<uint16_t>(year), static_cast<uint8_t>(month), static_cast<uint8_t>(day),
          static_cast<uint8_t>(hour), static_cast<uint8_t>(minute)};
}

std::string iso8601OfDttm(uint32_t dttm) {
  const LocalTime time = localTimeOfDttm(dttm);
  if (time.year == 0) return {};
  char text[64];
  std::snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u", unsigned{time.year}, unsigned{time.month},
                unsigned{time.day}, unsigned{time.hour}, unsigned{time.minute});
  return text;
}

}  // namespace pagerex
