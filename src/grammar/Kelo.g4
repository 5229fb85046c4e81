// The language in one combined grammar. Rule names, labels, the order of the alternatives and the
// order of the tokens are a contract: the evaluator has one visit per label, the order of the
// alternatives of `expr` is its precedence and the order of the tokens breaks ties between matches
// of equal length.
//
// What the rules cannot say stands in C++: KeloParserBase gives each node its file and its depth
// and answers the predicate of the ranges, LexerPredicates answers the three predicates of the
// lexer. The names of the built-in functions stand in builtin_names.txt, from which the build makes
// the grammar that is imported here.
grammar Kelo;

import BuiltInNames;  // the fragment BUILT_IN_NAME

options {
  superClass = KeloParserBase;
  contextSuperClass = KeloNode;
}

@lexer::header {
#include "grammar/lexer_predicates.h"
}

@lexer::members {
  kelo::LexerPredicates predicates;
}

@parser::header {
#include "grammar/kelo_node.h"
#include "grammar/kelo_parser_base.h"
}

// Programs and statements

prog
  : NEWLINE* function_declare (NEWLINE+ function_declare)* NEWLINE* EOF  # Prog_function
  | NEWLINE* stat_list (NEWLINE* function_declare)* NEWLINE* EOF         # Prog_stat_list
  | NEWLINE* EOF                                                         # Prog_no_text
  ;

exprOnly
  : expr NEWLINE* EOF  # Expr_only
  ;

stat_list
  : stat+
  ;

// NOTE: intended: the "end" of a block must be followed by a line end, and a statement needs a
// separator of its own.
stat
  : FOR id_names EQ expr (COMMA | SEMICOLON | NEWLINE)+ stat_list? GP_TERM NEWLINE+  # ForLoop
  | WHILE expr (COMMA | SEMICOLON | NEWLINE)+ stat_list? GP_TERM NEWLINE+            # WhileLoop
  | BREAK stat_separator+                                                            # Break
  | CONTINUE stat_separator+                                                         # Continue
  | RETURN stat_separator+                                                           # Return
  | if_separator_stat_list elseif_separator_stat_list* else_separator_stat_list?
    GP_TERM NEWLINE+                                                                 # If
  | SWITCH expr stat_separator+ case_expr_separator_stat_list*
    otherwise_expr_separator_stat_list? GP_TERM NEWLINE+                             # Switch
  | expr stat_separator+                                                             # Expression
  | var_assign stat_separator+                                                       # Assignment
  ;

stat_separator
  : COMMA
  | SEMICOLON
  | NEWLINE
  ;

case_expr_separator_stat_list
  : CASE expr (COMMA | SEMICOLON | NEWLINE)+ stat_list?
  ;

otherwise_expr_separator_stat_list
  : OTHERWISE (COMMA | SEMICOLON | NEWLINE)+ stat_list?
  ;

if_separator_stat_list
  : IF expr (COMMA | SEMICOLON | NEWLINE)+ stat_list?
  ;

elseif_separator_stat_list
  : ELSEIF expr (COMMA | SEMICOLON | NEWLINE)+ stat_list?
  ;

else_separator_stat_list
  : ELSE (COMMA | SEMICOLON | NEWLINE)*? stat_list?
  ;

// Names, assignments and functions

indices_or_func_args
  : LPAR ((expr COMMA)* expr)? RPAR
  ;

field
  : (ID | BUILT_IN_FUNC | ELSE | ELSEIF | SWITCH | CASE | OTHERWISE | IF | FOR | WHILE | END | BREAK | RETURN | CONTINUE
    | LPAR expr RPAR) indices_or_func_args?
  ;

var_assign
  : LSQB (id_names COMMA)* id_names RSQB EQ expr                 # Var_list_assignment
  | id_names EQ expr                                             # Var_assignment
  | id_names LPAR (expr COMMA)* expr RPAR EQ expr                # Subarray_assignment
  | id_names indices_or_func_args? ('.' field)+ EQ expr          # Structure_assignment2
  ;

func_handle
  : AT LPAR (id_names COMMA)* id_names RPAR expr
  | AT LPAR RPAR expr
  | AT id_names
  | AT BUILT_IN_FUNC
  ;

id_names
  : ID
  ;

function_outputs
  : FUNC LSQB ((id_names COMMA)* id_names)* RSQB EQ
  | FUNC id_names EQ
  | FUNC
  ;

function_inputs
  : function_outputs id_names LPAR ((id_names COMMA)* id_names)? RPAR
  | function_outputs id_names
  ;

function_declare
  : function_inputs NEWLINE+ stat_list? GP_TERM?  # User_function
  ;

