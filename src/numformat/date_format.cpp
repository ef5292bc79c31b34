#include "numformat/date_format.h"

#include <algorithm>
#include <cmath>

#include "numformat/placeholder_piece.h"
#include "numformat/variant_value.h"

namespace {

constexpr double kLastDay = 2958465.0;  // 31 December 9999
constexpr double kHalfSecond = 5.787037037037037e-06;
constexpr double kSecondsPerDay = 86400.0;
constexpr int kDaysBeforeEpoch = 693959;  // from 1 January of the year 0 to serial 0

constexpr int kDaysIn400Years = 146097;
constexpr int kDaysIn100Years = 36524;
constexpr int kDaysIn4Years = 1461;
constexpr int kDaysInYear = 365;

/// Days of a common year before each month.
constexpr int kDaysBeforeMonth[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
constexpr int kLeapDay = 59;  // 29 February, counted from 0

/// Which field of the date a placeholder is told.
struct FieldRow {
  int first;  ///< id
  int last;
  int tagTIMEINFO::*field;
};
constexpr FieldRow kFields[] = {
    {kIdYear00, kIdYearQelOne, &tagTIMEINFO::year},
    {kIdMonth0, kIdMonthQelO, &tagTIMEINFO::month},
    {kIdDay0, kIdDay00, &tagTIMEINFO::day},
    {kIdDayQelA, kIdDayQelA, &tagTIMEINFO::day},
    {kIdDayShort, kIdDayFull, &tagTIMEINFO::weekday},
    {kIdWeek0, kIdWeek000, &tagTIMEINFO::weekday},
    {kIdHour0, kIdHour0012, &tagTIMEINFO::hour},
    {kIdAmPmAM, kIdAmPm, &tagTIMEINFO::hour},
    {kIdMinute0, kIdMinute00Qel, &tagTIMEINFO::minute},
    {kIdSecond0, kIdSecond00, &tagTIMEINFO::second},
};

int fieldOf(const tagTIMEINFO& time, int id) {
  for (const FieldRow& row : kFields) {
    if (id >= row.first && id <= row.last) return time.*row.field;
  }
  return 0;
}

/// Sets year and day of the year from the days since 1 January of the year 0; returns whether it is a leap
/// year.
bool setYear(tagTIMEINFO& time, int days) {
  const int blocksOf400 = days / kDaysIn400Years;
  days %= kDaysIn400Years;
  // The first century of a block is a day longer. In the others the first four years lack their 29 February:
  // the days are counted as if there was one day more in front.
  const int centuries = (days - 1) / kDaysIn100Years;
  if (centuries > 0) days = (days - 1) % kDaysIn100Years + 1;
  const int blocksOf4 = days / kDaysIn4Years;
  days %= kDaysIn4Years;
  const int years = std::max(days - 1, 0) / kDaysInYear;
  const bool leap = years == 0 && (centuries == 0 || blocksOf4 > 0);
  if (!leap) days = (days - 1) % kDaysInYear;
  time.year = 400 * blocksOf400 + 100 * centuries + 4 * blocksOf4 + years;
  time.dayOfYear = days + 1;
  return leap;
}

void setMonth(tagTIMEINFO& time, bool leap) {
  int day = time.dayOfYear - 1;
  if (leap && day == kLeapDay) {
    time.month = 2;
    time.day = 29;
    return;
  }
  if (leap && day > kLeapDay) --day;
  time.month = 1;
  while (day >= kDaysBeforeMonth[time.month]) ++time.month;
  time.day = day - kDaysBeforeMonth[time.month - 1] + 1;
}

}  // namespace

Status KNFDateTime::FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                               std::wstring& out) const {
  if (isText(value)) {
    out = textOf(value);
    shown.style.codePage |= NF_STYLE_TEXT;
    return Status::kOk;
  }
  Status status;
  double days;
  if (!readNumber(value, param, days, shown, out, status)) return status;
  if (days < 0 || days > kLastDay) return Status::kInvalidArgument;
  const tagTIMEINFO time = timeOf(days);
  KPlaceholder::PlaceholderEnv env = environment(param, shown);
  env.time = &time;
  env.days = days;
  runFields(env, out);
  return Status::kOk;
}

void KNFDateTime::runFields(KPlaceholder::PlaceholderEnv& env, std::wstring& out) const {
  for (env.index = 0; env.index < placeholders.size(); ++env.index) {
    const KPlaceholder& placeholder = *placeholders[env.index].piece->placeholder;
    env.value = fieldOf(*env.time, placeholder.id);
    placeholder.Format(env, out);
  }
}

tagTIMEINFO timeOf(double days) {
  const double rounded = days + kHalfSecond;
  const int absoluteDay = static_cast<int>(rounded) + kDaysBeforeEpoch;
  const int seconds = static_cast<int>((rounded - std::floor(rounded)) * kSecondsPerDay);
  tagTIMEINFO time = {};
  time.second = seconds % 60;
  time.minute = seconds / 60 % 60;
  time.hour = seconds / 3600;
  time.weekday = (absoluteDay - 1) % 7;
  setMonth(time, setYear(time, absoluteDay));
  return time;
}

int JP_Year(const tagTIMEINFO& time, int* year) {
  /// The first day of each era.
  struct EraStart {
    int year, month, day;
  };
  constexpr EraStart kStarts[] = {{1868, 1, 1}, {1912, 7, 30}, {1926, 12, 25}, {1989, 1, 8}};
  const auto begun = [&time](const EraStart& start) {
    if (time.year != start.year) return time.year > start.year;
    return time.month != start.month ? time.month > start.month : time.day >= start.day;
  };
  int era = 3;
  while (era > 0 && !begun(kStarts[era])) --era;
  *year = time.year - kStarts[era].year + 1;
  return era;
}
