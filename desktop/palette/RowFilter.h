#pragma once

// Of the rows of a palette those that fit a search, with the categories that they stand in. Without a search all but the
// vertices that nobody looks at.

#include <QSortFilterProxyModel>

namespace velt::desktop {

class RowFilter : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  explicit RowFilter(QObject* parent = nullptr);

  // Whether the entry of the source fits the search, or stands below one that does.
  [[nodiscard]] bool fits(const QModelIndex& source) const;

 protected:
  [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
};

}  // namespace velt::desktop
