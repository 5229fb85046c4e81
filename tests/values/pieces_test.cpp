// Work that is split over the cores gives what it gives in one piece: the pieces are done here one
// by one, the last first.
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/parallel.h"
#include "values/arrays.h"
#include "values/indexing.h"
#include "values/operators.h"

namespace kelo {
namespace {

using namespace kelo::testing;

class PiecesBackwards : public platform::ParallelFor {
 public:
  PiecesBackwards() { platform::setParallelFor(this); }
  ~PiecesBackwards() override { platform::setParallelFor(nullptr); }
  void run(int64_t count, int64_t grain, const std::function<void(int64_t, int64_t)>& body) override {
    for (int64_t begin = (count - 1) / grain * grain; begin >= 0; begin -= grain) {
      body(begin, std::min(count, begin + grain));
      ++pieces_;
    }
  }
  int pieces() const { return pieces_; }

 private:
  int pieces_ = 0;
};

/// f() in one piece and in several.
template <class F>
void expectSame(F f) {
  const NumericArray whole = f();
  PiecesBackwards parallel;
  const NumericArray split = f();
  EXPECT_GT(parallel.pieces(), 1);
  EXPECT_EQ(whole.size(), split.size());
  EXPECT_TRUE(std::ranges::equal(whole.toDoubleArray().values(), split.toDoubleArray().values()));
}

TEST(Pieces, BlocksReadAndWritten) {
  const NumericArray a = counting(SizeVector({300, 40, 24}));
  const Index rows = Index::range(1, 298), odd = Index::even({1, 3, 12}),
              few = Index::from(row({2, 39, 5, 5, 17, 1, 3, 8, 9, 30, 31, 12}));
  for (const Index& columns : {Index::range(2, 37), Index::range(0, 40), odd, few}) {
    for (const Index& pages : {Index::range(1, 22), Index::even({0, 1, 24})}) {
      const std::vector<Index> block = {rows, columns, pages};
      expectSame([&] { return *readElements(a, block).numeric(); });
      const NumericArray value = counting(SizeVector({rows.count(), columns.count(), pages.count()}));
      for (const NumericArray& given : {value, num(-1)}) {
        const auto written = [&] {
          Storable target = a;
          writeElements(target, block, given);
          return *target.numeric();
        };
        if (columns.form() == Index::Form::list) {
          // A column is meant twice: the last one stays, so it goes in one piece.
          PiecesBackwards parallel;
          EXPECT_EQ(written().asDouble()[300 * (40 * pages.first() + 4) + 1],
                    given.asDouble()[given.isScalar() ? 0 : 298 * 3]);
        } else {
          expectSame(written);
        }
      }
    }
  }
}

TEST(Pieces, TextCompared) {
  CharArray text(SizeVector(1, 200000), Character(U'a'));
  for (int64_t i = 0; i < text.numElements(); i += 7) text.writable()[i] = Character(i % 3 == 0 ? U'b' : U'\u00e9');
  for (const BinaryOp op : {BinaryOp::eqeq, BinaryOp::neq}) {
    expectSame([&] { return elementwise(op, text, charRow("b")); });
    expectSame([&] { return elementwise(op, text, text); });
  }
}

}  // namespace
}  // namespace kelo
