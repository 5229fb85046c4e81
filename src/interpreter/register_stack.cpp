#include "interpreter/register_stack.h"

#include <algorithm>

namespace kelo {

RegisterStack::~RegisterStack() {
  for (Chunk& chunk : chunks_) {
    for (Storable* r = chunk.begin; r < chunk.made; ++r) r->~Storable();
  }
}

void RegisterStack::addChunk(int64_t count) {
  std::unique_ptr<std::byte[]> memory(new std::byte[static_cast<size_t>(count) * sizeof(Storable)]);
  auto* begin = reinterpret_cast<Storable*>(memory.get());
  chunks_.push_back({std::move(memory), begin, begin, begin + count});
}

// Chunks behind the one in use hold no frame; one that is too small for this one is made anew.
Storable* RegisterStack::roomElsewhere(int64_t count) {
  const auto next = static_cast<size_t>(used_) + 1;
  if (next < chunks_.size() && chunks_[next].end - chunks_[next].begin < count) {
    for (size_t k = next; k < chunks_.size(); ++k) {
      for (Storable* r = chunks_[k].begin; r < chunks_[k].made; ++r) r->~Storable();
    }
    chunks_.resize(next);
  }
  if (next == chunks_.size()) addChunk(std::max(count, kChunk));
  use(static_cast<int32_t>(next));
  make(chunks_[next], chunks_[next].begin + count);
  return chunks_[next].begin;
}

// REQUIRES: the chunk is in use
void RegisterStack::make(Chunk& chunk, Storable* upTo) {
  for (; chunk.made < upTo; ++chunk.made) new (chunk.made) Storable(0.0);
  made_ = chunk.made;
}

}  // namespace kelo
