#include "desktop/MainWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "desktop/EntityModel.h"
#include "desktop/drawing/DrawingPane.h"
#include "desktop/palette/PaletteModel.h"
#include "desktop/palette/PalettePane.h"
#include "embedded/database/Lens.h"
#include "samples/FloorPlan.h"
#include "tests/desktop/WindowFixture.h"
#include "tests/tool/Drawings.h"

namespace velt::desktop {
namespace {

TEST_F(Window, ShowsTheRowsOfWhatIsSelectedInTheList) {
  EXPECT_EQ(rows().model()->rowCount(), 0);
  EXPECT_TRUE(part<QLabel>("banner").text().startsWith("A click on something")) << "how to begin";
  selectClass("Circle");
  EXPECT_FALSE(part<QLabel>("banner").isVisible());
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
  const std::size_t all = session().selected().size();
  const int entries = classes.count();
  choose(classes, circles);
  EXPECT_LT(session().selected().size(), all);
  EXPECT_EQ(classes.count(), entries) << "the counts stay those of the whole selection";
  EXPECT_EQ(classes.currentIndex(), circles);
  EXPECT_NE(shown("Radius"), "");
  choose(classes, 0);
  EXPECT_EQ(session().selected().size(), all);
  EXPECT_EQ(classes.currentIndex(), 0);
}

TEST_F(Window, APartOfTheSelectionThatIsNoClassIsNamedAndHasAWayBack) {
  selectClass("Circle");
  auto& classes = part<QComboBox>("classes");
  const std::size_t all = session().selected().size();
  Q_EMIT palette().narrowed({session().selected()[0]});
  settle();
  EXPECT_EQ(classes.currentText().toStdString(), "Chosen (1 of " + std::to_string(all) + ")");
  EXPECT_EQ(entities().selectionModel()->selectedRows().size(), 1);
  QTest::keyClick(&rows(), Qt::Key_Escape);
  settle();
  EXPECT_EQ(session().selected().size(), all);
  EXPECT_EQ(classes.count(), 1);
  Q_EMIT palette().narrowed({session().selected()[0]});
  settle();
  choose(classes, 0);
  EXPECT_EQ(session().selected().size(), all);
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

TEST_F(Window, ReckonsWithTheValuesOfTheEntities) {
  selectClass("Circle");
  type("Radius", "12");
  type("Radius", "*=2");
  EXPECT_EQ(shown("Radius").substr(0, 2), "24");
  type("Radius", "-=4");
  EXPECT_EQ(shown("Radius").substr(0, 2), "20");
  type("Layer", "~s/^.*$/0/");
  EXPECT_EQ(shown("Layer"), "0");
}

TEST_F(Window, ARowThatRefusedAValueSaysWhyUntilItTakesOne) {
  selectClass("Circle");
  type("Radius", "wide");
  const QString why = valueOf("Radius").data(PaletteModel::remarkRole).toString();
  EXPECT_NE(why, "");
  EXPECT_EQ(part<QLabel>("outcome").text(), why);
  EXPECT_TRUE(valueOf("Radius").siblingAtColumn(0).data(Qt::DecorationRole).isValid());
  EXPECT_TRUE(part<QLabel>("outcome").isVisible());
  palette().forgetOutcome();
  rows().setCurrentIndex(valueOf("Layer"));
  rows().setCurrentIndex(valueOf("Radius"));
  EXPECT_THAT(part<QLabel>("help").text().toStdString(), testing::HasSubstr(why.toStdString()))
      << "whenever somebody comes back to it";
  type("Radius", "12");
  EXPECT_EQ(valueOf("Radius").data(PaletteModel::remarkRole).toString(), "");
  EXPECT_FALSE(valueOf("Radius").siblingAtColumn(0).data(Qt::DecorationRole).isValid());
}

// Two walls, and one on a layer that is locked.
class LockedWindow : public Window {
 protected:
  void SetUp() override {
    file_ = folder_.write("house.dxf",
                          tests::drawingOf({{"0"}, {"Walls"}, {"Locked", 7, 4}},
                                           tests::line("2F", "Walls") + tests::circle("30", "Walls")
                                               + tests::circle("31", "Walls") + tests::line("32", "Locked")));
    Window::SetUp();
    entities().selectAll();
  }
};

TEST_F(LockedWindow, TellsWhatBecameOfEachEntityAndShowsThemOnRequest) {
  EXPECT_THAT(part<QLabel>("banner").text().toStdString(), testing::HasSubstr("1 of the entities is"));
  type("Color", "Red");
  EXPECT_EQ(part<QLabel>("outcome").text(), "3 changed, 1 locked");
  ASSERT_NE(window_->findChild<QPushButton*>("locked"), nullptr);
  part<QPushButton>("locked").click();
  settle();
  ASSERT_EQ(session().selected().size(), 1U);
  EXPECT_TRUE(palette::isOnLockedLayer(session().selected()[0]));
  EXPECT_EQ(part<QLabel>("outcome").text(), "3 changed, 1 locked") << "so that the others can be shown next";
  part<QPushButton>("changed").click();
  settle();
  EXPECT_EQ(session().selected().size(), 3U);
  part<QAction>("undo").trigger();
  EXPECT_EQ(part<QLabel>("outcome").text(), "") << "it is no longer so";
}

TEST_F(LockedWindow, ARefusalIsToldWithItsReason) {
  window_->select({session().drawing().entityByHandle(0x30)});
  type("Radius", "1000");
  window_->select({session().drawing().entityByHandle(0x30), session().drawing().entityByHandle(0x31)});
  type("Radius", "-=900");
  EXPECT_THAT(part<QLabel>("outcome").text().toStdString(), testing::StartsWith("1 changed, 1 refused: "));
  EXPECT_NE(valueOf("Radius").data(PaletteModel::remarkRole).toString(), "");
  part<QPushButton>("refused").click();
  settle();
  EXPECT_EQ(session().selected().size(), 1U);
}

TEST_F(LockedWindow, SaysWhyARowIsMissingAndShowsTheEntitiesWithoutIt) {
  auto& search = part<QLineEdit>("search");
  QTest::keyClicks(&search, "Radius");
  ASSERT_TRUE(part<QPushButton>("whyNone").isVisible());
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_THAT(part<QLabel>("explained").text().toStdString(),
              testing::HasSubstr("2 of the 4 entities have it"));
  EXPECT_THAT(part<QLabel>("explained").text().toStdString(), testing::Not(testing::HasSubstr("--")));
  part<QPushButton>("showOthers").click();
  settle();
  EXPECT_EQ(session().selected().size(), 2U);
  EXPECT_NE(shown("Radius"), "");
  EXPECT_FALSE(part<QPushButton>("whyNone").isVisible());
  part<QPushButton>("showExplained").click();
  settle();
  EXPECT_EQ(rows().model()->rowCount(), 0) << "no row fits the search";
}

TEST_F(LockedWindow, SaysInPlaceWhyARowIsAsItIs) {
  rows().setCurrentIndex(valueOf("Handle"));
  part<QAction>("why").trigger();
  EXPECT_TRUE(part<QFrame>("explanation").isVisible());
  EXPECT_THAT(part<QLabel>("explained").text().toStdString(),
              testing::AllOf(testing::StartsWith("Handle\n"), testing::HasSubstr("It cannot be edited: ")));
  part<QPushButton>("closeExplanation").click();
  EXPECT_FALSE(part<QFrame>("explanation").isVisible());
}

TEST_F(LockedWindow, TheMenuOfARowOffersWhatCanBeDoneWithIt) {
  const QModelIndex place = valueOf("Color");
  Q_EMIT rows().customContextMenuRequested(rows().visualRect(place).center());
  auto* const menu = window_->findChild<QMenu*>("rowMenu");
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->actions(), palette().rowActions());
  menu->close();
}

TEST_F(LockedWindow, CopiesTheChosenRowsOrAllOfThem) {
  rows().setCurrentIndex(valueOf("Layer").siblingAtColumn(0));
  part<QAction>("copy").trigger();
  const QString all = QApplication::clipboard()->text();
  EXPECT_EQ(all, palette().rowsAsText('\t'));
  EXPECT_TRUE(all.contains("General\tLayer\t*VARIES*\n"));
  rows().selectionModel()->select(valueOf("Color"), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  part<QAction>("copy").trigger();
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
            "General\tColor\t" + shown("Color") + "\nGeneral\tLayer\t*VARIES*\n");
}

TEST_F(LockedWindow, ExportsThePaletteAsATable) {
  const QString file = QString::fromStdString(folder_.path("rows.csv"));
  EXPECT_TRUE(window_->exportTo(file));
  EXPECT_THAT(tests::contentOf(file.toStdString()), testing::StartsWith("Category,Property,Value\nGeneral,"));
  answerNextQuestion(QMessageBox::Ok);
  EXPECT_FALSE(window_->exportTo(QString::fromStdString(folder_.path("nowhere/rows.csv"))));
}

TEST_F(LockedWindow, ListsWhatWasDoneAndGoesThere) {
  auto& history = part<QListWidget>("history");
  const std::string first = session().drawing().document().bytes();
  type("Color", "Red");
  type("Linetype scale", "2");
  ASSERT_EQ(history.count(), 3);
  EXPECT_EQ(history.item(1)->text(), "Color = Red");
  EXPECT_EQ(history.currentRow(), 2);
  Q_EMIT history.itemClicked(history.item(0));
  settle();
  EXPECT_EQ(session().drawing().document().bytes(), first);
  EXPECT_EQ(history.currentRow(), 0);
  EXPECT_TRUE(history.item(1)->font().italic()) << "undone";
  Q_EMIT history.itemActivated(history.item(1));
  settle();
  EXPECT_EQ(shown("Color"), "*VARIES*");
  EXPECT_EQ(session().undone(), 1U);
}

TEST_F(LockedWindow, AsksBeforeChangesAreLost) {
  EXPECT_TRUE(window_->close());
  window_->show();
  type("Color", "Red");
  answerNextQuestion(QMessageBox::Cancel);
  EXPECT_FALSE(window_->close());
  answerNextQuestion(QMessageBox::Save);
  EXPECT_TRUE(window_->close());
  EXPECT_EQ(tests::contentOf(file_), session().drawing().document().bytes());
}

TEST_F(LockedWindow, SavesUnderAnotherNameAndRemembersIt) {
  type("Color", "Red");
  const QString other = QString::fromStdString(folder_.path("other.dxf"));
  EXPECT_TRUE(window_->saveTo(other));
  EXPECT_EQ(tests::contentOf(other.toStdString()), session().drawing().document().bytes());
  EXPECT_NE(tests::contentOf(file_), tests::contentOf(other.toStdString()));
  EXPECT_TRUE(window_->windowTitle().startsWith("other.dxf"));
  ASSERT_EQ(part<QMenu>("recent").actions().size(), 2);
  EXPECT_EQ(part<QMenu>("recent").actions()[0]->text(), other);
  part<QMenu>("recent").actions()[1]->trigger();
  settle();
  EXPECT_TRUE(window_->windowTitle().startsWith("house.dxf"));
}

TEST_F(LockedWindow, TellsWhenAnotherProgramChangesTheFileAndReadsItAgain) {
  folder_.write("house.dxf", tests::drawingOf({{"0"}}, tests::line("2F", "0")));
  ASSERT_TRUE(QTest::qWaitFor([&] { return part<QFrame>("notice").isVisible(); }));
  EXPECT_EQ(part<QLabel>("noticed").text(), "house.dxf was changed by another program.");
  part<QPushButton>("readAgain").click();
  EXPECT_FALSE(part<QFrame>("notice").isVisible());
  EXPECT_EQ(entities().model()->rowCount(), 1);
}

TEST_F(LockedWindow, DoesNotSaveOverAnotherProgramsChangeUnasked) {
  type("Color", "Red");
  const std::string others = tests::drawingOf({{"0"}}, tests::line("2F", "0"));
  folder_.write("house.dxf", others);
  answerNextQuestion(QMessageBox::Cancel);
  EXPECT_FALSE(window_->save());
  EXPECT_EQ(tests::contentOf(file_), others);
  QTimer::singleShot(0, [] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    for (QAbstractButton* const button : box->buttons()) {
      if (box->buttonRole(button) == QMessageBox::DestructiveRole) return button->click();
    }
    box->reject();
  });
  EXPECT_TRUE(window_->save());
  EXPECT_EQ(tests::contentOf(file_), session().drawing().document().bytes());
}

TEST_F(LockedWindow, AFileThatCannotBeReadLeavesTheDrawingThatIsShown) {
  answerNextQuestion(QMessageBox::Ok);
  EXPECT_FALSE(window_->open(QString::fromStdString(folder_.path("nowhere.dxf"))));
  EXPECT_EQ(entities().model()->rowCount(), 4);
  EXPECT_EQ(session().file(), file_);
}

TEST_F(LockedWindow, OpensADrawingThatIsDroppedOnIt) {
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(
      QString::fromStdString(folder_.write("new.dxf", tests::drawingOf({{"0"}}, tests::line("2F", "0")))))});
  QDragEnterEvent enter({10, 10}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(window_.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({10, 10}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(window_.get(), &drop);
  EXPECT_EQ(entities().model()->rowCount(), 1);
  QMimeData text;
  text.setText("no drawing");
  QDragEnterEvent other({10, 10}, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
  other.ignore();
  QCoreApplication::sendEvent(window_.get(), &other);
  EXPECT_FALSE(other.isAccepted());
}

TEST_F(Window, OpensAgainWhatItHasSaved) {
  selectClass("Circle");
  type("Radius", "12.5");
  EXPECT_TRUE(window_->save());
  EXPECT_TRUE(window_->open(QString::fromStdString(file_)));
  EXPECT_TRUE(session().selected().empty());
  EXPECT_FALSE(session().canUndo());
  selectClass("Circle");
  EXPECT_EQ(shown("Radius").substr(0, 4), "12.5");
}

TEST_F(Window, ADrawingThatCannotBeLoadedLeavesTheOneThatIsShown) {
  const std::size_t before = session().drawing().entities().size();
  EXPECT_THROW(window_->load("nothing", [this] { return std::make_unique<Session>(folder_.path("no.dxf")); }),
               std::exception);
  EXPECT_EQ(session().drawing().entities().size(), before);
  window_->load("another", [this] {
    return std::make_unique<Session>(
        folder_.write("one.dxf", tests::drawingOf({{"0"}}, tests::line("2F", "0"))));
  });
  EXPECT_EQ(session().drawing().entities().size(), 1U);
}

TEST_F(LockedWindow, SelectsAllOfALayerOrClass) {
  window_->select({session().drawing().entityByHandle(0x30)});
  part<QAction>("selectLayers").trigger();
  EXPECT_EQ(session().selected().size(), 3U) << "all on the layer of the walls";
  window_->select({session().drawing().entityByHandle(0x30)});
  part<QAction>("selectClasses").trigger();
  EXPECT_EQ(session().selected().size(), 2U) << "all circles";
  window_->select({});
  EXPECT_FALSE(part<QAction>("selectLayers").isEnabled());
  EXPECT_FALSE(part<QAction>("selectClasses").isEnabled());
}

TEST_F(LockedWindow, TheMenuOfAnEntitySelectsItsLikes) {
  window_->select({});
  // On the one line that is locked.
  const QRect row = entities().visualRect(entities().model()->index(3, 0));
  Q_EMIT entities().customContextMenuRequested(row.center());
  auto* const menu = window_->findChild<QMenu*>("entityMenu");
  ASSERT_NE(menu, nullptr);
  ASSERT_EQ(menu->actions()[0]->text(), "All on &layer Locked");
  ASSERT_EQ(menu->actions()[1]->text(), "All of &class Line");
  menu->actions()[0]->trigger();
  EXPECT_EQ(session().selected().size(), 1U);
  menu->actions()[1]->trigger();
  EXPECT_EQ(session().selected().size(), 2U);
  menu->close();
}

TEST_F(Window, TheMenuOfTheDrawingIsThatOfTheEntityUnderThePointer) {
  auto& view = part<DrawingPane>("drawing");
  selectClass("Circle");
  window_->select({session().selected().front()});
  const QPoint edge = zoomToEdge(session(), view);
  QContextMenuEvent event(QContextMenuEvent::Mouse, edge, view.mapToGlobal(edge));
  QCoreApplication::sendEvent(&view, &event);
  auto* const menu = window_->findChild<QMenu*>("entityMenu");
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->actions()[1]->text(), "All of &class Circle");
  menu->close();
}

TEST_F(Window, WhatIsUnderThePointerIsNamedAndStandsOut) {
  auto& view = part<DrawingPane>("drawing");
  selectClass("Circle");
  window_->select({session().selected().front()});
  const QPoint edge = zoomToEdge(session(), view);
  window_->select({});
  const QImage before = view.grab().toImage();
  QTest::mouseMove(&view, edge);
  EXPECT_NE(view.grab().toImage(), before);
  EXPECT_TRUE(window_->statusBar()->currentMessage().startsWith("Circle "));
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&view, &leave);
  EXPECT_EQ(view.grab().toImage(), before);
  EXPECT_EQ(window_->statusBar()->currentMessage(), "");
}

TEST_F(Window, RemembersHowItWasArranged) {
  auto& view = part<DrawingPane>("drawing");
  part<QAction>("dark").trigger();
  const QImage light = view.grab().toImage();
  EXPECT_EQ(light.pixelColor(2, 2), QColor(Qt::white));
  auto& halves = dynamic_cast<QSplitter&>(*palette().parentWidget());
  halves.setSizes({600, 500});
  const QList<int> sizes = halves.sizes();
  window_->close();
  window_ = std::make_unique<MainWindow>(std::make_unique<Session>(file_));
  window_->show();
  EXPECT_FALSE(part<QAction>("dark").isChecked());
  EXPECT_EQ(part<DrawingPane>("drawing").grab().toImage().pixelColor(2, 2), QColor(Qt::white));
  EXPECT_EQ(dynamic_cast<QSplitter&>(*palette().parentWidget()).sizes(), sizes);
}

// --- for everyone -------------------------------------------------------------------------------------------

TEST_F(Window, EverythingThatTakesKeysHasANameForThoseWhoCannotSeeIt) {
  entities().selectAll();
  type("Color", "Red");
  QTest::keyClicks(&part<QLineEdit>("search"), "no such row");
  QTest::keyClick(&part<QLineEdit>("search"), Qt::Key_Return);
  for (const QWidget* const widget : window_->findChildren<QWidget*>()) {
    // The parts of one of Qt's own widgets are named by it.
    if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible()
        || widget->objectName().startsWith("qt_"))
      continue;
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
    ASSERT_NE(spoken, nullptr);
    EXPECT_NE(spoken->text(QAccessible::Name), "")
        << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
  }
}

