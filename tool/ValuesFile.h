#pragma once

// The values that `table --json`, `list --json --values` and `show --json` print, read back from a file to be written to
// a drawing. docs/json.md describes the three forms.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "palette/Palette.h"

namespace velt::tool {

// The values of the rows of one name, one for each row in display order. Nothing stands for a row without a value.
struct WantedValues {
  // What finds the rows: see NamedRows.h. With a label it is the property's own name, and both must be the row's.
  std::string name{};
  std::string label{};
  std::vector<palette::PlainValue> values{};
  // Of each value; empty where the file names none.
  std::vector<std::string> units{};
};

struct WantedEntity {
  std::string handle{};
  std::vector<WantedValues> values{};
};

struct ValuesFile {
  std::vector<WantedEntity> entities{};
  // Of show: the values that all selected entities are to get; `entities` is empty then.
  std::vector<WantedValues> ofSelection{};
  bool isOfSelection = false;
};

// Throws Failure that names the file, and the line or the entity, for what is none of the three forms.
ValuesFile readValuesFile(const std::string& file);
ValuesFile parseValuesFile(const std::string& text, const std::string& file);

// The rows that are meant, in display order.
std::vector<palette::Row> rowsFor(const WantedValues& wanted, std::span<const palette::Row> rows);

}  // namespace velt::tool
