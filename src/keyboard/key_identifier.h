// The keys of the on-screen keyboard.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kelo {

enum class KeyIdentifier : uint8_t {
  // clang-format off
  a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x, y, z,
  A, B, C, D, E, F, G, H, I, J, K, L, M, N, O, P, Q, R, S, T, U, V, W, X, Y, Z,
  num0, num1, num2, num3, num4, num5, num6, num7, num8, num9,
  dot, deleteBackward, shift, space, multiply, plus, minus, divide, enter, lSqb, rSqb, lpar, rpar, colon, semicolon,
  equal, comma, power, lt, gt, tilde, exclaim, underScore, at, singleQuote, percent, or_, and_, question, forwardSlash,
  backwardSlash, lCurlBracket, rCurlBracket, dollar, doubleQuote, hash, abc, numKeyboard, dismiss
  // clang-format on
};

/// The name that front ends use: that of the enumerator, "or" and "and" without the mark after
/// them.
std::string_view nameOf(KeyIdentifier key);
std::optional<KeyIdentifier> keyNamed(std::string_view name);

}  // namespace kelo
