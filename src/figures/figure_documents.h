// Saved figures: the files ".FIGURES/NAME.kfig" of the documents directory.
//
// Thread: any, one at a time; nothing here touches the current figure.
#pragma once

#include <functional>

#include "figures/figure_data.h"
#include "messages/alert.h"
#include "platform/clock.h"
#include "platform/file_system.h"

namespace kelo::figures {

/// What is written into a file about where it was saved.
struct FigureOrigin {
  std::string buildNumber;
  std::string osVersion;
  std::string platform;  ///< name of the operating system
};

class FigureDocuments {
 public:
  /// `documents` is the documents directory; `log` takes lines for the developer.
  FigureDocuments(platform::FileSystem& documents, platform::Clock& clock, FigureOrigin origin,
                  std::function<void(const std::string&)> log);

  /// Makes the folder unless it is there; an interactive shell does at its start. False: it could
  /// not.
  bool makeFolder();

  /// A figure under a name, with its picture as PNG, as a file holds it.
  FigureData described(const std::string& name, const Figure& figure, std::string thumbnail) const;
  /// Writes a new file and gives what it holds; nothing when there is no figure. Nothing is
  /// overwritten.
  /// throws  Alert: no valid name, the name is taken (also by a file that is no readable figure),
  ///         numbers that are not finite, a fault in writing
  std::optional<FigureData> save(const std::string& name, const Figure& figure, std::string thumbnail);
  /// All figures in the order of the directory, each with a new identity and the name of its file.
  /// A file that cannot be read is skipped with a line in the log, an older one without. throws
  /// Alert
  std::vector<FigureData> loadAll() const;
  /// Removes the file. throws Alert
  void remove(const FigureData& figure);

 private:
  std::optional<FigureData> loaded(const std::string& fileName) const;

  platform::FileSystem& documents_;
  platform::Clock& clock_;
  FigureOrigin origin_;
  std::function<void(const std::string&)> log_;
};

}  // namespace kelo::figures
