// The table is read from the top; the first row whose words stand in the message and whose patterns
// are found in the line gives the hint, in which $1 is the first group of the last pattern. What
// needs more than that has a function behind the table. Tested by tests/hints/hint_test.cpp.
#include <fmt/format.h>

#include <cmath>
#include <cstring>
#include <iterator>
#include <map>
#include <regex>

#include "hints/hint.h"

namespace kelo::hints {
namespace {

/// Longer lines are no typed ones; the patterns are not made for them.
constexpr size_t kLongestLine = 1000;

struct Row {
  const char* message;      ///< words of the message
  const char* before = "";  ///< in the line before the place of the message
  const char* pattern;      ///< in the whole line
  const char* hint;
};

constexpr Row kRows[] = {
    {"Unexpected character \".\"", "", R"(\.\.\.\s*(%.*)?$)",
     "a statement ends with its line; write it on one line"},
    {"Unexpected character \"{\"", "", "",
     "there are no cell arrays; a structure array holds what differs: s(1).name = 'a'"},
    {"Unexpected character \"\"\"", "", "", "texts stand in single quotes: 'text'"},
    {"Unexpected character \"=\"", "", R"(([\w.]+)\s*([-+*/^])=\s*([\w.]+)\s*;?\s*$)",
     "write the name twice: $1 = $1 $2 $3"},
    {"Unexpected character \"=\"", R"([-+*/^]\s*$)", R"(([\w.]+)\s*([-+*/^])=)",
     "write the name twice: $1 = $1 $2 (what follows)"},
    {"The line ends", "", R"((\w+)\s*(\+\+|--)\s*;?\s*$)", "write $1 = $1 + 1"},
    {"Unexpected character", "", R"(\[[^\]=]*~[^\]=]*\]\s*=)",
     "every output needs a name: [unused, k] = max(x)"},
    {"Unexpected character \"=\"", "", R"(\[\s*(\w+)\s+(\w+)[^\],]*\]\s*=)",
     "put commas between the outputs: [$1, $2] = f(x)"},
    {"Unexpected character", R"(^\s*\w+\s+$)", R"(^\s*(clear|hold|grid|legend|disp)\s+([A-Za-z]\w*))",
     "write the word as an argument: $1('$2')"},
    {"Command syntax", "", R"(\b([A-Za-z]\w*)\s+([A-Za-z]\w*))", "write the word as an argument: $1('$2')"},
    {"Unexpected character", R"(^\s*(global|persistent)\s)", "",
     "there are no global variables; pass what a function needs as an argument"},
    {"Unexpected character", R"(\bend\s*$)", "", "nothing may follow the end of a block on its line"},
    {"Unexpected character", R"(^\s*(if|elseif|while)\s[^,;]*\s$)", R"(^\s*(\w+))",
     "put a comma after the condition: $1 c, x = 1"},
    {"vector of 0 element", "", R"(([A-Za-z]\w*)\s*\(\s*:)",
     "an empty variable has no columns; make it first: $1 = zeros(3, 1)"},
    {"is only accessible from the file", "", "",
     "put the function into a file of its own, or call it where the handle is made"},
};

/// What takes the place of functions and words that the language lacks.
const std::map<std::string, const char*> kInstead = {
    {"fprintf", "use disp and num2str"},      {"printf", "use disp and num2str"},
    {"sprintf", "use num2str and [ ]"},       {"display", "use disp"},
    {"strsplit", "use find and indices"},     {"strjoin", "use [ ] or strcat"},
    {"strrep", "use find and indices"},       {"strtrim", "use isspace and indices"},
    {"cellfun", "use a for loop"},            {"arrayfun", "use a for loop"},
    {"cell", "use a structure array"},        {"isa", "use isnumeric, ischar, islogical or isstruct"},
    {"exist", "use who"},                     {"str2num", "use input, or write the number"},
    {"str2double", "use input, or write the number"}, {"mat2str", "use num2str"},
    {"horzcat", "use [a, b]"},                {"vertcat", "use [a; b]"},
    {"cat", "use [a, b] or [a; b]"},          {"isequal", "use all and =="},
    {"trapz", "use sum"},                     {"interp1", "use polyfit and polyval"},
    {"load", "use csvread"},                  {"save", "use csvwrite"},
    {"fopen", "use csvread and csvwrite"},    {"figure", "plot makes the figure"},
    {"close", "the next plot takes its place"}, {"format", "digits are a setting: kelo --digits 8"},
    {"int32", "whole numbers are doubles"},   {"int64", "whole numbers are doubles"},
    {"uint8", "whole numbers are doubles"},   {"single", "all numbers are doubles"},
    {"e", "use exp(1)"},
    {"try", "there is no try; test before what may fail, with isempty or isfield"},
    {"catch", "there is no try; test before what may fail, with isempty or isfield"},
};

std::string sentenceOf(const Message& message) {
  return message.reason.value_or("") + "\n" + message.expected.value_or("");
}

std::string lineOf(const std::string& text, int number) {
  size_t begin = 0;
  for (int k = 1; k < number && begin != std::string::npos; ++k) {
    begin = text.find('\n', begin);
    if (begin != std::string::npos) ++begin;
  }
  return begin == std::string::npos ? "" : text.substr(begin, text.find('\n', begin) - begin);
}

/// The beginning of a line, so many code points of it.
std::string beginningOf(const std::string& line, int codePoints) {
  size_t end = 0;
  const auto isInside = [&](size_t k) { return (static_cast<unsigned char>(line[k]) & 0xC0) == 0x80; };
  for (; codePoints > 0 && end < line.size(); --codePoints) {
    ++end;
    while (end < line.size() && isInside(end)) ++end;
  }
  return line.substr(0, end);
}

std::optional<std::string> fromTable(const std::string& sentence, const std::string& line, const std::string& before) {
  for (const Row& row : kRows) {
    if (sentence.find(row.message) == std::string::npos) continue;
    if (!std::regex_search(before, std::regex(row.before))) continue;
    std::smatch match;
    if (std::regex_search(line, match, std::regex(row.pattern))) return match.format(row.hint);
  }
  return std::nullopt;
}

/// Whether a line of a text is, or begins with, the word "try".
bool hasTry(const std::string& text) {
  for (size_t at = text.find("try"); at != std::string::npos; at = text.find("try", at + 1)) {
    const size_t before = text.find_last_not_of(" \t", at - 1);
    const bool isFirst = at == 0 || before == std::string::npos || text[before] == '\n';
    if (isFirst && (at + 3 == text.size() || std::strchr(" \t\r\n,;%", text[at + 3]) != nullptr)) return true;
  }
  return false;
}

/// The name that a message did not find.
std::optional<std::string> missingName(const std::string& sentence) {
  static const std::regex kMissing(R"re((?:named|File named) "(\w+)(?:\.m)?" not found)re");
  std::smatch match;
  if (!std::regex_search(sentence, match, kMissing)) return std::nullopt;
  return match[1].str();
}

std::optional<std::string> forMissing(const std::string& name, const Situation& situation) {
  if (const auto instead = kInstead.find(name); instead != kInstead.end()) return name + ": " + instead->second;
  std::set<std::string> known = situation.builtins;
  known.insert(situation.variables.begin(), situation.variables.end());
  const std::set<std::string> near = oneSlipAway(name, known);
  if (near.empty()) return std::nullopt;
  return fmt::format("Did you mean {}?", fmt::join(near, " or "));
}

/// A command with a word after it, such as "format long", where another way leads there.
std::optional<std::string> forCommandWord(const std::string& before) {
  static const std::regex kWord(R"(^\s*([A-Za-z]\w*)\s+$)");
  std::smatch match;
  const auto instead = std::regex_match(before, match, kWord) ? kInstead.find(match[1]) : kInstead.end();
  if (instead == kInstead.end()) return std::nullopt;
  return instead->first + ": " + instead->second;
}

/// A built-in's name as a variable.
std::optional<std::string> forReservedName(const std::string& sentence, const std::string& line,
                                           const Situation& situation) {
  static const std::regex kTarget(R"((?:^|[;,\[])\s*([A-Za-z]\w*)\s*(?:\([^=]*\))?\s*\]?\s*=[^=])");
  if (sentence.find("Unexpected character") == std::string::npos) return std::nullopt;
  for (auto it = std::sregex_iterator(line.begin(), line.end(), kTarget); it != std::sregex_iterator(); ++it) {
    const std::string name = (*it)[1];
    if (!situation.builtins.contains(name)) continue;
    return fmt::format("{0} is a function, so no variable can have its name; take {0}1, for instance", name);
  }
  return std::nullopt;
}

/// A function with several outputs gives them all, also inside an expression.
std::optional<std::string> forSeveralOutputs(const std::string& sentence, const std::string& line,
                                             const Situation& situation) {
  static const std::regex kCall(R"(([A-Za-z]\w*)\s*\()");
  if (sentence.find("Operands of") == std::string::npos) return std::nullopt;
  for (auto it = std::sregex_iterator(line.begin(), line.end(), kCall); it != std::sregex_iterator(); ++it) {
    const std::string name = (*it)[1];
    if (situation.builtins.contains(name) || situation.variables.contains(name)) continue;
    return fmt::format("if {0} has two outputs, it gives both; take them first: [a, b] = {0}(...)", name);
  }
  return std::nullopt;
}

std::string inBytes(double bytes) {
  static constexpr const char* kUnits[] = {"bytes", "kB", "MB", "GB", "TB", "PB", "EB"};
  const int step = bytes < 1000 ? 0 : std::min(6, static_cast<int>(std::log10(bytes) / 3));
  return fmt::format("{:.3g} {}", bytes / std::pow(1000, step), kUnits[step]);
}

}  // namespace

std::optional<std::string> hintFor(const Situation& situation) {
  if (situation.message.type == Message::MsgType::warning) return std::nullopt;
  if (situation.refusedBytes > 0) {
    return fmt::format("the array needs {}, at most {} can be had", inBytes(situation.refusedBytes),
                       inBytes(situation.byteLimit));
  }
  const std::string sentence = sentenceOf(situation.message);
  const bool isSyntax = situation.message.type == Message::MsgType::syntaxError;
  if (isSyntax && hasTry(situation.text)) return kInstead.at("try");
  if (const auto name = missingName(sentence)) return forMissing(*name, situation);
  const std::string line = lineOf(situation.text, situation.message.lineNum.value_or(1));
  if (line.size() > kLongestLine) return std::nullopt;
  if (auto hint = forReservedName(sentence, line, situation)) return hint;
  const std::string before = beginningOf(line, situation.message.charPos.value_or(0));
  if (auto hint = fromTable(sentence, line, before)) return hint;
  if (auto hint = forCommandWord(before)) return hint;
  return forSeveralOutputs(sentence, line, situation);
}

}  // namespace kelo::hints
