// Bytes on their way to standard output, written as far as the reader takes them.
#pragma once

#include <cstddef>
#include <string>

namespace kelo::serve {

class OutputBuffer {
 public:
  void add(const std::string& bytes) { bytes_ += bytes; }
  size_t size() const { return bytes_.size() - written_; }
  /// Writes a piece that cannot block. events: those of standard output, from poll
  void write(short events);
  /// False when nobody reads standard output any more.
  bool hasReader() const { return hasReader_; }

 private:
  std::string bytes_;
  size_t written_ = 0;
  bool hasReader_ = true;
};

}  // namespace kelo::serve
