// The examples of a page: blocks of code after a fence "```kelo", in the form of a transcript. All
// blocks of a page are played in one console, one after the other.
#pragma once

#include <string>
#include <vector>

namespace kelo::docs {

struct PlayedPage {
  std::string markdown;  ///< the source with what the commands really give
  /// The pictures of blocks "```kelo figure WORDS", as SVG, in order. In `built` each stands after
  /// its block.
  std::vector<std::string> figures;
  std::string built;  ///< the same with an image "NAME-1.svg" after the block of each figure
};

/// Plays the examples of a page.
PlayedPage playExamples(const std::string& markdown, const std::string& pageName);

}  // namespace kelo::docs
