#include "desktop/palette/PalettePane.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <unordered_map>

#include "desktop/LongWork.h"
#include "desktop/palette/PaletteModel.h"
#include "desktop/palette/RowDelegate.h"
#include "desktop/palette/RowFilter.h"
#include "tool/EntitySelection.h"
#include "tool/Explanation.h"

namespace velt::desktop {

namespace {

constexpr const char* foldedSetting = "palette/folded";

// What an entry of the list of classes stands for.
enum ClassEntry { wholeSelection, oneClass, chosen };

// What it says is its name for those who hear it; `role` tells them what it is.
QLabel* wrappingLabel(const char* name, const QString& role, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setAccessibleDescription(role);
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

QString cell(QString text, QChar separator) {
  if (!text.contains(separator) && !text.contains('"') && !text.contains('\n')) return text;
  return '"' + text.replace('"', "\"\"") + '"';
}

QString fateText(palette::Fate fate, std::size_t count) {
  using palette::Fate;
  const int number = static_cast<int>(count);
  switch (fate) {
    case Fate::changed:
      return PalettePane::tr("%n changed", nullptr, number);
    case Fate::unchanged:
      return PalettePane::tr("%n unchanged", nullptr, number);
    case Fate::locked:
      return PalettePane::tr("%n locked", nullptr, number);
    case Fate::skipped:
      return PalettePane::tr("%n skipped", nullptr, number);
    case Fate::refused:
      return PalettePane::tr("%n refused", nullptr, number);
    case Fate::notReached:
      return PalettePane::tr("%n not reached", nullptr, number);
  }
  return {};
}

// Each reason once, the most frequent first.
QStringList reasonsOf(const palette::Report& report) {
  std::map<std::string, int> counts;
  for (const auto& [entity, reason] : report.reasons)
    ++counts[reason];
  std::vector<std::pair<std::string, int>> ordered(counts.begin(), counts.end());
  std::stable_sort(ordered.begin(), ordered.end(),
                   [](const auto& a, const auto& b) { return a.second > b.second; });
  QStringList reasons;
  for (const auto& [reason, count] : ordered)
    reasons.append(reason.empty() ? PalettePane::tr("the host gives no reason")
                                  : QString::fromStdString(reason));
  return reasons;
}

}  // namespace

PalettePane::PalettePane(LongWork& work, QWidget* parent)
    : QWidget(parent),
      work_(work),
      model_(new PaletteModel(work, this)),
      filter_(new RowFilter(this)),
      classes_(new QComboBox(this)),
      search_(new QLineEdit(this)),
      whyNone_(new QPushButton(this)),
      banner_(wrappingLabel("banner", tr("Remark on the selection"), this)),
      tree_(new QTreeView(this)),
      help_(wrappingLabel("help", tr("Help"), this)),
      outcome_(wrappingLabel("outcome", tr("Outcome"), this)),
      fates_(new QWidget(this)),
      explanation_(new QFrame(this)),
      explained_(wrappingLabel("explained", tr("Explanation"), explanation_)),
      showExplained_(new QPushButton(explanation_)),
      showOthers_(new QPushButton(explanation_)),
      closeExplanation_(new QPushButton(tr("Close"), explanation_)) {
  classes_->setObjectName("classes");
  classes_->setAccessibleName(tr("Class"));
  search_->setObjectName("search");
  search_->setPlaceholderText(tr("Search properties"));
  search_->setAccessibleName(tr("Search properties"));
  search_->setClearButtonEnabled(true);
  whyNone_->setObjectName("whyNone");
  whyNone_->hide();
  tree_->setObjectName("rows");
  tree_->setAccessibleName(tr("Properties"));
  showExplained_->setObjectName("showExplained");
  showOthers_->setObjectName("showOthers");
  closeExplanation_->setObjectName("closeExplanation");

  filter_->setSourceModel(model_);
  tree_->setModel(filter_);
  tree_->setItemDelegate(new RowDelegate(tree_));
  tree_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked
                         | QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
  tree_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  tree_->setAlternatingRowColors(true);
  tree_->setUniformRowHeights(true);
  tree_->header()->setSectionResizeMode(PaletteModel::labelColumn, QHeaderView::ResizeToContents);
  tree_->setContextMenuPolicy(Qt::CustomContextMenu);
  tree_->installEventFilter(this);
  const QStringList folded = QSettings().value(foldedSetting).toStringList();
  folded_ = {folded.begin(), folded.end()};
  addRowActions();
  layOut();

  connect(search_, &QLineEdit::textChanged, this, &PalettePane::search);
  connect(search_, &QLineEdit::returnPressed, this, [this] {
    if (filter_->rowCount() == 0 && !search_->text().isEmpty()) return explainAbsence(search_->text());
    tree_->setFocus();
    const QModelIndex first = filter_->index(0, 0);
    tree_->setCurrentIndex(filter_->hasChildren(first) ? filter_->index(0, 0, first) : first);
  });
  connect(whyNone_, &QPushButton::clicked, this, [this] { explainAbsence(search_->text()); });
  connect(classes_, &QComboBox::activated, this, &PalettePane::takeClass);
  connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& current) {
            showHelp();
            showVertex();
            if (!current.isValid() || isRestoring_) return;
            currentKey_ = current.data(PaletteModel::keyRole).toString();
            currentColumn_ = current.column();
          });
  connect(tree_, &QTreeView::clicked, this, &PalettePane::showBehind);
  connect(tree_, &QTreeView::customContextMenuRequested, this, &PalettePane::showMenu);
  connect(tree_, &QTreeView::collapsed, this, &PalettePane::rememberFolds);
  connect(tree_, &QTreeView::expanded, this, &PalettePane::rememberFolds);
  connect(model_, &QAbstractItemModel::modelReset, this, [this] {
    restoreFolds();
    restoreCurrent();
    showVertex();
  });
  connect(model_, &QAbstractItemModel::dataChanged, this, &PalettePane::showVertex);
  connect(model_, &PaletteModel::written, this, [this](const palette::Report& report) {
    tell(report);
    Q_EMIT changed();
  });
  connect(model_, &PaletteModel::failed, this, [this](const QString& why) {
    forgetOutcome();
    outcome_->setText(why);
    outcome_->show();
    showHelp();
  });
  connect(showExplained_, &QPushButton::clicked, this, [this] { Q_EMIT narrowed(explainedEntities_); });
  connect(showOthers_, &QPushButton::clicked, this, [this] { Q_EMIT narrowed(otherEntities_); });
  connect(closeExplanation_, &QPushButton::clicked, explanation_, &QWidget::hide);
  listClasses();
}

