// Frame: a call that is running, and the stack of those.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "interpreter/code.h"
#include "values/workspace.h"

namespace kelo {

struct Frame {
  const Code* code = nullptr;
  const Instruction* pc = nullptr;  ///< while something called from here is running: the calling instruction
  Storable* base = nullptr;
  FunctionUnit* unit = nullptr;             ///< of a function; of an answer to `input`: of what asked
  LocalFunctionFile* functions = nullptr;   ///< that can be called by name
  int32_t destination = 0;                  ///< register of the caller for the result
  int32_t outputs = 0;                      ///< asked for
  int32_t callInputs = 0, callOutputs = 0;  ///< of the call that nargin and nargout tell of
  int32_t chunk = 0;                        ///< of the caller's registers
  uint32_t chains = 0;                      ///< of the caller
  bool isFunction = false;                  ///< not a script, a handle or a text
  bool isOverlay = false;
  bool isEntry = false;             ///< where the machine was entered
  bool hasCall = false;             ///< whether a function is running here or below
  std::unique_ptr<Workspace> more;  ///< names without a slot; null behind the top of the stack
};

/// The frames that are running. Those behind the top are there already, so that a call need only
/// fill in what differs.
class FrameStack {
 public:
  static constexpr size_t kMost = 100'000;

  bool empty() const { return size() == 0; }
  size_t size() const { return static_cast<size_t>(top_ - frames_.data()); }
  /// Frame k, from 0 on, from the first one called.
  Frame& operator[](size_t k) { return frames_[k + 1]; }
  const Frame& operator[](size_t k) const { return frames_[k + 1]; }
  Frame& back() { return *top_; }
  const Frame& back() const { return *top_; }
  Frame& caller() { return top_[-1]; }
  const Frame& caller() const { return top_[-1]; }

  /// Whether `push` needs no `grow` before.
  bool hasRoom() const { return top_ != last_; }
  /// False at the limit of nesting.
  bool grow() {
    if (frames_.size() > kMost) return false;
    const size_t used = size();
    frames_.resize(std::min(2 * frames_.size() - 1, kMost + 1));
    top_ = frames_.data() + used;
    last_ = &frames_.back();
    return true;
  }
  /// A frame in which all but `more` is that of a former call. REQUIRES: hasRoom()
  Frame& push() { return *++top_; }
  void pop() {
    if (top_->more) [[unlikely]] top_->more.reset();
    --top_;
  }

 private:
  std::vector<Frame> frames_ = std::vector<Frame>(65);  // the first is never used
  Frame *top_ = frames_.data(), *last_ = &frames_.back();
};

}  // namespace kelo
