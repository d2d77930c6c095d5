#pragma once

// A whole session on a drawing that may be damaged: it is loaded, everything is looked at, one value is put, and the
// drawing is saved and loaded again. Whatever the drawing is, only the entities that the report names have changed, and
// the saved drawing shows the same values as the edited one. The process is aborted where that is not so.

#include <cstddef>
#include <string>

namespace fuzz {

struct SessionInput {
  // Counted from 1; 0 is all of them. Goes round.
  std::size_t entity = 0;
  // Among the rows that can be edited, from 0. Goes round.
  std::size_t row = 0;
  std::string value{};
  std::string drawing{};
};

// Whether there was a session at all: false for what is no drawing, and for one without entities.
bool runSession(const SessionInput& input);

}  // namespace fuzz
