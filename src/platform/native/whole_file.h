// Reading and replacing of whole files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/native/descriptor.h"

namespace kelo::platform::native {

/// The bytes of a regular file; nothing when there is none or it cannot be read.
std::optional<std::string> readWholeFile(const std::string& path);
std::optional<std::string> readWholeFile(const Descriptor& file);

/// False with the system's error number, when not all could be written.
bool writeAll(int descriptor, std::string_view bytes);

/// Replaces a file, or the one that a link leads to, so that after a fault or a crash either the
/// old or the new content stands there in full, and nothing else where the system has files without
/// a name. Returns the system's words about the fault, if any.
std::optional<std::string> replaceWholeFile(const std::string& path, std::string_view bytes);

}  // namespace kelo::platform::native
