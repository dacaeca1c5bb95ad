#include "comments/ContentDates.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "kavrel/Failure.h"

namespace kv::contentdate {

namespace {

using std::chrono::seconds;
using std::chrono::system_clock;

constexpr double kEpochDay = 25569;  // 1 January 1970 as a day number
constexpr double kSecondsPerDay = 86400;
// 1 January 1700 and 1 January 2200: the years a date of the system clock safely holds.
constexpr double kFirstDay = -73046, kEndDay = 109575;
constexpr int kFirstYear = 1700, kEndYear = 2200;

[[noreturn]] void mismatch() {
  throw Failure(err::TypeMismatch, "Type mismatch");
}

}  // namespace

std::string DayNumber(DateTime date) {
  const double days = kEpochDay + double(std::chrono::floor<seconds>(date).time_since_epoch().count()) / kSecondsPerDay;
  if (days == std::floor(days)) return std::to_string(static_cast<long long>(days));
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.15g", days);
  return buffer;
}

DateTime FromDayNumber(std::string_view text) {
  const std::string s(text);
  char* end = nullptr;
  const double days = std::strtod(s.c_str(), &end);
  if (s.empty() || end != s.c_str() + s.size() || std::isnan(days)) mismatch();
  if (!(days >= kFirstDay && days < kEndDay)) throw Failure(err::Overflow, "Overflow");
  return DateTime(seconds(std::llround((days - kEpochDay) * kSecondsPerDay)));
}

std::string CheckDate(DateTime date) {
  const std::time_t t = system_clock::to_time_t(std::chrono::floor<seconds>(date));
  std::tm tm{};
  gmtime_r(&t, &tm);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%02d/%02d/%04d %02d:%02d:%02d", tm.tm_mday, tm.tm_mon + 1, tm.tm_year + 1900,
                tm.tm_hour, tm.tm_min, tm.tm_sec);
  return buffer;
}

DateTime FromCheckDate(std::string_view text) {
  const std::string s(text);
  int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0, used = 0;
  const int fields =
      std::sscanf(s.c_str(), "%2d/%2d/%4d%n %2d:%2d:%2d%n", &day, &month, &year, &used, &hour, &minute, &second, &used);
  if ((fields != 3 && fields != 6) || std::size_t(used) != s.size()) mismatch();
  if (year < kFirstYear || year >= kEndYear || month < 1 || month > 12 || day < 1 || day > 31 || hour > 23 ||
      minute > 59 || second > 59 || hour < 0 || minute < 0 || second < 0)
    mismatch();
  const std::chrono::year_month_day ymd{std::chrono::year(year), std::chrono::month(unsigned(month)),
                                        std::chrono::day(unsigned(day))};
  if (!ymd.ok()) mismatch();
  return DateTime(std::chrono::sys_days(ymd).time_since_epoch() + std::chrono::hours(hour) +
                  std::chrono::minutes(minute) + seconds(second));
}

}  // namespace kv::contentdate
