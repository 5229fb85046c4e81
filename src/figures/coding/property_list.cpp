// The form: a header, the objects, a table of their offsets, and 32 bytes at the end that say where
// the table stands and how wide its entries are. An object is a marker, with its type in the upper
// half and a count in the lower one, and its content; a count of 15 says that the true one follows
// as an integer.
#include "figures/coding/property_list.h"

#include <bit>
#include <cstring>

namespace kelo::figures {
namespace {

constexpr std::string_view kHeader = "bplist00";
constexpr uint64_t kTrailerBytes = 32;
constexpr uint64_t kLongCount = 15;
constexpr std::string_view kWrappedUid = "CF$UID";  // the key that stands for the type in the XML form

}  // namespace

std::optional<PropertyList> PropertyList::of(std::string_view bytes) {
  if (!bytes.starts_with(kHeader) || bytes.size() < kHeader.size() + kTrailerBytes) return std::nullopt;
  PropertyList list(bytes);
  const uint64_t trailer = bytes.size() - kTrailerBytes;
  list.offsetBytes_ = static_cast<uint8_t>(bytes[trailer + 6]);
  list.referenceBytes_ = static_cast<uint8_t>(bytes[trailer + 7]);
  list.count_ = *list.bigEndian(trailer + 8, 8);
  list.top_ = *list.bigEndian(trailer + 16, 8);
  list.table_ = *list.bigEndian(trailer + 24, 8);
  const bool hasWidths = list.offsetBytes_ >= 1 && list.offsetBytes_ <= 8 && list.referenceBytes_ >= 1 &&
                         list.referenceBytes_ <= 8;
  if (!hasWidths || list.table_ > trailer) return std::nullopt;
  if (list.count_ > (trailer - list.table_) / list.offsetBytes_) return std::nullopt;
  return list;
}

std::optional<uint64_t> PropertyList::bigEndian(uint64_t offset, uint64_t length) const {
  if (length > 8 || offset > bytes_.size() || length > bytes_.size() - offset) return std::nullopt;
  uint64_t value = 0;
  for (uint64_t k = 0; k < length; ++k) value = value << 8 | static_cast<uint8_t>(bytes_[offset + k]);
  return value;
}

std::optional<PropertyList::Content> PropertyList::content(Object object) const {
  if (object >= count_) return std::nullopt;
  const std::optional<uint64_t> offset = bigEndian(table_ + object * offsetBytes_, offsetBytes_);
  if (!offset || *offset >= bytes_.size()) return std::nullopt;
  uint64_t at = *offset;
  const auto marker = static_cast<uint8_t>(bytes_[at++]);
  Content content{static_cast<Type>(marker >> 4), marker & 15u, {}};
  if (content.count == kLongCount) {
    const std::optional<uint64_t> width = bigEndian(at, 1);
    if (!width || *width >> 4 != static_cast<uint64_t>(Type::integer)) return std::nullopt;
    const uint64_t length = uint64_t{1} << (*width & 15);
    const std::optional<uint64_t> count = bigEndian(at + 1, length);
    if (!count) return std::nullopt;
    content.count = *count;
    at += 1 + length;
  }
  content.bytes = bytes_.substr(at);
  return content;
}

std::optional<PropertyList::Content> PropertyList::content(Object object, Type type) const {
  const std::optional<Content> found = content(object);
  return found && found->type == type ? found : std::nullopt;
}

std::optional<std::string_view> PropertyList::bytesOf(Object object, Type type) const {
  const std::optional<Content> found = content(object, type);
  if (!found || found->count > found->bytes.size()) return std::nullopt;
  return found->bytes.substr(0, found->count);
}

std::optional<double> PropertyList::number(Object object) const {
  const std::optional<Content> found = content(object);
  if (!found || (found->type != Type::real && found->type != Type::integer) || found->count > 3) return std::nullopt;
  const uint64_t length = uint64_t{1} << found->count;
  if (length > found->bytes.size()) return std::nullopt;
  const uint64_t bits = *bigEndian(static_cast<uint64_t>(found->bytes.data() - bytes_.data()), length);
  if (found->type == Type::integer) return static_cast<double>(static_cast<int64_t>(bits));
  if (length == sizeof(double)) return std::bit_cast<double>(bits);
  if (length == sizeof(float)) return std::bit_cast<float>(static_cast<uint32_t>(bits));
  return std::nullopt;
}

std::optional<std::string> PropertyList::text(Object object) const {
  const std::optional<std::string_view> bytes = bytesOf(object, Type::ascii);
  return bytes ? std::optional(std::string(*bytes)) : std::nullopt;
}

std::optional<std::string_view> PropertyList::data(Object object) const { return bytesOf(object, Type::data); }

std::optional<uint64_t> PropertyList::uid(Object object) const {
  if (const std::optional<Object> wrapped = member(object, kWrappedUid)) {
    const std::optional<double> value = number(*wrapped);
    return value && *value >= 0 && *value < static_cast<double>(count_) ? std::optional(static_cast<uint64_t>(*value))
                                                                        : std::nullopt;
  }
  const std::optional<Content> found = content(object, Type::uid);
  if (!found) return std::nullopt;
  return bigEndian(static_cast<uint64_t>(found->bytes.data() - bytes_.data()), found->count + 1);
}

PropertyList::Object PropertyList::reference(const Content& content, uint64_t k) const {
  const auto begin = static_cast<uint64_t>(content.bytes.data() - bytes_.data());
  return bigEndian(begin + k * referenceBytes_, referenceBytes_).value_or(count_);
}

std::vector<PropertyList::Object> PropertyList::array(Object object) const {
  const std::optional<Content> found = content(object, Type::array);
  if (!found || found->count > found->bytes.size() / referenceBytes_) return {};
  std::vector<Object> elements(found->count);
  for (uint64_t k = 0; k < found->count; ++k) elements[k] = reference(*found, k);
  return elements;
}

/// All keys stand before all values.
std::optional<PropertyList::Object> PropertyList::member(Object dictionary, std::string_view key) const {
  const std::optional<Content> found = content(dictionary, Type::dictionary);
  if (!found || found->count > found->bytes.size() / referenceBytes_ / 2) return std::nullopt;
  for (uint64_t k = 0; k < found->count; ++k) {
    if (bytesOf(reference(*found, k), Type::ascii) == key) return reference(*found, found->count + k);
  }
  return std::nullopt;
}

}  // namespace kelo::figures
