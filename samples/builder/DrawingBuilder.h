#pragma once

// Makes new drawings: for the sample drawing and for tests.

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/PairWriter.h"

namespace velt::samples {

using dxf::Encoding;
using dxf::PairWriter;
using dxf::Point;

class DrawingBuilder;
using Handle = std::uint64_t;

enum class DrawingVersion {
  // Texts in ANSI_1252.
  AC1018,
  // Texts in UTF-8.
  AC1027,
};

// A pair whose value is written as it is.
struct RawPair {
  int code = 0;
  std::string value{};
};

inline constexpr int byBlock = 0;
inline constexpr int byLayer = 256;
inline constexpr int lineWeightByLayer = -1;
inline constexpr int lineWeightDefault = -3;

struct LayerStyle {
  int color = 7;
  // 0xRRGGBB.
  std::optional<std::uint32_t> trueColor{};
  // In hundredths of a millimetre.
  int lineWeight = lineWeightDefault;
  std::string lineType = "Continuous";
  bool off = false;
  bool frozen = false;
  bool locked = false;
};

struct Hyperlink {
  std::string address{};
  std::string description{};
};

// What an application attaches to an entity; it is registered with the drawing.
struct ExtendedData {
  std::string application{};
  // Codes from 1000 on, without the 1001.
  std::vector<RawPair> values{};
};

// What every entity has.
struct EntityStyle {
  std::string layer = "0";
  int color = byLayer;
  std::optional<std::uint32_t> trueColor{};
  int lineWeight = lineWeightByLayer;
  std::string lineType = "ByLayer";
  double lineTypeScale = 1.0;
  bool visible = true;
  std::optional<Hyperlink> hyperlink{};
  std::vector<ExtendedData> extendedData{};
};

// Of a polyline or of a hatch's boundary. The bulge of the segment that begins here is the tangent of a quarter of its
// arc's angle, positive to the left.
struct Vertex {
  double x = 0.0;
  double y = 0.0;
  double bulge = 0.0;
  double startWidth = 0.0;
  double endWidth = 0.0;
};
using Outline = std::vector<Vertex>;

struct PolylineStyle {
  bool closed = false;
  double elevation = 0.0;
};

enum class Align { Left = 0, Centre = 1, Right = 2 };
enum class AlignVertical { Baseline = 0, Bottom = 1, Middle = 2, Top = 3 };

struct TextStyle {
  double height = 2.5;
  // In degrees.
  double rotation = 0.0;
  std::string style = "Standard";
  Align align = Align::Left;
  AlignVertical alignVertical = AlignVertical::Baseline;
  double widthFactor = 1.0;
};

struct MTextStyle {
  double height = 2.5;
  // Where lines break; 0 for nowhere.
  double width = 0.0;
  // In degrees.
  double rotation = 0.0;
  std::string style = "Standard";
  // 1 top left to 9 bottom right.
  int attachment = 1;
};

struct Attribute {
  std::string tag{};
  std::string value{};
  Point at{};
  double height = 2.5;
  Align align = Align::Left;
  bool visible = true;
};

struct Placement {
  Point at{};
  double scaleX = 1.0;
  double scaleY = 1.0;
  double scaleZ = 1.0;
  // In degrees.
  double rotation = 0.0;
  std::vector<Attribute> attributes{};
};

// A family of parallel lines, in the pattern's own coordinates; dashes are positive, gaps negative, dots zero.
struct PatternLine {
  // In degrees.
  double angle = 0.0;
  Point base{};
  // From line to line, along and across the line.
  Point offset{};
  std::vector<double> dashes{};
};

struct HatchPattern {
  std::string name{};
  std::vector<PatternLine> lines{};
  // In degrees.
  double angle = 0.0;
  double scale = 1.0;
};

struct HatchGradient {
  std::string name = "LINEAR";
  // 0xRRGGBB.
  std::uint32_t firstColor = 0;
  std::uint32_t secondColor = 0xFFFFFF;
  // In degrees.
  double angle = 0.0;
};

// Takes the entities of one block definition, model space included. It belongs to its DrawingBuilder.
// Every call returns the handle of the entity that it made.
class BlockBuilder {
 public:
  BlockBuilder(DrawingBuilder& drawing, std::string name, Point base);
  BlockBuilder(const BlockBuilder&) = delete;
  BlockBuilder& operator=(const BlockBuilder&) = delete;

