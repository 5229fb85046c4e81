// Texts that the tests of the scanner and of the parser share: the example programs, all that is
// typed in the transcripts, and random ones.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "places.h"

namespace kelo::corpus {

using Random = std::mt19937;

inline size_t below(Random& random, size_t n) { return std::uniform_int_distribution<size_t>(0, n - 1)(random); }

inline std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline std::vector<std::string> contentsOf(const std::string& directory, std::string_view extension) {
  std::vector<std::string> contents;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    if (entry.path().extension() == extension) contents.push_back(contentOf(entry.path()));
  }
  return contents;
}

inline std::vector<std::string> transcripts() { return contentsOf(test::testsDir() + "/transcripts", ".txt"); }

/// The example programs and each command and file of each transcript.
inline std::vector<std::string> programs() {
  std::vector<std::string> texts = contentsOf(test::testsDir() + "/../examples", ".m");
  for (const std::string& transcript : transcripts()) {
    bool inFile = false;
    for (size_t at = 0; at < transcript.size();) {
      const size_t end = std::min(transcript.find('\n', at), transcript.size());
      const std::string line = transcript.substr(at, end - at);
      if (line.starts_with("> ") || line.starts_with(">> ") || line.starts_with("--- ")) {
        inFile = line.starts_with("--- ");
        texts.push_back(inFile ? "" : line.substr(2));
      } else if (inFile) {
        texts.back().append(line).append("\n");
      } else if (line.starts_with("| ")) {
        texts.back().append("\n").append(line.substr(2));
      }
      at = end + 1;
    }
  }
  return texts;
}

/// Up to 40 pieces in a row that have no sense together.
inline std::string soup(Random& random) {
  using namespace std::string_view_literals;
  static constexpr std::string_view kPieces[] = {
      "a"sv,  "_x1"sv,    "i"sv,  "end"sv,    "ends"sv, "if"sv,  "else"sv, "elseif"sv, "function"sv, "sum"sv, "hold"sv,
      "e"sv,  "1"sv,      "20"sv, "1."sv,     ".5"sv,   "1e3"sv, "e2"sv,   "E-1"sv,    "2j"sv,       "."sv,   "'"sv,
      "''"sv, ".'"sv,     "+"sv,  "-"sv,      ".*"sv,   "./"sv,  "\\"sv,   "^"sv,      "="sv,        "~"sv,   "!"sv,
      "<"sv,  "&"sv,      "|"sv,  "("sv,      ")"sv,    "["sv,   "]"sv,    ","sv,      ";"sv,        ":"sv,   "@"sv,
      "%"sv,  "\""sv,     "#"sv,  " "sv,      " "sv,    "\t"sv,  "\n"sv,   "\r\n"sv,   "\r"sv,       "\v"sv,  "\0"sv,
      "é"sv,  "\u0301"sv, "€"sv,  "\u2028"sv, "𝔸"sv,    "😀"sv,   "'a'"sv,  "% c"sv};
  std::string text;
  for (size_t n = below(random, 40); n > 0; --n) text += kPieces[below(random, std::size(kPieces))];
  return text;
}

}  // namespace kelo::corpus
