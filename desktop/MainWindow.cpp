#include "desktop/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelection>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>
#include <unordered_set>
#include <utility>

#include "desktop/EntityModel.h"
#include "desktop/LongWork.h"
#include "desktop/drawing/DrawingPane.h"
#include "desktop/palette/PalettePane.h"
#include "dxf/FileReplacement.h"
#include "tool/EntitySelection.h"

namespace velt::desktop {

namespace {

constexpr const char* recentSetting = "window/recent";
constexpr const char* geometrySetting = "window/geometry";
constexpr const char* stateSetting = "window/state";
constexpr const char* leftSetting = "window/left";
constexpr const char* halvesSetting = "window/halves";
constexpr const char* darkSetting = "drawing/dark";
constexpr qsizetype mostRecent = 8;

QString drawingsFilter() {
  return MainWindow::tr("Drawings (*.dxf)");
}

}  // namespace

MainWindow::MainWindow(std::unique_ptr<Session> session, QWidget* parent)
    : QMainWindow(parent),
      work_(new LongWork(this)),
      entities_(new EntityModel(this)),
      list_(new QTableView(this)),
      view_(new DrawingPane(this)),
      left_(new QSplitter(Qt::Vertical, this)),
      halves_(new QSplitter(this)),
      palette_(new PalettePane(*work_, this)),
      history_(new QListWidget(this)),
      notice_(new QFrame(this)),
      noticed_(new QLabel(notice_)),
      count_(new QLabel(this)),
      watcher_(new QFileSystemWatcher(this)) {
  list_->setObjectName("entities");
  list_->setAccessibleName(tr("Entities"));
  list_->setModel(entities_);
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setTabKeyNavigation(false);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setDefaultSectionSize(list_->fontMetrics().height() + 4);
  list_->horizontalHeader()->setStretchLastSection(true);
  list_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  history_->setObjectName("history");
  history_->setAccessibleName(tr("What was done"));

  layOut();
  addProgress();
  addFileMenu();
  addEditMenu();
  addViewMenu();

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
  connect(view_, &DrawingPane::menuWanted, this, &MainWindow::showMenu);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list_, &QTableView::customContextMenuRequested, this, [this](const QPoint& at) {
    const QModelIndex row = list_->indexAt(at);
    showMenu(row.isValid() ? entities_->entityAt(row.row()) : VkDbObjectId::kNull,
             list_->viewport()->mapToGlobal(at));
  });
  // Queued: not while the palette is still at work with what is shown.
  connect(palette_, &PalettePane::narrowed, this, &MainWindow::narrow, Qt::QueuedConnection);
  connect(palette_, &PalettePane::widened, this, &MainWindow::widen, Qt::QueuedConnection);
  connect(palette_, &PalettePane::changed, this, &MainWindow::refresh);
  connect(palette_, &PalettePane::vertexShown, this, [this](const std::optional<automation::Vector3>& place) {
    if (!place) return view_->setMark(std::nullopt);
    view_->setMark(DrawingPane::Mark{session_->selected().front(), {place->x, place->y}});
  });
  // Queued: going there makes the list anew, which is still at work with the item.
  const auto goToItem = [this](const QListWidgetItem* item) {
    QMetaObject::invokeMethod(
        this, [this, done = history_->row(item)] { goTo(static_cast<std::size_t>(done)); },
        Qt::QueuedConnection);
  };
  connect(history_, &QListWidget::itemClicked, this, goToItem);
  connect(history_, &QListWidget::itemActivated, this, goToItem);
  connect(watcher_, &QFileSystemWatcher::fileChanged, this, [this](const QString& file) {
    noticed_->setText(tr("%1 was changed by another program.").arg(QFileInfo(file).fileName()));
    notice_->show();
    // Who replaces a file takes the old one away from those that watch it.
    if (QFile::exists(file)) watcher_->addPath(file);
  });
  takeSession(std::move(session));
  const QSettings settings;
  restoreGeometry(settings.value(geometrySetting).toByteArray());
  restoreState(settings.value(stateSetting).toByteArray());
  left_->restoreState(settings.value(leftSetting).toByteArray());
  halves_->restoreState(settings.value(halvesSetting).toByteArray());
}

