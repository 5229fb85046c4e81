// The functions that make, rearrange and search arrays: what a call gives, elements in storage
// order, or its complaint. The values are from the definitions, worked out by hand.
#include <gtest/gtest.h>

#include "builtins/calls.h"

namespace kelo {
namespace {

using namespace testing;

const NumericArray kSquare = counting({2, 2});   // [1 3; 2 4]
const NumericArray kMatrix = counting({2, 3});   // [1 3 5; 2 4 6]
const NumericArray kCube = counting({2, 1, 2});  // pages [1; 2] and [3; 4]
const NumericArray kEmpty;
Storable structure() { return StructArray(); }

TEST(Arrays, FilledArrays) {
  check({
      {"zeros", {}, "double 1 x 1: 0"},
      {"ones", {num(2)}, "double 2 x 2: 1 1 1 1"},
      {"ones", {column({1, 2, 1, 2})}, "double 1 x 2 x 1 x 2: 1 1 1 1"},
      {"zeros", {num(2), num(0)}, "double 2 x 0:"},
      {"nan", {num(1), truth(true), whole(2)}, "double 1 x 1 x 2: nan nan"},
      {"Inf", {num(1), num(2)}, "double 1 x 2: inf inf"},
      {"true", {num(1), num(2)}, "logical 1 x 2: true true"},
      {"false", {}, "logical 1 x 1: false"},
      {"eye", {num(2), num(3)}, "double 2 x 3: 1 0 0 1 0 0"},
      {"eye", {row({3, 2, 1})}, "double 3 x 2: 1 0 0 0 1 0"},
      {"eye", {num(2), num(2), num(2)}, " | eye() can only produce a scalar, vector or matrix"},
      {"zeros",
       {num(2.5)},
       " | In zeros(v), v is should be a real non-negative integer scalar or vector, not equal to Inf nor NaN"},
      {"ones", {kSquare}, " | In ones(v), v should be scalar or vector"},
      {"ones", {num(2), row({1, 2})}, " | In ones(s1,s2,...,sn), the input arguments should be scalars"},
      {"inf",
       {num(1), num(1), num(kInf)},
       " | In inf(s1,s2,...,sn), the input arguments should be real non-negative integer scalars, not equal to Inf nor "
       "NaN"},
      {"true", {structure()}, " | The input arguments of true() should be numeric data"},
      {"zeros", {num(1e10)}, "fatal: integer overflow in a multiplication"},
      {"blanks", {num(2)}, "char 1 x 2:    "},
      {"blanks", {num(1.5)}, " | In blanks(n), n should be a real integer scalar not equal to Inf nor NaN"},
  });
}

TEST(Arrays, Linspace) {
  check({
      {"linspace", {num(0), num(1), num(5)}, "double 1 x 5: 0 0.25 0.5 0.75 1"},
      {"linspace", {num(0), num(1), num(1)}, "double 1 x 1: 1"},
      {"linspace", {num(0), num(1), num(0)}, "double 1 x 0:"},
      {"linspace", {num(kInf), num(3), num(2)}, "double 1 x 2: inf 3"},
      {"linspace", {complex(0, 2), num(2), num(3)}, "complex 1 x 3: 0,2 1,1 2,0"},
      {"linspace", {row({1, 2}), num(1)}, " | In linspace(a, b), a should be a numeric scalar"},
      {"linspace",
       {num(1), num(2), num(kNaN)},
       " | In linspace(a, b, n), n should be a real integer scalar not equal to Inf nor NaN"},
  });
  EXPECT_EQ(called("linspace", {num(0), num(1)}).numElements(), 100);
  EXPECT_EQ(called("linspace", {num(0), num(1), num(50)}).asDouble()[49], 1 / 49.0 * 49);  // not 1
}

TEST(Arrays, SizesAndSubscripts) {
  check({
      {"size", {kCube}, "int 1 x 3: 2 1 2"},
      {"size", {counting({2, 3, 4}), num(5)}, "int 1 x 1: 1"},
      {"size", {structure()}, "int 1 x 2: 1 1"},
      {"size", {kMatrix, num(0)}, " | In size(A, d), d must be a non-empty real positive integer"},
      {"numel", {kCube}, "int 1 x 1: 4"},
      {"ndims", {kCube}, "int 1 x 1: 3"},
      {"length", {kMatrix}, "int 1 x 1: 3"},
      {"length", {zeros({0, 3})}, "int 1 x 1: 0"},
      {"ind2sub", {row({2, 3}), row({1, 6})}, "double 1 x 2: 1 6"},
      {"ind2sub", {row({2, 3}), num(7)}, "A given linear index (7) exceeds the total number of elements (6)"},
      {"ind2sub", {num(2), num(1)}, " | In ind2sub(sizeVec, ind), sizeVec should have at least 2 elements"},
      {"ind2sub",
       {row({2, 0}), num(1)},
       " | In ind2sub(sizeVec, ind), sizeVec should be a vector of real positive integers"},
      {"ind2sub",
       {row({2, 3}), num(0)},
       " | In ind2sub(sizeVec, ind), ind should be an array of real positive integers"},
      {"sub2ind", {row({2, 3}), column({1, 2}), column({1, 3})}, "double 2 x 1: 1 6"},
      {"sub2ind", {row({2, 3}), num(2), num(3), num(1)}, "double 1 x 1: 6"},
      {"sub2ind",
       {row({2, 3}), num(3), num(1)},
       "When converting subscript indexes to linear index, the 1st subscript index exceeds the dimension length"},
      {"sub2ind",
       {row({2, 3}), row({1, 1}), num(1)},
       " | In sub2ind(sizeVec, sub1, sub2, ..., subN), subi for all i should have the same sizes"},
  });
}

TEST(Arrays, RepetitionAndGrids) {
  check({
      {"repmat", {row({1, 2}), num(2)}, "double 2 x 4: 1 1 2 2 1 1 2 2"},
      {"repmat", {kSquare, row({1, 1, 2})}, "double 2 x 2 x 2: 1 2 3 4 1 2 3 4"},
      {"repmat", {text("ab"), num(2), num(1)}, "char 2 x 2: a a b b"},
      {"repmat", {kCube, num(1), num(2)}, "double 2 x 2 x 2: 1 2 1 2 3 4 3 4"},
      {"repmat",
       {kSquare, num(-1)},
       " | In repmat(A, n), n should be a scalar or a vector of real non-negative integers not equal to Inf nor NaN"},
      {"repmat", {kSquare, kEmpty}, " | In repmat(A, n), n should be non-empty"},
      {"repmat",
       {kSquare, num(1), row({1, 2})},
       " | In repmat(A, s1, s2, ..., sn), si should be a real non-negative integer, not equal to Inf nor NaN"},
      {"meshgrid", {row({1, 2, 3}), column({4, 5})}, "double 2 x 3: 1 1 2 2 3 3"},
      {"meshgrid", {row({1, 2})}, "double 2 x 2: 1 1 2 2"},
      {"ndgrid", {row({1, 2, 3}), row({4, 5})}, "double 3 x 2: 1 2 3 1 2 3"},
      {"ndgrid", {row({1, 2}), kSquare}, " | In ndgrid(x1, x2, ...), x2 should be a vector of numeric values"},
  });
}

TEST(Arrays, Reshaping) {
  check({
      {"reshape", {counting({1, 6}), kEmpty, num(2)}, "double 3 x 2: 1 2 3 4 5 6"},
      {"reshape", {zeros({0, 3}), num(3), kEmpty}, "double 3 x 0:"},
      {"reshape", {kSquare, kEmpty, kEmpty}, " | In reshape(A, s1, s2, ..., sn), there should be less than 2 empty si"},
      {"reshape", {kSquare, kEmpty, num(3)}, "Array size should remain unchanged after reshaping"},
      {"reshape",
       {kSquare, row({-2, -2})},
       " | In reshape(A, sizeVec), sizeVec should be a vector of real non-negative integers not equal to Inf nor NaN"},
      {"reshape", {kSquare, num(4)}, "A size vector should have at least two numbers"},
      {"reshape",
       {kSquare, num(4), num(0.5)},
       " | In reshape(A, s1, s2, ..., sn), si should be an empty array or real non-negative integer not equal to Inf "
       "nor NaN"},
      {"shiftdim", {counting({1, 1, 3})}, "double 3 x 1: 1 2 3"},
      {"shiftdim", {kMatrix, num(1)}, "double 3 x 2: 1 3 5 2 4 6"},
      {"shiftdim", {kCube, num(-1)}, "double 1 x 2 x 1 x 2: 1 2 3 4"},
      {"shiftdim", {kCube, num(4)}, "double 1 x 2 x 2: 1 3 2 4"},
      {"shiftdim", {kCube, num(0.5)}, " | In shiftdim(A, k), k should be a real integer not equal to Inf nor NaN"},
      {"permute", {kMatrix, row({3, 1, 2})}, "double 1 x 2 x 3: 1 2 3 4 5 6"},
      {"ipermute", {kCube, row({3, 1, 2})}, "double 1 x 2 x 2: 1 3 2 4"},
      {"permute",
       {kCube, row({2, 1})},
       "When dimensions of A are permuted, the vector \"order\" should be a permutation of 1:length(order) and should "
       "have at least ndims(A) elements"},
      {"permute",
       {kMatrix, row({1, 1})},
       " | In permute(A, order), order should be a permutation of the integers 1:length(order)"},
      {"transpose", {complexShaped({1, 2}, {{1, 2}, {3, 4}})}, "complex 2 x 1: 1,2 3,4"},
      {"ctranspose", {complexShaped({1, 2}, {{1, 2}, {3, 4}})}, "complex 2 x 1: 1,-2 3,-4"},
      {"flip", {row({1, 2, 3})}, "double 1 x 3: 3 2 1"},
      {"flipdim", {kCube, num(3)}, "double 2 x 1 x 2: 3 4 1 2"},
      {"flip", {kMatrix, num(7)}, "double 2 x 3: 1 2 3 4 5 6"},
      {"fliplr", {text("abc")}, "char 1 x 3: c b a"},
      {"flipud", {kMatrix}, "double 2 x 3: 2 1 4 3 6 5"},
      {"flip",
       {kMatrix, num(0)},
       " | In flip(A, dim), dim should be a real positive integer scalar, not equal to Inf nor NaN"},
      {"rot90", {kMatrix}, "double 3 x 2: 5 3 1 6 4 2"},
      {"rot90", {kMatrix, num(2)}, "double 2 x 3: 6 5 4 3 2 1"},
      {"rot90", {kMatrix, num(-1)}, "double 3 x 2: 2 4 6 1 3 5"},
      {"rot90", {kMatrix, num(-4)}, "double 2 x 3: 1 2 3 4 5 6"},
  });
}

TEST(Arrays, DiagonalsAndTriangles) {
  check({
      {"diag", {row({1, 2})}, "double 2 x 2: 1 0 0 2"},
      {"diag", {num(5), num(1)}, "double 2 x 2: 0 0 5 0"},
      {"diag", {truth(true), num(-1)}, "logical 2 x 2: false true false false"},
      {"diag", {kMatrix}, "double 2 x 1: 1 4"},
      {"diag", {kMatrix, num(2)}, "double 1 x 1: 5"},
      {"diag", {kMatrix, num(3)}, "double 0 x 1:"},
      {"diag", {kEmpty}, "double 0 x 0:"},
      {"diag", {kCube}, " | In diag(A), A should be a numeric matrix"},
      {"tril", {kMatrix, num(1)}, "double 2 x 3: 1 2 3 4 0 6"},
      {"triu", {kMatrix}, "double 2 x 3: 1 0 3 4 5 6"},
      {"triu", {kMatrix, num(-9e18)}, "double 2 x 3: 1 2 3 4 5 6"},
      {"triu", {kMatrix, num(9e18)}, "double 2 x 3: 0 0 0 0 0 0"},
      {"tril", {kMatrix, num(0.5)}, " | In tril(A, k), k should be a real integer scalar not equal to Inf nor NaN"},
      {"trace", {kSquare}, "double 1 x 1: 5"},
      {"trace", {kEmpty}, "double 1 x 1: 0"},
      {"trace", {kMatrix}, " | In trace(A), A should be a square numeric matrix"},
  });
}

TEST(Arrays, SortAndFind) {
  check({
      {"sort", {shaped({2, 2}, {4, 3, 1, 2}), num(2)}, "double 2 x 2: 1 2 4 3"},
      {"sort", {row({3, kNaN, 1}), text("Descend")}, "double 1 x 3: nan 3 1"},
      {"sort", {text("hello")}, "char 1 x 5: e h l l o"},
      {"sort", {row({-3, 2, 3}), text("comparisonMethod"), text("ABS")}, "double 1 x 3: 2 3 -3"},
      {"sort", {row({2, kNaN, 1}), text("MissingPlacement"), text("first")}, "double 1 x 3: nan 1 2"},
      {"sort", {complexShaped({1, 3}, {{3, 0}, {0, -1}, {0, 1}})}, "complex 1 x 3: 0,-1 0,1 3,0"},
      {"sort", {zeros({0, 3})}, "double 0 x 3:"},
      {"sort", {structure()}, " | The first input argument of sort() should be a numeric array"},
      {"sort", {structure(), num(1)}, " | In sort(A, ...), A should be an array of numeric values"},
      {"sort", {kMatrix, num(0)}, " | In sort(A, dim), dim should be real positive integer scalar"},
      {"sort", {kMatrix, text("up")}, " | In sort(A, direction), direction should be either 'ascend' or 'descend'"},
      {"sort",
       {kMatrix, num(1), text("ascend"), num(3)},
       " | Expecting no more than 3 input arguments when no name-value pair is provided in the inputs"},
      {"sort",
       {kMatrix, num(1), text("ascend"), num(3), text("missingplacement"), text("last")},
       " | Expecting no more than 3 input arguments before the first name-value pair found in the inputs"},
      {"sort",
       {kMatrix, text("missingplacement"), text("last"), text("odd"), num(1)},
       "Invalid option name found | It expects 'comparisonmethod' or 'missingplacement'"},
      {"sort",
       {kMatrix, text("missingplacement")},
       " | In input arguments of sort(), 'missingplacement' has no matched value"},
      {"sort", {kMatrix, text("missingplacement"), text("middle")}, " | Invalid input arguments for sort()"},
      {"find", {row({0, kNaN, 0, -1})}, "double 1 x 2: 2 4"},
      {"find", {shaped({2, 2}, {0, 1, 1, 0})}, "double 2 x 1: 2 3"},
      {"find", {shaped({2, 2}, {1, 1, 1, 0}), num(2)}, "double 2 x 1: 1 2"},
      {"find", {complexShaped({1, 2}, {{0, 0}, {0, 1}})}, "double 1 x 1: 2"},
      {"find", {kSquare, num(0)}, " | In find(X, n), n should be a real positive integer scalar"},
      {"find", {structure()}, " | In find(X), X should be a numeric array"},
  });
}

TEST(Arrays, FindsAllHitsOfLargeArrays) {
  std::mt19937_64 random(3);
  LogicalArray mask(SizeVector(100003, 1), false);
  std::vector<double> expected;
  for (int64_t i = 0; i < mask.numElements(); ++i) {
    if (random() % 3 != 0) continue;
    mask.writable()[i] = true;
    expected.push_back(static_cast<double>(i + 1));
  }
  const NumericArray doubles = NumericArray(mask).toDoubleArray();
  for (const NumericArray& array : {NumericArray(mask), doubles}) {
    EXPECT_EQ(describe(called("find", {array})), describe(DoubleArray::column(expected)));
    for (const size_t most : {size_t{1}, size_t{11'000}, size_t{25'000}, expected.size(), expected.size() + 9}) {
      const std::vector<double> first(expected.begin(), expected.begin() + std::min(most, expected.size()));
      const NumericArray found = called("find", {array, num(static_cast<double>(most))});
      EXPECT_EQ(describe(found), describe(DoubleArray::column(first)));
    }
  }
}

}  // namespace
}  // namespace kelo
