#include "tool/CommandLine.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "embedded/sources/LoadedPlugins.h"
#include "embedded/sources/PluginCall.h"
#include "palette/Palette.h"
#include "tool/CleanOutput.h"
#include "tool/Commands.h"
#include "tool/Completion.h"
#include "tool/EachDrawing.h"
#include "tool/Failure.h"
#include "tool/ManPages.h"
#include "tool/OpenDrawing.h"
#include "tool/Pager.h"
#include "tool/PluginFiles.h"
#include "tool/SelectionOptions.h"
#include "tool/Terminal.h"
#include "tool/UsageMessage.h"
#include "tool/Version.h"

namespace velt::tool {

namespace {

constexpr const char* selectionHelp =
    "An entity is selected when it fits one of the names of each option, and the condition. Names are "
    "separated\n"
    "by commas (one that belongs to a name is written \\,), options may be repeated, and * and ? are "
    "wildcards:\n"
    "  --layer Walls,Doors --type 'Dim*'   the dimensions on either layer\n"
    "Conditions compare properties, by the names that \"show\" gives them, with =, !=, <, <=, >, >=, like "
    "and in;\n"
    "and, or, not and parentheses join them. \"has NAME\" asks whether there is such a property. Beside the\n"
    "properties there are @handle, @class, @type, @layer, @layout and @block:\n"
    "  --where \"Start X > 5 and Layer in (Walls, 'New doors') and not has NUMBER\"";

constexpr const char* drawingHelp = "DXF file; - is standard input";

void addDrawings(CLI::App& command, std::vector<std::string>& drawings) {
  command.add_option("DRAWING", drawings, drawingHelp)->required();
}

// How text is shown on a terminal.
struct Showing {
  bool isWide = false;
  bool isUnpaged = false;
};

void addShowing(CLI::App& command, Showing& showing) {
  command.add_flag("--wide", showing.isWide, "Lines longer than those of the terminal");
  command.add_flag("--no-pager", showing.isUnpaged,
                   "Output longer than the terminal goes there, not through PAGER");
}

void addPrecise(CLI::App& command, bool& isPrecise) {
  command.add_flag("--precise", isPrecise,
                   "All digits of numbers, and not the format of the drawing's units");
}

void addKeepGoing(CLI::App& command, bool& keepsGoing) {
  command.add_flag("--keep-going", keepsGoing, "Do without a plug-in that cannot be loaded");
}

void addPlugins(CLI::App& command, std::vector<std::string>& plugins) {
  command
      .add_option(
          "--plugin", plugins,
          "Plug-in that adds rows of its own: a file, or the name of an installed one\n(may be repeated)")
      ->type_name("PLUGIN")
      ->allow_extra_args(false);
}

// A plug-in that cannot be loaded ends the command, since what was asked for would lack its rows, unless asked to go on.
// One that misbehaves later is a message.
void loadPlugins(sources::LoadedPlugins& plugins, const std::vector<std::string>& files, bool keepGoing) {
  for (const std::string& name : files) {
    if (!plugins.load(pluginFile(name)) && !keepGoing)
      throw Failure(fmt::format("{}: not loaded (--keep-going does without it)", name));
  }
}

class HelpFormatter : public CLI::Formatter {
 public:
  std::string make_usage(const CLI::App* command, std::string) const override {
    return "Usage: " + usageOf(*command) + "\n";
  }
  // The library tells the options that exclude this one in the order of their addresses.
  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string text = Formatter::make_option_opts(option);
    std::set<std::string> excluded;
    for (const CLI::Option* other : option->get_excludes())
      excluded.insert(other->get_name());
    const std::string label = " Excludes: ";
    return excluded.empty()
               ? text
               : text.substr(0, text.find(label)) + label + fmt::format("{}", fmt::join(excluded, " "));
  }
};

struct CommandLine {
  CLI::App app{"The properties of entities in a DXF drawing, as the property palette shows them",
               "veltprops"};
  ShowRequest showRequest;
  ListRequest listRequest;
  SetRequest setRequest;
  TableRequest tableRequest;
  InfoRequest infoRequest;
  DiffRequest diffRequest;
  ExplainRequest explainRequest;
  DrawRequest drawRequest;
  SampleRequest sampleRequest;
  // What the options of all commands fill, which one of them at a time is.
  Subject subject;
  std::string firstDrawing;
  std::vector<std::string> plugins;
  bool keepsGoing = false;
  Showing showing;
  std::string manFolder;
  CLI::App* showCommand = nullptr;
  CLI::App* listCommand = nullptr;
  CLI::App* tableCommand = nullptr;
  CLI::App* infoCommand = nullptr;
  CLI::App* diffCommand = nullptr;
  CLI::App* explainCommand = nullptr;
  CLI::App* setCommand = nullptr;
  CLI::App* drawCommand = nullptr;
  CLI::App* sampleCommand = nullptr;
  CLI::App* manCommand = nullptr;

