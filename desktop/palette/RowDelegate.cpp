#include "desktop/palette/RowDelegate.h"

#include <QComboBox>
#include <QLineEdit>

#include "desktop/palette/PaletteModel.h"
#include "desktop/palette/Swatches.h"

namespace velt::desktop {

QWidget* RowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  const QStringList choices = index.data(PaletteModel::choicesRole).toStringList();
  if (choices.isEmpty()) return QStyledItemDelegate::createEditor(parent, option, index);
  auto* const list = new QComboBox(parent);
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
