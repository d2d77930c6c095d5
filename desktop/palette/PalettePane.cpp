#include "desktop/palette/PalettePane.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>
#include <map>

#include "desktop/palette/PaletteModel.h"
#include "desktop/palette/RowDelegate.h"
#include "tool/EntitySelection.h"

namespace velt::desktop {

namespace {

QLabel* wrappingLabel(const char* name, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QString cell(QString text, QChar separator) {
  if (!text.contains(separator) && !text.contains('"') && !text.contains('\n')) return text;
  return '"' + text.replace('"', "\"\"") + '"';
}

}  // namespace

PalettePane::PalettePane(QWidget* parent)
    : QWidget(parent),
      model_(new PaletteModel(this)),
      filter_(new QSortFilterProxyModel(this)),
      classes_(new QComboBox(this)),
      search_(new QLineEdit(this)),
      banner_(wrappingLabel("banner", this)),
      tree_(new QTreeView(this)),
      help_(wrappingLabel("help", this)),
      outcome_(wrappingLabel("outcome", this)) {
  classes_->setObjectName("classes");
  classes_->setAccessibleName(tr("Class"));
  search_->setObjectName("search");
  search_->setPlaceholderText(tr("Search properties"));
  search_->setAccessibleName(tr("Search properties"));
  search_->setClearButtonEnabled(true);
  tree_->setObjectName("rows");
  tree_->setAccessibleName(tr("Properties"));

  filter_->setSourceModel(model_);
  filter_->setFilterRole(PaletteModel::searchRole);
  filter_->setFilterCaseSensitivity(Qt::CaseInsensitive);
  filter_->setRecursiveFilteringEnabled(true);
  filter_->setAutoAcceptChildRows(true);
  tree_->setModel(filter_);
  tree_->setItemDelegateForColumn(PaletteModel::valueColumn, new RowDelegate(tree_));
  tree_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked
                         | QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
  tree_->setAlternatingRowColors(true);
  tree_->setUniformRowHeights(true);
  tree_->header()->setSectionResizeMode(PaletteModel::labelColumn, QHeaderView::ResizeToContents);

  auto* const layout = new QVBoxLayout(this);
  for (QWidget* const part :
       std::initializer_list<QWidget*>{classes_, search_, banner_, tree_, help_, outcome_})
    layout->addWidget(part);
  layout->setStretchFactor(tree_, 1);
  setTabOrder(classes_, search_);
  setTabOrder(search_, tree_);

  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
    filter_->setFilterFixedString(text);
    restoreFolds();
  });
  connect(classes_, &QComboBox::activated, this, [this](int entry) {
    if (entry > 0) Q_EMIT wanted(entitiesOfClasses_[static_cast<std::size_t>(entry) - 1]);
  });
  connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this, &PalettePane::showHelp);
  connect(tree_, &QTreeView::clicked, this, [this](const QModelIndex& place) {
    const std::vector<VkDbObjectId> entities = model_->entitiesBehind(filter_->mapToSource(place));
    if (!entities.empty()) Q_EMIT wanted(entities);
  });
  connect(tree_, &QTreeView::collapsed, this, &PalettePane::rememberFolds);
  connect(tree_, &QTreeView::expanded, this, &PalettePane::rememberFolds);
  connect(model_, &QAbstractItemModel::modelReset, this, &PalettePane::restoreFolds);
  connect(model_, &PaletteModel::written, this, [this](const palette::Report& report) {
    tell(report);
    Q_EMIT changed();
  });
  connect(model_, &PaletteModel::failed, outcome_, &QLabel::setText);
}

void PalettePane::setSession(Session* session) {
  session_ = session;
  outcome_->clear();
  model_->setSession(session);
  refresh();
}

void PalettePane::refresh() {
  model_->refresh();
  showClasses();
  showBanner();
  showHelp();
}

void PalettePane::showClasses() {
  classes_->clear();
  entitiesOfClasses_.clear();
  if (session_ == nullptr || session_->selected().empty()) {
    classes_->addItem(tr("Nothing selected"));
    return;
  }
  std::map<std::string, std::vector<VkDbObjectId>> byClass;
  for (const VkDbObjectId entity : session_->selected())
    byClass[tool::className(entity)].push_back(entity);
  if (byClass.size() > 1) classes_->addItem(tr("All (%1)").arg(session_->selected().size()));
  for (auto& [name, entities] : byClass) {
    classes_->addItem(QString("%1 (%2)").arg(QString::fromStdString(name)).arg(entities.size()));
    entitiesOfClasses_.push_back(std::move(entities));
  }
}

void PalettePane::showBanner() {
  QStringList lines;
  if (session_ != nullptr) {
    if (const std::size_t locked = session_->lockedCount(); locked > 0)
      lines.append(
          tr("%n entities are on locked layers and are not written to.", nullptr, static_cast<int>(locked)));
    if (!session_->problem().empty()) lines.append(QString::fromStdString(session_->problem()));
  }
  banner_->setText(lines.join('\n'));
  banner_->setVisible(!lines.isEmpty());
}

void PalettePane::showHelp() {
  help_->setText(tree_->currentIndex().data(PaletteModel::helpRole).toString());
}

void PalettePane::tell(const palette::Report& report) {
  QString text = QString::fromStdString(report.summary());
  if (!report.reasons.empty()) text += ": " + QString::fromStdString(report.reasons.begin()->second);
  outcome_->setText(text);
  showBanner();
}

// Categories stay as they were left, whatever is selected next. While a search goes on all are open, and that is not
// remembered.
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
}

QString PalettePane::rowsAsText(QChar separator) const {
  QString text;
  for (int i = 0; i < filter_->rowCount(); ++i) {
    const QModelIndex category = filter_->index(i, 0);
    for (int row = 0; row < filter_->rowCount(category); ++row) {
      text += cell(category.data().toString(), separator) + separator
              + cell(filter_->index(row, PaletteModel::labelColumn, category).data().toString(), separator)
              + separator
              + cell(filter_->index(row, PaletteModel::valueColumn, category).data().toString(), separator)
              + '\n';
    }
  }
  return text;
}

}  // namespace velt::desktop
