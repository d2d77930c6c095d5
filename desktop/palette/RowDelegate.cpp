#include "desktop/palette/RowDelegate.h"

#include <QColor>
#include <QComboBox>
#include <QLineEdit>

#include "desktop/palette/PaletteModel.h"
#include "desktop/palette/Swatches.h"

namespace velt::desktop {

namespace {

// Themes make disabled text so pale that it is hard to read, and here it is half of what there is to read. This is as
// readable on any theme: on black and white 5.7 : 1.
QColor paleText(const QPalette& palette) {
  const QColor text = palette.color(QPalette::Active, QPalette::Text);
  const QColor ground = palette.color(QPalette::Active, QPalette::Base);
  constexpr float share = 0.6F;
  const auto between = [](float a, float b) { return share * a + (1 - share) * b; };
  return QColor::fromRgbF(between(text.redF(), ground.redF()), between(text.greenF(), ground.greenF()),
                          between(text.blueF(), ground.blueF()));
}

}  // namespace

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (index.data(PaletteModel::readOnlyRole).toBool())
    option->palette.setColor(QPalette::Text, paleText(option->palette));
}

QWidget* RowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  const QStringList choices = index.data(PaletteModel::choicesRole).toStringList();
  const QString name = index.siblingAtColumn(PaletteModel::labelColumn).data().toString();
  if (choices.isEmpty()) {
    QWidget* const field = QStyledItemDelegate::createEditor(parent, option, index);
    field->setAccessibleName(name);
    return field;
  }
  auto* const list = new QComboBox(parent);
  list->setAccessibleName(name);
  for (const QString& choice : choices)
    list->addItem(swatchOf(choice).value<QIcon>(), choice);
  // What the list does not offer may be written all the same: a color by its parts, for one.
  list->setEditable(true);
  list->setInsertPolicy(QComboBox::NoInsert);
  // Whoever picks an entry has decided.
  connect(list, &QComboBox::activated, this, [this, list] {
    auto* const self = const_cast<RowDelegate*>(this);
    Q_EMIT self->commitData(list);
    Q_EMIT self->closeEditor(list);
  });
  return list;
}

void RowDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const QString text = index.data(Qt::EditRole).toString();
  if (auto* const list = qobject_cast<QComboBox*>(editor)) {
    list->setCurrentIndex(list->findText(text, Qt::MatchFixedString));
    list->setEditText(text);
    list->lineEdit()->selectAll();
    return;
  }
  // Of a row that varies, which has no text to begin with.
  if (auto* const field = qobject_cast<QLineEdit*>(editor); field != nullptr && text.isEmpty())
    field->setPlaceholderText(index.data().toString());
  QStyledItemDelegate::setEditorData(editor, index);
}

void RowDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
  if (const auto* const list = qobject_cast<QComboBox*>(editor)) {
    model->setData(index, list->currentText());
    return;
  }
  QStyledItemDelegate::setModelData(editor, model, index);
}

}  // namespace velt::desktop
