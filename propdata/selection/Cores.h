#pragma once

// Cores of this folder that others call. Each does what its exported function promises, which is told in the public
// header, and throws where the function would catch (errors/Guard.h).

#include <array>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include "propdata/VeltPropData.h"
#include "propdata/merge/EntityLists.h"

namespace velt::propdata {

// Of GetSingleEntPropInfo.
bool harvest(VeltPropData* entry, TqVector<PROPINFO>& list, CStdStr<wchar_t>& errorText);

// The same for the entities of a selection, of which no list is made but the cached ones. The host sees the same calls.
class SelectionHarvest {
 public:
  explicit SelectionHarvest(EntityLists& lists) : lists_(lists) {}

  // Adds the entity's list.
  bool add(VeltPropData* entry, CStdStr<wchar_t>& errorText);

 private:
  struct Class {
    GUID clsid;
    int hatchVariant;
    bool operator==(const Class&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Class& of) const;
  };
  // What was needed of a class so far: to make a key takes longer than to look a list up.
  struct Known {
    CLSIDMemString key;
    // Those with the list that was found last.
    SharedRows* rows = nullptr;
  };
  Known& knownOf(const Class& of);

  EntityLists& lists_;
  std::unordered_map<Class, Known, Hash> known_;
  // By some bits of the hash, one of the classes that have them: a selection is of few classes, which follow each other in
  // any order.
  std::array<std::pair<const Class, Known>*, 64> recent_{};
};

// Of getTqPROPINFOCache.
PropertyListCache& propertyListCache();

}  // namespace velt::propdata