  CommandLine() {
    app.require_subcommand(1);
    app.set_version_flag("--version", fmt::format("veltprops {}", version));
    app.formatter(std::make_shared<HelpFormatter>());
    app.footer(
        "Several drawings are looked at one after the other; one that cannot be read does not stop the "
        "others.\n"
        "Environment: PAGER shows what is longer than the terminal, NO_COLOR turns colors off, and "
        "VELT_PLUGIN_PATH has\n"
        "folders with plug-ins, separated by colons.\n"
        "Exit codes: 0 done, 1 failed, 2 wrong usage; of set also 3 nothing to do, 4 partly done.\n"
        "\"veltprops COMMAND --help\" tells more.");

    showCommand = app.add_subcommand("show", "Show the merged property list of a selection");
    addDrawings(*showCommand, subject.drawings);
    addSelection(*showCommand, subject.selection);
    showCommand->add_flag("--choices", showRequest.choices,
                          "Also the choices of each property that has some");
    showCommand->add_flag("--values", showRequest.values,
                          "Also the different values behind *VARIES*, each with the number of entities that\n"
                          "have it and the option that selects them");
    addPrecise(*showCommand, showRequest.precise);
    CLI::Option* const showAsJson = showCommand->add_flag(
        "--json", showRequest.json, "Rows with values, texts, units and choices, as JSON");
    showCommand
        ->add_flag("--debug", showRequest.debug,
                   "With --json: every field of the rows' records, for who develops palettes or plug-ins")
        ->needs(showAsJson);
    addShowing(*showCommand, showing);
    addPlugins(*showCommand, plugins);
    addKeepGoing(*showCommand, keepsGoing);
    showCommand->footer(selectionHelp);

    listCommand = app.add_subcommand("list", "List entities: handle, class, DXF type, layer");
    addDrawings(*listCommand, subject.drawings);
    addSelection(*listCommand, subject.selection);
    CLI::Option* const listAsJson = listCommand->add_flag("--json", listRequest.json, "As JSON");
    listCommand
        ->add_flag("--values", listRequest.values,
                   "With --json: also the properties of each entity by itself")
        ->needs(listAsJson);
    addShowing(*listCommand, showing);
    addPlugins(*listCommand, plugins);
    addKeepGoing(*listCommand, keepsGoing);
    listCommand->footer(selectionHelp);

    addTableCommand();
    addInfoCommand();
    addDiffCommand();
    addExplainCommand();

    setCommand =
        app.add_subcommand("set", "Write values to every entity of a selection, and save the drawing");
    // Only the first one: words without a "=" after it may be further ones.
    setCommand->add_option("DRAWING", firstDrawing, drawingHelp)->required();
    setCommand->add_option("NAME=VALUE", setRequest.assignments,
                           "A property, by the name that \"show\" gives it, and its new value");
    setCommand
        ->add_option("--from", setRequest.from,
                     "Instead, the values in a file as \"table --json\", \"list --json --values\" or \"show "
                     "--json\"\nprint them, wherever they differ; only of the selected entities, if some are")
        ->type_name("FILE");
    addSelection(*setCommand, subject.selection);
    CLI::Option* const output =
        setCommand->add_option("-o,--output", setRequest.output, "File to save to; - is standard output");
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
                         "Go on after a refusal, and save what was not refused; do without a plug-in that\n"
                         "cannot be loaded");
    setCommand->add_flag("--break-associations", setRequest.breakAssociations,
                         "Change also what hatches follow; these keep their outline and no longer follow");
    setCommand->add_flag("--precise", setRequest.precise,
                         "Also to entities that show the value already, since fewer digits are shown than\n"
                         "they have");
    setCommand->add_flag("--json", setRequest.json, "The report as JSON, with the handles of the entities");
    addPlugins(*setCommand, plugins);
    setCommand->footer(
        "Write values as \"show\" shows them: a choice by its name, lengths and angles in the drawing's "
        "units.\n"
        "When several rows have one name, NAME#2 is the second of them; Vertex[2].X is the second Vertex X.\n"
        "  veltprops set plan.dxf --layer Walls Layer=Doors \"Start X=1.5\" -o new.dxf\n"
        "What each entity has is changed by NAME+=VALUE, NAME-=VALUE, NAME*=NUMBER, NAME/=NUMBER and, of "
        "texts, "
        "NAME=~s/OLD/NEW/:\n"
        "  veltprops set plan.dxf --layer Axes Radius*=2 \"Text=~s/Axis/Line/\" -o new.dxf\n"
        "Entities on locked layers stay as they are. When an entity refuses a value, nothing is saved, "
        "unless "
        "--keep-going is given. A drawing in which nothing changes is not written.\n"
        "Exit codes: 0 done; 1 refused, and nothing was saved; 2 wrong usage; 3 nothing to do, since every "
        "entity has\n"
        "the value already or is on a locked layer; 4 partly done, since some refused and --keep-going was "
        "given.\n\n"
        + std::string(selectionHelp));

