#pragma once

// A selection over toys, as it stands after InitializePropData, without a drawing.

#include <list>

#include "propdata/VeltPropData.h"
#include "tests/support/ToyObject.h"

namespace velt::toys {

// A class id without a zero byte, different for each number: a class that no other test has met.
inline CLSID toyClass(std::uint32_t number) {
  return {0xA1B10000U | (1 + number / 255 % 255) << 8 | (1 + number % 255),
          0x2222,
          0x3333,
          {4, 5, 6, 7, 8, 9, 10, 11}};
}

// Every entry holds a reference to pUnknown and one to pDispatch of its toy, until someone (or the end of the
// selection) releases them.
class ToySelection {
 public:
  ToySelection() = default;
  ~ToySelection() {
    for (VeltPropData& entry : storage_) {
      if (entry.pUnknown != nullptr) entry.pUnknown->Release();
      if (entry.pDispatch != nullptr) entry.pDispatch->Release();
    }
  }
  ToySelection(const ToySelection&) = delete;
  ToySelection& operator=(const ToySelection&) = delete;

  VeltPropData& add(ToyObject& toy, long oldId, const CLSID& clsid) {
    toy.referenced(IID_IUnknown);
    toy.referenced(IID_IDispatch);
    return append({oldId, clsid, toy.unknown(), toy.dispatch()});
  }
  // As a caller makes an entry: the other fields are unspecified.
  VeltPropData& addBare(long oldId) { return append({oldId, GUID_NULL, nullptr, nullptr}); }
  void addNull() { entries.push_back(nullptr); }

  TqVector<VeltPropData*> entries;

 private:
  VeltPropData& append(const VeltPropData& entry) {
    storage_.push_back(entry);
    entries.push_back(&storage_.back());
    return storage_.back();
  }

  std::list<VeltPropData> storage_;
};

}  // namespace velt::toys
