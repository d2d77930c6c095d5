#include "desktop/palette/RowDelegate.h"

#include <QAbstractItemView>
#include <QColor>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>

#include "desktop/palette/ChoiceDelegate.h"
#include "desktop/palette/PaletteModel.h"
#include "desktop/palette/ValuePictures.h"

namespace velt::desktop {

namespace {

// In its own colors also where the row is selected.
QIcon iconOf(const QPixmap& pixmap) {
  QIcon icon(pixmap);
  icon.addPixmap(pixmap, QIcon::Selected);
  return icon;
}

// Set for an editor in which the key Return was pressed: it writes and closes in a moment.
constexpr const char* isEntered = "isEntered";

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
  if (index.column() != PaletteModel::valueColumn) return;
  const auto picture = index.data(PaletteModel::pictureRole).value<ValuePicture>();
  if (picture.isEmpty()) return;
  const qreal ratio = option->widget != nullptr ? option->widget->devicePixelRatioF() : 1;
  const QPixmap pixmap = pixmapOf(picture, option->palette, ratio);
  option->features |= QStyleOptionViewItem::HasDecoration;
  option->icon = iconOf(pixmap);
  option->decorationSize = pixmap.deviceIndependentSize().toSize();
}

QWidget* RowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  const QStringList choices = index.data(PaletteModel::choicesRole).toStringList();
  QWidget* editor = nullptr;
  if (const int count = index.data(PaletteModel::countRole).toInt(); count > 0) {
    editor = numberUpTo(count, parent);
  } else if (!choices.isEmpty()) {
    editor = listOf(choices, parent, index);
  } else if (index.data(PaletteModel::hasLinesRole).toBool()) {
    auto* const lines = new QPlainTextEdit(parent);
    lines->setTabChangesFocus(true);
    editor = lines;
  } else {
    editor = QStyledItemDelegate::createEditor(parent, option, index);
  }
  editor->setAccessibleName(index.siblingAtColumn(PaletteModel::labelColumn).data().toString());
  return editor;
}

void RowDelegate::commit(QWidget* editor) const {
  auto* const self = const_cast<RowDelegate*>(this);
  Q_EMIT self->commitData(editor);
}

QWidget* RowDelegate::numberUpTo(int count, QWidget* parent) const {
  auto* const number = new QSpinBox(parent);
  number->setRange(1, count);
  number->setSuffix(tr(" of %1").arg(count));
  number->setAccelerated(true);
  number->setWrapping(true);
  number->setFrame(false);
  // Not at every digit that somebody types.
  number->setKeyboardTracking(false);
  connect(number, &QSpinBox::valueChanged, this, [this, number] { commit(number); });
  return number;
}

QWidget* RowDelegate::listOf(const QStringList& choices, QWidget* parent, const QModelIndex& index) const {
  auto* const list = new QComboBox(parent);
  list->setItemDelegate(new ChoiceDelegate(list));
  const auto pictures = index.data(PaletteModel::choicePicturesRole).value<QList<ValuePicture>>();
  for (qsizetype i = 0; i < choices.size(); ++i) {
    const QPixmap pixmap = pixmapOf(pictures[i], parent->palette(), parent->devicePixelRatioF());
    list->addItem(iconOf(pixmap), choices[i]);
    if (!pixmap.isNull()) list->setIconSize(pixmap.deviceIndependentSize().toSize());
    if (pictures[i].states.isEmpty()) continue;
    list->setItemData(list->count() - 1, pictures[i].states, ChoiceDelegate::remarkRole);
    list->setItemData(list->count() - 1, choices[i] + ", " + pictures[i].states, Qt::AccessibleTextRole);
  }
  list->view()->setMinimumWidth(list->view()->sizeHintForColumn(0));
  // What the list does not offer may be written all the same: a color by its parts, for one.
  list->setEditable(true);
  list->setInsertPolicy(QComboBox::NoInsert);
  // Whoever picks an entry has decided.
  connect(list, &QComboBox::activated, this, [this, list] {
    if (list->property(isEntered).toBool()) return;
    commit(list);
    Q_EMIT const_cast<RowDelegate*>(this)->closeEditor(list);
  });
  return list;
}

void RowDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  if (auto* const number = qobject_cast<QSpinBox*>(editor)) {
    const QSignalBlocker itIsThereAlready(number);
    return number->setValue(index.data(PaletteModel::numberRole).toInt());
  }
  const QString text = index.data(Qt::EditRole).toString();
  if (auto* const lines = qobject_cast<QPlainTextEdit*>(editor)) {
    lines->setPlainText(text);
    if (text.isEmpty()) lines->setPlaceholderText(index.data().toString());
    return lines->selectAll();
  }
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
  if (const auto* const lines = qobject_cast<QPlainTextEdit*>(editor)) {
    model->setData(index, lines->toPlainText());
    return;
  }
  if (const auto* const number = qobject_cast<QSpinBox*>(editor)) {
    model->setData(index, number->value());
    return;
  }
  QStyledItemDelegate::setModelData(editor, model, index);
}

// A text of several lines gets room for them, and no more than there is.
void RowDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
  QStyledItemDelegate::updateEditorGeometry(editor, option, index);
  const auto* const lines = qobject_cast<QPlainTextEdit*>(editor);
  if (lines == nullptr) return;
  constexpr int fewest = 4;
  constexpr int most = 12;
  constexpr int frame = 12;
  const int shown = std::clamp(lines->blockCount() + 1, fewest, most);
  QRect place = option.rect;
  place.setHeight(
      std::min(shown * lines->fontMetrics().lineSpacing() + frame, editor->parentWidget()->height()));
  if (place.bottom() >= editor->parentWidget()->height())
    place.moveBottom(editor->parentWidget()->height() - 1);
  editor->setGeometry(place);
}

bool RowDelegate::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QStyledItemDelegate::eventFilter(watched, event);
  const auto* const key = dynamic_cast<QKeyEvent*>(event);
  const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
  auto* const lines = qobject_cast<QPlainTextEdit*>(watched);
  if (isReturn && lines == nullptr) watched->setProperty(isEntered, true);
  if (!isReturn || lines == nullptr) return QStyledItemDelegate::eventFilter(watched, event);
  if (!key->modifiers().testFlag(Qt::ControlModifier)) return false;
  commit(lines);
  Q_EMIT closeEditor(lines);
  return true;
}

}  // namespace velt::desktop
