// FigureData: a saved figure, as its file holds it: the model, a thumbnail, and where and when it
// was saved.
#pragma once

#include <optional>
#include <string>

#include "figures/figure_panel.h"

namespace kelo::figures {

/// The identity of a figure in a list, as the canonical upper-case text of a UUID. Not taken from
/// the file: each reading gives a new one.
struct FigureId {
  std::string text;
  /// A random one (RFC 9562, version 4).
  static FigureId random();
};

/// Bytes that are coded as base64 text.
struct ByteString {
  std::string bytes;
  friend bool operator==(const ByteString&, const ByteString&) = default;
};

struct FigureData {
  struct ThumbnailData {
    ByteString data;  ///< a PNG
  };

  double timeStamp = 0;  ///< seconds since 2001-01-01 00:00:00 UTC
  ThumbnailData thumbnail;
  std::string fileNameWithoutExt;
  FigureId id = FigureId::random();
  std::optional<std::string> appVersion;
  std::optional<std::string> buildNumber;
  std::optional<std::string> osVersion;
  std::optional<std::string> platform;
  std::optional<PlotData> plotData;  ///< exactly one of the two is there
  std::optional<SurfData> surfData;

  /// The model, to be shown.
  Figure figure() const;
};

}  // namespace kelo::figures
