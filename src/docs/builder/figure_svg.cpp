#include "docs/builder/figure_svg.h"

#include "figures/drawing/drawing.h"
#include "figures/pictures/svg.h"

namespace kelo::docs {

std::string figureSvg(player::Player& player) {
  const figures::Figure figure = player.app().figures.figure();
  if (std::holds_alternative<std::monostate>(figure)) return "";
  drawing::DrawingOptions options;
  options.size = {560, 380};
  return pictures::svg(drawing::draw(figure, options));
}

}  // namespace kelo::docs
