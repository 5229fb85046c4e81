#include "figures/coding/color_coding.h"

#include <utility>

#include "figures/coding/json_reader.h"
#include "figures/coding/json_writer.h"
#include "figures/coding/keyed_archive.h"

namespace kelo::figures {

std::string codedColor(const Color& color) {
  JsonWriter out(NonFinite::refused);
  out.mark('{');
  if (color.role != ColorRole::none) {
    out.string("role");
    out.mark(':');
    out.string(nameOf(color.role));
    out.mark(',');
  }
  out.string("rgba");
  out.mark(':');
  char before = '[';
  for (const double channel : {color.red, color.green, color.blue, color.alpha}) {
    out.mark(std::exchange(before, ','));
    out.number(channel);
  }
  out.mark(']');
  out.mark('}');
  return out.take();
}

std::optional<Color> decodedColor(std::string_view bytes) {
  if (isArchive(bytes)) return colorOfArchive(bytes);
  JsonReader in(bytes);
  std::optional<ColorRole> role;
  std::vector<double> channels;
  in.object([&](std::string_view key) {
    if (key == "role")
      role = roleNamed(in.string());
    else if (key == "rgba")
      in.array([&] { channels.push_back(in.number()); });
    else
      in.skip();
  });
  in.finish();
  if (channels.size() != 4) in.fail("a colour has four channels");
  for (const double channel : channels) {
    if (!(channel >= 0 && channel <= 1)) in.fail("a channel of a colour is beyond 0 to 1");
  }
  return role ? Color(*role) : Color(channels[0], channels[1], channels[2], channels[3]);
}

}  // namespace kelo::figures
