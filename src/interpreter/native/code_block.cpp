#include "interpreter/native/code_block.h"

#include "platform/native_code.h"

namespace kelo::native {

using asmjit::kErrorOk;

std::unique_ptr<CodeBlock> CodeBlock::make(asmjit::CodeHolder& holder) {
  if (holder.flatten() != kErrorOk || holder.resolveUnresolvedLinks() != kErrorOk) return nullptr;
  const size_t bytes = holder.codeSize();
  std::byte* block = platform::nativeCode.allocate(bytes);
  if (block == nullptr) return nullptr;
  const bool isReady = holder.relocateToBase(reinterpret_cast<uint64_t>(block)) == kErrorOk &&
                       holder.copyFlattenedData(block, bytes) == kErrorOk && platform::nativeCode.seal(block, bytes);
  if (isReady) return std::unique_ptr<CodeBlock>(new CodeBlock(block, bytes));
  platform::nativeCode.release(block, bytes);
  platform::nativeCode.allocate = nullptr;  // this machine has none to give
  return nullptr;
}

CodeBlock::~CodeBlock() { platform::nativeCode.release(block_, bytes_); }

bool canRun() {
  static const bool hasAvx = asmjit::CpuInfo::host().features().x86().hasAVX();
  return platform::nativeCode.allocate != nullptr && hasAvx;
}

}  // namespace kelo::native
