#include "tool/OpenDrawing.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

#include "dxf/Numbers.h"
#include "tool/Progress.h"

namespace velt::tool {

namespace {

std::optional<int> precisionIn(const database::Drawing& drawing, std::string_view variable) {
  const std::optional<std::string_view> value = drawing.document().headerValue(variable, 70);
  if (!value) return std::nullopt;
  constexpr std::int64_t mostPlaces = 8;
  const auto places = dxf::parseInteger<std::int64_t>(*value);
  if (!places) return std::nullopt;
  return static_cast<int>(std::clamp<std::int64_t>(*places, 0, mostPlaces));
}

}  // namespace

std::unique_ptr<database::Drawing> openDrawing(const std::string& file) {
  Progress progress("Loading " + file);
  return database::Drawing::open(
      file, [&](std::uint64_t done, std::uint64_t total) { progress.report(done, total); });
}

palette::NumberStyle numberStyleOf(const database::Drawing& drawing) {
  palette::NumberStyle style;
  style.lengthPlaces = precisionIn(drawing, "$LUPREC").value_or(style.lengthPlaces);
  style.anglePlaces = precisionIn(drawing, "$AUPREC").value_or(style.anglePlaces);
  return style;
}

}  // namespace velt::tool
