// The tree is walked without recursion: a sum of many terms is as deep as it is long. Tested by
// tests/frontend/parse_test.cpp, which compares trees in this form, and by
// tests/terminal/program_test.sh.
#include "frontend/parse_listing.h"

#include <cxxabi.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <typeinfo>
#include <vector>

#include "KeloLexer.h"
#include "frontend/matrix_separators.h"
#include "frontend/source_text.h"
#include "grammar/scanner.h"

namespace kelo {
namespace {

using antlr4::tree::ParseTree;

// Nodes further down stand no further to the right, so that deep trees stay printable.
constexpr size_t kDeepestIndent = 50;

std::string inQuotes(std::string_view text) {
  std::string out = "\"";
  for (const char c : text) {
    switch (c) {
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default: out += c;
    }
  }
  return out + '"';
}

std::string kindOf(const ScannedToken& token) {
  static const antlr4::dfa::Vocabulary vocabulary = [] {
    SourceText none(U"", nullptr);
    return KeloLexer(&none).getVocabulary();
  }();
  const size_t type = token.type == static_cast<uint32_t>(antlr4::Token::EOF) ? antlr4::Token::EOF : token.type;
  const std::string symbol(vocabulary.getSymbolicName(type));
  return symbol.empty() ? vocabulary.getDisplayName(type) : symbol;
}

// "kelo::KeloParser::IfContext" is an "If".
std::string className(const ParseTree& node) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> full(
      abi::__cxa_demangle(typeid(node).name(), nullptr, nullptr, &status), &std::free);
  std::string name = status == 0 ? full.get() : typeid(node).name();
  name.erase(0, name.rfind(':') + 1);
  constexpr std::string_view kSuffix = "Context";
  if (name.ends_with(kSuffix)) name.resize(name.size() - kSuffix.size());
  return name;
}

bool isToken(const ParseTree* node) { return dynamic_cast<const antlr4::tree::TerminalNode*>(node) != nullptr; }

}  // namespace

std::string tokenListing(std::string_view bytes) {
  const std::optional<std::u32string> decoded = decodeUtf8(bytes);
  if (!decoded) return "";
  const std::u32string text = *decoded + U'\n';
  std::vector<ScannedToken> tokens = scanTokens(text);
  insertMatrixElementSeparators(tokens);
  std::string out;
  for (const ScannedToken& token : tokens) {
    if (token.isHidden()) continue;
    const std::u32string_view spelling = std::u32string_view(text).substr(token.start, token.end - token.start);
    out += fmt::format("{:>5}:{:<4} {:<14} {}\n", token.line, token.charPositionInLine + 1, kindOf(token),
                       inQuotes(encodeUtf8(spelling)));
  }
  return out;
}

std::string treeListing(ParseTree& root) {
  struct Step {
    ParseTree* node;
    size_t depth;
  };
  std::string out;
  std::vector<Step> open{{&root, 0}};
  while (!open.empty()) {
    const Step step = open.back();
    open.pop_back();
    out.append(2 * std::min(step.depth, kDeepestIndent), ' ');
    const auto& children = step.node->children;
    const bool isFlat = std::all_of(children.begin(), children.end(), isToken);
    out += isToken(step.node) ? inQuotes(step.node->getText()) : className(*step.node);
    if (isFlat) {
      for (ParseTree* child : children) out += " " + inQuotes(child->getText());
    } else {
      for (size_t k = children.size(); k-- > 0;) open.push_back({children[k], step.depth + 1});
    }
    out += '\n';
  }
  return out;
}

}  // namespace kelo
