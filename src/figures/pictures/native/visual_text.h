// Text in the order in which it is painted.
#pragma once

#include <string>

namespace kelo::pictures::native {

/// Scripts that run from right to left are put in the order of the eye, Arabic letters in their
/// joined forms, as by the Unicode bidirectional algorithm. Other text as it is; all text, where
/// the library for it is missing.
std::string visualText(const std::string& utf8);

}  // namespace kelo::pictures::native