void PalettePane::addRowActions() {
  const auto add = [this](const char* name, const QString& text, const QKeySequence& key,
                          void (PalettePane::*does)()) {
    auto* const action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, does);
    tree_->addAction(action);
    return action;
  };
  edit_ = add("edit", tr("&Edit the value"), Qt::Key_F2, &PalettePane::editCurrent);
  copy_ = add("copy", tr("&Copy rows"), QKeySequence::Copy, &PalettePane::copyRows);
  why_ = add("why", tr("&Why is it so?"), Qt::Key_F1, &PalettePane::explainRow);
}

void PalettePane::layOut() {
  explanation_->setObjectName("explanation");
  explanation_->setFrameShape(QFrame::StyledPanel);
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(showExplained_);
  buttons->addWidget(showOthers_);
  buttons->addStretch();
  buttons->addWidget(closeExplanation_);
  auto* const explanation = new QVBoxLayout(explanation_);
  explanation->addWidget(explained_);
  explanation->addLayout(buttons);
  explanation_->hide();
  auto* const fates = new QHBoxLayout(fates_);
  fates->setContentsMargins(0, 0, 0, 0);
  fates_->setObjectName("fates");
  fates_->hide();
  for (QLabel* const label : {banner_, help_, outcome_})
    label->hide();

  auto* const layout = new QVBoxLayout(this);
  for (QWidget* const part : std::initializer_list<QWidget*>{classes_, search_, whyNone_, banner_, tree_,
                                                             help_, outcome_, fates_, explanation_})
    layout->addWidget(part);
  layout->setStretchFactor(tree_, 1);
  QWidget* before = classes_;
  for (QWidget* const next : std::initializer_list<QWidget*>{search_, whyNone_, tree_, fates_, showExplained_,
                                                             showOthers_, closeExplanation_}) {
    setTabOrder(before, next);
    before = next;
  }
}

void PalettePane::setSession(Session* session) {
  session_ = session;
  explanation_->hide();
  forgetOutcome();
  model_->setSession(session);
  listClasses();
  showBanner();
  search(search_->text());
}

void PalettePane::refresh() {
  model_->refresh();
  showClass();
  showBanner();
  search(search_->text());
}

void PalettePane::goToSearch() {
  search_->setFocus();
  search_->selectAll();
}

// --- the classes --------------------------------------------------------------------------------------------

