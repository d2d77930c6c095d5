#pragma once

// The lists of harvested entities, as the merge sees them: a list of each entity, without a record for any of its rows.
// Entities that share their rows are kept together (SharedRows), so that an entity has only what is its own.
//
// Nothing is owned: the entities' objects and the values belong to whom they belong in records.
// Use: add every entity, merge once, and give the values back.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory_resource>
#include <unordered_map>
#include <vector>

#include "propdata/VeltPropData.h"
#include "propdata/merge/Cores.h"
#include "propdata/merge/LayoutTable.h"
#include "propdata/merge/SharedRows.h"

namespace velt::propdata {

class EntityLists {
 public:
  EntityLists() = default;
  EntityLists(const EntityLists&) = delete;
  EntityLists& operator=(const EntityLists&) = delete;

  void reserve(std::uint32_t entities) { entities_.reserve(entities); }
  // Those with the block of this list. Valid for as long as the lists live.
  SharedRows& sharedRows(const TqVector<PROPINFO>& list);
  // Appends the list of an entity, whose rows are the shared ones with its own fields in them. Every row is as editable as
  // the shared one.
  void add(SharedRows& rows, const VeltPropData& entry);
  void setEditable(std::size_t k, std::uint32_t place, bool editable) {
    Entity& entity = entities_[k];
    std::uint64_t& word =
        place < 64 ? entity.editable : furtherEditable_[entity.furtherEditable + place / 64 - 1];
    const std::uint64_t bit = std::uint64_t{1} << place % 64;
    word = editable ? word | bit : word & ~bit;
  }

  // Gives back every value of every list, those of elements included, in the order of the lists.
  void clearValues();
  // The same after the host threw: gives back what was read, and leaves the value that was being read then.
  void clearValuesRead();

  // For the merge (Merge.h).
  KeyTable& keys() { return keys_; }
  std::size_t count() const { return entities_.size(); }
  std::uint32_t lengthOfFirst() const {
    return static_cast<std::uint32_t>(entities_.front().rows->rows().size());
  }
  PROPINFO rowOfFirst(std::uint32_t place) const;
  ListLayout& layout(std::size_t k) {
    Entity& entity = entities_[k];
    if (entity.layout == nullptr) entity.layout = &layoutOf(*entity.rows);
    return *entity.layout;
  }
  void noteAlike() {
    if (!isAlikeNoted_ || haveMoved_) noteAlikeAgain();
  }
  std::uint32_t alike(std::size_t k) const { return alike_[k]; }
  std::uint32_t alikeCount() const { return static_cast<std::uint32_t>(allAlike_.size()); }
  std::size_t lastOfAlike(std::uint32_t number) const { return allAlike_[number].last; }
  // An element is as editable as the row that was broken up.
  bool isEditable(std::size_t k, const ListLayout::Spot& spot) const {
    return isEditable(entities_[k], spot.row);
  }
  DispatchDynPropSourceNode pair(std::size_t k, std::uint32_t place) const;
  struct Here {
    SharedRows::Column* column;
    std::uint32_t place;
    KeyNumber property;
  };
  Here at(std::size_t k, const ListLayout::Spot& spot) {
    return {&entities_[k].rows->columns()[spot.row], spot.row, spot.property};
  }
  Reading read(std::size_t k, const Here& here, KeyNumber name) {
    Entity& entity = entities_[k];
    if (here.column->isRead(entity.member)) return {&here.column->value(entity.member), 0};
    return readNow(entity, here, name);
  }
  Stop compare(PROPINFO& row, KeyNumber property, std::size_t k, const Here& here, const VARIANT& value,
               CStdStr<wchar_t>& errorText) const {
    if (here.property != property) return Stop::GoOn;
    return compareSameProperty(row, k, value, errorText);
  }
  Stop compareElement(PROPINFO& row, KeyNumber property, std::size_t k, const Here& here,
                      const ListLayout::Spot& element, CStdStr<wchar_t>& errorText) const {
    if (element.property != property) return Stop::GoOn;
    const VARIANT& value = here.column->elements(entities_[k].member)[element.element];
    return compareSameProperty(row, k, value, errorText);
  }

 private:
  class Receiver;

  struct Entity {
    SharedRows* rows;
    // Null until the first search in the list.
    ListLayout* layout;
    IDispatch* pDispatch;
    VkDbObjectId objectId;
    // Which of its first 64 rows are editable, a bit for each: what the merge looks at whenever it stops at an entity
    // stands beside what it looks at before.
    std::uint64_t editable;
    SharedRows::Member member;
    // Where the words of the others begin.
    std::uint32_t furtherEditable;
  };

  bool isEditable(const Entity& entity, std::uint32_t place) const {
    const std::uint64_t word =
        place < 64 ? entity.editable : furtherEditable_[entity.furtherEditable + place / 64 - 1];
    return (word >> place % 64 & 1) != 0;
  }
  Stop compareSameProperty(PROPINFO& row, std::size_t k, const VARIANT& value,
                           CStdStr<wchar_t>& errorText) const {
    return row.isElement ? propdata::compareElement(row, entities_[k].pDispatch, value, errorText)
                         : compareValue(row, entities_[k].objectId, value);
  }
  ListLayout& layoutOf(SharedRows& rows);
  bool areAlike(const Entity& a, const Entity& b) const;
  void noteAlikeAgain();
  bool areStillAlike() const;
  // A list has another layout from here on.
  void noteMoved(const Entity& entity);
  std::uint32_t numberOfAlike(const Entity& entity, const ListLayout& layout);
  Reading readNow(Entity& entity, const Here& here, KeyNumber name);
  // Of a row that may break up.
  Reading readExpanded(Entity& entity, const Here& here, KeyNumber name);
  void clearElements(const Entity& entity);

  QueryMemory memory_;
  std::pmr::vector<Entity> entities_{&memory_.resource()};
  std::vector<std::uint64_t> furtherEditable_;
  // All lists of one number.
  struct Alike {
    std::size_t last = 0;
    std::size_t count = 0;
    // How many of them got other layouts since.
    std::size_t moved = 0;
    // Which one these got; null when it was not one for all.
    ListLayout* to = nullptr;
  };
  // The number of each list. The first one has a number for itself: it is what is searched for, and never changes.
  std::pmr::vector<std::uint32_t> alike_{&memory_.resource()};
  std::vector<Alike> allAlike_;
  // Whether they are those of the lists as they were before some of them got other layouts.
  bool isAlikeNoted_ = false;
  bool haveMoved_ = false;
  GUID clsidOfFirst_{};
  std::deque<SharedRows> rows_;
  // By the first record of the block.
  std::unordered_map<const PROPINFO*, SharedRows*> rowsOfBlock_;
  SharedRows* lastRows_ = nullptr;
  KeyTable keys_;
  LayoutTable table_{keys_};
};

}  // namespace velt::propdata
