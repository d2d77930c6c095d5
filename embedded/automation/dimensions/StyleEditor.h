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

#include "embedded/automation/model/Subject.h"

namespace velt::automation {

class StyleEditor {
 public:
  explicit StyleEditor(const Subject& subject) : drawing_(&subject.drawing()), record_(subject.record()) {}

  // A variable is named by the group code that it has in the record of a style.

  void real(int variable, double value);
  void integer(int variable, std::int64_t value);
  void text(int variable, std::wstring_view value);
  void handle(int variable, std::uint64_t value);

 private:
  void put(int variable, int code, const std::string& value);
  void replace(const std::vector<std::size_t>& pairs, int code, const std::string& value);
  void beginList(int variable, int code, const std::string& value);

  database::Drawing* drawing_;
  std::uint32_t record_;
};

}  // namespace velt::automation
