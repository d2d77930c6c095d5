// veltpalette: a drawing and the palette of its entities, in a window.

#include <CLI/CLI.hpp>
#include <QApplication>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "desktop/MainWindow.h"
#include "dxf/Error.h"
#include "embedded/sources/LoadedPlugins.h"
#include "samples/FloorPlan.h"
#include "tool/EntitySelection.h"
#include "tool/Version.h"

namespace {

struct Request {
  std::string drawing;
  bool sample = false;
  velt::tool::SelectionRequest selection{};
  std::vector<std::string> plugins{};
};

std::unique_ptr<velt::desktop::Session> open(const Request& request) {
  using velt::desktop::Session;
  if (!request.drawing.empty()) return std::make_unique<Session>(std::filesystem::path(request.drawing));
  return std::make_unique<Session>(
      velt::database::Drawing::parse(velt::samples::sampleFloorPlan(), "the sample drawing"));
}

int run(const Request& request, int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("veltpalette");
  velt::sources::LoadedPlugins plugins(
      [](const std::string& line) { std::fprintf(stderr, "veltpalette: %s\n", line.c_str()); });
  for (const std::string& file : request.plugins) {
    if (!plugins.load(file)) return 1;
  }
  velt::desktop::MainWindow window(open(request));
  if (!request.selection.isEmpty())
    window.select(velt::tool::select(window.session().drawing(), request.selection).ids);
  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  Request request;
  CLI::App app("Shows a drawing and the palette of its entities, to look at and to edit.", "veltpalette");
  app.set_version_flag("--version", "veltpalette " + std::string(velt::tool::version));
  app.add_option("DRAWING", request.drawing, "DXF file; without one, the sample drawing");
  velt::tool::SelectionRequest& selection = request.selection;
  app.add_flag("--all", selection.all, "Begin with all entities selected");
  app.add_option("--handle", selection.handles, "Begin with the entity of this handle")->delimiter(',');
  app.add_option("--layer", selection.layers, "Begin with the entities of this layer")->delimiter(',');
  app.add_option("--type", selection.types, "Begin with the entities of this class or DXF type")
      ->delimiter(',');
  app.add_option("--where", selection.where, "Begin with the entities that fit the condition");
  app.add_option("--plugin", request.plugins, "Plug-in that adds rows of its own")->allow_extra_args(false);
  app.footer("Exit codes: 0 closed, 1 failed, 2 wrong usage.");
  try {
    // Before there is an application, which needs a screen: asking for help does not.
    app.parse(argc, argv);
    return run(request, argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "veltpalette: %s\n", error.what());
    return 1;
  }
}
