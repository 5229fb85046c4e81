// Tested by tests/figures/coding_test.cpp.
#include "figures/coding/keyed_archive.h"

#include <plist/plist.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>

#include "figures/coding/property_list.h"

namespace kelo::figures {
namespace {

using Object = PropertyList::Object;

/// The objects of an archive, with the references among them followed.
class Archive {
 public:
  static std::optional<Archive> of(std::string_view bytes) {
    const std::optional<PropertyList> list = PropertyList::of(bytes);
    if (!list) return std::nullopt;
    const std::optional<Object> objects = list->member(list->top(), "$objects");
    const std::optional<Object> top = list->member(list->top(), "$top");
    if (!objects || !top) return std::nullopt;
    Archive archive(*list, list->array(*objects));
    const std::optional<Object> root = archive.member(*top, "root");
    if (!root) return std::nullopt;
    archive.root_ = *root;
    return archive;
  }

  Object root() const { return root_; }
  const PropertyList& list() const { return list_; }
  std::optional<Object> member(Object object, std::string_view key) const {
    const std::optional<Object> found = list_.member(object, key);
    return found ? followed(*found) : std::nullopt;
  }
  std::optional<Object> followed(Object object) const {
    const std::optional<uint64_t> number = list_.uid(object);
    if (!number) return object;
    return *number < objects_.size() ? std::optional(objects_[*number]) : std::nullopt;
  }
  std::optional<double> number(std::string_view key) const {
    const std::optional<Object> found = member(root_, key);
    return found ? list_.number(*found) : std::nullopt;
  }

 private:
  Archive(PropertyList list, std::vector<Object> objects) : list_(list), objects_(std::move(objects)) {}

  PropertyList list_;
  std::vector<Object> objects_;
  Object root_ = 0;
};

/// Whether the elements of an XML text are nested as little as those of an archive, which holds no
/// comments: the library goes into them by recursion.
bool isFlat(std::string_view xml) {
  static constexpr int kMostNested = 32;
  int depth = 0;
  for (size_t at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at + 1)) {
    const size_t end = xml.find('>', at);
    if (end == std::string_view::npos || xml.substr(at).starts_with("<!-") || xml.substr(at).starts_with("<![")) {
      return false;
    }
    const bool isClosed = xml[at + 1] == '/';
    const bool isWhole = xml[at + 1] == '?' || xml[at + 1] == '!' || xml[end - 1] == '/';
    depth += isClosed ? -1 : isWhole ? 0 : 1;
    if (depth > kMostNested) return false;
  }
  return true;
}

/// The binary form of a property list in XML; empty when it cannot be read. The binary form as it
/// is.
std::string binaryForm(std::string_view bytes) {
  if (!bytes.starts_with('<')) return std::string(bytes);
  if (bytes.size() > std::numeric_limits<uint32_t>::max() || !isFlat(bytes)) return "";
  plist_t list = nullptr;
  plist_from_xml(bytes.data(), static_cast<uint32_t>(bytes.size()), &list);
  const std::unique_ptr<void, decltype(&plist_free)> owned(list, plist_free);
  char* binary = nullptr;
  uint32_t length = 0;
  if (list != nullptr) plist_to_bin(list, &binary, &length);
  const std::unique_ptr<char, decltype(&std::free)> freed(binary, std::free);
  return binary != nullptr ? std::string(binary, length) : "";
}

/// The numbers in a text such as "{1.5, -2}" or "0.5 1 0".
std::vector<double> numbersIn(std::string_view text) {
  std::vector<double> numbers;
  while (!text.empty()) {
    double x = 0;
    const auto [behind, fault] = std::from_chars(text.data(), text.data() + text.size(), x);
    if (fault == std::errc()) numbers.push_back(x);
    text.remove_prefix(fault == std::errc() ? static_cast<size_t>(behind - text.data()) : 1);
  }
  return numbers;
}

std::optional<Point> boxedPoint(const Archive& archive, Object element) {
  const std::optional<Object> box = archive.followed(element);
  const std::optional<Object> value = box ? archive.member(*box, "NS.pointval") : std::nullopt;
  const std::optional<std::string> text = value ? archive.list().text(*value) : std::nullopt;
  const std::vector<double> numbers = text ? numbersIn(*text) : std::vector<double>();
  if (numbers.size() != 2) return std::nullopt;
  return Point{numbers[0], numbers[1]};
}

/// "system blue" as "systemBlueColor".
std::string archivedName(ColorRole role) {
  std::string name;
  bool isRaised = false;
  for (const char c : nameOf(role)) {
    if (c != ' ') name += isRaised ? static_cast<char>(c - 'a' + 'A') : c;
    isRaised = c == ' ';
  }
  return name + "Color";
}

std::optional<Color> namedColor(const Archive& archive) {
  const std::optional<Object> found = archive.member(archive.root(), "UISystemColorName");
  const std::optional<std::string> name = found ? archive.list().text(*found) : std::nullopt;
  if (!name) return std::nullopt;
  for (int k = 1; k <= static_cast<int>(ColorRole::clear); ++k) {
    if (archivedName(static_cast<ColorRole>(k)) == *name) return Color(static_cast<ColorRole>(k));
  }
  return std::nullopt;
}

std::optional<Color> colorOfChannels(std::array<double, 4> rgba) {
  for (double& channel : rgba) {
    if (!std::isfinite(channel)) return std::nullopt;
    channel = std::clamp(channel, 0.0, 1.0);  // wide colours lie a little outside
  }
  return Color(rgba[0], rgba[1], rgba[2], rgba[3]);
}

}  // namespace

bool isArchive(std::string_view bytes) { return bytes.starts_with("bplist") || bytes.starts_with('<'); }

std::optional<std::vector<Point>> pointsOfArchive(std::string_view bytes) {
  const std::string binary = binaryForm(bytes);
  const std::optional<Archive> archive = Archive::of(binary);
  const std::optional<Object> list = archive ? archive->member(archive->root(), "NS.objects") : std::nullopt;
  if (!list) return std::nullopt;
  std::vector<Point> points;
  for (const Object element : archive->list().array(*list)) {
    const std::optional<Point> point = boxedPoint(*archive, element);
    if (!point) return std::nullopt;
    points.push_back(*point);
  }
  return points;
}

std::optional<Color> colorOfArchive(std::string_view bytes) {
  const std::string binary = binaryForm(bytes);
  const std::optional<Archive> archive = Archive::of(binary);
  if (!archive) return std::nullopt;
  if (const std::optional<Color> named = namedColor(*archive)) return named;
  const double alpha = archive->number("UIAlpha").value_or(1);
  const auto red = archive->number("UIRed"), green = archive->number("UIGreen"), blue = archive->number("UIBlue");
  if (red && green && blue) return colorOfChannels({*red, *green, *blue, alpha});
  if (const auto white = archive->number("UIWhite")) return colorOfChannels({*white, *white, *white, alpha});
  const std::optional<Object> found = archive->member(archive->root(), "NSRGB");
  const std::optional<std::string_view> text = found ? archive->list().data(*found) : std::nullopt;
  const std::vector<double> channels = text ? numbersIn(*text) : std::vector<double>();
  if (channels.size() < 3) return std::nullopt;
  return colorOfChannels({channels[0], channels[1], channels[2], channels.size() > 3 ? channels[3] : alpha});
}

}  // namespace kelo::figures
