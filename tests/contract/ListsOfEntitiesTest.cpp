// A query puts no list of records together for each entity. Here stands the same query over such lists beside it, made
// of the functions that the layer exports for each step: on whole drawings both answer the same and ask as much of the
// host.

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "embedded/database/Entity.h"
#include "embedded/platform/Ledger.h"
#include "propdata/VeltPropData.h"
#include "tests/contract/Query.h"
#include "tests/support/Narrow.h"
#include "tests/support/WholeDrawings.h"

namespace velt::tests {
namespace {

using database::Drawing;
using platform::Ledger;

// What was handed out and given back, by account.
using Traffic = std::map<std::string, std::pair<std::int64_t, std::int64_t>>;

Traffic trafficOf(const std::function<void()>& work) {
  const Ledger::Snapshot before = Ledger::snapshot();
  work();
  Traffic traffic;
  for (const auto& [name, count] : Ledger::snapshot()) {
    const auto earlier = before.find(name);
    traffic[name] = {count.handedOut - (earlier != before.end() ? earlier->second.handedOut : 0),
                     count.givenBack - (earlier != before.end() ? earlier->second.givenBack : 0)};
  }
  return traffic;
}

bool askByRecords(Query& query) {
  TqVector<VeltPropData*>& selection = query.selection();
  TqVector<PROPINFO>& result = query.rows;
  bool flag = false;
  const bool withDynamic = isAllEntitiesSameDynProp(selection);
  TqVector<TqVector<PROPINFO>> lists;
  TqVector<TqVector<PROPINFO>> dynamicLists;
  for (VeltPropData* const entry : std::as_const(selection)) {
    TqVector<PROPINFO> list;
    if (!GetSingleEntPropInfo(entry, list, query.errorText, flag)) return false;
    lists.append(list);
    if (!withDynamic) continue;
    TqVector<PROPINFO> dynamic;
    GetDynPropSourcesPropInfo(entry->pDispatch, dynamic);
    dynamicLists.append(dynamic);
  }
  if (!ExcuteIntersect(selection, lists, result, query.errorText, flag)) return false;
  if (withDynamic) {
    TqVector<PROPINFO> merged;
    if (!ExcuteIntersect(selection, dynamicLists, merged, query.errorText, flag)) return false;
    result.append(merged);
  }
  fillPropComboBox(result);
  freePropInfoVariantValue(lists);
  return true;
}

// Two objects in values are of one kind; which they are the merge has compared.
bool haveSameValue(const VARIANT& a, const VARIANT& b) {
  if (a.vt != b.vt) return false;
  if (a.vt == VT_BSTR) {
    return a.bstrVal == nullptr || b.bstrVal == nullptr ? a.bstrVal == b.bstrVal
                                                        : std::wstring(a.bstrVal) == b.bstrVal;
  }
  return a.vt == VT_DISPATCH || a.ullVal == b.ullVal;
}

template <class T>
bool haveSameElements(const TqVector<T>& a, const TqVector<T>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

// The name of the first field that differs.
std::string differenceOf(const PROPINFO& a, const PROPINFO& b) {
  if (!(a.clsid == b.clsid)) return "clsid";
  if (a.dispId != b.dispId) return "dispId";
  if (a.name != b.name) return "name";
  if (a.description != b.description) return "description";
  if (a.displayName != b.displayName) return "displayName";
  if (!haveSameValue(a.value, b.value)) return "value";
  if (a.categoryId != b.categoryId || a.categoryName != b.categoryName) return "category";
  if (a.isElement != b.isElement || a.elementCookie != b.elementCookie) return "element";
  if (a.hasChoices != b.hasChoices || !haveSameElements(a.choiceNames, b.choiceNames)
      || !haveSameElements(a.choiceValues, b.choiceValues)
      || !haveSameElements(a.choiceReals, b.choiceReals)) {
    return "choices";
  }
  if (a.isWritable != b.isWritable) return "isWritable";
  if (a.isEditable != b.isEditable) return "isEditable";
  if (a.isVaries != b.isVaries) return "isVaries";
  if (a.customType != b.customType) return "customType";
  if (a.groupCount != b.groupCount || a.elementGrouping != b.elementGrouping) return "groups";
  if (a.weight != b.weight || a.sortByCookie != b.sortByCookie) return "order";
  if (!(a.objectId == b.objectId)) return "objectId";
  if (a.valueType != b.valueType) return "valueType";
  if (a.hasValue != b.hasValue) return "hasValue";
  if (a.dynSources.length() != b.dynSources.length()) return "dynSources";
  return "";
}

// Answers the number of rows.
std::uint32_t compare(const Ids& selection, const std::string& what) {
  SCOPED_TRACE(what);
  Query warm(selection);  // classes that are met for the first time make what lasts as long as the process
  EXPECT_TRUE(warm.ask());
  Query byQuery(selection);
  Query byRecords(selection);
  const Traffic ofQuery = trafficOf([&] { EXPECT_TRUE(byQuery.ask()); });
  const Traffic ofRecords = trafficOf([&] { EXPECT_TRUE(askByRecords(byRecords)); });
  EXPECT_EQ(ofQuery, ofRecords);
  EXPECT_EQ(byQuery.errorText, byRecords.errorText);
  const TqVector<PROPINFO>& rows = byQuery.rows;
  const TqVector<PROPINFO>& expected = byRecords.rows;
  EXPECT_EQ(rows.length(), expected.length());
  EXPECT_EQ(rows.physicalLength(), expected.physicalLength());
  for (std::uint32_t i = 0; i < std::min(rows.length(), expected.length()); ++i)
    EXPECT_EQ(differenceOf(rows[i], expected[i]), "") << narrow(rows[i].name.c_str());
  return rows.length();
}

TEST(ListsOfEntities, AnswerWhatListsOfRecordsAnswerAndAskAsMuchOfTheHost) {
  std::uint32_t rows = 0;
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = Drawing::parse(whole.bytes, whole.name);
    std::map<std::string, Ids> selections;
    for (const VkDbObjectId id : drawing->entities()) {
      const database::Entity entity(*database::resolve(id));
      selections["all"].push_back(id);
      selections["type " + std::string(entity.dxfName())].push_back(id);
      selections["layer " + narrow(entity.layerName())].push_back(id);
    }
    for (const auto& [what, ids] : selections)
      rows += compare(ids, what);
  });
  EXPECT_GT(rows, 1000U);
}

}  // namespace
}  // namespace velt::tests
