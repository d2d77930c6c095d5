// A palette in ten lines: shows what the entities of a drawing have in common, by category (after a colon what can be
// edited), and gives them a color.
//
//   example_palette DRAWING

#include <exception>
#include <iostream>
#include <span>
#include <stdexcept>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"

namespace {

using namespace velt::palette;

// Needs nothing of the host but the ids of the entities.
void showAndColor(std::span<const VkDbObjectId> entities) {
  // The ten lines.
  Selection selection(entities);
  for (const Category& category : byCategory(selection.query())) {
    std::cout << category.name << '\n';
    for (const Row& row : category.rows)
      std::cout << "  " << row.label() << (row.isEditable() ? ": " : " = ") << row.text() << '\n';
  }
  const Row color = selection.row("Color");
  const Report report = selection.write(color, color.parse("Red"));
  std::cout << report.summary() << '\n';
  if (!report.reasons.empty()) std::cout << "first refusal: " << report.reasons.begin()->second << '\n';
  // That is all.
}

}  // namespace

int main(int argumentCount, char** arguments) {
  try {
    if (argumentCount != 2) throw std::runtime_error("which drawing?");
    const auto drawing = velt::database::Drawing::open(arguments[1]);
    showAndColor(drawing->entities());
  } catch (const std::exception& error) {
    std::cerr << "example_palette: " << error.what() << '\n';
    return 1;
  }
}
