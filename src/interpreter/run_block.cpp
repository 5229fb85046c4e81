// The block is told once; a command and a file differ in where the text comes from and in what is trimmed before. This
// is the one place that catches a FatalFault: the run ends at once, the base workspace stays.
#include "interpreter/run_block.h"

#include <new>

#include "interpreter/app_controller.h"
#include "interpreter/visitor.h"
#include "messages/catalogue/values.h"
#include "messages/catalogue/run_control.h"
#include "messages/fatal_fault.h"

namespace kelo {
namespace {

void showError(AppController& app, std::string reason, std::optional<std::string> relativePath = std::nullopt) {
  Message message;
  message.reason = std::move(reason);
  message.relativePath = std::move(relativePath);
  app.show(message);
}

/// A parse that fails has shown its error; if it has shown nothing, there is one line at least.
void runText(AppController& app, const std::string& text, const std::string& path = "") {
  const ProgTree tree = parseText(app.parserSetting(), text, path);
  if (tree) {
    Visitor(app).runProgram(*tree);
  } else if (app.messagesShown() == 0) {
    showError(app, text::kUnexpectedError);
  }
}

/// What every run has around it: the states, the request to stop, the end of local functions.
template <class Body>
RunResult runBlock(AppController& app, Body body) {
  app.setRunState(RunState::Status::running);
  app.shouldExitExecution = false;
  app.beginCount();
  app.workspaces.popToBase();
  app.parserBuffer.clear();
  RunResult result;
  try {
    body();
  } catch (const FatalFault& fault) {
    result.fatalFault = fault.what;
  } catch (...) {  // no visit lets anything else through; if one does, the run ends and not the program
    showError(app, text::kUnexpectedError);
  }
  app.workspaces.base().removeLocalFunctions();
  result.failed = app.errorsShown() > 0 || result.fatalFault.has_value();
  app.randState.write(app.host.store);
  app.host.store.save();
  app.console.output.view().runEnded(result);
  app.setRunState(RunState::Status::idle);
  return result;
}

}  // namespace

RunResult runCommand(AppController& app, const std::string& text) {
  return runBlock(app, [&] { runText(app, text); });
}

RunResult runFile(AppController& app, const std::string& directory, const std::string& fileName) {
  return runBlock(app, [&] {
    const std::string path = directory.empty() ? fileName : directory + "/" + fileName;
    const std::optional<std::string> text = app.files.readFile(path);
    if (!text) return showError(app, text::failedToLoad(fileName), path);
    app.runInDir = directory;
    runText(app, *text, path);
  });
}

}  // namespace kelo
