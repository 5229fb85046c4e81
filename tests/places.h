// Where the tests find their samples. The one source behind this knows the folder of the checkout,
// so that the objects of all others are the same wherever the project lies, and a compiler cache
// serves them to every checkout.
#pragma once

#include <string>

namespace kelo::test {

/// The folder tests/ of the checkout.
std::string testsDir();

}  // namespace kelo::test