void PalettePane::listClasses() {
  classes_->clear();
  byClass_.clear();
  if (session_ == nullptr || session_->whole().empty()) {
    classes_->addItem(tr("Nothing selected"));
    return;
  }
  // The name once for each class, and not for each entity.
  std::unordered_map<const automation::AutomationClass*, std::vector<VkDbObjectId>*> classes;
  for (const VkDbObjectId entity : session_->whole()) {
    const auto [kind, isNew] = classes.try_emplace(tool::classOf(entity));
    if (isNew) kind->second = &byClass_[tool::className(kind->first)];
    kind->second->push_back(entity);
  }
  if (byClass_.size() > 1)
    classes_->addItem(tr("All (%1)").arg(session_->whole().size()), ClassEntry::wholeSelection);
  for (const auto& [name, entities] : byClass_) {
    classes_->addItem(QString("%1 (%2)").arg(QString::fromStdString(name)).arg(entities.size()),
                      byClass_.size() > 1 ? ClassEntry::oneClass : ClassEntry::wholeSelection);
  }
  showClass();
}

// Which of the entries is shown; for a part of the selection that is no class there is one more at the end.
void PalettePane::showClass() {
  if (const int entry = classes_->findData(ClassEntry::chosen); entry >= 0) classes_->removeItem(entry);
  if (session_ == nullptr || byClass_.empty()) return;
  int current = 0;
  if (session_->isNarrowed()) {
    current = classes_->count();
    int entry = byClass_.size() > 1 ? 1 : 0;
    for (const auto& [name, entities] : byClass_) {
      if (std::ranges::equal(entities, session_->selected())) current = entry;
      ++entry;
    }
    if (current == classes_->count())
      classes_->addItem(
          tr("Chosen (%1 of %2)").arg(session_->selected().size()).arg(session_->whole().size()),
          ClassEntry::chosen);
  }
  classes_->setCurrentIndex(current);
}

void PalettePane::takeClass() {
  switch (classes_->currentData().toInt()) {
    case ClassEntry::wholeSelection:
      if (session_ != nullptr && session_->isNarrowed()) Q_EMIT widened();
      break;
    case ClassEntry::oneClass:
      Q_EMIT narrowed(std::next(byClass_.begin(), classes_->currentIndex() - 1)->second);
      break;
    default:
      break;
  }
}

// --- what is said of the rows -------------------------------------------------------------------------------

void PalettePane::showBanner() {
  QStringList lines;
  if (session_ != nullptr) {
    if (session_->whole().empty())
      lines.append(
          tr("A click on something in the drawing shows its properties; a drag shows those of several."));
    if (const std::size_t locked = session_->lockedCount(); locked > 0)
      lines.append(tr("%n of the entities are on locked layers and are not written to.", nullptr,
                      static_cast<int>(locked)));
    if (!session_->problem().empty()) lines.append(QString::fromStdString(session_->problem()));
  }
  banner_->setText(lines.join('\n'));
  banner_->setVisible(!lines.isEmpty());
}

void PalettePane::showHelp() {
  const QModelIndex current = tree_->currentIndex();
  const QString remark = current.data(PaletteModel::remarkRole).toString();
  QString help = current.data(PaletteModel::helpRole).toString();
  // What became of the last write stands below already.
  if (!remark.isEmpty() && !outcome_->text().contains(remark))
    help = tr("Refused: %1").arg(remark) + '\n' + help;
  help_->setText(help);
  help_->setVisible(!help_->text().isEmpty());
}

void PalettePane::showVertex() {
  Q_EMIT vertexShown(model_->vertexAt(filter_->mapToSource(tree_->currentIndex())));
}

void PalettePane::search(const QString& text) {
  filter_->setFilterFixedString(text);
  restoreFolds();
  const bool isMissing =
      session_ != nullptr && !session_->selected().empty() && !text.isEmpty() && filter_->rowCount() == 0;
  whyNone_->setText(tr("Why is there no row \"%1\"?").arg(QString(text).replace('&', "&&")));
  whyNone_->setVisible(isMissing);
}

