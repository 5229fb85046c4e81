// One block for both kinds of run; a command and a file differ only in where their text comes from.
// This is the one place that catches a FatalFault: the run ends at once, the base workspace stays.
#include "interpreter/run_block.h"

#include <cstdlib>
#include <utility>

#include "interpreter/environment.h"
#include "interpreter/machine.h"
#include "messages/catalogue/values.h"
#include "messages/catalogue/run_control.h"
#include "messages/fatal_fault.h"
#include "values/memory.h"

namespace kelo {
namespace {

void showError(Environment& environment, std::string reason, std::optional<std::string> relativePath = std::nullopt) {
  Message message;
  message.reason = std::move(reason);
  message.relativePath = std::move(relativePath);
  environment.show(message);
}

/// A parse that fails has shown its error; if it has shown nothing, there is one line at least.
void runText(Environment& environment, const std::string& text, const std::string& path = "") {
  const ProgTree tree = parseText(environment.parserSetting(), text, path);
  if (tree) {
    Machine(environment).runProgram(*tree);
  } else if (environment.messagesShown() == 0) {
    showError(environment, text::kUnexpectedError);
  }
}

/// Memory that is given back when a run ends, so that one which has used all there is can still be
/// reported and cleaned up. Nobody writes to it, so it takes address space only.
class MemoryReserve {
 public:
  MemoryReserve() : block_(std::malloc(2 * kBytes)) {
    const bool isPlenty = block_ != nullptr;
    release();
    block_ = std::malloc(isPlenty ? kBytes : kLeastBytes);  // with little left, most of it is for the run
  }
  MemoryReserve(const MemoryReserve&) = delete;
  MemoryReserve& operator=(const MemoryReserve&) = delete;
  ~MemoryReserve() { release(); }
  void release() { std::free(std::exchange(block_, nullptr)); }

 private:
  static constexpr size_t kBytes = size_t{33} << 20;  // more, and malloc does not take it for a usual size
  static constexpr size_t kLeastBytes = size_t{1} << 20;

  void* block_;
};

/// Lets nothing through: where there is no memory even for a message, the run has a fatal fault.
template <class Body>
void guarded(Environment& environment, MemoryReserve& reserve, RunResult& result, Body body) {
  try {
    body();
    return;
  } catch (const FatalFault& fault) {
    result.fatalFault = fault.what;
    return;
  } catch (...) {
    // Operations let nothing through but the lack of memory. Whatever it is, it ends the run and
    // not the program.
    reserve.release();
    releaseKeptBlocks();
  }
  try {
    showError(environment, text::kUnexpectedError);
  } catch (...) {
    result.fatalFault = "no memory";  // short enough to need none
  }
}

/// What every run has around it: files are read again, local functions end with it, the store is
/// saved.
template <class Body>
RunResult runBlock(Environment& environment, Body body) {
  environment.beginCount();
  environment.parserBuffer.clear();
  RunResult result;
  MemoryReserve reserve;
  guarded(environment, reserve, result, body);
  reserve.release();
  guarded(environment, reserve, result, [&] {
    environment.baseWorkspace.removeLocalFunctions();
    environment.save();
  });
  result.failed = environment.errorsShown() > 0 || result.fatalFault.has_value();
  return result;
}

}  // namespace

RunResult runCommand(Environment& environment, const std::string& text) {
  return runBlock(environment, [&] { runText(environment, text); });
}

RunResult runFile(Environment& environment, const std::string& directory, const std::string& fileName) {
  return runBlock(environment, [&] {
    const std::string path = directory.empty() ? fileName : directory + "/" + fileName;
    const std::optional<std::string> text = environment.files.readFile(path);
    if (!text) return showError(environment, text::failedToLoad(fileName), path);
    environment.runInDir = directory;
    runText(environment, *text, path);
  });
}

}  // namespace kelo
