#pragma once

// Property rows in a line: Row(L"StartX").dispId(4).inCategory(3, L"Geometry").value(r8(1.5)).of(line, 77).

#include "propdata/VeltPropData.h"
#include "tests/support/ToyObject.h"

namespace velt::toys {

class Row {
 public:
  // A readable, complete row: DISPID 1, category 1 "General", editable, label like the name, no value yet.
  explicit Row(const wchar_t* name) {
    row_.clsid = CLSID{0x11111111, 0x2222, 0x3333, {4, 5, 6, 7, 8, 9, 10, 11}};
    row_.dispId = 1;
    row_.customType = 0;
    row_.name = name;
    row_.displayName = name;
    row_.categoryId = 1;
    row_.categoryName = L"General";
    row_.isWritable = true;
    row_.isEditable = true;
  }

  operator PROPINFO() const { return row_; }

  // clang-format off
  Row& dispId(DISPID id) { row_.dispId = id; return *this; }
  Row& ofClass(const CLSID& clsid) { row_.clsid = clsid; return *this; }
  Row& of(const Toy& toy, long oldId = 0) { row_.pDispatch = toy.dispatch(); row_.objectId.setFromOldId(oldId); return *this; }
  Row& ofEntity(long oldId) { row_.objectId.setFromOldId(oldId); return *this; }
  Row& label(const wchar_t* text) { row_.displayName = text; return *this; }
  Row& inCategory(int id, const wchar_t* name) { row_.categoryId = id; row_.categoryName = name; return *this; }
  Row& value(const VARIANT& held) { row_.value = held; row_.valueType = held.vt; row_.hasValue = true; return *this; }
  Row& declared(VARTYPE type) { row_.valueType = type; row_.hasValue = false; return *this; }
  Row& readOnly() { row_.isWritable = false; row_.isEditable = false; return *this; }
  Row& editable(bool is) { row_.isEditable = is; return *this; }
  Row& varies() { row_.isVaries = true; return *this; }
  Row& customType(int code) { row_.customType = code; return *this; }
  Row& weight(int weight) { row_.weight = weight; return *this; }
  Row& element(std::uint32_t cookie, bool byCookie = true) { row_.isElement = true; row_.elementCookie = cookie; row_.sortByCookie = byCookie; return *this; }
  Row& grouping(std::int16_t number) { row_.elementGrouping = number; return *this; }
  Row& withChoices() { row_.hasChoices = true; return *this; }
  Row& choice(const wchar_t* name, int number) { row_.hasChoices = true; row_.choiceNames.push_back(name); row_.choiceValues.push_back(number); return *this; }
  Row& dynamic(IUnknown* property) { row_.dispId = dynamicPropertyDispId; row_.pDynamicProperty = property; return *this; }
  Row& source(IUnknown* entity, IUnknown* property) { row_.dynSources.push_back({entity, property}); return *this; }
  // clang-format on

 private:
  PROPINFO row_;
};

inline TqVector<PROPINFO> rows(std::initializer_list<PROPINFO> list) {
  TqVector<PROPINFO> made;
  for (const PROPINFO& row : list)
    made.push_back(row);
  return made;
}

inline TqVector<TqVector<PROPINFO>> lists(std::initializer_list<TqVector<PROPINFO>> perEntity) {
  TqVector<TqVector<PROPINFO>> made;
  for (const TqVector<PROPINFO>& list : perEntity)
    made.push_back(list);
  return made;
}

inline std::vector<std::string> names(const TqVector<PROPINFO>& list) {
  std::vector<std::string> made;
  for (const PROPINFO& row : list)
    made.push_back(narrow(row.name.c_str()));
  return made;
}

}  // namespace velt::toys
