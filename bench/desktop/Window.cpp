// The palette in a window: moving and picking in the drawing, and filling the palette, painted into memory.

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Groups.h"
#include "bench/Sampling.h"
#include "desktop/MainWindow.h"
#include "desktop/drawing/DrawingPane.h"
#include "palette/Palette.h"
#include "view/Draw.h"
#include "view/SpatialIndex.h"

namespace velt::bench {

namespace {

using desktop::DrawingPane;
using desktop::MainWindow;
using desktop::Session;

constexpr std::size_t picks = 100;

// A window on a drawing, as large as people have it.
class Desk {
 public:
  explicit Desk(std::uint32_t entities)
      : window_(std::make_unique<Session>(
          database::Drawing::parse(drawingOf(Content::Mixed, entities), "benchmark"))),
        pane_(*window_.findChild<DrawingPane*>("drawing")) {
    window_.resize(1280, 800);
    window_.show();
    QCoreApplication::processEvents();
    frame_ = QImage(pane_.size(), QImage::Format_RGB32);
  }

  [[nodiscard]] MainWindow& window() { return window_; }
  [[nodiscard]] database::Drawing& drawing() { return window_.session().drawing(); }
  [[nodiscard]] DrawingPane& pane() { return pane_; }

  void press(Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&pane_, &event);
  }
  void paint() { static_cast<QWidget&>(pane_).render(&frame_); }

 private:
  MainWindow window_;
  DrawingPane& pane_;
  QImage frame_;
};

Measurement timed(const std::string& name, std::uint32_t entities, const Spread& nanoseconds) {
  constexpr double nanosecondsOfMillisecond = 1e6;
  return {fmt::format("{}/{}", name, entities),
          {{"entities", static_cast<double>(entities)}},
          {{"time", "ms", nanoseconds.over(nanosecondsOfMillisecond)}}};
}

// There and back again, so that what is seen does not run out of the picture.
void measureFrames(Desk& desk, std::uint32_t entities, const Repetitions& repetitions, Report& report) {
  constexpr std::array keys = {Qt::Key_Left, Qt::Key_Up,   Qt::Key_Right, Qt::Key_Down,
                               Qt::Key_Plus, Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Minus};
  desk.press(Qt::Key_Home);
  desk.paint();
  std::size_t next = 0;
  report.add(timed("desktop/frame", entities, spreadOf(sample(repetitions, [&] {
                     desk.press(keys[next++ % keys.size()]);
                     desk.paint();
                   }))));
  bool isDark = false;
  report.add(timed("desktop/repaint", entities, spreadOf(sample(repetitions, [&] {
                     desk.pane().setDark(isDark);
                     isDark = !isDark;
                     desk.paint();
                   }))));
}

// What it takes until a drawing, or one that has been edited, is seen.
void measurePictures(Desk& desk, std::uint32_t entities, const Repetitions& repetitions, Report& report) {
  report.add(timed("desktop/edited", entities, spreadOf(sample(repetitions, [&] {
                     desk.pane().redraw();
                     desk.paint();
                   }))));
}

void measurePicks(Desk& desk, std::uint32_t entities, const Repetitions& repetitions, Report& report) {
  const view::Contents contents(desk.drawing());
  const view::Picture picture =
      view::draw(desk.drawing(), contents, view::spacesOf(desk.drawing()).front(), {.scale = 1});
  const view::SpatialIndex index(picture);
  const view::Box all = picture.extents;
  std::mt19937 random(1);
  std::uniform_real_distribution<double> across(all.low.x, all.high.x);
  std::uniform_real_distribution<double> up(all.low.y, all.high.y);
  std::size_t found = 0;
  const auto measured = [&](const char* name, auto&& search) {
    report.add(timed(name, entities, spreadOf(sample(repetitions, [&] {
                                       for (std::size_t i = 0; i < picks; ++i)
                                         found += search(view::Vector2{across(random), up(random)}).size();
                                     })).over(picks)));
  };
  // The reach of the pointer when all of the drawing is in sight, and a twentieth of its length.
  const double reach = 5 * (all.high.x - all.low.x) / desk.pane().sight().size.width();
  const double window = (all.high.x - all.low.x) / 20;
  measured("desktop/pick", [&](view::Vector2 at) { return index.at(at, reach); });
  measured("desktop/within", [&](view::Vector2 at) {
    return index.within({at, at + view::Vector2{window, window}});
  });
  measured("desktop/crossing", [&](view::Vector2 at) {
    return index.crossing({at, at + view::Vector2{window, window}});
  });
  if (found == 0) throw std::logic_error("nothing was found wherever it was looked for");
}

// From the selection to the filled palette, beside the selection and the query alone. Takes one of so many entities.
void measurePalette(Desk& desk, const std::string& name, std::size_t oneOf, const Repetitions& repetitions,
                    Report& report) {
  const view::Contents contents(desk.drawing());
  std::vector<VkDbObjectId> chosen;
  std::size_t next = 0;
  for (const std::uint32_t record : contents.of(contents.ofModelSpace())) {
    if (next++ % oneOf == 0) chosen.push_back(desk.drawing().idOf(record));
  }
  const Pairs times = samplePairs(
      repetitions, [&] { desk.window().select(chosen); },
      [&] {
        palette::Selection selection(chosen);
        if (selection.query().empty()) throw std::logic_error("there is nothing to fill a palette with");
      });
  constexpr double nanosecondsOfMillisecond = 1e6;
  report.add({name,
              {{"entities", static_cast<double>(chosen.size())}},
              {{"ratio", "", spreadOf(times.ratio)},
               {"window", "ms", spreadOf(times.first).over(nanosecondsOfMillisecond)},
               {"query", "ms", spreadOf(times.second).over(nanosecondsOfMillisecond)}}});
}

void measurePalettes(Desk& desk, std::uint32_t entities, const Repetitions& repetitions, Report& report) {
  measurePalette(desk, fmt::format("desktop/palette/{}", entities), 1, repetitions, report);
  // Those in between are not selected: no two that are stand side by side in the list.
  measurePalette(desk, fmt::format("desktop/scattered/{}", entities), 3, repetitions, report);
}

}  // namespace

