// Colours: a table of texts, and the law that neither the shortened patterns nor the recolouring of
// a part give anything but what the plain patterns give when they are painted one after the other.
#include "editor/syntax_highlighter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>

#include "editor/function_names.h"
#include "editor/regex.h"
#include "messages/utf16.h"

namespace kelo {
namespace {

using SyntaxType = SyntaxHighlighter::SyntaxType;

const std::vector<std::string> kNames = {"abs", "zeros", "a(b"};  // the last is no pattern and colours nothing

/// One letter a unit: the first of the type, "E" for endIndex, "k" for the keywords that leave
/// something, "." for none.
std::string letters(const std::vector<SyntaxHighlighter::Span>& spans, int64_t length) {
  static const std::string kLetters = "nubkErrrfsc";
  std::string out(static_cast<size_t>(length), '.');
  for (const auto& span : spans) {
    for (int64_t k = 0; k < span.length; ++k) {
      out[static_cast<size_t>(span.start + k)] = kLetters[static_cast<size_t>(span.type)];
    }
  }
  return out;
}

std::string colors(SyntaxHighlighter& highlighter, const std::string& text) {
  return letters(highlighter.highlightAll(text), utf16Length(text));
}

/// The plain patterns, painted one after the other over the whole text.
class PlainPainter {
 public:
  PlainPainter() {
    const auto word = [](const std::string& text) { return R"((?<![\w.]))" + text + R"((?![\w.]))"; };
    add('n', R"(((?<!\w)(\.[0-9]+([Ee][-+]?[0-9]+)*))|((?<!\w)([0-9]+\.*[0-9]*([Ee][-+]?[0-9]+)*)))");
    add('u', R"(((https?|mailto|ftp|file)://([-\w\.]+)+(:\d+)?(/([\w/_\.]*(\?\S+)?)?)?))");
    for (const std::string& name : kNames) add('b', word(name));
    add('k', R"((?<![\(\S*])end(?![\S*\)]))");
    for (const char* one : {"do", "for", "if", "while", "switch", "else", "elseif", "case", "otherwise"}) {
      add('k', word(one));
    }
    add('E', R"((?<=[\(,:])\s*end\s*(?=[\),:]))");
    for (const char* one : {"return", "continue", "break"}) add('r', word(one));
    add('f', word("function"));
    add('s', R"((?<=[\n\r\s\[\(\,\;\+\-\*\/\=\>\<])\'([^\'\n\r]|\'{2})*\'|^\'([^\'\n\r]|\'{2})*\')");
    add('c', R"(%[^%\n\r]*)");
  }

  std::string colors(const std::string& text) const {
    const std::u16string units = toUtf16(text);
    std::string out(units.size(), '.');
    for (const auto& [letter, regex] : rules_) {
      regex.forEachMatch(
          units, 0, [&, l = letter](size_t begin, size_t end) { out.replace(begin, end - begin, end - begin, l); });
    }
    return out;
  }

 private:
  void add(char letter, const std::string& pattern) { rules_.emplace_back(letter, Regex(pattern)); }
  std::vector<std::pair<char, Regex>> rules_;
};

TEST(SyntaxHighlighter, ColoursAsTheTableSays) {
  const struct {
    const char *text, *expected;
  } kRows[] = {
      {"x = 'it''s' % note", "....sssssss.cccccc"},
      {"a' + 'b'", ".....sss"},
      {"'abs'", "sssss"},
      {"1e5 .5 3. x1", "nnn.nn.nn..."},
      {"x(end) y(1:end) end", "..EEE....n.EEE..kkk"},
      {"end; end", ".....kkk"},
      {"x( \n end , 2)", "..EEEEEEE..n."},
      {"abs absx s.abs zeros(2)", "bbb............bbbbb.n."},
      {"for if1 while", "kkk.....kkkkk"},
      {"return function", "rrrrrr.ffffffff"},
      {"s = '50% of' + 1", "....sssccccccccc"},
      {"% see http://a.bc/d?e=f", "ccccccccccccccccccccccc"},
      {"http://a.bc:80/d?e=f z", "uuuuuuuuuuuuuuuuuuuu.."},
      {"\xF0\x9D\x84\x9E = 'x'\xC3\xA9 1", ".....sss..n"},
      {"'open", "....."},
      {"", ""},
  };
  SyntaxHighlighter highlighter(kNames);
  for (const auto& row : kRows) EXPECT_EQ(colors(highlighter, row.text), row.expected) << row.text;
  SyntaxHighlighter withoutNames(std::nullopt);
  EXPECT_EQ(colors(withoutNames, "abs for"), "....kkk");
  const auto spans = highlighter.highlightAll("%a%b\n1");
  ASSERT_EQ(spans.size(), 2u);  // neighbouring comments are one span
  EXPECT_EQ(spans[0], (SyntaxHighlighter::Span{0, 4, SyntaxType::comments}));
}

TEST(SyntaxHighlighter, EditsGiveWhatTheWholeGives) {
  const std::vector<std::string> kPieces = {"'",      "''",     "\n", "\r\n",      "%",        " ", "end",  "(",
                                            ")",      ",",      ":",  "abs",       "for",      ".", "1",    "e-5",
                                            "zeros;", "x",      "\t", "http://a/", "?é",       "𝄞", "\n\n", " end ",
                                            "=",      "return", "\"", "function",  "\xC2\x85", "\r"};
  const PlainPainter plain;
  const auto seed = std::random_device{}();
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  SyntaxHighlighter highlighter(kNames);
  std::vector<std::string> pieces;
  for (int step = 0; step < 4000; ++step) {
    const size_t from = pieces.empty() ? 0 : random() % pieces.size();
    const size_t gone = std::min<size_t>(random() % 3, pieces.size() - from);
    const auto at = pieces.begin() + static_cast<ptrdiff_t>(from);
    pieces.erase(at, at + static_cast<ptrdiff_t>(gone));
    for (size_t added = random() % (pieces.size() > 80 ? 2 : 4); added > 0; --added) {
      pieces.insert(pieces.begin() + static_cast<ptrdiff_t>(from), kPieces[random() % kPieces.size()]);
    }
    std::string text;
    for (const std::string& piece : pieces) text += piece;
    ASSERT_EQ(colors(highlighter, text), plain.colors(text)) << text;
  }
}

TEST(FunctionNames, AreReadFromTheBuiltList) {
  std::ifstream file(KELO_FUNCTIONS_PLIST);
  const std::string plist((std::istreambuf_iterator<char>(file)), {});
  const auto names = readFunctionNames(plist);
  ASSERT_TRUE(names);
  EXPECT_EQ(names->front(), "Inf");
  EXPECT_TRUE(std::is_sorted(names->begin(), names->end()));
  EXPECT_TRUE(std::binary_search(names->begin(), names->end(), "zeros"));
  for (const std::string broken : {"", "<plist><string>a</string></plist>", "{", "<plist><array><integer>1"}) {
    EXPECT_EQ(readFunctionNames(broken), std::nullopt) << broken;
  }
}

}  // namespace
}  // namespace kelo
