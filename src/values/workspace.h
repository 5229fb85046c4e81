// Workspaces: where variables live.
//
// A workspace is a table of its own, an optional captured table behind it that is only read (the variables a handle was
// made with), and an optional list of local functions behind both. Starting one as the copy of a handle's therefore
// copies nothing; capturing the running workspace shares its table, and the next write to it takes a copy. Looking a
// name up takes a hint, kept by the caller: where the name stood last time.
#pragma once

#include <unordered_map>
#include <vector>

#include "values/storable.h"

namespace kelo {

/// Names and values, in the order of their making.
class VarTable : public CountedObject {
 public:
  struct Entry {
    Storable value;
    Name name;
  };

  VarTable() = default;
  explicit VarTable(const VarTable& other) : CountedObject(), entries_(other.entries_), index_(other.index_) {}

  /// The value of a name or null. *hint: where to look first; updated. Valid until the next insertion.
  Storable* find(Name name, uint32_t* hint) {
    Entry* const hinted = entries_.data() + *hint;
    if (hinted < entries_.data() + entries_.size() && hinted->name == name) return &hinted->value;
    return findSlowly(name, hint);
  }
  Storable& insert(Name name, uint32_t* hint);  ///< REQUIRES: the name is not there
  bool erase(Name name);
  void clear();
  const std::vector<Entry>& entries() const { return entries_; }

 private:
  Storable* findSlowly(Name name, uint32_t* hint);

  std::vector<Entry> entries_;
  std::unordered_map<uint32_t, uint32_t> index_;  // of the names, once there are many
};

class Workspace {
 public:
  Workspace();
  Workspace(const Workspace&);  ///< shares the table until one side writes
  Workspace(Workspace&&) noexcept;
  Workspace& operator=(Workspace) noexcept;
  ~Workspace();

  /// An empty workspace that sees the captured variables, or a file's local functions, behind its own.
  static Workspace over(const Workspace& captured);
  static Workspace over(Ref<LocalFunctionFile> functions);

  /// A variable for reading, or null. Local functions of the file behind are not variables: see localFunction.
  const Storable* find(Name name, uint32_t* hint) const {
    if (const Storable* own = table_->find(name, hint)) return own;
    return captured_ ? captured_->find(name, hint) : nullptr;
  }
  const Storable* find(Name name) const { uint32_t hint = 0; return find(name, &hint); }
  /// The variable of this name for writing, made (an empty double) if it is missing.
  Storable& variable(Name name, uint32_t* hint) {
    if (!table_->isShared()) {
      if (Storable* own = table_->find(name, hint)) return *own;
    }
    return variableSlowly(name, hint);
  }
  void set(Name name, Storable value);
  bool erase(Name name);
  /// Removes every local function that was entered as a variable.
  void removeLocalFunctions();
  /// The names of all variables that can be read here, in no particular order; local functions included.
  std::vector<Name> names() const;

  /// The file functions behind the variables; may be null.
  const Ref<LocalFunctionFile>& functions() const { return functions_; }
  void setFunctions(Ref<LocalFunctionFile> functions);

 private:
  Storable& variableSlowly(Name name, uint32_t* hint);
  void own();      // makes the table this workspace's alone
  void flatten();  // brings the captured table's variables into the own one

  Ref<VarTable> table_;
  Ref<VarTable> captured_;
  Ref<LocalFunctionFile> functions_;
};

/// The frames of the running functions. The base workspace is never removed; top is where every name is read and
/// written.
class WorkspaceStack {
 public:
  WorkspaceStack();
  Workspace& top() { return stack_.back(); }
  Workspace& base() { return stack_.front(); }
  int64_t depth() const { return static_cast<int64_t>(stack_.size()); }
  void push(Workspace workspace) { stack_.push_back(std::move(workspace)); }
  /// Removes the top workspace; false, and nothing changes, when only the base is left.
  bool pop();
  void popToBase();

 private:
  std::vector<Workspace> stack_;
};

}  // namespace kelo
