#include "tool/OpenDrawing.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "tool/Progress.h"

namespace velt::tool {

namespace {

std::optional<int> precisionIn(const database::Drawing& drawing, std::string_view variable) {
  const std::optional<std::string_view> value = drawing.document().headerValue(variable, 70);
  if (!value) return std::nullopt;
  constexpr int mostPlaces = 8;
  const int places = std::atoi(std::string(*value).c_str());
  return std::clamp(places, 0, mostPlaces);
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
