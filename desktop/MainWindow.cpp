#include "desktop/MainWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileSystemWatcher>
#include <QHeaderView>
#include <QItemSelection>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSaveFile>
#include <QSplitter>
#include <QStatusBar>
#include <QTableView>
#include <algorithm>
#include <exception>
#include <utility>

#include "desktop/EntityModel.h"
#include "desktop/drawing/DrawingPane.h"
#include "desktop/palette/PalettePane.h"
#include "dxf/FileReplacement.h"
#include "tool/EntitySelection.h"

namespace velt::desktop {

MainWindow::MainWindow(std::unique_ptr<Session> session, QWidget* parent)
    : QMainWindow(parent),
      entities_(new EntityModel(this)),
      list_(new QTableView(this)),
      view_(new DrawingPane(this)),
      palette_(new PalettePane(this)),
      watcher_(new QFileSystemWatcher(this)) {
  list_->setObjectName("entities");
  list_->setAccessibleName(tr("Entities"));
  list_->setModel(entities_);
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->verticalHeader()->hide();
  list_->horizontalHeader()->setStretchLastSection(true);

  auto* const left = new QSplitter(Qt::Vertical, this);
  left->addWidget(view_);
  left->addWidget(list_);
  left->setStretchFactor(0, 4);
  left->setStretchFactor(1, 1);
  auto* const halves = new QSplitter(this);
  halves->addWidget(left);
  halves->addWidget(palette_);
  halves->setStretchFactor(0, 5);
  halves->setStretchFactor(1, 3);
  setCentralWidget(halves);
  setAcceptDrops(true);
  resize(1280, 800);
  addMenus();

  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &MainWindow::takeListSelection);
  connect(view_, &DrawingPane::selected, this, &MainWindow::select);
  connect(view_, &DrawingPane::hovered, this, [this](const VkDbObjectId& entity) {
    if (entity.isNull()) return statusBar()->clearMessage();
    statusBar()->showMessage(QString("%1 %2, %3")
                                 .arg(QString::fromStdString(tool::className(entity)),
                                      QString::fromStdString(tool::handleText(entity)),
                                      QString::fromStdString(tool::layerName(entity))));
  });
  connect(palette_, &PalettePane::wanted, this, [this](const std::vector<VkDbObjectId>& entities) {
    // Not while the palette is still at work with what is shown.
    QMetaObject::invokeMethod(
        this, [this, entities] { select(entities); }, Qt::QueuedConnection);
  });
  connect(palette_, &PalettePane::changed, this, &MainWindow::refresh);
  connect(watcher_, &QFileSystemWatcher::fileChanged, this, [this](const QString& file) {
    statusBar()->showMessage(tr("%1 was changed by another program.").arg(file));
  });
  takeSession(std::move(session));
}

MainWindow::~MainWindow() {
  palette_->setSession(nullptr);
  view_->setDrawing(nullptr);
  entities_->setDrawing(nullptr);
}

void MainWindow::addMenus() {
  QMenu* const file = menuBar()->addMenu(tr("&File"));
  file->addAction(tr("&Open..."), QKeySequence::Open, this, [this] {
    const QString chosen =
        QFileDialog::getOpenFileName(this, tr("Open a drawing"), {}, tr("Drawings (*.dxf)"));
    if (!chosen.isEmpty()) open(chosen);
  });
  save_ = file->addAction(tr("&Save"), QKeySequence::Save, this, &MainWindow::save);
  file->addAction(tr("Save &as..."), QKeySequence::SaveAs, this, &MainWindow::saveAs)
      ->setObjectName("saveAs");
  file->addAction(tr("&Export the palette..."), this, &MainWindow::exportRows);
  file->addSeparator();
  file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close)->setObjectName("quit");

  QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
  undo_ = edit->addAction(tr("&Undo"), QKeySequence::Undo, this, [this] {
    session_->undo();
    palette_->refresh();
    refresh();
  });
  redo_ = edit->addAction(tr("&Redo"), QKeySequence::Redo, this, [this] {
    session_->redo();
    palette_->refresh();
    refresh();
  });
  undo_->setObjectName("undo");
  redo_->setObjectName("redo");
  save_->setObjectName("save");
  edit->addSeparator();
  edit->addAction(tr("Select &all"), QKeySequence::SelectAll, list_, &QTableView::selectAll);
  edit->addAction(tr("Select &nothing"), this, [this] { select({}); });
  edit->addAction(tr("&Copy rows"), this,
                  [this] { QApplication::clipboard()->setText(palette_->rowsAsText('\t')); });

  QMenu* const view = menuBar()->addMenu(tr("&View"));
  view->addAction(tr("&Fit"), view_, &DrawingPane::fit);
  QAction* const dark = view->addAction(tr("&Dark background"), view_, &DrawingPane::setDark);
  dark->setCheckable(true);
  dark->setChecked(true);
}

// --- the selection ------------------------------------------------------------------------------------------

