// The text of a structure array: a scalar one with a line per field, others with their size and field names.
#pragma once

#include "display/array_text.h"
#include "values/struct_array.h"

namespace kelo {

/// A structure array under a name, or without one. The fields of a scalar stand in the order in which they were made,
/// the names moved to the right so that their colons stand under each other; rows of doubles and of text show their
/// values.
std::string structText(const StructArray& array, const OptionalName& name, const DisplayParameters& parameters);

}  // namespace kelo
