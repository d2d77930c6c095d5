#include "desktop/palette/ChoiceDelegate.h"

#include <QPainter>

namespace velt::desktop {

namespace {

constexpr int gap = 16;
constexpr int margin = 6;

}  // namespace

void ChoiceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  const QString remark = index.data(remarkRole).toString();
  if (remark.isEmpty()) return;
  const bool isChosen = option.state.testFlag(QStyle::State_Selected);
  QFont font = option.font;
  font.setItalic(true);
  painter->save();
  painter->setFont(font);
  painter->setPen(option.palette.color(isChosen ? QPalette::HighlightedText : QPalette::Text));
  painter->drawText(option.rect.adjusted(0, 0, -margin, 0), Qt::AlignRight | Qt::AlignVCenter, remark);
  painter->restore();
}

QSize ChoiceDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QSize size = QStyledItemDelegate::sizeHint(option, index);
  const QString remark = index.data(remarkRole).toString();
  if (remark.isEmpty()) return size;
  return {size.width() + gap + option.fontMetrics.horizontalAdvance(remark) + margin, size.height()};
}

}  // namespace velt::desktop
