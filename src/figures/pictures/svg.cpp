// Neighbouring items of one role make one group; in it, neighbouring items of one paint make one
// path.
#include "figures/pictures/svg.h"

#include <algorithm>

#include "figures/drawing/hundredths.h"
#include "figures/drawing/marker_outline.h"
#include "figures/pictures/svg_path.h"

namespace kelo::pictures {
namespace {

using drawing::DisplayList;
using drawing::hundredths;
using drawing::hundredthsText;
using drawing::Paint;
using drawing::Rgba;
using drawing::Vec2;
using Kind = DisplayList::Kind;
using Item = DisplayList::Item;

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&': result += "&amp;"; break;
      case '<': result += "&lt;"; break;
      case '>': result += "&gt;"; break;
      case '"': result += "&quot;"; break;
      default: result += c;
    }
  }
  return result;
}

std::string hex(Rgba color) {
  static constexpr char kDigits[] = "0123456789abcdef";
  const uint8_t channels[] = {color.red, color.green, color.blue};
  std::string text = "#";
  const bool isShort = std::all_of(channels, channels + 3, [](uint8_t c) { return c >> 4 == (c & 15); });
  for (const uint8_t channel : channels) {
    text += kDigits[channel >> 4];
    if (!isShort) text += kDigits[channel & 15];
  }
  return text;
}

void attribute(std::string& out, const char* name, const std::string& value) {
  out += ' ';
  out += name;
  out += "=\"" + value + "\"";
}

void color(std::string& out, const char* name, Rgba color) {
  if (!color.isVisible()) return attribute(out, name, "none");
  attribute(out, name, hex(color));
  if (color.alpha < 255) attribute(out, (std::string(name) + "-opacity").c_str(), hundredthsText(color.alpha / 255.0));
}

/// `sharedWidth`: that of the group, which need not be said again.
std::string paintAttributes(const Paint& paint, float sharedWidth) {
  std::string out;
  color(out, "fill", paint.fill);
  if (!paint.stroke.isVisible()) return out;
  color(out, "stroke", paint.stroke);
  if (hundredths(paint.width) != hundredths(sharedWidth)) attribute(out, "stroke-width", hundredthsText(paint.width));
  if (paint.dash.count == 0) return out;
  std::string dashes;
  for (int i = 0; i < paint.dash.count; ++i) dashes += (i ? " " : "") + hundredthsText(paint.dash.lengths[i]);
  attribute(out, "stroke-dasharray", dashes);
  return out;
}

class Writer {
 public:
  explicit Writer(const DisplayList& list) : list_(list) {}

  std::string write() {
    head();
    for (size_t i = 0; i < list_.count();) i = group(i);
    out_ += "</svg>\n";
    return std::move(out_);
  }

 private:
  void head() {
    const std::string width = hundredthsText(list_.size.width), height = hundredthsText(list_.size.height);
    out_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
           "\" viewBox=\"0 0 " + width + " " + height +
           "\" role=\"img\" font-family=\"DejaVu Sans,Verdana,sans-serif\"" + " stroke-linejoin=\"round\">\n";
    out_ += "<title>" + escaped(list_.title) + "</title>\n<desc>" + escaped(list_.description) + "</desc>\n";
  }

  /// Writes the items from i on that share a role and gives the next one.
  size_t group(size_t i) {
    const Item first = list_[i];
    if (first.kind == Kind::clip) return openClip(first), i + 1;
    if (first.kind == Kind::restore) return out_ += "</svg>\n", i + 1;
    std::string name = first.role.text();
    std::replace(name.begin(), name.end(), ' ', '-');
    out_ += "<g class=\"" + name + "\"";
    const bool isText = first.kind == Kind::text;
    if (isText) shareText(*first.text);
    sharedWidth_ = first.paint.stroke.isVisible() ? first.paint.width : 1;
    if (hundredths(sharedWidth_) != 100) attribute(out_, "stroke-width", hundredthsText(sharedWidth_));
    out_ += ">\n";
    while (i < list_.count()) {
      const Item item = list_[i];
      const bool isDrawn = item.kind != Kind::clip && item.kind != Kind::restore;
      if (!isDrawn || item.role != first.role || (item.kind == Kind::text) != isText) break;
      i = isText ? text(item, i) : item.kind == Kind::marker ? markers(item, i) : shape(i);
    }
    out_ += "</g>\n";
    return i;
  }

