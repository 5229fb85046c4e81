// kelo_transcripts FILE.txt...: plays transcripts and compares what comes back. What differs is told, and the transcript as it
// came out is left beside the stored one, as FILE.txt.received. With KELO_ACCEPT=1 it takes the stored one's place.
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>

#include "platform/native/queues.h"
#include "platform/native/whole_file.h"
#include "player.h"

namespace {

using kelo::transcripts::Player;
using kelo::transcripts::Step;

void print(const char* heading, const std::vector<std::string>& lines) {
  std::cout << "  " << heading << "\n";
  for (const std::string& line : lines) std::cout << "    " << line << "\n";
}

/// Plays the steps and puts what came back into them. Returns how many differ.
int play(const std::string& path, std::vector<Step>& steps) {
  int differences = 0;
  std::optional<Player> player;
  for (Step& step : steps) {
    if (step.kind == Step::Kind::begin || (!player && step.kind != Step::Kind::text)) player.emplace();
    if (step.kind == Step::Kind::setting) player->set(step.argument);
    if (step.kind == Step::Kind::file) player->writeFile(step.argument, step.body);
    if (step.kind != Step::Kind::command && step.kind != Step::Kind::program) continue;
    const std::vector<std::string> output = player->play(step);
    if (output == step.output) continue;
    ++differences;
    std::cout << path << ":" << step.lineNum << ": " << step.typed.front() << "\n";
    print("expected:", step.output);
    print("came back:", output);
    step.output = output;
    if (step.blankLines == 0 && &step != &steps.back()) step.blankLines = 1;
  }
  return differences;
}

bool check(const std::string& path) {
  using namespace kelo::platform::native;
  const std::optional<std::string> text = readWholeFile(path);
  if (!text) {
    std::cout << path << ": cannot be read\n";
    return false;
  }
  std::vector<Step> steps = kelo::transcripts::parseTranscript(*text);
  const int differences = play(path, steps);
  std::error_code ignored;
  std::filesystem::remove(path + ".received", ignored);
  if (differences == 0) return true;
  const char* accept = std::getenv("KELO_ACCEPT");
  const bool accepts = accept != nullptr && std::strcmp(accept, "1") == 0;
  if (const auto fault = replaceWholeFile(accepts ? path : path + ".received", renderTranscript(steps))) {
    std::cout << path << ": " << *fault << "\n";
  }
  return accepts;
}

}  // namespace

int main(int argc, char** argv) {
  int failed = 0;
  kelo::platform::native::ThreadQueue queue;  // for its stack and the limit of it
  queue.runAndWait([&] {
    for (int k = 1; k < argc; ++k) failed += check(argv[k]) ? 0 : 1;
  });
  return failed == 0 ? 0 : 1;
}
