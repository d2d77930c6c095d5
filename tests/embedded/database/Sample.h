#pragma once

// Small drawings for tests, written pair by pair.
//
//   auto drawing = Sample().layer("Walls", {{70, "4"}}).entity("LINE", {{5, "1A"}, {8, "Walls"}}).open();

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

#include "embedded/database/Drawing.h"
#include "embedded/database/EnhancedBlocks.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Layer.h"

namespace velt::database::test {

using Pairs = std::initializer_list<std::pair<int, std::string>>;

inline std::string text(Pairs pairs) {
  std::string written;
  for (const auto& [code, value] : pairs)
    written += std::to_string(code) + "\n" + value + "\n";
  return written;
}

inline std::string record(const std::string& type, Pairs pairs) {
  return text({{0, type}}) + text(pairs);
}

class Sample {
 public:
  Sample& version(const std::string& name) {
    header_ = text({{9, "$ACADVER"}, {1, name}});
    return *this;
  }
  Sample& header(const std::string& name, int code, const std::string& value) {
    header_ += text({{9, name}, {code, value}});
    return *this;
  }
  Sample& tableRecord(const std::string& type, Pairs pairs) {
    tables_[type] += record(type, pairs);
    return *this;
  }
  Sample& layer(const std::string& name, Pairs pairs = {}) {
    tables_["LAYER"] += record("LAYER", {{2, name}}) + text(pairs);
    return *this;
  }
  // `contents` is made of record().
  Sample& block(Pairs pairs, const std::string& contents = {}) {
    blocks_ += record("BLOCK", pairs) + contents + record("ENDBLK", {});
    return *this;
  }
  Sample& entity(const std::string& type, Pairs pairs = {}) {
    entities_ += record(type, pairs);
    return *this;
  }
  // Added after the entities: further pairs of the last one, or records that belong to it.
  Sample& append(const std::string& more) {
    entities_ += more;
    return *this;
  }
  Sample& object(const std::string& type, Pairs pairs) {
    objects_ += record(type, pairs);
    return *this;
  }

  [[nodiscard]] std::string bytes() const {
    std::string tables;
    for (const auto& [type, records] : tables_) {
      tables += record("TABLE", {{2, type}}) + records + record("ENDTAB", {});
    }
    return section("HEADER", header_) + section("TABLES", tables) + section("BLOCKS", blocks_)
           + section("ENTITIES", entities_) + section("OBJECTS", objects_) + record("EOF", {});
  }
  [[nodiscard]] std::unique_ptr<Drawing> open() const { return Drawing::parse(bytes(), "sample.dxf"); }

 private:
  static std::string section(const std::string& name, const std::string& contents) {
    if (contents.empty()) return {};
    return record("SECTION", {{2, name}}) + contents + record("ENDSEC", {});
  }

  std::string header_, blocks_, entities_, objects_;
  std::map<std::string, std::string> tables_;
};

// Asks a record for everything that entities and layers can be asked, whatever kind of record it is.
inline void readEverything(const Drawing& drawing, std::uint32_t record) {
  const Entity entity(drawing, record);
  const Layer layer(drawing, record);
  [[maybe_unused]] const auto answers = std::tuple(
      entity.dxfName(), entity.handle(), entity.isErased(), entity.layerName(), entity.layer(),
      entity.color(), entity.linetypeName(), entity.lineweight(), entity.owner(), entity.space(),
      entity.layoutName(), layer.name(), layer.color(), layer.linetypeName(), layer.isOff(), layer.isFrozen(),
      layer.isLocked(), drawing.members(record).count, originalBlock(drawing, record));
}

// The record of an entity, counted from 0 in file order.
inline std::uint32_t entityRecord(const Drawing& drawing, std::size_t index = 0) {
  return resolve(drawing.entities()[index])->record;
}

inline std::wstring nameOf(const TableEntry* entry) {
  return entry != nullptr ? entry->name : L"-";
}

}  // namespace velt::database::test
