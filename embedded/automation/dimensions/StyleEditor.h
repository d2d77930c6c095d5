#pragma once

// Overriding variables of the dimension style of one dimension, leader or tolerance.
//
// Overrides stand in the entity's extended data, in a list that the application ACAD keeps: codes of variables and values
// in turn. A variable that is overridden already gets its new value in place; other lists and other applications stay
// what they are. Whoever writes has asked first whether the variable has the value in effect.
// Failure: Refusal, and nothing changed, for a list that is damaged, a drawing that does not know the application, and a
// value that extended data cannot hold.
// Ownership: none; the end of the drawing makes the editor invalid, an edit does not.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/automation/dimensions/StyleVariables.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// By which variables refer to the entry of a table. Throws Refusal for one that the drawing gives no handle.
[[nodiscard]] std::uint64_t handleOfEntry(const database::Drawing& drawing,
                                          const database::TableEntry& entry);

class StyleEditor {
 public:
  explicit StyleEditor(const Subject& subject) : drawing_(&subject.drawing()), record_(subject.record()) {}

  void real(const StyleVariable& variable, double value);
  void integer(const StyleVariable& variable, std::int64_t value);
  void text(const StyleVariable& variable, std::wstring_view value);
  void handle(const StyleVariable& variable, std::uint64_t value);

 private:
  void put(int variable, int code, const std::string& value);
  void replace(const std::vector<std::size_t>& pairs, int code, const std::string& value);
  void beginList(int variable, int code, const std::string& value);

  database::Drawing* drawing_;
  std::uint32_t record_;
};

// Writes nothing when the flag is that already.
void overrideFlag(const Subject& subject, const StyleVariable& variable, bool flag);

}  // namespace velt::automation