  /// A nested picture cuts what is outside of it and needs no name.
  void openClip(const Item& item) {
    const std::span<const float> p = item.points;
    const std::string x = hundredthsText(p[0]), y = hundredthsText(p[1]);
    const std::string width = hundredthsText(p[2] - p[0]), height = hundredthsText(p[3] - p[1]);
    out_ += "<svg x=\"" + x + "\" y=\"" + y + "\" width=\"" + width + "\" height=\"" + height + "\" viewBox=\"" + x +
            " " + y + " " + width + " " + height + "\">\n";
  }

  void shareText(const drawing::Text& text) {
    attribute(out_, "font-size", hundredthsText(text.size));
    if (text.anchor != drawing::Anchor::start) {
      attribute(out_, "text-anchor", text.anchor == drawing::Anchor::middle ? "middle" : "end");
    }
    color(out_, "fill", text.color);
  }

  size_t text(const Item& item, size_t i) {
    const drawing::Text& text = *item.text;
    const std::string x = hundredthsText(item.points[0]), y = hundredthsText(item.points[1]);
    if (text.angle == 0) {
      out_ += "<text x=\"" + x + "\" y=\"" + y + "\">";
    } else {
      out_ += "<text transform=\"translate(" + x + " " + y + ")rotate(" + hundredthsText(text.angle) + ")\">";
    }
    out_ += escaped(text.text) + "</text>\n";
    return i + 1;
  }

  void path(const Paint& paint, const SvgPath& path) {
    out_ += "<path" + paintAttributes(paint, sharedWidth_) + " d=\"" + path.data() + "\"/>\n";
  }

  /// A path or polygon, with the paths after it that share its paint. Overlapping polygons stay
  /// apart.
  size_t shape(size_t i) {
    const Item first = list_[i];
    SvgPath data;
    do {
      data.add(list_[i].points, first.kind == Kind::polygon);
      ++i;
    } while (first.kind == Kind::path && i < list_.count() && list_[i].kind == Kind::path &&
             list_[i].role == first.role && list_[i].paint == first.paint);
    path(first.paint, data);
    return i;
  }

  /// Filled markers with an edge cover each other one by one; others need no order and make one
  /// path.
  size_t markers(const Item& item, size_t i) {
    const drawing::MarkerOutline outline = drawing::markerOutline(*item.marker);
    Paint paint = item.paint;
    if (!outline.isClosed) paint.fill = {};
    const bool isOneByOne = paint.fill.isVisible() && paint.stroke.isVisible() && paint.fill != paint.stroke;
    const std::string shared = paintAttributes(paint, sharedWidth_);
    out_ += "<g" + shared + ">\n";
    SvgPath all;
    for (size_t k = 0; k + 1 < item.points.size(); k += 2) {
      SvgPath one;
      SvgPath& data = isOneByOne ? one : all;
      const Vec2 at{item.points[k], item.points[k + 1]};
      if (outline.radius > 0) {
        data.addCircle(at, outline.radius);
      } else {
        for (const auto& piece : outline.pieces) data.addPiece(piece, at, outline.isClosed);
      }
      if (isOneByOne) out_ += "<path d=\"" + one.data() + "\"/>\n";
    }
    if (!isOneByOne) out_ += "<path d=\"" + all.data() + "\"/>\n";
    out_ += "</g>\n";
    return i + 1;
  }

  const DisplayList& list_;
  std::string out_;
  float sharedWidth_ = 1;
};

}  // namespace

std::string svg(const DisplayList& list) { return Writer(list).write(); }

}  // namespace kelo::pictures
