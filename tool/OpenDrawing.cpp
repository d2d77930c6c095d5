#include "tool/OpenDrawing.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "dxf/Numbers.h"
#include "tool/Progress.h"

namespace velt::tool {

namespace {

constexpr const char* standardInputName = "standard input";

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
  const bool isStandardInput = file == standardStream;
  Progress progress("Loading " + (isStandardInput ? std::string(standardInputName) : file));
  const auto report = [&](std::uint64_t done, std::uint64_t total) { progress.report(done, total); };
  if (!isStandardInput) return database::Drawing::open(file, report);
  std::string bytes(std::istreambuf_iterator<char>(std::cin), {});
  return database::Drawing::parse(std::move(bytes), standardInputName, report);
}

palette::NumberStyle numberStyleOf(const database::Drawing& drawing) {
  palette::NumberStyle style;
  style.lengthPlaces = precisionIn(drawing, "$LUPREC").value_or(style.lengthPlaces);
  style.anglePlaces = precisionIn(drawing, "$AUPREC").value_or(style.anglePlaces);
  return style;
}

}  // namespace velt::tool