    manCommand = app.add_subcommand("man-pages", "Write the manual pages into a folder");
    manCommand->group("");  // for the build alone
    manCommand->add_option("FOLDER", manFolder, "Folder")->required();
    addDrawCommand();

    sampleCommand =
        app.add_subcommand("sample", "Write a sample drawing: a small floor plan, or the gallery");
    sampleCommand->add_option("FILE", sampleRequest.file, "DXF file to write")->required();
    sampleCommand->add_flag("--gallery", sampleRequest.gallery,
                            "The gallery: at least one entity of every class");
    sampleCommand->add_flag("--force", sampleRequest.force, "Replace an existing file");
  }

  void addTableCommand() {
    tableCommand = app.add_subcommand("table", "Show one line for each entity of a selection");
    addDrawings(*tableCommand, subject.drawings);
    addSelection(*tableCommand, subject.selection);
    addList(*tableCommand, "--columns", tableRequest.columns,
            "The properties to show, by the names that \"show\" gives them; all of them without it, and for "
            "\"all\"")
        ->type_name("NAME");
    const auto addFormat = [this](const char* name, TableFormat format, const char* description) {
      return tableCommand->add_flag_callback(
          name, [this, format] { tableRequest.format = format; }, description);
    };
    CLI::Option* const csv = addFormat("--csv", TableFormat::csv, "Separated by commas");
    CLI::Option* const tsv = addFormat("--tsv", TableFormat::tsv, "Separated by tabs");
    CLI::Option* const json = addFormat("--json", TableFormat::json,
                                        "One JSON object in each line, with the values as numbers and texts");
    addPrecise(*tableCommand, tableRequest.precise);
    csv->excludes(tsv)->excludes(json);
    tsv->excludes(json);
    addShowing(*tableCommand, showing);
    addPlugins(*tableCommand, plugins);
    addKeepGoing(*tableCommand, keepsGoing);
    tableCommand->footer(
        std::string("Where an entity has several values of one name, as a polyline of its vertices, all of "
                    "them stand\n"
                    "in the column; NAME#2 is the second one.\n"
                    "  veltprops table plan.dxf --layer Doors --columns Block,NUMBER --csv\n\n")
        + selectionHelp);
  }

