// What the window is for, from selecting to saving, as a user does it. With VELT_PICTURES it draws the pictures of
// docs/palette.md.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QDockWidget>
#include <QFrame>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include "desktop/drawing/DrawingPane.h"
#include "desktop/palette/PaletteModel.h"
#include "tests/desktop/WindowFixture.h"

namespace velt::desktop {
namespace {

class Mission : public Window {
 protected:
  std::string outcome() { return part<QLabel>("outcome").text().toStdString(); }
  void selectFirst(const QString& kind, const QString& layer) {
    const auto& list = dynamic_cast<EntityModel&>(*entities().model());
    for (int row = 0; row < list.rowCount(); ++row) {
      if (list.index(row, EntityModel::classColumn).data().toString() == kind
          && list.index(row, EntityModel::layerColumn).data().toString() == layer)
        return window_->select({list.entityAt(row)});
    }
    FAIL() << "there is no " << kind.toStdString() << " on " << layer.toStdString();
  }
  void pictureOfList(const QString& label, const std::string& name) {
    rows().setCurrentIndex(valueOf(label));
    rows().edit(valueOf(label));
    auto* const list = rows().viewport()->findChild<QComboBox*>();
    ASSERT_NE(list, nullptr);
    list->setMaxVisibleItems(30);
    list->showPopup();
    EXPECT_TRUE(list->view()->isVisible());
    picture(name, *list->view());
    list->hidePopup();
    QTest::keyClick(list, Qt::Key_Escape);
    settle();
  }
  // Opens the editor and types, without pressing the return key.
  void beginToType(const QString& label, const QString& text) {
    rows().setCurrentIndex(valueOf(label));
    rows().edit(valueOf(label));
    auto* const editor = rows().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, text);
  }
};

TEST_F(Mission, FromSelectingToSaving) {
  window_->resize(1180, 760);
  settle();
  const std::string before = session().drawing().document().bytes();

  // A window over the rooms on the left.
  auto& view = part<DrawingPane>("drawing");
  const QSize size = view.sight().size;
  drag(view, {size.width() * 26 / 100, size.height() * 17 / 100},
       {size.width() * 56 / 100, size.height() * 66 / 100});
  EXPECT_GT(session().selected().size(), 10U);
  picture("palette-1-select");

  // Blocks alone, and what a row means.
  auto& classes = part<QComboBox>("classes");
  choose(classes, classes.findText("BlockReference", Qt::MatchStartsWith));
  rows().setCurrentIndex(valueOf("Rotation"));
  EXPECT_NE(part<QLabel>("help").text(), "");
  picture("palette-2-read");

  // The values behind *VARIES*.
  ASSERT_EQ(shown("Layer"), palette::variesText);
  const QModelIndex layer = valueOf("Layer").siblingAtColumn(0);
  rows().expand(layer);
  if (rows().model()->canFetchMore(layer)) rows().model()->fetchMore(layer);
  ASSERT_GT(rows().model()->rowCount(layer), 1);
  rows().setCurrentIndex(layer);
  picture("palette-3-varies");

  // One of them.
  Q_EMIT rows().clicked(rows().model()->index(0, 1, layer));
  settle();
  EXPECT_NE(shown("Layer"), palette::variesText);
  picture("palette-4-narrow");

  // A value.
  type("Color", "Red");
  EXPECT_EQ(shown("Color"), "Red");
  EXPECT_THAT(outcome(), testing::HasSubstr("changed"));
  picture("palette-5-edit");
  pictureOfList("Layer", "palette-5-layers");
  pictureOfList("Linetype", "palette-5-linetypes");
  pictureOfList("Lineweight", "palette-5-lineweights");

  // A value that follows from the present one.
  beginToType("Rotation", "+=15");
  picture("palette-6-relative");
  QTest::keyClick(rows().viewport()->findChild<QLineEdit*>(), Qt::Key_Return);
  settle();
  EXPECT_THAT(outcome(), testing::HasSubstr("changed"));

  // One corner of a polyline, which the drawing shows.
  selectFirst("LWPolyline", "Garden");
  type("Vertex", "3");
  EXPECT_EQ(shown("Vertex").substr(0, 5), "3 of ");
  picture("palette-7-vertex");

  // A text of several lines.
  selectFirst("MText", "Labels");
  rows().setCurrentIndex(valueOf("Contents"));
  rows().edit(valueOf("Contents"));
  auto* const lines = rows().viewport()->findChild<QPlainTextEdit*>();
  ASSERT_NE(lines, nullptr);
  lines->moveCursor(QTextCursor::End);
  picture("palette-8-lines");
  QTest::keyClick(lines, Qt::Key_Escape);
  settle();

  // What is on a locked layer stays as it is, and is found.
  entities().selectAll();
  type("Lineweight", "0.50 mm");
  EXPECT_THAT(outcome(), testing::HasSubstr("locked"));
  picture("palette-9-locked");
  part<QPushButton>("locked").click();
  settle();
  for (const VkDbObjectId entity : session().selected())
    EXPECT_TRUE(palette::isOnLockedLayer(entity));

  // A value that means nothing.
  entities().clearSelection();
  selectClass("Circle");
  type("Radius", "wide");
  EXPECT_TRUE(valueOf("Radius").siblingAtColumn(0).data(Qt::DecorationRole).isValid());
  picture("palette-10-refused");

  // Why there is no such row.
  entities().selectAll();
  QTest::keyClicks(&part<QLineEdit>("search"), "Radius");
  QTest::keyClick(&part<QLineEdit>("search"), Qt::Key_Return);
  EXPECT_TRUE(part<QFrame>("explanation").isVisible());
  picture("palette-11-why");
  part<QPushButton>("closeExplanation").click();
  part<QLineEdit>("search").clear();

  // Back and forth.
  window_->findChild<QDockWidget*>("historyDock")->show();
  part<QAction>("undo").trigger();
  picture("palette-12-undo");
  part<QAction>("undo").trigger();
  part<QAction>("undo").trigger();
  EXPECT_EQ(session().drawing().document().bytes(), before);
  for (int i = 0; i < 3; ++i)
    part<QAction>("redo").trigger();

  EXPECT_TRUE(window_->save());
  EXPECT_FALSE(window_->isWindowModified());
  EXPECT_EQ(tests::contentOf(file_), session().drawing().document().bytes());
  picture("palette-13-save");
}

}  // namespace
}  // namespace velt::desktop
