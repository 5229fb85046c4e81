// Fields of structures as registers of a loop.
//
// While a loop runs natively a field that it names, as in s.x or s.a.b, is a register behind those
// of the frame: its value is read at the entry, and what has changed is written back at an exit. So
// is the field x of all elements of s where it names s(k).x; their values stay where they are.
#pragma once

#include <optional>
#include <span>

#include "interpreter/code.h"
#include "interpreter/native/types.h"
#include "interpreter/native/words.h"

namespace kelo::native {

struct Field {
  int32_t slot;             ///< of the structure
  std::vector<Name> path;   ///< to the value; of the elements of an array: one name
  bool isOfElements = false;
  bool isWritten = false;

  bool isSame(const Field& other) const {
    return slot == other.slot && path == other.path && isOfElements == other.isOfElements;
  }
};

/// The field that an instruction reads or writes; absent where it does neither.
std::optional<Field> fieldOf(const Code& code, const Instruction& i);

/// All that the instructions from `begin` to `end` name, but those of a structure that is looked at
/// as a whole and by elements.
std::vector<Field> fieldsOf(const Code& code, int32_t begin, int32_t end);

/// Where a field lies, that of the first element where there are several; null where there is none.
/// If it is written nobody else holds the structures around it from now on.
Storable* placeOf(const Field& field, Storable* registers);

/// What it holds. `place` may be null.
Type typeOf(const Field& field, const Storable* place);

/// The words of a field of all elements: where the first lies, how many there are, and the bytes
/// from one to the next.
void describe(const StructArray& array, const Storable* place, Word* words);

}  // namespace kelo::native