  void addInfoCommand() {
    infoCommand = app.add_subcommand(
        "info", "Tell of the drawing as a whole: format, units, layers, blocks, what is not understood");
    addDrawings(*infoCommand, subject.drawings);
    infoCommand->add_flag("--json", infoRequest.json, "As JSON");
    addShowing(*infoCommand, showing);
  }

  void addDiffCommand() {
    diffCommand = app.add_subcommand("diff", "Tell which properties of which entities differ");
    diffCommand->add_option("DRAWING", diffRequest.drawing, drawingHelp)->required();
    diffCommand->add_option("OTHER", diffRequest.other, "DXF file to compare it with")->required();
    addSelection(*diffCommand, subject.selection);
    diffCommand->add_flag("--json", diffRequest.json, "As JSON");
    addShowing(*diffCommand, showing);
    addPlugins(*diffCommand, plugins);
    addKeepGoing(*diffCommand, keepsGoing);
    diffCommand->footer(
        "Entities with the same handle are compared: those that are selected in either drawing, or all of\n"
        "them, also those inside block definitions. Exit codes: 0 no difference, 1 a difference, 2 "
        "trouble.\n\n"
        + std::string(selectionHelp));
  }

  void addExplainCommand() {
    explainCommand = app.add_subcommand(
        "explain", "Say why a property is missing, read-only, varying or shown, and what to do about it");
    explainCommand
        ->add_option("DRAWING... NAME", subject.drawings,
                     "Drawings (- is standard input), and the property by the name that \"show\" gives it")
        ->required();
    addSelection(*explainCommand, subject.selection);
    explainCommand->add_flag("--json", explainRequest.json, "As JSON");
    addShowing(*explainCommand, showing);
    addPlugins(*explainCommand, plugins);
    addKeepGoing(*explainCommand, keepsGoing);
    explainCommand->footer(selectionHelp);
  }

  void addDrawCommand() {
    drawCommand = app.add_subcommand("draw", "Draw model space or a layout as an SVG picture");
    drawCommand->add_option("DRAWING", subject.drawings, drawingHelp)->required()->expected(1);
    CLI::Option* const output = drawCommand->add_option(
        "-o,--output", drawRequest.output, "File to write; without it the picture goes to the output");
    drawCommand->add_flag("--force", drawRequest.force, "Replace an existing file at the output")
        ->needs(output);
    drawCommand->add_option("--width", drawRequest.width, "Of the picture, in pixels")
        ->type_name("PIXELS")
        ->check(CLI::Range(16, 20000))
        ->capture_default_str();
    drawCommand
        ->add_option_function<std::string>(
            "--background", [this](const std::string& name) { drawRequest.isDark = name == "dark"; },
            "What it is drawn on")
        ->type_name("light|dark")
        ->check(CLI::IsMember({"light", "dark"}))
        ->default_str("light");
    drawCommand->add_option("--layout", drawRequest.layout, "The layout to draw; model space without it")
        ->type_name("NAME");
    addSelection(*drawCommand, subject.selection, Layouts::AreChosenOtherwise);
    addPlugins(*drawCommand, plugins);
    addKeepGoing(*drawCommand, keepsGoing);
    drawCommand->footer(
        std::string("Entities that the other options select stand out, and everything else is pale:\n"
                    "  veltprops draw plan.dxf -o doors.svg --layer Doors\n\n")
        + selectionHelp);
  }

  // Of a comparison, 1 says that there is a difference.
  ExitCode codeOfFailure() const { return diffCommand->parsed() ? wrongUsage : failed; }

  // Where the text of this command goes.
  Terminal asWideAsAsked(Terminal terminal) const {
    if (showing.isWide) terminal.width.reset();
    return terminal;
  }

