// The coded form: round trips, texts that are refused, archives of older files.
#include <gtest/gtest.h>

#include <cmath>

#include "figures/coding/base64.h"
#include "figures/coding/coded_form.h"
#include "figures/coding/color_coding.h"
#include "figures/coding/keyed_archive.h"
#include "random_figures.h"

namespace kelo::figures {
namespace {

template <class T>
std::string coded(const T& model) {
  return codedForm(Figure(model), NonFinite::refused);
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
  const size_t at = text.find(what);
  EXPECT_NE(at, std::string::npos) << what;
  return at == std::string::npos ? text : text.replace(at, what.size(), by);
}

TEST(CodedForm, comesBackTheSame) {
  const unsigned seed = 610;
  RandomFigures random(seed);
  for (int n = 0; n < 500; ++n) {
    const PlotData plot = random.plot();
    ASSERT_EQ(decodedPlot(coded(plot)), plot) << seed << " " << n;
    ASSERT_EQ(coded(decodedPlot(coded(plot))), coded(plot)) << "roles too; " << seed << " " << n;
    const SurfData surface = random.surface();
    ASSERT_EQ(decodedSurface(coded(surface)), surface) << seed << " " << n;

    FigureData data;
    data.fileNameWithoutExt = "Fig_1";
    data.thumbnail.data.bytes = std::string("\0\xff\x80 bytes", 9).substr(0, random.below(10));
    data.appVersion = random.maybeText();
    data.timeStamp = random.number();
    if (random.flag())
      data.plotData = plot;
    else
      data.surfData = surface;
    const FigureData back = decodedFigureData(codedForm(data));
    ASSERT_EQ(back.thumbnail.data, data.thumbnail.data);
    ASSERT_EQ(back.appVersion, data.appVersion);
    ASSERT_EQ(back.timeStamp, data.timeStamp);
    ASSERT_EQ(back.plotData, data.plotData);
    ASSERT_EQ(back.surfData, data.surfData);
    ASSERT_NE(back.id.text, data.id.text) << "the identity is not read";
  }
}

TEST(CodedForm, ofAnEmptyPlot) {
  EXPECT_EQ(coded(PlotData()).substr(0, 90),
            R"({"lines":[],"shouldShowGrid":true,"shouldHold":false,"shouldShowLegend":false,"xLabel":nul)");
  EXPECT_EQ(codedForm(Figure(), NonFinite::refused), "null");
}

TEST(CodedForm, numbersThatAreNotFinite) {
  Line line;
  line.points = {{1, std::nan("")}};
  const PlotData plot({line});
  EXPECT_THROW(coded(plot), CodingError);
  EXPECT_NE(codedForm(Figure(plot), NonFinite::asNull).find("[[1,null]]"), std::string::npos);
}

TEST(CodedForm, refusesWhatIsWrong) {
  Line line;
  line.points = {{1, 2}, {3, 4}};
  const std::string plot = coded(PlotData({line}));
  const std::string surface = coded(SurfData({{{{1, 1, 1}, {2, 1, 1}}, {1, 2}}}));
  const std::string color = "\"" + base64Of(codedColor(ColorRole::systemBlue)) + "\"";
  ASSERT_NO_THROW(
      decodedPlot(replaced(plot, "{\"lines\"", " { \"unknown\" : [ {\"a\":[1, null]}, \"\\u00e9\\n\" ],\n\"lines\"")));
  const struct {
    const char* what;
    std::string text;
  } rows[] = {
      {"nothing", ""},
      {"cut short", plot.substr(0, plot.size() / 2)},
      {"something behind", plot + "x"},
      {"a key missing", replaced(plot, "\"title\":null,", "")},
      {"another type", replaced(plot, "\"shouldHold\":false", "\"shouldHold\":0")},
      {"a text where a list is", replaced(plot, "\"xTickPositions\":[", "\"xTickPositions\":\"\",\"x\":[")},
      {"an unknown ordinal", replaced(plot, "\"lineStyle\":0", "\"lineStyle\":6")},
      {"a negative ordinal", replaced(plot, "\"lineStyle\":0", "\"lineStyle\":-1")},
      {"a fraction as ordinal", replaced(plot, "\"lineStyle\":0", "\"lineStyle\":0.5")},
      {"a number beyond the doubles", replaced(plot, "\"lineWidth\":1", "\"lineWidth\":1e999")},
      {"words for numbers", replaced(plot, "\"lineWidth\":1", "\"lineWidth\":inf")},
      {"reversed limits", replaced(plot, "\"lower\":1", "\"lower\":7")},
      {"a colour that is no base64", replaced(plot, color, "\"***\"")},
      {"a colour of other bytes", replaced(plot, color, "\"AAAA\"")},
      {"a colour beyond 1", replaced(plot, color, "\"" + base64Of(R"({"rgba":[0,0,2,1]})") + "\"")},
      {"points that are no archive", replaced(plot, "[[1,2],[3,4]]", "\"AAAA\"")},
      {"half a point", replaced(plot, "[3,4]", "[3]")},
      {"a point in space", replaced(plot, "[3,4]", "[3,4,5]")},
      {"deep nesting", replaced(plot, "{\"lines\"", "{\"deep\":" + std::string(100000, '[') + ",\"lines\"")},
      {"half a character", replaced(plot, "\"title\":null", "\"title\":\"\\ud83e\\u0041\"")},
      {"no UTF-8", replaced(plot, "\"title\":null", "\"title\":\"\xff\"")},
  };
  for (const auto& row : rows) EXPECT_THROW(decodedPlot(row.text), CodingError) << row.what;
  for (const char* counts : {"\"numCols\":2,\"numRows\":2", "\"numCols\":-1,\"numRows\":-2",
                             "\"numCols\":4611686018427387904,\"numRows\":4", "\"numCols\":1,\"numRows\":2.0"}) {
    EXPECT_THROW(decodedSurface(replaced(surface, "\"numCols\":1,\"numRows\":2", counts)), CodingError) << counts;
  }

  FigureData data;
  data.plotData.emplace();
  EXPECT_NO_THROW(decodedFigureData(replaced(codedForm(data), "\"uuid\"", "\"other\"")));
  data.surfData.emplace();
  EXPECT_THROW(decodedFigureData(codedForm(data)), CodingError) << "both models";
  data.plotData.reset();
  data.surfData.reset();
  EXPECT_THROW(decodedFigureData(codedForm(data)), CodingError) << "no model";
}

TEST(CodedForm, everyCutIsRefusedAndNoneCrashes) {
  RandomFigures random(3);
  const std::string text = coded(random.plot());
  for (size_t length = 0; length < text.size(); ++length) {
    ASSERT_THROW(decodedPlot(std::string_view(text).substr(0, length)), CodingError) << length;
  }
}

TEST(CodedForm, spoiltTextsAreReadOrRefused) {
  const unsigned seed = 5;
  RandomFigures random(seed);
  const std::string plot = coded(random.plot()), surface = coded(random.surface());
  constexpr std::string_view kSigns = "[]{}\":,0-9eE.\\u \x01\xff";
  for (int n = 0; n < 4000; ++n) {
    std::string text = n % 2 ? plot : surface;
    for (uint64_t k = random.below(4); k < 4; ++k)
      text[random.below(text.size())] = kSigns[random.below(kSigns.size())];
    try {
      n % 2 ? (void)decodedPlot(text) : (void)decodedSurface(text);
    } catch (const CodingError&) {
    }
  }
}

TEST(CodedForm, ofMorePointsThanAreRead) {
  Line line;
  line.points = std::vector<Point>(kMostCodedPoints / 4 + 1, Point{0, 0});
  EXPECT_THROW(codedForm(Figure(PlotData(std::vector<Line>(4, line))), NonFinite::refused), CodingError);
}

// ---- Older files. The archives were made by an independent program.

constexpr const char* kArchivedPoints =
    "YnBsaXN0MDDUAQIDBAUGHyJZJGFyY2hpdmVyWCRvYmplY3RzVCR0b3BYJHZlcnNpb25fEA9OU0tleWVkQXJjaGl2ZXKoBwgPFRYZGh1VJG51bGzSCQoL"
    "DFYkY2xhc3NaTlMub2JqZWN0c4AGog0OgAKABNMJEBESExRbTlMucG9pbnR2YWxaTlMuc3BlY2lhbIAHgAMQAVl7MSwgLTIuNX3TCRARFxgUgAeABVh7"
    "M2UyLCAwfdEbHFokY2xhc3NuYW1lV05TQXJyYXnRGx5XTlNWYWx1ZdEgIVRyb290gAESAAGGoAgRGyQpMkRNU1hfamxvcXN6hpGTlZehqKqstbjDy87W"
    "2d7gAAAAAAAAAQEAAAAAAAAAIwAAAAAAAAAAAAAAAAAAAOU=";
constexpr const char* kArchivedChannels =
    "YnBsaXN0MDDUAQIDBAUGFhlZJGFyY2hpdmVyWCRvYmplY3RzVCR0b3BYJHZlcnNpb25fEA9OU0tleWVkQXJjaGl2ZXKjBwgTVSRudWxs1QkKCwwNDg8Q"
    "ERJWJGNsYXNzV1VJQWxwaGFWVUlCbHVlV1VJR3JlZW5VVUlSZWSAAiM/0AAAAAAAACMAAAAAAAAAACM/4AAAAAAAACM/8AAAAAAAANEUFVokY2xhc3Nu"
    "YW1lV1VJQ29sb3LRFxhUcm9vdIABEgABhqAIERskKTJESE5ZYGhvd31/iJGao6axubzBwwAAAAAAAAEBAAAAAAAAABoAAAAAAAAAAAAAAAAAAADI";
constexpr const char* kArchivedName =
    "YnBsaXN0MDDUAQIDBAUGERRZJGFyY2hpdmVyWCRvYmplY3RzVCR0b3BYJHZlcnNpb25fEA9OU0tleWVkQXJjaGl2ZXKkBwgNDlUkbnVsbNIJCgsMViRj"
    "bGFzc18QEVVJU3lzdGVtQ29sb3JOYW1lgAOAAl8QD3N5c3RlbVRlYWxDb2xvctEPEFokY2xhc3NuYW1lV1VJQ29sb3LREhNUcm9vdIABEgABhqAIERsk"
    "KTJESU9UW29xc4WIk5ueo6UAAAAAAAABAQAAAAAAAAAVAAAAAAAAAAAAAAAAAAAAqg==";
constexpr const char* kArchivedOther =
    "YnBsaXN0MDDUAQIDBAUGEBNZJGFyY2hpdmVyWCRvYmplY3RzVCR0b3BYJHZlcnNpb25fEA9OU0tleWVkQXJjaGl2ZXKjBwgNVSRudWxs0gkKCwxWJGNs"
    "YXNzVU90aGVygAIQAdEOD1okY2xhc3NuYW1lV1VJQ29sb3LRERJUcm9vdIABEgABhqAIERskKTJESE5TWmBiZGdyen2ChAAAAAAAAAEBAAAAAAAAABQA"
    "AAAAAAAAAAAAAAAAAACJ";

TEST(OlderFiles, pointsAndColoursComeFromArchives) {
  Line line;
  line.points = {{1, 2}};
  std::string text = replaced(coded(PlotData({line})), "[[1,2]]", std::string("\"") + kArchivedPoints + "\"");
  const std::string blue = base64Of(codedColor(ColorRole::systemBlue));
  text = replaced(text, blue, kArchivedChannels);  // the line
  text = replaced(text, blue, kArchivedName);      // the edge
  text = replaced(text, base64Of(codedColor(ColorRole::clear)), kArchivedOther);
  const Line read = decodedPlot(text).lines.at(0);
  EXPECT_EQ(read.points, (Points{{1, -2.5}, {300, 0}}));
  EXPECT_EQ(read.attribute.lineColor, Color(1, 0.5, 0, 0.25));
  EXPECT_EQ(read.attribute.markerEdgeColor.role, ColorRole::systemTeal);
  EXPECT_TRUE(read.attribute.markerFaceColor.isClear()) << "the default, when an archive does not tell";
  EXPECT_NE(coded(PlotData({read})).find("[[1,-2.5],[300,0]]"), std::string::npos) << "written in the new form";
}

/// The XML form of an archive, in which a reference is a dictionary.
std::string xmlArchive(const std::string& objects) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>$top</key><dict><key>root</key>"
         "<dict><key>CF$UID</key><integer>1</integer></dict></dict><key>$objects</key><array><string>$null</string>" +
         objects + "</array></dict></plist>\n";
}

TEST(OlderFiles, archivesInXml) {
  const std::string reference = "<dict><key>CF$UID</key><integer>2</integer></dict>";
  EXPECT_EQ(pointsOfArchive(xmlArchive("<dict><key>NS.objects</key><array>" + reference + reference +
                                       "</array></dict><dict><key>NS.pointval</key><string>{1.5, -2}</string></dict>")),
            (std::vector<Point>{{1.5, -2}, {1.5, -2}}));
  EXPECT_EQ(colorOfArchive(xmlArchive("<dict><key>UIWhite</key><real>0.5</real></dict>")), Color(0.5, 0.5, 0.5, 1));
  for (const std::string& wrong : {std::string("<"), std::string("<plist>"), xmlArchive(""), xmlArchive(reference),
                                   xmlArchive("<dict><key>NS.objects</key><array><integer>9</integer></array></dict>")}) {
    EXPECT_EQ(pointsOfArchive(wrong), std::nullopt) << wrong;
    EXPECT_EQ(colorOfArchive(wrong), std::nullopt) << wrong;
  }
  std::string deep = "<plist>";
  for (int n = 0; n < 1000000; ++n) deep += "<array>";
  EXPECT_EQ(pointsOfArchive(deep), std::nullopt);
}

TEST(OlderFiles, spoiltArchivesHarmNothing) {
  RandomFigures random(11);
  const std::string archive = *bytesOfBase64(kArchivedPoints);
  for (int n = 0; n < 20000; ++n) {
    std::string spoilt = archive.substr(0, random.below(4) == 0 ? random.below(archive.size()) : archive.size());
    for (uint64_t k = random.below(6); k > 0 && !spoilt.empty(); --k) {
      spoilt[random.below(spoilt.size())] = static_cast<char>(random.below(256));
    }
    pointsOfArchive(spoilt);
    colorOfArchive(spoilt);
  }
}

TEST(Base64, table) {
  // RFC 4648, section 10
  const char* rows[][2] = {{"", ""},         {"f", "Zg=="},     {"fo", "Zm8="},        {"foo", "Zm9v"},
                           {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"}};
  for (const auto& [bytes, text] : rows) {
    EXPECT_EQ(base64Of(bytes), text);
    EXPECT_EQ(bytesOfBase64(text), bytes);
  }
  for (const char* wrong : {"Zg=", "Zg", "Zh==", "Z===", "====", "Zm9*", "Zg==Zg=="}) {
    EXPECT_EQ(bytesOfBase64(wrong), std::nullopt) << wrong;
  }
}

}  // namespace
}  // namespace kelo::figures
