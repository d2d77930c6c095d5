#pragma once

// Shows the entries of a list of choices: what stands in remarkRole follows the text, at the right.

#include <QStyledItemDelegate>

namespace velt::desktop {

class ChoiceDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  static constexpr int remarkRole = Qt::UserRole;

  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace velt::desktop
