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
    SharedRows& rows = *entity.rows;
    rows.clearValues(entity.member);
    if (entity.layout == nullptr) continue;
    // Each entity's elements stand by themselves, and the processor expects none of them.
    if (const std::size_t soon = k + 16; soon < count && entities_[soon].layout == entity.layout) {
      for (const ListLayout::Expansion& expansion : entity.layout->expansions())
        rows.columns()[expansion.row].fetchElements(entities_[soon].member);
    }
    clearElements(entity);
  }
}

void EntityLists::clearValuesRead() {
  for (const Entity& entity : entities_) {
    for (const SharedRows::Column& column : entity.rows->columns()) {
      if (!column.isReadToTheEnd(entity.member)) continue;
      VARIANT value = column.value(entity.member);
      VariantClear(&value);
    }
    clearElements(entity);
  }
}

void EntityLists::clearElements(const Entity& entity) {
  if (entity.layout == nullptr) return;
  for (const ListLayout::Expansion& expansion : entity.layout->expansions()) {
    VARIANT* const elements = entity.rows->columns()[expansion.row].elements(entity.member);
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
  haveMoved_ = false;
  if (isAlikeNoted_ && areStillAlike()) {
    for (Alike& alike : allAlike_)
      alike.moved = 0;
    return;
  }
  const std::size_t count = entities_.size();
  alike_.resize(count);
  allAlike_.clear();
  std::uint32_t number = 0;
  for (std::size_t k = 0; k < count; ++k) {
    ListLayout& itsLayout = layout(k);
    if (k < 2 || !areAlike(entities_[k], entities_[k - 1])) {
      number = numberOfAlike(entities_[k], itsLayout);
      itsLayout.alike = number;
    }
    allAlike_[number].last = k;
    ++allAlike_[number].count;
    alike_[k] = number;
  }
  isAlikeNoted_ = true;
}

// Nearly always: lists that were alike were all broken up into the same, or none of them was.
bool EntityLists::areStillAlike() const {
  return std::all_of(allAlike_.begin(), allAlike_.end(), [](const Alike& alike) {
    return alike.moved == 0 || (alike.moved == alike.count && alike.to != nullptr);
  });
}

void EntityLists::noteMoved(const Entity& entity) {
  haveMoved_ = true;
  if (!isAlikeNoted_) return;
  Alike& alike = allAlike_[alike_[static_cast<std::size_t>(&entity - entities_.data())]];
  if (alike.moved == 0) alike.to = entity.layout;
  // One that was broken up twice counts twice, and had two layouts.
  if (alike.to != entity.layout) alike.to = nullptr;
  ++alike.moved;
}

std::uint32_t EntityLists::numberOfAlike(const Entity& entity, const ListLayout& layout) {
  const std::uint32_t known = layout.alike;
  if (known != 0 && known < allAlike_.size() && areAlike(entity, entities_[allAlike_[known].last]))
    return known;
  allAlike_.emplace_back();
  return static_cast<std::uint32_t>(allAlike_.size() - 1);
}

DispatchDynPropSourceNode EntityLists::pair(std::size_t k, std::uint32_t place) const {
  const Entity& entity = entities_[k];
  return {entity.pDispatch, entity.rows->rows()[entity.layout->at(place).row].pDynamicProperty};
}

// Takes the elements that one entity answers for one row.
class EntityLists::Receiver {
 public:
  Receiver(EntityLists& lists, Entity& entity, const Here& here)
      : lists_(lists), entity_(entity), here_(here), row_(here.column->row()) {}

  void expect(std::uint32_t count) {
    if (count == 0) return;
    known_ = LayoutTable::known(*entity_.layout, here_.place);
    if (known_ != nullptr) {
      nextKnown_ = known_->elements.data();
      endOfKnown_ = nextKnown_ + known_->elements.size();
    }
    elements_ = lists_.memory_.arrayOf<VARIANT>(count);
    here_.column->setElements(entity_.member, elements_);
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
    return lists_.table_.extend(*entity_.layout, here_.place, name, row_, std::move(keys_));
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
  const Here& here_;
  const PROPINFO& row_;
  // What the row was broken up into in the list before, as far as it is the same; null once it is not.
  const ListLayout::Continuation* known_ = nullptr;
  const PropertyKey* nextKnown_ = nullptr;
  const PropertyKey* endOfKnown_ = nullptr;
  VARIANT* elements_ = nullptr;
  std::uint32_t count_ = 0;
  std::vector<PropertyKey> keys_;
};

Reading EntityLists::readNow(Entity& entity, const Here& here, KeyNumber name) {
  SharedRows::Column& column = *here.column;
  column.makeRoomForState();
  const PROPINFO& row = column.row();
  askForWeightOnly(row, entity.pDispatch);
  if (row.valueType == VT_VARIANT) return readExpanded(entity, here, name);
  const VARIANT& value =
      fetchValueOnly(row, entity.pDispatch, [&]() -> VARIANT& { return column.makeValue(entity.member); });
  column.setRead(entity.member);
  return {&value, 0};
}

Reading EntityLists::readExpanded(Entity& entity, const Here& here, KeyNumber name) {
  SharedRows::Column& column = *here.column;
  const PROPINFO& row = column.row();
  Receiver receiver(*this, entity, here);
  SHORT unusedGrouping = 0;
  long unusedCount = 0;
  CStdStr<wchar_t> discardedMessage;
  if (!expandProperty(entity.pDispatch, row.dispId, unusedGrouping, unusedCount, receiver, discardedMessage))
    fetchValueOnly(row, entity.pDispatch, [&]() -> VARIANT& { return column.makeValue(entity.member); });
  column.setRead(entity.member);
  if (receiver.count() == 0) return {&column.value(entity.member), 0};
  entity.layout = &receiver.layoutAfter(name);
  noteMoved(entity);
  return {nullptr, receiver.count()};
}

}  // namespace velt::propdata
