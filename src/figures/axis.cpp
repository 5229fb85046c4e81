#include "figures/axis.h"

#include "figures/auto_ticks.h"
#include "messages/catalogue/figures.h"
#include "messages/message.h"

namespace kelo::figures {

void AxisState::refreshTicks() {
  if (autoTicks) ticks = figures::autoTicks(limits);
}

Limits checkedLimits(double lower, double upper) {
  if (upper < lower) throw problem(text::kLimitsReversed);
  return {lower, upper};
}

}  // namespace kelo::figures
