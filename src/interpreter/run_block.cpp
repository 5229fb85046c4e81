// The block is told once; a command and a file differ in where the text comes from and in what is trimmed before. This
// is the one place that catches a FatalFault: the run ends at once, the base workspace stays.
#include "interpreter/run_block.h"

#include <new>

#include "interpreter/environment.h"
#include "interpreter/machine.h"
#include "messages/catalogue/values.h"
#include "messages/catalogue/run_control.h"
#include "messages/fatal_fault.h"

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

/// What every run has around it: the base workspace on top, the end of local functions, the saving of the store.
template <class Body>
RunResult runBlock(Environment& environment, Body body) {
  environment.beginCount();
  environment.workspaces.popToBase();
  environment.parserBuffer.clear();
  RunResult result;
  try {
    body();
  } catch (const FatalFault& fault) {
    result.fatalFault = fault.what;
  } catch (...) {  // no operation lets anything else through; if one does, the run ends and not the program
    showError(environment, text::kUnexpectedError);
  }
  environment.workspaces.base().removeLocalFunctions();
  result.failed = environment.errorsShown() > 0 || result.fatalFault.has_value();
  environment.save();
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
