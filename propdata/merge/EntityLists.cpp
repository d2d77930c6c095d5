#include "propdata/merge/EntityLists.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <string>
#include <utility>

#include "propdata/merge/Cores.h"
#include "propdata/typeinfo/ElementExpansion.h"
#include "propdata/typing/ValueFetching.h"

namespace velt::propdata {

SharedRows& EntityLists::sharedRows(const TqVector<PROPINFO>& list) {
  // Mostly an entity is of the same class as the one before it.
  if (lastRows_ != nullptr && lastRows_->are(list)) return *lastRows_;
  const PROPINFO* const block = list.begin();
  auto known = rowsOfBlock_.find(block);
  if (known == rowsOfBlock_.end())
    known = rowsOfBlock_.emplace(block, &rows_.emplace_back(list, memory_)).first;
  lastRows_ = known->second;
  return *lastRows_;
}

void EntityLists::add(SharedRows& rows, const VeltPropData& entry) {
  if (entities_.empty()) clsidOfFirst_ = entry.clsid;
  VkDbObjectId objectId;
  objectId.setFromOldId(entry.oldId);
  const auto further = static_cast<std::uint32_t>(furtherEditable_.size());
  const std::span<const std::uint64_t> editable = rows.editable();
  furtherEditable_.insert(furtherEditable_.end(), editable.begin() + 1, editable.end());
  entities_.push_back({&rows, nullptr, entry.pDispatch, objectId, editable.front(), rows.add(), further});
  isAlikeNoted_ = false;
}

void EntityLists::clearValues() {
  const std::size_t count = entities_.size();
  for (std::size_t k = 0; k < count; ++k) {
    const Entity& entity = entities_[k];
    const SharedRows& rows = *entity.rows;
    rows.visitValues(entity.member, [](const VARIANT& held) {
      VARIANT value = held;
      VariantClear(&value);
    });
    if (entity.layout == nullptr) continue;
    // Each entity's elements stand by themselves, and the processor expects none of them.
    if (const std::size_t soon = k + 16; soon < count && entities_[soon].layout == entity.layout) {
      for (const ListLayout::Expansion& expansion : entity.layout->expansions())
        rows.fetchElements(entities_[soon].member, expansion.row);
    }
    clearElements(entity);
  }
}

void EntityLists::clearValuesRead() {
  for (const Entity& entity : entities_) {
    const SharedRows& rows = *entity.rows;
    const auto length = static_cast<std::uint32_t>(rows.rows().size());
    for (std::uint32_t place = 0; place < length; ++place) {
      if (!rows.isReadToTheEnd(entity.member, place)) continue;
      VARIANT value = rows.value(entity.member, place);
      VariantClear(&value);
    }
    clearElements(entity);
  }
}

void EntityLists::clearElements(const Entity& entity) {
  if (entity.layout == nullptr) return;
  for (const ListLayout::Expansion& expansion : entity.layout->expansions()) {
    VARIANT* const elements = entity.rows->elements(entity.member, expansion.row);
    for (std::uint32_t i = 0; i < expansion.count(); ++i)
      VariantClear(&elements[i]);
  }
}

PROPINFO EntityLists::rowOfFirst(std::uint32_t place) const {
  const Entity& first = entities_.front();
  PROPINFO row(first.rows->rows()[place]);
  row.clsid = clsidOfFirst_;
  row.pDispatch = first.pDispatch;
  row.objectId = first.objectId;
  row.isEditable = isEditable(first, place);
  return row;
}

ListLayout& EntityLists::layoutOf(SharedRows& rows) {
  if (rows.layout == nullptr) {
    std::vector<KeyNumber> properties;
    properties.reserve(rows.rows().size());
    for (const PROPINFO& row : rows.rows())
      properties.push_back(keys_.numberOf(PropertyKey::of(row)));
    rows.layout = &table_.build(rows.rows(), std::move(properties));
  }
  return *rows.layout;
}

// Whether the search for a row finds the same in both, wherever it stops. What has one layout has the same rows.
inline bool EntityLists::areAlike(const Entity& a, const Entity& b) const {
  if (a.layout != b.layout || a.editable != b.editable) return false;
  const std::size_t words = a.rows->editable().size() - 1;
  return words == 0
         || std::equal(&furtherEditable_[a.furtherEditable], &furtherEditable_[a.furtherEditable] + words,
                       &furtherEditable_[b.furtherEditable]);
}

// Of the lists with one layout only the last one is looked at, so where they differ by turns in what is editable, some get a
// number of their own that are like earlier ones.
void EntityLists::noteAlikeAgain() {
  const std::size_t count = entities_.size();
  alike_.resize(count);
  lastOfAlike_.clear();
  const Entity* before = nullptr;
  std::uint32_t number = 0;
  for (std::size_t k = 0; k < count; ++k) {
    ListLayout& itsLayout = layout(k);
    const Entity& entity = entities_[k];
    if (before == nullptr || !areAlike(entity, *before)) {
      number = numberOfAlike(entity, itsLayout);
      itsLayout.alike = number;
    }
    before = &entity;
    lastOfAlike_[number] = static_cast<std::uint32_t>(k);
    alike_[k] = number;
  }
  isAlikeNoted_ = true;
}

std::uint32_t EntityLists::numberOfAlike(const Entity& entity, const ListLayout& layout) {
  if (layout.alike < lastOfAlike_.size() && areAlike(entity, entities_[lastOfAlike_[layout.alike]]))
    return layout.alike;
  lastOfAlike_.push_back(0);
  return static_cast<std::uint32_t>(lastOfAlike_.size() - 1);
}

DispatchDynPropSourceNode EntityLists::pair(std::size_t k, std::uint32_t place) const {
  const Entity& entity = entities_[k];
  return {entity.pDispatch, entity.rows->rows()[entity.layout->at(place).row].pDynamicProperty};
}

// Takes the elements that one entity answers for one row.
class EntityLists::Receiver {
 public:
  Receiver(EntityLists& lists, Entity& entity, std::uint32_t place)
      : lists_(lists), entity_(entity), place_(place), row_(entity.rows->rows()[place]) {}

