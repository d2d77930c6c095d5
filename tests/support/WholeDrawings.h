#pragma once

// Whole drawings to try something on: the project's own, and those that others made.
//
// The others are not part of the project. Whoever has some names their folder in the environment variable
// VELT_DRAWINGS; without it the tests run on the project's own drawings alone. So what a test asserts of each drawing
// must hold for any that was ever saved: no counts, names or handles of a drawing that nobody else has. That anything
// was found at all can be asserted of all of them together, because the gallery has an entity of every class.

#include <functional>
#include <string>

namespace velt::tests {

struct WholeDrawing {
  // Of its file.
  std::string name;
  std::string bytes;
  // Made by the project.
  bool isOwn;
};

// One after the other, in the order of their names; what fails names the drawing on which it did.
void forEachDrawing(const std::function<void(const WholeDrawing&)>& body);

}  // namespace velt::tests
