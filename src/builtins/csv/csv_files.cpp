// csvread and csvwrite: files of comma-separated numbers in the work directory. The text itself is
// csv_text.h's business. Tested by tests/transcripts/builtins/csv.txt.
#include <fmt/format.h>

#include <algorithm>

#include "builtins/csv/csv_text.h"
#include "builtins/library.h"
#include "interpreter/environment.h"
#include "interpreter/reader.h"
#include "messages/catalogue/run_control.h"
#include "messages/catalogue/system_functions.h"

namespace kelo::builtins {
namespace {

bool isPathOfNames(std::string_view path) {
  const size_t slash = path.find('/');
  if (slash == std::string_view::npos) return followsNameRule(path);
  return followsNameRule(path.substr(0, slash)) && isPathOfNames(path.substr(slash + 1));
}

std::string lowered(std::string word) {
  std::transform(word.begin(), word.end(), word.begin(), [](unsigned char c) { return std::tolower(c); });
  return word;
}

/// The path of a data file below the work directory: names, and after the last one the extension.
std::string pathOf(const Call& call, const char* signature) {
  const std::string path = read::text(call, 0, {signature, "fname", predicate::kCharacterVector});
  const size_t dot = std::min(path.rfind('.'), path.size());
  if (!isPathOfNames(std::string_view(path).substr(0, dot))) {
    throw problem(fmt::format(text::kUnusableFileName, path));
  }
  const std::string extension = lowered(path.substr(dot));
  if (extension != ".csv" && extension != ".dat" && extension != ".txt") {
    throw problem(fmt::format(text::kInvalidExtension, path.substr(dot)), text::kExtensionExpected);
  }
  return path;
}

void tell(const Call& call, const char* words, const std::string& path) {
  call.environment.showText(fmt::format(fmt::runtime(words), path));
}

constexpr const char* kWithStart = "fname, r1, c1";
constexpr const char* kWithRange = "fname, r1, c1, [r1 c1 r2 c2]";

/// The range of the 4th argument rules over the start, which it repeats.
CsvRange rangeOf(const Call& call, const char* signature) {
  CsvRange range;
  if (call.count() == 1) return range;
  range.firstRow = read::integer(call, 1, {signature, "r1", predicate::kNonNegativeInteger}, 0);
  range.firstColumn = read::integer(call, 2, {signature, "c1", predicate::kNonNegativeInteger}, 0);
  if (call.count() == 3) return range;
  const auto numbers = read::asIntegers(call.arg(3));
  if (!numbers || numbers->size() != 4 || *std::min_element(numbers->begin(), numbers->end()) < 0) {
    throw argumentComplaint(call.name(), signature, "[r1 c1 r2 c2]", text::kCsvRange);
  }
  range = {(*numbers)[0], (*numbers)[1], (*numbers)[2], (*numbers)[3]};
  if (range.firstRow > range.lastRow || range.firstColumn > range.lastColumn) {
    throw Wording::sentence(text::kCsvRangeOrder).complaint(call);
  }
  return range;
}

/// Shows how far the reading is, once it has taken a second; takes that away at its end.
class Progress {
 public:
  Progress(Environment& environment, const std::string& path)
      : environment_(environment), path_(path), begin_(environment.clock.monotonicSeconds()) {}
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() {
    if (isShown_) environment_.showProgress("");
  }

  void show(double part) {
    if (environment_.clock.monotonicSeconds() - begin_ < kPatience) return;
    isShown_ = true;
    environment_.showProgress(fmt::format(text::kReading, path_, 100 * part));
  }

 private:
  static constexpr double kPatience = 1;  // seconds

  Environment& environment_;
  const std::string& path_;
  const double begin_;
  bool isShown_ = false;
};

std::optional<DoubleArray> readArray(const Call& call, const std::string& path, const CsvRange& range) {
  Progress progress(call.environment, path);
  const std::optional<std::string> bytes = call.environment.files.readFile(path);
  if (!bytes) throw problem(text::failedToLoad(path));
  return arrayOfCsv(*bytes, range, [&](double part) { progress.show(part); });
}

NodeValue csvread(Call& call) {
  if (call.count() == 2) throw expectation(fmt::format(text::kCsvreadCount, call.name(), call.count()));
  const char* signature = call.count() == 1 ? "fname" : call.count() == 3 ? kWithStart : kWithRange;
  const std::string path = pathOf(call, signature);
  const CsvRange range = rangeOf(call, signature);
  std::optional<DoubleArray> array = readArray(call, path, range);
  if (!array) throw problem(fmt::format(text::kFailedToConvert, path), text::kNumbersExpected);
  if (call.isStatement()) tell(call, text::kArrayRead, path);
  return std::move(*array);
}

NodeValue csvwrite(Call& call) {
  const std::string path = pathOf(call, "fname, A");
  const NumericArray& array = read::numeric(call, 1, {"fname, A", "A", predicate::kNumericArray});
  if (!array.size().isMatrix()) throw expectation(text::kExportedMatrix);
  const bool written = call.environment.files.writeFile(path, csvOfArray(array));
  if (!written) throw problem(fmt::format(text::kFailedToWrite, path));
  tell(call, text::kArrayWritten, path);
  return NodeValue::nothing();
}

// clang-format off
constexpr Builtin kCsvFiles[] = {
    {"csvread",  csvread,  {1, 4}, 1, "fname, r1, c1, [r1 c1 r2 c2]",
     "Read numbers from a file, rows and columns being counted from 0",
     "csvwrite('data.csv', [1 2; 3 4]); csvread('data.csv', 1, 0)", {.inputs = text::kCsvreadCount}},
    {"csvwrite", csvwrite, {2, 2}, 0, "fname, A",
     "Write a matrix to a file", "csvwrite('data.csv', [1 2; 3 4])"},
};
// clang-format on

}  // namespace

std::span<const Builtin> csvFilesTable() { return kCsvFiles; }

}  // namespace kelo::builtins
