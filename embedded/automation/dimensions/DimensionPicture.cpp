#include "embedded/automation/dimensions/DimensionPicture.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/PictureParts.h"
#include "embedded/automation/dimensions/StyleUnits.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/Colors.h"
#include "embedded/database/LastAsked.h"

namespace velt::automation {
namespace {

// Kept for the dimension that was asked last, since a palette asks one entity for all its rows.
bool isDrawn(const Subject& dimension) {
  thread_local database::LastAsked<bool> last;
  return last.of(dimension.id(), dimension.drawing(), [&] { return hasPicture(dimension); });
}

// The dimension's own wording may ask for them, too.
bool showsAlternateUnits(const Subject& dimension) {
  return DimensionStyle(dimension).flag(variables::alternateUnits)
         || dimension.lens().text(1, "AcDbDimension").find(L"[]") != std::wstring::npos;
}

bool showsTolerances(const Subject& dimension) {
  const DimensionStyle style(dimension);
  return style.flag(variables::hasTolerance) || style.flag(variables::hasLimits);
}

bool hasFractions(std::int64_t lengthFormat) {
  constexpr std::int64_t architectural = 4;
  constexpr std::int64_t fractional = 5;
  constexpr std::int64_t architecturalStacked = 7;
  constexpr std::int64_t fractionalStacked = 8;
  return lengthFormat == architectural || lengthFormat == fractional || lengthFormat == architecturalStacked
         || lengthFormat == fractionalStacked;
}

bool showsFractions(const Subject& dimension) {
  if (hasFractions(getUnitsFormat(dimension))) return true;
  return showsAlternateUnits(dimension)
         && hasFractions(DimensionStyle(dimension).integer(variables::alternateFormat));
}

// --- followers ---

constexpr const char* common = "AcDbEntity";
constexpr std::int64_t lineweightByLayer = -1;

VkCmColor colorOfIndex(std::int32_t index) {
  constexpr std::int32_t byLayer = 256;
  VkCmColor color;
  color.setColor(index == 0         ? database::colorByBlock
                 : index == byLayer ? database::colorByLayer
                                    : database::colorOfIndex(static_cast<std::uint32_t>(index)));
  return color;
}

void paint(const Subject& dimension, const std::vector<std::uint32_t>& records, const Value& index) {
  const VkCmColor color = colorOfIndex(valueAs<std::int32_t>(index));
  for (const std::uint32_t record : records) {
    if (!database::setEntityColor(dimension.drawing(), record, color)) {
      throw Refusal(E_FAIL, L"The stored picture lacks the part of its data that the color belongs in.");
    }
  }
}

void weigh(const Subject& dimension, const std::vector<std::uint32_t>& records, const Value& weight) {
  for (const std::uint32_t record : records)
    Editor(dimension.drawing(), record)
        .integer(370, common, valueAs<std::int32_t>(weight), lineweightByLayer);
}

bool isInEffect(const Subject& dimension, const PropertyRow& row, const Value& value) {
  return valueAs<std::int32_t>(row.access.get(dimension, row)) == valueAs<std::int32_t>(value);
}

// Empty where there is no picture.
PictureLines linesToFollow(const Subject& dimension) {
  return hasPicture(dimension) ? linesOfPicture(dimension) : PictureLines();
}

// Entities that do not look as the style says may be something else than they seem.

bool haveColor(const Subject& dimension, const std::vector<std::uint32_t>& records, std::int64_t index) {
  constexpr std::int64_t byLayer = 256;
  return std::all_of(records.begin(), records.end(), [&](std::uint32_t record) {
    return database::Lens(dimension.drawing(), record).integer(62, common, byLayer) == index;
  });
}

bool haveWeight(const Subject& dimension, const std::vector<std::uint32_t>& records, std::int64_t weight) {
  return std::all_of(records.begin(), records.end(), [&](std::uint32_t record) {
    return database::Entity(dimension.drawing(), record).lineweight() == weight;
  });
}

bool areAsTheStyleSays(const Subject& dimension, const PictureLines& lines) {
  const DimensionStyle style(dimension);
  const std::int64_t lineColor = style.integer(variables::dimensionLineColor);
  if (!haveColor(dimension, lines.dimensionLines, lineColor)
      || !haveColor(dimension, lines.filledArrowheads, lineColor)
      || !haveColor(dimension, lines.arrowheadBlocks, lineColor)
      || !haveColor(dimension, lines.extensionLines, style.integer(variables::extensionLineColor))) {
    return false;
  }
  if (!isOfFormat(dimension.drawing(), variables::dimensionLineWeight.since)) return true;
  return haveWeight(dimension, lines.dimensionLines, style.integer(variables::dimensionLineWeight))
         && haveWeight(dimension, lines.arrowheadBlocks, style.integer(variables::dimensionLineWeight))
         && haveWeight(dimension, lines.extensionLines, style.integer(variables::extensionLineWeight));
}

// --- why not ---

const Reason* wouldStayIf(bool isShown) {
  return isShown ? &reasons::pictureWouldStay : nullptr;
}

const Reason* anyPicture(const Subject& dimension) {
  return wouldStayIf(isDrawn(dimension));
}

const Reason* pictureWithAlternateUnits(const Subject& dimension) {
  return wouldStayIf(isDrawn(dimension) && showsAlternateUnits(dimension));
}

const Reason* pictureWithTolerances(const Subject& dimension) {
  return wouldStayIf(isDrawn(dimension) && showsTolerances(dimension));
}

const Reason* pictureWithFixedLength(const Subject& dimension) {
  return wouldStayIf(isDrawn(dimension) && DimensionStyle(dimension).flag(variables::extensionLengthIsFixed));
}

const Reason* pictureWithFractions(const Subject& dimension) {
  return wouldStayIf(isDrawn(dimension) && showsFractions(dimension));
}

const Reason* pictureWithSmallText(const Subject& dimension) {
  return wouldStayIf(isDrawn(dimension) && (showsTolerances(dimension) || showsFractions(dimension)));
}

const Reason* pictureWithUnknownText(const Subject& dimension) {
  return isDrawn(dimension) ? textsOfPicture(dimension).whyNot : nullptr;
}

const Reason* pictureWithUnknownLines(const Subject& dimension) {
  if (!isDrawn(dimension)) return nullptr;
  const PictureLines lines = linesOfPicture(dimension);
  if (lines.whyNot != nullptr) return lines.whyNot;
  return areAsTheStyleSays(dimension, lines) ? nullptr : &reasons::pictureLooksOtherwise;
}

}  // namespace

// clang-format off
constinit const Obstacle drawnInPicture = {
    L"the drawing stores how the dimension looks, which would stay what it is.",
    anyPicture};
constinit const Obstacle drawnWithAlternateUnits = {
    L"the drawing stores how the dimension looks with alternate units, which would stay what it is.",
    pictureWithAlternateUnits};
constinit const Obstacle drawnWithTolerances = {
    L"the drawing stores how the dimension looks with tolerances, which would stay what it is.",
    pictureWithTolerances};
constinit const Obstacle drawnWithFixedLength = {
    L"the drawing stores how the dimension looks with extension lines of fixed length, which would stay what it is.",
    pictureWithFixedLength};
constinit const Obstacle drawnWithFractions = {
    L"the drawing stores how the dimension looks with fractions, which would stay what it is.",
    pictureWithFractions};
constinit const Obstacle drawnWithSmallText = {
    L"the drawing stores how the dimension looks with tolerances or fractions, which would stay what it is.",
    pictureWithSmallText};
constinit const Obstacle drawnWithUnknownText = {
    L"the drawing stores how the dimension looks and its text cannot be told, or is shared, which would stay what it is.",
    pictureWithUnknownText};
constinit const Obstacle drawnWithUnknownLines = {
    L"the drawing stores how the dimension looks and its lines cannot be told apart, or are shared, which would stay what it is.",
    pictureWithUnknownLines};
// clang-format on

void putTextColor(const Subject& dimension, const PropertyRow& row, const Value& value) {
  if (isInEffect(dimension, row, value)) return;
  access::putStyleColor(dimension, row, value);
  if (hasPicture(dimension)) paint(dimension, textsOfPicture(dimension).records, value);
}

void putDimensionLineColor(const Subject& dimension, const PropertyRow& row, const Value& value) {
  if (isInEffect(dimension, row, value)) return;
  const PictureLines lines = linesToFollow(dimension);
  access::putStyleColor(dimension, row, value);
  paint(dimension, lines.dimensionLines, value);
  paint(dimension, lines.filledArrowheads, value);
  paint(dimension, lines.arrowheadBlocks, value);
}

void putDimensionLineWeight(const Subject& dimension, const PropertyRow& row, const Value& value) {
  if (isInEffect(dimension, row, value)) return;
  // Filled arrowheads have no lines.
  const PictureLines lines = linesToFollow(dimension);
  access::putStyleMember(dimension, row, value);
  weigh(dimension, lines.dimensionLines, value);
  weigh(dimension, lines.arrowheadBlocks, value);
}

void putExtensionLineColor(const Subject& dimension, const PropertyRow& row, const Value& value) {
  if (isInEffect(dimension, row, value)) return;
  access::putStyleColor(dimension, row, value);
  paint(dimension, linesToFollow(dimension).extensionLines, value);
}

void putExtensionLineWeight(const Subject& dimension, const PropertyRow& row, const Value& value) {
  if (isInEffect(dimension, row, value)) return;
  access::putStyleMember(dimension, row, value);
  weigh(dimension, linesToFollow(dimension).extensionLines, value);
}

}  // namespace velt::automation