void measureWindow(const Settings& settings, Report& report) {
  using Measure = void (*)(Desk&, std::uint32_t, const Repetitions&, Report&);
  struct Part {
    std::vector<std::string_view> names;
    Measure measure;
  };
  const std::uint32_t entities = settings.quick ? 200 : 100'000;
  const Repetitions repetitions = settings.quick ? Repetitions{.atLeast = 2, .atMost = 2} : Repetitions{};
  const std::array<Part, 4> parts = {{{{"desktop/frame", "desktop/repaint"}, measureFrames},
                                      {{"desktop/edited"}, measurePictures},
                                      {{"desktop/pick", "desktop/within", "desktop/crossing"}, measurePicks},
                                      {{"desktop/palette", "desktop/scattered"}, measurePalettes}}};
  std::unique_ptr<QApplication> application;
  std::unique_ptr<Desk> desk;
  int count = 1;
  std::array<char, 12> name{"velt_bench"};
  std::array<char*, 2> arguments{name.data(), nullptr};
  for (const Part& part : parts) {
    bool isWanted = false;
    for (const std::string_view of : part.names)
      isWanted = isWanted || settings.wants(fmt::format("{}/{}", of, entities));
    if (!isWanted) continue;
    if (!desk) {
      qputenv("QT_QPA_PLATFORM", "offscreen");
      application = std::make_unique<QApplication>(count, arguments.data());
      desk = std::make_unique<Desk>(entities);
    }
    part.measure(*desk, entities, repetitions, report);
  }
}

}  // namespace velt::bench
