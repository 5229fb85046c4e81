// Texts of the evaluator: statements, expressions, calls and assignment. "{}" is a slot for a name,
// a count or a source text.
#pragma once

namespace kelo::text {

// Statements
inline constexpr const char* kTerminatedByUser = "Terminated by user interruption";
inline constexpr const char* kBreakOutsideLoop = "\"break\" or \"continue\" are allowed in a loop only";
inline constexpr const char* kLoopIndexNotNumeric = "The loop index array is expected to be numeric type";
inline constexpr const char* kWhileNotNumeric = "Termination condition for a while loop is expected to be numeric type";
inline constexpr const char* kIfNotNumeric =
    "An array of numeric values is expected after an \"if\" or \"elseif\" keyword";
inline constexpr const char* kSwitchNotSimple =
    "A switch expression should evaluate to a character vector or a numeric scalar";
inline constexpr const char* kCaseNotSimple =
    "A case expression should evaluate to a character vector or a numeric scalar";
inline constexpr const char* kMainFunctionMissing = "The file should have a main function, but none is found";

// Expressions
inline constexpr const char* kNameNotFound = "Variable or function named \"{}\" not found";
inline constexpr const char* kInvalidColon = "Invalid use of the operator ':'";
inline constexpr const char* kBinaryNotNumeric = "Operands of {} are expected to be numeric arrays";
inline constexpr const char* kUnaryNotNumeric = "Operands of {} should be numeric arrays";
inline constexpr const char* kArgumentFailed = "Failed to evaluate an input argument";
inline constexpr const char* kArgumentWithoutValue = "Invalid input argument. \"{}\" has no return value";
inline constexpr const char* kHandleOfValue = "In @{0}, \"{0}\" should be a function but it is {1}";
inline constexpr const char* kCatenatesNonArray = "Catenation of non-arrays is not allowed";

// Calls and assignment
inline constexpr const char* kCommandSyntax =
    "Command syntax (e.g. \"hold on\", \"clear all\") is not supported. "
    "Use function syntax (e.g., \"hold('on')\") instead";
inline constexpr const char* kLocalNotAccessible =
    "Local function \"{}\" is only accessible from the file/script that defines it";
inline constexpr const char* kLocalNamedLikeScript =
    "Local function \"{}\" has the same name as the script that contains it";
inline constexpr const char* kLocalAlreadyDefined = "Local function \"{}\" already defined";
inline constexpr const char* kMainAlreadyDefined = "Main function \"{}\" already defined";
inline constexpr const char* kTooManyInputs = "Function \"{}\" expects at most {} input arguments but {} given";
inline constexpr const char* kTooManyInputsLocal = "Function \"{}\" expects at most {} input arguments but {} is given";
inline constexpr const char* kTooFewInputs = "Function {}() expects {} input argument{}, but {} given";
inline constexpr const char* kOutputUndefined = "Variable \"{}\" undefined";
inline constexpr const char* kLocalOutputUndefined =
    "Output argument \"{}\" was not defined in the body of the local function {}()";
inline constexpr const char* kNoValueToAssign = "The right-hand side of the \"=\" operator has no return value";
inline constexpr const char* kNoValuesToAssign = "The right-hand side of \"=\" has no return value";
inline constexpr const char* kTooManyOutputs = "Too many output arguments";
inline constexpr const char* kDuplicatedArguments = "Defining an anonymous function with duplicated argument names";
inline constexpr const char* kOutsideFunction =
    "Function \"{}\" should be called within a function if no input argument is given";
inline constexpr const char* kRecursionTooDeep = "The recursion is too deep";

// Last resorts
inline constexpr const char* kUnexpectedNumber = "Unexpected error occurred while attempting to define a value";
inline constexpr const char* kUnexpectedImaginary = "Unexpected error occurred while creating imaginary number";
inline constexpr const char* kUnexpectedVector = "Unexpected error occurred while creating a vector";
inline constexpr const char* kUnexpectedTranspose = "Unexpected error occurred while performing transpose operation";
inline constexpr const char* kUnexpectedHandle = "Unexpected error occurred while defining an anonymous function";

}  // namespace kelo::text
