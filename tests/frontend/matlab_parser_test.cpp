// What the parser tells its user: one message for each text or file that it refuses, at the right
// place. And what it keeps of the files that it takes.
#include "frontend/matlab_parser.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

#include "frontend/node_text.h"
#include "platform/memory_file_system.h"
#include "values/expect_failure.h"

namespace kelo {
namespace {

class MatlabParserTest : public testing::Test {
 protected:
  std::vector<std::string> complaintsOf(const std::string& text) {
    shown.clear();
    const ProgTree tree = parseText(setting, text);
    EXPECT_EQ(tree == nullptr, !shown.empty()) << text.substr(0, 100);
    return shown;
  }
  ParserBuffer buffer;
  platform::MemoryFileSystem files;
  std::vector<std::string> shown;
  ParserSetting setting{buffer, files, [this](const Message& message) { shown.push_back(message.text()); }};
};

struct Wrong {
  const char* text;
  int line;
  int column;
  const char* token;  // null: the line ends
};

const Wrong kWrong[] = {
    // clang-format off
    {"sum = 3", 1, 5, "="},                 {"1 2", 1, 3, "2"},                     {"[a b] = f()", 1, 7, "="},
    {"for k = 1:2\nx = k;", 3, 1, nullptr}, {"if a\nwhile b\nend", 4, 1, nullptr},
    {"while a\nb\n\nfunction f\n\n\n\n\n\n,", 4, 1, "function"},                    {"function", 1, 9, nullptr},
    {"function f\nend\nx = 1", 3, 1, "x"},  {"x = 1\nfunction f\nend\ny = 2", 4, 1, "y"},
    {"if x\ny\nend z", 3, 5, "z"},          {"if x\nelse\nelseif y\nend", 3, 1, "elseif"},
    {"switch x\ny", 2, 1, "y"},             {"switch x\ncase 1\ny\ncase", 4, 5, nullptr},
    {"while", 1, 6, nullptr},               {"x = 1\nend", 2, 1, "end"},            {"[1, 2", 2, 1, nullptr},
    {"[1, 2)", 1, 6, ")"},                  {"(1, 2]", 1, 3, ","},                  {"x = @", 1, 6, nullptr},
    {"x(:,) = 3", 1, 5, ")"},               {"a.1", 1, 2, ".1"},                    {"f(1)(2)", 1, 5, "("},
    {"a = 1 B2", 1, 7, "b2"},               {"x = y'z'", 1, 7, "z"},                {"x = ÉÀ", 1, 5, "é"},
    // the comma that takes the place of a blank
    {"[2 * -3]", 1, 5, ","},                {"[(1 -2]", 1, 4, ","},
    // columns count code points, line ends are of either kind
    {"x = '😀e\u0301' + )", 1, 13, ")"},     {"x = 1;\r\ny = )\r\n", 2, 5, ")"},
    {"x = 1;\r\ny =\r\nz", 2, 4, nullptr},  {"x = 1 % é\r\n% é\r\n\ty = )", 3, 6, ")"},
    // clang-format on
};

std::string messageOf(const Wrong& wrong, int linesBefore) {
  const std::string reason =
      wrong.token ? "Unexpected character \"" + std::string(wrong.token) + "\"." : "The line ends unexpectedly.";
  return "Syntax error at Line " + std::to_string(wrong.line + linesBefore) + "(" + std::to_string(wrong.column) +
         ") of the console. " + reason;
}

TEST_F(MatlabParserTest, TellsTheFirstWrongToken) {
  constexpr int kLinesBefore = 300;
  std::string before;
  for (int k = 0; k < kLinesBefore; ++k) before += "y(k) = [1 -2] + f(k, 'é').a; % é\r\n";
  for (const Wrong& wrong : kWrong) {
    EXPECT_EQ(complaintsOf(wrong.text), std::vector{messageOf(wrong, 0)});
    if (!std::string_view(wrong.text).starts_with("function")) {
      EXPECT_EQ(complaintsOf(before + wrong.text), std::vector{messageOf(wrong, kLinesBefore)});
    }
  }
}

TEST_F(MatlabParserTest, PlacesAnExpressionWhereItStandsInItsFile) {
  const ParsedText::Origin origin{Name::intern("lib/f.m"), 7, 10};
  EXPECT_EQ(parseExpression(setting, "x +\n)", origin), nullptr);
  EXPECT_EQ(shown, std::vector<std::string>{"Syntax error at Line 7(14) of f.m. The line ends unexpectedly."});
  const ExprOnlyTree tree = parseExpression(setting, "x + f(1)", origin);
  auto* sum = dynamic_cast<KeloParser::BinaryOpsContext*>(tree->children.at(0));
  ASSERT_NE(sum, nullptr);
  const KeloNode& call = *sum->expr(1);
  EXPECT_EQ(positionOf(call).line, 7);
  EXPECT_EQ(positionOf(call).charPos, 14);
  EXPECT_EQ(call.relativePath.text(), "lib/f.m");
  EXPECT_EQ(sourceText(call), "f(1)");
}

std::string repeated(const std::string& piece, int times) {
  std::string text;
  for (; times > 0; --times) text += piece;
  return text;
}

// The least stack that an interpreter has; the sanitizers' frames are several times as large.
#ifdef __SANITIZE_ADDRESS__
constexpr size_t kStackBytes = size_t{64} << 20;
#else
constexpr size_t kStackBytes = size_t{8} << 20;
#endif

void onOwnStack(std::function<void()> body) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kStackBytes);
  const auto run = [](void* function) -> void* {
    (*static_cast<std::function<void()>*>(function))();
    return nullptr;
  };
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &body), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST_F(MatlabParserTest, TellsOnceOfNestingTooDeep) {
  constexpr int n = 10000;
  const std::string texts[] = {
      repeated("(", n) + "1" + repeated(")", n),
      repeated("(", n),
      repeated("[", n) + repeated("]", n),
      repeated("[", n),
      repeated("f(", n) + repeated(")", n),
      repeated("x.(", n),
      repeated("f(1, [2 ", n),
      repeated("@() ", n) + "1",
      "x = 1 " + repeated("-", n) + "1",
      repeated("~", n),
      repeated("if x\n", n) + repeated("end\n", n),
      repeated("1:(2:", n),
  };
  for (const std::string& text : texts) {
    onOwnStack([&] { complaintsOf(text); });
    ASSERT_EQ(shown.size(), 1U) << text.substr(0, 30);
    EXPECT_TRUE(shown[0].ends_with("The text is nested too deeply.")) << text.substr(0, 30) << shown[0];
  }
}