  Handle line(const Point& from, const Point& to, const EntityStyle& style = {});
  Handle point(const Point& at, const EntityStyle& style = {});
  Handle circle(const Point& centre, double radius, const EntityStyle& style = {});
  // Counterclockwise, in degrees.
  Handle arc(const Point& centre, double radius, double startAngle, double endAngle,
             const EntityStyle& style = {});
  // `major` reaches from the centre to the end of the longer axis; `ratio` is at most 1; whole without the angles,
  // which are parameters in degrees.
  Handle ellipse(const Point& centre, const Point& major, double ratio, const EntityStyle& style = {},
                 double startAngle = 0.0, double endAngle = 360.0);
  Handle polyline(const Outline& outline, const PolylineStyle& shape = {}, const EntityStyle& style = {});
  Handle text(const Point& at, std::string_view wording, const TextStyle& shape = {},
              const EntityStyle& style = {});
  // The wording may hold formatting codes; a long one is cut into chunks as drawings do.
  Handle mtext(const Point& at, std::string_view wording, const MTextStyle& shape = {},
               const EntityStyle& style = {});
  Handle insert(std::string_view block, const Placement& placement, const EntityStyle& style = {});
  // What an insert of this block should bring a value for.
  Handle attributeDefinition(const Attribute& attribute, std::string_view prompt,
                             const EntityStyle& style = {});
  Handle solidHatch(std::span<const Outline> boundary, const EntityStyle& style = {});
  Handle patternHatch(std::span<const Outline> boundary, const HatchPattern& pattern,
                      const EntityStyle& style = {});
  Handle gradientHatch(std::span<const Outline> boundary, const HatchGradient& gradient,
                       const EntityStyle& style = {});
  // Makes this block, an anonymous one, one of the shapes that a dynamic block takes.
  void isMadeOf(const BlockBuilder& definition);
  // Anything else: the pairs behind the common ones of every entity, subclass markers included. Owned by the block,
  // or by the entity with the given handle (a vertex by its polyline).
  Handle raw(std::string_view type, std::span<const RawPair> pairs, const EntityStyle& style = {},
             std::optional<Handle> owner = std::nullopt);
  Handle raw(std::string_view type, std::initializer_list<RawPair> pairs, const EntityStyle& style = {},
             std::optional<Handle> owner = std::nullopt) {
    return raw(type, std::span<const RawPair>(pairs.begin(), pairs.size()), style, owner);
  }
  // Of its table record, for those that refer to the block by it.
  [[nodiscard]] Handle handle() const { return recordHandle_; }

 private:
  friend class DrawingBuilder;

  Handle begin(std::string_view type, const EntityStyle& style, std::optional<Handle> owner = std::nullopt);
  void end(const EntityStyle& style);
  void writeAttribute(const Attribute& attribute, const EntityStyle& style, Handle owner);
  Handle beginHatch(std::span<const Outline> boundary, std::string_view pattern, bool isSolid,
                    const EntityStyle& style);
  void endHatch(const EntityStyle& style);

  DrawingBuilder& drawing_;
  std::string name_;
  Point base_;
  // Of the drawing that the block stands for.
  std::string path_{};
  Handle recordHandle_;
  Handle beginHandle_;
  Handle endHandle_;
  bool hasAttributes_ = false;
  Handle madeOf_ = 0;
  PairWriter entities_;
};

// A drawing in the making, with everything that a complete one needs: tables, model and paper space, layouts, the
// dictionaries. Handles and owners are given out in the order of the calls, so the same calls make the same bytes.
class DrawingBuilder {
 public:
  explicit DrawingBuilder(DrawingVersion version = DrawingVersion::AC1027);
  DrawingBuilder(const DrawingBuilder&) = delete;
  DrawingBuilder& operator=(const DrawingBuilder&) = delete;

