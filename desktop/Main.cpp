// veltpalette: a drawing and the palette of its entities, in a window.

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QFileInfo>
#include <QLocale>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "desktop/LongWork.h"
#include "desktop/MainWindow.h"
#include "desktop/Translations.h"
#include "embedded/sources/LoadedPlugins.h"
#include "samples/FloorPlan.h"
#include "tool/EntitySelection.h"
#include "tool/Failure.h"
#include "tool/OpenDrawing.h"
#include "tool/PluginFiles.h"
#include "tool/SelectionOptions.h"
#include "tool/Version.h"

namespace {

struct Request {
  std::string drawing;
  velt::tool::SelectionRequest selection{};
  std::vector<std::string> plugins{};
};

// What the window holds until it has a drawing.
std::unique_ptr<velt::desktop::Session> nothing() {
  return std::make_unique<velt::desktop::Session>(velt::database::Drawing::parse("0\nEOF\n", "nothing"));
}

std::unique_ptr<velt::desktop::Session> open(const Request& request) {
  using velt::desktop::Session;
  if (request.drawing.empty()) {
    return std::make_unique<Session>(
        velt::database::Drawing::parse(velt::samples::sampleFloorPlan(), "the sample drawing"));
  }
  if (request.drawing == velt::tool::standardStream)
    return std::make_unique<Session>(velt::tool::openDrawing(request.drawing));
  return std::make_unique<Session>(std::filesystem::path(request.drawing));
}

int run(const Request& request, int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setOrganizationName("velt");
  QApplication::setApplicationName("veltpalette");
  QApplication::setDesktopFileName("veltpalette");
  velt::desktop::speak(QLocale(), application);
  velt::sources::LoadedPlugins plugins(
      [](const std::string& line) { std::fprintf(stderr, "veltpalette: %s\n", line.c_str()); });
  for (const std::string& name : request.plugins) {
    if (!plugins.load(velt::tool::pluginFile(name))) throw velt::tool::Failure(name + ": not loaded");
  }
  velt::desktop::MainWindow window(nothing());
  // What takes a moment only, or fails, shows no window without a drawing.
  const auto showing =
      QObject::connect(&window.work(), &velt::desktop::LongWork::shown, &window, &QWidget::show);
  window.load(QFileInfo(QString::fromStdString(request.drawing)).fileName(), [&] { return open(request); });
  if (!request.selection.isEmpty()) window.selectNamed(request.selection);
  QObject::disconnect(showing);
  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  Request request;
  CLI::App app("Shows a drawing and the palette of its entities, to look at and to edit", "veltpalette");
  app.set_version_flag("--version", "veltpalette " + std::string(velt::tool::version));
  app.add_option("DRAWING", request.drawing,
                 "DXF file; - is standard input; without one, the sample drawing");
  app.option_defaults()->group("Selected at the beginning");
  velt::tool::addSelection(app, request.selection);
  app.option_defaults()->group("Options");
  app.add_option(
         "--plugin", request.plugins,
         "Plug-in that adds rows of its own: a file, or the name of an installed one\n(may be repeated)")
      ->type_name("PLUGIN")
      ->allow_extra_args(false);
  app.footer(
      "Names are separated by commas, options may be repeated, and * and ? are wildcards.\n"
      "Environment: LANG is the language of the window (German or English), and VELT_PLUGIN_PATH has "
      "folders\n"
      "with plug-ins, separated by colons.\n"
      "Exit codes: 0 closed, 1 failed, 2 wrong usage.");
  try {
    // Before there is an application, which needs a screen: asking for help does not.
    app.parse(argc, argv);
    return run(request, argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : velt::tool::wrongUsage;
  } catch (const velt::tool::UsageFailure& error) {
    std::fprintf(stderr, "veltpalette: %s\n", error.what());
    return velt::tool::wrongUsage;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "veltpalette: %s\n", error.what());
    return velt::tool::failed;
  }
}
