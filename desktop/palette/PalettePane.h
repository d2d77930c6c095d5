#pragma once

// The palette: the classes of the selection, a search, the rows with their editors, what a row means, what became of the
// last write, and why a row is as it is or missing.
//
// Keys in the rows: F2 edits, Return too, or shows the entities with a value; F1 says why; Control+C copies; Escape goes
// back to the whole selection. Return in the search goes to the rows that fit.

#include <QSet>
#include <QWidget>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "desktop/session/Session.h"
#include "embedded/automation/geometry/Vector.h"

class QAction;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace velt::tool {
struct Explanation;
}

namespace velt::desktop {

class LongWork;
class PaletteModel;
class RowFilter;

class PalettePane : public QWidget {
  Q_OBJECT

 public:
  // What takes long is done through `work`, which outlives the pane.
  explicit PalettePane(LongWork& work, QWidget* parent = nullptr);

  // For another session, or another selection of it. The session must outlive the pane or be replaced.
  void setSession(Session* session);
  // To be called after values have changed, or after the selection was narrowed or widened.
  void refresh();
  // What became of the last write, when it is no longer so.
  void forgetOutcome();
  // The rows that fit the search, with their categories, as a table for a spreadsheet: separated by `separator`. Of all
  // vertices, not only of the one that is shown.
  [[nodiscard]] QString rowsAsText(QChar separator) const;
  // Says in the pane why there is no row of that label or name.
  void explainAbsence(const QString& name);
  // What can be done with rows, for a menu.
  [[nodiscard]] QList<QAction*> rowActions() const { return {edit_, copy_, why_}; }
  void goToSearch();

 Q_SIGNALS:
  // Somebody asked for these of the selected entities alone: those of a class, those with one of the values behind a row,
  // those that refused a value.
  void narrowed(const std::vector<VkDbObjectId>& entities);
  // Somebody asked for the whole selection again.
  void widened();
  // A write has changed the drawing.
  void changed();
  // Somebody looks at a vertex of the entity that is shown, or no longer at any.
  void vertexShown(const std::optional<automation::Vector3>& place);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addRowActions();
  void layOut();
  void listClasses();
  void showClass();
  void takeClass();
  void showBanner();
  void showHelp();
  void search(const QString& text);
  void tell(const palette::Report& report);
  void explainRow();
  void explain(const QString& subject, const std::function<tool::Explanation()>& find);
  void showExplanation(const QString& subject, const tool::Explanation& explanation);
  void showVertex();
  void showBehind(const QModelIndex& place);
  void editCurrent();
  void copyRows();
  void showMenu(const QPoint& at);
  [[nodiscard]] QString rowAsText(const QModelIndex& row, QChar separator) const;
  void rememberFolds();
  void restoreFolds();
  void restoreCurrent();

  LongWork& work_;
  Session* session_ = nullptr;
  PaletteModel* model_;
  RowFilter* filter_;
  QComboBox* classes_;
  QLineEdit* search_;
  QPushButton* whyNone_;
  QLabel* banner_;
  QTreeView* tree_;
  QLabel* help_;
  QLabel* outcome_;
  // Buttons, one for each fate.
  QWidget* fates_;
  QFrame* explanation_;
  QLabel* explained_;
  QPushButton* showExplained_;
  QPushButton* showOthers_;
  QPushButton* closeExplanation_;
  QAction* edit_ = nullptr;
  QAction* copy_ = nullptr;
  QAction* why_ = nullptr;
  // The entities of the whole selection by class.
  std::map<std::string, std::vector<VkDbObjectId>> byClass_;
  // Those that the explanation is about, and the others.
  std::vector<VkDbObjectId> explainedEntities_, otherEntities_;
  // Categories that were folded, by name.
  QSet<QString> folded_;
  // Where somebody was last, by the key of the row.
  QString currentKey_;
  int currentColumn_ = 0;
  bool isRestoring_ = false;
};

}  // namespace velt::desktop
