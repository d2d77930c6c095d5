#include "desktop/palette/RowFilter.h"

#include "desktop/palette/PaletteModel.h"

namespace velt::desktop {

RowFilter::RowFilter(QObject* parent) : QSortFilterProxyModel(parent) {
  setFilterRole(PaletteModel::searchRole);
  setFilterCaseSensitivity(Qt::CaseInsensitive);
  setRecursiveFilteringEnabled(true);
}

bool RowFilter::fits(const QModelIndex& source) const {
  for (QModelIndex above = source; above.isValid(); above = above.parent()) {
    if (QSortFilterProxyModel::filterAcceptsRow(above.row(), above.parent())) return true;
  }
  return false;
}

bool RowFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
  const QModelIndex source = sourceModel()->index(row, 0, parent);
  if (filterRegularExpression().pattern().isEmpty()) return !source.data(PaletteModel::isAsideRole).toBool();
  return fits(source);
}

}  // namespace velt::desktop
