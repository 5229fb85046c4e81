// Fields of structures.
#include "interpreter/native/translator.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

bool Translator::readField(const Instruction& i) {
  const int32_t field = fieldRegister(i);
  if (field < 0 || !copy(i.a, field)) return false;
  if (i.op == Op::fieldPath) length_ = i.c - static_cast<int32_t>(&i - code().instructions.data());
  return true;
}

bool Translator::writeField(const Instruction& i) {
  const int32_t field = fieldRegister(i);
  return field >= 0 && of(field).held != Held::other && of(i.c).isScalar() && copy(field, i.c);
}

bool Translator::writeFieldElement(const Instruction& i) {
  const int32_t field = fieldRegister(i);
  return field >= 0 && (i.op == Op::setFieldElement ? store(field, {i.c}, i.e) : store(field, {i.c, i.d}, i.e));
}

bool Translator::readElementField(const Instruction& i) {
  const int32_t field = fieldRegister(i);
  return field >= 0 && of(field).held == Held::elements && areSubscripts({i.c}) && define(i.a, native::real(false)) &&
         make([&] { cc_.vmovsd(real(i.a), numberOfElement(field, i.c)); });
}

bool Translator::writeElementField(const Instruction& i) {
  const int32_t field = fieldRegister(i);
  return field >= 0 && of(field).held == Held::elements && of(i.e).held == Held::real && areSubscripts({i.c}) &&
         make([&] { cc_.vmovsd(numberOfElement(field, i.c), asReal(i.e)); });
}

// The number that is the field of an element; another value is left to the register code.
x86::Mem Translator::numberOfElement(int32_t field, int32_t subscript) {
  const Gp at = position(subscript, arrayWord(field, Layout::kCount), exit());
  cc_.imul(at, arrayWord(field, Layout::kStride));
  cc_.add(at, data(field));
  cc_.cmp(x86::qword_ptr(at), 0);
  cc_.jne(exit());
  cc_.cmp(x86::word_ptr(at, Storable::kKindAt), 0);
  cc_.jne(exit());
  return x86::qword_ptr(at, Storable::kScalarAt);
}

}  // namespace kelo::native