MainWindow::~MainWindow() {
  palette_->setSession(nullptr);
  view_->setDrawing(nullptr);
  entities_->setDrawing(nullptr);
}

void MainWindow::layOut() {
  left_->addWidget(view_);
  left_->addWidget(list_);
  left_->setStretchFactor(0, 4);
  left_->setStretchFactor(1, 1);
  halves_->addWidget(left_);
  halves_->addWidget(palette_);
  halves_->setStretchFactor(0, 5);
  halves_->setStretchFactor(1, 3);

  notice_->setObjectName("notice");
  notice_->setFrameShape(QFrame::StyledPanel);
  noticed_->setObjectName("noticed");
  noticed_->setTextFormat(Qt::PlainText);
  auto* const again = new QPushButton(tr("Read it again"), notice_);
  again->setObjectName("readAgain");
  auto* const keep = new QPushButton(tr("Keep what is shown"), notice_);
  keep->setObjectName("keepShown");
  connect(again, &QPushButton::clicked, this, &MainWindow::reload);
  connect(keep, &QPushButton::clicked, notice_, &QWidget::hide);
  auto* const notice = new QHBoxLayout(notice_);
  notice->addWidget(noticed_, 1);
  notice->addWidget(again);
  notice->addWidget(keep);
  notice_->hide();

  auto* const middle = new QWidget(this);
  auto* const rows = new QVBoxLayout(middle);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(notice_);
  rows->addWidget(halves_, 1);
  setCentralWidget(middle);

  auto* const done = new QDockWidget(tr("What was done"), this);
  done->setObjectName("historyDock");
  done->setWidget(history_);
  addDockWidget(Qt::RightDockWidgetArea, done);
  done->hide();
  statusBar()->addPermanentWidget(count_);
  count_->setObjectName("count");
  setAcceptDrops(true);
  resize(1280, 800);
}

void MainWindow::addProgress() {
  auto* const what = new QLabel(this);
  auto* const bar = new QProgressBar(this);
  bar->setObjectName("progress");
  bar->setAccessibleName(tr("Progress"));
  auto* const cancel = new QPushButton(tr("Cancel"), this);
  cancel->setObjectName("cancel");
  const QList<QWidget*> parts = {what, bar, cancel};
  for (QWidget* const part : parts) {
    statusBar()->addPermanentWidget(part);
    part->hide();
  }
  connect(cancel, &QPushButton::clicked, work_, &LongWork::cancel);
  connect(work_, &LongWork::shown, this, [this, what, parts](const QString& text) {
    what->setText(text);
    for (QWidget* const part : parts)
      part->show();
    // They show what is being worked on; the drawing and the list may be used to select something else.
    menuBar()->setEnabled(false);
    palette_->setEnabled(false);
  });
  connect(work_, &LongWork::advanced, bar, [bar](int percent) {
    bar->setRange(0, percent < 0 ? 0 : 100);
    bar->setValue(percent);
  });
  connect(work_, &LongWork::ended, this, [this, parts] {
    for (QWidget* const part : parts)
      part->hide();
    menuBar()->setEnabled(true);
    palette_->setEnabled(true);
    // What was selected while a write or a save went on.
    QMetaObject::invokeMethod(
        this,
        [this] {
          if (work_->isRunning()) return;
          if (std::exchange(closesNext_, false)) {
            close();
          } else if (wanted_) {
            showSelection(*wanted_);
          }
        },
        Qt::QueuedConnection);
  });
}

// --- menus --------------------------------------------------------------------------------------------------

