#include "desktop/palette/PaletteModel.h"

#include <QApplication>
#include <QFont>
#include <QStyle>
#include <algorithm>
#include <string>
#include <unordered_map>

#include "desktop/LongWork.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "tool/EntitySelection.h"
#include "tool/ReadOnlyRows.h"

namespace velt::desktop {

struct PaletteModel::Node {
  Node* parent = nullptr;
  int place = 0;
  // The name of a category, or the label of a row.
  QString label{};
  // Of a row and of the values below it: its place among the session's rows.
  std::optional<std::size_t> row{};
  // Of a value.
  std::optional<palette::ValueGroup> group{};
  // Of vertices and their like, and of the row before them: the name of the property.
  QString series{};
  // Of a vertex's coordinate: which one, from 1.
  int number = 0;
  // Of the row before them: how many there are.
  int count = 0;
  bool isFetched = false;
  std::vector<std::unique_ptr<Node>> children{};

  Node& add() {
    children.push_back(std::make_unique<Node>());
    children.back()->parent = this;
    children.back()->place = static_cast<int>(children.size()) - 1;
    return *children.back();
  }
};

namespace {

QString fromUtf8(const std::string& text) {
  return QString::fromStdString(text);
}

// One of several elements of the same label, as the command line names it: Vertex[2].X.
QString numbered(const QString& label, int number) {
  const qsizetype space = label.lastIndexOf(' ');
  if (space < 0) return QString("%1#%2").arg(label).arg(number);
  return QString("%1[%2].%3").arg(label.left(space)).arg(number).arg(label.mid(space + 1));
}

QStringList choicesOf(const palette::Row& row) {
  QStringList texts;
  for (const palette::Choice& choice : row.choices())
    texts.append(fromUtf8(choice.label));
  if (texts.isEmpty() && std::holds_alternative<bool>(row.plain())) texts = {"Yes", "No"};
  return texts;
}

// Formatted texts have a code for the end of a line, and for a backslash that is none.
QString withLines(const QString& coded) {
  QString text;
  for (qsizetype i = 0; i < coded.size(); ++i) {
    const QStringView next = QStringView(coded).mid(i, 2);
    if (next == u"\\\\" || next == u"\\P") ++i;
    if (next == u"\\P") {
      text += '\n';
    } else if (next == u"\\\\") {
      text += next;
    } else {
      text += coded[i];
    }
  }
  return text;
}

QString withoutLines(QString text) {
  return text.replace("\r\n", "\n").replace('\n', "\\P");
}

bool isVertexHeader(const palette::Row& row) {
  return row.kind() == PropertyKind::vertex && !row.record().isElement && row.record().elementGrouping != 0;
}

// Whose coordinates are those of its own plane.
bool isFlat(VkDbObjectId entity) {
  const std::string kind = tool::className(entity);
  return kind == "LWPolyline" || kind == "Polyline";
}

// By which a row is found again among those of the next query.
QString keyOf(const palette::Row& row, const QString& label) {
  return fromUtf8(row.name()) + '/' + label;
}

}  // namespace

PaletteModel::PaletteModel(LongWork& work, QObject* parent)
    : QAbstractItemModel(parent), work_(work), root_(std::make_unique<Node>()) {}
PaletteModel::~PaletteModel() = default;

void PaletteModel::setSession(Session* session) {
  session_ = session;
  remarks_.clear();
  lookedAt_.clear();
  refresh();
}

void PaletteModel::refresh() {
  beginResetModel();
  ++refreshes_;
  root_ = std::make_unique<Node>();
  pictures_.reset();
  if (session_ != nullptr) {
    const std::span<const palette::Row> rows = session_->rows();
    std::unordered_map<const PROPINFO*, std::size_t> places;
    for (std::size_t i = 0; i < rows.size(); ++i)
      places.emplace(&rows[i].record(), i);
    for (const palette::Category& category : palette::byCategory(rows)) {
      Node& group = root_->add();
      group.label = category.name.empty() ? tr("(no category)") : fromUtf8(category.name);
      QHash<QString, int> elements;
      std::unordered_map<std::string, Node*> headers;
      for (const palette::Row& row : category.rows) {
        Node& node = group.add();
        node.row = places.at(&row.record());
        node.label = fromUtf8(row.label());
        if (row.record().elementGrouping == 0) continue;
        if (isVertexHeader(row)) {
          node.series = fromUtf8(row.name());
          headers[row.name()] = &node;
        } else if (row.record().isElement) {
          const int number = ++elements[node.label];
          node.label = numbered(node.label, number);
          const auto header = headers.find(row.name());
          if (header == headers.end()) continue;
          node.series = header->second->series;
          node.number = number;
          header->second->count = std::max(header->second->count, number);
        }
      }
      // Of another polyline, perhaps.
      for (const auto& [name, header] : headers) {
        if (lookedAt(*header) > header->count) lookedAt_.remove(header->series);
      }
    }
  }
  endResetModel();
}

bool PaletteModel::isReadable() const {
  return session_ != nullptr && !session_->isAtWork();
}

PaletteModel::Node* PaletteModel::nodeAt(const QModelIndex& index) const {
  return index.isValid() ? static_cast<Node*>(index.internalPointer()) : root_.get();
}

const palette::Row& PaletteModel::rowOf(const Node& node) const {
  return session_->rows()[*node.row];
}

std::vector<VkDbObjectId> PaletteModel::entitiesBehind(const QModelIndex& index) const {
  const Node& node = *nodeAt(index);
  std::vector<VkDbObjectId> entities;
  if (!node.group) return entities;
  for (const std::size_t entity : node.group->entities)
    entities.push_back(session_->selected()[entity]);
  return entities;
}

std::optional<std::size_t> PaletteModel::rowAt(const QModelIndex& index) const {
  return nodeAt(index)->row;
}

std::optional<automation::Vector3> PaletteModel::vertexAt(const QModelIndex& index) const {
  const Node& node = *nodeAt(index);
  if (!isReadable() || node.series.isEmpty() || session_->selected().size() != 1) return std::nullopt;
  const int number = node.number != 0 ? node.number : lookedAt(node);
  automation::Vector3 place;
  bool isPlace = false;
  for (const auto& other : node.parent->children) {
    if (other->series != node.series || other->number != number) continue;
    const std::optional<double> value = palette::numberOf(rowOf(*other).plain());
    if (!value) continue;
    isPlace = true;
    if (other->label.endsWith(".X")) place.x = *value;
    if (other->label.endsWith(".Y")) place.y = *value;
    if (other->label.endsWith(".Z")) place.z = *value;
  }
  if (!isPlace) return std::nullopt;
  const VkDbObjectId entity = session_->selected().front();
  const auto object = database::resolve(entity);
  if (!object || !isFlat(entity)) return place;
  for (const palette::Row& row : palette::rowsNamed(session_->rows(), "Elevation"))
    place.z = palette::numberOf(row.plain()).value_or(0);
  const database::Lens lens(session_->drawing(), object->record);
  return automation::frameOf(lens, dxf::anySubclass).toWorld(place);
}

// --- the shape of the tree ----------------------------------------------------------------------------------

QModelIndex PaletteModel::index(int row, int column, const QModelIndex& parent) const {
  const Node& above = *nodeAt(parent);
  if (row < 0 || column < 0 || column >= columnCount_ || row >= static_cast<int>(above.children.size()))
    return {};
  return createIndex(row, column, above.children[static_cast<std::size_t>(row)].get());
}

QModelIndex PaletteModel::parent(const QModelIndex& child) const {
  Node* const above = child.isValid() ? nodeAt(child)->parent : nullptr;
  return above == nullptr || above == root_.get() ? QModelIndex() : createIndex(above->place, 0, above);
}

int PaletteModel::rowCount(const QModelIndex& parent) const {
  return parent.column() > 0 ? 0 : static_cast<int>(nodeAt(parent)->children.size());
}

int PaletteModel::columnCount(const QModelIndex&) const {
  return columnCount_;
}

bool PaletteModel::hasChildren(const QModelIndex& parent) const {
  return rowCount(parent) > 0 || canFetchMore(parent);
}

// The values behind a row are asked for when somebody opens it: it asks every entity once more.
bool PaletteModel::canFetchMore(const QModelIndex& parent) const {
  const Node& node = *nodeAt(parent);
  return isReadable() && parent.column() <= 0 && node.row && !node.group && !node.isFetched
         && rowOf(node).isVarying();
}

void PaletteModel::fetchMore(const QModelIndex& parent) {
  if (!canFetchMore(parent) || work_.isRunning()) return;
  Node& node = *nodeAt(parent);
  node.isFetched = true;
  try {
    std::vector<palette::ValueGroup> groups;
    work_.run(tr("Reading the values"), LongWork::Kind::goesOn,
              [&] { groups = session_->selection()->valueGroups(rowOf(node), session_->numberStyle()); });
    if (groups.empty()) return;
    beginInsertRows(parent, 0, static_cast<int>(groups.size()) - 1);
    for (palette::ValueGroup& group : groups) {
      Node& value = node.add();
      value.row = node.row;
      value.group = std::move(group);
    }
    endInsertRows();
  } catch (const palette::Error& error) {
    // To be tried again.
    node.isFetched = false;
    Q_EMIT failed(fromUtf8(error.what()));
  }
}

// --- what it shows ------------------------------------------------------------------------------------------

QVariant PaletteModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !isReadable()) return {};
  const Node& node = *nodeAt(index);
  if (node.row) return rowData(node, index.column(), role);
  switch (role) {
    case Qt::DisplayRole:
      return index.column() == labelColumn ? QVariant(node.label) : QVariant();
    case Qt::FontRole: {
      QFont font = QApplication::font();
      font.setBold(true);
      return font;
    }
    case searchRole:
    case keyRole:
    case Qt::AccessibleTextRole:
      return node.label;
    default:
      return {};
  }
}

