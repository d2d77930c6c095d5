#pragma once

// The palette: the classes of the selection, a search, the rows with their editors, what a row means, and what became of
// the last write.

#include <QSet>
#include <QWidget>
#include <span>

#include "desktop/session/Session.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTreeView;

namespace velt::desktop {

class PaletteModel;

class PalettePane : public QWidget {
  Q_OBJECT

 public:
  explicit PalettePane(QWidget* parent = nullptr);

  // The session must outlive the pane or be replaced.
  void setSession(Session* session);
  // To be called after the selection or any of its values has changed.
  void refresh();
  // The rows that are shown, with their categories, as a table for a spreadsheet: separated by `separator`.
  [[nodiscard]] QString rowsAsText(QChar separator) const;

 Q_SIGNALS:
  // Somebody asked for these entities alone: those of a class, or those with one of the values behind a row.
  void wanted(const std::vector<VkDbObjectId>& entities);
  // A write has changed the drawing.
  void changed();

 private:
  void showClasses();
  void showBanner();
  void showHelp();
  void tell(const palette::Report& report);
  void rememberFolds();
  void restoreFolds();

  Session* session_ = nullptr;
  PaletteModel* model_;
  QSortFilterProxyModel* filter_;
  QComboBox* classes_;
  QLineEdit* search_;
  QLabel* banner_;
  QTreeView* tree_;
  QLabel* help_;
  QLabel* outcome_;
  // The entities behind each entry of `classes_`, but for the first, which is all of them.
  std::vector<std::vector<VkDbObjectId>> entitiesOfClasses_;
  // Categories that were folded, by name.
  QSet<QString> folded_;
  bool isRestoring_ = false;
};

}  // namespace velt::desktop