TEST_F(Window, AllPartsAreReachedByKeys) {
  window_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  selectClass("Circle");
  part<DrawingPane>("drawing").setFocus();
  QStringList reached;
  for (int i = 0; i < 4; ++i) {
    part<QAction>("nextPart").trigger();
    reached.append(QApplication::focusWidget()->objectName());
  }
  EXPECT_EQ(reached, QStringList({"entities", "classes", "rows", "drawing"}));
  part<QAction>("find").trigger();
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "search");
  QTest::keyClicks(&part<QLineEdit>("search"), "radius");
  QTest::keyClick(&part<QLineEdit>("search"), Qt::Key_Return);
  EXPECT_EQ(QApplication::focusWidget(), &rows());
  EXPECT_EQ(rows().currentIndex().siblingAtColumn(0).data().toString(), "Radius");
  QTest::keyClick(&rows(), Qt::Key_Return);
  auto* const editor = rows().viewport()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  EXPECT_NE(editor->accessibleName(), "");
}

TEST_F(Window, WithKeysTheValuesBehindARowNarrowTheSelectionToo) {
  entities().selectAll();
  const std::size_t all = session().selected().size();
  rows().setCurrentIndex(valueOf("Layer").siblingAtColumn(0));
  rows().setFocus();
  QTest::keyClick(&rows(), Qt::Key_Right);
  QTest::keyClick(&rows(), Qt::Key_Down);
  QTest::keyClick(&rows(), Qt::Key_Return);
  settle();
  EXPECT_LT(session().selected().size(), all);
  EXPECT_NE(shown("Layer"), palette::variesText);
}

