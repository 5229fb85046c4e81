// Elements read and written, `end` and ":".
#include <fmt/format.h>

#include "grammar/kelo_node.h"
#include "interpreter/environment.h"
#include "interpreter/machine.h"
#include "interpreter/machine_fast.h"
#include "messages/catalogue/indexing.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

// ---- Subscripts

// throws Problem for what is no subscript
std::vector<Index> Machine::indicesOf(const SizeVector& size, const Storable* const* arguments, int32_t count) {
  std::vector<int64_t> extents;
  std::vector<Index> indices;
  indices.reserve(static_cast<size_t>(count));
  for (int32_t k = 0; k < count; ++k) {
    if (!arguments[k]->isColon()) {
      if (arguments[k]->isPositions()) {
        indices.push_back(Index::even(arguments[k]->positions()));
        continue;
      }
      if (!arguments[k]->isValue()) throw problem(text::kIndexNotNumeric);
      indices.push_back(Index::from(*arguments[k]));
      continue;
    }
    if (count > 1 && extents.empty()) extents = indexExtents(size, count);
    indices.push_back(Index::colon(count == 1 ? size.numElements() : extents[static_cast<size_t>(k)]));
  }
  return indices;
}

bool Machine::readElements(const Storable& array, const Site& site, const Storable* const* arguments, int32_t count,
                           Storable* result) {
  KeloNode& place = *site.node;
  if (count == 0) return fail(place, text::kNoIndex);
  if (!array.isArray()) return fail(place, text::kIndexedNotArrayOrHandle);
  std::vector<Index> indices;
  const Storable held = array;  // which may lie where the result goes
  if (!guarded(place, text::kIndexEvaluationFailed, [&] {
        indices = indicesOf(held.size(), arguments, count);
        return true;
      })) {
    return false;
  }
  return guarded(place, text::kUnexpectedError, [&] {
    *result = kelo::readElements(held, indices);
    return true;
  });
}

// What stands with parentheses behind it: an array is indexed, anything else called.
bool Machine::indexOrCall(const Instruction& i) {
  const Site& site = siteAt(i.d);
  Storable* arguments = frame().base + site.first;
  const bool areScattered = i.op == Op::index1 || i.op == Op::index2;
  const int32_t count = site.count;
  const Storable& base = reg(i.b);
  if (base.isArray()) {
    if (count == 1 && readPiece(base, areScattered ? at(i.c) : *arguments, &reg(i.a))) {
      if (areScattered && i.c != i.a) (void)take(i.c);
      return true;
    }
    if (areScattered && count == 2 && readPiece(base, at(i.c), at(i.e), &reg(i.a))) return true;
    std::vector<const Storable*> list;
    for (int32_t k = 0; k < count; ++k) {
      list.push_back(!areScattered ? arguments + k : k == 0 ? &at(i.c) : &at(i.e));
    }
    Storable result;
    if (!readElements(base, site, list.data(), count, &result)) return false;
    for (int32_t k = 0; k < count && !areScattered; ++k) arguments[k].clear();
    reg(i.a) = std::move(result);
    return true;
  }
  if (areScattered) {
    Storable second = count == 2 ? take(i.e) : Storable(0.0);
    Storable first = take(i.c);
    arguments[0] = std::move(first);
    if (count == 2) arguments[1] = std::move(second);
  }
  return call(i, arguments);
}

// ---- Writing

bool Machine::storeRow(const Instruction& i) {
  const Site& site = siteAt(i.d);
  std::vector<const Storable*> arguments;
  for (int32_t k = 0; k < site.count; ++k) arguments.push_back(&reg(site.first + k));
  if (!store(i, arguments.data(), site.count, i.op == Op::erase ? nullptr : &at(i.c))) return false;
  for (int32_t k = 0; k < site.count; ++k) reg(site.first + k).clear();
  return true;
}

// A(I) = B, or A(I) = [] where there is no value. A name without a variable counts as an empty
// double.
bool Machine::store(const Instruction& i, const Storable* const* arguments, int32_t count, const Storable* value) {
  KeloNode& place = placeOf(i);
  Storable& variable = reg(i.a);
  if (count == 1 && value && writePiece(variable, *arguments[0], *value)) return true;
  if (count == 2 && value && writePiece(variable, *arguments[0], *arguments[1], *value)) return true;
  const bool isNew = variable.isNone() || variable.isLocalFunc();
  if (!isNew && !variable.isArray()) return fail(place, text::kAssignmentTargetNotArray);
  std::vector<Index> indices;
  if (!guarded(place, text::kIndexEvaluationFailed, [&] {
        indices = indicesOf(isNew ? SizeVector() : variable.size(), arguments, count);
        return true;
      })) {
    return false;
  }
  Storable fresh;
  Storable& target = isNew ? fresh : variable;
  if (value == nullptr) {
    deleteElements(target, indices);
  } else {
    const Storable held = *value;
    writeElements(target, indices, held);
  }
  if (isNew) variable = std::move(fresh);
  return true;
}

