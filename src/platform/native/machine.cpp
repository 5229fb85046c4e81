#include "platform/native/machine.h"

#include <malloc.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

#include "platform/memory_hints.h"
#include "platform/native/native_code.h"

namespace kelo::platform::native {
namespace {

/// The limit of the control group that this process runs in, as containers set it; the greatest
/// number when there is none.
int64_t groupLimit() {
  int64_t limit = INT64_MAX;
  std::ifstream file("/sys/fs/cgroup/memory.max");
  if (!(file >> limit) || limit <= 0) return INT64_MAX;
  return limit;
}

void askForHugePages(void* block, int64_t bytes) {
  constexpr uintptr_t kPage = 4096;
  const uintptr_t begin = (reinterpret_cast<uintptr_t>(block) + kPage - 1) & ~(kPage - 1);
  const uintptr_t end = (reinterpret_cast<uintptr_t>(block) + static_cast<uintptr_t>(bytes)) & ~(kPage - 1);
  if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

// The C library would give each thread a heap of its own, which grows page by page. The nodes of a
// long program are small and many, and the first use of a page costs more than what is done there:
// so there is one heap, which grows in large steps, the first of huge pages. It keeps what is freed
// up to two such steps.
void adaptHeap() {
#if defined(__GLIBC__)
  constexpr int kStep = 32 << 20, kMapped = 8 << 20, kBeyondTop = 1 << 20;
  if (addressSpaceLimit() < int64_t{64} * kStep) return;
  mallopt(M_ARENA_MAX, 1);
  mallopt(M_MMAP_THRESHOLD, kMapped);
  mallopt(M_TRIM_THRESHOLD, 2 * kStep);
  mallopt(M_TOP_PAD, kStep);
  void* const first = std::malloc(kBeyondTop);  // more than there is, so that a step is taken now
  askForHugePages(first, kStep);
  std::free(first);
#endif
}

}  // namespace

int64_t addressSpaceLimit() {
  rlimit limit;
  if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return INT64_MAX;
  return static_cast<int64_t>(std::min<rlim_t>(limit.rlim_cur, INT64_MAX));
}

void fitMatrixThreads(char** argv) {
  constexpr const char* kThreads = "OPENBLAS_NUM_THREADS";
  constexpr int64_t kBytesEach = int64_t{136} << 20;  // a buffer and a stack
  const int64_t fitting = std::max<int64_t>(1, addressSpaceLimit() / 4 / kBytesEach);
  if (fitting >= sysconf(_SC_NPROCESSORS_ONLN) || std::getenv(kThreads) != nullptr) return;
  setenv(kThreads, std::to_string(fitting).c_str(), 1);
  execv("/proc/self/exe", argv);
}

void adaptToMachine() {
  const int64_t pages = sysconf(_SC_PHYS_PAGES);
  const int64_t memory = std::min({pages * sysconf(_SC_PAGESIZE), groupLimit(), addressSpaceLimit()});
  if (memory > 0) memoryHints.arrayByteLimit = memory / 4 * 3;
  memoryHints.freshBlock = askForHugePages;
  adaptHeap();
  allowNativeCode();
}

SystemVersion systemVersion() {
  utsname system = {};
  uname(&system);
  return {system.sysname, system.release};
}

}  // namespace kelo::platform::native