QString PaletteModel::textOf(const Node& node) const {
  if (node.group) return fromUtf8(node.group->text);
  if (node.count > 0) return tr("%1 of %2").arg(lookedAt(node)).arg(node.count);
  return fromUtf8(rowOf(node).text(session_->numberStyle()));
}

// Such a text has a code for the end of a line, or could have one.
bool PaletteModel::hasLines(const palette::Row& row) const {
  if (row.kind() != PropertyKind::text || row.hasChoices()) return false;
  const palette::PlainValue value = row.plain();
  const auto* const text = std::get_if<std::string>(&value);
  if (text != nullptr && !row.isVarying() && withLines(fromUtf8(*text)).contains('\n')) return true;
  return row.name() == "TextString"
         && std::ranges::all_of(session_->selected(),
                                [](const VkDbObjectId entity) { return tool::className(entity) == "MText"; });
}

QVariant PaletteModel::look(const Node& node, int role) const {
  const palette::Row& row = rowOf(node);
  if (!pictures_) pictures_.emplace(session_->drawing());
  if (role == pictureRole) return QVariant::fromValue(pictures_->of(row.kind(), textOf(node)));
  QList<ValuePicture> pictures;
  for (const QString& choice : choicesOf(row))
    pictures.append(pictures_->of(row.kind(), choice));
  return QVariant::fromValue(pictures);
}

