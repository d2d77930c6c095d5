#include "desktop/palette/RowDelegate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QPlainTextEdit>
#include <QSpinBox>

#include "desktop/drawing/DrawingPane.h"
#include "desktop/palette/ChoiceDelegate.h"
#include "desktop/palette/PaletteModel.h"
#include "samples/Gallery.h"
#include "tests/desktop/WindowFixture.h"
#include "tests/tool/Drawings.h"

namespace velt::desktop {
namespace {

// A window on one entity of every class.
class EditorWindow : public Window {
 protected:
  void SetUp() override {
    file_ = folder_.write("gallery.dxf", samples::galleryDrawing());
    Window::SetUp();
  }
  void selectFirst(const QString& kind) {
    const QAbstractItemModel& list = *entities().model();
    for (int row = 0; row < list.rowCount(); ++row) {
      const VkDbObjectId entity = dynamic_cast<const EntityModel&>(list).entityAt(row);
      if (list.index(row, EntityModel::classColumn).data().toString() == kind
          && !palette::isOnLockedLayer(entity))
        return window_->select({entity});
    }
    FAIL() << "there is no " << kind.toStdString();
  }
  template <class Editor>
  Editor& open(const QString& label) {
    rows().setCurrentIndex(valueOf(label));
    rows().edit(valueOf(label));
    return *rows().viewport()->findChild<Editor*>();
  }
  // In the picture of that entry of a list.
  static int inkedPixels(const QComboBox& list, const QString& text) {
    const QImage picture = list.itemIcon(list.findText(text))
                               .pixmap(list.iconSize())
                               .toImage()
                               .convertToFormat(QImage::Format_ARGB32);
    int inked = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x)
        inked += qAlpha(picture.pixel(x, y)) > 0 ? 1 : 0;
    }
    return inked;
  }
};

struct Edit {
  const char* kind;
  const char* label;
  const char* typed;
  const char* shown;
};

std::ostream& operator<<(std::ostream& out, const Edit& edit) {
  return out << edit.kind << ", " << edit.label;
}

class EachKindOfRow : public EditorWindow, public testing::WithParamInterface<Edit> {};

TEST_P(EachKindOfRow, IsEditedAndUndone) {
  const std::string before = session().drawing().document().bytes();
  selectFirst(GetParam().kind);
  const std::string shownBefore = shown(GetParam().label);
  ASSERT_NE(shownBefore, GetParam().shown);
  type(GetParam().label, GetParam().typed);
  EXPECT_EQ(shown(GetParam().label), GetParam().shown);
  EXPECT_EQ(session().history().size(), 1U);
  part<QAction>("undo").trigger();
  EXPECT_EQ(shown(GetParam().label), shownBefore);
  EXPECT_TRUE(session().drawing().document().bytes() == before);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Window, EachKindOfRow, testing::Values(
  //   class             label               typed              shown
  Edit{"Circle",         "Color",            "Red",             "Red"},
  Edit{"Line",           "Color",            "255,128,0",       "255,128,0"},
  Edit{"Circle",         "Layer",            "0",               "0"},
  Edit{"Circle",         "Linetype",         "Continuous",      "Continuous"},
  Edit{"Circle",         "Lineweight",       "0.35 mm",         "0.35 mm"},
  Edit{"Circle",         "Linetype scale",   "2.5",             "2.5"},
  Edit{"Circle",         "Transparency",     "50%",             "50"},
  Edit{"Circle",         "Visible",          "No",              "No"},
  Edit{"Circle",         "Radius",           "12.5",            "12.5000"},
  Edit{"Circle",         "Center X",         "+=1000000",       "1000025.0000"},
  Edit{"Text",           "Contents",         "Hello",           "Hello"},
  Edit{"Text",           "Rotation",         "33",              "33\u00B0"},
  Edit{"MText",          "Contents",         "one\ntwo",        "one\\Ptwo"},
  Edit{"MText",          "Justify",          "Bottom center",   "Bottom center"},
  Edit{"LWPolyline",     "Closed",           "No",              "No"},
  Edit{"LWPolyline",     "Vertex[1].X",      "-77",             "-77.0000"},
  Edit{"Hatch",          "Pattern name",     "BRICK",           "BRICK"}));
// clang-format on

