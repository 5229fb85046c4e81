// What a panel shows when one of its actions fails.
#pragma once

#include <string>

namespace kelo {

/// Thrown by the panels' logic; the front end shows it. Nothing was changed by the action unless it
/// says so.
struct Alert {
  std::string title;
  std::string text;  ///< empty when the title says it all
};

}  // namespace kelo
