// The evaluated arguments of one call: a short list that holds its first few values in place, so that an ordinary call
// allocates nothing for it.
#pragma once

#include <new>
#include <span>
#include <vector>

#include "values/storable.h"

namespace kelo {

class ArgumentList {
 public:
  ArgumentList() = default;
  ArgumentList(const ArgumentList&) = delete;
  ArgumentList& operator=(const ArgumentList&) = delete;
  ~ArgumentList() {
    for (size_t k = 0; k < inlineCount_; ++k) inlineAt(k)->~Storable();
  }

  void push(Storable value) {
    if (inlineCount_ < kInline && more_.empty()) {
      new (inlineAt(inlineCount_)) Storable(std::move(value));
      ++inlineCount_;
      return;
    }
    if (more_.empty()) spill();
    more_.push_back(std::move(value));
  }
  std::span<Storable> values() { return more_.empty() ? std::span(inlineAt(0), inlineCount_) : std::span(more_); }
  size_t size() const { return more_.empty() ? inlineCount_ : more_.size(); }

 private:
  static constexpr size_t kInline = 4;

  Storable* inlineAt(size_t k) { return std::launder(reinterpret_cast<Storable*>(storage_)) + k; }
  void spill() {
    more_.reserve(4 * kInline);
    for (size_t k = 0; k < inlineCount_; ++k) {
      more_.push_back(std::move(*inlineAt(k)));
      inlineAt(k)->~Storable();
    }
    inlineCount_ = 0;
  }

  alignas(Storable) std::byte storage_[kInline * sizeof(Storable)];
  size_t inlineCount_ = 0;
  std::vector<Storable> more_;
};

}  // namespace kelo
