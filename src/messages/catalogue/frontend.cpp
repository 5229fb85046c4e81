#include "messages/catalogue/frontend.h"

#include <fmt/format.h>

namespace kelo::text {

std::string unexpectedCharacter(std::string_view token) {
  return fmt::format("Unexpected character \"{}\"", token);
}

std::string directoryDisplayText(std::string_view directory) {
  std::string shown = "Home";
  while (!directory.empty()) {
    const size_t slash = std::min(directory.find('/'), directory.size());
    if (slash > 0) shown.append("・").append(directory.substr(0, slash));
    directory.remove_prefix(std::min(slash + 1, directory.size()));
  }
  return shown;
}

std::string fileNotFound(std::string_view name, std::string_view directory) {
  return fmt::format("File named \"{}\" not found in {}", name, directoryDisplayText(directory));
}

std::string syntaxErrorInFile(std::string_view name) { return fmt::format("Syntax error found in {}", name); }

std::string errorWhileParsingFile(std::string_view name) {
  return fmt::format("Error occurred while parsing \"{}\"", name);
}

std::string noFunctionDeclaration(std::string_view name) {
  return fmt::format("No function declaration found in \"{}\"", name);
}

}  // namespace kelo::text
