// The pass that makes "[1 -2]" two elements. The grammar hides blanks, so a sign with a blank
// before it and none after it would be a subtraction; inside square brackets the blank becomes a
// comma before the parser sees it.
//
// The pass edits the tokens and not the text: a comma there changes no other token, so the tokens
// need not be made anew, and all positions stay those of what the user typed.
#pragma once

#include <vector>

#include "grammar/scanner.h"

namespace kelo {

/// Turns the hidden blank before each sign that starts an element into a COMMA token.
///
/// tokens   all tokens of a text, hidden ones included, in order
///
/// NOTE: intended: an operator before the blank does not protect the sign; "[2 * -3]" becomes
/// "[2 *,-3]".
void insertMatrixElementSeparators(std::vector<ScannedToken>& tokens);

}  // namespace kelo