TEST_F(EditorWindow, LayersAreListedWithTheirColorsAndStates) {
  file_ = folder_.write("house.dxf",
                        tests::drawingOf({{"0"}, {"Walls", 1, 4}, {"Axes", -3, 1}}, tests::line("2F", "0")));
  ASSERT_TRUE(window_->open(QString::fromStdString(file_)));
  window_->select({session().drawing().entityByHandle(0x2F)});
  const auto& list = open<QComboBox>("Layer");
  const auto remark = [&](const char* layer) {
    return list.itemData(list.findText(layer), ChoiceDelegate::remarkRole).toString().toStdString();
  };
  EXPECT_EQ(remark("0"), "");
  EXPECT_EQ(remark("Walls"), "locked");
  EXPECT_EQ(remark("Axes"), "off, frozen");
  EXPECT_EQ(list.itemData(list.findText("Walls"), Qt::AccessibleTextRole).toString(), "Walls, locked")
      << "for those who hear it";
  const QImage red = list.itemIcon(list.findText("Walls")).pixmap(list.iconSize()).toImage();
  EXPECT_EQ(red.pixelColor(red.rect().center()), QColor(Qt::red));
}

TEST_F(EditorWindow, LineTypesAreListedWithTheirDashes) {
  selectFirst("Line");
  const auto& list = open<QComboBox>("Linetype");
  const int whole = inkedPixels(list, "Continuous");
  EXPECT_GT(whole, 0);
  EXPECT_EQ(inkedPixels(list, "ByLayer"), 0) << "no line type of its own";
  int dashed = 0;
  for (int i = 0; i < list.count(); ++i) {
    const int inked = inkedPixels(list, list.itemText(i));
    if (inked > 0 && inked < whole) ++dashed;
  }
  EXPECT_GT(dashed, 0);
}

TEST_F(EditorWindow, LineWeightsAreListedAsWideAsTheyAre) {
  selectFirst("Line");
  const auto& list = open<QComboBox>("Lineweight");
  EXPECT_GT(inkedPixels(list, "2.11 mm"), inkedPixels(list, "0.80 mm"));
  EXPECT_GT(inkedPixels(list, "0.80 mm"), inkedPixels(list, "0.25 mm"));
  EXPECT_EQ(inkedPixels(list, "ByLayer"), 0);
}

TEST_F(EditorWindow, AValueStandsBesideWhatItLooksLike) {
  selectFirst("Line");
  type("Lineweight", "2.11 mm");
  const auto looks = [&](const char* label) {
    return valueOf(label).data(PaletteModel::pictureRole).value<ValuePicture>();
  };
  EXPECT_GT(looks("Lineweight").width, 7);
  EXPECT_EQ(looks("Layer").shape, ValuePicture::Shape::square);
  type("Color", "12");
  EXPECT_EQ(looks("Color").shape, ValuePicture::Shape::square);
  EXPECT_LT(looks("Color").color.green(), looks("Color").color.red());
  EXPECT_TRUE(looks("Handle").isEmpty());
}

TEST_F(EditorWindow, ATextThatNamesAColorIsNoColor) {
  selectFirst("Text");
  type("Contents", "Red");
  EXPECT_TRUE(valueOf("Contents").data(PaletteModel::pictureRole).value<ValuePicture>().isEmpty());
}

TEST_F(EditorWindow, ATextOfSeveralLinesIsEditedLineByLine) {
  selectFirst("MText");
  type("Contents", "one\ntwo");
  auto& lines = open<QPlainTextEdit>("Contents");
  EXPECT_EQ(lines.toPlainText(), "one\ntwo");
  EXPECT_GT(lines.height(), rows().visualRect(valueOf("Contents")).height());
  EXPECT_LE(lines.geometry().bottom(), rows().viewport()->height());
  lines.moveCursor(QTextCursor::End);
  QTest::keyClick(&lines, Qt::Key_Return);
  QTest::keyClicks(&lines, "a\\b");
  QTest::keyClick(&lines, Qt::Key_Return, Qt::ControlModifier);
  settle();
  EXPECT_EQ(shown("Contents"), "one\\Ptwo\\Pa\\b");
  EXPECT_EQ(session().history().back(), "Contents = one\\Ptwo\\Pa\\b") << "on one line";
}

TEST_F(EditorWindow, ABackslashBeforeAPIsNoEndOfALine) {
  selectFirst("MText");
  type("Contents", "a\\\\Pb\nc");
  EXPECT_EQ(open<QPlainTextEdit>("Contents").toPlainText(), "a\\\\Pb\nc");
}

TEST_F(EditorWindow, ATextOfSeveralLinesThatIsLeftAsItIsIsNotWritten) {
  selectFirst("MText");
  type("Contents", "one\ntwo");
  QTest::keyClick(&open<QPlainTextEdit>("Contents"), Qt::Key_Return, Qt::ControlModifier);
  settle();
  EXPECT_EQ(session().history().size(), 1U);
  auto& lines = open<QPlainTextEdit>("Contents");
  lines.setPlainText("three");
  QTest::keyClick(&lines, Qt::Key_Escape);
  settle();
  EXPECT_EQ(session().history().size(), 1U);
}

// --- vertices -----------------------------------------------------------------------------------------------

