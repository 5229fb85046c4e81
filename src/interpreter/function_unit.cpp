#include "interpreter/function_unit.h"

#include "interpreter/visitor.h"

namespace kelo {

// Inputs take the first slots and outputs the next; a name that is both stands among the inputs.
const Code& FunctionUnit::code(bool areGiven, const BuiltinTable& builtins) {
  std::unique_ptr<Code>& code = areGiven ? given_ : cautious_;
  if (!code) {
    code = Visitor::lowerStatements(body, inputs, outputs, areGiven, builtins);
    for (const Name name : outputs) code->outputs.push_back(code->slotOf(name));
    if (outputs.size() == 1) code->onlyOutput = code->outputs.front();
  }
  return *code;
}

}  // namespace kelo