void MainWindow::addFileMenu() {
  QMenu* const file = menuBar()->addMenu(tr("&File"));
  file->addAction(tr("&Open..."), QKeySequence::Open, this, &MainWindow::chooseAndOpen);
  recent_ = file->addMenu(tr("Open &recent"));
  recent_->setObjectName("recent");
  file->addAction(tr("Read it a&gain"), QKeySequence::Refresh, this, &MainWindow::reload)
      ->setObjectName("reload");
  file->addSeparator();
  save_ = file->addAction(tr("&Save"), QKeySequence::Save, this, &MainWindow::save);
  save_->setObjectName("save");
  file->addAction(tr("Save &as..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), this,
                  &MainWindow::chooseAndSave)
      ->setObjectName("saveAs");
  file->addAction(tr("&Export the palette..."), QKeySequence(Qt::CTRL | Qt::Key_E), this,
                  &MainWindow::chooseAndExport);
  file->addSeparator();
  file->addAction(tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, &QWidget::close)
      ->setObjectName("quit");
}

void MainWindow::addEditMenu() {
  QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
  const auto done = [this] { return session_->history().size() - session_->undone(); };
  undo_ = edit->addAction(tr("&Undo"), QKeySequence::Undo, this, [this, done] { goTo(done() - 1); });
  undo_->setObjectName("undo");
  redo_ = edit->addAction(tr("&Redo"), QKeySequence::Redo, this, [this, done] { goTo(done() + 1); });
  redo_->setObjectName("redo");
  edit->addSeparator();
  edit->addActions(palette_->rowActions());
  edit->addSeparator();
  edit->addAction(tr("Select &all"), QKeySequence::SelectAll, list_, &QTableView::selectAll)
      ->setObjectName("selectAll");
  edit->addAction(tr("Select &nothing"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), this,
                  [this] { select({}); })
      ->setObjectName("selectNothing");
  layersOfSelection_ = edit->addAction(tr("All on the same &layer"), QKeySequence(Qt::CTRL | Qt::Key_L), this,
                                       [this] { selectLayersOf(session_->whole()); });
  layersOfSelection_->setObjectName("selectLayers");
  classesOfSelection_ = edit->addAction(tr("All of the same &class"), QKeySequence(Qt::CTRL | Qt::Key_K),
                                        this, [this] { selectClassesOf(session_->whole()); });
  classesOfSelection_->setObjectName("selectClasses");
  edit->addAction(tr("&Back to the whole selection"), QKeySequence(Qt::CTRL | Qt::Key_B), this,
                  &MainWindow::widen)
      ->setObjectName("widen");
  edit->addAction(tr("&Find a property"), QKeySequence::Find, palette_, &PalettePane::goToSearch)
      ->setObjectName("find");
}

void MainWindow::addViewMenu() {
  QMenu* const view = menuBar()->addMenu(tr("&View"));
  view->addAction(tr("&Fit"), QKeySequence(Qt::CTRL | Qt::Key_0), view_, &DrawingPane::fit)
      ->setObjectName("fit");
  QAction* const dark = view->addAction(tr("&Dark background"));
  dark->setObjectName("dark");
  dark->setCheckable(true);
  dark->setChecked(QSettings().value(darkSetting, true).toBool());
  view_->setDark(dark->isChecked());
  connect(dark, &QAction::toggled, view_, &DrawingPane::setDark);
  connect(dark, &QAction::toggled, [](bool isDark) { QSettings().setValue(darkSetting, isDark); });
  QAction* const done = findChild<QDockWidget*>("historyDock")->toggleViewAction();
  done->setText(tr("&What was done"));
  done->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
  view->addAction(done);
  view->addSeparator();
  view->addAction(tr("&Next part of the window"), QKeySequence(Qt::Key_F6), this, &MainWindow::goToNextPart)
      ->setObjectName("nextPart");
}

void MainWindow::goToNextPart() {
  const QList<QWidget*> parts = {view_, list_, palette_->findChild<QWidget*>("classes"),
                                 palette_->findChild<QWidget*>("rows"), history_};
  qsizetype now = -1;
  for (qsizetype i = 0; i < parts.size(); ++i) {
    if (parts[i]->hasFocus()) now = i;
  }
  do
    now = (now + 1) % parts.size();
  while (!parts[now]->isVisible() && now != 0);
  parts[now]->setFocus(Qt::TabFocusReason);
}

// --- the selection ------------------------------------------------------------------------------------------

void MainWindow::select(const std::vector<VkDbObjectId>& entities) {
  markInList(entities);
  showSelection(entities);
}

void MainWindow::markInList(const std::vector<VkDbObjectId>& entities) {
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
  // All of the list is painted anew: what has to be is not worked out for each piece.
  list_->setUpdatesEnabled(false);
  // In two steps: what differs between two selections of many pieces is worked out piece by piece against all others.
  list_->selectionModel()->clearSelection();
  list_->selectionModel()->select(selection, QItemSelectionModel::Select);
  list_->setUpdatesEnabled(true);
  isSelecting_ = false;
  if (!selection.isEmpty()) list_->scrollTo(selection.first().topLeft());
}

void MainWindow::selectNamed(const tool::SelectionRequest& request) {
  std::vector<VkDbObjectId> entities;
  work_->run(tr("Selecting"), LongWork::Kind::goesOn,
             [&] { entities = tool::select(session_->drawing(), request).ids; });
  select(entities);
}

void MainWindow::selectLike(std::span<const VkDbObjectId> entities, std::string (*nameOf)(VkDbObjectId)) {
  std::unordered_set<std::string> names;
  for (const VkDbObjectId entity : entities)
    names.insert(nameOf(entity));
  std::vector<VkDbObjectId> alike;
  for (int row = 0; row < entities_->rowCount(); ++row) {
    if (names.contains(nameOf(entities_->entityAt(row)))) alike.push_back(entities_->entityAt(row));
  }
  select(alike);
}

void MainWindow::selectLayersOf(std::span<const VkDbObjectId> entities) {
  selectLike(entities, &tool::layerName);
}

void MainWindow::selectClassesOf(std::span<const VkDbObjectId> entities) {
  selectLike(entities, &tool::className);
}

void MainWindow::showMenu(const VkDbObjectId& entity, const QPoint& at) {
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName("entityMenu");
  if (entity.isNull()) {
    menu->addActions({layersOfSelection_, classesOfSelection_});
  } else {
    const auto named = [](std::string name) { return QString::fromStdString(name).replace('&', "&&"); };
    menu->addAction(tr("All on &layer %1").arg(named(tool::layerName(entity))), this, [this, entity] {
      selectLayersOf({&entity, 1});
    });
    menu->addAction(tr("All of &class %1").arg(named(tool::className(entity))), this, [this, entity] {
      selectClassesOf({&entity, 1});
    });
  }
  menu->addSeparator();
  menu->addActions({findChild<QAction*>("selectAll"), findChild<QAction*>("selectNothing")});
  menu->addSeparator();
  menu->addAction(findChild<QAction*>("fit"));
  menu->popup(at);
}

void MainWindow::takeListSelection() {
  if (isSelecting_) return;
  std::vector<VkDbObjectId> entities;
  for (const QModelIndex& row : list_->selectionModel()->selectedRows())
    entities.push_back(entities_->entityAt(row.row()));
  showSelection(entities);
}

void MainWindow::showSelection(const std::vector<VkDbObjectId>& entities) {
  wanted_ = entities;
  view_->setSelected(entities);
  if (work_->isRunning()) return work_->startOver();
  while (wanted_) {
    const std::vector<VkDbObjectId> selected = *std::exchange(wanted_, std::nullopt);
    try {
      work_->run(tr("Reading the properties"), LongWork::Kind::startsOver,
                 [&] { session_->select(selected); });
    } catch (const palette::Error& error) {
      fail(tr("The entities cannot be selected"), QString::fromStdString(error.what()));
    }
  }
  palette_->setSession(session_.get());
  refresh();
}

void MainWindow::narrow(const std::vector<VkDbObjectId>& entities) {
  showPart([&] { session_->narrow(entities); });
}

void MainWindow::widen() {
  showPart([this] { session_->widen(); });
}

void MainWindow::showPart(const std::function<void()>& change) {
  if (work_->isRunning()) return;
  try {
    work_->run(tr("Reading the properties"), LongWork::Kind::startsOver, change);
  } catch (const palette::Error& error) {
    fail(tr("The entities cannot be selected"), QString::fromStdString(error.what()));
  }
  if (wanted_) return showSelection(*wanted_);
  palette_->refresh();
  const std::vector<VkDbObjectId> shown(session_->selected().begin(), session_->selected().end());
  markInList(shown);
  view_->setSelected(shown);
  refresh();
}

// --- what was done ------------------------------------------------------------------------------------------

void MainWindow::goTo(std::size_t done) {
  if (work_->isRunning()) return;
  work_->run(tr("Reading the properties"), LongWork::Kind::goesOn, [&] { session_->goTo(done); });
  palette_->forgetOutcome();
  palette_->refresh();
  refresh();
}

// What depends on the drawing's values, its selection, its history and its file.
void MainWindow::refresh() {
  if (const std::uint64_t revision = session_->drawing().revision(); revision != drawnRevision_) {
    drawnRevision_ = revision;
    entities_->refresh();
    view_->redraw();
  }
  showHistory();
  save_->setEnabled(session_->isChanged());
  setWindowModified(session_->isChanged());
  const QString name = QString::fromStdString(session_->file().filename().string());
  setWindowTitle(tr("%1[*] - Properties").arg(name.isEmpty() ? tr("New drawing") : name));
  for (QAction* const action : {layersOfSelection_, classesOfSelection_})
    action->setEnabled(!session_->whole().empty());
  count_->setText(tr("%1 of %2 selected").arg(session_->selected().size()).arg(entities_->rowCount()));
}

void MainWindow::showHistory() {
  undo_->setEnabled(session_->canUndo());
  redo_->setEnabled(session_->canRedo());
  const std::vector<std::string> history = session_->history();
  const std::size_t done = history.size() - session_->undone();
  // An ampersand would underline what follows it.
  const auto named = [&](std::size_t step) {
    return QString::fromStdString(history[step]).replace('&', "&&");
  };
  undo_->setText(done > 0 ? tr("&Undo \"%1\"").arg(named(done - 1)) : tr("&Undo"));
  redo_->setText(done < history.size() ? tr("&Redo \"%1\"").arg(named(done)) : tr("&Redo"));
  history_->clear();
  history_->addItem(tr("As it was opened"));
  for (std::size_t i = 0; i < history.size(); ++i) {
    auto* const item = new QListWidgetItem(QString::fromStdString(history[i]), history_);
    QFont font = history_->font();
    font.setItalic(i >= done);
    item->setFont(font);
    if (i >= done) item->setToolTip(tr("Undone"));
  }
  history_->setCurrentRow(static_cast<int>(done));
}

// --- the file -----------------------------------------------------------------------------------------------

void MainWindow::takeSession(std::unique_ptr<Session> session) {
  palette_->setSession(nullptr);
  view_->setDrawing(nullptr);
  entities_->setDrawing(nullptr);
  session_ = std::move(session);
  wanted_.reset();
  drawnRevision_ = session_->drawing().revision();
  view_->setDrawing(&session_->drawing());
  entities_->setDrawing(&session_->drawing());
  palette_->setSession(session_.get());
  watch();
  if (!session_->file().empty()) remember(QString::fromStdString(session_->file().string()));
  listRecent();
  refresh();
}

void MainWindow::watch() {
  notice_->hide();
  if (!watcher_->files().isEmpty()) watcher_->removePaths(watcher_->files());
  if (!session_->file().empty()) watcher_->addPath(QString::fromStdString(session_->file().string()));
}

void MainWindow::remember(const QString& file) {
  QSettings settings;
  QStringList recent = settings.value(recentSetting).toStringList();
  const QString whole = QFileInfo(file).absoluteFilePath();
  recent.removeAll(whole);
  recent.prepend(whole);
  settings.setValue(recentSetting, recent.mid(0, mostRecent));
}

void MainWindow::listRecent() {
  recent_->clear();
  const QStringList files = QSettings().value(recentSetting).toStringList();
  for (const QString& file : files) {
    // Queued: opening makes the menu anew.
    const auto openLater = [this, file] {
      QMetaObject::invokeMethod(
          this, [this, file] { open(file); }, Qt::QueuedConnection);
    };
    recent_->addAction(QString(file).replace('&', "&&"), this, openLater);
  }
  recent_->setEnabled(!files.isEmpty());
}

void MainWindow::load(const QString& name, const std::function<std::unique_ptr<Session>()>& make) {
  std::unique_ptr<Session> opened;
  work_->run(tr("Reading %1").arg(name), LongWork::Kind::goesOn, [&] { opened = make(); });
  takeSession(std::move(opened));
}

bool MainWindow::open(const QString& file) {
  if (work_->isRunning() || !mayForgetChanges()) return false;
  try {
    load(QFileInfo(file).fileName(),
         [&] { return std::make_unique<Session>(std::filesystem::path(file.toStdString())); });
  } catch (const platform::Cancelled&) {
    return false;
  } catch (const std::exception& error) {
    fail(tr("The drawing cannot be opened"), QString::fromStdString(error.what()));
    return false;
  }
  return true;
}

void MainWindow::reload() {
  if (!session_->file().empty()) open(QString::fromStdString(session_->file().string()));
}

void MainWindow::chooseAndOpen() {
  const QString chosen = QFileDialog::getOpenFileName(this, tr("Open a drawing"), {}, drawingsFilter());
  if (!chosen.isEmpty()) open(chosen);
}

bool MainWindow::save() {
  if (session_->file().empty()) return chooseAndSave();
  return store([this](Session::OthersChanges changes) { return session_->save(changes); });
}

bool MainWindow::chooseAndSave() {
  const QString chosen = QFileDialog::getSaveFileName(
      this, tr("Save the drawing as"), QString::fromStdString(session_->file().string()), drawingsFilter());
  return !chosen.isEmpty() && saveTo(chosen);
}

bool MainWindow::saveTo(const QString& file) {
  if (!store([&](Session::OthersChanges changes) {
        return session_->saveAs(std::filesystem::path(file.toStdString()), true, changes);
      }))
    return false;
  remember(file);
  listRecent();
  return true;
}

bool MainWindow::store(const std::function<std::vector<std::string>(Session::OthersChanges)>& write) {
  if (work_->isRunning()) return false;
  std::vector<std::string> losses;
  const auto save = [&](Session::OthersChanges changes) {
    work_->run(tr("Saving"), LongWork::Kind::goesOn, [&] { losses = write(changes); });
  };
  try {
    try {
      save(Session::OthersChanges::areKept);
    } catch (const dxf::FileChanged& changed) {
      QMessageBox question(QMessageBox::Warning, tr("The file was changed"),
                           QString::fromStdString(changed.what()), QMessageBox::Cancel, this);
      question.setInformativeText(
          tr("Saving replaces the other change. To keep both, save under another name."));
      const auto* const overwrite = question.addButton(tr("Replace it"), QMessageBox::DestructiveRole);
      question.exec();
      if (question.clickedButton() != overwrite) return false;
      save(Session::OthersChanges::areOverwritten);
    }
  } catch (const platform::Cancelled&) {
    return false;
  } catch (const std::exception& error) {
    fail(tr("The drawing was not saved"), QString::fromStdString(error.what()));
    return false;
  }
  watch();
  refresh();
  statusBar()->showMessage(tr("Saved."));
  QStringList lines;
  for (const std::string& loss : losses)
    lines.append(QString::fromStdString(loss) + '.');
  if (!lines.isEmpty()) QMessageBox::information(this, tr("Saved"), lines.join('\n'));
  return true;
}

void MainWindow::chooseAndExport() {
  const QString chosen =
      QFileDialog::getSaveFileName(this, tr("Export the palette"), {}, tr("Tables (*.csv)"));
  if (!chosen.isEmpty()) exportTo(chosen);
}

bool MainWindow::exportTo(const QString& file) {
  const QByteArray text =
      (tr("Category") + ',' + tr("Property") + ',' + tr("Value") + '\n' + palette_->rowsAsText(',')).toUtf8();
  QSaveFile out(file);
  if (out.open(QIODevice::WriteOnly) && out.write(text) == text.size() && out.commit()) return true;
  fail(tr("The palette was not exported"), out.errorString());
  return false;
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
  if (work_->isRunning()) {
    closesNext_ = true;
    work_->cancel();
    return event->ignore();
  }
  event->setAccepted(mayForgetChanges());
  if (!event->isAccepted()) return;
  QSettings settings;
  settings.setValue(geometrySetting, saveGeometry());
  settings.setValue(stateSetting, saveState());
  settings.setValue(leftSetting, left_->saveState());
  settings.setValue(halvesSetting, halves_->saveState());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> files = event->mimeData()->urls();
  if (!files.isEmpty() && files.front().isLocalFile()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QList<QUrl> files = event->mimeData()->urls();
  if (!files.isEmpty() && files.front().isLocalFile()) open(files.front().toLocalFile());
}

}  // namespace velt::desktop
