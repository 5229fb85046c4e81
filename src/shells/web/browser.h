// The user's browser.
#pragma once

#include <string>

namespace kelo::web {

/// Opens an address in the browser, if there is one. The address holds a secret, which the list of
/// processes would show: so the browser is given a file that only the user can read, which leads
/// there.
class BrowserLaunch {
 public:
  explicit BrowserLaunch(const std::string& address);
  ~BrowserLaunch();  ///< removes the file
  BrowserLaunch(const BrowserLaunch&) = delete;
  BrowserLaunch& operator=(const BrowserLaunch&) = delete;

 private:
  std::string file_;
};

}  // namespace kelo::web
