#include "messages/catalogue/operators.h"

#include <fmt/format.h>

namespace kelo::text {

std::string solveSingular(const std::string& equation) {
  return "Failed to solve the matrix equation " + equation + " since A is singular";
}

std::string solveRankDeficient(const std::string& equation, int64_t rank, double tolerance) {
  return fmt::format("A is rank deficient when solving {}. A has rank {} with tolerance {:e}", equation, rank,
                     tolerance);
}

std::string solveNearlySingular(const std::string& equation, double rcond) {
  return fmt::format("A is nearly singular, or singular, when solving {} with rcond = {:e}. Results may be inaccurate",
                     equation, rcond);
}

std::string inverseNearlySingular(double rcond) {
  return fmt::format("When computing A^(-1), A is nearly singular with rcond = {:e}. The result may be inaccurate",
                     rcond);
}

}  // namespace kelo::text
