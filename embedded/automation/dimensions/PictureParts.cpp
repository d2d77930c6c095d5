#include "embedded/automation/dimensions/PictureParts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "embedded/automation/dimensions/Arrowheads.h"
#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

constexpr const char* dimensionSubclass = "AcDbDimension";

bool isOneOf(std::string_view type, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), type) != names.end();
}

bool hasNoText(std::string_view type) {
  return isOneOf(type, {"LINE", "ARC", "CIRCLE", "ELLIPSE", "POINT", "SOLID", "TRACE", "LWPOLYLINE",
                        "POLYLINE", "VERTEX", "SEQEND"});
}

const database::TableEntry* blockNamed(const database::Drawing& drawing, const std::wstring& name) {
  const database::TableEntry* const block = name.empty() ? nullptr : drawing.blocks().find(name);
  return block == nullptr || block->definition == dxf::none ? nullptr : block;
}

const database::TableEntry* pictureOf(const Subject& dimension) {
  return blockNamed(dimension.drawing(), dimension.lens().name(2, dimensionSubclass));
}

// Without its end.
std::vector<std::uint32_t> membersOf(const database::Drawing& drawing, const database::TableEntry& block) {
  const dxf::PairRange range = drawing.document().membersOf(block.definition);
  std::vector<std::uint32_t> records;
  for (std::size_t i = 0; i < range.count; ++i) {
    const auto record = static_cast<std::uint32_t>(range.first + i);
    if (drawing.view(record).type() != "ENDBLK") records.push_back(record);
  }
  return records;
}

// The block that a block reference shows.
std::wstring blockNameOf(const database::Drawing& drawing, std::uint32_t record) {
  return database::Lens(drawing, record).name(2, dxf::anySubclass);
}

// --- who shows a block ---

// How often each block is shown, by its folded name. Nobody changes what an entity shows once the drawing is read, so one
// count serves as long as the drawing is open: its first entity tells it from all others.
const std::unordered_map<std::wstring, unsigned>& referencesOf(const database::Drawing& drawing) {
  struct Counts {
    VkDbObjectId first;
    std::unordered_map<std::wstring, unsigned> byName;
  };
  static thread_local Counts last;
  const VkDbObjectId first = drawing.entities().front();
  if (last.first == first) return last.byName;
  last = {};
  for (const VkDbObjectId id : drawing.entities()) {
    const std::uint32_t record = database::resolve(id)->record;
    const std::string_view type = drawing.view(record).type();
    if (!type.ends_with("DIMENSION") && !isOneOf(type, {"INSERT", "ACAD_TABLE"})) continue;
    ++last.byName[database::foldName(blockNameOf(drawing, record))];
  }
  last.first = first;
  return last.byName;
}

bool isShared(const Subject& dimension, const database::TableEntry& picture) {
  const auto& references = referencesOf(dimension.drawing());
  const auto found = references.find(database::foldName(picture.name));
  return found == references.end() || found->second != 1;
}

// --- texts ---

// Arrowheads are such blocks. Blocks within them are not looked into.
bool showsNoText(const database::Drawing& drawing, std::uint32_t reference) {
  const database::TableEntry* const block = blockNamed(drawing, blockNameOf(drawing, reference));
  if (block == nullptr || drawing.members(reference).count > 0) return false;
  const std::vector<std::uint32_t> members = membersOf(drawing, *block);
  return std::all_of(members.begin(), members.end(),
                     [&](std::uint32_t record) { return hasNoText(drawing.view(record).type()); });
}

// A code in the wording that colors what follows it. One after a backslash that is meant as such counts, too.
bool hasOwnColors(const database::Lens& text) {
  constexpr int restCode = 3;
  std::wstring wording;
  for (const std::wstring& chunk : text.texts(restCode, "AcDbMText"))
    wording += chunk;
  wording += text.text(1, "AcDbMText");
  return wording.find(L"\\C") != std::wstring::npos || wording.find(L"\\c") != std::wstring::npos;
}

// --- lines ---

// A dimension between two points, as seen from above: across it run the extension lines, along it the dimension line.
struct Frame {
  Vector2 along;
  std::array<Vector2, 2> measured;
  Vector2 onLine;
  double tolerance;

  [[nodiscard]] bool isOnDimensionLine(const Vector2& point) const {
    return std::abs(cross(along, point - onLine)) <= tolerance;
  }
  [[nodiscard]] bool isOnExtensionLine(const Vector2& point, std::size_t end) const {
    return std::abs(dot(along, point - measured[end])) <= tolerance;
  }
  [[nodiscard]] bool isOnAnExtensionLine(const Vector2& one, const Vector2& other) const {
    return (isOnExtensionLine(one, 0) && isOnExtensionLine(other, 0))
           || (isOnExtensionLine(one, 1) && isOnExtensionLine(other, 1));
  }
  // Where an arrowhead has its tip.
  [[nodiscard]] bool isEnd(const Vector2& point) const {
    return isOnDimensionLine(point) && (isOnExtensionLine(point, 0) || isOnExtensionLine(point, 1));
  }
};

Vector2 flat(const Vector3& point) {
  return {point.x, point.y};
}

bool isFlat(const database::Lens& lens) {
  return normalOf(lens, dxf::anySubclass) == Vector3{0, 0, 1};
}

