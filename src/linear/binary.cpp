// The road of every binary operator: the four of matrices here, the others to the element-wise
// ones.
#include "linear/linear.h"

namespace kelo {

NumericArray binary(BinaryOp op, NumericArray a, NumericArray b, const Warn& warn) {
  switch (op) {
    case BinaryOp::mult: return mtimes(std::move(a), std::move(b));
    case BinaryOp::power: return mpower(std::move(a), std::move(b), warn);
    case BinaryOp::mldivide: return mldivide(std::move(a), std::move(b), warn);
    case BinaryOp::mrdivide: return mrdivide(std::move(a), std::move(b), warn);
    default: return elementwise(op, std::move(a), std::move(b));
  }
}

}  // namespace kelo
