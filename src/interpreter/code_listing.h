// The listing of register code, as `kelo --code` prints it: each line of a text with the
// instructions that it became.
#pragma once

#include <string>
#include <string_view>

#include "interpreter/code.h"

namespace kelo {

class BuiltinTable;
class KeloNode;

/// The code of a program: its statements or its main function, then its local functions. `source`
/// is its text.
std::string listing(KeloNode& program, std::string_view source, const BuiltinTable& builtins);

/// "plus", "rangeStep".
std::string_view operationName(Op op);

}  // namespace kelo
