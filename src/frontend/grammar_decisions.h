// The parser's decisions and their answers by name.
//
// The parser tool numbers the places of the grammar where a rule has a choice, through all rules in
// turn, and the generated code asks by that number. A decision is found here by its rule and its
// place in the rule, which a change elsewhere in the grammar leaves alone. The alternatives of a
// rule are numbered from 1 in the order of the grammar and are named after its labels.
#pragma once

#include <cstddef>
#include <vector>

#include "antlr4-runtime.h"

namespace kelo {

/// What a decision is about. Several places of the grammar ask the same.
enum class Decision : unsigned char {
  unknown,     ///< left to the runtime
  separators,  ///< more of the separators that end a statement
  statement,
  arguments,  ///< another argument and its comma before the last one
  fieldIndices,
  names,  ///< another name and its comma before the last one
  assignment,
  functionHandle,
  commandWords,
  builtin,
  elements,  ///< another element of a matrix
  fields,    ///< another ".name"
  operand,
  quotes,  ///< another transpose
  operatorKind,
  operators,  ///< an operator after the expression so far
};

/// The decisions by the numbers that the generated parser gives them.
std::vector<Decision> decisionsOf(const antlr4::atn::ATN& atn);

enum class StatAlternative : size_t {
  ForLoop = 1, WhileLoop, Break, Continue, Return, If, Switch, Expression, Assignment
};

enum class VarAssignAlternative : size_t {
  Var_list_assignment = 1, Var_assignment, Subarray_assignment, Structure_assignment2
};

enum class FuncHandleAlternative : size_t { withParameters = 1, withoutParameters, ofName, ofBuiltin };

enum class BuiltInFunAlternative : size_t { call = 1, name, command };

/// The alternatives of `expr`, whose order is the order of precedence. Labels that several share
/// are told apart.
enum class ExprAlternative : int {
  Int = 1, Double, Char, Transpose, Imaginary, Subarray_or_func, Id, FuncHandle, Matrix_cat, Empty_mat, Built_in_func,
  Parenthesis, UnaryOps_sign, UnaryOps_not, BinaryOps_power, BinaryOps_product, BinaryOps_sum, Matrix_colon_three,
  Matrix_colon_two, BinaryOps_comparison, BinaryOps_and, BinaryOps_or, Structure2, End_expr, Colon_expr
};

/// How tightly an alternative of `expr` binds, as the generated parser counts it: 1 for the last
/// one.
constexpr int precedenceOf(ExprAlternative alternative) {
  return static_cast<int>(ExprAlternative::Colon_expr) + 1 - static_cast<int>(alternative);
}

/// Whether an alternative begins with an expression.
constexpr bool isOperator(ExprAlternative alternative) {
  return alternative == ExprAlternative::Transpose ||
         (alternative >= ExprAlternative::BinaryOps_power && alternative <= ExprAlternative::BinaryOps_or);
}

/// The number of an operand among all operands, as the decision about the beginning of an
/// expression counts them.
consteval size_t operandNumber(ExprAlternative operand) {
  size_t number = 1;
  for (int before = 1; before < static_cast<int>(operand); ++before) {
    if (!isOperator(static_cast<ExprAlternative>(before))) ++number;
  }
  return number;
}

/// The number of an operator among all operators: those between two expressions first, the
/// transpose after them.
constexpr size_t operatorNumber(ExprAlternative operation) {
  constexpr int kFirst = static_cast<int>(ExprAlternative::BinaryOps_power);
  constexpr int kLast = static_cast<int>(ExprAlternative::BinaryOps_or);
  const int place = operation == ExprAlternative::Transpose ? kLast + 1 : static_cast<int>(operation);
  return static_cast<size_t>(place - kFirst + 1);
}

}  // namespace kelo
