#include "values/workspace.h"

#include "values/function_bodies.h"

namespace kelo {
namespace {
constexpr size_t kScannedNames = 12;  // up to here a scan of the names beats hashing
}

Storable* VarTable::findSlowly(Name name, uint32_t* hint) {
  if (entries_.size() > kScannedNames) {
    const auto found = index_.find(name.id());
    if (found == index_.end()) return nullptr;
    *hint = found->second;
    return &entries_[*hint].value;
  }
  for (uint32_t k = 0; k < entries_.size(); ++k) {
    if (entries_[k].name == name) {
      *hint = k;
      return &entries_[k].value;
    }
  }
  return nullptr;
}

Storable& VarTable::insert(Name name, uint32_t* hint) {
  *hint = static_cast<uint32_t>(entries_.size());
  entries_.push_back({Storable(), name});
  if (entries_.size() == kScannedNames + 1) {
    for (uint32_t k = 0; k < entries_.size(); ++k) index_[entries_[k].name.id()] = k;
  } else if (entries_.size() > kScannedNames) {
    index_[name.id()] = *hint;
  }
  return entries_.back().value;
}

bool VarTable::erase(Name name) {
  uint32_t position = 0;
  if (find(name, &position) == nullptr) return false;
  entries_.erase(entries_.begin() + position);
  index_.clear();
  if (entries_.size() > kScannedNames) {
    for (uint32_t k = 0; k < entries_.size(); ++k) index_[entries_[k].name.id()] = k;
  }
  return true;
}

void VarTable::clear() {
  entries_.clear();
  index_.clear();
}

namespace {

constexpr size_t kSpareTables = 64;

// Tables of ended calls, empty but with their room, for the next calls.
std::vector<Ref<VarTable>>& spareTables() {
  static auto* const tables = [] {  // outlives the workspaces of static objects
    auto* const made = new std::vector<Ref<VarTable>>;
    made->reserve(kSpareTables);  // so that keeping one, which destructors do, never allocates
    return made;
  }();
  return *tables;
}

Ref<VarTable> newTable() {
  auto& spare = spareTables();
  if (spare.empty()) return makeRef<VarTable>();
  Ref<VarTable> table = std::move(spare.back());
  spare.pop_back();
  return table;
}

void recycle(Ref<VarTable> table) {
  if (!table || table->isShared()) return;
  table->clear();
  if (spareTables().size() < kSpareTables) spareTables().push_back(std::move(table));
}

}  // namespace

Workspace::Workspace() : table_(newTable()) {}
Workspace::Workspace(const Workspace&) = default;
Workspace::Workspace(Workspace&&) noexcept = default;
Workspace& Workspace::operator=(Workspace other) noexcept {
  std::swap(table_, other.table_);
  std::swap(captured_, other.captured_);
  std::swap(functions_, other.functions_);
  return *this;
}
Workspace::~Workspace() { recycle(std::move(table_)); }

Workspace Workspace::over(const Workspace& captured) {
  Workspace result;
  result.functions_ = captured.functions_;
  if (!captured.captured_) {
    result.captured_ = captured.table_;
    return result;
  }
  Workspace flat = captured;
  flat.flatten();
  result.captured_ = flat.table_;
  return result;
}

Workspace Workspace::over(Ref<LocalFunctionFile> functions) {
  Workspace result;
  result.functions_ = std::move(functions);
  return result;
}

void Workspace::setFunctions(Ref<LocalFunctionFile> functions) { functions_ = std::move(functions); }

Storable& Workspace::variableSlowly(Name name, uint32_t* hint) {
  own();
  if (Storable* found = table_->find(name, hint)) return *found;
  const Storable* behind = captured_ ? captured_->find(name, hint) : nullptr;
  Storable& made = table_->insert(name, hint);
  if (behind) made = *behind;
  return made;
}

void Workspace::set(Name name, Storable value) {
  uint32_t hint = 0;
  variable(name, &hint) = std::move(value);
}

void Workspace::own() {
  if (table_->isShared()) table_ = makeRef<VarTable>(*table_);
}

void Workspace::flatten() {
  own();
  if (!captured_) return;
  for (const auto& [value, name] : captured_->entries()) {
    uint32_t hint = 0;
    if (table_->find(name, &hint) == nullptr) table_->insert(name, &hint) = value;
  }
  captured_ = {};
}

bool Workspace::erase(Name name) {
  flatten();
  return table_->erase(name);
}

void Workspace::removeLocalFunctions() {
  for (const Name name : names()) {
    const Storable* value = find(name);
    if (value && value->isLocalFunc()) erase(name);
  }
}

std::vector<Name> Workspace::names() const {
  std::vector<Name> result;
  for (const auto& entry : table_->entries()) result.push_back(entry.name);
  if (!captured_) return result;
  for (const auto& entry : captured_->entries()) {
    uint32_t hint = 0;
    if (table_->find(entry.name, &hint) == nullptr) result.push_back(entry.name);
  }
  return result;
}

WorkspaceStack::WorkspaceStack() { stack_.emplace_back(); }

bool WorkspaceStack::pop() {
  if (stack_.size() < 2) return false;
  stack_.pop_back();
  return true;
}

void WorkspaceStack::popToBase() {
  while (pop()) {
  }
}

}  // namespace kelo
