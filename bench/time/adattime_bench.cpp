// Durations, dates and times of day as texts, beside the runtime's formatting and scanning.

#include "adattime.hpp"
#include "support/ratio.hpp"

#include <cstdio>
#include <ctime>

namespace {

using SV::Date;
using SV::String;
using SV::Time;

// Durations. Both sides write the same fields, of another value each time.

constexpr double kFirstSeconds = 90061.0;
constexpr int kValues = 1000;

void durationText(benchmark::State & state) {
  KivCoreTime time;
  int step = 0;
  for (auto _ : state) {
    time.setTime(kFirstSeconds + step * 86461.0);
    benchmark::DoNotOptimize(time.asString().c_str());
    step = step < kValues ? step + 1 : 0;
  }
}

void durationBySnprintf(benchmark::State & state) {
  char text[400];
  int step = 0;
  for (auto _ : state) {
    _snprintf(text, sizeof text, "%02.0f:%03d:%02d:%02d:%02d", static_cast<double>(step / 365), 1 + step % 364,
              step % 24, step % 60, step / 60 % 60);
    benchmark::DoNotOptimize(text);
    step = step < kValues ? step + 1 : 0;
  }
}

constexpr char const * kDurations[] = {"00:001:01:01:01", "02:364:23:59:59", "10:200:07:30:00", "123:090:16:05:45"};
constexpr unsigned kDurationCount = 4;

void readDuration(benchmark::State & state) {
  KivCoreTime time(0.0, 220.0, 8.0);
  unsigned step = 0;
  for (auto _ : state) {
    time.setAsChar(kDurations[step++ % kDurationCount]);
    benchmark::DoNotOptimize(time.asDouble());
  }
}

void readDurationBySscanf(benchmark::State & state) {
  unsigned step = 0;
  for (auto _ : state) {
    int years = 0;
    int days = 0;
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    int const count = std::sscanf(kDurations[step++ % kDurationCount], "%d:%3d:%2d:%2d:%2d", &years, &days, &hours,
                                  &minutes, &seconds);
    benchmark::DoNotOptimize(count);
    benchmark::DoNotOptimize(seconds + minutes * 60.0 + hours * 3600.0 + days * 28800.0 + years * 6336000.0);
  }
}

// Dates.

template <std::size_t Size> bench::Body formatDate(char const (&format)[Size]) {
  return [format = String(format)](benchmark::State & state) {
    unsigned long day = 0;
    for (auto _ : state) {
      String const text = KivDate::GetFormatedDate(Date(day % 28 + 1, 3, 2024), format);
      benchmark::DoNotOptimize(text.c_str());
      ++day;
    }
  };
}

template <std::size_t Size> bench::Body strftimeDate(char const (&format)[Size]) {
  return [format](benchmark::State & state) {
    int day = 0;
    for (auto _ : state) {
      std::tm date{};
      date.tm_mday = day % 28 + 1;
      date.tm_mon = 2;
      date.tm_year = 124;
      char text[64];
      benchmark::DoNotOptimize(std::strftime(text, sizeof text, format, &date));
      benchmark::DoNotOptimize(text);
      ++day;
    }
  };
}

// Times of day.

void readTime(benchmark::State & state) {
  String const text("13:05:59");
  for (auto _ : state) {
    Time time(0);
    benchmark::DoNotOptimize(KivTimeFunctions::setTimeInUIRep(text, time));
    benchmark::DoNotOptimize(time.value());
  }
}

void readTimeBySscanf(benchmark::State & state) {
  String const text("13:05:59");
  for (auto _ : state) {
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
    benchmark::DoNotOptimize(std::sscanf(text.c_str(), "%2u:%2u:%2u", &hour, &minute, &second));
    Time const time(hour, minute, second);
    benchmark::DoNotOptimize(time.value());
  }
}

bench::Pair const pairs[] = {
    {"KivCoreTime: asString", bench::atMost(1.2), durationText, "_snprintf", durationBySnprintf},
    {"KivCoreTime: setAsChar", bench::atMost(0.5), readDuration, "sscanf", readDurationBySscanf},
    {"KivDate: GetFormatedDate, DD.MM.YYYY", bench::atMost(1.5), formatDate("DD.MM.YYYY"), "strftime",
     strftimeDate("%d.%m.%Y")},
    {"KivDate: GetFormatedDate, YY-MM-DD", bench::atMost(1.5), formatDate("YY-MM-DD"), "strftime",
     strftimeDate("%y-%m-%d")},
    {"KivTimeFunctions: setTimeInUIRep", bench::shown(), readTime, "sscanf", readTimeBySscanf},
};

} // namespace
