#include "bench/qt/Merges.h"

#include <algorithm>

#include <QByteArray>
#include <QHash>
#include <QMetaObject>
#include <QMetaProperty>
#include <QString>
#include <QVariant>

#include "bench/qt/LineObject.h"

namespace velt::bench {

namespace {

struct Row {
  QVariant value;
  // In how many objects it was found.
  std::size_t objects = 1;
  bool varies = false;
};

void add(Row& row, const QVariant& value) {
  ++row.objects;
  if (!row.varies && row.value != value) row.varies = true;
}

}  // namespace

Objects lineObjects(std::size_t count) {
  Objects objects;
  for (std::size_t i = 0; i < count; ++i)
    objects.push_back(std::make_unique<LineObject>());
  return objects;
}

std::size_t propertiesOf(const Objects& objects) {
  return static_cast<std::size_t>(objects.front()->metaObject()->propertyCount());
}

std::size_t mergeByIndex(const Objects& objects) {
  const QMetaObject* const kind = objects.front()->metaObject();
  std::vector<Row> rows;
  for (int i = 0; i < kind->propertyCount(); ++i)
    rows.push_back({.value = kind->property(i).read(objects.front().get())});
  for (std::size_t object = 1; object < objects.size(); ++object) {
    for (int i = 0; i < kind->propertyCount(); ++i)
      add(rows[static_cast<std::size_t>(i)], kind->property(i).read(objects[object].get()));
  }
  return static_cast<std::size_t>(
      std::count_if(rows.begin(), rows.end(), [](const Row& row) { return !row.varies; }));
}

std::size_t mergeByHash(const Objects& objects) {
  QHash<QString, Row> rows;
  for (const std::unique_ptr<QObject>& object : objects) {
    const QMetaObject* const kind = object->metaObject();
    for (int i = 0; i < kind->propertyCount(); ++i) {
      const QMetaProperty property = kind->property(i);
      const QString name = QString::fromLatin1(property.name());
      const QVariant value = property.read(object.get());
      const auto row = rows.find(name);
      if (row == rows.end()) {
        rows.insert(name, {.value = value});
      } else {
        add(*row, value);
      }
    }
  }
  return static_cast<std::size_t>(std::count_if(rows.begin(), rows.end(), [&](const Row& row) {
    return !row.varies && row.objects == objects.size();
  }));
}

std::size_t mergeByName(const Objects& objects) {
  const QMetaObject* const kind = objects.front()->metaObject();
  std::vector<std::pair<QByteArray, Row>> rows;
  for (int i = 0; i < kind->propertyCount(); ++i) {
    const QByteArray name = kind->property(i).name();
    rows.emplace_back(name, Row{.value = objects.front()->property(name.constData())});
  }
  for (std::size_t object = 1; object < objects.size(); ++object) {
    for (auto& [name, row] : rows) {
      const QVariant value = objects[object]->property(name.constData());
      if (value.isValid()) add(row, value);
    }
  }
  return static_cast<std::size_t>(std::count_if(rows.begin(), rows.end(), [&](const auto& row) {
    return !row.second.varies && row.second.objects == objects.size();
  }));
}

}  // namespace velt::bench
