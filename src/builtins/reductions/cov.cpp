// cov: which argument is which, the complaints, and the choice of the columns.
#include "builtins/reductions/covariance.h"
#include "builtins/reductions/handlers.h"
#include "messages/catalogue/reductions.h"

namespace kelo::builtins {
namespace {

struct Arg {
  NumericArray A;
  std::optional<NumericArray> B;
  int64_t w = 0;
  Nanflag nanflag = Nanflag::includenan;
};

/// Where the optional arguments stand; 0: not given.
struct Layout {
  int b = 0, w = 0, nanflag = 0;
};

/// The second input of a pair is w when it is one of the scalars 0 and 1 (or any scalar beside an
/// array of several elements); a second array otherwise.
bool isWeight(const Storable& value, const Storable& a) {
  const NumericArray* number = value.numeric();
  return number && number->isScalar() && !number->is(Kind::Char) && !(a.isNumeric() && a.numElements() == 1);
}

Layout layoutOf(const Call& call) {
  Layout layout;
  int last = call.count() - 1;
  if (last > 0 && read::isText(call.arg(last)) && !call.arg(last).isEmpty()) {
    layout.nanflag = last--;
  } else if (last == 3) {
    layout.nanflag = last--;
  }
  if (last == 2)
    layout.b = 1, layout.w = 2;
  else if (last == 1)
    (isWeight(call.arg(1), call.arg(0)) ? layout.w : layout.b) = 1;
  return layout;
}

const char* signatureOf(const Layout& layout) {
  if (layout.b) {
    if (layout.w) return layout.nanflag ? "A, B, w, nanflag" : "A, B, w";
    return layout.nanflag ? "A, B, nanflag" : "A, B";
  }
  if (layout.w) return layout.nanflag ? "A, w, nanflag" : "A, w";
  return layout.nanflag ? "A, nanflag" : "A";
}

NumericArray readAlone(const Call& call, const char* signature) {
  const NumericArray& a = read::nonChar(call, 0, {signature, "A", text::kArrayOfRealOrComplex});
  if (!a.size().isMatrix()) throw argumentComplaint(call.name(), signature, "A", text::kTwoDimensionsAtMost);
  return a;
}

void readPair(const Call& call, const char* signature, Arg& arg) {
  const auto wording = [signature](const char* predicate) { return Wording{signature, "A and B", predicate}; };
  for (const int k : {0, 1}) read::numeric(call, k, wording(text::kContainRealOrComplex));
  for (const int k : {0, 1}) read::nonChar(call, k, wording(text::kNonCharacterArrays));
  arg.A = *call.arg(0).numeric();
  arg.B = *call.arg(1).numeric();
  if (!arg.A.size().isMatrix() || !arg.B->size().isMatrix()) throw wording(text::kTwoDimensionsAtMost).complaint(call);
  if (arg.A.numElements() != arg.B->numElements()) throw wording(text::kSameNumbersOfElements).complaint(call);
}

Arg readArg(const Call& call) {
  const Layout layout = layoutOf(call);
  const char* signature = signatureOf(layout);
  Arg arg;
  if (layout.b)
    readPair(call, signature, arg);
  else
    arg.A = readAlone(call, signature);
  if (layout.w) {
    const Wording weight{signature, "w", text::kZeroOrOne};
    arg.w = read::integer(call, layout.w, weight, 0);
    if (arg.w > 1) throw weight.complaint(call);
  }
  if (layout.nanflag) {
    arg.nanflag = static_cast<Nanflag>(read::option(
        call, layout.nanflag, {signature, "nanflag", text::kEitherRowFlag}, {"includenan", "omitrows", "partialrows"}));
  }
  return arg;
}

}  // namespace

NodeValue cov(Call& call) {
  const Arg arg = readArg(call);
  if (!arg.B && arg.A.size() == SizeVector(0, 0)) return NodeValue(kNaN);
  if (arg.A.is(Kind::Complex) || (arg.B && arg.B->is(Kind::Complex))) {
    const ComplexDoubleArray a = arg.A.toComplexArray();
    return covariances(arg.B ? twoColumns(a, arg.B->toComplexArray()) : asColumns(a), arg.w, arg.nanflag);
  }
  const DoubleArray a = arg.A.toDoubleArray();
  return covariances(arg.B ? twoColumns(a, arg.B->toDoubleArray()) : asColumns(a), arg.w, arg.nanflag);
}

}  // namespace kelo::builtins
