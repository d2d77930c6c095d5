#include "desktop/drawing/DrawingPane.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTest>
#include <QWheelEvent>
#include <cmath>

#include "tests/desktop/Application.h"
#include "tests/view/Scene.h"

namespace velt::desktop {
namespace {

using tests::entityOf;
using tests::lineFromTo;

// The pane alone, on model space with these entities.
class PaneOn {
 public:
  explicit PaneOn(const std::string& entities)
      : drawing_(database::Drawing::parse(tests::drawingOf({{"0"}}, entities), "scene")) {
    pane_.resize(400, 300);
    pane_.setDrawing(drawing_.get());
    QObject::connect(&pane_, &DrawingPane::selected,
                     [this](const std::vector<VkDbObjectId>& chosen) { selected_ = chosen.size(); });
  }
  ~PaneOn() { pane_.setDrawing(nullptr); }

  DrawingPane* operator->() { return &pane_; }
  DrawingPane& operator*() { return pane_; }
  QImage picture() { return pane_.grab().toImage(); }
  void look(view::Vector2 center, double scale) {
    Sight sight = pane_.sight();
    sight.center = center;
    sight.scale = scale;
    pane_.setSight(sight);
  }
  void turnWheel(int steps) {
    const QPoint at(150, 100);
    QWheelEvent turn(at, pane_.mapToGlobal(at), {}, {0, 120 * steps}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&pane_, &turn);
  }
  // A window from the lower left to the upper right that holds nearly all that is in sight.
  std::size_t dragOverAll() {
    selected_ = 0;
    const QPoint to(pane_.sight().size.width() - 2, pane_.sight().size.height() - 2);
    QTest::mousePress(&pane_, Qt::LeftButton, {}, {1, 1});
    QTest::mouseMove(&pane_, to);
    QTest::mouseRelease(&pane_, Qt::LeftButton, {}, to);
    return selected_;
  }
  std::size_t click(QPoint at) {
    selected_ = 0;
    QTest::mouseClick(&pane_, Qt::LeftButton, {}, at);
    return selected_;
  }

 private:
  std::unique_ptr<database::Drawing> drawing_;
  DrawingPane pane_;
  std::size_t selected_ = 0;
};

const std::string square = lineFromTo("0", "0", "10", "0") + lineFromTo("10", "0", "10", "10")
                           + lineFromTo("10", "10", "0", "10") + lineFromTo("0", "10", "0", "0");

TEST(DrawingPane, LinesWithoutAnEndAreSeenWhereverOneLooks) {
  PaneOn pane(square + entityOf("XLINE", {{10, "5"}, {20, "5"}, {11, "1"}, {21, "0"}}));
  PaneOn without(square);
  EXPECT_NE(pane.picture(), without.picture());
  for (PaneOn* const moved : {&pane, &without}) {
    moved->look({1e6, 5}, 20);
    // As when the sight has rested.
    (*moved)->redraw();
  }
  EXPECT_NE(pane.picture(), without.picture());
  EXPECT_EQ(pane.click({200, pane->sight().size.height() / 2}), 1U);
}

TEST(DrawingPane, AWindowDoesNotHoldWhatReachesOutOfSight) {
  PaneOn pane(lineFromTo("-1000000", "5", "1000000", "5") + lineFromTo("4", "4", "6", "4"));
  pane.look({5, 5}, 20);
  pane.picture();
  EXPECT_EQ(pane.dragOverAll(), 1U);
}

TEST(DrawingPane, AClickFindsWhatHasComeInSightBeforeItWasPainted) {
  PaneOn pane(square + entityOf("CIRCLE", {{10, "5000"}, {20, "5000"}, {40, "1"}}));
  pane.look({5, 5}, 20);
  pane.picture();
  pane.look({5001, 5000}, 50);
  EXPECT_EQ(pane.click({pane->sight().size.width() / 2, pane->sight().size.height() / 2}), 1U);
}

TEST(DrawingPane, ZoomingEndsBeforeTheNumbersDo) {
  PaneOn pane(square);
  for (const int steps : {40, -80}) {
    for (int times = 0; times < 100; ++times)
      pane.turnWheel(steps);
    const Sight& sight = pane->sight();
    EXPECT_TRUE(std::isfinite(sight.center.x) && std::isfinite(sight.center.y)) << steps;
    EXPECT_TRUE(std::isfinite(sight.box().size()) && sight.box().size() > 0) << steps;
    pane.picture();
  }
  QTest::keyClick(&*pane, Qt::Key_Home);
  EXPECT_EQ(pane.picture(), PaneOn(square).picture());
}

// Paints one line with dashes of 8 pixels and gaps of 4.
QImage dashed(double from, double to, const Sight& sight) {
  view::Picture picture;
  picture.points = {{from, 0}, {to, 0}};
  picture.parts = {{0, 2, false}};
  picture.dashes = {{8 / sight.scale, 4 / sight.scale}};
  view::Primitive line{.entity = 1, .first = 0, .count = 1, .dashes = 0};
  line.box.include(picture.points[0]);
  line.box.include(picture.points[1]);
  picture.primitives = {line};
  QImage image(sight.size, QImage::Format_RGB32);
  QPainter painter(&image);
  paintPicture(painter, picture, view::SpatialIndex(picture), sight, {});
  return image;
}

TEST(DrawingPane, AWideLineFillsTheSightAtACloseLook) {
  view::Picture picture;
  picture.points = {{-100, 0}, {100, 0}};
  picture.parts = {{0, 2, false}};
  view::Primitive wide{.width = 10, .entity = 1, .first = 0, .count = 1};
  wide.box.include(view::Vector2{-100, -5});
  wide.box.include(view::Vector2{100, 5});
  picture.primitives = {wide};
  const Sight sight{{0, 0}, 1e4, {120, 40}};
  QImage image(sight.size, QImage::Format_RGB32);
  QPainter painter(&image);
  paintPicture(painter, picture, view::SpatialIndex(picture), sight, {});
  EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::white));
}

TEST(DrawingPane, AnEndlesslyLongLineHasTheDashesOfAShortOne) {
  const Sight sight{{0, 0}, 2, {120, 40}};
  // Both begin with a dash: the length to the shorter one's beginning is a multiple of the pattern's.
  constexpr double period = 12 / 2;
  const QImage expected = dashed(-20 * period, 100, sight);
  EXPECT_NE(expected, dashed(-20.5 * period, 100, sight)) << "the dashes are to be seen";
  EXPECT_EQ(dashed(-1e8 * period, 1e9, sight), expected);
}

}  // namespace
}  // namespace velt::desktop
