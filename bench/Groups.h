#pragma once

// The groups of measurements. Each adds its measurements to the report, leaving out those whose names do not contain
// the filter.

#include <string>

#include "bench/Report.h"

namespace velt::bench {

struct Settings {
  // Small sizes only, for a test that everything still runs.
  bool quick = false;
  std::string filter;

  [[nodiscard]] bool wants(const std::string& name) const { return name.find(filter) != std::string::npos; }
};

// The query beside its floor, over the number of entities.
void measureQueries(const Settings& settings, Report& report);

// Writing a value beside its floor, over the number of entities.
void measureWriting(const Settings& settings, Report& report);

// The merge, copying and sorting of lists made up in memory, over the number of rows.
void measureLists(const Settings& settings, Report& report);

// The dynamic rows of references to one dynamic block, over their number.
void measureDynamicRows(const Settings& settings, Report& report);

}  // namespace velt::bench
