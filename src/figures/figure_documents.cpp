// Tested by tests/figures/figure_documents_test.cpp.
#include "figures/figure_documents.h"

#include <charconv>

#include "figures/coding/coded_form.h"
#include "messages/catalogue/figures.h"
#include "messages/catalogue/files.h"
#include "values/name.h"

namespace kelo::figures {
namespace {

constexpr const char* kFolder = ".FIGURES";
constexpr std::string_view kExtension = ".kfig";

// The first version whose files have this form, which is what ours say.
constexpr const char* kFormVersion = "3.0";
constexpr int kNewestOlderVersion = 2;

// No file of ours is larger: two numbers and their marks take less for each point.
constexpr int64_t kMostBytes = kMostCodedPoints * 64;

constexpr double kUnixSecondsOf2001 = 978307200;

std::string pathOf(const std::string& fileName) { return std::string(kFolder) + "/" + fileName; }
std::string fileNameOf(const std::string& name) { return name + std::string(kExtension); }

bool isOlder(const FigureData& data) {
  if (!data.appVersion) return true;
  const std::string major = data.appVersion->substr(0, data.appVersion->find('.'));
  int64_t number = 0;
  const auto [behind, fault] = std::from_chars(major.data(), major.data() + major.size(), number);
  return fault != std::errc() || behind != major.data() + major.size() || number <= kNewestOlderVersion;
}

}  // namespace

FigureDocuments::FigureDocuments(platform::FileSystem& documents, platform::Clock& clock, FigureOrigin origin,
                                 std::function<void(const std::string&)> log)
    : documents_(documents), clock_(clock), origin_(std::move(origin)), log_(std::move(log)) {}

bool FigureDocuments::makeFolder() { return documents_.makeDirectory(kFolder); }

FigureData FigureDocuments::described(const std::string& name, const Figure& figure, std::string thumbnail) const {
  FigureData data;
  data.timeStamp = clock_.unixSeconds() - kUnixSecondsOf2001;
  data.thumbnail.data.bytes = std::move(thumbnail);
  data.fileNameWithoutExt = name;
  data.appVersion = kFormVersion;
  data.buildNumber = origin_.buildNumber;
  data.osVersion = origin_.osVersion;
  data.platform = origin_.platform;
  if (const auto* plot = std::get_if<PlotData>(&figure)) data.plotData = *plot;
  if (const auto* surface = std::get_if<SurfData>(&figure)) data.surfData = *surface;
  return data;
}

std::optional<FigureData> FigureDocuments::save(const std::string& name, const Figure& figure, std::string thumbnail) {
  if (!followsNameRule(name)) throw Alert{text::kInvalidFileName, text::kFileNameRule};
  if (std::holds_alternative<std::monostate>(figure)) return std::nullopt;
  const std::string path = pathOf(fileNameOf(name));
  if (documents_.exists(path)) throw text::figureExists(name);
  FigureData data = described(name, figure, std::move(thumbnail));
  try {
    if (makeFolder() && documents_.writeFile(path, codedForm(data))) return data;
  } catch (const std::exception&) {  // what cannot be coded is not written either
  }
  throw text::figureNotWritten();
}

std::vector<FigureData> FigureDocuments::loadAll() const {
  if (!documents_.exists(kFolder)) throw text::figureFolderMissing();
  const std::optional<std::vector<std::string>> entries = documents_.listDirectory(kFolder);
  if (!entries) throw text::figuresNotLoaded();
  std::vector<FigureData> figures;
  for (const std::string& entry : *entries) {
    if (!entry.ends_with(kExtension) || entry.size() == kExtension.size()) continue;
    if (std::optional<FigureData> figure = loaded(entry)) figures.push_back(std::move(*figure));
  }
  return figures;
}

std::optional<FigureData> FigureDocuments::loaded(const std::string& fileName) const {
  try {
    const std::string path = pathOf(fileName);
    if (documents_.fileSize(path).value_or(0) > kMostBytes) throw CodingError("the file is too large");
    const std::optional<std::string> text = documents_.readFile(path);
    if (!text) throw CodingError("the file cannot be read");
    FigureData data = decodedFigureData(*text);
    if (isOlder(data)) return std::nullopt;
    data.fileNameWithoutExt = fileName.substr(0, fileName.size() - kExtension.size());
    return data;
  } catch (const std::exception& fault) {
    log_(text::figureFileSkipped(fileName + ": " + fault.what()));
    return std::nullopt;
  }
}

void FigureDocuments::remove(const FigureData& figure) {
  const std::string& name = figure.fileNameWithoutExt;
  if (!documents_.removeFile(pathOf(fileNameOf(name)))) throw text::figureNotDeleted(name);
}

}  // namespace kelo::figures