// The third alternative exists to be refused when it is evaluated.
built_in_fun
  : BUILT_IN_FUNC LPAR ((expr COMMA)* expr)? RPAR
  | BUILT_IN_FUNC
  | BUILT_IN_FUNC ID+
  ;

// Expressions. The predicate of the ranges keeps the middle of "a:b:c" from being read as a range
// of its own.
//
// NOTE: intended: prefix operators bind tighter than power, so "-2^2" is "(-2)^2".

expr
  : INT                                                                              # Int
  | DOUBLE                                                                           # Double
  | CHAR                                                                             # Char
  | expr (TPD | TP)+                                                                 # Transpose
  | I                                                                                # Imaginary
  | id_names LPAR ((expr COMMA)* expr)? RPAR                                         # Subarray_or_func
  | id_names                                                                         # Id
  | func_handle                                                                      # FuncHandle
  | LSQB NEWLINE* expr ((COMMA | SEMICOLON | NEWLINE)* expr)* NEWLINE* RSQB          # Matrix_cat
  | LSQB RSQB                                                                        # Empty_mat
  | built_in_fun                                                                     # Built_in_func
  | LPAR expr RPAR                                                                   # Parenthesis
  | (PLUS | MINUS) expr                                                              # UnaryOps
  | NOT expr                                                                         # UnaryOps
  | expr (POWER | DPOWER) expr                                                       # BinaryOps
  | expr (MULT | DMULT | MRDIVIDE | RDIVIDE | MLDIVIDE | LDIVIDE) expr               # BinaryOps
  | expr (PLUS | MINUS) expr                                                         # BinaryOps
  | expr {mayStartRange()}? COLON expr COLON expr                                    # Matrix_colon
  | expr {mayStartRange()}? COLON expr                                               # Matrix_colon
  | expr (EQEQ | LE | GE | LT | GT | NEQ) expr                                       # BinaryOps
  | expr AND expr                                                                    # BinaryOps
  | expr OR expr                                                                     # BinaryOps
  | id_names indices_or_func_args? ('.' field)+                                      # Structure2
  | END                                                                              # End_expr
  | COLON                                                                            # Colon_expr
  ;

// Tokens. The "." of a field is the first of them.

AT : '@';
PLUS : '+' | '.+';
MULT : '*';
DMULT : '.*';
MINUS : '-' | '.-';
POWER : '^';
DPOWER : '.^';
MRDIVIDE : '/';
RDIVIDE : './';
MLDIVIDE : '\\';
LDIVIDE : '.\\';
EQEQ : '==';
LE : '<=';
GE : '>=';
LT : '<';
GT : '>';
NEQ : '~=' | '!=';
EQ : '=';
AND : '&' | '&&';
OR : '|' | '||';
NOT : '!' | '~';
ELSE : 'else';
ELSEIF : 'elseif';
SWITCH : 'switch';
CASE : 'case';
OTHERWISE : 'otherwise';
IF : 'if';
FOR : 'for';
WHILE : 'while';
GP_TERM : 'end' {predicates.endsBlock(_input)}?;
END : 'end';
BREAK : 'break';
CONTINUE : 'continue';
RETURN : 'return';
LSQB : '[';
RSQB : ']';
LPAR : '(';
RPAR : ')';
COMMA : ',';
SEMICOLON : ';';
COLON : ':';
NEWLINE : '\r'? '\n';
INT : DIGITS;

// NOTE: intended: "1.e2e3" is one token.
DOUBLE
  : DIGITS '.' DIGITS EXPONENT?
  | DIGITS '.' EXPONENT+
  | DIGITS '.' {predicates.pointIsDecimal(_input)}?
  | '.'? DIGITS EXPONENT?
  ;

I
  : DIGITS [i-j]
  | DIGITS '.' [0-9]* EXPONENT? [i-j]
  | '.'? DIGITS EXPONENT? [i-j]
  ;

// OPTIMIZATION: the predicate asks about what stands before the quote, but comes behind it: at the
// left edge it would keep the lexer from remembering its start state.
CHAR : '\'' {predicates.quoteOpensText(_input)}? ('\'\'' | ~[\n\r'])* '\'';

COMMENT : '%' ~[\n]* -> skip;
WS : [\t ]+ -> channel(1);
TPD : '.\'';
TP : '\'';

BUILT_IN_FUNC : BUILT_IN_NAME;
FUNC : 'function';
ID : [a-zA-Z_] [a-zA-Z_0-9]*;
UNKNOWN : .;

fragment DIGITS : [0-9]+;
fragment EXPONENT : [Ee] [+\-]? [0-9]+;
