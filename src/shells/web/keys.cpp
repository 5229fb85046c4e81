#include "shells/web/keys.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "platform/native/whole_file.h"

namespace kelo::web {
namespace {

using platform::native::Descriptor;

bool isOwnAlone(const Descriptor& file) {
  struct stat status;
  return file.isOpen() && fstat(file.number(), &status) == 0 && status.st_uid == geteuid() &&
         (status.st_mode & 077) == 0;
}

std::optional<Secret> secretOf(const nlohmann::json& keys, const char* name) {
  const auto found = keys.find(name);
  if (found == keys.end() || !found->is_string()) return std::nullopt;
  return Secret::fromText(found->get<std::string>());
}

}  // namespace

std::optional<Keys> readKeys(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
  if (!isOwnAlone(file)) return std::nullopt;
  const auto text = platform::native::readWholeFile(file);
  const auto keys = nlohmann::json::parse(text.value_or(""), nullptr, /*allow_exceptions=*/false);
  if (!keys.is_object()) return std::nullopt;
  const auto token = secretOf(keys, "token"), cookie = secretOf(keys, "cookie");
  const auto port = keys.find("port");
  if (!token || !cookie || port == keys.end() || !port->is_number_unsigned() || *port > 65535u) return std::nullopt;
  return Keys{*token, *cookie, port->get<int>()};
}

std::optional<std::string> writeKeys(const std::string& path, const Keys& keys) {
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  unlink(path.c_str());  // its rights would be kept
  const mode_t mask = umask(077);
  const nlohmann::json text = {{"token", keys.token.text()}, {"cookie", keys.cookie.text()}, {"port", keys.port}};
  auto fault = platform::native::replaceWholeFile(path, text.dump() + "\n");
  umask(mask);
  return fault;
}

}  // namespace kelo::web
