// What is said beside an error: the messages as the console gives them, with their line.
#include "hints/hint.h"

#include <gtest/gtest.h>

#include <vector>

namespace kelo::hints {
namespace {

const std::set<std::string> kBuiltins = {"sin", "sum", "max", "zeros", "disp"};
const std::set<std::string> kVariables = {"speed", "u"};

// The message is about the character that its sentence names, or about the end of the line.
int placeIn(const std::string& sentence, const std::string& text) {
  const std::string line = text.substr(text.rfind('\n') + 1);
  const size_t quote = sentence.find('"');
  if (quote == std::string::npos) return static_cast<int>(line.size());
  const size_t found = line.rfind(sentence.substr(quote + 1, sentence.rfind('"') - quote - 1));
  return static_cast<int>(found == std::string::npos ? 0 : found);
}

std::string hint(const std::string& sentence, const std::string& text, int line = 1, double refused = 0) {
  Message message;
  message.charPos = placeIn(sentence, text);
  message.type = sentence.starts_with("Unexpected c") || sentence.starts_with("The line")
                     ? Message::MsgType::syntaxError
                     : Message::MsgType::generalError;
  message.reason = sentence;
  message.lineNum = line;
  return hintFor({message, text, kBuiltins, kVariables, refused, 18e9}).value_or("");
}

TEST(Hint, SaysWhatToDo) {
  struct Case {
    const char *sentence, *text, *expected;
    int line = 1;
  };
  const std::vector<Case> cases = {
      {"Unexpected character \".\"", "x = [1 2 ...\n3]", "a statement ends with its line"},
      {"Unexpected character \"{\"", "c = {1}", "no cell arrays"},
      {"Unexpected character \"\"\"", "x = \"a\"", "single quotes"},
      {"Unexpected character \"=\"", "s.n -= f(2)", "s.n = s.n - (what follows)"},
      {"Unexpected character \"long\"", "format long", "digits are a setting"},
      {"Unexpected character \"q\"", "global q", "no global variables"},
      {"Unexpected character \"=\"", "total += 1", "total = total + 1"},
      {"The line ends unexpectedly", "k++", "k = k + 1"},
      {"Unexpected character \",\"", "[~, i] = max([1 2])", "every output needs a name"},
      {"Unexpected character \"=\"", "[a b] = max([1 2])", "[a, b] = f(x)"},
      {"Unexpected character \"end\"", "try\nx = 1\ncatch\nend", "there is no try", 4},
      {"Command syntax (e.g. \"hold on\"", "hold on", "hold('on')"},
      {"Unexpected character \"all\"", "clear all", "clear('all')"},
      {"Unexpected character \"=\"", "sum = 3", "sum is a function"},
      {"Unexpected character \"=\"", "x = 1; sum(2) = 3", "sum is a function"},
      {"Unexpected character \";\"", "for k = 1:2\nk\nend;", "nothing may follow", 3},
      {"Unexpected character \"x\"", "if 1 x=2; end", "comma after the condition: if"},
      {"File named \"fprintf.m\" not found in Home", "fprintf(1)", "fprintf: use disp and num2str"},
      {"File named \"sni.m\" not found in Home", "sni(1)", "Did you mean sin?"},
      {"Variable or function named \"sped\" not found", "sped + 1", "Did you mean speed?"},
      {"B is expected to be a vector of 0 element", "u(:, 1) = [1; 2; 3]", "u = zeros(3, 1)"},
      {"Local function \"f\" is only accessible from the file/script that defines it", "h(2)", "file of its own"},
      {"Operands of + are expected to be numeric arrays", "1 + two(sum(1))", "[a, b] = two(...)"},
  };
  for (const Case& c : cases) {
    EXPECT_NE(hint(c.sentence, c.text, c.line).find(c.expected), std::string::npos)
        << c.text << ": " << hint(c.sentence, c.text, c.line);
  }
  EXPECT_EQ(hint("Unexpected error occurred", "x = zeros(1e6)", 1, 8e12),
            "the array needs 8 TB, at most 18 GB can be had");
}

TEST(Hint, IsSilentWhereNothingIsRecognised) {
  EXPECT_EQ(hint("Unexpected character \")\"", "x = )"), "");
  EXPECT_EQ(hint("Variable or function named \"q\" not found", "q"), "");
  EXPECT_EQ(hint("Unexpected character \")\"", "y = x(end, 1) + )"), "");
  EXPECT_EQ(hint("Unexpected character \"b\"", "if x == y, a b, end"), "");
  EXPECT_EQ(hint("Unexpected character \")\"", std::string(100'000, '\n') + "tryst = )"), "");
  EXPECT_EQ(hint("Unexpected character \"=\"", "[" + std::string(100'000, ' ') + "a b] = )"), "");
  EXPECT_EQ(hint("Unexpected character \"=\"", "", 7), "");
  EXPECT_EQ(hint("Operands of + are expected to be numeric arrays", "1 + sum(speed(1))"), "");
}

TEST(Hint, TellsOfReturnInsideWhile) {
  EXPECT_TRUE(hintBefore("while 1\nif x(end) > 2, return\nend\nend"));
  EXPECT_FALSE(hintBefore("while 1\nbreak\nend\nreturn"));
  EXPECT_FALSE(hintBefore("while 1\nfor k = 1:2\nreturn\nend\nend"));
  EXPECT_FALSE(hintBefore("disp('while return'), return"));
}

}  // namespace
}  // namespace kelo::hints
