#include "frontend/fast_prediction.h"

#include "KeloParser.h"

namespace kelo {
namespace {

using T = KeloParser;

constexpr size_t kAskRuntime = 0;
constexpr size_t kGoOn = 1;  // in a loop: once more
constexpr size_t kLeave = 2;

// Precedence of a binary or postfix operator, and its alternative among them; 0 for other tokens.
struct Operator {
  int precedence;
  size_t alternative;
};

constexpr Operator operatorOf(size_t type) {
  switch (type) {
    case T::POWER:
    case T::DPOWER: return {11, 1};
    case T::MULT:
    case T::DMULT:
    case T::MRDIVIDE:
    case T::RDIVIDE:
    case T::MLDIVIDE:
    case T::LDIVIDE: return {10, 2};
    case T::PLUS:
    case T::MINUS: return {9, 3};
    case T::COLON: return {7, 4};  // or 5, and the precedence of either
    case T::EQEQ:
    case T::LE:
    case T::GE:
    case T::LT:
    case T::GT:
    case T::NEQ: return {6, 6};
    case T::AND: return {5, 7};
    case T::OR: return {4, 8};
    case T::TPD:
    case T::TP: return {22, 9};
    default: return {0, 0};
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

// The position behind the bracket that closes this one; behind all tokens when there is none.
size_t FastPrediction::behindPartner(size_t open) const { return tokens_.partnerOf(open) + 1; }

size_t FastPrediction::alternative(size_t decision, const KeloParserBase& parser) {
  const size_t i = tokens_.position();
  if (i >= limit_) return kAskRuntime;
  switch (decision) {
    case 14:  // separators behind a statement
    case 17:
    case 18:
    case 19:
    case 20:
    case 23:
    case 27:
    case 28:
    case 29: return isSeparator(type(i)) ? kGoOn : kLeave;
    case 30: return statement(i);
    case 41:  // arguments of calls and subscripts
    case 46:
    case 61:
    case 65: return moreArguments(i);
    case 44: return type(i) == T::LPAR ? 1 : 2;
    case 45:  // names with commas between them
    case 50: return type(i + 1) == T::COMMA ? kGoOn : kLeave;
    case 49: return assignment(i);
    case 51: return functionHandle(i);
    case 63: return type(i) == T::ID ? kGoOn : kLeave;
    case 64: return builtin(i);
    case 69: return moreElements(i);
    case 72: return type(i) == T::T__0 ? kGoOn : kLeave;
    case 73: return operand(i);
    case 74: return type(i) == T::TP || type(i) == T::TPD ? kGoOn : kLeave;
    case 75: return operatorKind(i, parser);
    case 76: return moreOperators(i, parser);
    default: return kAskRuntime;
  }
}

// Behind ".name", ".name(...)" and ".(...)", as often as they follow.
size_t FastPrediction::behindFields(size_t i) const {
  while (type(i) == T::T__0) {
    i = type(i + 1) == T::LPAR ? behindPartner(i + 1) : i + 2;
    if (type(i) == T::LPAR) i = behindPartner(i);
  }
  return i;
}

size_t FastPrediction::statement(size_t i) const {
  constexpr size_t kExpression = 8;
  constexpr size_t kAssignment = 9;
  size_t behind = i;
  switch (type(i)) {
    case T::FOR: return 1;
    case T::WHILE: return 2;
    case T::BREAK: return 3;
    case T::CONTINUE: return 4;
    case T::RETURN: return 5;
    case T::IF: return 6;
    case T::SWITCH: return 7;
    case T::LSQB: behind = behindPartner(i); break;
    case T::ID:
      behind = type(i + 1) == T::LPAR ? behindPartner(i + 1) : i + 1;
      behind = behindFields(behind);
      break;
    default: return kExpression;
  }
  return type(behind) == T::EQ ? kAssignment : kExpression;
}

size_t FastPrediction::assignment(size_t i) const {
  if (type(i) == T::LSQB) return 1;
  if (type(i + 1) == T::EQ) return 2;
  return type(i + 1) == T::LPAR && type(behindPartner(i + 1)) == T::EQ ? 3 : 4;
}

size_t FastPrediction::functionHandle(size_t i) const {
  if (type(i + 1) == T::LPAR) return type(i + 2) == T::RPAR ? 2 : 1;
  return type(i + 1) == T::ID ? 3 : 4;
}

// A name behind a built-in is a command in a statement and the next element in a matrix.
size_t FastPrediction::builtin(size_t i) const {
  if (type(i + 1) == T::LPAR) return 1;
  return type(i + 1) == T::ID && !tokens_.isInSquare(i) ? 3 : 2;
}

size_t FastPrediction::operand(size_t i) const {
  switch (type(i)) {
    case T::INT: return 1;
    case T::DOUBLE: return 2;
    case T::CHAR: return 3;
    case T::I: return 4;
    case T::ID:
      if (type(i + 1) == T::LPAR) return type(behindPartner(i + 1)) == T::T__0 ? 14 : 5;
      return type(i + 1) == T::T__0 ? 14 : 6;
    case T::AT: return 7;
    case T::LSQB: return type(i + 1) == T::RSQB ? 9 : 8;
    case T::BUILT_IN_FUNC: return 10;
    case T::LPAR: return 11;
    case T::PLUS:
    case T::MINUS: return 12;
    case T::NOT: return 13;
    case T::END: return 15;
    case T::COLON: return 16;
    default: return kAskRuntime;
  }
}

// Whether a colon could as well be the second one of a range further out, as "1:2 == 3:4" is "1:(2 == 3):4". At
// precedence 8 "a:b:c" could start there and "a:b" could not.
bool FastPrediction::colonIsOpen(const KeloParserBase& parser) {
  const int precedence = parser.getPrecedence();
  return precedence > 0 ? precedence <= 8 : parser.isInHandleBody();
}

size_t FastPrediction::moreOperators(size_t i, const KeloParserBase& parser) const {
  const size_t token = type(i);
  const int precedence = parser.getPrecedence();
  if (token == T::COLON) {
    if (!parser.mayStartRange()) return kLeave;
    if (colonIsOpen(parser)) return kAskRuntime;
  }
  return operatorOf(token).precedence >= precedence && operatorOf(token).precedence > 0 ? kGoOn : kLeave;
}

size_t FastPrediction::operatorKind(size_t i, const KeloParserBase& parser) const {
  if (type(i) != T::COLON) return operatorOf(type(i)).alternative;
  return colonIsOpen(parser) ? kAskRuntime : range(i);
}

// "a:b:c" or "a:b": whether another colon follows one whole operand, at the same level of brackets. Operands that are
// not plain (comparisons, handles, a ":" of their own) are left to the runtime.
size_t FastPrediction::range(size_t colon) const {
  constexpr size_t kThree = 4;
  constexpr size_t kTwo = 5;
  bool operandEnds = false;  // whether a whole operand stands to the left, so that a further one is no part of it
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
    const Operator found = operatorOf(token);
    if (found.precedence == 0 && (token != T::NOT || operandEnds)) return comparison ? kAskRuntime : kTwo;
    if (found.precedence != 22) operandEnds = false;
    comparison = comparison || (found.precedence != 0 && found.precedence < 7);
    ++i;
  }
}

// Whether a comma follows the argument in hand, at the same level of brackets.
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