void MainWindow::select(const std::vector<VkDbObjectId>& entities) {
  std::vector<int> rows;
  for (const VkDbObjectId entity : entities) {
    if (const std::optional<int> row = entities_->rowOf(entity)) rows.push_back(*row);
  }
  std::sort(rows.begin(), rows.end());
  QItemSelection selection;
  for (std::size_t first = 0, next = 0; first < rows.size(); first = next) {
    while (next < rows.size() && rows[next] - rows[first] == static_cast<int>(next - first))
      ++next;
    selection.append(
        {entities_->index(rows[first], 0), entities_->index(rows[next - 1], EntityModel::columnCount_ - 1)});
  }
  isSelecting_ = true;
  // In two steps: what differs between two selections of many pieces is worked out piece by piece against all others.
  list_->selectionModel()->clearSelection();
  list_->selectionModel()->select(selection, QItemSelectionModel::Select);
  isSelecting_ = false;
  showSelection(entities);
}

void MainWindow::takeListSelection() {
  if (isSelecting_) return;
  std::vector<VkDbObjectId> entities;
  for (const QModelIndex& row : list_->selectionModel()->selectedRows())
    entities.push_back(entities_->entityAt(row.row()));
  showSelection(entities);
}

void MainWindow::showSelection(const std::vector<VkDbObjectId>& entities) {
  try {
    session_->select(entities);
  } catch (const palette::Error& error) {
    fail(tr("The entities cannot be selected"), QString::fromStdString(error.what()));
  }
  palette_->setSession(session_.get());
  view_->setSelected(entities);
}

// What depends on the drawing's values, its history and its file.
void MainWindow::refresh() {
  entities_->refresh();
  if (const std::uint64_t revision = session_->drawing().revision(); revision != drawnRevision_) {
    drawnRevision_ = revision;
    view_->redraw();
  }
  undo_->setEnabled(session_->canUndo());
  redo_->setEnabled(session_->canRedo());
  const std::vector<std::string> history = session_->history();
  const std::size_t done = history.size() - session_->undone();
  undo_->setText(done > 0 ? tr("&Undo \"%1\"").arg(QString::fromStdString(history[done - 1])) : tr("&Undo"));
  redo_->setText(done < history.size() ? tr("&Redo \"%1\"").arg(QString::fromStdString(history[done]))
                                       : tr("&Redo"));
  save_->setEnabled(session_->isChanged());
  setWindowModified(session_->isChanged());
  const QString name = QString::fromStdString(session_->file().filename().string());
  setWindowTitle(tr("%1[*] - Properties").arg(name.isEmpty() ? tr("New drawing") : name));
}

// --- the file -----------------------------------------------------------------------------------------------

void MainWindow::takeSession(std::unique_ptr<Session> session) {
  palette_->setSession(nullptr);
  view_->setDrawing(nullptr);
  entities_->setDrawing(nullptr);
  session_ = std::move(session);
  drawnRevision_ = session_->drawing().revision();
  view_->setDrawing(&session_->drawing());
  entities_->setDrawing(&session_->drawing());
  palette_->setSession(session_.get());
  watch();
  refresh();
}

void MainWindow::watch() {
  if (!watcher_->files().isEmpty()) watcher_->removePaths(watcher_->files());
  if (!session_->file().empty()) watcher_->addPath(QString::fromStdString(session_->file().string()));
}

void MainWindow::open(const QString& file) {
  if (!mayForgetChanges()) return;
  try {
    takeSession(std::make_unique<Session>(std::filesystem::path(file.toStdString())));
  } catch (const std::exception& error) {
    fail(tr("The drawing cannot be opened"), QString::fromStdString(error.what()));
  }
}

bool MainWindow::save() {
  if (session_->file().empty()) return saveAs();
  try {
    session_->save();
    watch();
    refresh();
    statusBar()->showMessage(tr("Saved."));
  } catch (const std::exception& error) {
    fail(tr("The drawing was not saved"), QString::fromStdString(error.what()));
    return false;
  }
  return true;
}

bool MainWindow::saveAs() {
  const QString chosen =
      QFileDialog::getSaveFileName(this, tr("Save the drawing as"), {}, tr("Drawings (*.dxf)"));
  if (chosen.isEmpty()) return false;
  try {
    // The dialog has asked whether a file that is there may be replaced.
    session_->saveAs(std::filesystem::path(chosen.toStdString()), true);
  } catch (const std::exception& error) {
    fail(tr("The drawing was not saved"), QString::fromStdString(error.what()));
    return false;
  }
  watch();
  refresh();
  return true;
}

void MainWindow::exportRows() {
  const QString chosen =
      QFileDialog::getSaveFileName(this, tr("Export the palette"), {}, tr("Tables (*.csv)"));
  if (chosen.isEmpty()) return;
  QSaveFile file(chosen);
  const QByteArray text = palette_->rowsAsText(',').toUtf8();
  if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
    fail(tr("The palette was not exported"), file.errorString());
}

bool MainWindow::mayForgetChanges() {
  if (!session_->isChanged()) return true;
  const auto answer =
      QMessageBox::question(this, tr("Unsaved changes"), tr("The drawing has changes that were not saved."),
                            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
  if (answer == QMessageBox::Save) return save();
  return answer == QMessageBox::Discard;
}

void MainWindow::fail(const QString& what, const QString& why) {
  QMessageBox::warning(this, what, what + ":\n" + why);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->setAccepted(mayForgetChanges());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QList<QUrl> files = event->mimeData()->urls();
  if (!files.isEmpty() && files.front().isLocalFile()) open(files.front().toLocalFile());
}

}  // namespace velt::desktop
