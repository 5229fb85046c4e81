// A block of machine code, in memory that can be run and not be written.
#pragma once

#include <asmjit/x86.h>

#include <memory>

namespace kelo::native {

class CodeBlock {
 public:
  /// What an emitter has put into the holder; null where that cannot be run here.
  static std::unique_ptr<CodeBlock> make(asmjit::CodeHolder& holder);
  ~CodeBlock();
  CodeBlock(const CodeBlock&) = delete;

  const std::byte* begin() const { return block_; }
  size_t bytes() const { return bytes_; }
  template <class Function>
  Function* at(uint64_t offset) const { return reinterpret_cast<Function*>(block_ + offset); }

 private:
  CodeBlock(std::byte* block, size_t bytes) : block_(block), bytes_(bytes) {}

  std::byte* block_;
  size_t bytes_;
};

/// Whether native code can be made and run here.
bool canRun();

}  // namespace kelo::native
