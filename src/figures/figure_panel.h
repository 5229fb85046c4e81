// The figure panel: the current figure, which is none, a plot or a surface, and the count of its
// changes.
//
// Commands change it from the interpreter's thread, a front end from the main thread, and drawing
// reads it; so it is guarded by one lock, which is held for as long as a model is read or written
// and never while drawing: what draws takes a copy, which shares the points.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <variant>

#include "figures/plot_data.h"
#include "figures/surf_data.h"
#include "platform/semaphore.h"

namespace kelo::figures {

using Figure = std::variant<std::monostate, PlotData, SurfData>;

class FigurePanel {
 public:
  explicit FigurePanel(platform::Synchronization& synchronization) : lock_(synchronization.makeLock()) {}

  /// Called after each change, on the thread that made it, with the lock free: the wish to be
  /// drawn anew. It should return at once. Set before the first run.
  std::function<void()> changed;

  /// A copy of the current figure. Thread: any
  Figure figure() const;
  /// Grows by one with each change. Thread: any
  int64_t revision() const;

  /// Calls `reader(const Figure&)` under the lock and gives its result. Thread: any
  template <class F>
  auto read(F&& reader) const {
    const std::lock_guard<platform::Lock> guard(*lock_);
    return reader(static_cast<const Figure&>(figure_));
  }
  /// Calls `writer(Figure&)` under the lock and counts a change, unless it throws or there is no
  /// figure before and after. Thread: any
  template <class F>
  void write(F&& writer) {
    {
      const std::lock_guard<platform::Lock> guard(*lock_);
      const bool hadFigure = hasFigure();
      writer(figure_);
      if (!hadFigure && !hasFigure()) return;
      ++revision_;
    }
    if (changed) changed();
  }

  /// What `plot` and its kind end with: the figure, or more lines of a plot that is held. A surface
  /// goes away. Thread: main
  void plotDataShow(PlotData plot);
  /// What `surf` ends with: the figure, or more surfaces of one that is held. A plot goes away.
  /// Thread: main
  void surfDataShow(SurfData surface);
  /// Shows a figure in place of the current one. Thread: any
  void show(Figure figure);
  /// No figure any more. Thread: any
  void close() { show(std::monostate()); }

 private:
  bool hasFigure() const { return !std::holds_alternative<std::monostate>(figure_); }

  std::unique_ptr<platform::Lock> lock_;
  Figure figure_;
  int64_t revision_ = 0;
};

}  // namespace kelo::figures
