#include "tool/OpenDrawing.h"

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

// Of the header's variables, in which angles are in degrees.
std::optional<double> variableIn(const database::Drawing& drawing, std::string_view name) {
  constexpr int angle = 50, wholeNumber = 70;
  const int code = name == "ANGBASE" ? angle : wholeNumber;
  const std::optional<std::string_view> value = drawing.document().headerValue("$" + std::string(name), code);
  return value ? dxf::parseReal(*value) : std::nullopt;
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

palette::Selection queried(std::span<const VkDbObjectId> entities) {
  const ReadingProgress progress;
  palette::Selection selection(entities);
  selection.query();
  return selection;
}

palette::NumberStyle numberStyleOf(const database::Drawing& drawing, bool isPrecise) {
  palette::NumberStyle style =
      palette::NumberStyle::ofVariables([&](std::string_view name) { return variableIn(drawing, name); });
  style.isPrecise = isPrecise;
  return style;
}

}  // namespace velt::tool
