// The on-screen keyboard. Its state travels with each press, so that every front end has its own.
#include "keyboard/keyboard_view_controller.h"
#include "session/methods.h"

namespace kelo::session {
namespace {

using Type = KeyboardViewController::KeyboardType;

Json keyJson(const KeyboardViewController::Key& key) {
  Json json = {{"id", nameOf(key.id)}};
  if (key.info.char_) json["char"] = *key.info.char_;
  if (key.info.textStates) json["text"] = key.info.textStates->normal.displayText;
  if (key.info.imageStates) json["image"] = key.info.imageStates->normal.imageName;
  json["widthUnit"] = key.info.widthUnit;
  if (!key.info.longPress.empty()) json["longPress"] = key.info.longPress;
  return json;
}

Json layoutJson(Type type) {
  Json rows = Json::array();
  for (const auto& row : KeyboardViewController::rows(type)) {
    Json keys = Json::array();
    for (const auto& key : row) keys.push_back(keyJson(key));
    rows.push_back(std::move(keys));
  }
  return rows;
}

std::optional<Json> layouts(const Call&) {
  Json all;
  for (const Type type : {Type::alpha, Type::alphaCap, Type::symbol}) all[std::string(nameOf(type))] = layoutJson(type);
  return all;
}

std::optional<Json> press(const Call& call) {
  const std::optional<KeyIdentifier> key = keyNamed(call.text("key"));
  if (!key) throw wrongParameter("key", "the id of a key");
  KeyboardViewController keyboard;
  keyboard.keyboardType = *keyboardTypeNamed(call.text("keyboardType"));
  keyboard.capLocked = call.params.at("capLocked").get<bool>();
  const KeyboardViewController::Effect effect = keyboard.press(*key, *tapNamed(call.text("tap")));
  Json result = {{"keyboardType", nameOf(keyboard.keyboardType)}, {"capLocked", keyboard.capLocked}};
  if (effect.insert) result["insert"] = *effect.insert;
  if (effect.action) result["action"] = *effect.action == KeyAction::enter ? "enter" : "deleteBackward";
  return result;
}

}  // namespace

std::vector<Method> keyboardMethods() {
  return {
      {"keyboard/layouts", {}, layouts, "{alpha: [[key]], alphaCap, symbol}",
       "The rows of keys, each {id, char, text, image, widthUnit, longPress} as far as it has them"},
      {"keyboard/press",
       {{"keyboardType", Kind::text, true, "alpha|alphaCap|symbol"},
        {"capLocked", Kind::truth},
        {"key", Kind::text},
        {"tap", Kind::text, true, "single|double|long"}},
       press, "{keyboardType, capLocked, insert, action}", "What a press does to the keyboard and to the text"},
  };
}

}  // namespace kelo::session
