// A program that shows how far it is, and ends what runs when Ctrl-C is pressed: gives all entities a color and saves
// them, or leaves the drawing and the file as they were.
//
//   example_cancel DRAWING COLOR SAVED

#include <csignal>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "embedded/database/Drawing.h"
#include "embedded/platform/Watch.h"
#include "palette/Palette.h"

namespace {

volatile std::sig_atomic_t isInterrupted = 0;

void colorAndSave(velt::database::Drawing& drawing, const char* color, const char* file) {
  using namespace velt::palette;
  Selection selection(drawing.entities());
  selection.query();
  const Row row = selection.row("Color");
  velt::database::Changes changes;
  Report report;
  drawing.record(changes, [&] { report = selection.write(row, row.parse(color)); });
  std::cerr << report.summary() << '\n';
  if (report.isCancelled) {
    // What was changed until then gets back what it had.
    static_cast<void>(drawing.undo(std::move(changes)));
    throw Cancelled("cancelled, and nothing is changed");
  }
  drawing.save(file);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  using namespace velt;
  std::signal(SIGINT, [](int) { isInterrupted = 1; });
  try {
    if (argumentCount != 4) throw std::runtime_error("which drawing, which color, and save where?");
    const platform::Watch watch([](const platform::Progress& progress) {
      std::cerr << progress.bytesDone << " of " << progress.bytesTotal << " bytes, " << progress.valuesRead
                << " values read, " << progress.valuesWritten << " written\n";
      return isInterrupted == 0;
    });
    const auto drawing = database::Drawing::open(arguments[1]);
    colorAndSave(*drawing, arguments[2], arguments[3]);
  } catch (const palette::Cancelled& cancelled) {
    std::cerr << "example_cancel: " << cancelled.what() << '\n';
    return 130;
  } catch (const platform::Cancelled& cancelled) {
    std::cerr << "example_cancel: " << cancelled.what() << '\n';
    return 130;
  } catch (const std::exception& error) {
    std::cerr << "example_cancel: " << error.what() << '\n';
    return 1;
  }
}