// Nothing for a dimension of another kind, in another plane, or with slanted extension lines; for a picture that is
// moved; and where both points are the same to the dimension.
std::optional<Frame> frameOfPicture(const Subject& dimension) {
  constexpr std::int64_t kindBits = 7;
  const database::Lens lens = dimension.lens();
  const std::int64_t kind = lens.integer(70, dxf::anySubclass, 0) & kindBits;
  if (lens.type() != "DIMENSION" || kind > 1 || !isFlat(lens)) return std::nullopt;
  if (std::abs(lens.real(52, dxf::anySubclass, 0)) > 0) return std::nullopt;
  if (!(pointAt(lens, 12, dxf::anySubclass) == Vector3{})) return std::nullopt;
  const auto point = [&](int code) { return flat(pointAt(lens, code, dxf::anySubclass)); };
  Frame frame{{}, {point(13), point(14)}, point(10), 0};
  const Vector2 span = frame.measured[1] - frame.measured[0];
  const double angle = radians(lens.real(50, dxf::anySubclass, 0));
  frame.along = kind == 0 ? Vector2{std::cos(angle), std::sin(angle)} : (1 / length(span)) * span;
  const double reach =
      std::max({1.0, length(frame.measured[0]), length(frame.measured[1]), length(frame.onLine)});
  frame.tolerance = 1e-8 * reach;
  const bool isApart = std::abs(dot(frame.along, span)) > 10 * frame.tolerance;
  return isApart ? std::optional(frame) : std::nullopt;
}

bool isArrowhead(const Subject& dimension, const std::wstring& block) {
  const auto withoutMark = [](std::wstring_view name) {
    return name.starts_with(L'_') ? name.substr(1) : name;
  };
  const auto isSame = [&](const std::wstring& own) {
    return !own.empty() && database::sameName(withoutMark(own), withoutMark(block));
  };
  return isSame(getArrowheadBlock<1>(dimension)) || isSame(getArrowheadBlock<2>(dimension));
}

// Puts the entity where it belongs; false when that cannot be told.
bool tell(const Subject& dimension, const Frame& frame, std::uint32_t record, PictureLines& lines) {
  const database::Lens lens(dimension.drawing(), record);
  const std::string_view type = lens.type();
  if (isOneOf(type, {"TEXT", "MTEXT", "POINT"})) return true;
  const auto point = [&](int code) { return flat(pointAt(lens, code, dxf::anySubclass)); };
  if (!isFlat(lens)) return false;
  if (type == "LINE") {
    const bool isDimensionLine = frame.isOnDimensionLine(point(10)) && frame.isOnDimensionLine(point(11));
    const bool isExtensionLine = frame.isOnAnExtensionLine(point(10), point(11));
    if (isDimensionLine == isExtensionLine) return false;
    (isDimensionLine ? lines.dimensionLines : lines.extensionLines).push_back(record);
    return true;
  }
  if (type == "SOLID") {
    lines.filledArrowheads.push_back(record);
    // The tip is its third corner, which is the fourth one, too.
    return frame.isEnd(point(12)) && point(12) == point(13);
  }
  if (type != "INSERT" || !showsNoText(dimension.drawing(), record)) return false;
  lines.arrowheadBlocks.push_back(record);
  return frame.isEnd(point(10)) && isArrowhead(dimension, blockNameOf(dimension.drawing(), record));
}

}  // namespace

bool hasPicture(const Subject& dimension) {
  const database::TableEntry* const picture = pictureOf(dimension);
  if (picture == nullptr) return false;
  // The first record of an empty block is its end.
  const dxf::Document& document = dimension.drawing().document();
  const dxf::PairRange members = document.membersOf(picture->definition);
  return members.count > 0 && document.type(static_cast<std::uint32_t>(members.first)) != "ENDBLK";
}

PictureTexts textsOfPicture(const Subject& dimension) {
  const database::TableEntry* const picture = pictureOf(dimension);
  const database::Drawing& drawing = dimension.drawing();
  if (picture == nullptr) return {&reasons::pictureTextUnknown, {}};
  // The symbol of an arc, and a frame, are lines that may have the color of the text.
  const bool hasFrame = DimensionStyle(dimension).real(variables::textGap) < 0;
  if (hasFrame || dimension.lens().type() == "ARC_DIMENSION") return {&reasons::pictureTextUnknown, {}};
  if (isShared(dimension, *picture)) return {&reasons::pictureShared, {}};
  PictureTexts texts;
  for (const std::uint32_t record : membersOf(drawing, *picture)) {
    const std::string_view type = drawing.view(record).type();
    if (isOneOf(type, {"TEXT", "MTEXT"})) {
      texts.records.push_back(record);
      if (type == "MTEXT" && hasOwnColors(database::Lens(drawing, record)))
        return {&reasons::pictureTextHasColors, {}};
    } else if (!hasNoText(type) && !(type == "INSERT" && showsNoText(drawing, record))) {
      return {&reasons::pictureTextUnknown, {}};
    }
  }
  // There is one somewhere, be it in lines.
  if (texts.records.empty()) texts.whyNot = &reasons::pictureTextUnknown;
  return texts;
}

PictureLines linesOfPicture(const Subject& dimension) {
  const database::TableEntry* const picture = pictureOf(dimension);
  const std::optional<Frame> frame = frameOfPicture(dimension);
  PictureLines lines;
  if (picture == nullptr || !frame) {
    lines.whyNot = &reasons::pictureLinesUnknown;
    return lines;
  }
  if (isShared(dimension, *picture)) {
    lines.whyNot = &reasons::pictureShared;
    return lines;
  }
  for (const std::uint32_t record : membersOf(dimension.drawing(), *picture)) {
    if (tell(dimension, *frame, record, lines)) continue;
    lines.whyNot = &reasons::pictureLinesUnknown;
    break;
  }
  return lines;
}

}  // namespace velt::automation
