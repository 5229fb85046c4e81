// What may follow a text that is being typed: names that begin like its last word.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "interpreter/builtin_table.h"
#include "platform/file_system.h"
#include "session/variables.h"

namespace kelo::session {

struct Completion {
  enum class Kind { function, variable, field, file };
  std::string label;
  Kind kind;
  std::string detail;  ///< the help of a function, kind and size of a variable
};

struct Completions {
  int64_t from = 0;  ///< where the word begins, in UTF-16 units
  std::vector<Completion> items;  ///< by name
};

/// What a completion looks in.
struct Surroundings {
  const std::vector<Variable>& variables;
  const BuiltinTable& builtins;
  const platform::FileSystem& files;
  std::string directory;  ///< whose program files can be called
};

/// The completions at a position (in UTF-16 units) of a text: of a name, of the field after "s.",
/// inside quotes of a file's name. Nothing where no word has been begun.
Completions completionsAt(std::string_view text, int64_t position, const Surroundings& surroundings);

}  // namespace kelo::session
