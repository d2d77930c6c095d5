#include <fmt/format.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <unordered_set>
#include <vector>

#include "dxf/FileReplacement.h"
#include "dxf/Numbers.h"
#include "palette/Palette.h"
#include "tool/Commands.h"
#include "tool/Failure.h"
#include "tool/OpenDrawing.h"
#include "view/Draw.h"
#include "view/Spaces.h"
#include "view/Svg.h"

namespace velt::tool {

namespace {

view::Space spaceNamed(const database::Drawing& drawing, const std::string& name) {
  const std::vector<view::Space> spaces = view::spacesOf(drawing);
  if (name.empty()) return spaces.front();
  std::string names;
  for (const view::Space& space : spaces) {
    const std::string own = palette::toUtf8(space.name);
    if (palette::equalIgnoringCase(own, name)) return space;
    names += (names.empty() ? "" : ", ") + own;
  }
  throw Failure(fmt::format("{}: no such layout; there are: {}", name, names));
}

// The entities that the options select, to stand out.
std::unordered_set<std::uint32_t> highlightedBy(const DrawRequest& request, database::Drawing& drawing) {
  std::unordered_set<std::uint32_t> records;
  if (request.selection.isEmpty()) return records;
  for (const VkDbObjectId id : select(drawing, request.selection).ids) {
    if (const auto object = database::resolve(id)) records.insert(object->record);
  }
  return records;
}

// All that the space holds: looked at coarsely first, to know where it is.
view::Picture drawn(const database::Drawing& drawing, const view::Space& space, view::SvgOptions& options) {
  const view::Contents contents(drawing);
  options.window = view::windowAround(view::draw(drawing, contents, space, {}).extents);
  return view::draw(drawing, contents, space, {.scale = view::scaleOf(options), .window = options.window});
}

}  // namespace

void draw(const DrawRequest& request, std::ostream& out, std::ostream& err) {
  const bool toFile = !request.output.empty();
  std::error_code unknown;
  if (toFile && std::filesystem::equivalent(request.output, request.drawing, unknown))
    throw Failure(
        fmt::format("{}: is the drawing itself; name another file for the picture", request.output));
  if (toFile && !request.force && std::filesystem::exists(request.output))
    throw Failure(fmt::format("{}: exists already (--force replaces it)", request.output));

  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  const view::Space space = spaceNamed(*drawing, request.layout);
  view::SvgOptions options;
  options.width = request.width;
  options.background = request.isDark ? view::Background::Dark : view::Background::Light;
  options.highlighted = highlightedBy(request, *drawing);
  options.nameOf = [&](std::uint32_t record) { return dxf::formatHandle(drawing->handleOf(record)); };
  options.title = fmt::format("{}, {}", std::filesystem::path(request.drawing).filename().string(),
                              palette::toUtf8(space.name));
  const view::Picture picture = drawn(*drawing, space, options);
  if (picture.isCutShort)
    err << fmt::format("veltprops: {}: too much to draw; the picture is not complete\n", request.drawing);

  if (!toFile) {
    view::writeSvg(picture, options, out);
    return;
  }
  dxf::FileReplacement file(request.output, {.onlyNew = !request.force});
  view::writeSvg(picture, options, file.stream());
  file.commit();
  out << fmt::format("{}: written\n", request.output);
}

}  // namespace velt::tool
