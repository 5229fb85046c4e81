#include "frontend/parser_buffer.h"

namespace kelo {

void ParserBuffer::add(ParserBufferItem item) {
  auto key = std::make_pair(item.dirRelPath, item.fileNameWithExt);
  items_.insert_or_assign(std::move(key), std::move(item));
}

const ParserBufferItem* ParserBuffer::find(const std::string& dirRelPath, const std::string& fileNameWithExt) const {
  const auto found = items_.find({dirRelPath, fileNameWithExt});
  return found == items_.end() ? nullptr : &found->second;
}

}  // namespace kelo
