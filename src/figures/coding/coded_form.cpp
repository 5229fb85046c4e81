#include "figures/coding/coded_form.h"

#include "figures/coding/decoder.h"

namespace kelo::figures {
namespace {

template <class T>
T decoded(std::string_view text) {
  T value;
  Decoder decoder(text);
  decoder.read(value);
  decoder.finish();
  return value;
}

int64_t pointsOf(const PlotData& plot) {
  int64_t count = 0;
  for (const Line& line : plot.lines) count += line.points.size();
  return count;
}

int64_t pointsOf(const SurfData& surface) {
  int64_t count = 0;
  for (const SurfData::Surface& mesh : surface.surfaces) count += mesh.points.size();
  return count;
}

template <class Model>
void checkCount(const Model& model) {
  if (pointsOf(model) > kMostCodedPoints) throw CodingError("too many points");
}

template <class Model>
std::string coded(const Model& model, NonFinite nonFinite) {
  checkCount(model);
  Encoder encoder(nonFinite);
  encoder.write(model);
  return encoder.take();
}

}  // namespace

std::string codedForm(const Figure& figure, NonFinite nonFinite) {
  if (const auto* plot = std::get_if<PlotData>(&figure)) return coded(*plot, nonFinite);
  if (const auto* surface = std::get_if<SurfData>(&figure)) return coded(*surface, nonFinite);
  return "null";
}

std::string codedForm(const FigureData& data) {
  if (data.plotData) checkCount(*data.plotData);
  if (data.surfData) checkCount(*data.surfData);
  Encoder encoder(NonFinite::refused);
  encoder.write(data);
  return encoder.take();
}

FigureData decodedFigureData(std::string_view text) { return decoded<FigureData>(text); }
PlotData decodedPlot(std::string_view text) { return decoded<PlotData>(text); }
SurfData decodedSurface(std::string_view text) { return decoded<SurfData>(text); }

}  // namespace kelo::figures
