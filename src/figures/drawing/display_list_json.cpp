#include "figures/drawing/display_list_json.h"

#include <cmath>

#include "figures/drawing/hundredths.h"
#include "figures/drawing/marker_outline.h"

namespace kelo::drawing {
namespace {

using Kind = DisplayList::Kind;

constexpr const char* kKinds[] = {"path", "polygon", "marker", "text", "clip", "restore"};
constexpr const char* kAnchors[] = {"start", "middle", "end"};

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    if (static_cast<unsigned char>(c) >= 0x20) result += c;  // lines are clean of the others
  }
  return result + '"';
}

std::string hex(Rgba color) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "\"#";
  for (const uint8_t channel : {color.red, color.green, color.blue, color.alpha}) {
    text += kDigits[channel >> 4];
    text += kDigits[channel & 15];
  }
  return text + '"';
}

class Writer {
 public:
  explicit Writer(const DisplayList& list) : list_(list) {}

  std::string write() {
    const Rect& area = list_.plotArea;
    out_.reserve(list_.numCoordinates() * 7 + list_.count() * 90);
    out_ = "{\"width\":";
    number(list_.size.width);
    field("height", list_.size.height);
    out_ += ",\"title\":" + quoted(list_.title) + ",\"description\":" + quoted(list_.description) + ",\"plotArea\":";
    const float corners[] = {float(area.left), float(area.top), float(area.right), float(area.bottom)};
    numbers(corners);
    out_ += ",\"items\":[";
    for (size_t i = 0; i < list_.count(); ++i) {
      if (i > 0) out_ += ',';
      item(list_[i]);
    }
    out_ += "]}";
    return std::move(out_);
  }

 private:
  void number(double value) { appendHundredths(out_, hundredths(value), true); }
  void field(const char* name, double value) {
    key(name);
    number(value);
  }
  void key(const char* name) {
    out_ += ",\"";
    out_ += name;
    out_ += "\":";
  }
  void numbers(std::span<const float> values) {
    out_ += '[';
    for (size_t i = 0; i < values.size(); ++i) {
      if (i > 0) out_ += ',';
      std::isnan(values[i]) ? void(out_ += "null") : number(values[i]);
    }
    out_ += ']';
  }

  void item(const DisplayList::Item& item) {
    out_ += "{\"kind\":\"";
    out_ += kKinds[static_cast<size_t>(item.kind)];
    out_ += "\",\"role\":\"" + item.role.text() + '"';
    if (item.kind == Kind::text) {
      text(item);
    } else if (item.kind != Kind::restore) {
      key("points");
      numbers(item.points);
      paint(item.paint);
    }
    if (item.kind == Kind::marker) marker(*item.marker);
    out_ += '}';
  }

  void paint(const Paint& paint) {
    if (paint.fill.isVisible()) key("fill"), out_ += hex(paint.fill);
    if (!paint.stroke.isVisible()) return;
    key("stroke");
    out_ += hex(paint.stroke);
    field("width", paint.width);
    if (paint.dash.count == 0) return;
    key("dash");
    numbers({paint.dash.lengths, paint.dash.count});
  }

  void text(const DisplayList::Item& item) {
    const Text& text = *item.text;
    key("text");
    out_ += quoted(text.text);
    field("x", item.points[0]);
    field("y", item.points[1]);
    field("size", text.size);
    key("anchor");
    out_ += '"' + std::string(kAnchors[static_cast<size_t>(text.anchor)]) + "\",\"baseline\":\"alphabetic\"";
    field("angle", text.angle);
    key("color");
    out_ += hex(text.color);
  }

  void marker(const MarkerShape& shape) {
    const MarkerOutline outline = markerOutline(shape);
    key("shape");
    out_ += quoted(nameOf(shape.style));
    field("size", shape.size);
    key("closed");
    out_ += outline.isClosed ? "true" : "false";
    key("outline");
    out_ += '[';
    for (const auto& piece : outline.pieces) {
      if (out_.back() != '[') out_ += ',';
      std::vector<float> points;
      for (const Vec2 p : piece) points.insert(points.end(), {float(p.x), float(p.y)});
      numbers(points);
    }
    out_ += ']';
  }

  const DisplayList& list_;
  std::string out_;
};

}  // namespace

std::string json(const DisplayList& list) { return Writer(list).write(); }

}  // namespace kelo::drawing
