#pragma once

// The window: the drawing and the list of its entities on the left, the palette of those that are selected on the right.

#include <QMainWindow>
#include <memory>

#include "desktop/session/Session.h"

class QAction;
class QFileSystemWatcher;
class QTableView;

namespace velt::desktop {

class DrawingPane;
class EntityModel;
class PalettePane;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(std::unique_ptr<Session> session, QWidget* parent = nullptr);
  ~MainWindow() override;

  [[nodiscard]] Session& session() { return *session_; }
  // Selects these entities, in the drawing and the list too.
  void select(const std::vector<VkDbObjectId>& entities);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void addMenus();
  void open(const QString& file);
  bool save();
  bool saveAs();
  // False when the user would rather not lose what is unsaved.
  bool mayForgetChanges();
  void takeSession(std::unique_ptr<Session> session);
  void takeListSelection();
  void showSelection(const std::vector<VkDbObjectId>& entities);
  void refresh();
  void watch();
  void exportRows();
  void fail(const QString& what, const QString& why);

  std::unique_ptr<Session> session_;
  EntityModel* entities_;
  QTableView* list_;
  DrawingPane* view_;
  PalettePane* palette_;
  QFileSystemWatcher* watcher_;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QAction* save_ = nullptr;
  // Of the drawing, as the pane shows it.
  std::uint64_t drawnRevision_ = 0;
  bool isSelecting_ = false;
};

}  // namespace velt::desktop
