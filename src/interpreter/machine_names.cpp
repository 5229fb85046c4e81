// Names and where their values are.
//
// Each frame with a workspace of its own may have overlays on it: scripts and texts that run in
// that workspace. A name is looked for from the top: the first unit that mentions it has it in its
// slot, and is the only one whose slot counts; a name that none of them mentions is in the table
// beside the lowest of them, for the console in the base workspace.
#include <algorithm>

#include "grammar/kelo_node.h"
#include "interpreter/environment.h"
#include "interpreter/machine.h"

namespace kelo {

Workspace* Machine::tableOf(size_t frame) {
  return frame == kBelowAll ? &app_.baseWorkspace : frames_[frame].more.get();
}

// The value of a name at this frame or below; null where there is none.
Storable* Machine::find(size_t at, Name name) {
  while (true) {
    if (at == kBelowAll) break;
    Frame& frame = frames_[at];
    if (const int32_t slot = frame.code->slotOf(name); slot >= 0) {
      return frame.base[slot].isNone() ? nullptr : &frame.base[slot];
    }
    if (!frame.isOverlay) break;
    at = at == 0 ? kBelowAll : at - 1;
  }
  Workspace* table = tableOf(at);
  return table ? table->find(name) : nullptr;
}

// Gives a name a value, or takes the one away that it has.
void Machine::set(size_t at, Name name, Storable value) {
  while (at != kBelowAll) {
    Frame& frame = frames_[at];
    if (const int32_t slot = frame.code->slotOf(name); slot >= 0) {
      frame.base[slot] = std::move(value);
      return;
    }
    if (!frame.isOverlay) break;
    at = at == 0 ? kBelowAll : at - 1;
  }
  if (value.isNone()) {
    if (Workspace* table = tableOf(at)) table->erase(name);
    return;
  }
  if (at != kBelowAll && !frames_[at].more) frames_[at].more = std::make_unique<Workspace>();
  tableOf(at)->set(name, std::move(value));
}

// The slots of the overlay on top, filled from below.
void Machine::takeNames() {
  const Frame& top = frame();
  const size_t below = frames_.size() == 1 ? kBelowAll : frames_.size() - 2;
  for (size_t k = 0; k < top.code->slots.size(); ++k) {
    if (Storable* value = find(below, top.code->slots[k])) top.base[k] = std::move(*value);
  }
}

void Machine::giveNamesBack() {
  const Frame& top = frame();
  const size_t below = frames_.size() == 1 ? kBelowAll : frames_.size() - 2;
  for (size_t k = 0; k < top.code->slots.size(); ++k) set(below, top.code->slots[k], std::move(top.base[k]));
}

// In the table that this frame gives names back to.
void Machine::makeRoom(size_t at, size_t names) {
  while (at != kBelowAll && frames_[at].isOverlay) at = at == 0 ? kBelowAll : at - 1;
  if (at != kBelowAll && !frames_[at].more) frames_[at].more = std::make_unique<Workspace>();
  tableOf(at)->makeRoom(names);
}

std::vector<Name> Machine::names() {
  std::vector<Name> candidates;
  size_t at = frames_.size() - 1;
  while (at != kBelowAll) {
    const auto& slots = frames_[at].code->slots;
    candidates.insert(candidates.end(), slots.begin(), slots.end());
    if (!frames_[at].isOverlay) break;
    at = at == 0 ? kBelowAll : at - 1;
  }
  if (const Workspace* table = tableOf(at)) {
    const auto more = table->names();
    candidates.insert(candidates.end(), more.begin(), more.end());
  }
  std::sort(candidates.begin(), candidates.end(), [](Name a, Name b) { return a.id() < b.id(); });
  candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
  std::erase_if(candidates, [&](Name name) { return find(name) == nullptr; });
  return candidates;
}

std::vector<Name> Machine::variables() {
  std::vector<Name> result = names();
  std::erase_if(result, [&](Name name) { return find(name)->isLocalFunc(); });
  return result;
}

void Machine::clearVariable(Name name) { set(frames_.size() - 1, name, Storable::none()); }

std::unique_ptr<Workspace> Machine::copyOfVariables() {
  auto copy = std::make_unique<Workspace>();
  for (const Name name : names()) copy->set(name, *find(name));
  return copy;
}

std::optional<LocalFunction> Machine::findLocalFunction(Name name) {
  if (const Storable* value = find(name); value && value->isLocalFunc()) return *value->localFunc();
  LocalFunctionFile* functions = frame().functions;
  const int64_t index = functions ? functions->indexOf(name) : -1;
  if (index < 0) return std::nullopt;
  functions->retain();
  return LocalFunction(Ref<LocalFunctionFile>::adopt(functions), index);
}

bool Machine::isAccessible(const LocalFunction& function, const KeloNode& caller) const {
  return function.file()->url == caller.relativePath;
}

}  // namespace kelo
