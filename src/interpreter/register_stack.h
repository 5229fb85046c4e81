// The registers of all running frames: a stack in chunks, so that it grows without moving what is
// in use.
//
// A frame lies whole in one chunk. Behind the top of the stack every register that was ever used is
// a plain scalar or nothing, so that starting a frame need only clear its slots.
#pragma once

#include <memory>
#include <vector>

#include "values/storable.h"

namespace kelo {

class RegisterStack {
 public:
  RegisterStack() {
    addChunk(kChunk);
    use(0);
  }
  ~RegisterStack();
  RegisterStack(const RegisterStack&) = delete;
  RegisterStack& operator=(const RegisterStack&) = delete;

  /// Where `count` registers from `wanted` on, in the chunk in use, may lie: there, or at the start
  /// of another chunk.
  Storable* room(Storable* wanted, int64_t count) {
    Chunk& chunk = chunks_[static_cast<size_t>(used_)];
    if (wanted + count > chunk.end) [[unlikely]] return roomElsewhere(count);
    if (wanted + count > chunk.made) make(chunk, wanted + count);
    return wanted;
  }
  /// Whether they are there already, so that `room` would give `wanted` and do nothing.
  bool hasRoom(Storable* wanted, int64_t count) const { return wanted + count <= made_; }
  Storable* start() { return chunks_.front().begin; }
  int32_t chunk() const { return used_; }
  void setChunk(int32_t chunk) {
    if (chunk != used_) [[unlikely]] use(chunk);
  }

 private:
  static constexpr int64_t kChunk = 1 << 15;  // registers
  struct Chunk {
    std::unique_ptr<std::byte[]> memory;
    Storable *begin, *made, *end;  // registers up to `made` exist
  };
  void addChunk(int64_t count);
  Storable* roomElsewhere(int64_t count);
  void make(Chunk& chunk, Storable* upTo);
  void use(int32_t chunk) {
    used_ = chunk;
    made_ = chunks_[static_cast<size_t>(chunk)].made;
  }

  std::vector<Chunk> chunks_;
  int32_t used_ = 0;
  Storable* made_ = nullptr;  // of the chunk in use
};

}  // namespace kelo
