// The table of all methods, joined of the groups' tables.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/method.h"

namespace kelo::session {

/// All methods, in the order of their groups.
const std::vector<Method>& methods();
/// Null when there is no such method.
const Method* findMethod(std::string_view name);
/// The reference of all methods, as Markdown.
std::string methodReference();

// The groups, each in a source of its name.
std::vector<Method> sessionMethods();
std::vector<Method> consoleMethods();
std::vector<Method> workspaceMethods();
std::vector<Method> editorMethods();
std::vector<Method> keyboardMethods();
std::vector<Method> filesMethods();
std::vector<Method> figureMethods();
std::vector<Method> docsMethods();

}  // namespace kelo::session
