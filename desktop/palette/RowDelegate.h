#pragma once

// Shows rows, those that cannot be edited paler and values beside what they look like, and makes the editor for a value: a
// list where only some values are possible, a number for the vertex that is looked at, a field of several lines for a
// text of several lines, and a field for all others.

#include <QStyledItemDelegate>

namespace velt::desktop {

class RowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  // In a text of several lines the key Return begins the next one, and ends the editor with Control.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] QWidget* listOf(const QStringList& choices, QWidget* parent, const QModelIndex& index) const;
  [[nodiscard]] QWidget* numberUpTo(int count, QWidget* parent) const;
  // Writes what stands in the editor, which may go on.
  void commit(QWidget* editor) const;
};

}  // namespace velt::desktop
