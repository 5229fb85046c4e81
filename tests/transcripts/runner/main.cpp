// kelo_transcripts FILE.txt...: plays transcripts, whose form tests/README.md describes, and
// compares what comes back. A transcript that differs is left as it came out beside the stored one,
// as FILE.txt.received. With KELO_ACCEPT=1 it takes the stored one's place.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>

#include "message_replay.h"
#include "platform/native/native_code.h"
#include "platform/native/queues.h"
#include "platform/native/whole_file.h"
#include "player/replay.h"

namespace {

std::string replayed(const std::string& path, const std::string& text) {
  if (path.find("/messages/") != std::string::npos) return kelo::transcripts::replayMessages(text);
  std::unique_ptr<kelo::player::Player> player;
  return kelo::player::replay(text, player, kelo::player::OutputForm::marked);
}

bool check(const std::string& path) {
  using namespace kelo::platform::native;
  const std::optional<std::string> text = readWholeFile(path);
  const std::string result = text ? replayed(path, *text) : "";
  const std::string received = path + ".received";
  std::error_code ignored;
  std::filesystem::remove(received, ignored);
  if (text == result) return true;
  const bool accepts = text && std::getenv("KELO_ACCEPT") != nullptr;
  if (const auto fault = replaceWholeFile(accepts ? path : received, result)) std::cout << *fault << "\n";
  return accepts || std::system(("diff -u '" + path + "' '" + received + "'").c_str()) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  int failed = 0;
  kelo::platform::native::allowNativeCode();
  kelo::platform::native::ThreadQueue queue;  // for its stack and the limit of it
  queue.runAndWait([&] {
    for (int k = 1; k < argc; ++k) failed += check(argv[k]) ? 0 : 1;
  });
  return failed == 0 ? 0 : 1;
}
