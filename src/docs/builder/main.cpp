// kelo_pages build SOURCES RESOURCES   makes the resources of the help pages
// kelo_pages check SOURCES             compares examples with what they give, pages with the rules
// kelo_pages accept SOURCES            writes into the pages what their examples give
// kelo_pages site RESOURCES SITE       makes a web site of built resources
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>

#include "docs/builder/contents.h"
#include "docs/builder/examples.h"
#include "docs/builder/pages.h"
#include "docs/builder/rules.h"
#include "docs/builder/site.h"
#include "platform/native/queues.h"
#include "platform/native/whole_file.h"

namespace {

using namespace kelo::docs;
using Arguments = std::vector<std::string>;

bool tell(const std::vector<std::string>& faults) {
  for (const std::string& fault : faults) std::cerr << "kelo_pages: " << fault << "\n";
  return faults.empty();
}

bool build(const Arguments& arguments) { return tell(buildPages(readContents(arguments[0]), arguments[1])); }

bool site(const Arguments& arguments) { return tell(buildSite(arguments[0], arguments[1])); }

bool accept(const Arguments& arguments) {
  for (const Entry& entry : readContents(arguments[0])) {
    if (entry.isDir) continue;
    const std::string played = playExamples(entry.markdown, entry.name()).markdown;
    if (played == entry.markdown) continue;
    std::cout << entry.path << ".md\n";
    if (const auto fault = kelo::platform::native::replaceWholeFile(arguments[0] + "/" + entry.path + ".md", played)) {
      return tell({*fault});
    }
  }
  return true;
}

/// The examples of a page give what the page says.
bool isPlayed(const std::string& sources, const Entry& entry) {
  const std::string played = playExamples(entry.markdown, entry.name()).markdown;
  if (played == entry.markdown) return true;
  const std::string received =
      std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") + "/kelo_page.received";
  if (const auto fault = kelo::platform::native::replaceWholeFile(received, played)) return tell({*fault});
  return std::system(("diff -u '" + sources + "/" + entry.path + ".md' '" + received + "'").c_str()) == 0;
}

bool check(const Arguments& arguments) {
  const std::vector<Entry> entries = readContents(arguments[0]);
  bool isWell = true;
  for (const Entry& entry : entries) {
    if (entry.isDir) continue;
    for (const std::string& fault : faultsOf(entry, entries)) isWell = tell({entry.path + ".md " + fault});
    isWell = isPlayed(arguments[0], entry) && isWell;
  }
  for (const std::string& name : namesWithoutPage(entries)) isWell = tell({name + " has no page"});
  if (!isWell) std::cout << "scripts/docs --accept writes into the pages what their examples give\n";
  return isWell;
}

}  // namespace

int main(int argc, char** argv) {
  const std::map<std::string, std::pair<size_t, std::function<bool(const Arguments&)>>> commands = {
      {"build", {2, build}}, {"check", {1, check}}, {"accept", {1, accept}}, {"site", {2, site}}};
  const Arguments arguments(argv + std::min(argc, 2), argv + argc);
  const auto command = commands.find(argc < 2 ? "" : argv[1]);
  if (command == commands.end() || arguments.size() != command->second.first) {
    std::cerr << "kelo_pages build|check|accept|site FOLDER...\n";
    return 2;
  }
  bool isWell = false;
  kelo::platform::native::ThreadQueue queue;  // for its stack and the limit of it
  queue.runAndWait([&] { isWell = command->second.second(arguments); });
  return isWell ? 0 : 1;
}