class VertexWindow : public EditorWindow {
 protected:
  void SetUp() override {
    EditorWindow::SetUp();
    file_ = folder_.write("outline.dxf", tests::drawingOf({{"0"}}, polyline("2F", "1.0")));
    ASSERT_TRUE(window_->open(QString::fromStdString(file_)));
    window_->select({session().drawing().entityByHandle(0x2F)});
  }
  static std::string polyline(const std::string& handle, const std::string& upwards) {
    return tests::pairs({{0, "LWPOLYLINE"},
                         {5, handle},
                         {100, "AcDbEntity"},
                         {8, "0"},
                         {100, "AcDbPolyline"},
                         {90, "4"},
                         {70, "1"},
                         {10, "0"},
                         {20, "0"},
                         {10, "100"},
                         {20, "0"},
                         {10, "100"},
                         {20, "50"},
                         {10, "0"},
                         {20, "50"},
                         {210, "0.0"},
                         {220, "0.0"},
                         {230, upwards}});
  }
  int vertexRows() {
    int count = 0;
    const QModelIndex category = valueOf("Vertex").parent();
    for (int row = 0; row < rows().model()->rowCount(category); ++row)
      count += rows().model()->index(row, 0, category).data().toString().startsWith("Vertex[") ? 1 : 0;
    return count;
  }
  QImage picture() { return part<DrawingPane>("drawing").grab().toImage(); }
  // Whether the mark of a vertex is at that place of the drawing.
  bool isMarked(double x, double y) {
    const QPoint place = part<DrawingPane>("drawing").sight().pixel({x, y}).toPoint();
    const QColor corner = picture().pixelColor(place + QPoint(6, -6));
    return corner.blue() > 200 && corner.red() < 100;
  }
};

TEST_F(VertexWindow, OneVertexIsShownAndTheSpinnerTellsWhich) {
  EXPECT_EQ(shown("Vertex"), "1 of 4");
  EXPECT_EQ(vertexRows(), 2);
  auto& number = open<QSpinBox>("Vertex");
  EXPECT_EQ(number.text(), "1 of 4");
  QTest::keyClick(&number, Qt::Key_Up);
  QTest::keyClick(&number, Qt::Key_Up);
  EXPECT_EQ(shown("Vertex"), "3 of 4");
  EXPECT_EQ(vertexRows(), 2);
  EXPECT_EQ(shown("Vertex[3].X"), "100.000");
  EXPECT_EQ(shown("Vertex[3].Y"), "50.000");
  EXPECT_TRUE(session().history().empty()) << "looking writes nothing";
}

TEST_F(VertexWindow, TheVertexThatIsLookedAtIsMarkedInTheDrawing) {
  rows().setCurrentIndex(valueOf("Color"));
  EXPECT_FALSE(isMarked(0, 0));
  type("Vertex", "2");
  EXPECT_TRUE(isMarked(100, 0));
  EXPECT_FALSE(isMarked(0, 0));
  type("Vertex[2].Y", "20");
  EXPECT_TRUE(isMarked(100, 20)) << "where it is now";
  EXPECT_EQ(shown("Vertex"), "2 of 4") << "a write leaves the number";
  rows().setCurrentIndex(valueOf("Color"));
  EXPECT_FALSE(isMarked(100, 20));
}

TEST_F(VertexWindow, AVertexIsMarkedWhereAMirroredPolylineHasIt) {
  file_ = folder_.write("mirrored.dxf", tests::drawingOf({{"0"}}, polyline("2F", "-1.0")));
  ASSERT_TRUE(window_->open(QString::fromStdString(file_)));
  window_->select({session().drawing().entityByHandle(0x2F)});
  type("Vertex", "2");
  EXPECT_TRUE(isMarked(-100, 0));
}

TEST_F(VertexWindow, ASearchFindsEveryVertexAndATableHasThemAll) {
  QTest::keyClicks(&part<QLineEdit>("search"), "vertex[4].y");
  EXPECT_EQ(shown("Vertex[4].Y"), "50.000");
  part<QLineEdit>("search").clear();
  EXPECT_EQ(vertexRows(), 2);
  for (const char* const cell : {"\tVertex[1].X\t0.000\n", "\tVertex[4].Y\t50.000\n"})
    EXPECT_TRUE(palette().rowsAsText('\t').contains(cell)) << cell;
}

TEST_F(VertexWindow, AnotherPolylineBeginsWithItsFirstVertex) {
  type("Vertex", "4");
  EXPECT_EQ(shown("Vertex"), "4 of 4");
  window_->select({});
  window_->select({session().drawing().entityByHandle(0x2F)});
  EXPECT_EQ(shown("Vertex"), "1 of 4");
}

}  // namespace
}  // namespace velt::desktop
