// Texts of the language front end: syntax errors and loading of files.
#pragma once

#include <string>
#include <string_view>

namespace kelo::text {

inline constexpr const char* kLineEndsUnexpectedly = "The line ends unexpectedly";
inline constexpr const char* kNestedTooDeeply = "The text is nested too deeply";
inline constexpr const char* kTextTooLong = "The text is too long";
inline constexpr const char* kNotUtf8 = "The text is not valid UTF-8";

/// The token that does not fit, in lower case.
std::string unexpectedCharacter(std::string_view token);

/// directory   relative to the work directory, shown as "Home・PART・PART"
std::string fileNotFound(std::string_view name, std::string_view directory);
std::string syntaxErrorInFile(std::string_view name);
std::string errorWhileParsingFile(std::string_view name);
std::string noFunctionDeclaration(std::string_view name);

/// The directory's display text: "Home", then "・" and the name for each component.
std::string directoryDisplayText(std::string_view directory);

}  // namespace kelo::text
