// Reads records by their lists of fields: every key must be there, unknown ones are passed over,
// and what a record promises is checked after it.
#pragma once

#include "figures/coding/encoder.h"
#include "figures/coding/json_reader.h"

namespace kelo::figures {

/// The greatest ordinal of an enumeration.
template <class T> inline constexpr int64_t kLastOrdinal = -1;
template <> inline constexpr int64_t kLastOrdinal<Line::Style> = static_cast<int64_t>(Line::Style::undefined);
template <> inline constexpr int64_t kLastOrdinal<Marker::Style> = static_cast<int64_t>(Marker::Style::none);
template <> inline constexpr int64_t kLastOrdinal<PlotStyle> = static_cast<int64_t>(PlotStyle::Stem);
template <>
inline constexpr int64_t kLastOrdinal<Legend::Position> = static_cast<int64_t>(Legend::Position::bottomRight);
template <> inline constexpr int64_t kLastOrdinal<SurfData::Surface::Attributes::Types> = 0;

class Decoder {
 public:
  explicit Decoder(std::string_view text) : in_(text) {}
  void finish() { in_.finish(); }

  void read(double& x) { x = in_.number(); }
  void read(float& x) { x = in_.numberAsFloat(); }
  void read(int64_t& n) { n = in_.integer(); }
  void read(bool& b) { b = in_.boolean(); }
  void read(std::string& text) { text = in_.string(); }
  void read(ByteString& data) { data.bytes = bytes(); }
  void read(FigureId&) { in_.skip(); }
  /// A colour in an archive that yields none keeps the default that it has.
  void read(Color& color) {
    if (const auto coded = decodedColor(bytes())) color = *coded;
  }
  template <class T>
    requires std::is_enum_v<T>
  void read(T& value) {
    const int64_t ordinal = in_.integer();
    if (ordinal < 0 || ordinal > kLastOrdinal<T>) in_.fail("an unknown ordinal");
    value = static_cast<T>(ordinal);
  }
  template <class T>
  void read(std::optional<T>& value) {
    value.reset();
    if (!in_.takeNull()) read(value.emplace());
  }
  template <class T>
  void read(std::vector<T>& values) {
    values.clear();
    in_.array([&] { read(values.emplace_back()); });
  }
  void read(Points& points);
  void read(SharedPoints<SCNVector3>& points);
  void read(Point& point);

  template <Record T>
  void read(T& record) {
    uint32_t missing = requiredKeys<T>();
    in_.object([&](std::string_view key) {
      if (!readMember(record, key, missing)) in_.skip();
    });
    if (missing != 0) in_.fail("a key is missing in what ends");
    check(record);
  }

  /// Throws for a record that breaks a promise.
  template <class T> void check(const T&) const {}
  void check(const Limits& limits) const;
  void check(const SurfData::Surface& surface) const;
  void check(const FigureData& data) const;

 private:
  template <class T>
  static constexpr uint32_t requiredKeys() {
    uint32_t keys = 0, bit = 1;
    const auto add = [&]<class Value>(Value T::*) {
      if (!std::is_same_v<Value, FigureId>) keys |= bit;
      bit <<= 1;
    };
    std::apply([&](const auto&... field) { (add(field.member), ...); }, Fields<T>::list);
    return keys;
  }

  /// False when the key is unknown.
  template <class T>
  bool readMember(T& record, std::string_view key, uint32_t& missing) {
    uint32_t bit = 1;
    const auto tryField = [&](const auto& field) {
      if (key == field.key) {
        read(record.*field.member);
        missing &= ~bit;
        return true;
      }
      bit <<= 1;
      return false;
    };
    return std::apply([&](const auto&... field) { return (tryField(field) || ...); }, Fields<T>::list);
  }

  std::string bytes();
  template <class T> std::vector<T> pointList();

  JsonReader in_;
  int64_t pointsLeft_ = kMostCodedPoints;
};

}  // namespace kelo::figures
