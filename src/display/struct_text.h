// The text of a structure array: a scalar one with a line per field, others with their size and
// field names.
#pragma once

#include "display/array_text.h"
#include "values/storable.h"

namespace kelo {

class Storable;

/// A structure array under a name, or without one. The fields of a scalar stand in the order in
/// which they were made, the names moved to the right so that their colons stand under each other;
/// rows of doubles and of text show their values.
std::string structText(const StructArray& array, const OptionalName& name, const DisplayParameters& parameters);

/// A value by kind and size, as it stands after a field's name: rows of doubles and of text with
/// their values, cut after some 10,000 elements.
std::string summaryText(const Storable& value, int nDigits);

}  // namespace kelo
