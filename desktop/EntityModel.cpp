#include "desktop/EntityModel.h"

#include "tool/EntitySelection.h"

namespace velt::desktop {

void EntityModel::setDrawing(const database::Drawing* drawing) {
  beginResetModel();
  entities_.clear();
  rows_.clear();
  if (drawing != nullptr) {
    for (const VkDbObjectId entity : drawing->entities()) {
      const auto object = database::resolve(entity);
      if (!object || drawing->isErased(object->record) || tool::layoutName(entity).empty()) continue;
      rows_.emplace(object->record, static_cast<int>(entities_.size()));
      entities_.push_back(entity);
    }
  }
  endResetModel();
}

void EntityModel::refresh() {
  if (!entities_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount_ - 1));
}

std::optional<int> EntityModel::rowOf(VkDbObjectId entity) const {
  const auto object = database::resolve(entity);
  const auto found = object ? rows_.find(object->record) : rows_.end();
  return found != rows_.end() ? std::optional(found->second) : std::nullopt;
}

int EntityModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entities_.size());
}

int EntityModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columnCount_);
}

QVariant EntityModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) return {};
  const VkDbObjectId entity = entityAt(index.row());
  switch (index.column()) {
    case handleColumn:
      return QString::fromStdString(tool::handleText(entity));
    case classColumn:
      return QString::fromStdString(tool::className(entity));
    default:
      return QString::fromStdString(tool::layerName(entity));
  }
}

QVariant EntityModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  return section == handleColumn ? tr("Handle") : section == classColumn ? tr("Class") : tr("Layer");
}

}  // namespace velt::desktop
