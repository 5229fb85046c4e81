// The reader goes over the text once. Most numbers have few digits and a small exponent: their
// digits fit into 53 bits and the power of ten is a double, so one multiplication or division gives
// the nearest double (W. D. Clinger, "How to read floating point numbers accurately", 1990).
// from_chars reads the others. Tested by tests/builtins/csv_test.cpp.
#include "builtins/csv/csv_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "values/numbers.h"
#include "values/powers_of_ten.h"

namespace kelo::builtins {
namespace {

constexpr int64_t kLargestPower = kPowersOfTen.size() - 1;
constexpr uint64_t kLargestExact = uint64_t{1} << 53;
constexpr int64_t kMostDigits = 19;             // that fit into 64 bits
constexpr int64_t kLargestExponent = 99999999;  // more has no effect

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isLineEnd(char c) { return c == '\n' || c == '\r'; }
bool isSeparator(char c) { return c == ',' || c == ';'; }

/// What a number is made of: digits * 10^exponent, as far as the digits fit.
struct Decimal {
  uint64_t digits = 0;
  int64_t count = 0;  // of digits from the first that is not 0
  int64_t exponent = 0;
  bool hasDigits = false;
  bool isNegative = false;

  void add(char c) {
    hasDigits = true;
    digits = digits * 10 + static_cast<uint64_t>(c - '0');
    if (count > 0 || c != '0') ++count;
  }
  bool isExact() const {
    return count <= kMostDigits && digits <= kLargestExact && exponent >= -kLargestPower && exponent <= kLargestPower;
  }
  double value() const {
    const auto magnitude = static_cast<double>(digits);
    const double x = exponent < 0 ? magnitude / kPowersOfTen[static_cast<size_t>(-exponent)]
                                  : magnitude * kPowersOfTen[static_cast<size_t>(exponent)];
    return isNegative ? -x : x;
  }
  double beyondRange() const {
    const double magnitude = count + exponent > 0 ? kInf : 0.0;
    return isNegative ? -magnitude : magnitude;
  }
};

/// Reads the exponent after "e", if there is a whole one.
const char* takeExponent(const char* p, int64_t& exponent) {
  const char* at = p + 1;
  const bool isNegative = *at == '-';
  if (*at == '-' || *at == '+') ++at;
  if (!isDigit(*at)) return p;
  int64_t n = 0;
  for (; isDigit(*at); ++at) n = std::min(n * 10 + (*at - '0'), kLargestExponent);
  exponent += isNegative ? -n : n;
  return at;
}

/// Reads the number at p; null when there is none. The text ends with a character that belongs to
/// no number.
const char* takeNumber(const char* p, const char* end, double& x) {
  Decimal number;
  if (*p == '+' && p[1] != '-') ++p;
  const char* const start = p;
  number.isNegative = *p == '-';
  if (number.isNegative) ++p;
  for (; isDigit(*p); ++p) number.add(*p);
  if (*p == '.') {
    for (++p; isDigit(*p); ++p, --number.exponent) number.add(*p);
  }
  if (number.hasDigits && (*p == 'e' || *p == 'E')) p = takeExponent(p, number.exponent);
  if (number.hasDigits && number.isExact()) {
    x = number.value();
    return p;
  }
  const auto [behind, fault] = std::from_chars(start, end, x);
  if (fault == std::errc::result_out_of_range) x = number.beyondRange();
  else if (fault != std::errc() || behind[-1] == ')') return nullptr;  // nan(...)
  return behind;
}

class CsvReader {
 public:
  CsvReader(const std::string& text, const CsvRange& range, const std::function<void(double)>& progress)
      : start_(text.c_str()), at_(start_), end_(start_ + text.size()), range_(range), progress_(progress) {
    if (text.starts_with("\xEF\xBB\xBF")) at_ += 3;
    cells_.reserve(static_cast<size_t>(std::count_if(at_, end_, [](char c) { return c == ',' || c == '\n'; })) + 1);
  }

  /// False when a cell is no number.
  bool read() {
    for (int64_t row = 0; row <= range_.lastRow; ++row) {
      while (at_ != end_ && (isBlank(*at_) || isLineEnd(*at_))) ++at_;
      if (at_ == end_) break;
      if (at_ - told_ > kToldEvery) tell();
      if (row < range_.firstRow) skipLine();
      else if (!readLine()) return false;
    }
    starts_.push_back(static_cast<int64_t>(cells_.size()));
    return true;
  }

