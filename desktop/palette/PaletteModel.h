#pragma once

// The rows of a session's selection as a tree: categories, their rows, and below a row that varies the values behind it.
// Of vertices and their like, which come in any number, somebody looks at one at a time: the row before them tells which,
// and is edited by a number.

#include <QAbstractItemModel>
#include <QHash>
#include <QPersistentModelIndex>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "desktop/palette/ValuePictures.h"
#include "desktop/session/Session.h"
#include "embedded/automation/geometry/Vector.h"

namespace velt::desktop {

class LongWork;

class PaletteModel : public QAbstractItemModel {
  Q_OBJECT

 public:
  enum Column { labelColumn, valueColumn, columnCount_ };
  enum Role {
    // What a filter looks at: the category, the label and the name.
    searchRole = Qt::UserRole,
    // What stands in the footer.
    helpRole,
    // Texts to choose from; empty where anything may be written.
    choicesRole,
    // What the choices look like: a QList<ValuePicture>.
    choicePicturesRole,
    // What the value looks like: a ValuePicture.
    pictureRole,
    // Whether the value is a text of several lines.
    hasLinesRole,
    // Of a row that tells which vertex is looked at: how many there are. Else 0.
    countRole,
    // Of such a row and of a vertex's coordinates: which one it is. Else 0.
    numberRole,
    // Whether it belongs to a vertex that nobody looks at.
    isAsideRole,
    // Whether it is the value of a row that cannot be edited.
    readOnlyRole,
    // Why the last value that was written to the row was refused; empty when it was not.
    remarkRole,
    // By which the tree finds an entry again after the rows have changed.
    keyRole
  };

  // What takes long is done through `work`, which outlives the model.
  explicit PaletteModel(LongWork& work, QObject* parent = nullptr);
  ~PaletteModel() override;

  // The session must outlive the model or be replaced; null shows nothing. Remarks are forgotten.
  void setSession(Session* session);
  // To be called when the session has other rows.
  void refresh();

  // The entities with the value at that place; empty for anything but the values below a row.
  [[nodiscard]] std::vector<VkDbObjectId> entitiesBehind(const QModelIndex& index) const;
  // The row at that place or above it; nothing for a category.
  [[nodiscard]] std::optional<std::size_t> rowAt(const QModelIndex& index) const;
  // Where the vertex lies to which the row at that place belongs; nothing for any other row.
  [[nodiscard]] std::optional<automation::Vector3> vertexAt(const QModelIndex& index) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  bool hasChildren(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;
  // Writes the text to all selected entities, as soon as control is back in the event loop; then written() or failed()
  // tells what became of it. False where nothing is to be written. The number of a vertex to look at is not written, and
  // counts at once.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

 Q_SIGNALS:
  void written(const palette::Report& report);
  void failed(const QString& message);

 private:
  struct Node;
  void write(const QPersistentModelIndex& place, const std::string& text, std::uint64_t shown);
  void remark(const QString& key, const palette::Report& report);
  // Whether the rows may be looked at now.
  [[nodiscard]] bool isReadable() const;
  [[nodiscard]] Node* nodeAt(const QModelIndex& index) const;
  [[nodiscard]] const palette::Row& rowOf(const Node& node) const;
  [[nodiscard]] QVariant rowData(const Node& node, int column, int role) const;
  [[nodiscard]] QVariant look(const Node& node, int role) const;
  [[nodiscard]] QString textOf(const Node& node) const;
  [[nodiscard]] bool hasLines(const palette::Row& row) const;
  [[nodiscard]] int lookedAt(const Node& node) const;
  bool lookAt(const QModelIndex& header, int number);

  LongWork& work_;
  Session* session_ = nullptr;
  std::unique_ptr<Node> root_;
  // Grows with every refresh, so that what was meant for other rows is not written to these.
  std::uint64_t refreshes_ = 0;
  // Why values were refused, by the key of the row.
  QHash<QString, QString> remarks_;
  // Which vertex is looked at, by the name of the property.
  QHash<QString, int> lookedAt_;
  // Made when somebody asks for a picture, and again after the drawing may have changed.
  mutable std::optional<ValuePictures> pictures_;
};

}  // namespace velt::desktop
