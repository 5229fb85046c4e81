// Names that a running program makes, as in s.(text). The names that stand in a program are few and
// stay for ever; of these there can be any number, so such a name is given back when nobody holds
// it any more. Structures hold the names of their fields, anybody else has a HeldName.
//
// Thread: the interpreter's thread only.
#pragma once

#include <utility>

#include "values/name.h"

namespace kelo {

/// One holder more or fewer of a name that may be given back; nothing for the others.
void retainName(Name name);
void releaseName(Name name);

/// Whether it is a name that a run made, which somebody holds and nobody else.
bool isHeldOnce(Name name);
/// Whether the name goes with its last holder.
bool isGivenBack(Name name);

class HeldName {
 public:
  HeldName() = default;
  HeldName(Name name) : name_(name) { retainName(name_); }  // NOLINT(google-explicit-constructor): a name, and held
  HeldName(const HeldName& other) : HeldName(other.name_) {}
  HeldName(HeldName&& other) noexcept : name_(std::exchange(other.name_, Name())) {}
  HeldName& operator=(HeldName other) noexcept {
    std::swap(name_, other.name_);
    return *this;
  }
  ~HeldName() { releaseName(name_); }

  /// The name of a text that a running program made.
  static HeldName of(std::string_view text);

  operator Name() const { return name_; }  // NOLINT(google-explicit-constructor)
  const std::string& text() const { return name_.text(); }

 private:
  Name name_;
};

}  // namespace kelo
