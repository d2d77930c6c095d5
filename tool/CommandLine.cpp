#include "tool/CommandLine.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <filesystem>
#include <new>
#include <string>
#include <vector>

#include "dxf/Error.h"
#include "embedded/sources/LoadedPlugins.h"
#include "host/com/ComError.h"
#include "palette/Palette.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {

namespace {

void addSelection(CLI::App& command, SelectionRequest& selection) {
  command.add_flag("--all", selection.all, "Every entity of model space and the layouts");
  command
      .add_option("--handle", selection.handles, "Entities by handle, hexadecimal (2F, or several: 2F,30)")
      ->delimiter(',')
      // What follows is something else, such as an assignment.
      ->allow_extra_args(false)
      ->type_name("HANDLE");
  command.add_option("--layer", selection.layers, "Entities on a layer (may be repeated)")
      ->type_name("NAME")
      ->allow_extra_args(false);
  command.add_option("--type", selection.types, "Entities of a class (Line) or DXF type (LINE)")
      ->type_name("TYPE")
      ->allow_extra_args(false)
      ->delimiter(',');
  command.add_flag("--in-blocks", selection.inBlocks, "Also the entities inside block definitions");
  command.footer(
      "An entity is selected when it fits one of the filters of each kind:\n"
      "  --layer Walls --layer Doors --type Line   the lines on either layer");
}

void addPlugins(CLI::App& command, std::vector<std::string>& plugins) {
  command.add_option("--plugin", plugins, "Plug-in that adds rows of its own (may be repeated)")
      ->type_name("FILE.so")
      ->allow_extra_args(false);
}

// A plug-in that misbehaves is a message, and its rows are missing. A file that does not exist is a mistake of the
// user.
void loadPlugins(sources::LoadedPlugins& plugins, const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    if (!std::filesystem::exists(file)) throw Failure(fmt::format("{}: no such plug-in", file));
    plugins.load(file);
  }
}

struct CommandLine {
  CLI::App app{"The properties of entities in a DXF drawing, as the property palette shows them",
               "veltprops"};
  ShowRequest showRequest;
  ListRequest listRequest;
  SetRequest setRequest;
  SampleRequest sampleRequest;
  std::vector<std::string> plugins;
  CLI::App* showCommand = nullptr;
  CLI::App* listCommand = nullptr;
  CLI::App* setCommand = nullptr;
  CLI::App* sampleCommand = nullptr;

  CommandLine() {
    app.require_subcommand(1);
    app.footer("Exit codes: 0 done, 1 failed, 2 wrong usage. \"veltprops COMMAND --help\" tells more.");

    showCommand = app.add_subcommand("show", "Show the merged property list of a selection");
    showCommand->add_option("DRAWING", showRequest.drawing, "DXF file")->required();
    addSelection(*showCommand, showRequest.selection);
    showCommand->add_flag("--choices", showRequest.choices,
                          "Also the choices of each property that has some");
    showCommand->add_flag("--json", showRequest.json, "Every field of every row, as JSON");
    addPlugins(*showCommand, plugins);

    listCommand = app.add_subcommand("list", "List entities: handle, class, DXF type, layer");
    listCommand->add_option("DRAWING", listRequest.drawing, "DXF file")->required();
    addSelection(*listCommand, listRequest.selection);
    CLI::Option* const listAsJson = listCommand->add_flag("--json", listRequest.json, "As JSON");
    listCommand
        ->add_flag("--values", listRequest.values,
                   "With --json: also the properties of each entity by itself")
        ->needs(listAsJson);

    setCommand =
        app.add_subcommand("set", "Write values to every entity of a selection, and save the drawing");
    setCommand->add_option("DRAWING", setRequest.drawing, "DXF file")->required();
    setCommand
        ->add_option("NAME=VALUE", setRequest.assignments,
                     "A property, by the name that \"show\" gives it, and its new value")
        ->required();
    addSelection(*setCommand, setRequest.selection);
    CLI::Option* const output = setCommand->add_option("-o,--output", setRequest.output, "File to save to");
    CLI::Option* const inPlace =
        setCommand->add_flag("--in-place", setRequest.inPlace, "Save to the drawing itself");
    CLI::Option* const dryRun =
        setCommand->add_flag("--dry-run", setRequest.dryRun, "Tell what would happen, and save nothing");
    output->excludes(inPlace)->excludes(dryRun);
    inPlace->excludes(dryRun);
    setCommand->add_flag("--force", setRequest.force, "Replace an existing file at the output");
    setCommand->add_flag("--overwrite-changes", setRequest.overwriteChanges,
                         "Save although the file was changed after it was read; those changes are lost");
    setCommand->add_flag("--keep-going", setRequest.keepGoing,
                         "Go on after a refusal, and save what was not refused");
    setCommand->add_flag("--json", setRequest.json, "The report as JSON, with the handles of the entities");
    addPlugins(*setCommand, plugins);
    setCommand->footer(
        "Write values as \"show\" shows them: a choice by its name, an angle in degrees.\n"
        "When several rows have one name, NAME#2 is the second of them.\n"
        "  veltprops set plan.dxf --layer Walls Layer=Doors \"Start X=1.5\" -o new.dxf\n"
        "Entities on locked layers stay as they are. When an entity refuses a value, nothing is saved, "
        "unless "
        "--keep-going is given.");

    sampleCommand =
        app.add_subcommand("sample", "Write a sample drawing: a small floor plan, or the gallery");
    sampleCommand->add_option("FILE", sampleRequest.file, "DXF file to write")->required();
    sampleCommand->add_flag("--gallery", sampleRequest.gallery,
                            "The gallery: at least one entity of every class");
    sampleCommand->add_flag("--force", sampleRequest.force, "Replace an existing file");
  }

  ExitCode runCommand(std::ostream& out, std::ostream& err) const {
    sources::LoadedPlugins loaded([&](const std::string& line) { err << "veltprops: " << line << '\n'; });
    loadPlugins(loaded, plugins);
    if (setCommand->parsed()) return set(setRequest, out, err);
    if (showCommand->parsed()) show(showRequest, out);
    if (listCommand->parsed()) list(listRequest, out);
    if (sampleCommand->parsed()) sample(sampleRequest, out);
    return succeeded;
  }
};

int fail(std::ostream& err, ExitCode code, std::string_view message) {
  err << "veltprops: " << message << '\n';
  return code;
}

}  // namespace

int run(int argumentCount, const char* const* arguments, std::ostream& out, std::ostream& err) {
  CommandLine commandLine;
  try {
    commandLine.app.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& error) {
    // A request for help is not a failure; everything else that stops the parser is wrong usage.
    return commandLine.app.exit(error, out, err) == 0 ? succeeded : wrongUsage;
  }
  try {
    const ExitCode code = commandLine.runCommand(out, err);
    out.flush();
    return out ? code : fail(err, failed, "the output could not be written");
  } catch (const UsageFailure& failure) {
    return fail(err, wrongUsage, failure.what());
  } catch (const _com_error& error) {
    return fail(err, failed, palette::toUtf8(static_cast<const wchar_t*>(error.Description())));
  } catch (const std::bad_alloc&) {
    return fail(err, failed, "out of memory");
  } catch (const std::exception& failure) {
    return fail(err, failed, failure.what());
  }
}

}  // namespace velt::tool
