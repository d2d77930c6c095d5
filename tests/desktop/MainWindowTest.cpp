#include "desktop/MainWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTableView>
#include <QTest>
#include <QTreeView>
#include <QWheelEvent>
#include <cmath>
#include <cstdlib>

#include "desktop/EntityModel.h"
#include "desktop/drawing/DrawingPane.h"
#include "desktop/palette/PaletteModel.h"
#include "embedded/database/Lens.h"
#include "samples/FloorPlan.h"
#include "tests/desktop/Application.h"
#include "tests/support/Files.h"
#include "tests/tool/Drawings.h"

namespace velt::desktop {
namespace {

class Window : public testing::Test {
 protected:
  void SetUp() override {
    window_ = std::make_unique<MainWindow>(std::make_unique<Session>(file_));
    window_->show();
    QCoreApplication::processEvents();
  }
  template <class Widget>
  Widget& part(const char* name) {
    return *window_->findChild<Widget*>(name);
  }
  Session& session() { return window_->session(); }
  QTreeView& rows() { return part<QTreeView>("rows"); }
  QTableView& entities() { return part<QTableView>("entities"); }

  // The place of the row's value in the palette.
  QModelIndex valueOf(const QString& label) {
    const QAbstractItemModel& model = *rows().model();
    for (int i = 0; i < model.rowCount(); ++i) {
      const QModelIndex category = model.index(i, 0);
      for (int row = 0; row < model.rowCount(category); ++row) {
        if (model.index(row, 0, category).data().toString() == label) return model.index(row, 1, category);
      }
    }
    ADD_FAILURE() << "no row " << label.toStdString();
    return {};
  }
  std::string shown(const QString& label) { return valueOf(label).data().toString().toStdString(); }

