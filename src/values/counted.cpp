#include "values/counted.h"

#include "values/typed_array.h"

namespace kelo {

/// Works off the list of bodies that wait to be destroyed. Destroying one may add others to the
/// list.
class Destroyer {
 public:
  static void add(Counted* body) {
    body->next_ = waiting_;
    waiting_ = body;
    if (working_) return;
    working_ = true;
    while (waiting_ != nullptr) {
      CountedObject* next = static_cast<CountedObject*>(waiting_);
      waiting_ = waiting_->next_;
      delete next;
    }
    working_ = false;
  }

 private:
  static inline Counted* waiting_ = nullptr;
  static inline bool working_ = false;
};

void Counted::destroyLater(Counted* body) {
  if (body->body() == Body::arrayBlock) {
    ArrayBlock::destroy(static_cast<ArrayBlock*>(body));
  } else {
    Destroyer::add(body);
  }
}

}  // namespace kelo
