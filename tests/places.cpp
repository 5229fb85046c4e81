#include "places.h"

namespace kelo::test {

std::string testsDir() { return KELO_TESTS_DIR; }

}  // namespace kelo::test
