// Time, as the engine asks for it.
#pragma once

namespace kelo::platform {

struct CalendarTime {
  int year, month, day, hour, minute;  ///< month and day from 1
  double seconds;                      ///< 0 to 60, with the fraction
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual CalendarTime localTime() = 0;
  virtual double unixSeconds() = 0;       ///< since 1970-01-01 00:00:00 UTC, with the fraction
  virtual double monotonicSeconds() = 0;  ///< never goes back; from an arbitrary moment
};

}  // namespace kelo::platform