QVariant PaletteModel::rowData(const Node& node, int column, int role) const {
  const palette::Row& row = rowOf(node);
  const QString text = textOf(node);
  switch (role) {
    case Qt::DisplayRole:
      if (node.group)
        return column == labelColumn
                   ? tr("%n of them", nullptr, static_cast<int>(node.group->entities.size()))
                   : text;
      return column == labelColumn ? node.label : text;
    case Qt::EditRole:
      if (column != valueColumn || row.isVarying()) return QString();
      if (hasLines(row)) return withLines(fromUtf8(std::get<std::string>(row.plain())));
      return text;
    case Qt::DecorationRole:
      if (column == valueColumn || node.group || !remarks_.contains(keyOf(row, node.label))) return {};
      return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
    case helpRole: {
      QStringList help;
      const QString remark = remarks_.value(keyOf(row, node.label));
      if (role != helpRole && !remark.isEmpty()) help.append(tr("Refused: %1").arg(remark));
      if (!row.help().empty()) help.append(fromUtf8(row.help()));
      if (!row.isEditable()) {
        const QString reason = fromUtf8(tool::readOnlyReason(row));
        help.append(reason.isEmpty() ? tr("Read-only.") : tr("Read-only: %1.").arg(reason));
      }
      return help.join('\n');
    }
    case readOnlyRole:
      return !row.isEditable() && !node.group && node.count == 0;
    case remarkRole:
      return remarks_.value(keyOf(row, node.label));
    case Qt::AccessibleTextRole:
      return column == labelColumn ? node.label : node.label + ": " + text;
    case searchRole:
      return node.parent->label + ' ' + node.label + ' ' + fromUtf8(row.label()) + ' ' + fromUtf8(row.name());
    case choicesRole:
      return choicesOf(row);
    case choicePicturesRole:
    case pictureRole:
      return look(node, role);
    case hasLinesRole:
      return hasLines(row);
    case countRole:
      return node.count;
    case numberRole:
      return node.count > 0 ? lookedAt(node) : node.number;
    case isAsideRole:
      return node.number != 0 && node.number != lookedAt(node);
    case keyRole:
      return keyOf(row, node.label);
    default:
      return {};
  }
}