  // Drawings that are named where other words may stand as well.
  void sortWords() {
    if (explainCommand->parsed() && subject.drawings.size() > 1) {
      explainRequest.name = std::move(subject.drawings.back());
      subject.drawings.pop_back();
    }
    if (!setCommand->parsed()) return;
    if (!firstDrawing.empty()) subject.drawings.assign(1, firstDrawing);
    std::erase_if(setRequest.assignments, [this](const std::string& word) {
      std::error_code unknown;
      const bool isDrawing =
          word.find('=') == std::string::npos
          && (word == standardStream || std::filesystem::exists(word, unknown)
              || palette::equalIgnoringCase(std::filesystem::path(word).extension().string(), ".dxf"));
      if (isDrawing) subject.drawings.push_back(word);
      return isDrawing;
    });
  }

  void checkDrawings() const {
    std::vector<std::string> read = subject.drawings;
    if (diffCommand->parsed()) read = {diffRequest.drawing, diffRequest.other};
    if (std::count(read.begin(), read.end(), standardStream) > 1)
      throw UsageFailure("standard input can be read only once");
    if (explainCommand->parsed() && explainRequest.name.empty())
      throw UsageFailure("which property? Name it after the drawing");
    if (read.size() > 1 && !setRequest.output.empty())
      throw UsageFailure("one output for several drawings? --in-place saves to each of them");
  }

  // The command for each of the drawings.
  template <class Request>
  ExitCode forEach(Request& request, Sequence sequence, std::ostream& out, std::ostream& err,
                   const std::function<ExitCode(std::ostream&)>& command) {
    return onEachDrawing(subject.drawings, sequence, out, err,
                         [&](const std::string& drawing, std::ostream& printed) {
                           request.drawing = drawing;
                           return command(printed);
                         });
  }

  ExitCode runShow(std::ostream& out, std::ostream& err) {
    return forEach(showRequest, paragraphsOr(showRequest.json), out, err, [&](std::ostream& printed) {
      show(showRequest, printed);
      return succeeded;
    });
  }
  ExitCode runList(std::ostream& out, std::ostream& err) {
    listRequest.isOneOfSeveral = subject.drawings.size() > 1;
    return forEach(listRequest, paragraphsOr(listRequest.json), out, err, [&](std::ostream& printed) {
      list(listRequest, printed);
      return succeeded;
    });
  }
  ExitCode runTable(std::ostream& out, std::ostream& err) {
    tableRequest.isOneOfSeveral = subject.drawings.size() > 1;
    const bool isText = tableRequest.format == TableFormat::text;
    return forEach(tableRequest, isText ? Sequence::paragraphs : Sequence::lines, out, err,
                   [&](std::ostream& printed) {
                     table(tableRequest, printed);
                     tableRequest.hasHeadings = false;
                     return succeeded;
                   });
  }
  ExitCode runInfo(std::ostream& out, std::ostream& err) {
    return forEach(infoRequest, paragraphsOr(infoRequest.json), out, err, [&](std::ostream& printed) {
      info(infoRequest, printed);
      return succeeded;
    });
  }
  ExitCode runExplain(std::ostream& out, std::ostream& err) {
    return forEach(explainRequest, paragraphsOr(explainRequest.json), out, err, [&](std::ostream& printed) {
      explain(explainRequest, printed);
      return succeeded;
    });
  }
  // A drawing that goes to standard output leaves no room for the report there.
  ExitCode runSet(std::ostream& out, std::ostream& err, std::ostream& plainOut) {
    setRequest.standardOutput = &plainOut;
    std::ostream& report = setRequest.output == standardStream ? err : out;
    return forEach(setRequest, paragraphsOr(setRequest.json), report, err,
                   [&](std::ostream& printed) { return set(setRequest, printed, err); });
  }

  ExitCode runDraw(std::ostream& out, std::ostream& err) {
    drawRequest.drawing = subject.drawings.front();
    drawRequest.selection = subject.selection;
    draw(drawRequest, out, err);
    return succeeded;
  }

  static Sequence paragraphsOr(bool json) { return json ? Sequence::array : Sequence::paragraphs; }

