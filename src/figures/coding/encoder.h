// Writes records by their lists of fields.
#pragma once

#include <concepts>
#include <utility>

#include "figures/coding/base64.h"
#include "figures/coding/color_coding.h"
#include "figures/coding/coded_form.h"
#include "figures/coding/fields.h"

namespace kelo::figures {

template <class T>
concept Record = requires { Fields<T>::list; };

class Encoder {
 public:
  explicit Encoder(NonFinite nonFinite) : out_(nonFinite) {}
  std::string take() { return out_.take(); }

  void write(double x) { out_.number(x); }
  void write(float x) { out_.number(x); }
  void write(int64_t n) { out_.integer(n); }
  void write(bool b) { out_.boolean(b); }
  void write(const std::string& text) { out_.string(text); }
  void write(const ByteString& data) { out_.string(base64Of(data.bytes)); }
  void write(const FigureId& id) { out_.string(id.text); }
  void write(const Color& color) { out_.string(base64Of(codedColor(color))); }
  template <class T>
    requires std::is_enum_v<T>
  void write(T value) {
    out_.integer(static_cast<int64_t>(value));
  }
  template <class T>
  void write(const std::optional<T>& value) {
    if (value)
      write(*value);
    else
      out_.null();
  }
  template <class T>
  void write(const std::vector<T>& values) {
    writeList(values);
  }
  template <class T>
  void write(const SharedPoints<T>& points) {
    constexpr size_t kUsualBytes = 40;  // of the text of a point
    out_.reserve(static_cast<size_t>(points.size()) * kUsualBytes);
    writeList(points);
  }
  void write(const Point& point) {
    out_.mark('[');
    out_.number(point.x);
    out_.mark(',');
    out_.number(point.y);
    out_.mark(']');
  }
  template <Record T>
  void write(const T& record) {
    char before = '{';
    const auto member = [&](const auto& field) {
      out_.mark(before);
      before = ',';
      out_.string(field.key);
      out_.mark(':');
      write(record.*field.member);
    };
    std::apply([&](const auto&... field) { (member(field), ...); }, Fields<T>::list);
    out_.mark('}');
  }

 private:
  template <class List>
  void writeList(const List& values) {
    out_.mark('[');
    bool isFirst = true;
    for (const auto& value : values) {
      if (!std::exchange(isFirst, false)) out_.mark(',');
      write(value);
    }
    out_.mark(']');
  }

  JsonWriter out_;
};

}  // namespace kelo::figures
