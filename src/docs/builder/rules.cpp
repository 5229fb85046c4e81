#include "docs/builder/rules.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "builtins/library.h"
#include "docs/markdown.h"

namespace kelo::docs {
namespace {

using Kind = Node::Kind;

constexpr std::array<std::string_view, 8> kSections = {"Forms",          "Arguments", "Results",  "Details",
                                                       "Special values", "Refuses",   "Examples", "See also"};

const Builtin* rowOf(const std::string& name) { return builtins::library().find(Name::intern(name)); }

bool contains(const std::vector<std::string>& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

const Entry* findPage(const std::vector<Entry>& entries, const std::string& path) {
  const auto found =
      std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return !e.isDir && e.path == path; });
  return found == entries.end() ? nullptr : &*found;
}

/// The headings of the second level and what stands under each.
struct Section {
  std::string title;
  std::vector<const Node*> nodes;
};

std::vector<Section> sectionsOf(const Node& page) {
  std::vector<Section> sections;
  for (const Node& node : page.children) {
    if (node.kind == Kind::heading && node.level == 2) {
      sections.push_back({visibleText(node), {}});
    } else if (!sections.empty()) {
      sections.back().nodes.push_back(&node);
    }
  }
  return sections;
}

class Check {
 public:
  Check(const Entry& page, const std::vector<Entry>& entries) : page_(page), entries_(entries) {}

  std::vector<std::string> faults() {
    const Node tree = parseMarkdown(page_.markdown);
    if (tree.children.empty() || tree.children[0].kind != Kind::heading || tree.children[0].level != 1) {
      fault("does not begin with a heading \"# \"");
      return std::move(faults_);
    }
    links(tree);
    if (page_.isFunction()) function(tree);
    return std::move(faults_);
  }

 private:
  void fault(const std::string& text) { faults_.push_back(text); }

  void links(const Node& node) {
    if (node.kind == Kind::link && !node.target.starts_with('#')) {
      const std::string path = linkedPath(page_, node.target);
      if (path.empty() || findPage(entries_, path) == nullptr) fault("links to no page: " + node.target);
    }
    if (node.kind == Kind::code && node.target.starts_with("kelo ") && !node.target.starts_with("kelo figure ")) {
      fault("has a fence that is neither \"```kelo\" nor \"```kelo figure WORDS\"");
    }
    for (const Node& child : node.children) links(child);
  }

  void function(const Node& tree) {
    const std::string name = page_.name();
    const Builtin* row = rowOf(name);
    if (row == nullptr) return fault("is named as no built-in function");
    if (namesIn(page_.title).front() != name) fault("has a heading that does not begin with \"# " + name + "\"");
    for (const std::string& spelling : namesIn(page_.title)) {
      if (rowOf(spelling) == nullptr) fault("has a heading with a name that is no built-in function: " + spelling);
    }
    if (tree.children.size() < 2 || tree.children[1].kind != Kind::paragraph)
      fault("has no paragraph under its heading");
    const std::vector<Section> sections = sectionsOf(tree);
    order(sections);
    needed(sections, *row);
    for (const Section& section : sections) {
      if (section.title == "Forms") forms(section);
      if (section.title == "Examples") examples(section);
      if (section.title == "See also") seeAlso(section);
    }
  }

  void order(const std::vector<Section>& sections) {
    auto place = kSections.begin();
    for (const Section& section : sections) {
      const auto found = std::find(kSections.begin(), kSections.end(), section.title);
      if (found == kSections.end()) fault("has a section of another name: " + section.title);
      else if (found < place) fault("has its section \"" + section.title + "\" too far down");
      else place = found + 1;
    }
  }

  void needed(const std::vector<Section>& sections, const Builtin& row) {
    std::vector<std::string> titles, wanted = {"Forms", "Examples", "See also"};
    for (const Section& section : sections) titles.push_back(section.title);
    if (row.inputs.most > 0) wanted.insert(wanted.end(), {"Arguments", "Refuses"});
    if (row.outputs > 0) wanted.push_back("Results");
    for (const std::string& title : wanted) {
      if (!contains(titles, title)) fault("has no section \"## " + title + "\"");
    }
  }

  void forms(const Section& section) {
    const std::vector<std::string> names = namesIn(page_.title);
    if (section.nodes.empty() || section.nodes[0]->kind != Kind::code)
      return fault("shows its forms in no block of code");
    const std::string lines = section.nodes[0]->text + "\n";
    for (size_t begin = 0, end = 0; (end = lines.find('\n', begin)) != std::string::npos; begin = end + 1) {
      const std::string form = lines.substr(begin, end - begin);
      const auto isNamed = [&](const std::string& name) { return form.find(name) != std::string::npos; };
      if (std::none_of(names.begin(), names.end(), isNamed)) fault("has a form without its name");
    }
  }

  void examples(const Section& section) {
    const auto isExample = [](const Node* node) {
      return node->kind == Kind::code && node->target.starts_with("kelo");
    };
    const auto count = std::count_if(section.nodes.begin(), section.nodes.end(), isExample);
    if (count < 1 || count > 4) fault("has " + std::to_string(count) + " examples, where one to four are wanted");
  }

  void seeAlso(const Section& section) {
    std::vector<std::string> names;
    for (const Node* node : section.nodes) collectCode(*node, names);
    if (names.empty()) fault("names nothing under \"See also\"");
    for (const std::string& name : names) {
      if (rowOf(name) == nullptr || page_.isPageOf(name)) fault("names no other function under \"See also\": " + name);
    }
  }

  static void collectCode(const Node& node, std::vector<std::string>& names) {
    if (node.kind == Kind::inlineCode) names.push_back(node.text);
    for (const Node& child : node.children) collectCode(child, names);
  }

  const Entry& page_;
  const std::vector<Entry>& entries_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> faultsOf(const Entry& page, const std::vector<Entry>& entries) {
  return Check(page, entries).faults();
}

std::string linkedPath(const Entry& page, const std::string& target) {
  const std::string file = target.substr(0, target.find('#'));
  if (!file.ends_with(".md")) return "";
  const auto path = std::filesystem::path(page.folder() + file).lexically_normal().generic_string();
  return path.substr(0, path.size() - 3);
}

std::vector<std::string> namesWithoutPage(const std::vector<Entry>& entries) {
  std::vector<std::string> names;
  for (const Builtin* row : builtins::library().rows()) {
    const auto isPage = [&](const Entry& entry) { return entry.isPageOf(row->name); };
    if (std::none_of(entries.begin(), entries.end(), isPage)) names.push_back(row->name);
  }
  return names;
}

}  // namespace kelo::docs
