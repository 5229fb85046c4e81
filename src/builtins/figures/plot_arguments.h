// The arguments of plot, stem, stairs and scatter: data, then specification strings, then
// attributes.
#pragma once

#include <span>
#include <vector>

#include "figures/line.h"
#include "interpreter/builtin.h"

namespace kelo::builtins {

using figures::Line;

class PlotArguments {
 public:
  /// Finds where the attributes begin: at the first text that is the name of one, wherever it
  /// stands.
  explicit PlotArguments(const Call& call);

  int64_t count() const { return static_cast<int64_t>(all_.size()); }
  int64_t attributes() const { return attributes_; }  ///< index of the first; count() without any
  const Storable& operator[](int64_t i) const { return all_[static_cast<size_t>(i)]; }
  /// Whether there is an argument at this place, before the attributes, that is a char array.
  bool isSpecification(int64_t i) const { return i < attributes_ && isCharacters(i); }
  bool isCharacters(int64_t i) const;
  /// A char array as text, whatever its shape. REQUIRES: isCharacters(i)
  std::string text(int64_t i) const;
  /// REQUIRES: numeric
  const NumericArray& numbers(int64_t i) const { return *(*this)[i].numeric(); }

  /// The check of plot, stem and stairs. True: y stands alone; false: x and y come first. throws
  /// Problem
  bool startWithY() const;
  /// Applies the attributes to the lines. throws Problem
  void applyAttributesTo(std::span<Line> lines) const;

 private:
  std::span<const Storable> all_;
  int64_t attributes_;
};

/// "filled": marker faces take the colour of the line, or of the marker's edge where the line is
/// clear.
bool isFilled(const std::string& text);
void fillMarkers(std::span<Line> lines);

/// How many lines a plot that is held has; 0 when nothing is held. New lines take their colours
/// after these.
int64_t heldLines(const Call& call);
/// Ends a command: the lines become a plot, which is shown or joined to the one that is held. The
/// run waits for it.
NodeValue show(Call& call, std::vector<Line> lines);

}  // namespace kelo::builtins
