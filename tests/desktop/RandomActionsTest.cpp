// Somebody who does anything at all in the window, in any order. Whatever it is, nothing crashes, the palette shows what a
// fresh query answers, every step of the history stands for the same bytes each time it is reached, and when all of it
// has been undone the drawing is, byte for byte, what it was.
//
// VELT_RANDOM_ACTIONS and VELT_RANDOM_SEED ask for more of them, and for the same ones again.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSortFilterProxyModel>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWheelEvent>
#include <array>
#include <cstdlib>
#include <functional>
#include <map>
#include <random>

#include "desktop/EntityModel.h"
#include "desktop/MainWindow.h"
#include "desktop/drawing/DrawingPane.h"
#include "desktop/palette/PaletteModel.h"
#include "samples/FloorPlan.h"
#include "tests/desktop/Application.h"
#include "tests/support/Files.h"

namespace velt::desktop {
namespace {

using Shown = std::vector<std::array<std::string, 3>>;

unsigned numberFrom(const char* variable, unsigned otherwise) {
  const char* const text = std::getenv(variable);
  return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

class RandomUser {
 public:
  RandomUser(MainWindow& window, const tests::TemporaryFolder& folder, unsigned seed)
      : window_(window), folder_(folder), random_(seed), states_{state()} {
    // Whatever asks a question would wait for somebody to answer it.
    QObject::connect(&answers_, &QTimer::timeout, [this] { answer(); });
    answers_.start(0);
  }

  void act() {
    // clang-format off
    static const std::vector<std::pair<int, void (RandomUser::*)()>> actions = {
      // how often  what
      {12, &RandomUser::click},
      { 8, &RandomUser::dragWindow},
      { 4, &RandomUser::dragPicture},
      { 6, &RandomUser::turnWheel},
      { 6, &RandomUser::pressKeyInDrawing},
      { 2, &RandomUser::chooseSpace},
      { 6, &RandomUser::selectInList},
      { 6, &RandomUser::chooseClass},
      { 8, &RandomUser::narrow},
      {40, &RandomUser::edit},
      {12, &RandomUser::undoOrRedo},
      { 4, &RandomUser::search},
      { 3, &RandomUser::fold},
      { 3, &RandomUser::chooseFromMenu},
      { 2, &RandomUser::useMenuOfDrawing},
      { 1, &RandomUser::resize},
      { 1, &RandomUser::saveAs},
    };
    // clang-format on
    int total = 0;
    for (const auto& action : actions)
      total += action.first;
    int choice = static_cast<int>(below(static_cast<std::size_t>(total)));
    for (const auto& action : actions) {
      if ((choice -= action.first) >= 0) continue;
      (this->*action.second)();
      break;
    }
    settle();
    check();
  }

  // Back to where it all began, and forth and back once more.
  void undoAll() {
    for (int times = 0; times < 2; ++times) {
      did_ = "undoing all";
      while (session().canUndo()) {
        trigger("undo");
        ASSERT_EQ(state(), states_.at(position())) << "undone to step " << position();
      }
      if (times > 0) break;
      while (session().canRedo()) {
        trigger("redo");
        ASSERT_EQ(state(), states_.at(position())) << "redone to step " << position();
      }
    }
    check();
  }

  [[nodiscard]] const std::string& did() const { return did_; }

 private:
  // --- chance ---------------------------------------------------------------------------------------------

  std::size_t below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }
  bool oneIn(std::size_t count) { return below(count) == 0; }
  template <class Container>
  const auto& oneOf(const Container& container) {
    return *std::next(std::begin(container),
                      static_cast<std::ptrdiff_t>(below(static_cast<std::size_t>(std::size(container)))));
  }
  Qt::KeyboardModifiers keys() {
    return oneOf(std::array<Qt::KeyboardModifiers, 4>{Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier,
                                                      Qt::ControlModifier});
  }
  QPoint place(const QWidget& widget) {
    // The corner 0, 0 means no place to those who press buttons for tests.
    return {1 + static_cast<int>(below(static_cast<std::size_t>(std::max(widget.width() - 1, 1)))),
            1 + static_cast<int>(below(static_cast<std::size_t>(std::max(widget.height() - 1, 1))))};
  }

  // --- the window -----------------------------------------------------------------------------------------

  Session& session() { return window_.session(); }
  template <class Widget>
  Widget& part(const char* name) {
    return *window_.findChild<Widget*>(name);
  }
  QTreeView& rows() { return part<QTreeView>("rows"); }
  QTableView& entities() { return part<QTableView>("entities"); }
  DrawingPane& view() { return part<DrawingPane>("drawing"); }
  void trigger(const char* action) { part<QAction>(action).trigger(); }
  std::size_t position() { return session().history().size() - session().undone(); }
  std::size_t state() { return std::hash<std::string>()(session().drawing().document().bytes()); }

  static void settle() {
    for (int i = 0; i < 3; ++i) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }

  void answer() {
    if (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
    QWidget* const dialog = QApplication::activeModalWidget();
    if (auto* const files = qobject_cast<QFileDialog*>(dialog); files != nullptr && !saveAs_.empty()) {
      files->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(saveAs_));
      saveAs_.clear();
      QMetaObject::invokeMethod(files, "accept");
    } else if (auto* const asked = qobject_cast<QDialog*>(dialog)) {
      asked->reject();
    }
  }

  // --- what it does ---------------------------------------------------------------------------------------

  void click() {
    did_ = "click";
    QTest::mouseClick(&view(), Qt::LeftButton, keys(), place(view()));
  }

  void drag(Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    const QPoint from = place(view());
    const QPoint to = place(view());
    QTest::mousePress(&view(), button, modifiers, from);
    QTest::mouseMove(&view(), (from + to) / 2 + QPoint(1, 1));
    QTest::mouseMove(&view(), to);
    if (oneIn(4)) QCoreApplication::processEvents();
    QTest::mouseRelease(&view(), button, modifiers, to);
  }
  void dragWindow() {
    did_ = "select by a window";
    drag(Qt::LeftButton, keys());
  }
  void dragPicture() {
    did_ = "pan";
    drag(Qt::MiddleButton, Qt::NoModifier);
    if (oneIn(3)) QTest::mouseDClick(&view(), Qt::MiddleButton, {}, place(view()));
  }

  void turnWheel() {
    did_ = "turn the wheel";
    const QPoint at = place(view());
    const int most = oneIn(10) ? 40 : 4;
    const int angle = 120 * (static_cast<int>(below(static_cast<std::size_t>(2 * most + 1))) - most);
    QWheelEvent turn(at, view().mapToGlobal(at), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view(), &turn);
    if (oneIn(2)) view().grab();
  }

  void pressKeyInDrawing() {
    did_ = "press a key in the drawing";
    constexpr std::array pressed = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,   Qt::Key_Down,
                                    Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Home, Qt::Key_Home};
    QTest::keyClick(&view(), oneIn(20) ? Qt::Key_Escape : oneOf(pressed));
  }

