#include "figures/axis.h"

#include "figures/auto_ticks.h"
#include "messages/catalogue/figures.h"
#include "messages/message.h"

namespace kelo::figures {

void AxisState::setLimits(Limits newLimits) {
  limits = newLimits;
  refreshTicks();
  autoLimits = false;
}

void AxisState::setTicks(std::vector<double> newTicks) {
  ticks = std::move(newTicks);
  autoTicks = false;
}

void AxisState::setAutoTicks(bool isAuto) {
  autoTicks = isAuto;
  refreshTicks();
}

void AxisState::refreshTicks() {
  if (autoTicks) ticks = figures::autoTicks(limits);
}

Limits checkedLimits(double lower, double upper) {
  if (upper < lower) throw problem(text::kLimitsReversed);
  return {lower, upper};
}

}  // namespace kelo::figures
