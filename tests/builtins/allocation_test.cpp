// What the evaluator allocates: nothing for scalars, no copy of an array for a write of an element
// or a field, no table for a captured workspace. Counted are the calls of operator new and the
// blocks of arrays.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "builtins/library.h"
#include "interpreter/test_app.h"
#include "values/memory.h"

namespace {
int64_t g_news = 0;
}

void* operator new(std::size_t size) {
  ++g_news;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++g_news;
  return std::malloc(size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace kelo {
namespace {

struct Allocations {
  int64_t news, blocks;
  friend bool operator==(const Allocations&, const Allocations&) = default;
};

/// What a loop of so many rounds allocates, besides what a text costs anyway.
Allocations ofLoop(const std::string& before, const std::string& body, int rounds) {
  TestApp test(builtins::library());
  test.app.startCommand(before);
  const Allocations start{g_news, blocksAllocated()};
  test.app.startCommand("k = 0;\nwhile k < " + std::to_string(rounds) + "\n" + body + "\nk = k + 1;\nend");
  EXPECT_EQ(test.shown, std::vector<std::string>()) << body;
  return {g_news - start.news, blocksAllocated() - start.blocks};
}

/// Texts of the same length, so that only the rounds differ.
Allocations perHundredRounds(const std::string& before, const std::string& body) {
  ofLoop(before, body, 100);  // fills what is made once: names, tables of the parser
  const Allocations few = ofLoop(before, body, 100);
  const Allocations many = ofLoop(before, body, 200);
  return {many.news - few.news, many.blocks - few.blocks};
}

TEST(Allocation, ScalarsAllocateNothing) {
  const Allocations none{0, 0};
  EXPECT_EQ(perHundredRounds("s = 0;", "s = s + k*2 - 1/3;"), none);
  EXPECT_EQ(perHundredRounds("s = 0;", "if s <= k & ~(k == 7), s = -s; else, s = k^2; end"), none);
  EXPECT_EQ(perHundredRounds("s = 1i;", "z = (s * 2 + k) / 3; t = true; c = 'x';"), none);
}

TEST(Allocation, ElementsAndFieldsAreWrittenInPlace) {
  const Allocations none{0, 0};
  EXPECT_EQ(perHundredRounds("x = zeros(1, 300);", "x(k + 1) = x(k + 1) + k;"), none);
  EXPECT_EQ(perHundredRounds("A = zeros(300, 3);", "A(k + 1, 2) = k;"), none);
  EXPECT_EQ(perHundredRounds("s.a = 1; s.b = 2;", "s.a = s.a + k;"), none);
}

TEST(Allocation, AppendingAllocatesNowAndThen) {
  EXPECT_LE(perHundredRounds("x = 0;", "x(end + 1) = k;").blocks, 4);
}

TEST(Allocation, CallsCopyNoArray) {
  EXPECT_EQ(perHundredRounds("x = zeros(1, 300); f = @(v) v(2);", "y = f(x);").blocks, 0);
  EXPECT_EQ(perHundredRounds("x = zeros(1, 300);", "y = x;").blocks, 0);
}

}  // namespace
}  // namespace kelo
