#include "shells/terminal/figure_file.h"

#include <charconv>
#include <filesystem>

#include "figures/coding/coded_form.h"
#include "messages/message.h"
#include "platform/native/whole_file.h"

namespace kelo::terminal {
namespace {

constexpr const char* kDocumentEnding = ".kfig";

std::string endingOf(const std::string& path) { return std::filesystem::path(path).extension().string(); }

std::optional<double> parsedSide(const char* from, const char* to) {
  double side = 0;
  const auto [end, fault] = std::from_chars(from, to, side);
  if (fault != std::errc() || end != to) return std::nullopt;
  if (!(side >= pictures::kLeastSide && side <= pictures::kMostSide)) return std::nullopt;
  return side;
}

}  // namespace

std::optional<drawing::Size> parsedFigureSize(const std::string& text) {
  const size_t cross = text.find('x');
  if (cross == std::string::npos) return std::nullopt;
  const auto width = parsedSide(text.data(), text.data() + cross);
  const auto height = parsedSide(text.data() + cross + 1, text.data() + text.size());
  if (!width || !height) return std::nullopt;
  return drawing::Size{*width, *height};
}

std::optional<std::string> figureNameFault(const std::string& path) {
  const std::string ending = endingOf(path);
  if (ending == kDocumentEnding || (!ending.empty() && pictures::formatNamed(ending.substr(1)))) return std::nullopt;
  return "A figure file should end in .png, .pdf, .svg or .kfig: " + path;
}

std::string FigureFiles::bytes(const std::string& path, const figures::Figure& figure,
                               const pictures::PictureOptions& options) const {
  const std::string ending = endingOf(path);
  if (ending != kDocumentEnding) {
    return pictures::picture(figure, *pictures::formatNamed(ending.substr(1)), options, renderer_);
  }
  const std::string name = std::filesystem::path(path).stem().string();
  return figures::codedForm(documents_.described(name, figure, pictures::thumbnail(figure, renderer_)));
}

std::optional<std::string> FigureFiles::write(const std::string& path, const figures::Figure& figure,
                                              const pictures::PictureOptions& options) const {
  if (std::holds_alternative<std::monostate>(figure)) return "There is no figure to write to " + path;
  try {
    const std::optional<std::string> fault = platform::native::replaceWholeFile(path, bytes(path, figure, options));
    return fault ? std::optional(path + " cannot be written: " + *fault) : std::nullopt;
  } catch (const Problem& problem) {
    return path + " cannot be written: " + problem.reason.value_or("");
  } catch (const figures::CodingError& error) {
    return path + " cannot be written: " + error.what();
  }
}

}  // namespace kelo::terminal
