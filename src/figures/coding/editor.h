// Finds a value by its path and reads it anew.
#pragma once

#include <charconv>

#include "figures/coding/decoder.h"
#include "messages/catalogue/figures.h"

namespace kelo::figures {

/// Widths and sizes are greater than 0 in what is edited; a file may hold others.
template <class T>
bool hasSizes(const T&) {
  return true;
}
inline bool hasSizes(const Line::Attributes& line) { return line.lineWidth > 0 && line.markerSize > 0; }
inline bool hasSizes(const Grids& grids) { return grids.width > 0; }
inline bool hasSizes(const SurfData& surface) { return surface.zoomFactor > 0; }
inline bool hasSizes(const Legend& legend) {
  return legend.borderWidth > 0 && legend.lineLength > 0 && legend.contentToPlotViewMargin >= 0 && legend.rowHeight > 0;
}

/// The path is walked from the left; what is not named by it stays as it is.
class Editor {
 public:
  /// REQUIRES: both outlive this
  Editor(std::string_view path, std::string_view value) : path_(path), in_(value) {}

  /// throws CodingError: no such key or element, or a value that does not fit
  template <class T>
  void edit(T& value) {
    if (path_.empty()) {
      in_.read(value);
      in_.finish();
    } else {
      descend(value);
    }
    if (!hasSizes(value)) throw CodingError(text::kSizeMustBePositive);
  }

 private:
  [[noreturn]] static void failUnknown() { throw CodingError("there is nothing of this name"); }

  std::string_view takePart() {
    const std::string_view part = path_.substr(0, path_.find('/'));
    path_.remove_prefix(std::min(part.size() + 1, path_.size()));
    return part;
  }

  template <class T>
  void descend(T&) {
    failUnknown();
  }
  template <class T>
  void descend(std::vector<T>& values) {
    const std::string_view part = takePart();
    size_t index = 0;
    const auto [behind, fault] = std::from_chars(part.data(), part.data() + part.size(), index);
    if (fault != std::errc() || behind != part.data() + part.size() || index >= values.size()) failUnknown();
    edit(values[index]);
  }
  template <Record T>
  void descend(T& record) {
    const std::string_view key = takePart();
    const auto tryField = [&](const auto& field) {
      if (key != field.key) return false;
      edit(record.*field.member);
      return true;
    };
    if (!std::apply([&](const auto&... field) { return (tryField(field) || ...); }, Fields<T>::list)) failUnknown();
    in_.check(record);
  }

  std::string_view path_;
  Decoder in_;
};

}  // namespace kelo::figures