  void expect(std::uint32_t count) {
    if (count == 0) return;
    known_ = LayoutTable::known(*entity_.layout, place_);
    if (known_ != nullptr) {
      nextKnown_ = known_->elements.data();
      endOfKnown_ = nextKnown_ + known_->elements.size();
    }
    elements_ = lists_.memory_.arrayOf<VARIANT>(count);
    entity_.rows->setElements(entity_.member, place_, elements_);
  }

  void addHeader() {
    VARIANT value{};
    value.vt = VT_I4;
    add(row_.isElement, row_.displayName.c_str(), value);
  }

  void beginElements() {}

  void addElement(const OLECHAR* label, DWORD /*cookie*/, const VARIANT& value) { add(true, label, value); }

  std::uint32_t count() const { return count_; }
  // The layout that the list has with the elements in it.
  ListLayout& layoutAfter(KeyNumber name) {
    if (known_ != nullptr && nextKnown_ == endOfKnown_) return *known_->layout;
    leaveKnown();
    return lists_.table_.extend(*entity_.layout, place_, name, row_, std::move(keys_));
  }

 private:
  // As long as the elements are the known ones no keys are made of them.
  void add(bool isElement, const OLECHAR* label, const VARIANT& value) {
    if (nextKnown_ != endOfKnown_ && nextKnown_->isElement == isElement
        && isSame(nextKnown_->displayName.str(), label != nullptr ? label : L"")) {
      ++nextKnown_;
    } else {
      addUnknown(isElement, label);
    }
    elements_[count_++] = value;
  }

  [[gnu::noinline]] void addUnknown(bool isElement, const OLECHAR* label) {
    leaveKnown();
    keys_.push_back({row_.hasChoices, isElement, CStdStr<wchar_t>(label)});
  }

  // Labels are short, and a call would take longer. Known ones came from labels, so they hold no null character.
  static bool isSame(const std::wstring& known, const OLECHAR* label) {
    return std::wcscmp(known.c_str(), label) == 0;
  }

  void leaveKnown() {
    if (known_ == nullptr) return;
    keys_.assign(known_->elements.data(), nextKnown_);
    known_ = nullptr;
    nextKnown_ = nullptr;
    endOfKnown_ = nullptr;
  }

  EntityLists& lists_;
  Entity& entity_;
  const std::uint32_t place_;
  const PROPINFO& row_;
  // What the row was broken up into in the list before, as far as it is the same; null once it is not.
  const ListLayout::Continuation* known_ = nullptr;
  const PropertyKey* nextKnown_ = nullptr;
  const PropertyKey* endOfKnown_ = nullptr;
  VARIANT* elements_ = nullptr;
  std::uint32_t count_ = 0;
  std::vector<PropertyKey> keys_;
};

Reading EntityLists::readNow(Entity& entity, std::uint32_t place, KeyNumber name) {
  SharedRows& rows = *entity.rows;
  rows.makeRoomForState(place);
  const PROPINFO& row = rows.rows()[place];
  askForWeightOnly(row, entity.pDispatch);
  if (row.valueType == VT_VARIANT) return readExpanded(entity, place, name);
  const VARIANT& value = fetchValueOnly(row, entity.pDispatch,
                                        [&]() -> VARIANT& { return rows.makeValue(entity.member, place); });
  rows.setRead(entity.member, place);
  return {&value, 0};
}

Reading EntityLists::readExpanded(Entity& entity, std::uint32_t place, KeyNumber name) {
  SharedRows& rows = *entity.rows;
  const PROPINFO& row = rows.rows()[place];
  Receiver receiver(*this, entity, place);
  SHORT unusedGrouping = 0;
  long unusedCount = 0;
  CStdStr<wchar_t> discardedMessage;
  if (!expandProperty(entity.pDispatch, row.dispId, unusedGrouping, unusedCount, receiver, discardedMessage))
    fetchValueOnly(row, entity.pDispatch, [&]() -> VARIANT& { return rows.makeValue(entity.member, place); });
  rows.setRead(entity.member, place);
  if (receiver.count() == 0) return {&rows.value(entity.member, place), 0};
  entity.layout = &receiver.layoutAfter(name);
  isAlikeNoted_ = false;
  return {nullptr, receiver.count()};
}

}  // namespace velt::propdata
