// An interned name: a variable, a field, a function or a path, as one small number. Comparing and
// hashing a name costs what it costs for an integer. Some are given back: see held_name.h.
//
// Thread: the table belongs to the interpreter's thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelo {

class Name {
 public:
  constexpr Name() = default;  ///< the empty name
  static Name intern(std::string_view text);
  /// The name of a text that somebody has made a name of already.
  static std::optional<Name> find(std::string_view text);

  const std::string& text() const;
  constexpr uint32_t id() const { return id_; }
  constexpr bool isEmpty() const { return id_ == 0; }
  friend constexpr bool operator==(Name, Name) = default;

 private:
  constexpr explicit Name(uint32_t id) : id_(id) {}
  uint32_t id_ = 0;
};

/// The rule for names of variables, fields, files and figures: ASCII letters, digits and
/// underscores, a letter first.
bool followsNameRule(std::string_view word);

}  // namespace kelo
