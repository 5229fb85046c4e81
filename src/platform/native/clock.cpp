#include "platform/native/clock.h"

#include <ctime>

namespace kelo::platform::native {
namespace {

double secondsOf(const timespec& time) {
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

}  // namespace

double MonotonicClock::now() {
  timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return secondsOf(time);
}

double SystemClock::unixSeconds() {
  timespec time;
  clock_gettime(CLOCK_REALTIME, &time);
  return secondsOf(time);
}

CalendarTime SystemClock::localTime() {
  timespec time;
  clock_gettime(CLOCK_REALTIME, &time);
  std::tm parts = {};
  localtime_r(&time.tv_sec, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
          parts.tm_sec + 1e-9 * static_cast<double>(time.tv_nsec)};
}

}  // namespace kelo::platform::native
