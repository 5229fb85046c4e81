// A binary property list, read in place: an object is the number of its place in the list's table,
// and a question about one that is of another type, or beyond the bytes, has no answer. Nothing is
// built, so a list that refers to itself or to one object many times costs nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::figures {

class PropertyList {
 public:
  using Object = uint64_t;

  /// Nothing when the bytes are no binary property list. REQUIRES: they outlive the list
  static std::optional<PropertyList> of(std::string_view bytes);

  Object top() const { return top_; }
  std::optional<double> number(Object object) const;
  std::optional<std::string> text(Object object) const;  ///< ASCII only
  std::optional<std::string_view> data(Object object) const;
  std::optional<uint64_t> uid(Object object) const;
  std::vector<Object> array(Object object) const;  ///< empty for anything else
  std::optional<Object> member(Object dictionary, std::string_view key) const;

 private:
  enum class Type : uint8_t { integer = 1, real = 2, data = 4, ascii = 5, uid = 8, array = 10, dictionary = 13 };
  /// What stands after the marker of an object.
  struct Content {
    Type type;
    uint64_t count;  // of bytes, of elements; of numbers the power of 2
    std::string_view bytes;
  };

  explicit PropertyList(std::string_view bytes) : bytes_(bytes) {}
  std::optional<uint64_t> bigEndian(uint64_t offset, uint64_t length) const;
  std::optional<Content> content(Object object) const;
  std::optional<Content> content(Object object, Type type) const;
  std::optional<std::string_view> bytesOf(Object object, Type type) const;
  Object reference(const Content& content, uint64_t k) const;

  std::string_view bytes_;
  uint64_t offsetBytes_ = 0, referenceBytes_ = 0, count_ = 0, top_ = 0, table_ = 0;
};

}  // namespace kelo::figures