  void layer(std::string_view name, const LayerStyle& style = {});
  // Dashes are positive, gaps negative, dots zero.
  void lineType(std::string_view name, std::string_view description, std::vector<double> dashes);
  void textStyle(std::string_view name, std::string_view font, double widthFactor = 1.0);
  // A further one beside Standard; the pairs are its variables. Gives its handle.
  Handle dimensionStyle(std::string_view name, std::span<const RawPair> variables);
  // The handle of a text style or a line type of that name, which must be there.
  [[nodiscard]] Handle textStyleHandle(std::string_view name) const;
  [[nodiscard]] Handle lineTypeHandle(std::string_view name) const;
  // An object that a dictionary holds under that name; the dictionary is made when it is first named.
  Handle object(std::string_view dictionary, std::string_view name, std::string_view type,
                std::span<const RawPair> pairs);
  // A block that stands for another drawing.
  void externalReference(std::string_view name, std::string_view path);
  // A registered application, as extended data needs one.
  void application(std::string_view name);
  // A further variable of the header, by its name with the dollar sign.
  void variable(std::string_view name, std::initializer_list<RawPair> pairs);
  // What is seen when the drawing is opened.
  void extents(const Point& low, const Point& high);

  BlockBuilder& model() { return blocks_[0]; }
  // The definition of that name, made at the first call.
  BlockBuilder& block(std::string_view name, const Point& base = {});

  // The whole drawing. More may be added afterwards.
  [[nodiscard]] std::string bytes() const;

 private:
  friend class BlockBuilder;

  struct Layer {
    std::string name;
    LayerStyle style;
    Handle handle;
  };
  struct LineType {
    std::string name;
    std::string description;
    std::vector<double> dashes;
    Handle handle;
  };
  struct Font {
    std::string name;
    std::string file;
    double widthFactor;
    Handle handle;
  };
  struct Application {
    std::string name;
    Handle handle;
  };

  struct DimensionStyle {
    std::string name;
    std::vector<RawPair> variables;
    Handle handle;
  };
  struct NamedObject {
    std::string name;
    std::string type;
    std::vector<RawPair> pairs;
    Handle handle;
  };
  struct Dictionary {
    std::string name;
    Handle handle;
    std::vector<NamedObject> objects;
  };

  Handle newHandle() { return nextHandle_++; }
  [[nodiscard]] Handle tableHandle(std::string_view table) const { return tables_.at(std::string(table)); }
  void writeHeader(PairWriter& out) const;
  static void writeClasses(PairWriter& out);
  void writeTables(PairWriter& out) const;
  void writeView(PairWriter& out) const;
  void writeLineTypes(PairWriter& out) const;
  void writeLayers(PairWriter& out) const;
  void writeTextStyles(PairWriter& out) const;
  void writeDimensionStyles(PairWriter& out) const;
  void writeBlockRecords(PairWriter& out) const;
  void writeBlocks(PairWriter& out) const;
  void writeObjects(PairWriter& out) const;
  void writeLayout(PairWriter& out, const BlockBuilder& space, std::string_view name, Handle layout,
                   int order) const;

  DrawingVersion version_;
  Encoding encoding_;
  Handle nextHandle_ = 1;
  std::map<std::string, Handle> tables_;
  Handle rootDictionary_;
  Handle groups_;
  Handle layouts_;
  Handle plotStyles_;
  Handle normalPlotStyle_;
  Handle modelLayout_;
  Handle paperLayout_;
  Handle activeView_;
  Handle dimensionStyle_;
  std::vector<Layer> layers_;
  std::vector<LineType> lineTypes_;
  std::vector<Font> fonts_;
  std::vector<Application> applications_;
  std::vector<DimensionStyle> dimensionStyles_;
  std::vector<Dictionary> dictionaries_;
  PairWriter variables_;
  Point low_{};
  Point high_{100.0, 100.0};
  // Model space, paper space, and those that were asked for.
  std::deque<BlockBuilder> blocks_;
};

}  // namespace velt::samples
