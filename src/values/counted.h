// Shared bodies: what several values hold together until one of them is written.
//
// A body counts its holders. A value that is about to write asks whether it is the only holder and
// takes a copy if not; that is the whole of copy on write. When the last holder goes, the body is
// destroyed; bodies that hold further bodies (structures in structures, handles that captured
// handles) are destroyed from a list, not by recursion, so that a chain of a million links does not
// need a million stack frames.
//
// Thread: counts are plain integers; values belong to the interpreter's thread.
#pragma once

#include <cstdint>
#include <utility>

#include "values/small_blocks.h"

namespace kelo {

class Counted {
 public:
  enum class Body : uint8_t { arrayBlock, object };

  explicit Counted(Body body) : body_(body) {}
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  void retain() { ++references_; }
  void release() {
    if (--references_ == 0) destroyLater(this);
  }
  bool isShared() const { return references_ > 1; }
  Body body() const { return body_; }

 protected:
  ~Counted() = default;

 private:
  friend class Destroyer;
  // At once, unless a destruction is going on: then when that one has ended.
  static void destroyLater(Counted* body);

  int64_t references_ = 1;
  Counted* next_ = nullptr;  // in the list of bodies that wait to be destroyed
  Body body_;
};

/// A body with a destructor of its own, as opposed to a block of plain elements.
class CountedObject : public Counted, public FromSmallBlocks {
 public:
  CountedObject() : Counted(Body::object) {}
  virtual ~CountedObject() = default;
};

/// A counted reference. Null when default-made.
template <class T>
class Ref {
 public:
  Ref() = default;
  static Ref adopt(T* body) {  ///< takes over the count that a new body is born with
    Ref ref;
    ref.body_ = body;
    return ref;
  }
  Ref(const Ref& other) : body_(other.body_) {
    if (body_) body_->retain();
  }
  Ref(Ref&& other) noexcept : body_(std::exchange(other.body_, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(body_, other.body_);
    return *this;
  }
  ~Ref() {
    if (body_) body_->release();
  }

  T* get() const { return body_; }
  T& operator*() const { return *body_; }
  T* operator->() const { return body_; }
  explicit operator bool() const { return body_ != nullptr; }
  T* detach() { return std::exchange(body_, nullptr); }  ///< gives the count away

 private:
  T* body_ = nullptr;
};

template <class T, class... Args>
Ref<T> makeRef(Args&&... args) {
  return Ref<T>::adopt(new T(std::forward<Args>(args)...));
}

}  // namespace kelo
