// The store holds signed integers; the words keep their bits.
#include "interpreter/random_state.h"

namespace kelo {
namespace {

std::optional<uint64_t> word(platform::KeyValueStore& store, const char* key) {
  const std::optional<int64_t> stored = store.read<int64_t>(key);
  if (!stored) return std::nullopt;
  return static_cast<uint64_t>(*stored);
}

void put(platform::KeyValueStore& store, const char* key, const std::optional<uint64_t>& word) {
  if (word) store.set(key, static_cast<int64_t>(*word));
}

}  // namespace

void RandState::load(platform::KeyValueStore& store) {
  randStateU = word(store, "randStateU");
  randStateV = word(store, "randStateV");
  randStateW = word(store, "randStateW");
}

void RandState::write(platform::KeyValueStore& store) const {
  put(store, "randStateU", randStateU);
  put(store, "randStateV", randStateV);
  put(store, "randStateW", randStateW);
}

}  // namespace kelo
