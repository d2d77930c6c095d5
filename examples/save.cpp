// A program that opens a drawing, changes it and saves it: gives all entities a color, but for those on locked layers.
//
//   example_save DRAWING COLOR SAVED

#include <exception>
#include <iostream>
#include <stdexcept>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"

int main(int argumentCount, char** arguments) {
  using namespace velt;
  try {
    if (argumentCount != 4) throw std::runtime_error("which drawing, which color, and save where?");
    const auto drawing = database::Drawing::open(arguments[1]);
    palette::Selection selection(drawing->entities());
    selection.query();
    const palette::Row color = selection.row("Color");
    const palette::Report report = selection.write(color, color.parse(arguments[2]));
    std::cout << report.summary() << '\n';
    drawing->save(arguments[3]);
  } catch (const std::exception& error) {
    std::cerr << "example_save: " << error.what() << '\n';
    return 1;
  }
}