TEST_F(MatlabParserTest, TakesWhatIsLongWithoutBeingDeep) {
  constexpr int n = 10000;
  const std::string texts[] = {
      repeated("(", 1000) + "1" + repeated(")", 1000),
      "x" + repeated("'", n),
      repeated("1+", n) + "1",
      repeated("1^-", n) + "1",
      "s" + repeated(".a(1)", n),
      "[" + repeated("1 -2;", n) + "3]",
      "if x\n" + repeated("elseif y\n", n) + "end",
      repeated("\r\n", n),
      "x = '" + repeated("é", 10 << 20) + "';",
      "% " + repeated("[", 10 << 20),
      repeated(" ", 10 << 20),
  };
  for (const std::string& text : texts) EXPECT_EQ(complaintsOf(text), std::vector<std::string>{}) << text.substr(0, 30);
}

TEST_F(MatlabParserTest, RefusesWhatIsTooLongOrNoText) {
  const std::vector<std::string> told = complaintsOf(repeated("1+", 5 << 20) + "1");
  ASSERT_EQ(told.size(), 1U);
  EXPECT_TRUE(told[0].ends_with("The text is too long."));
  for (const char* bytes : {"x = 1\xff", "'\xc3", "\xed\xa0\x80", "\xc0\x80", "x\xf4\x90\x80\x80"}) {
    EXPECT_EQ(complaintsOf(bytes),
              std::vector<std::string>{"Syntax error at Line 1(1) of the console. The text is not valid UTF-8."});
  }
  const std::string zero(1, '\0');
  EXPECT_EQ(complaintsOf("x = 1" + zero),
            std::vector{"Syntax error at Line 1(6) of the console. Unexpected character \"" + zero + "\"."});
  EXPECT_EQ(complaintsOf("\xEF\xBB\xBFx = 1"), std::vector<std::string>{});
}

TEST_F(MatlabParserTest, RefusesAFile) {
  files.writeFile("my lib/deep/wrong.m", "x = 1\ny = )");
  files.writeFile("bytes.m", "x = '\xff'");
  files.makeDirectory("folder.m");
  const auto refusal = [this](const std::string& path) { return problemOf([&] { parseFile(setting, path); }); };
  EXPECT_EQ(refusal("none.m"), "File named \"none.m\" not found in Home");
  EXPECT_EQ(refusal("my lib/deep/none.m"), "File named \"none.m\" not found in Home・my lib・deep");
  EXPECT_EQ(refusal("folder.m"), "File named \"folder.m\" not found in Home");
  EXPECT_EQ(refusal("bytes.m"), "The text is not valid UTF-8");
  EXPECT_EQ(shown, std::vector<std::string>{});
  EXPECT_EQ(refusal("my lib/deep/wrong.m"), "Syntax error found in wrong.m");
  EXPECT_EQ(shown, std::vector<std::string>{"Syntax error at Line 2(5) of wrong.m. Unexpected character \")\"."});
  EXPECT_EQ(buffer.size(), 0U);
}

TEST_F(MatlabParserTest, KeepsFilesUntilTheBufferIsEmptied) {
  files.writeFile("f.m", "function y = f(x)\ny = x;\nend\n\nfunction g\nend\n");
  files.writeFile("lib/f.m", "function h\nend");
  const ProgTree program = parseFile(setting, "f.m");
  EXPECT_NE(parseFile(setting, "lib/f.m"), program);
  files.writeFile("lib/f.m", "function k\nend");
  EXPECT_EQ(sourceText(*parseFile(setting, "lib/f.m")).substr(0, 10), "function h");
  EXPECT_EQ(parseFile(setting, "f.m"), program);

  buffer.clear();
  EXPECT_EQ(sourceText(*parseFile(setting, "lib/f.m")).substr(0, 10), "function k");
  // A tree that is held outlives its place in the buffer.
  EXPECT_EQ(sourceText(*program).substr(0, 17), "function y = f(x)");
  EXPECT_EQ(program->relativePath.text(), "f.m");
}

TEST(IsIncomplete, AsksForALineThatCouldComplete) {
  for (const char* text : {"if x", "for k = 1:2\nx", "x = [1 2", "x = [1 2\n3", "switch x\ncase 1\n", "if x, y"}) {
    EXPECT_TRUE(isIncomplete(text)) << text;
  }
  for (const char* text : {"", "x = 1", "x = )", "x =", "f(1,", "function f", "if x, )", "end", "'\xff"}) {
    EXPECT_FALSE(isIncomplete(text)) << text;
  }
}

}  // namespace
}  // namespace kelo
