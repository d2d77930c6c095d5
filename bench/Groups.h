#pragma once

// The groups of measurements. Each adds those of its measurements to the report whose names contain the filter.

#include <string>

#include "bench/Report.h"

namespace velt::bench {

struct Settings {
  // Small sizes only, to test that everything still runs.
  bool quick = false;
  std::string filter;

  [[nodiscard]] bool wants(const std::string& name) const { return name.find(filter) != std::string::npos; }
};

// The query beside its floor, for growing numbers of entities.
void measureQueries(const Settings& settings, Report& report);

// Writing a value beside its floor, for growing numbers of entities.
void measureWriting(const Settings& settings, Report& report);

// Merging, copying and sorting lists that are made up in memory, for growing numbers of rows.
void measureLists(const Settings& settings, Report& report);

// The dynamic rows of references to one dynamic block, for growing numbers of references.
void measureDynamicRows(const Settings& settings, Report& report);

}  // namespace velt::bench
