// One function per decision. Each looks at the tokens from the current one on, jumps over brackets
// by their partners, and answers with an alternative by name, or with kAskRuntime where a token or
// two do not decide. Tested against the grammar and the runtime by tests/frontend/parse_test.cpp.
#include "frontend/fast_prediction.h"

#include <optional>

#include "KeloParser.h"

namespace kelo {
namespace {

using T = KeloParser;

constexpr size_t kAskRuntime = 0;
constexpr size_t kGoOn = 1;  // in a loop: once more; of what may be left out: it is there
constexpr size_t kLeave = 2;

using Stat = StatAlternative;
using VarAssign = VarAssignAlternative;
using FuncHandle = FuncHandleAlternative;
using BuiltInFun = BuiltInFunAlternative;
using Expr = ExprAlternative;

template <class Alternative>
constexpr size_t number(Alternative alternative) {
  return static_cast<size_t>(alternative);
}

/// The alternative that a token makes of the expression before it; of a colon the looser one of its
/// two.
constexpr std::optional<Expr> operatorOf(size_t type) {
  switch (type) {
    case T::POWER:
    case T::DPOWER: return Expr::BinaryOps_power;
    case T::MULT:
    case T::DMULT:
    case T::MRDIVIDE:
    case T::RDIVIDE:
    case T::MLDIVIDE:
    case T::LDIVIDE: return Expr::BinaryOps_product;
    case T::PLUS:
    case T::MINUS: return Expr::BinaryOps_sum;
    case T::COLON: return Expr::Matrix_colon_two;
    case T::EQEQ:
    case T::LE:
    case T::GE:
    case T::LT:
    case T::GT:
    case T::NEQ: return Expr::BinaryOps_comparison;
    case T::AND: return Expr::BinaryOps_and;
    case T::OR: return Expr::BinaryOps_or;
    case T::TPD:
    case T::TP: return Expr::Transpose;
    default: return std::nullopt;
  }
}

bool isSeparator(size_t type) { return type == T::COMMA || type == T::SEMICOLON || type == T::NEWLINE; }

bool startsOperand(size_t type) {
  switch (type) {
    case T::INT:
    case T::DOUBLE:
    case T::I:
    case T::CHAR:
    case T::ID:
    case T::BUILT_IN_FUNC:
    case T::LSQB:
    case T::LPAR:
    case T::END: return true;
    default: return false;
  }
}

}  // namespace

// The position after the bracket that closes this one; after all tokens when there is none.
size_t FastPrediction::behindPartner(size_t open) const { return tokens_.partnerOf(open) + 1; }

size_t FastPrediction::alternative(size_t decision, const KeloParserBase& parser) {
  const size_t i = tokens_.position();
  if (i >= limit_) return kAskRuntime;
  switch (decisions_[decision]) {
    case Decision::unknown: return kAskRuntime;
    case Decision::separators: return isSeparator(type(i)) ? kGoOn : kLeave;
    case Decision::statement: return statement(i);
    case Decision::arguments: return moreArguments(i);
    case Decision::fieldIndices: return type(i) == T::LPAR ? kGoOn : kLeave;
    case Decision::names: return type(i + 1) == T::COMMA ? kGoOn : kLeave;
    case Decision::assignment: return number(assignment(i));
    case Decision::functionHandle: return number(functionHandle(i));
    case Decision::commandWords: return type(i) == T::ID ? kGoOn : kLeave;
    case Decision::builtin: return number(builtin(i));
    case Decision::elements: return moreElements(i);
    case Decision::fields: return type(i) == T::T__0 ? kGoOn : kLeave;
    case Decision::operand: return operand(i);
    case Decision::quotes: return type(i) == T::TP || type(i) == T::TPD ? kGoOn : kLeave;
    case Decision::operatorKind: return operatorKind(i, parser);
    case Decision::operators: return moreOperators(i, parser);
  }
  return kAskRuntime;
}

// After ".name", ".name(...)" and ".(...)", as often as they follow.
size_t FastPrediction::behindFields(size_t i) const {
  while (type(i) == T::T__0) {
    i = type(i + 1) == T::LPAR ? behindPartner(i + 1) : i + 2;
    if (type(i) == T::LPAR) i = behindPartner(i);
  }
  return i;
}

size_t FastPrediction::statement(size_t i) const {
  size_t behind = i;
  switch (type(i)) {
    case T::FOR: return number(Stat::ForLoop);
    case T::WHILE: return number(Stat::WhileLoop);
    case T::BREAK: return number(Stat::Break);
    case T::CONTINUE: return number(Stat::Continue);
    case T::RETURN: return number(Stat::Return);
    case T::IF: return number(Stat::If);
    case T::SWITCH: return number(Stat::Switch);
    case T::LSQB: behind = behindPartner(i); break;
    case T::ID:
      behind = type(i + 1) == T::LPAR ? behindPartner(i + 1) : i + 1;
      behind = behindFields(behind);
      break;
    default: return number(Stat::Expression);
  }
  return number(type(behind) == T::EQ ? Stat::Assignment : Stat::Expression);
}

VarAssign FastPrediction::assignment(size_t i) const {
  if (type(i) == T::LSQB) return VarAssign::Var_list_assignment;
  if (type(i + 1) == T::EQ) return VarAssign::Var_assignment;
  const bool isSubarray = type(i + 1) == T::LPAR && type(behindPartner(i + 1)) == T::EQ;
  return isSubarray ? VarAssign::Subarray_assignment : VarAssign::Structure_assignment2;
}

FuncHandle FastPrediction::functionHandle(size_t i) const {
  if (type(i + 1) == T::LPAR) {
    return type(i + 2) == T::RPAR ? FuncHandle::withoutParameters : FuncHandle::withParameters;
  }
  return type(i + 1) == T::ID ? FuncHandle::ofName : FuncHandle::ofBuiltin;
}

// A name after a built-in is a command in a statement and the next element in a matrix.
BuiltInFun FastPrediction::builtin(size_t i) const {
  if (type(i + 1) == T::LPAR) return BuiltInFun::call;
  return type(i + 1) == T::ID && !tokens_.isInSquare(i) ? BuiltInFun::command : BuiltInFun::name;
}

size_t FastPrediction::operand(size_t i) const {
  switch (type(i)) {
    case T::INT: return operandNumber(Expr::Int);
    case T::DOUBLE: return operandNumber(Expr::Double);
    case T::CHAR: return operandNumber(Expr::Char);
    case T::I: return operandNumber(Expr::Imaginary);
    case T::ID: {
      const bool isCall = type(i + 1) == T::LPAR;
      if (type(isCall ? behindPartner(i + 1) : i + 1) == T::T__0) return operandNumber(Expr::Structure2);
      return isCall ? operandNumber(Expr::Subarray_or_func) : operandNumber(Expr::Id);
    }
    case T::AT: return operandNumber(Expr::FuncHandle);
    case T::LSQB: return type(i + 1) == T::RSQB ? operandNumber(Expr::Empty_mat) : operandNumber(Expr::Matrix_cat);
    case T::BUILT_IN_FUNC: return operandNumber(Expr::Built_in_func);
    case T::LPAR: return operandNumber(Expr::Parenthesis);
    case T::PLUS:
    case T::MINUS: return operandNumber(Expr::UnaryOps_sign);
    case T::NOT: return operandNumber(Expr::UnaryOps_not);
    case T::END: return operandNumber(Expr::End_expr);
    case T::COLON: return operandNumber(Expr::Colon_expr);
    default: return kAskRuntime;
  }
}

// Whether a colon could as well be the second one of a range further out, as "1:2 == 3:4" is
// "1:(2 == 3):4". Where only what binds as tightly as "a:b:c" may stand, that could start and "a:b"
// could not.
bool FastPrediction::colonIsOpen(const KeloParserBase& parser) {
  const int precedence = parser.getPrecedence();
  return precedence > 0 ? precedence <= precedenceOf(Expr::Matrix_colon_three) : parser.isInHandleBody();
}

size_t FastPrediction::moreOperators(size_t i, const KeloParserBase& parser) const {
  const size_t token = type(i);
  const int precedence = parser.getPrecedence();
  if (token == T::COLON) {
    if (!parser.mayStartRange()) return kLeave;
    if (colonIsOpen(parser)) return kAskRuntime;
  }
  const std::optional<Expr> found = operatorOf(token);
  return found && precedenceOf(*found) >= precedence ? kGoOn : kLeave;
}

size_t FastPrediction::operatorKind(size_t i, const KeloParserBase& parser) const {
  if (type(i) != T::COLON) {
    const std::optional<Expr> found = operatorOf(type(i));
    return found ? operatorNumber(*found) : kAskRuntime;
  }
  return colonIsOpen(parser) ? kAskRuntime : range(i);
}

// "a:b:c" or "a:b": whether another colon follows one whole operand, at the same level of brackets.
// Operands that are not plain (comparisons, handles, a ":" of their own) are left to the runtime.
size_t FastPrediction::range(size_t colon) const {
  constexpr size_t kThree = operatorNumber(Expr::Matrix_colon_three);
  constexpr size_t kTwo = operatorNumber(Expr::Matrix_colon_two);
  bool operandEnds = false;  // a whole operand stands to the left: a further one is no part of it
  bool comparison = false;
  for (size_t i = colon + 1;;) {
    const size_t token = type(i);
    if (token == T::COLON) return operandEnds && !comparison ? kThree : kAskRuntime;
    if (token == T::AT) return kAskRuntime;
    if (startsOperand(token)) {
      if (operandEnds) return comparison ? kAskRuntime : kTwo;
      operandEnds = true;
      if (token == T::LPAR || token == T::LSQB) {
        i = behindPartner(i);
      } else if (token == T::ID || token == T::BUILT_IN_FUNC) {
        if (token == T::BUILT_IN_FUNC && type(i + 1) == T::ID) return kAskRuntime;
        i = behindFields(type(i + 1) == T::LPAR ? behindPartner(i + 1) : i + 1);
      } else {
        ++i;
      }
      continue;
    }
    const std::optional<Expr> found = operatorOf(token);
    if (!found && (token != T::NOT || operandEnds)) return comparison ? kAskRuntime : kTwo;
    if (found != Expr::Transpose) operandEnds = false;
    comparison = comparison || (found && precedenceOf(*found) < precedenceOf(Expr::Matrix_colon_two));
    ++i;
  }
}

// Whether a comma follows the current argument, at the same level of brackets.
size_t FastPrediction::moreArguments(size_t i) const {
  for (;;) {
    switch (type(i)) {
      case T::COMMA: return kGoOn;
      case T::LPAR:
      case T::LSQB: i = behindPartner(i); break;
      case T::RPAR:
      case T::RSQB:
      case T::SEMICOLON:
      case T::NEWLINE:
      case TokenList::kEndOfFile: return kLeave;
      default: ++i;
    }
  }
}

size_t FastPrediction::moreElements(size_t i) const {
  while (isSeparator(type(i))) ++i;
  return type(i) == T::RSQB ? kLeave : kGoOn;
}

}  // namespace kelo
