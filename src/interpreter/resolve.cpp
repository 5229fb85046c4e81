// Expressions and statements. The class of a node is asked in one chain; its operands are the
// children that are expressions. Parentheses around an operand of an operator are skipped, since
// they change nothing there.
#include "interpreter/resolve.h"

#include <cstdlib>
#include <map>

#include "interpreter/builtin_table.h"
#include "interpreter/node_details.h"
#include "interpreter/node_parts.h"
#include "interpreter/resolve_handle.h"
#include "values/operators.h"

namespace kelo {
namespace {

using antlr4::tree::ParseTree;
using P = KeloParser;

KeloNode* withoutParentheses(KeloNode* node) {
  while (auto* parenthesis = exactly<P::ParenthesisContext>(node)) node = parenthesis->expr();
  return node;
}

// ---- Literals

// OPTIMIZATION: by the node's token, since the text of a node is put together by a stream.
void resolveNumber(KeloNode& node, NodeKind kind) {
  std::string text = node.getStart()->getText();
  if (kind == NodeKind::imaginary) text.pop_back();
  char* end = nullptr;
  node.cache.kind = kind;
  node.cache.number = std::strtod(text.c_str(), &end);
  node.cache.isValid = *end == '\0';
}

void resolveChar(KeloNode& node) {
  const std::string quoted = node.getStart()->getText();
  std::string text;
  for (size_t k = 1; k + 1 < quoted.size(); ++k) {
    text += quoted[k];
    if (quoted[k] == '\'') ++k;
  }
  node.cache.kind = NodeKind::charText;
  makeDetails<LiteralDetails>(node).value = charRow(text);
}

// ---- Operators

std::optional<BinaryOp> binaryOpOf(size_t token) {
  static const std::map<size_t, BinaryOp> ops = {
      {P::PLUS, BinaryOp::plus},       {P::MINUS, BinaryOp::minus},       {P::DMULT, BinaryOp::dmult},
      {P::MULT, BinaryOp::mult},       {P::EQEQ, BinaryOp::eqeq},         {P::NEQ, BinaryOp::neq},
      {P::LE, BinaryOp::le},           {P::LT, BinaryOp::lt},             {P::GE, BinaryOp::ge},
      {P::GT, BinaryOp::gt},           {P::DPOWER, BinaryOp::dpower},     {P::POWER, BinaryOp::power},
      {P::LDIVIDE, BinaryOp::ldivide}, {P::MLDIVIDE, BinaryOp::mldivide}, {P::MRDIVIDE, BinaryOp::mrdivide},
      {P::RDIVIDE, BinaryOp::rdivide}, {P::AND, BinaryOp::and_},          {P::OR, BinaryOp::or_}};
  const auto found = ops.find(token);
  if (found == ops.end()) return std::nullopt;
  return found->second;
}

void resolveBinary(KeloNode& node) {
  const auto operands = expressionsOf(node);
  node.cache.kind = NodeKind::binaryOps;
  node.cache.first = withoutParentheses(operands[0]);
  node.cache.second = withoutParentheses(operands[1]);
  node.cache.op = static_cast<uint8_t>(*binaryOpOf(tokenType(node.children[1])));
}

void resolveUnary(KeloNode& node) {
  const size_t token = tokenType(node.children[0]);
  const UnaryOp op = token == P::NOT ? UnaryOp::not_ : token == P::MINUS ? UnaryOp::minus : UnaryOp::plus;
  node.cache.kind = NodeKind::unaryOps;
  node.cache.first = withoutParentheses(expressionsOf(node)[0]);
  node.cache.op = static_cast<uint8_t>(op);
}

void resolveTranspose(KeloNode& node) {
  auto& details = makeDetails<TransposeDetails>(node);
  for (ParseTree* child : node.children) {
    const size_t token = tokenType(child);
    if (token == P::TP || token == P::TPD) details.conjugates.push_back(token == P::TP);
  }
  node.cache.kind = NodeKind::transpose;
  node.cache.first = withoutParentheses(expressionsOf(node)[0]);
}

// A ";" or a line feed ends a row; "\r\n" inside brackets does not. NOTE: intended.
void resolveBrackets(KeloNode& node) {
  auto& details = makeDetails<CatDetails>(node);
  bool startsRow = false;
  for (ParseTree* child : node.children) {
    if (isExpr(child)) {
      details.elements.push_back({ruleNode(child), startsRow});
      startsRow = false;
      continue;
    }
    const std::string text = child->getText();
    if (text == ";" || text == "\n") startsRow = true;
    if (text == ",") startsRow = false;
  }
  node.cache.kind = NodeKind::matrixCat;
}

// ---- Calls and indices

bool containsEnd(ParseTree* tree) {
  if (exactly<P::End_exprContext>(tree)) return true;
  for (ParseTree* child : tree->children) {
    if (containsEnd(child)) return true;
  }
  return false;
}

std::vector<KeloNode*> subscriptsOf(const std::vector<KeloNode*>& expressions) {
  for (KeloNode* expression : expressions) expression->cache.containsEnd = containsEnd(expression);
  return expressions;
}

void resolveCall(KeloNode& node) {
  node.cache.kind = NodeKind::subarrayOrFunc;
  node.cache.name = nameOf(&node);
  makeDetails<CallDetails>(node).args = subscriptsOf(expressionsOf(node));
}

void resolveBuiltin(KeloNode& node, const BuiltinTable& builtins) {
  auto& call = *static_cast<P::Built_in_funcContext&>(node).built_in_fun();
  auto& details = makeDetails<CallDetails>(node);
  node.cache.kind = NodeKind::builtInFunc;
  node.cache.name = nameOf(&call);
  details.args = expressionsOf(call);
  details.builtin = builtins.find(node.cache.name);
  details.isCommand = call.children.size() > 1 && tokenType(call.children[1]) == P::ID;
}

void addArguments(antlr4::ParserRuleContext& context, bool* hasArgs, std::vector<KeloNode*>* args) {
  KeloNode* list = childOf<P::Indices_or_func_argsContext>(context);
  *hasArgs = list != nullptr;
  if (list) *args = subscriptsOf(expressionsOf(*list));
}

ChainDetails& resolveChain(KeloNode& node) {
  auto& chain = makeDetails<ChainDetails>(node);
  node.cache.name = nameOf(&node);
  addArguments(node, &chain.hasArgs, &chain.args);
  for (ParseTree* child : node.children) {
    auto* context = exactly<P::FieldContext>(child);
    if (!context) continue;
    FieldDetails field;
    field.node = context;
    if (context->expr()) field.expression = context->expr();
    else field.name = nameOf(context);
    addArguments(*context, &field.hasArgs, &field.args);
    chain.fields.push_back(std::move(field));
  }
  return chain;
}

// ---- Statements

bool endsQuietly(antlr4::ParserRuleContext& context) {
  for (ParseTree* child : context.children) {
    auto* separator = exactly<P::Stat_separatorContext>(child);
    if (separator && separator->getStart()->getType() == P::SEMICOLON) return true;
  }
  return false;
}

void resolveStatements(KeloNode& node) {
  auto& details = makeDetails<ListDetails>(node);
  node.cache.kind = NodeKind::statList;
  for (ParseTree* child : node.children) details.nodes.push_back(ruleNode(child));
}

void resolveExpression(KeloNode& node) {
  node.cache.kind = NodeKind::expression;
  node.cache.first = expressionsOf(node)[0];
  node.cache.shows = !endsQuietly(node);
  if (exactly<P::IdContext>(node.cache.first)) node.cache.name = nameOf(node.cache.first);
}

void resolveAssignment(KeloNode& node) {
  KeloNode& assignment = *static_cast<P::AssignmentContext&>(node).var_assign();
  node.cache.kind = NodeKind::assignment;
  node.cache.shows = !endsQuietly(node);
  node.cache.first = &assignment;
  NodeCache& cache = assignment.cache;
  const auto expressions = expressionsOf(assignment);
  cache.second = expressions.back();
  cache.kind = NodeKind::assignment;
  if (exactly<P::Var_assignmentContext>(&assignment)) {
    cache.assignment = AssignmentForm::variable;
    cache.name = nameOf(&assignment);
  } else if (exactly<P::Var_list_assignmentContext>(&assignment)) {
    cache.assignment = AssignmentForm::list;
    makeDetails<ListDetails>(assignment).names = namesOf(assignment);
  } else if (exactly<P::Subarray_assignmentContext>(&assignment)) {
    cache.assignment = AssignmentForm::elements;
    cache.name = nameOf(&assignment);
    makeDetails<CallDetails>(assignment).args = subscriptsOf({expressions.begin(), expressions.end() - 1});
  } else {
    cache.assignment = AssignmentForm::chain;
    resolveChain(assignment).right = cache.second;
  }
}

void resolveLoop(KeloNode& node, NodeKind kind) {
  node.cache.kind = kind;
  node.cache.first = expressionsOf(node)[0];
  node.cache.second = childOf<P::Stat_listContext>(node);
  if (kind == NodeKind::forLoop) node.cache.name = namesOf(node)[0];
}

template <class... Contexts>
void addBranches(KeloNode& node) {
  auto& details = makeDetails<BranchDetails>(node);
  for (ParseTree* child : node.children) {
    if (!(exactly<Contexts>(child) || ...)) continue;
    KeloNode& branch = *ruleNode(child);
    const auto conditions = expressionsOf(branch);
    details.branches.push_back(
        {conditions.empty() ? nullptr : conditions[0], childOf<P::Stat_listContext>(branch), &branch});
  }
}

void resolveIf(KeloNode& node) {
  node.cache.kind = NodeKind::if_;
  addBranches<P::If_separator_stat_listContext, P::Elseif_separator_stat_listContext,
              P::Else_separator_stat_listContext>(node);
}

void resolveSwitch(KeloNode& node) {
  node.cache.kind = NodeKind::switch_;
  node.cache.first = expressionsOf(node)[0];
  addBranches<P::Case_expr_separator_stat_listContext, P::Otherwise_expr_separator_stat_listContext>(node);
}

void resolveRange(KeloNode& node) {
  node.cache.kind = NodeKind::matrixColon;
  for (KeloNode* operand : expressionsOf(node)) {
    if (node.cache.details == nullptr) makeDetails<ListDetails>(node);
    static_cast<ListDetails&>(*node.cache.details).nodes.push_back(withoutParentheses(operand));
  }
}

bool resolveExpressionNode(KeloNode& node, const BuiltinTable& builtins) {
  NodeCache& cache = node.cache;
  if (is<P::IntContext>(node) || is<P::DoubleContext>(node)) resolveNumber(node, NodeKind::number);
  else if (is<P::IdContext>(node)) cache.kind = NodeKind::id, cache.name = nameOf(&node);
  else if (is<P::BinaryOpsContext>(node)) resolveBinary(node);
  else if (is<P::UnaryOpsContext>(node)) resolveUnary(node);
  else if (is<P::ParenthesisContext>(node)) cache.kind = NodeKind::parenthesis, cache.first = expressionsOf(node)[0];
  else if (is<P::Matrix_catContext>(node)) resolveBrackets(node);
  else if (is<P::Empty_matContext>(node)) cache.kind = NodeKind::emptyMat;
  else if (is<P::Built_in_funcContext>(node)) resolveBuiltin(node, builtins);
  else if (is<P::Subarray_or_funcContext>(node)) resolveCall(node);
  else if (is<P::ImaginaryContext>(node)) resolveNumber(node, NodeKind::imaginary);
  else if (is<P::FuncHandleContext>(node)) resolveHandle(node);
  else if (is<P::Structure2Context>(node)) cache.kind = NodeKind::structure2, resolveChain(node);
  else if (is<P::Colon_exprContext>(node)) cache.kind = NodeKind::colonExpr;
  else if (is<P::End_exprContext>(node)) cache.kind = NodeKind::endExpr;
  else if (is<P::Matrix_colonContext>(node)) resolveRange(node);
  else if (is<P::CharContext>(node)) resolveChar(node);
  else if (is<P::TransposeContext>(node)) resolveTranspose(node);
  else return false;
  return true;
}

void resolveStatement(KeloNode& node) {
  NodeCache& cache = node.cache;
  if (is<P::AssignmentContext>(node)) resolveAssignment(node);
  else if (is<P::ExpressionContext>(node)) resolveExpression(node);
  else if (is<P::BreakContext>(node)) cache.kind = NodeKind::break_;
  else if (is<P::ContinueContext>(node)) cache.kind = NodeKind::continue_;
  else if (is<P::ReturnContext>(node)) cache.kind = NodeKind::return_;
  else if (is<P::Stat_listContext>(node)) resolveStatements(node);
  else if (is<P::ForLoopContext>(node)) resolveLoop(node, NodeKind::forLoop);
  else if (is<P::WhileLoopContext>(node)) resolveLoop(node, NodeKind::whileLoop);
  else if (is<P::IfContext>(node)) resolveIf(node);
  else if (is<P::SwitchContext>(node)) resolveSwitch(node);
  else cache.kind = NodeKind::none;
}

}  // namespace

void resolve(KeloNode& node, const BuiltinTable& builtins) {
  if (!resolveExpressionNode(node, builtins)) resolveStatement(node);
}

}  // namespace kelo
