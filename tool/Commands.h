#pragma once

// The commands of veltprops. Each writes its results to `out`, and throws Failure or dxf::Error when it fails. A drawing
// named "-" is read from standard input.

#include <ostream>
#include <string>
#include <vector>

#include "tool/EntitySelection.h"
#include "tool/Failure.h"
#include "tool/Terminal.h"

namespace velt::tool {

struct ShowRequest {
  std::string drawing{};
  SelectionRequest selection{};
  bool json = false;
  // With JSON: also what concerns only who develops palettes, plug-ins or hosts.
  bool debug = false;
  bool choices = false;
  // The different values of rows that vary.
  bool values = false;
  // All digits of numbers, here and in other requests.
  bool precise = false;
  // Of the text.
  Terminal terminal{};
};

enum class TableFormat { text, csv, tsv, json };

struct TableRequest {
  std::string drawing{};
  SelectionRequest selection{};
  // Names of properties, or of facts (see EntityFacts.h); every property when there are none, or "all".
  std::vector<std::string> columns{};
  TableFormat format = TableFormat::text;
  // Of one table for several drawings, whose lines tell the drawing: only the first has headings.
  bool isOneOfSeveral = false;
  bool hasHeadings = true;
  bool precise = false;
  Terminal terminal{};
};

struct ListRequest {
  std::string drawing{};
  // Every entity when it is empty.
  SelectionRequest selection{};
  bool json = false;
  // With JSON: also the properties of each entity.
  bool values = false;
  // The text says which drawing it is about.
  bool isOneOfSeveral = false;
  Terminal terminal{};
};

struct SetRequest {
  std::string drawing{};
  SelectionRequest selection{};
  // NAME=VALUE, applied in order.
  std::vector<std::string> assignments{};
  // Instead of these, a file with values as other commands print them (see ValuesFile.h). The selection may then be empty
  // where the file names entities.
  std::string from{};
  // The file to save to; empty with inPlace or dryRun.
  std::string output{};
  // Where the drawing goes when the output is "-".
  std::ostream* standardOutput = nullptr;
  bool inPlace = false;
  bool dryRun = false;
  // Replaces an existing file at `output`.
  bool force = false;
  // Saves although somebody else has changed the file since it was read.
  bool overwriteChanges = false;
  bool keepGoing = false;
  // Changes also the shape of entities that hatches follow, which then no longer do.
  bool breakAssociations = false;
  // Also to entities that show the value already, because fewer digits are shown than they have.
  bool precise = false;
  bool json = false;
};

struct InfoRequest {
  std::string drawing{};
  bool json = false;
  Terminal terminal{};
};

struct DiffRequest {
  std::string drawing{};
  std::string other{};
  // In either drawing; every entity, those in blocks included, when it is empty.
  SelectionRequest selection{};
  bool json = false;
  Terminal terminal{};
};

struct ExplainRequest {
  std::string drawing{};
  // Of the property.
  std::string name{};
  SelectionRequest selection{};
  bool json = false;
  Terminal terminal{};
};

struct DrawRequest {
  std::string drawing{};
  // Of the layout, or "Model", which an empty one stands for.
  std::string layout{};
  // These stand out; when it is empty, all look as they are.
  SelectionRequest selection{};
  // The file to write; empty for the output of the program.
  std::string output{};
  // Replaces an existing file at `output`.
  bool force = false;
  // In pixels.
  double width = 1200;
  bool isDark = false;
};

struct SampleRequest {
  std::string file{};
  // The gallery instead of the floor plan.
  bool gallery = false;
  bool force = false;
};

// Shows the merged property list of a selection.
void show(const ShowRequest& request, std::ostream& out);
// Lists entities: handle, class, DXF type and layer.
void list(const ListRequest& request, std::ostream& out);
// Shows one line for each entity, with the values of the columns. As JSON, each line is an object of its own with the
// handle, the class and the values of the entity; null stands for a property that it does not have.
void table(const TableRequest& request, std::ostream& out);
// Writes values to every selected entity and saves the drawing, unless no entity has changed. Answers the exit code:
// failed when a value was refused and nothing was changed for that, partlyDone when the rest was (keepGoing), nothingToDo
// when no entity changed and none refused; the report is on `out` all the same. What the saved file lacks of the old one
// is told on `err`.
ExitCode set(const SetRequest& request, std::ostream& out, std::ostream& err);
// Tells of what the drawing as a whole consists.
void info(const InfoRequest& request, std::ostream& out);
// Tells which properties of which entities differ between two drawings. Answers whether there is a difference.
bool diff(const DiffRequest& request, std::ostream& out);
// Says why a property of the selection is missing, read-only, varying or shown, and what can be done about it.
void explain(const ExplainRequest& request, std::ostream& out);
// Draws a layout as an SVG file. A picture that could not be drawn as a whole is told on `err`.
void draw(const DrawRequest& request, std::ostream& out, std::ostream& err);
// Writes a sample drawing. An existing file is replaced only with `force`.
void sample(const SampleRequest& request, std::ostream& out);

}  // namespace velt::tool
