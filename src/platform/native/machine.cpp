#include "platform/native/machine.h"

#include <sys/mman.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>

#include "values/memory.h"

namespace kelo::platform::native {
namespace {

/// The limit of the control group that this process runs in, as containers set it; the greatest number when there is
/// none.
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

}  // namespace

void adaptToMachine() {
  const int64_t pages = sysconf(_SC_PHYS_PAGES);
  const int64_t memory = std::min(pages * sysconf(_SC_PAGESIZE), groupLimit());
  if (memory > 0) setArrayByteLimit(memory / 4 * 3);
  setFreshBlockHook(askForHugePages);
}

SystemVersion systemVersion() {
  utsname system = {};
  uname(&system);
  return {system.sysname, system.release};
}

}  // namespace kelo::platform::native
