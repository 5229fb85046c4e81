#include "platform/native/native_code.h"

#include <sys/mman.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/native_code.h"

namespace kelo::platform::native {
namespace {

std::byte* allocate(size_t bytes) {
  void* block = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return block == MAP_FAILED ? nullptr : static_cast<std::byte*>(block);
}

bool seal(std::byte* block, size_t bytes) { return mprotect(block, bytes, PROT_READ | PROT_EXEC) == 0; }

void release(std::byte* block, size_t bytes) { munmap(block, bytes); }

void log(const std::string& line) { std::fprintf(stderr, "native: %s\n", line.c_str()); }

}  // namespace

void allowNativeCode() {
  const char* wish = std::getenv("KELO_NATIVE");
  const std::string_view mode = wish ? wish : "";
  if (mode == "off") return forbidNativeCode();
  nativeCode.allocate = allocate;
  nativeCode.seal = seal;
  nativeCode.release = release;
  if (mode == "eager") nativeCode.rounds = nativeCode.calls = 2;
  if (mode == "log") nativeCode.log = log;
}

void forbidNativeCode() { nativeCode.allocate = nullptr; }

}  // namespace kelo::platform::native