  // Those that can be written to.
  void selectClass(const QString& name) {
    const auto& list = dynamic_cast<EntityModel&>(*entities().model());
    for (int row = 0; row < list.rowCount(); ++row) {
      if (list.index(row, 1).data().toString() == name && !palette::isOnLockedLayer(list.entityAt(row)))
        entities().selectionModel()->select(entities().model()->index(row, 0),
                                            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
  }

  // The editor closes, and then the value is written: each waits for the event loop.
  static void settle() {
    for (int i = 0; i < 3; ++i)
      QCoreApplication::processEvents();
  }

  // As a user does it: opens the editor, replaces the text, and presses the return key.
  void type(const QString& label, const QString& text) {
    const QModelIndex place = valueOf(label);
    rows().setCurrentIndex(place);
    rows().edit(place);
    auto* const editor = rows().viewport()->findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(editor, nullptr) << label.toStdString() << " cannot be edited";
    auto* const list = qobject_cast<QComboBox*>(editor);
    auto* const field = list != nullptr ? list->lineEdit() : qobject_cast<QLineEdit*>(editor);
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, text);
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
  }

  tests::TemporaryFolder folder_;
  std::string file_ = folder_.write("plan.dxf", samples::sampleFloorPlan());
  std::unique_ptr<MainWindow> window_;
};

TEST_F(Window, ShowsTheRowsOfWhatIsSelectedInTheList) {
  EXPECT_EQ(rows().model()->rowCount(), 0);
  selectClass("Circle");
  EXPECT_FALSE(session().selected().empty());
  EXPECT_EQ(rows().model()->index(0, 0).data().toString(), "General");
  EXPECT_NE(shown("Radius"), "");
}

TEST_F(Window, EditsARowAndUndoesIt) {
  const std::string before = session().drawing().document().bytes();
  selectClass("Circle");
  type("Radius", "12.5");
  EXPECT_THAT(part<QLabel>("outcome").text().toStdString(), testing::HasSubstr("changed"));
  EXPECT_EQ(shown("Radius").substr(0, 4), "12.5");
  EXPECT_TRUE(window_->isWindowModified());
  ASSERT_TRUE(part<QAction>("undo").isEnabled());
  part<QAction>("undo").trigger();
  EXPECT_EQ(session().drawing().document().bytes(), before);
  EXPECT_FALSE(window_->isWindowModified());
  part<QAction>("redo").trigger();
  EXPECT_EQ(shown("Radius").substr(0, 4), "12.5");
}

TEST_F(Window, ARowWithChoicesOffersThem) {
  selectClass("Circle");
  type("Layer", "0");
  EXPECT_EQ(shown("Layer"), "0");
}

TEST_F(Window, ARefusedTextSaysWhatIsAcceptedAndChangesNothing) {
  const std::string before = session().drawing().document().bytes();
  selectClass("Circle");
  type("Radius", "wide");
  EXPECT_NE(part<QLabel>("outcome").text(), "");
  EXPECT_EQ(session().drawing().document().bytes(), before);
}

TEST_F(Window, TheValuesBehindARowNarrowTheSelection) {
  entities().selectAll();
  const std::size_t all = session().selected().size();
  const QModelIndex layer = valueOf("Layer").siblingAtColumn(0);
  ASSERT_EQ(shown("Layer"), palette::variesText);
  rows().expand(layer);
  QAbstractItemModel& model = *rows().model();
  if (model.canFetchMore(layer)) model.fetchMore(layer);
  ASSERT_GT(model.rowCount(layer), 1);
  const QModelIndex first = model.index(0, 1, layer);
  const std::string wanted = first.data().toString().toStdString();
  Q_EMIT rows().clicked(first);
  QCoreApplication::processEvents();
  EXPECT_LT(session().selected().size(), all);
  EXPECT_EQ(shown("Layer"), wanted);
}

TEST_F(Window, TheClassesOfTheSelectionAreCountedAndNarrowIt) {
  entities().selectAll();
  auto& classes = part<QComboBox>("classes");
  EXPECT_EQ(classes.itemText(0).toStdString(), "All (" + std::to_string(session().selected().size()) + ")");
  const int circles = classes.findText("Circle", Qt::MatchStartsWith);
  ASSERT_GT(circles, 0);
  Q_EMIT classes.activated(circles);
  QCoreApplication::processEvents();
  EXPECT_EQ(part<QComboBox>("classes").count(), 1);
  EXPECT_NE(shown("Radius"), "");
}

TEST_F(Window, AValueThatIsLeftAsItIsIsNotWritten) {
  window_->select({session().drawing().entityByHandle(0xA8)});
  ASSERT_FALSE(session().selected().empty());
  type("Layer", QString::fromStdString(shown("Layer")));
  EXPECT_EQ(part<QLabel>("outcome").text(), "");
}

TEST_F(Window, WhatWasTypedForOneSelectionIsNotWrittenToTheNext) {
  const std::string before = session().drawing().document().bytes();
  selectClass("Circle");
  rows().model()->setData(valueOf("Color"), "Red");
  entities().clearSelection();
  selectClass("Line");
  settle();
  EXPECT_EQ(session().drawing().document().bytes(), before);
}

TEST_F(Window, WhatIsFoldedDuringASearchIsNotFoldedAfterIt) {
  selectClass("Circle");
  QTest::keyClicks(&part<QLineEdit>("search"), "color");
  rows().collapse(rows().model()->index(0, 0));
  part<QLineEdit>("search").clear();
  EXPECT_TRUE(rows().isExpanded(rows().model()->index(0, 0)));
}

TEST_F(Window, WhatCannotBeEditedIsPale) {
  const auto pictureWith = [](int layerFlags) {
    const auto drawing = database::Drawing::parse(
        tests::drawingOf({{"0"}, {"Walls", 7, layerFlags}}, tests::line("2F", "Walls")), "house.dxf");
    DrawingPane pane;
    pane.resize(300, 300);
    pane.setDrawing(drawing.get());
    return pane.grab().toImage();
  };
  EXPECT_EQ(pictureWith(0), pictureWith(0));
  EXPECT_NE(pictureWith(0), pictureWith(4));
}

TEST_F(Window, ASearchLeavesTheRowsThatFit) {
  selectClass("Circle");
  QTest::keyClicks(&part<QLineEdit>("search"), "radius");
  const QAbstractItemModel& model = *rows().model();
  ASSERT_EQ(model.rowCount(), 1);
  EXPECT_NE(shown("Radius"), "");
  part<QLineEdit>("search").clear();
  EXPECT_GT(model.rowCount(), 1);
}

TEST_F(Window, AReadOnlyRowHasNoEditor) {
  selectClass("Circle");
  EXPECT_FALSE(rows().model()->flags(valueOf("Handle")) & Qt::ItemIsEditable);
  EXPECT_THAT(valueOf("Handle").data(PaletteModel::helpRole).toString().toStdString(),
              testing::HasSubstr("Read-only"));
}

TEST_F(Window, AFoldedCategoryStaysFoldedWhenTheSelectionChanges) {
  selectClass("Circle");
  rows().collapse(rows().model()->index(0, 0));
  entities().clearSelection();
  selectClass("Line");
  EXPECT_EQ(rows().model()->index(0, 0).data().toString(), "General");
  EXPECT_FALSE(rows().isExpanded(rows().model()->index(0, 0)));
  EXPECT_TRUE(rows().isExpanded(rows().model()->index(1, 0)));
}

TEST_F(Window, SavesTheDrawing) {
  selectClass("Circle");
  type("Radius", "12.5");
  part<QAction>("save").trigger();
  EXPECT_EQ(tests::contentOf(file_), session().drawing().document().bytes());
  EXPECT_FALSE(window_->isWindowModified());
  settle();
  EXPECT_EQ(window_->statusBar()->currentMessage(), "Saved.") << "its own change is not another program's";
}

// Zooms to a place on the edge of the one circle that is selected, where nothing else is near, and answers its pixel.
QPoint zoomToEdge(Session& session, DrawingPane& view) {
  const auto object = database::resolve(session.selected().front());
  const database::Lens circle(session.drawing(), object->record);
  const database::Point center = circle.point(10, "AcDbCircle");
  const double radius = circle.real(40, "AcDbCircle", 0);
  constexpr double angle = 2;
  constexpr double pixelsOfRadius = 4000;
  Sight sight = view.sight();
  sight.center = {center[0] + radius * std::cos(angle), center[1] + radius * std::sin(angle)};
  sight.scale = pixelsOfRadius / radius;
  view.setSight(sight);
  view.grab();
  return sight.pixel(sight.center).toPoint();
}

TEST_F(Window, AClickInTheDrawingSelectsWhatIsUnderThePointer) {
  auto& view = part<DrawingPane>("drawing");
  selectClass("Circle");
  const VkDbObjectId wanted = session().selected().front();
  window_->select({wanted});
  const QPoint edge = zoomToEdge(session(), view);
  window_->select({});
  QTest::mouseClick(&view, Qt::LeftButton, {}, edge);
  ASSERT_EQ(session().selected().size(), 1U);
  EXPECT_EQ(session().selected()[0], wanted);
  EXPECT_NE(shown("Radius"), "");
  QTest::mouseClick(&view, Qt::LeftButton, Qt::ControlModifier, edge);
  EXPECT_TRUE(session().selected().empty()) << "taken away";
}

void drag(QWidget& widget, QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) {
  QTest::mousePress(&widget, Qt::LeftButton, keys, from);
  QTest::mouseMove(&widget, to);
  QTest::mouseRelease(&widget, Qt::LeftButton, keys, to);
}

TEST_F(Window, AWindowToTheRightSelectsWhatLiesWithinAndToTheLeftWhatItTouches) {
  auto& view = part<DrawingPane>("drawing");
  const QPoint low(1, 1);
  const QPoint high(view.sight().size.width() - 1, view.sight().size.height() - 1);
  drag(view, low, high);
  const std::size_t all = session().selected().size();
  EXPECT_GT(all, 100U);

  const QPoint middle = (low + high) / 2;
  drag(view, low, middle);
  const std::size_t within = session().selected().size();
  drag(view, middle, low);
  const std::size_t touched = session().selected().size();
  EXPECT_LT(within, touched);
  EXPECT_LT(touched, all);
  drag(view, low, high, Qt::ShiftModifier);
  EXPECT_EQ(session().selected().size(), all) << "added";
}

TEST_F(Window, TheWheelZoomsAtThePointer) {
  auto& view = part<DrawingPane>("drawing");
  const QPoint at(120, 90);
  const view::Vector2 under = view.sight().point(at);
  const double scale = view.sight().scale;
  QWheelEvent turn(at, view.mapToGlobal(at), {}, {0, 240}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                   false);
  QCoreApplication::sendEvent(&view, &turn);
  EXPECT_GT(view.sight().scale, 1.5 * scale);
  EXPECT_NEAR(view.sight().point(at).x, under.x, 1e-9 * std::abs(under.x) + 1e-9);
  EXPECT_NEAR(view.sight().point(at).y, under.y, 1e-9 * std::abs(under.y) + 1e-9);
  QTest::keyClick(&view, Qt::Key_Home);
  EXPECT_DOUBLE_EQ(view.sight().scale, scale);
}

TEST_F(Window, TheDrawingShowsWhatIsSelectedAndWhatAWriteHasChanged) {
  auto& view = part<DrawingPane>("drawing");
  const QImage before = view.grab().toImage();
  selectClass("Circle");
  const QImage selected = view.grab().toImage();
  EXPECT_NE(before, selected);
  type("Radius", "250");
  EXPECT_NE(view.grab().toImage(), selected);
  part<QAction>("undo").trigger();
  EXPECT_EQ(view.grab().toImage(), selected);
}

TEST_F(Window, EscapeSelectsNothing) {
  selectClass("Circle");
  QTest::keyClick(&part<DrawingPane>("drawing"), Qt::Key_Escape);
  EXPECT_TRUE(session().selected().empty());
  EXPECT_EQ(rows().model()->rowCount(), 0);
}

// For people to look at: VELT_PICTURES names a folder for it.
TEST_F(Window, CanBePictured) {
  selectClass("BlockReference");
  const QPixmap picture = window_->grab();
  EXPECT_GT(picture.width(), 600);
  const char* const folder = std::getenv("VELT_PICTURES");
  EXPECT_TRUE(folder == nullptr || picture.save(QString(folder) + "/palette.png"));
}

}  // namespace
}  // namespace velt::desktop
