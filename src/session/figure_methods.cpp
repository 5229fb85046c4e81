// The current figure, and the saved ones.
#include <algorithm>

#include "figures/coding/base64.h"
#include "figures/coding/coded_form.h"
#include "figures/drawing/plot_layout.h"
#include "figures/figure_edit.h"
#include "figures/gesture.h"
#include "messages/message.h"
#include "session/figure_pictures.h"
#include "session/methods.h"
#include "session/panels.h"

namespace kelo::session {
namespace {

using figures::Figure;
using figures::SurfData;

const char* kindOf(const Figure& figure) {
  constexpr const char* kKinds[] = {"none", "plot", "surface"};
  return kKinds[figure.index()];
}

Json figureJson(const Call& call) {
  const figures::FigurePanel& panel = call.panels.app.figures;
  const int64_t revision = panel.revision();
  const Figure figure = panel.figure();
  try {
    return {{"kind", kindOf(figure)},
            {"model", Json::parse(figures::codedForm(figure, figures::NonFinite::asNull))},
            {"revision", revision}};
  } catch (const figures::CodingError& fault) {
    throw alert("The figure is too large", fault.what());
  }
}

std::optional<Json> get(const Call& call) { return figureJson(call); }

std::vector<figures::FigureChange> changesOf(const Call& call) {
  std::vector<figures::FigureChange> changes;
  for (const auto& [key, value] : call.params.at("changes").items()) changes.push_back({key, value.dump()});
  return changes;
}

std::optional<Json> edit(const Call& call) {
  const std::vector<figures::FigureChange> changes = changesOf(call);
  try {
    call.panels.app.figures.write([&](Figure& figure) {
      if (std::holds_alternative<std::monostate>(figure)) throw alert("There is no figure");
      figure = figures::edited(figure, changes);
    });
  } catch (const Problem& fault) {
    throw Refusal{kWrongParameters, "Parameter \"changes/" + fault.reason.value_or("") + "\" is refused: " +
                                        fault.expected.value_or("")};
  }
  return figureJson(call);
}

/// The view that a request gives, and where the axes of a plot stand in it.
figures::GestureView gestureViewOf(const Call& call, const Figure& figure) {
  drawing::DrawingOptions options;
  options.size = viewOf(call);
  figures::GestureView view{options.size.width, options.size.height, {}};
  if (const auto* plot = std::get_if<figures::PlotData>(&figure)) {
    const drawing::Rect area = drawing::layOut(*plot, drawing::Sheet(options)).area;
    view.plotArea = {area.left, area.top, area.width(), area.height()};
  }
  return view;
}

std::optional<Json> tip(const Call& call) {
  const Figure figure = call.panels.app.figures.figure();
  const figures::GestureView view = gestureViewOf(call, figure);
  const auto* plot = std::get_if<figures::PlotData>(&figure);
  if (plot == nullptr) return Json(nullptr);
  const auto found = call.panels.tipFinder.find(*plot, view.plotArea, {call.number("x"), call.number("y")});
  if (!found) return Json(nullptr);
  return Json{{"line", found->line},     {"index", found->index},  {"x", found->point.x},
              {"y", found->point.y}, {"px", found->place.x}, {"py", found->place.y}};
}

size_t numPointsOf(const Figure& figure) {
  size_t count = 0;
  if (const auto* plot = std::get_if<figures::PlotData>(&figure)) {
    for (const auto& line : plot->lines) count += line.points.size();
  } else if (const auto* surface = std::get_if<SurfData>(&figure)) {
    for (const auto& part : surface->surfaces) count += part.points.size();
  }
  return count;
}

/// As `figureJson`, but without the model of a large figure: gestures come many times a second.
Json movedJson(const Call& call) {
  constexpr size_t kMostPointsOfModel = 2000;
  const figures::FigurePanel& panel = call.panels.app.figures;
  const Figure figure = panel.figure();
  if (numPointsOf(figure) <= kMostPointsOfModel) return figureJson(call);
  return {{"kind", kindOf(figure)}, {"model", nullptr}, {"revision", panel.revision()}};
}

/// A number that its kind of gesture needs.
double needed(const Call& call, const char* name) {
  if (!call.has(name)) throw wrongParameter(name, "a number");
  return call.number(name);
}

double scaleOf(const Call& call, const char* name) {
  const double scale = needed(call, name);
  if (!(scale >= 1e-3 && scale <= 1e3)) throw wrongParameter(name, "a number from 0.001 to 1000");
  return scale;
}

figures::ViewPoint pairOf(const Call& call, const char* x, const char* y) { return {needed(call, x), needed(call, y)}; }

void move(const Call& call, Figure& figure) {
  const std::string kind = call.text("kind");
  const figures::GestureView view = gestureViewOf(call, figure);
  if (kind == "pan" || kind == "rotate") {
    const auto [dx, dy] = pairOf(call, "dx", "dy");
    (kind == "pan" ? figures::pan : figures::rotate)(figure, view, dx, dy);
  } else if (kind == "pinch") {
    const figures::ViewPoint center = pairOf(call, "x", "y");
    const double scaleX = scaleOf(call, "scaleX"), scaleY = scaleOf(call, "scaleY");
    figures::pinch(figure, view, center, scaleX, scaleY);
  } else if (kind == "zoom") {
    figures::zoom(figure, view, scaleOf(call, "scale"));
  } else {
    figures::reset(figure);
  }
}

std::optional<Json> gesture(const Call& call) {
  call.panels.app.figures.write([&](Figure& figure) { move(call, figure); });
  return movedJson(call);
}

std::optional<Json> drawing(const Call& call) { return drawingJson(call); }

std::optional<Json> mesh(const Call& call) { return meshJson(call); }

std::optional<Json> picture(const Call& call) {
  try {
    return Json{{"base64", figures::base64Of(pictureBytes(call, call.text("format")))}};
  } catch (const Problem& problem) {
    throw alert("No picture can be made here", problem.reason.value_or(""));
  }
}

// ---- Saved figures

std::optional<Json> save(const Call& call) {
  Panels& panels = call.panels;
  const Figure figure = panels.app.figures.figure();
  if (std::holds_alternative<std::monostate>(figure)) return Json{{"id", nullptr}};
  std::optional<figures::FigureData> saved = panels.figureDocuments.save(call.text("name"), figure, thumbnailOf(call));
  const std::string id = saved->id.text;
  panels.savedFigures.push_back(std::move(*saved));
  return Json{{"id", id}};
}

std::optional<Json> close(const Call& call) {
  call.panels.app.figures.close();
  return Json::object();
}

std::optional<Json> list(const Call& call) {
  Panels& panels = call.panels;
  panels.savedFigures = panels.figureDocuments.loadAll();
  Json items = Json::array();
  for (const figures::FigureData& saved : panels.savedFigures) {
    items.push_back({{"id", saved.id.text},
                     {"name", saved.fileNameWithoutExt},
                     {"timeStamp", saved.timeStamp},
                     {"thumbnail", figures::base64Of(saved.thumbnail.data.bytes)}});
  }
  return Json{{"items", std::move(items)}};
}

std::vector<figures::FigureData>::iterator savedFigure(const Call& call) {
  auto& saved = call.panels.savedFigures;
  const std::string id = call.text("id");
  const auto found = std::find_if(saved.begin(), saved.end(), [&](const auto& figure) { return figure.id.text == id; });
  if (found == saved.end()) throw wrongParameter("id", "the id of a saved figure");
  return found;
}

std::optional<Json> show(const Call& call) {
  call.panels.app.figures.show(savedFigure(call)->figure());
  return Json::object();
}

std::optional<Json> remove(const Call& call) {
  const auto saved = savedFigure(call);
  call.panels.figureDocuments.remove(*saved);
  call.panels.savedFigures.erase(saved);
  return Json::object();
}

}  // namespace

std::vector<Method> figureMethods() {
  const Parameter width = {"width", Kind::number}, height = {"height", Kind::number};
  const Parameter theme = {"theme", Kind::text, true, "light|dark"}, id = {"id", Kind::text};
  const auto optional = [](const char* name) { return Parameter{name, Kind::number, false}; };
  const char* const figure = "{kind, model, revision}";
  return {
      {"figure/get", {}, get, figure, "The current figure: none, plot or surface, in its coded form"},
      {"figure/edit", {{"changes", Kind::object}}, edit, figure, "Change keys of the coded form"},
      {"figure/drawing", {width, height, theme}, drawing, "{width, height, title, description, plotArea, items}",
       "What is to be painted; plotArea is [left, top, right, bottom]"},
      {"figure/mesh", {}, mesh,
       "{surfaces: [{numRows, numCols, points}], xlims, ylims, zlims, view: {rotation, translation, zoom}, colors, "
       "revision}",
       "The meshes of a surface, points as 32-bit floats x, y, z; colors by height, from below"},
      {"figure/tip", {{"x", Kind::number}, {"y", Kind::number}, width, height}, tip,
       "{line, index, x, y, px, py} or null", "The nearest point of a plot; line and index count from 0"},
      {"figure/gesture",
       {{"kind", Kind::text, true, "pan|pinch|rotate|zoom|reset"}, width, height, optional("dx"), optional("dy"),
        optional("x"), optional("y"), optional("scaleX"), optional("scaleY"), optional("scale")},
       gesture, figure,
       "pan and rotate with dx, dy; pinch with x, y, scaleX, scaleY; zoom with scale; model null above 2000 points"},
      {"figure/picture",
       {{"format", Kind::text, true, "png|svg|pdf"}, optional("width"), optional("height"),
        {"theme", Kind::text, false, "light|dark"}, optional("scale")},
       picture, "{base64}", "A picture, 640 x 480, light and at scale 2 unless told"},
      {"figure/save", {{"name", Kind::text}}, save, "{id}", "Save the current figure under a name"},
      {"figure/close", {}, close, "{}", "No figure any more"},
      {"figures/list", {}, list, "{items: [{id, name, timeStamp, thumbnail}]}", "The saved figures"},
      {"figures/show", {id}, show, "{}", "Show a saved figure"},
      {"figures/delete", {id}, remove, "{}", "Delete a saved figure"},
  };
}

}  // namespace kelo::session