  void chooseSpace() {
    did_ = "choose a space";
    auto& tabs = part<QTabBar>("spaces");
    const int tab = static_cast<int>(below(static_cast<std::size_t>(tabs.count())));
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab).center());
    settle();
    view().grab();
  }

  void selectInList() {
    did_ = "select in the list";
    QAbstractItemModel& list = *entities().model();
    if (oneIn(6)) return entities().selectAll();
    if (!oneIn(4)) entities().clearSelection();
    const QString wanted =
        list.index(static_cast<int>(below(static_cast<std::size_t>(list.rowCount()))), 1).data().toString();
    const bool takesAll = oneIn(2);
    QItemSelection chosen;
    for (int row = 0; row < list.rowCount(); ++row) {
      if (list.index(row, 1).data().toString() == wanted && (takesAll || oneIn(3)))
        chosen.select(list.index(row, 0), list.index(row, list.columnCount() - 1));
    }
    entities().selectionModel()->select(chosen, QItemSelectionModel::Select);
  }

  void chooseClass() {
    did_ = "choose a class";
    auto& classes = part<QComboBox>("classes");
    if (classes.count() == 0) return;
    const int entry = static_cast<int>(below(static_cast<std::size_t>(classes.count())));
    classes.setCurrentIndex(entry);
    Q_EMIT classes.activated(entry);
  }

  // All rows of the palette that can be seen, by their labels.
  std::vector<QModelIndex> visibleRows() {
    std::vector<QModelIndex> found;
    const QAbstractItemModel& model = *rows().model();
    for (int i = 0; i < model.rowCount(); ++i) {
      for (int row = 0; row < model.rowCount(model.index(i, 0)); ++row)
        found.push_back(model.index(row, 0, model.index(i, 0)));
    }
    return found;
  }

  void narrow() {
    did_ = "narrow the selection to a value";
    std::vector<QModelIndex> varying;
    for (const QModelIndex& row : visibleRows()) {
      if (rows().model()->hasChildren(row)) varying.push_back(row);
    }
    if (varying.empty()) return;
    const QModelIndex row = oneOf(varying);
    did_ += ' ' + row.data().toString().toStdString();
    rows().expand(row);
    settle();
    const int values = rows().model()->rowCount(row);
    if (values == 0 || oneIn(4)) return;
    Q_EMIT rows().clicked(
        rows().model()->index(static_cast<int>(below(static_cast<std::size_t>(values))), 1, row));
  }

  QString textFor(const palette::Row* row) {
    static const std::vector<const char*> any = {"",
                                                 "wide",
                                                 "-",
                                                 "*",
                                                 "1e400",
                                                 "nan",
                                                 "inf",
                                                 "%%d \u00c4\u4e2d",
                                                 "0",
                                                 "1",
                                                 "-1",
                                                 "12.5",
                                                 "1e9",
                                                 "1e-9",
                                                 "1e300",
                                                 "45",
                                                 "1'-3\"",
                                                 "90\u00b0",
                                                 "N 45 E",
                                                 "Red",
                                                 "12",
                                                 "255,128,0",
                                                 "ByLayer",
                                                 "256",
                                                 "Walls",
                                                 "Axes",
                                                 "Electrical",
                                                 "No such layer",
                                                 "*=2",
                                                 "+=5",
                                                 "-=3",
                                                 "/=2",
                                                 "/=0",
                                                 "~s/A/B/",
                                                 "Hello",
                                                 "two\nlines",
                                                 "{\\fArial;x}",
                                                 "a\\Pb",
                                                 "Yes",
                                                 "No",
                                                 " 7 ",
                                                 "-0",
                                                 "0.0001",
                                                 "STANDARD",
                                                 "Standard",
                                                 "ByBlock",
                                                 "Continuous",
                                                 "*VARIES*"};
    if (oneIn(60)) return QString(5000, 'x');
    if (row == nullptr || oneIn(3)) return oneOf(any);
    if (const std::vector<palette::Choice> choices = row->choices(); !choices.empty())
      return QString::fromStdString(oneOf(choices).label);
    if (palette::numberOf(row->plain()))
      return QString::number(std::uniform_real_distribution<double>(-100, 4000)(random_), 'g', 6);
    return oneOf(any);
  }

  void edit() {
    did_ = "edit";
    std::vector<QModelIndex> all = visibleRows();
    if (all.empty()) return selectInList();
    QModelIndex label = oneOf(all);
    // Most rows of most entities cannot be edited; those that can are what this is about.
    for (int tries = 0; tries < 5 && !(label.siblingAtColumn(1).flags() & Qt::ItemIsEditable); ++tries)
      label = oneOf(all);
    const QModelIndex value = label.siblingAtColumn(1);
    const std::vector<palette::Row> named =
        palette::rowsNamed(session().rows(), label.data().toString().toStdString());
    const QString text = textFor(named.empty() ? nullptr : &named.front());
    did_ += ' ' + label.data().toString().toStdString() + " to " + text.left(40).toStdString();
    rows().setCurrentIndex(value);
    if (!(value.flags() & Qt::ItemIsEditable)) return;
    canWrite_ = true;
    rows().edit(value);
    auto* const editor = rows().viewport()->findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(editor, nullptr);
    auto* const list = qobject_cast<QComboBox*>(editor);
    if (list != nullptr && list->count() > 0 && oneIn(2)) {
      const int entry = static_cast<int>(below(static_cast<std::size_t>(list->count())));
      list->setCurrentIndex(entry);
      Q_EMIT list->activated(entry);
      return;
    }
    auto* field = qobject_cast<QLineEdit*>(editor);
    if (field == nullptr) field = editor->findChild<QLineEdit*>();
    auto* const lines = qobject_cast<QPlainTextEdit*>(editor);
    if (field != nullptr) field->setText(text);
    if (lines != nullptr) lines->setPlainText(text);
    switch (below(12)) {
      case 0:
        return QTest::keyClick(editor, Qt::Key_Escape);
      case 1:
        return click();  // with the editor open
      case 2:
        // With nothing to undo the editor would stay open, and write later.
        if (!session().canUndo()) return QTest::keyClick(editor, Qt::Key_Escape);
        trigger("undo");
        position_ = position();
        return;
      case 3:
        return QTest::keyClick(editor, Qt::Key_Tab);
      default:
        return QTest::keyClick(editor, Qt::Key_Return,
                               lines != nullptr ? Qt::ControlModifier : Qt::NoModifier);
    }
  }

  void undoOrRedo() {
    const bool undoes = oneIn(2);
    did_ = undoes ? "undo" : "redo";
    const std::size_t before = position();
    for (std::size_t times = 1 + below(oneIn(8) ? 20 : 3); times > 0; --times)
      trigger(undoes ? "undo" : "redo");
    // Mostly back again: what is written next would end the undone steps, and the history would stay short.
    if (oneIn(6)) return;
    did_ += " and back";
    while (position() < before)
      trigger("redo");
    while (position() > before)
      trigger("undo");
  }

  void search() {
    did_ = "search";
    auto& field = part<QLineEdit>("search");
    if (oneIn(2)) return field.clear();
    QTest::keyClicks(
        &field, oneOf(std::vector<const char*>{"a", "color", "Radius", "general", "\u00c4", "x y", "("}));
  }

  void fold() {
    did_ = "fold";
    const int categories = rows().model()->rowCount();
    if (categories == 0) return;
    const QModelIndex category =
        rows().model()->index(static_cast<int>(below(static_cast<std::size_t>(categories))), 0);
    rows().setExpanded(category, !rows().isExpanded(category));
  }

  void chooseFromMenu() {
    std::vector<QAction*> actions;
    for (const QAction* const menu : window_.menuBar()->actions()) {
      if (menu->menu() == nullptr) continue;
      for (QAction* const action : menu->menu()->actions()) {
        // Reading the drawing again ends its history.
        const bool ends = action->objectName() == "quit" || action->objectName() == "reload";
        if (action->isEnabled() && !action->isSeparator() && action->menu() == nullptr && !ends)
          actions.push_back(action);
      }
    }
    QAction* const action = oneOf(actions);
    did_ = "choose " + action->text().toStdString();
    action->trigger();
  }

  void useMenuOfDrawing() {
    did_ = "use the menu of the drawing";
    const QPoint at = place(view());
    QContextMenuEvent event(oneIn(4) ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse, at,
                            view().mapToGlobal(at));
    QCoreApplication::sendEvent(&view(), &event);
    auto* const menu = window_.findChild<QMenu*>("entityMenu");
    ASSERT_NE(menu, nullptr);
    QAction* const action = oneOf(menu->actions());
    did_ += ", " + action->text().toStdString();
    action->trigger();
    menu->close();
  }

  void resize() {
    did_ = "resize";
    window_.resize(500 + static_cast<int>(below(1000)), 400 + static_cast<int>(below(600)));
    settle();
    view().grab();
  }

  void saveAs() {
    did_ = "save as";
    const std::string file = folder_.path("saved" + std::to_string(++saved_) + ".dxf");
    saveAs_ = file;
    trigger("saveAs");
    settle();
    EXPECT_EQ(saveAs_, "") << "nobody asked for a name";
    EXPECT_EQ(session().file(), file);
    EXPECT_FALSE(session().isChanged());
    EXPECT_TRUE(tests::contentOf(file) == session().drawing().document().bytes());
  }

  // --- what must hold after it --------------------------------------------------------------------------------

  void check() {
    const std::size_t now = position();
    if (std::exchange(canWrite_, false) && now == position_ + 1) {
      states_.resize(now);
      states_.push_back(state());
    }
    position_ = now;
    ASSERT_EQ(states_.size(), session().history().size() + 1) << did_;
    ASSERT_EQ(state(), states_.at(now)) << did_;
    ASSERT_EQ(shownRows(), freshRows()) << did_;
    checkSearch();
  }

  Shown shownRows() {
    const auto& filter = dynamic_cast<const QSortFilterProxyModel&>(*rows().model());
    const QAbstractItemModel& model = *filter.sourceModel();
    Shown shown;
    for (int i = 0; i < model.rowCount(); ++i) {
      const QModelIndex category = model.index(i, 0);
      for (int row = 0; row < model.rowCount(category); ++row) {
        const QModelIndex value = model.index(row, 1, category);
        const int vertices = value.data(PaletteModel::countRole).toInt();
        shown.push_back({category.data().toString().toStdString(),
                         model.index(row, 0, category).data().toString().toStdString(),
                         vertices > 0 ? vertexText(vertices) : value.data().toString().toStdString()});
      }
    }
    return shown;
  }

  // Whichever of them somebody looks at.
  static std::string vertexText(std::int32_t count) { return "one of " + std::to_string(count); }

  Shown freshRows() {
    Shown fresh;
    if (session().selected().empty()) return fresh;
    palette::Selection selection(session().selected());
    std::map<std::string, int> elements;
    try {
      for (const palette::Category& category : palette::byCategory(selection.query())) {
        for (const palette::Row& row : category.rows) {
          std::string label = row.label();
          if (row.record().isElement && row.record().elementGrouping != 0) {
            const int number = ++elements[label];
            const std::size_t space = label.rfind(' ');
            label = label.substr(0, space) + "[" + std::to_string(number) + "]." + label.substr(space + 1);
          }
          const bool isHeader = row.kind() == PropertyKind::vertex && row.record().groupCount > 0;
          fresh.push_back({category.name.empty() ? "(no category)" : category.name, label,
                           isHeader ? vertexText(static_cast<std::int32_t>(row.record().groupCount))
                                    : row.text(session().numberStyle())});
        }
      }
    } catch (const palette::Error& error) {
      EXPECT_EQ(session().problem(), error.what());
    }
    return fresh;
  }

  void checkSearch() {
    const QString wanted = part<QLineEdit>("search").text();
    std::size_t fitting = 0;
    for (const palette::Category& category : palette::byCategory(session().rows())) {
      for (const palette::Row& row : category.rows) {
        const QString words = QString::fromStdString(category.name + ' ' + row.label() + ' ' + row.name());
        if (!words.contains(wanted, Qt::CaseInsensitive)) continue;
        // Without a search one vertex is shown: see below.
        if (!wanted.isEmpty() || !row.record().isElement || row.record().elementGrouping == 0) ++fitting;
      }
    }
    std::size_t shown = 0;
    int lookedAt = 0;
    for (const QModelIndex& row : visibleRows()) {
      const int number = row.data(PaletteModel::numberRole).toInt();
      if (row.data(PaletteModel::countRole).toInt() > 0) lookedAt = number;
      if (wanted.isEmpty() && number > 0) {
        ASSERT_EQ(number, lookedAt) << did_;
      }
      const bool isCoordinate = number > 0 && row.data(PaletteModel::countRole).toInt() == 0;
      if (!wanted.isEmpty() || !isCoordinate) ++shown;
    }
    ASSERT_EQ(shown, fitting) << "of " << wanted.toStdString();
  }

  MainWindow& window_;
  const tests::TemporaryFolder& folder_;
  std::mt19937 random_;
  QTimer answers_;
  // Hashes of the drawing's bytes: before the first step of the history, and after each.
  std::vector<std::size_t> states_;
  // How many steps of the history were done after the last action.
  std::size_t position_ = 0;
  std::string did_;
  // What the next dialog for files is to be told.
  std::string saveAs_;
  int saved_ = 0;
  // The action may have added to the history.
  bool canWrite_ = false;
};

TEST(RandomActions, LeaveADrawingThatCanBeUndoneToTheLastByte) {
  const unsigned seed = numberFrom("VELT_RANDOM_SEED", std::random_device()());
  const unsigned actions = numberFrom("VELT_RANDOM_ACTIONS", 150);
  SCOPED_TRACE("VELT_RANDOM_SEED=" + std::to_string(seed)
               + " VELT_RANDOM_ACTIONS=" + std::to_string(actions));
  const tests::TemporaryFolder folder;
  const std::string file = folder.write("plan.dxf", samples::sampleFloorPlan());
  MainWindow window(std::make_unique<Session>(file));
  window.show();
  QCoreApplication::processEvents();
  const std::string before = window.session().drawing().document().bytes();

  RandomUser user(window, folder, seed);
  for (unsigned action = 0; action < actions && !testing::Test::HasFailure(); ++action)
    user.act();
  if (testing::Test::HasFailure()) FAIL() << "after: " << user.did();
  RecordProperty("steps", static_cast<int>(window.session().history().size()));
  user.undoAll();

  EXPECT_TRUE(window.session().drawing().document().bytes() == before);
}

}  // namespace
}  // namespace velt::desktop
