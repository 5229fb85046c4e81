// The machine's clocks.
#pragma once

#include "platform/clock.h"

namespace kelo::platform::native {

struct MonotonicClock {
  static double now();  ///< seconds
};

class SystemClock : public Clock {
 public:
  CalendarTime localTime() override;
  double unixSeconds() override;
  double monotonicSeconds() override { return MonotonicClock::now(); }
};

}  // namespace kelo::platform::native
