#pragma once

// The groups of measurements. Each takes those whose names contain the filter, which are all that the report shows.

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

#include "bench/Report.h"

namespace velt::bench {

struct Settings {
  // Small sizes only, to test that everything still runs.
  bool quick = false;
  std::string filter;

  [[nodiscard]] bool wants(std::string_view name) const {
    return name.find(filter) != std::string_view::npos;
  }
  // Whether something has to be measured that these measurements come from.
  [[nodiscard]] bool wantsOneOf(std::initializer_list<std::string_view> names) const {
    return std::any_of(names.begin(), names.end(), [this](std::string_view name) { return wants(name); });
  }
};

// The query beside its floor, for growing numbers of entities.
void measureQueries(const Settings& settings, Report& report);

// Merges over objects of Qt, beside queries of as many lines. Only where there is QtCore (VELT_HAS_QT).
void measureBaseline(const Settings& settings, Report& report);

// The window: frames, picks, and the palette of everything beside the query alone. Only where there is Qt's Widgets
// (VELT_HAS_WINDOW).
void measureWindow(const Settings& settings, Report& report);

// Reading drawings, and the memory that they take, for growing numbers of entities.
void measureReading(const Settings& settings, Report& report);

// Writing a value beside its floor, for growing numbers of entities.
void measureWriting(const Settings& settings, Report& report);

// Reading, querying and writing to drawings that are large in other ways than by many lines.
void measureShapes(const Settings& settings, Report& report);

// Merging, copying and sorting lists that are made up in memory, for growing numbers of rows.
void measureLists(const Settings& settings, Report& report);

// The dynamic rows of references to one dynamic block, for growing numbers of references.
void measureDynamicRows(const Settings& settings, Report& report);

}  // namespace velt::bench
