// The files that were parsed in one run, so that a function called in a loop is parsed once. It belongs to whoever runs
// programs and is passed by reference; each parse of a console command empties it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace kelo {

class MatlabParser;

struct ParserBufferItem {
  std::string dirRelPath;
  std::string fileNameWithExt;
  std::shared_ptr<MatlabParser> parser;
};

class ParserBuffer {
 public:
  /// Takes the place of an item for the same file.
  void add(ParserBufferItem item);
  /// The item for a file, or null. The pointer is good until the buffer changes.
  const ParserBufferItem* find(const std::string& dirRelPath, const std::string& fileNameWithExt) const;
  void clear() { items_.clear(); }
  size_t size() const { return items_.size(); }

 private:
  std::map<std::pair<std::string, std::string>, ParserBufferItem> items_;
};

}  // namespace kelo
