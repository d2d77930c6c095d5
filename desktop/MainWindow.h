#pragma once

// The window: the drawing and the list of its entities on the left, the palette of those that are selected on the right,
// and what was done so far.
//
// Keys: F6 goes from part to part, Control+F to the search.

#include <QMainWindow>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "desktop/session/Session.h"

class QAction;
class QFileSystemWatcher;
class QFrame;
class QLabel;
class QListWidget;
class QMenu;
class QSplitter;
class QTableView;

namespace velt::tool {
struct SelectionRequest;
}

namespace velt::desktop {

class DrawingPane;
class EntityModel;
class LongWork;
class PalettePane;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(std::unique_ptr<Session> session, QWidget* parent = nullptr);
  ~MainWindow() override;

  [[nodiscard]] Session& session() { return *session_; }
  [[nodiscard]] LongWork& work() { return *work_; }
  // Selects these entities, in the drawing and the list too.
  void select(const std::vector<VkDbObjectId>& entities);
  // Selects all entities of the layers on which these are, or of their classes.
  void selectLayersOf(std::span<const VkDbObjectId> entities);
  void selectClassesOf(std::span<const VkDbObjectId> entities);

  // Shows the drawing that `make` opens, and how far it is meanwhile. Passes on what it throws, and leaves the drawing that
  // is shown.
  void load(const QString& name, const std::function<std::unique_ptr<Session>()>& make);
  // Selects what the command line names; passes on what tool::select() throws.
  void selectNamed(const tool::SelectionRequest& request);

  // Each tells the user what went wrong. False when it did, and when the user would rather not.
  bool open(const QString& file);
  bool save();
  // Replaces a file of that name: whoever chooses it has been asked.
  bool saveTo(const QString& file);
  bool exportTo(const QString& file);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void layOut();
  void addFileMenu();
  void addEditMenu();
  void addViewMenu();
  void chooseAndOpen();
  bool chooseAndSave();
  void chooseAndExport();
  void reload();
  // False when the user would rather not lose what is unsaved.
  bool mayForgetChanges();
  // Saves, and asks what to do when somebody else has changed the file.
  bool store(const std::function<std::vector<std::string>(Session::OthersChanges)>& write);
  void takeSession(std::unique_ptr<Session> session);
  void takeListSelection();
  // Selects all entities that have this in common with one of those: the name of their layer, for one.
  void selectLike(std::span<const VkDbObjectId> entities, std::string (*nameOf)(VkDbObjectId));
  // `entity` is that under the pointer, or null.
  void showMenu(const VkDbObjectId& entity, const QPoint& at);
  void showSelection(const std::vector<VkDbObjectId>& entities);
  void narrow(const std::vector<VkDbObjectId>& entities);
  void widen();
  // `change` narrows or widens the session's selection.
  void showPart(const std::function<void()>& change);
  // Shows that work takes long, from its beginning to its end.
  void addProgress();
  void markInList(const std::vector<VkDbObjectId>& entities);
  void goTo(std::size_t done);
  void refresh();
  void showHistory();
  void watch();
  void remember(const QString& file);
  void listRecent();
  void goToNextPart();
  void fail(const QString& what, const QString& why);

  std::unique_ptr<Session> session_;
  LongWork* work_;
  EntityModel* entities_;
  QTableView* list_;
  DrawingPane* view_;
  // Between the drawing and the list, and between these and the palette.
  QSplitter* left_;
  QSplitter* halves_;
  PalettePane* palette_;
  QListWidget* history_;
  // Says that another program has changed the file.
  QFrame* notice_;
  QLabel* noticed_;
  QLabel* count_;
  QFileSystemWatcher* watcher_;
  QMenu* recent_ = nullptr;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QAction* save_ = nullptr;
  QAction* layersOfSelection_ = nullptr;
  QAction* classesOfSelection_ = nullptr;
  // Of the drawing, as the pane shows it.
  std::uint64_t drawnRevision_ = 0;
  bool isSelecting_ = false;
  // Somebody has closed the window while work was running, which ends first.
  bool closesNext_ = false;
  // What is to be selected as soon as what is running ends.
  std::optional<std::vector<VkDbObjectId>> wanted_;
};

}  // namespace velt::desktop