// ---- `end` and ":"

// The extent of an argument where the site indexes an array; -1 where it does not. What an
// assignment makes anew is a 0 x 0 until then.
int64_t Machine::extentAt(const Site& site, int32_t argument) const {
  const Storable* base = &frame().base[site.base];
  if (site.isChain) base = chains_.back().reached(base->isNone() || base->isLocalFunc() ? nullptr : base);
  if (!base || !base->isArray()) return !site.isTarget ? -1 : argument < 2 ? 0 : 1;
  const SizeVector& size = base->size();
  if (site.count == 1) return size.numElements();
  if (site.count == 2 && size.isMatrix()) return argument == 0 ? size.rows() : size.columns();
  return indexExtents(size, site.count)[static_cast<size_t>(argument)];
}

// The innermost index around tells; -1 where there is none.
int64_t Machine::extentFor(int32_t site, int32_t argument) const {
  while (site >= 0) {
    const Site& around = siteAt(site);
    if (const int64_t extent = extentAt(around, argument); extent >= 0) return extent;
    argument = around.outerArgument;
    site = around.outer;
  }
  return -1;
}

bool Machine::endOf(const Instruction& i) {
  KeloNode& node = placeOf(i);
  const int64_t extent = extentFor(i.d, i.b);
  if (extent >= 0) node.cache.extent = extent;
  if (node.cache.extent < 0) return fail(node, text::kEndOutsideIndex);
  reg(i.a) = IntArray(node.cache.extent);
  return true;
}

// c: whether it is an argument by itself, which stays a colon in an index.
bool Machine::colon(const Instruction& i) {
  KeloNode& node = placeOf(i);
  const int64_t extent = extentFor(i.d, i.b);
  if (extent >= 0) node.cache.extent = extent;
  if (i.c && i.d >= 0 && extentAt(siteAt(i.d), i.b) >= 0) {
    reg(i.a) = Storable::colon();
    return true;
  }
  const int64_t n = node.cache.extent;
  if (n < 0) return fail(node, text::kInvalidColon);
  IntArray positions = n == 0 ? IntArray() : IntArray::uninitialized(SizeVector(1, n));
  int64_t* out = n == 0 ? nullptr : positions.writable();
  for (int64_t k = 0; k < n; ++k) out[k] = k + 1;
  reg(i.a) = std::move(positions);
  return true;
}

// A range as positions, where the site indexes an array; else as an array.
bool Machine::rangeArgument(const Instruction& i) {
  constexpr double kFew = 4096;  // no array of so many subscripts is too large
  double first, count;
  if (i.c == 2 && plainRange(reg(i.b), reg(i.b + 1), &first, &count) && first >= 1 && count >= 2 &&
      count <= kFew && extentAt(siteAt(i.d), i.e) >= 0) {
    reg(i.a) = Storable::positionsOf({static_cast<int64_t>(first) - 1, 1, static_cast<uint32_t>(count)});
    return true;
  }
  Range range;
  if (!rangeFrom(i, &range)) return false;
  const auto positions = extentAt(siteAt(i.d), i.e) < 0 ? std::nullopt : range.positions();
  reg(i.a) = positions ? Storable::positionsOf(*positions) : Storable(range.elements());
  return true;
}

bool Machine::checkExtent(const Instruction& i) {
  return extentAt(siteAt(i.d), i.b) != 0 || fail(placeOf(i), expectation(text::kEndOfEmptyArray));
}

// An argument, before the next one is evaluated.
bool Machine::checkArgument(const Instruction& i) {
  const Site& site = siteAt(i.d);
  const Storable& value = at(i.a);
  KeloNode& place = placeOf(i);
  if (!site.row && (site.isTarget || reg(site.base).isArray())) {
    if (value.isColon() || value.isPositions()) return true;
    if (!value.isValue()) return fail(place, text::kIndexNotNumeric);
    double number;
    if (i.c || !subscriptNumber(value, &number)) (void)Index::from(value);
    return true;
  }
  return !value.isNone() || failArgument(site, i.b, place);
}

}  // namespace kelo
