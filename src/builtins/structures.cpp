// Structures: struct, isfield, rmfield. Tested by tests/transcripts/builtins/structures.txt.
#include <fmt/format.h>

#include "builtins/library.h"
#include "interpreter/reader.h"
#include "messages/catalogue/text_functions.h"
#include "messages/catalogue/values.h"
#include "values/chains.h"

namespace kelo::builtins {
namespace {

constexpr Wording kStructure{"S, field", "S", text::kStructureArray};
constexpr Wording kField{"S, field", "field", predicate::kCharacterVector};

HeldName fieldNameAt(const Call& call, int position) {
  const Storable& value = call.arg(position);
  if (read::isText(value) && value.size().isRow()) {
    HeldName name = fieldNameOf(value);
    if (followsNameRule(name.text())) return name;
  }
  throw expectation(fmt::format(text::kFieldNameExpected, text::ordinal(position + 1)));
}

NodeValue structOf(Call& call) {
  StructArray result;
  for (int k = 0; k < call.count(); k += 2) {
    const HeldName name = fieldNameAt(call, k);
    if (k + 1 == call.count()) throw expectation(fmt::format(text::kFieldWithoutValue, name.text()));
    if (result.hasField(name)) throw expectation(fmt::format(text::kDuplicatedField, name.text()));
    result.put(name, std::move(call.arg(k + 1)));
  }
  return NodeValue(std::move(result));
}

NodeValue isfield(Call& call) {
  const StructArray& structure = read::structure(call, 0, kStructure);
  return LogicalArray(structure.hasField(HeldName::of(read::text(call, 1, kField))));
}

NodeValue rmfield(Call& call) {
  read::structure(call, 0, kStructure);
  const std::string name = read::text(call, 1, kField);
  StructArray structure = std::move(*call.arg(0).structure());
  const HeldName field = HeldName::of(name);
  if (!structure.hasField(field)) throw expectation(fmt::format(text::kFieldNotFound, name));
  structure.removeField(field);
  return NodeValue(std::move(structure));
}

// clang-format off
constexpr Builtin kStructures[] = {
    {"isfield", isfield,  {2, 2},    1, "S, field",
     "Whether structures have a field of this name", "isfield(struct('a', 1), 'a')"},
    {"rmfield", rmfield,  {2, 2},    1, "S, field",
     "Remove a field from structures", "rmfield(struct('a', 1, 'b', 2), 'a')"},
    {"struct",  structOf, {0, kAny}, 1, "name, value, ...",
     "Make a structure from names and values of fields", "struct('name', 'Kelo', 'size', 3)"},
};
// clang-format on

}  // namespace

std::span<const Builtin> structuresTable() { return kStructures; }

}  // namespace kelo::builtins
