#pragma once

// The commands of veltprops. Each writes its answer to `out` and throws Failure or dxf::Error.

#include <ostream>
#include <string>
#include <vector>

#include "tool/EntitySelection.h"
#include "tool/Failure.h"

namespace velt::tool {

struct ShowRequest {
  std::string drawing{};
  SelectionRequest selection{};
  bool json = false;
  bool choices = false;
};

struct ListRequest {
  std::string drawing{};
  SelectionRequest selection{};  // everything when it is empty
  bool json = false;
  bool values = false;  // with JSON: also the properties of each entity
};

struct SetRequest {
  std::string drawing{};
  SelectionRequest selection{};
  std::vector<std::string> assignments{};  // NAME=VALUE, applied in order
  std::string output{};                    // empty: in place
  bool inPlace = false;
  bool dryRun = false;
  bool force = false;  // replaces another file at `output`
  bool keepGoing = false;
  bool json = false;
};

struct SampleRequest {
  std::string file{};
  bool gallery = false;  // else the floor plan
  bool force = false;
};

// The merged property list of a selection.
void show(const ShowRequest& request, std::ostream& out);
// Handle, class and layer of entities.
void list(const ListRequest& request, std::ostream& out);
// Writes values to every selected entity and saves the drawing. Gives the exit code: failed when anything was refused,
// with the report on `out` all the same.
ExitCode set(const SetRequest& request, std::ostream& out);
// Writes a sample drawing; an existing file is replaced only when forced.
void sample(const SampleRequest& request, std::ostream& out);

}  // namespace velt::tool