QVariant PaletteModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  return section == labelColumn ? tr("Property") : tr("Value");
}

Qt::ItemFlags PaletteModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Node& node = *nodeAt(index);
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (node.row && !node.group && index.column() == valueColumn && isReadable()) {
    const palette::Row& row = rowOf(node);
    if (node.count > 0 || (row.isEditable() && row.takesText())) flags |= Qt::ItemIsEditable;
  }
  return flags;
}

bool PaletteModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
  const Node& node = *nodeAt(index);
  if (node.count > 0) return lookAt(index, value.toInt());
  const palette::Row& row = rowOf(node);
  // Whoever leaves a field as it is has not written anything.
  const QString given = value.toString();
  if (given == index.data(Qt::EditRole).toString()) return false;
  const std::string text = (hasLines(row) ? withoutLines(given) : given).toStdString();
  // When the editor has closed: the rows that it belongs to are replaced.
  QMetaObject::invokeMethod(
      this,
      [this, place = QPersistentModelIndex(index), text, shown = refreshes_] { write(place, text, shown); },
      Qt::QueuedConnection);
  return true;
}

int PaletteModel::lookedAt(const Node& node) const {
  return lookedAt_.value(node.series, 1);
}

bool PaletteModel::lookAt(const QModelIndex& header, int number) {
  const Node& node = *nodeAt(header);
  number = std::clamp(number, 1, node.count);
  const int before = lookedAt(node);
  if (number == before) return false;
  lookedAt_[node.series] = number;
  Q_EMIT dataChanged(header.siblingAtColumn(labelColumn), header.siblingAtColumn(valueColumn));
  for (const auto& other : node.parent->children) {
    if (other->series != node.series || (other->number != number && other->number != before)) continue;
    Q_EMIT dataChanged(createIndex(other->place, labelColumn, other.get()),
                       createIndex(other->place, valueColumn, other.get()));
  }
  return true;
}

void PaletteModel::write(const QPersistentModelIndex& place, const std::string& text, std::uint64_t shown) {
  // Something else has been selected since, or is just now.
  if (shown != refreshes_ || work_.isRunning()) return;
  const Node& node = *nodeAt(place);
  const QString key = keyOf(rowOf(node), node.label);
  try {
    palette::Report report;
    work_.run(tr("Writing"), LongWork::Kind::goesOn,
              [&, row = *node.row] { report = session_->write(row, text); });
    remark(key, report);
    refresh();
    Q_EMIT written(report);
  } catch (const palette::Error& error) {
    remarks_[key] = fromUtf8(error.what());
    Q_EMIT dataChanged(place.sibling(place.row(), labelColumn), place);
    Q_EMIT failed(fromUtf8(error.what()));
  }
}

void PaletteModel::remark(const QString& key, const palette::Report& report) {
  if (report.reasons.empty()) {
    remarks_.remove(key);
    return;
  }
  const std::string& reason = report.reasons.begin()->second;
  remarks_[key] = reason.empty() ? tr("the host gives no reason") : fromUtf8(reason);
}

}  // namespace velt::desktop