  DoubleArray array() const {
    const auto rows = static_cast<int64_t>(starts_.size()) - 1;
    int64_t columns = 0;
    for (int64_t r = 0; r < rows; ++r) columns = std::max(columns, widthOf(r));
    if (rows == 0 || columns == 0) return DoubleArray();
    auto result = DoubleArray::uninitialized(SizeVector(rows, columns));
    double* const out = result.writable();
    // OPTIMIZATION: in bands of rows, so that the cells of a band stay in the cache while it is
    // written column by column.
    for (int64_t band = 0; band < rows; band += kBand) {
      const int64_t last = std::min(band + kBand, rows);
      for (int64_t c = 0; c < columns; ++c) {
        for (int64_t r = band; r < last; ++r) out[r + c * rows] = c < widthOf(r) ? cell(r, c) : 0;
      }
    }
    return result;
  }

 private:
  static constexpr int64_t kBand = 32;
  static constexpr int64_t kToldEvery = 4 << 20;  // characters

  int64_t widthOf(int64_t r) const { return starts_[static_cast<size_t>(r) + 1] - starts_[static_cast<size_t>(r)]; }
  double cell(int64_t r, int64_t c) const { return cells_[static_cast<size_t>(starts_[static_cast<size_t>(r)] + c)]; }

  void tell() {
    told_ = at_;
    if (progress_) progress_(static_cast<double>(at_ - start_) / static_cast<double>(end_ - start_));
  }

  bool atLineEnd() const { return isLineEnd(*at_) || at_ == end_; }
  bool atCellEnd() const { return isSeparator(*at_) || isBlank(*at_) || atLineEnd(); }
  void skipBlanks() {
    while (isBlank(*at_)) ++at_;
  }
  void skipLine() {
    while (!atLineEnd()) ++at_;
  }

  bool readLine() {
    starts_.push_back(static_cast<int64_t>(cells_.size()));
    for (int64_t column = 0; column <= range_.lastColumn; ++column) {
      if (column >= range_.firstColumn) {
        if (!readCell()) return false;
      } else {
        while (!atCellEnd()) ++at_;
      }
      skipBlanks();
      if (atLineEnd()) return true;
      if (isSeparator(*at_)) ++at_;
      skipBlanks();
    }
    skipLine();
    return true;
  }

  bool readCell() {
    double x = 0;
    if (!atCellEnd()) {
      const char* const behind = takeNumber(at_, end_, x);
      if (behind == nullptr) return false;
      at_ = behind;
    }
    cells_.push_back(x);
    return atCellEnd();
  }

  const char* const start_;
  const char* at_;
  const char* told_ = at_;
  const char* const end_;  // a 0 stands there, which ends every number
  const CsvRange range_;
  const std::function<void(double)>& progress_;
  std::vector<double> cells_;    // of all rows, one after the other
  std::vector<int64_t> starts_;  // of the rows in cells_, and the end of the last one
};

// ---- Writing

void append(fmt::memory_buffer& out, std::string_view text) { out.append(text.data(), text.data() + text.size()); }

void append(fmt::memory_buffer& out, int64_t n) {
  const fmt::format_int digits(n);
  append(out, std::string_view(digits.data(), digits.size()));
}

void append(fmt::memory_buffer& out, bool b) { out.push_back(b ? '1' : '0'); }

void append(fmt::memory_buffer& out, double x) {
  constexpr double kWholeLimit = 1e15;
  if (std::isnan(x)) return append(out, std::string_view("NaN"));
  if (std::isinf(x)) return append(out, std::string_view(x > 0 ? "Inf" : "-Inf"));
  const bool isWhole = std::fabs(x) < kWholeLimit && x == std::trunc(x) && !(x == 0 && std::signbit(x));
  if (isWhole) return append(out, static_cast<int64_t>(x));
  char digits[32];
  const char* const end = std::to_chars(digits, digits + sizeof digits, x).ptr;
  append(out, std::string_view(digits, static_cast<size_t>(end - digits)));
}

void append(fmt::memory_buffer& out, ComplexDouble z) {
  append(out, z.real);
  if (!(z.imaginary < 0)) out.push_back('+');
  append(out, z.imaginary);
  out.push_back('i');
}

}  // namespace

std::optional<DoubleArray> arrayOfCsv(const std::string& text, const CsvRange& range,
                                      const std::function<void(double part)>& progress) {
  CsvReader reader(text, range, progress);
  if (!reader.read()) return std::nullopt;
  return reader.array();
}

std::string csvOfArray(const NumericArray& matrix) {
  const NumericArray numbers = matrix.is(Kind::Char) ? matrix.toDoubleArray() : matrix;
  const int64_t rows = numbers.size().rows();
  const int64_t columns = numbers.size().columns();
  fmt::memory_buffer out;
  numbers.visit([&](const auto& record) {
    if constexpr (!std::is_same_v<std::decay_t<decltype(record)>, CharArray>) {
      for (int64_t r = 0; r < rows && columns > 0; ++r) {
        for (int64_t c = 0; c < columns; ++c) {
          if (c > 0) out.push_back(',');
          append(out, record[r + c * rows]);
        }
        out.push_back('\n');
      }
    }
  });
  return std::string(out.data(), out.size());
}

}  // namespace kelo::builtins
