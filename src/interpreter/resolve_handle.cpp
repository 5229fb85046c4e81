// Handles: what their bodies are, and which names they mention.
#include "interpreter/resolve_handle.h"

#include <algorithm>
#include <set>

#include "frontend/node_text.h"
#include "interpreter/node_parts.h"
#include "messages/catalogue/interpreter.h"

namespace kelo {
namespace {

using antlr4::tree::ParseTree;
using P = KeloParser;

// Adds the names that a tree mentions, for the handle to capture; one that stands without arguments
// may be a script, which sees all variables. `bound` are the inputs of the handles around the tree.
void addMentioned(ParseTree* tree, std::vector<Name>& bound, HandleBody& body) {
  const size_t outer = bound.size();
  if (auto* handle = exactly<P::Func_handleContext>(tree); handle && handle->expr()) {
    const auto inputs = namesOf(*handle);
    for (auto* name : handle->id_names()) addMentioned(name, bound, body);  // a call that leaves it out sees a variable
    bound.insert(bound.end(), inputs.begin(), inputs.end());
    addMentioned(handle->expr(), bound, body);
    bound.resize(outer);
    return;
  }
  if (auto* names = exactly<P::Id_namesContext>(tree)) {
    const Name name = nameOf(names);
    if (std::find(bound.begin(), bound.end(), name) != bound.end()) return;
    size_t k = std::find(body.captured.begin(), body.captured.end(), name) - body.captured.begin();
    if (k == body.captured.size()) {
      body.captured.push_back(name);
      body.mayBeScript.push_back(false);
    }
    if (exactly<P::IdContext>(names->parent)) body.mayBeScript[k] = true;
  } else if (auto* call = exactly<P::Built_in_funContext>(tree)) {
    static const std::set<std::string> lookAround = {"clear", "input", "nargin", "nargout", "who"};
    body.capturesAll = body.capturesAll || lookAround.contains(call->getStart()->getText());
  }
  for (ParseTree* child : tree->children) addMentioned(child, bound, body);
}

// The body of "@(INPUTS) EXPRESSION". Its text runs from "@" to the end of the expression, as
// typed.
Ref<HandleBody> bodyOf(P::Func_handleContext& handle, Name path) {
  auto body = makeRef<HandleBody>();
  const TextPosition position = positionOf(*handle.expr());
  body->inputArgs = namesOf(handle);
  body->expression = sourceText(*handle.expr());
  body->displayText = sourceText(handle);
  body->exprLineNum = position.line;
  body->exprCharPos = position.charPos;
  body->relativePath = path;
  std::vector<Name> bound = body->inputArgs;
  addMentioned(handle.expr(), bound, *body);
  return body;
}

bool hasOneTwice(const std::vector<Name>& names) {
  for (auto name = names.begin(); name != names.end(); ++name) {
    if (std::find(names.begin(), name, *name) != name) return true;
  }
  return false;
}

}  // namespace

void resolveHandle(KeloNode& node) {
  auto& handle = *static_cast<P::FuncHandleContext&>(node).func_handle();
  auto& details = makeDetails<HandleDetails>(node);
  node.cache.kind = NodeKind::funcHandle;
  if (handle.BUILT_IN_FUNC() || (!handle.LPAR() && !handle.id_names().empty())) {
    details.form = handle.BUILT_IN_FUNC() ? HandleDetails::Form::builtIn : HandleDetails::Form::name;
    node.cache.name = Name::intern(handle.children[1]->getText());
    return;
  }
  details.form = HandleDetails::Form::anonymous;
  details.body = bodyOf(handle, node.relativePath);
  if (hasOneTwice(details.body->inputArgs)) details.problem = problem(text::kDuplicatedArguments);
}

}  // namespace kelo
