#pragma once

// The entities of a drawing as a list: handle, class, layer. Without those inside of block definitions.

#include <QAbstractTableModel>
#include <optional>
#include <unordered_map>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::desktop {

class EntityModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { handleColumn, classColumn, layerColumn, columnCount_ };

  using QAbstractTableModel::QAbstractTableModel;

  // The drawing must outlive the model or be replaced.
  void setDrawing(const database::Drawing* drawing);
  // To be called when values may have changed.
  void refresh();

  [[nodiscard]] VkDbObjectId entityAt(int row) const { return entities_[static_cast<std::size_t>(row)]; }
  // Nothing for an entity that is not in the list.
  [[nodiscard]] std::optional<int> rowOf(VkDbObjectId entity) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  std::vector<VkDbObjectId> entities_;
  // By the record of each.
  std::unordered_map<std::uint32_t, int> rows_;
};

}  // namespace velt::desktop
