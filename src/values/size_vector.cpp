// Sizes. Every product is checked: a size that cannot be counted ends the run rather than wrapping.
#include "values/size_vector.h"

#include <algorithm>

#include "messages/catalogue/values.h"
#include "messages/fatal_fault.h"
#include "messages/message.h"

namespace kelo {
namespace {

// A zero length makes the product 0 whatever the others are, also when they overflow together.
int64_t productOf(const int64_t* lengths, int64_t count) {
  if (std::find(lengths, lengths + count, 0) != lengths + count) return 0;
  int64_t product = 1;
  for (int64_t k = 0; k < count; ++k) product = checkedMultiply(product, lengths[k]);
  return product;
}

}  // namespace

SizeVector::SizeVector(std::span<const int64_t> vec) {
  if (vec.size() < 2) throw problem(text::kSizeVectorTooShort);
  assign(vec.data(), static_cast<int64_t>(vec.size()));
}

void SizeVector::assign(const int64_t* lengths, int64_t count) {
  numElements_ = productOf(lengths, count);
  count_ = checkedInt32(count);
  ndim_ = count_;
  while (ndim_ > 2 && lengths[ndim_ - 1] == 1) --ndim_;
  if (count > 2) more_ = new int64_t[static_cast<size_t>(count)];
  std::copy_n(lengths, count, more_ ? more_ : inline_);
}

void SizeVector::copyMore(const SizeVector& other) {
  more_ = new int64_t[static_cast<size_t>(count_)];
  std::copy_n(other.more_, count_, more_);
}

int64_t SizeVector::defaultDimension() const {
  const auto lengths = vec();
  const auto found = std::find_if(lengths.begin(), lengths.end(), [](int64_t n) { return n != 1; });
  return found == lengths.end() ? 1 : found - lengths.begin() + 1;
}

int64_t SizeVector::strideOf(int64_t d) const { return productOf(vec().data(), std::min(d - 1, count())); }

SizeVector SizeVector::withDimension(int64_t d, int64_t length) const {
  std::vector<int64_t> lengths(vec().begin(), vec().end());
  if (d > count()) lengths.resize(static_cast<size_t>(d), 1);
  lengths[static_cast<size_t>(d - 1)] = length;
  return SizeVector(lengths).trimmed();
}

std::vector<int64_t> SizeVector::broughtTo(int64_t n) const {
  const auto lengths = vec();
  std::vector<int64_t> result(static_cast<size_t>(n), 1);
  for (int64_t k = 0; k < count(); ++k) {
    if (k < n) result[static_cast<size_t>(k)] = lengths[static_cast<size_t>(k)];
  }
  if (count() > n) result.back() = productOf(lengths.data() + n - 1, count() - n + 1);
  return result;
}

std::string SizeVector::description() const {
  std::string result;
  for (int64_t d = 1; d <= ndim(); ++d) {
    if (d > 1) result += " x ";
    result += std::to_string(dimensionLength(d));
  }
  return result;
}

}  // namespace kelo
