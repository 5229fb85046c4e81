#include "docs/builder/examples.h"

#include <memory>

#include "docs/builder/figure_svg.h"
#include "player/replay.h"

namespace kelo::docs {
namespace {

constexpr std::string_view kFence = "```kelo";
constexpr std::string_view kFigure = "```kelo figure ";

class PagePlay {
 public:
  PagePlay(const std::string& markdown, std::string pageName)
      : lines_(player::splitLines(markdown)), pageName_(std::move(pageName)) {
    if (lines_.back().empty()) lines_.pop_back();
  }

  PlayedPage result() {
    while (next_ < lines_.size()) {
      const std::string line = lines_[next_++];
      write(line);
      if (line == kFence || line.starts_with(std::string(kFence) + " ")) block(line);
    }
    return std::move(page_);
  }

 private:
  void write(const std::string& line) {
    page_.markdown.append(line).append("\n");
    page_.built.append(line).append("\n");
  }

  void block(const std::string& fence) {
    std::string transcript;
    for (; next_ < lines_.size() && lines_[next_] != "```"; ++next_) transcript.append(lines_[next_]).append("\n");
    std::string played = player::replay(transcript, player_, player::OutputForm::plain);
    while (played.ends_with("\n")) played.pop_back();
    write(played);
    write("```");
    ++next_;
    if (fence.starts_with(kFigure)) figure(fence.substr(kFigure.size()));
  }

  void figure(const std::string& words) {
    page_.figures.push_back(figureSvg(*player_));
    const std::string file = pageName_ + "-" + std::to_string(page_.figures.size()) + ".svg";
    page_.built.append("\n![" + words + "](" + file + ")\n");
  }

  player::Lines lines_;
  std::string pageName_;
  size_t next_ = 0;
  std::unique_ptr<player::Player> player_;
  PlayedPage page_;
};

}  // namespace

PlayedPage playExamples(const std::string& markdown, const std::string& pageName) {
  return PagePlay(markdown, pageName).result();
}

}  // namespace kelo::docs
