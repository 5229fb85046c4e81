// Texts of the random numbers. "{}" stands for the function's name.
#pragma once

#include <string>

#include "messages/catalogue/values.h"

namespace kelo::text {

inline std::string argumentInvalid(int position) {
  return "The " + ordinal(position + 1) + " input argument is invalid";
}

// Sizes
inline constexpr const char* kScalarOrVectorSize = "be a scalar or a vector of real integers >= 0";
inline constexpr const char* kLengthHint = "It should be a scalar of real integer >= 0";
inline constexpr const char* kScalarLength = "be a scalar of real integer >= 0";
inline constexpr const char* kSizeOfLengths = "be a vector of real integers >= 0";
inline constexpr const char* kEachLength = "be a real integer scalar >= 0";

// Parameters of the distributions
inline constexpr const char* kLargestInteger = "be a real integer of finite value > 0";
inline constexpr const char* kPositiveNumbersHint =
    "It should be an array of real positive numbers not equal to Inf nor NaN";
inline constexpr const char* kMeanNumbers =
    "The mean should be a real scalar or an array of real numbers not equal to Inf nor NaN";
inline constexpr const char* kDeviationNumbers =
    "The standard deviation should be a real scalar or an array of real numbers >= 0 not equal to Inf nor NaN";

// Their sizes. NOTE: intended: "mu" for poissrnd too, and "sz" or "n" in one sentence.
inline constexpr const char* kMeanAndLengths =
    "In {}(mu, sz1, ..., szN), mu should be a scalar or an array of size equal to [sz1, ..., szN]";
inline constexpr const char* kMeanAndSize =
    "In {}(mu, n), mu should be a scalar or an array of size equal to sz or [n, n]";
inline constexpr const char* kMeanAndDeviation =
    "In {}(mu, sigma), it is expected that both mu and sigma have the same sizes, or that one of them is a scalar";
inline constexpr const char* kMeanDeviationAndLengths =
    "In {}(mu, sigma, s1, ..., sn), it is expected that both mu and sigma have sizes [s1, ..., sn], "
    "or that one of them is a scalar and the other one has size [s1, ..., sn]";
inline constexpr const char* kMeanDeviationAndLength =
    "In {}(mu, sigma, n), it is expected that both mu and sigma are n x n arrays, "
    "or that one of them is a scalar and the other one is an n x n array";
inline constexpr const char* kMeanDeviationAndSize =
    "In {}(mu, sigma, sizeVec), it is expected that both mu and sigma have sizes equal to sizeVec, "
    "or that one of them is a scalar and the other one has size equal to sizeVec";

// Permutations and the seed
inline constexpr const char* kIntegerFromOne = "be an integer scalar >= 1";
inline constexpr const char* kPermutationTooShort = "In {}(n, k), k should not exceed n";
inline constexpr const char* kSeed = "be a real integer scalar >= 0";

}  // namespace kelo::text
