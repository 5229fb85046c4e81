// The coded form of each record: its keys and the members that they name, in order. Reading,
// writing and editing all go by these lists.
#pragma once

#include <tuple>

#include "figures/figure_data.h"

namespace kelo::figures {

template <class Owner, class Value>
struct Field {
  const char* key;
  Value Owner::* member;
};
template <class Owner, class Value>
Field(const char*, Value Owner::*) -> Field<Owner, Value>;

/// `Fields<T>::list` of a record T.
template <class T> struct Fields;

template <>
struct Fields<Limits> {
  static constexpr std::tuple list{Field{"lower", &Limits::lower}, Field{"upper", &Limits::upper}};
};

template <>
struct Fields<Grids> {
  static constexpr std::tuple list{Field{"lineType", &Grids::lineType}, Field{"color", &Grids::color},
                                   Field{"width", &Grids::width}};
};

template <>
struct Fields<Legend> {
  static constexpr std::tuple list{
      Field{"borderLineType", &Legend::borderLineType}, Field{"borderColor", &Legend::borderColor},
      Field{"borderWidth", &Legend::borderWidth},       Field{"lineLength", &Legend::lineLength},
      Field{"contentToPlotViewMargin", &Legend::contentToPlotViewMargin}, Field{"position", &Legend::position},
      Field{"fillColor", &Legend::fillColor},           Field{"rowHeight", &Legend::rowHeight}};
};

template <>
struct Fields<Line::Attributes> {
  using A = Line::Attributes;
  static constexpr std::tuple list{
      Field{"lineStyle", &A::lineStyle},
      Field{"lineColor", &A::lineColor},
      Field{"lineWidth", &A::lineWidth},
      Field{"markerStyle", &A::markerStyle},
      Field{"markerEdgeColor", &A::markerEdgeColor},
      Field{"markerFaceColor", &A::markerFaceColor},
      Field{"markerSize", &A::markerSize},
      Field{"name", &A::name},
      Field{"shownInLegend", &A::shownInLegend},
      Field{"type", &A::type}};
};

template <>
struct Fields<Line> {
  static constexpr std::tuple list{Field{"points", &Line::points}, Field{"attribute", &Line::attribute}};
};

template <>
struct Fields<PlotData> {
  using P = PlotData;
  static constexpr std::tuple list{
      Field{"lines", &P::lines},
      Field{"shouldShowGrid", &P::shouldShowGrid},
      Field{"shouldHold", &P::shouldHold},
      Field{"shouldShowLegend", &P::shouldShowLegend},
      Field{"xLabel", &P::xLabel},
      Field{"yLabel", &P::yLabel},
      Field{"title", &P::title},
      Field{"autoXTicks", &P::autoXTicks},
      Field{"autoYTicks", &P::autoYTicks},
      Field{"xTickPositions", &P::xTickPositions},
      Field{"yTickPositions", &P::yTickPositions},
      Field{"autoXLimits", &P::autoXLimits},
      Field{"autoYLimits", &P::autoYLimits},
      Field{"xlims", &P::xlims},
      Field{"ylims", &P::ylims},
      Field{"legendAttributes", &P::legendAttributes},
      Field{"gridAttributes", &P::gridAttributes}};
};

template <>
struct Fields<SCNVector3> {
  static constexpr std::tuple list{Field{"x", &SCNVector3::x}, Field{"y", &SCNVector3::y}, Field{"z", &SCNVector3::z}};
};

template <>
struct Fields<SurfData::Surface::Attributes> {
  using A = SurfData::Surface::Attributes;
  static constexpr std::tuple list{Field{"numCols", &A::numCols}, Field{"numRows", &A::numRows},
                                   Field{"type", &A::type}};
};

template <>
struct Fields<SurfData::Surface> {
  using S = SurfData::Surface;
  static constexpr std::tuple list{Field{"points", &S::points}, Field{"attributes", &S::attributes}};
};

template <>
struct Fields<SurfData> {
  using S = SurfData;
  static constexpr std::tuple list{
      Field{"rotationAngles", &S::rotationAngles},
      Field{"translation", &S::translation},
      Field{"zoomFactor", &S::zoomFactor},
      Field{"xlims", &S::xlims},
      Field{"ylims", &S::ylims},
      Field{"zlims", &S::zlims},
      Field{"autoXLims", &S::autoXLimits},
      Field{"autoYLims", &S::autoYLimits},
      Field{"autoZLims", &S::autoZLimits},
      Field{"xticks", &S::xTicks},
      Field{"yticks", &S::yTicks},
      Field{"zticks", &S::zTicks},
      Field{"autoXTicks", &S::autoXTicks},
      Field{"autoYTicks", &S::autoYTicks},
      Field{"autoZTicks", &S::autoZTicks},
      Field{"hold", &S::hold},
      Field{"xlabel", &S::xLabelText},
      Field{"ylabel", &S::yLabelText},
      Field{"zlabel", &S::zLabelText},
      Field{"title", &S::title},
      Field{"grid", &S::showGrid},
      Field{"surfaces", &S::surfaces}};
};

template <>
struct Fields<FigureData::ThumbnailData> {
  static constexpr std::tuple list{Field{"data", &FigureData::ThumbnailData::data}};
};

template <>
struct Fields<FigureData> {
  using F = FigureData;
  static constexpr std::tuple list{
      Field{"timeStamp", &F::timeStamp},
      Field{"thumbnail", &F::thumbnail},
      Field{"name", &F::fileNameWithoutExt},
      Field{"uuid", &F::id},
      Field{"appVersion", &F::appVersion},
      Field{"buildNumber", &F::buildNumber},
      Field{"osVersion", &F::osVersion},
      Field{"platform", &F::platform},
      Field{"plotData", &F::plotData},
      Field{"surfData", &F::surfData}};
};

}  // namespace kelo::figures
