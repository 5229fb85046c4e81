// What a panel shows when an action fails: a title and a text, which may be empty. Thrown by the panels' operations and
// told to the user by the front end; the console never sees it.
#pragma once

#include <string>

namespace kelo {

struct Alert {
  std::string title;
  std::string text;
};

}  // namespace kelo
