#pragma once

// A window that shows the sample drawing, and what a user does in it.

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QAbstractButton>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "desktop/EntityModel.h"
#include "desktop/MainWindow.h"
#include "desktop/palette/PalettePane.h"
#include "palette/Palette.h"
#include "samples/FloorPlan.h"
#include "tests/desktop/Application.h"
#include "tests/support/Files.h"

namespace velt::desktop {

class Window : public testing::Test {
 protected:
  void SetUp() override {
    QSettings().clear();
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

  PalettePane& palette() { return *window_->findChild<PalettePane*>(); }

  void choose(QComboBox& list, int entry) {
    list.setCurrentIndex(entry);
    Q_EMIT list.activated(entry);
    settle();
  }

  // Presses a button of the next box that asks something.
  static void answerNextQuestion(QMessageBox::StandardButton button) {
    QTimer::singleShot(0, [button] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr) << "nothing was asked";
      box->button(button)->click();
    });
  }

  // The editor closes, the value is written, and the editor ends: each waits for the event loop.
  static void settle() {
    for (int i = 0; i < 3; ++i) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }

  // As a user does it: opens the editor, replaces the text, and presses the return key.
  void type(const QString& label, const QString& text) {
    const QModelIndex place = valueOf(label);
    rows().setCurrentIndex(place);
    rows().edit(place);
    auto* const editor = rows().viewport()->findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(editor, nullptr) << label.toStdString() << " cannot be edited";
    if (auto* const lines = qobject_cast<QPlainTextEdit*>(editor)) {
      lines->setPlainText(text);
      QTest::keyClick(editor, Qt::Key_Return, Qt::ControlModifier);
      return settle();
    }
    auto* field = qobject_cast<QLineEdit*>(editor);
    if (field == nullptr) field = editor->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, text);
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
  }

  static void drag(QWidget& widget, QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) {
    QTest::mousePress(&widget, Qt::LeftButton, keys, from);
    QTest::mouseMove(&widget, to);
    QTest::mouseRelease(&widget, Qt::LeftButton, keys, to);
  }

  // Few colors make small files, and the window has few but for the edges of lines and letters.
  static QList<QRgb> mostUsedColors(const QImage& picture) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x)
        ++counts[picture.pixel(x, y)];
    }
    std::vector<std::pair<int, QRgb>> ordered;
    for (const auto& [color, count] : counts)
      ordered.emplace_back(count, color);
    std::sort(ordered.rbegin(), ordered.rend());
    constexpr std::size_t most = 256;
    QList<QRgb> colors;
    for (std::size_t i = 0; i < ordered.size() && i < most; ++i)
      colors.append(ordered[i].second);
    return colors;
  }

  // The window as it is now, or something in it.
  QImage picture(const std::string& name) { return picture(name, *window_); }
  // For people to look at: VELT_PICTURES names a folder in which it is kept as NAME.png.
  static QImage picture(const std::string& name, QWidget& of) {
    settle();
    const QImage picture = of.grab().toImage();
    if (const char* const folder = std::getenv("VELT_PICTURES")) {
      const QImage small = picture.convertToFormat(QImage::Format_Indexed8, mostUsedColors(picture),
                                                   Qt::ThresholdDither | Qt::AvoidDither);
      EXPECT_TRUE(small.save(QString::fromStdString(std::string(folder) + "/" + name + ".png")));
    }
    return picture;
  }

  tests::TemporaryFolder folder_;
  std::string file_ = folder_.write("plan.dxf", samples::sampleFloorPlan());
  std::unique_ptr<MainWindow> window_;
};

}  // namespace velt::desktop