double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// The best contrast of any two pixels: that of the text against its ground.
double contrastIn(const QImage& picture) {
  double least = 1, most = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const double one = luminance(picture.pixelColor(x, y));
      least = std::min(least, one);
      most = std::max(most, one);
    }
  }
  return (most + 0.05) / (least + 0.05);
}

TEST_F(Window, TextsAreReadableInEveryScheme) {
  selectClass("Circle");
  QPalette dark;
  dark.setColor(QPalette::Window, QColor(30, 30, 30));
  dark.setColor(QPalette::Base, QColor(20, 20, 20));
  dark.setColor(QPalette::AlternateBase, QColor(35, 35, 35));
  dark.setColor(QPalette::Button, QColor(45, 45, 45));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    dark.setColor(role, QColor(230, 230, 230));
  const QPalette highContrast(Qt::white, Qt::black, Qt::white, Qt::black, Qt::gray, Qt::white, Qt::black);
  for (const QPalette& scheme : {QApplication::palette(), dark, highContrast}) {
    window_->setPalette(scheme);
    QCoreApplication::processEvents();
    constexpr double readable = 4.5;
    for (const char* const label : {"Radius", "Handle"}) {
      const QRect place = rows().visualRect(valueOf(label));
      EXPECT_GE(contrastIn(rows().viewport()->grab(place).toImage()), readable) << label;
    }
    const QRect entity = entities().visualRect(entities().model()->index(0, 1));
    EXPECT_GE(contrastIn(entities().viewport()->grab(entity).toImage()), readable);
    EXPECT_GE(contrastIn(part<QComboBox>("classes").grab().toImage()), readable);
  }
}

TEST_F(Window, TheCurrentRowStaysWhereItIsWhenTheRowsChange) {
  selectClass("Circle");
  type("Radius", "12");
  EXPECT_EQ(rows().currentIndex().siblingAtColumn(0).data().toString(), "Radius");
  entities().clearSelection();
  selectClass("Line");
  EXPECT_FALSE(rows().currentIndex().isValid()) << "lines have none";
}

TEST_F(Window, RemembersWhatWasFoldedUntilItIsOpenedAgain) {
  selectClass("Circle");
  rows().collapse(rows().model()->index(0, 0));
  window_ = std::make_unique<MainWindow>(std::make_unique<Session>(file_));
  selectClass("Circle");
  EXPECT_FALSE(rows().isExpanded(rows().model()->index(0, 0)));
  EXPECT_TRUE(rows().isExpanded(rows().model()->index(1, 0)));
}

// For people to look at: see Window::picture().
TEST_F(Window, CanBePictured) {
  selectClass("BlockReference");
  EXPECT_GT(picture("palette").width(), 600);
}

}  // namespace
}  // namespace velt::desktop