  ExitCode runCommand(std::ostream& out, std::ostream& err, std::ostream& plainOut,
                      const Terminal& terminal) {
    if (manCommand->parsed()) {
      writeManPages(app, manFolder);
      return succeeded;
    }
    if (sampleCommand->parsed()) {
      sample(sampleRequest, out);
      return succeeded;
    }
    sortWords();
    checkDrawings();
    showRequest.terminal = listRequest.terminal = tableRequest.terminal = asWideAsAsked(terminal);
    infoRequest.terminal = diffRequest.terminal = explainRequest.terminal = asWideAsAsked(terminal);
    showRequest.selection = listRequest.selection = tableRequest.selection = subject.selection;
    setRequest.selection = diffRequest.selection = explainRequest.selection = subject.selection;
    std::optional<sources::CrashNotice> crashes;
    if (!plugins.empty()) crashes.emplace("veltprops");
    sources::LoadedPlugins loaded([&](const std::string& line) { err << "veltprops: " << line << '\n'; });
    loadPlugins(loaded, plugins, keepsGoing || setRequest.keepGoing);
    if (setCommand->parsed()) return runSet(out, err, plainOut);
    if (showCommand->parsed()) return runShow(out, err);
    if (listCommand->parsed()) return runList(out, err);
    if (tableCommand->parsed()) return runTable(out, err);
    if (infoCommand->parsed()) return runInfo(out, err);
    if (explainCommand->parsed()) return runExplain(out, err);
    if (drawCommand->parsed()) return runDraw(out, err);
    return diff(diffRequest, out) ? failed : succeeded;
  }
};

int fail(std::ostream& err, ExitCode code, std::string_view message) {
  err << "veltprops: " << message << '\n';
  return code;
}

// For the completion of shells, whose words follow: they stand on no command line that could be parsed.
constexpr std::string_view completeCommand = "complete";

int completeLine(const std::vector<std::string>& words, std::ostream& out) {
  CommandLine commandLine;
  const auto parse = [&](std::vector<std::string> complete) {
    std::reverse(complete.begin(), complete.end());
    try {
      commandLine.app.parse(std::move(complete));
    } catch (const CLI::ParseError&) {
      // What the line lacks yet is no matter.
    }
    commandLine.sortWords();
    return commandLine.subject;
  };
  try {
    print(complete(commandLine.app, words, parse), out);
  } catch (...) {
    // Whoever types has no use for a message now; running the line tells it.
    return failed;
  }
  return succeeded;
}

// Output that may be longer than the terminal.
std::unique_ptr<Pager> pagerFor(const CommandLine& commandLine, std::ostream& out, const Terminal& terminal) {
  if (!terminal.height || commandLine.showing.isUnpaged || commandLine.setCommand->parsed()) return nullptr;
  return std::make_unique<Pager>(out, *terminal.height);
}

}  // namespace

int run(int argumentCount, const char* const* arguments, std::ostream& plainOut, std::ostream& plainErr) {
  if (argumentCount > 1 && arguments[1] == completeCommand)
    return completeLine({arguments + 2, arguments + argumentCount}, plainOut);
  const Terminal terminal = terminalOf(plainOut);
  CleanOutput err(plainErr);
  CommandLine commandLine;
  try {
    commandLine.app.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& error) {
    // A request for help is not a failure; everything else that stops the parser is wrong usage.
    if (error.get_exit_code() != 0) return fail(err, wrongUsage, usageMessage(commandLine.app, error));
    CleanOutput out(plainOut);
    commandLine.app.exit(error, out, err);
    return succeeded;
  }
  try {
    const std::unique_ptr<Pager> pager = pagerFor(commandLine, plainOut, terminal);
    CleanOutput out(pager ? *pager : plainOut, terminal.hasColor);
    const ExitCode code = commandLine.runCommand(out, err, plainOut, terminal);
    out.flush();
    if (pager) pager->finish();
    return out ? code : fail(err, commandLine.codeOfFailure(), "the output could not be written");
  } catch (const UsageFailure& failure) {
    return fail(err, wrongUsage, failure.what());
  } catch (...) {
    return fail(err, commandLine.codeOfFailure(), messageOfFailure());
  }
}

}  // namespace velt::tool
