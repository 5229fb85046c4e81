// The argument readers: every word that is needed to read and check what a built-in was given.
//
// Each reader takes the call, the position of the argument from 0 and the words of its complaint;
// it gives the value in the form asked for, or throws the complaint. `is...` questions throw
// nothing. A char or logical array counts as numeric unless a reader says otherwise.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "interpreter/complaints.h"

namespace kelo::read {

/// An array of numbers of any kind, as it is.
const NumericArray& numeric(const Call& call, int position, const Wording& words);
/// The same, moved out of the arguments, so that its memory can serve the result.
NumericArray takeNumeric(Call& call, int position, const Wording& words);
/// An array of numbers that is not of characters.
const NumericArray& nonChar(const Call& call, int position, const Wording& words);
/// An array of either sort, numeric or structure.
const Storable& array(const Call& call, int position, const Wording& words);
/// A structure array.
const StructArray& structure(const Call& call, int position, const Wording& words);
/// Numbers without imaginary parts, as doubles of the same size. A complex record qualifies when
/// its imaginary parts are all 0.
DoubleArray real(const Call& call, int position, const Wording& words);
/// The same, moved out of the arguments, so that its memory can serve the result.
DoubleArray takeReal(Call& call, int position, const Wording& words);
/// One real number; Inf and NaN are let through.
double realScalar(const Call& call, int position, const Wording& words);
/// One whole number of at least `least`: no fraction, imaginary part, Inf or NaN.
int64_t integer(const Call& call, int position, const Wording& words, int64_t least = INT64_MIN);
/// A dimension: a whole number from 1; beyond ndims is allowed and means a length of 1.
int64_t dimension(const Call& call, int position, const Wording& words);
/// A text: a char array that is a row or empty, as UTF-8.
std::string text(const Call& call, int position, const Wording& words);
/// One of the given words, compared without regard to case; gives its index.
int option(const Call& call, int position, const Wording& words, std::initializer_list<const char*> choices);

bool isText(const Storable& value);     ///< a char array that is a row or empty
bool isNumeric(const Storable& value);  ///< any numeric array, text included
/// One whole number without fraction, imaginary part, Inf or NaN; absent for anything else.
std::optional<int64_t> asInteger(const Storable& value);
/// Whole numbers as above, of an array of any size, in storage order; absent when one is not.
std::optional<std::vector<int64_t>> asIntegers(const Storable& value);

}  // namespace kelo::read
