// The parser rules of Kelo.g4 as an independent judge: a chart parser (Earley, "An efficient
// context-free parsing algorithm", 1970) that says for any tokens how far they are the beginning of
// a valid text, and a source of random texts. Both read the rules from the grammar file and know
// nothing of how the parser decides.
#pragma once

#include <algorithm>
#include <cctype>
#include <compare>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "KeloParser.h"
#include "grammar/corpus.h"
#include "places.h"

namespace kelo {

/// Tokens are their types in KeloParser; the end of the file is kEnd.
class GrammarOracle {
 public:
  static constexpr size_t kEnd = 0;

  GrammarOracle() {
    const antlr4::dfa::Vocabulary& vocabulary = KeloParser(nullptr).getVocabulary();
    symbols_ = {{"EOF", kEnd}, {"'.'", KeloParser::T__0}};
    for (size_t type = 1; type <= vocabulary.getMaxTokenType(); ++type) {
      symbols_.emplace(vocabulary.getSymbolicName(type), type);
    }
    const std::string file = corpus::contentOf(test::testsDir() + "/../src/grammar/Kelo.g4");
    const std::regex word(R"re(//.*|\{[^}]*\}\?|\[[^\]]*\]|#\s*\w+|locals|('[^']*'|\w+|\*\?|[:;|()*+?]))re");
    const auto begin = file.begin() + static_cast<ptrdiff_t>(file.find("\nprog\n"));
    for (std::sregex_iterator at(begin, file.end(), word), end; at != end; ++at) {
      if ((*at)[1].matched) words_.push_back((*at)[1]);
    }
    while (std::islower(words_[next_].front()) != 0) readRule();  // the rules of the tokens come after
    findLengths();
  }

  /// The first token with which a text stops being the beginning of a valid one; the number of
  /// tokens for a valid one.
  size_t firstWrong(const std::vector<size_t>& tokens) const {
    std::vector<std::set<Item>> sets(tokens.size() + 1);
    for (const Body& body : bodies(symbols_.at("prog"))) sets[0].insert({symbols_.at("prog"), &body, 0, 0});
    for (size_t i = 0; i <= tokens.size(); ++i) {
      if (sets[i].empty()) return i - 1;
      std::vector<Item> open(sets[i].begin(), sets[i].end());
      const auto add = [&](const Item& item) {
        if (sets[i].insert(item).second) open.push_back(item);
      };
      while (!open.empty()) {
        const Item item = open.back();
        open.pop_back();
        if (item.isComplete()) {
          const std::vector<Item> before(sets[item.origin].begin(), sets[item.origin].end());
          for (const Item& b : before) {
            if (b.awaits(item.rule)) add(b.stepped());
          }
        } else if (const size_t symbol = item.symbol(); symbol >= kFirstRule) {
          for (const Body& body : bodies(symbol)) add({symbol, &body, 0, i});
          if (length(symbol) == 0) add(item.stepped());
        } else if (i < tokens.size() && tokens[i] == symbol) {
          sets[i + 1].insert(item.stepped());
        }
      }
    }
    return tokens.size();
  }

  /// A random text by the rules, the end of the file left out.
  std::vector<size_t> randomTokens(corpus::Random& random) const {
    std::vector<size_t> tokens;
    derive(symbols_.at("prog"), 18, random, tokens);
    std::erase(tokens, kEnd);
    return tokens;
  }

 private:
  static constexpr size_t kFirstRule = 1000;  // symbols below it are tokens
  using Body = std::vector<size_t>;

  struct Item {
    size_t rule;
    const Body* body;
    size_t dot;
    size_t origin;
    auto operator<=>(const Item&) const = default;
    bool isComplete() const { return dot == body->size(); }
    size_t symbol() const { return (*body)[dot]; }
    bool awaits(size_t s) const { return !isComplete() && symbol() == s; }
    Item stepped() const { return {rule, body, dot + 1, origin}; }
  };

  std::vector<Body>& bodies(size_t rule) { return rules_[rule - kFirstRule]; }
  const std::vector<Body>& bodies(size_t rule) const { return rules_[rule - kFirstRule]; }

  size_t newRule(std::vector<Body> bodies = {}) {
    rules_.push_back(std::move(bodies));
    return kFirstRule + rules_.size() - 1;
  }

  size_t symbolOf(const std::string& name) {
    if (!symbols_.contains(name)) symbols_.emplace(name, newRule());
    return symbols_.at(name);
  }

  void readRule() {
    const size_t rule = symbolOf(words_[next_++]);
    readAlternatives(rule);
  }

  // From the ":" or "(" before them to after the ";" or ")".
  void readAlternatives(size_t rule) {
    std::vector<Body> read(1);
    for (++next_; words_[next_] != ";" && words_[next_] != ")";) {
      if (words_[next_] == "|") {
        read.emplace_back();
        ++next_;
      } else {
        read.back().push_back(readElement());
      }
    }
    ++next_;
    bodies(rule) = std::move(read);
  }

  size_t readElement() {
    size_t element = 0;
    if (words_[next_] == "(") {
      element = newRule();
      readAlternatives(element);
    } else {
      element = symbolOf(words_[next_++]);
    }
    const std::string& suffix = words_[next_];
    if (suffix != "*" && suffix != "*?" && suffix != "+" && suffix != "?") return element;
    ++next_;
    const size_t repeated = newRule();
    const Body least = suffix == "+" ? Body{element} : Body{};
    bodies(repeated) = {least, suffix == "?" ? Body{element} : Body{repeated, element}};
    return repeated;
  }

  // The fewest tokens that each rule can be.
  void findLengths() {
    lengths_.assign(rules_.size(), 1000);
    for (bool changed = true; changed;) {
      changed = false;
      for (size_t i = 0; i < rules_.size(); ++i) {
        for (const Body& body : rules_[i]) {
          const size_t found = length(body);
          changed = changed || found < lengths_[i];
          lengths_[i] = std::min(lengths_[i], found);
        }
      }
    }
  }
  size_t length(size_t symbol) const { return symbol < kFirstRule ? 1 : lengths_[symbol - kFirstRule]; }
  size_t length(const Body& body) const {
    size_t sum = 0;
    for (const size_t symbol : body) sum += length(symbol);
    return sum;
  }

  void derive(size_t symbol, int depth, corpus::Random& random, std::vector<size_t>& tokens) const {
    if (symbol < kFirstRule) return tokens.push_back(symbol);
    const std::vector<Body>& choices = bodies(symbol);
    const auto shorter = [this](const Body& a, const Body& b) { return length(a) < length(b); };
    const Body& body = depth > 0 ? choices[corpus::below(random, choices.size())]
                                 : *std::min_element(choices.begin(), choices.end(), shorter);
    for (const size_t s : body) derive(s, depth - 1, random, tokens);
  }

  std::vector<std::string> words_;  // of the grammar file: names, literals and marks
  size_t next_ = 0;
  std::map<std::string, size_t> symbols_;
  std::vector<std::vector<Body>> rules_;
  std::vector<size_t> lengths_;
};

}  // namespace kelo
