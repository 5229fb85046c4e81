// The persisted state of the random number generator: three words, each of which may be missing.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/key_value_store.h"

namespace kelo {

struct RandState {
  std::optional<uint64_t> randStateU, randStateV, randStateW;

  /// Reads the three words; a word that is not stored stays absent.
  void load(platform::KeyValueStore& store);
  /// Puts those that are present into the store. The run block does so at the end of each run,
  /// before it saves the store: a save that fails costs nothing, for the words stay here and the
  /// next run's end tries again.
  void write(platform::KeyValueStore& store) const;
};

}  // namespace kelo
