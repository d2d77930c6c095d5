#pragma once

// The variables of a dimension style, as one dimension, leader or tolerance has them.
//
// An entity names its style, and may carry variables of its own in its extended data, which count more. A variable that
// neither has counts with its usual value.
//
// Ownership: none; an edit of the drawing makes it useless.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/automation/dimensions/StyleVariables.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

class DimensionStyle {
 public:
  explicit DimensionStyle(const Subject& subject);

  // "Standard" when the entity names none.
  [[nodiscard]] std::wstring name() const;
  [[nodiscard]] double real(const StyleVariable& variable) const;
  // Whatever the entity overrides.
  [[nodiscard]] double realOfStyle(const StyleVariable& variable) const;
  [[nodiscard]] std::int64_t integer(const StyleVariable& variable) const;
  [[nodiscard]] bool flag(const StyleVariable& variable) const { return integer(variable) != 0; }
  [[nodiscard]] std::wstring text(const StyleVariable& variable) const;
  // The name that the table has for the entry whose handle the variable is; empty for none.
  [[nodiscard]] std::wstring entryName(const StyleVariable& variable, const database::Table& table) const;
  // Empty for the usual arrowhead. Old drawings have names where others have handles; both variables are asked.
  [[nodiscard]] std::wstring blockName(const StyleVariable& handle, const StyleVariable& oldName) const;

 private:
  [[nodiscard]] std::optional<std::string_view> value(const StyleVariable& variable) const;
  [[nodiscard]] std::optional<std::string_view> overriding(const StyleVariable& variable) const;

  database::Lens entity_;
  std::optional<database::Lens> style_;
};

}  // namespace velt::automation
