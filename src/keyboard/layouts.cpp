#include "keyboard/layouts.h"

namespace kelo {

using enum KeyIdentifier;

const KeyRows& alphaKeyboard() {
  static const KeyRows rows = {
      {q, w, e, r, t, y, u, i, o, p, deleteBackward},
      {a, s, d, f, g, h, j, k, l, enter},
      {shift, z, x, c, v, b, n, m, comma, semicolon},
      {numKeyboard, lSqb, lpar, space, rpar, rSqb, colon, equal},
  };
  return rows;
}

const KeyRows& alphaCapKeyboard() {
  static const KeyRows rows = {
      {Q, W, E, R, T, Y, U, I, O, P, deleteBackward},
      {A, S, D, F, G, H, J, K, L, enter},
      {shift, Z, X, C, V, B, N, M, comma, semicolon, equal},
      {numKeyboard, lSqb, lpar, space, rpar, rSqb, colon, equal},
  };
  return rows;
}

const KeyRows& symbolKeyboard() {
  static const KeyRows rows = {
      {num1, num2, num3, num4, num5, num6, num7, num8, num9, num0, deleteBackward},
      {power, backwardSlash, minus, plus, multiply, dot, lt, gt, tilde, enter},
      {forwardSlash, exclaim, underScore, at, singleQuote, percent, or_, and_, question, comma, semicolon},
      {abc, lSqb, lpar, space, rpar, rSqb, colon, equal},
  };
  return rows;
}

KeyWidthUnits keyWidthUnits(const KeyRows& keyboard) {
  const std::vector<int> digits = {4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 6}, home = {4, 4, 4, 4, 4, 4, 4, 4, 4, 10},
                         below = {6, 4, 4, 4, 4, 4, 4, 4, 6, 6}, bottom = {6, 4, 4, 16, 4, 4, 4, 4};
  if (keyboard == alphaCapKeyboard()) return {digits, home, {6, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4}, bottom};
  if (keyboard == symbolKeyboard()) return {digits, home, {4, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5}, bottom};
  return {digits, home, below, bottom};
}

}  // namespace kelo
