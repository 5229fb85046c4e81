// Time: tic, toc, clock, date. Tested by tests/transcripts/builtins/time.txt.
#include <fmt/format.h>

#include <cmath>

#include "builtins/library.h"
#include "interpreter/environment.h"
#include "interpreter/reader.h"
#include "messages/catalogue/system_functions.h"

namespace kelo::builtins {
namespace {

NodeValue tic(Call& call) {
  const double now = call.environment.clock.monotonicSeconds();
  call.environment.ticTime = now;
  return call.isStatement() ? NodeValue::nothing() : NodeValue(now);
}

/// The moment that is counted from: the argument, or the last `tic`.
double startOf(const Call& call, double now) {
  if (call.count() == 0) {
    if (!call.environment.ticTime) throw Wording::sentence(text::kTocBeforeTic).complaint(call);
    return *call.environment.ticTime;
  }
  read::numeric(call, 0, Wording::sentence(text::kTocNumeric));
  constexpr Wording words{"t", "t", text::kTocNumber};
  const double start = read::realScalar(call, 0, words);
  if (!std::isfinite(start) || start > now) throw words.complaint(call);
  return start;
}

NodeValue toc(Call& call) {
  const double now = call.environment.clock.monotonicSeconds();
  const double seconds = now - startOf(call, now);
  if (!call.isStatement()) return NodeValue(seconds);
  call.environment.showText(fmt::format(text::kTimeElapsed, seconds));
  return NodeValue::nothing();
}

NodeValue clock(Call& call) {
  const platform::CalendarTime time = call.environment.clock.localTime();
  const double parts[] = {double(time.year), double(time.month),  double(time.day),
                          double(time.hour), double(time.minute), time.seconds};
  return DoubleArray::row(parts);
}

NodeValue date(Call& call) {
  static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const platform::CalendarTime time = call.environment.clock.localTime();
  return charRow(fmt::format("{:02}-{}-{:04}", time.day, kMonths[time.month - 1], time.year));
}

// clang-format off
constexpr Builtin kTime[] = {
    {"clock", clock, {0, 0}, 1, "",
     "The time as year, month, day, hour, minute and seconds", "clock", {.inputs = text::kTimeInputs}},
    {"date",  date,  {0, 0}, 1, "",
     "The day as text", "date", {.inputs = text::kTimeInputs}},
    {"tic",   tic,   {0, 0}, 1, "",
     "Start to take the time", "tic", {.inputs = text::kTicInputs}},
    {"toc",   toc,   {0, 1}, 1, "t",
     "The seconds since tic, or since t = tic", "tic; sum(rand(1000)); toc"},
};
// clang-format on

}  // namespace

std::span<const Builtin> timeTable() { return kTime; }

}  // namespace kelo::builtins
