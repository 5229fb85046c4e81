// Texts of the figure models and of the figure panel.
#pragma once

#include <fmt/format.h>

#include <string>

#include "messages/alert.h"

namespace kelo::text {

inline constexpr const char* kLimitsReversed = "Lower limit should not exceed the upper one";

// Changes by a settings panel
inline constexpr const char* kLimitsMustRise = "the lower limit should be below the upper one";
inline constexpr const char* kSizeMustBePositive = "a width or size should be positive";
inline constexpr const char* kNoFigure = "there is no figure";

// Pictures
inline constexpr const char* kLibraryMissing = "Pictures need the library {}";
inline constexpr const char* kLibraryWithoutFunction = "The picture library has no function {}";
inline constexpr const char* kPictureFailed = "The picture could not be made: {}";

// Alerts of the panel
inline Alert figureExists(const std::string& name) {
  return {"Failed to Save", fmt::format("Figure named \"{}\" already exists.", name)};
}
inline Alert figureNotWritten() { return {"Failed to Save", "Error occurred while writing data to the figure file."}; }
inline Alert figureFolderMissing() { return {"Failed to Load", "Default figure directory not found."}; }
inline Alert figuresNotLoaded() { return {"Failed to Load", "Error occurred while loading figure files."}; }
inline Alert figureNotDeleted(const std::string& name) {
  return {"Aborted", fmt::format("Error occurred while attempting to delete the figure named \"{}\"", name)};
}
inline Alert figureNotExported() { return {"Failed to Export", "Error occurred while attempting to export figure"}; }
inline Alert pdfNotCreated() { return {"Failed to Create PDF", "Error occurred while attempting to create PDF"}; }

/// For the developer's log.
inline std::string figureFileSkipped(const std::string& fault) { return "json error=" + fault; }

}  // namespace kelo::text