void PalettePane::forgetOutcome() {
  outcome_->clear();
  outcome_->hide();
  fates_->hide();
  qDeleteAll(fates_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
  while (QLayoutItem* const item = fates_->layout()->takeAt(0))
    delete item;
}

void PalettePane::tell(const palette::Report& report) {
  forgetOutcome();
  std::map<palette::Fate, std::vector<VkDbObjectId>> byFate;
  for (std::size_t i = 0; i < report.fates.size(); ++i)
    byFate[report.fates[i]].push_back(session_->selected()[i]);
  QStringList counts;
  for (const palette::Fate fate : palette::allFates) {
    if (const auto found = byFate.find(fate); found != byFate.end())
      counts.append(fateText(fate, found->second.size()));
  }
  QString text = counts.join(", ");
  const QStringList reasons = reasonsOf(report);
  if (reasons.size() == 1) text += ": " + reasons.front();
  constexpr qsizetype mostReasons = 5;
  if (reasons.size() > 1) text += ":\n" + reasons.mid(0, mostReasons).join('\n');
  if (report.rounded > 0)
    text +=
        '\n' + tr("%n of them only as shown, with fewer digits.", nullptr, static_cast<int>(report.rounded));
  outcome_->setText(text);
  outcome_->show();
  showBanner();
  showHelp();
  if (byFate.size() < 2) return;
  auto* const row = static_cast<QHBoxLayout*>(fates_->layout());
  row->addWidget(new QLabel(tr("Show:"), fates_));
  for (const palette::Fate fate : palette::allFates) {
    const auto found = byFate.find(fate);
    if (found == byFate.end()) continue;
    auto* const button = new QPushButton(fateText(fate, found->second.size()), fates_);
    button->setObjectName(QString::fromStdString(std::string(palette::nameOf(fate))));
    connect(button, &QPushButton::clicked, this,
            [this, entities = found->second] { Q_EMIT narrowed(entities); });
    row->addWidget(button);
  }
  row->addStretch();
  fates_->show();
}

// --- why ----------------------------------------------------------------------------------------------------

void PalettePane::explainRow() {
  const std::optional<std::size_t> row = model_->rowAt(filter_->mapToSource(tree_->currentIndex()));
  if (!row || work_.isRunning()) return;
  const palette::Row& shown = session_->rows()[*row];
  explain(QString::fromStdString(shown.label()),
          [&] { return tool::explainRow(*session_->selection(), shown, session_->numberStyle()); });
}

void PalettePane::explainAbsence(const QString& name) {
  if (session_ == nullptr || session_->selection() == nullptr || work_.isRunning()) return;
  explain(name, [&] { return tool::explainAbsence(*session_->selection(), name.toStdString()); });
}

void PalettePane::explain(const QString& subject, const std::function<tool::Explanation()>& find) {
  try {
    tool::Explanation found;
    // One by one, so this takes longer than any query.
    work_.run(tr("Looking for the reason"), LongWork::Kind::goesOn, [&] { found = find(); });
    showExplanation(subject, found);
  } catch (const palette::Error& error) {
    outcome_->setText(QString::fromStdString(error.what()));
    outcome_->show();
  }
}

void PalettePane::showExplanation(const QString& subject, const tool::Explanation& explanation) {
  QStringList lines = {subject};
  for (const std::string& sentence : explanation.said)
    lines.append(QString::fromStdString(sentence));
  for (const tool::Advice& advice : explanation.advice) {
    if (!advice.step.empty()) lines.append(tr("To do: %1.").arg(QString::fromStdString(advice.step)));
  }
  explained_->setText(lines.join('\n'));
  explainedEntities_.clear();
  otherEntities_.clear();
  std::size_t next = 0;
  for (std::size_t i = 0; i < session_->selected().size(); ++i) {
    const bool isMeant = next < explanation.entities.size() && explanation.entities[next] == i;
    if (isMeant) ++next;
    (isMeant ? explainedEntities_ : otherEntities_).push_back(session_->selected()[i]);
  }
  const bool parts = !explainedEntities_.empty() && !otherEntities_.empty();
  showExplained_->setText(tr("Show these %n entities", nullptr, static_cast<int>(explainedEntities_.size())));
  showExplained_->setVisible(parts);
  showOthers_->setText(tr("Show the others (%1)").arg(otherEntities_.size()));
  showOthers_->setVisible(parts);
  explanation_->show();
}

// --- rows ---------------------------------------------------------------------------------------------------

void PalettePane::showBehind(const QModelIndex& place) {
  const std::vector<VkDbObjectId> entities = model_->entitiesBehind(filter_->mapToSource(place));
  if (!entities.empty()) Q_EMIT narrowed(entities);
}

void PalettePane::editCurrent() {
  const QModelIndex value = tree_->currentIndex().siblingAtColumn(PaletteModel::valueColumn);
  if (!(filter_->flags(value) & Qt::ItemIsEditable)) return;
  tree_->setCurrentIndex(value);
  tree_->edit(value);
}

bool PalettePane::eventFilter(QObject* watched, QEvent* event) {
  const QModelIndex place = tree_->currentIndex();
  // What an editor makes nothing of comes here too.
  const bool isEditing = tree_->indexWidget(place) != nullptr;
  if (watched == tree_ && event->type() == QEvent::KeyPress && !isEditing) {
    switch (dynamic_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
        if (model_->entitiesBehind(filter_->mapToSource(place)).empty()) {
          editCurrent();
        } else {
          showBehind(place);
        }
        return true;
      case Qt::Key_Escape:
        if (session_ != nullptr && session_->isNarrowed()) Q_EMIT widened();
        return true;
      default:
        break;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void PalettePane::showMenu(const QPoint& at) {
  const QModelIndex place = tree_->indexAt(at);
  if (!model_->rowAt(filter_->mapToSource(place))) return;
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName("rowMenu");
  const std::vector<VkDbObjectId> entities = model_->entitiesBehind(filter_->mapToSource(place));
  if (!entities.empty())
    menu->addAction(tr("&Show these %n entities", nullptr, static_cast<int>(entities.size())), this,
                    [this, entities] { Q_EMIT narrowed(entities); });
  edit_->setEnabled(filter_->flags(place.siblingAtColumn(PaletteModel::valueColumn)) & Qt::ItemIsEditable);
  menu->addActions(rowActions());
  // It is pale in this menu only: the keys ask anew.
  connect(menu, &QMenu::aboutToHide, edit_, [this] { edit_->setEnabled(true); });
  menu->popup(tree_->viewport()->mapToGlobal(at));
}

QString PalettePane::rowAsText(const QModelIndex& row, QChar separator) const {
  return cell(row.parent().data().toString(), separator) + separator
         + cell(row.siblingAtColumn(PaletteModel::labelColumn).data().toString(), separator) + separator
         + cell(row.siblingAtColumn(PaletteModel::valueColumn).data().toString(), separator) + '\n';
}

QString PalettePane::rowsAsText(QChar separator) const {
  QString text;
  for (int i = 0; i < model_->rowCount(); ++i) {
    const QModelIndex category = model_->index(i, 0);
    for (int row = 0; row < model_->rowCount(category); ++row) {
      const QModelIndex place = model_->index(row, 0, category);
      if (filter_->fits(place)) text += rowAsText(place, separator);
    }
  }
  return text;
}

// The rows that are chosen or, when that is a single one, all that are shown.
void PalettePane::copyRows() {
  QModelIndexList chosen = tree_->selectionModel()->selectedRows();
  // As they are seen, and not as they were chosen.
  std::sort(chosen.begin(), chosen.end(), [](const QModelIndex& a, const QModelIndex& b) {
    return std::pair(a.parent().row(), a.row()) < std::pair(b.parent().row(), b.row());
  });
  QString text;
  for (const QModelIndex& row : chosen) {
    if (row.parent().isValid()) text += rowAsText(row, '\t');
  }
  QApplication::clipboard()->setText(chosen.size() > 1 ? text : rowsAsText('\t'));
}

// Categories stay as they were left, whatever is selected next, and the next time too. While a search goes on all are
// open, and that is not remembered.
void PalettePane::rememberFolds() {
  if (isRestoring_ || !search_->text().isEmpty()) return;
  for (int i = 0; i < filter_->rowCount(); ++i) {
    const QModelIndex category = filter_->index(i, 0);
    if (tree_->isExpanded(category)) {
      folded_.remove(category.data().toString());
    } else {
      folded_.insert(category.data().toString());
    }
  }
  QSettings().setValue(foldedSetting, QStringList(folded_.begin(), folded_.end()));
}

// The row on which somebody was is still the current one when it is shown again.
void PalettePane::restoreCurrent() {
  if (currentKey_.isEmpty()) return;
  for (int i = 0; i < filter_->rowCount(); ++i) {
    const QModelIndex category = filter_->index(i, 0);
    for (int row = 0; row < filter_->rowCount(category); ++row) {
      const QModelIndex place = filter_->index(row, currentColumn_, category);
      if (place.data(PaletteModel::keyRole).toString() == currentKey_) return tree_->setCurrentIndex(place);
    }
  }
}

void PalettePane::restoreFolds() {
  isRestoring_ = true;
  const bool isSearching = !search_->text().isEmpty();
  for (int i = 0; i < filter_->rowCount(); ++i) {
    const QModelIndex category = filter_->index(i, 0);
    tree_->setExpanded(category, isSearching || !folded_.contains(category.data().toString()));
    tree_->setFirstColumnSpanned(i, QModelIndex(), true);
  }
  isRestoring_ = false;
  showHelp();
}

}  // namespace velt::desktop
