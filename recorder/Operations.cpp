#include "recorder/Operations.h"

#include "recorder/Interfaces.h"
#include "recorder/Session.h"
#include "recorder/Values.h"

// Only a replay makes lists; a program that the recorder is loaded into may load its host later.
#pragma weak gpEmptyVectorData

namespace velt::recorder {

namespace {

json choiceNamesJson(const TqVector<CStdStr<wchar_t>>& names) {
  json written = json::array();
  for (const CStdStr<wchar_t>& name : names)
    written.push_back(textJson(name.c_str(), name.length()));
  return written;
}

json pairsJson(const TqVector<DispatchDynPropSourceNode>& pairs) {
  json written = json::array();
  for (const DispatchDynPropSourceNode& pair : pairs)
    written.push_back(
        {{"pDispatch", numberOf(pair.pDispatch)}, {"pDynamicProperty", numberOf(pair.pDynamicProperty)}});
  return written;
}

json realsJson(const TqVector<double>& reals) {
  json written = json::array();
  for (const double real : reals)
    written.push_back(realJson(real));
  return written;
}

CStdStr<wchar_t> ownText(const json& from) {
  return CStdStr<wchar_t>(textFrom(from));
}

}  // namespace

json selectionJson(const TqVector<VeltPropData*>& selection) {
  json written = json::array();
  for (const VeltPropData* const entry : selection) {
    if (entry == nullptr) {
      written.push_back(nullptr);
      continue;
    }
    written.push_back({{"entry", numberOf(entry)},
                       {"oldId", entry->oldId},
                       {"clsid", guidJson(entry->clsid)},
                       {"pUnknown", numberOf(entry->pUnknown)},
                       {"pDispatch", numberOf(entry->pDispatch)}});
  }
  return written;
}

void entryFrom(const json& from, VeltPropData& entry) {
  entry.oldId = from.at("oldId").get<long>();
  entry.clsid = guidFrom(from.at("clsid"));
  entry.pUnknown = objectFrom<IUnknown>(from.at("pUnknown"));
  entry.pDispatch = objectFrom<IDispatch>(from.at("pDispatch"));
}

json rowJson(const PROPINFO& row, bool withValue) {
  const auto text = [](const CStdStr<wchar_t>& value) { return textJson(value.c_str(), value.length()); };
  json choiceValues = json::array();
  for (const int value : row.choiceValues)
    choiceValues.push_back(value);
  return {{"clsid", guidJson(row.clsid)},
          {"pDispatch", numberOf(row.pDispatch)},
          {"dispId", row.dispId},
          {"name", text(row.name)},
          {"description", text(row.description)},
          {"displayName", text(row.displayName)},
          {"value", valueJson(row.value, withValue)},
          {"categoryId", row.categoryId},
          {"categoryName", text(row.categoryName)},
          {"isElement", row.isElement},
          {"elementCookie", row.elementCookie},
          {"hasChoices", row.hasChoices},
          {"choiceNames", choiceNamesJson(row.choiceNames)},
          {"choiceValues", std::move(choiceValues)},
          {"isWritable", row.isWritable},
          {"isEditable", row.isEditable},
          {"isVaries", row.isVaries},
          {"customType", row.customType},
          {"groupCount", row.groupCount},
          {"elementGrouping", row.elementGrouping},
          {"weight", row.weight},
          {"sortByCookie", row.sortByCookie},
          {"objectId", idJson(row.objectId)},
          {"valueType", row.valueType},
          {"hasValue", row.hasValue},
          {"pDynamicProperty", numberOf(row.pDynamicProperty)},
          {"dynSources", pairsJson(row.dynSources)},
          {"choiceReals", realsJson(row.choiceReals)}};
}

PROPINFO rowFrom(const json& from) {
  PROPINFO row;
  row.clsid = guidFrom(from.at("clsid"));
  row.pDispatch = objectFrom<IDispatch>(from.at("pDispatch"));
  row.dispId = from.at("dispId").get<DISPID>();
  row.name = ownText(from.at("name"));
  row.description = ownText(from.at("description"));
  row.displayName = ownText(from.at("displayName"));
  row.value = valueFrom(from.at("value"));
  row.categoryId = from.at("categoryId").get<std::int32_t>();
  row.categoryName = ownText(from.at("categoryName"));
  row.isElement = from.at("isElement").get<bool>();
  row.elementCookie = from.at("elementCookie").get<std::uint32_t>();
  row.hasChoices = from.at("hasChoices").get<bool>();
  for (const json& name : from.at("choiceNames"))
    row.choiceNames.push_back(ownText(name));
  for (const json& value : from.at("choiceValues"))
    row.choiceValues.push_back(value.get<int>());
  row.isWritable = from.at("isWritable").get<bool>();
  row.isEditable = from.at("isEditable").get<bool>();
  row.isVaries = from.at("isVaries").get<bool>();
  row.customType = from.at("customType").get<std::int32_t>();
  row.groupCount = from.at("groupCount").get<std::int64_t>();
  row.elementGrouping = from.at("elementGrouping").get<std::int16_t>();
  row.weight = from.at("weight").get<std::int32_t>();
  row.sortByCookie = from.at("sortByCookie").get<bool>();
  row.objectId = idFrom(from.at("objectId"));
  row.valueType = from.at("valueType").get<VARTYPE>();
  row.hasValue = from.at("hasValue").get<bool>();
  row.pDynamicProperty = objectFrom<IUnknown>(from.at("pDynamicProperty"));
  for (const json& pair : from.at("dynSources"))
    row.dynSources.push_back(DispatchDynPropSourceNode(objectFrom<IUnknown>(pair.at("pDispatch")),
                                                       objectFrom<IUnknown>(pair.at("pDynamicProperty"))));
  for (const json& real : from.at("choiceReals"))
    row.choiceReals.push_back(realFrom(real));
  return row;
}

json rowsJson(const TqVector<PROPINFO>& rows, bool withValues) {
  json written = json::array();
  for (const PROPINFO& row : rows)
    written.push_back(rowJson(row, withValues));
  return written;
}

TqVector<PROPINFO> rowsFrom(const json& rows) {
  TqVector<PROPINFO> list;
  for (const json& row : rows)
    list.push_back(rowFrom(row));
  return list;
}

json idsJson(const VkArray<VkDbObjectId>& ids, int from) {
  json written = json::array();
  for (int i = from; i < ids.length(); ++i)
    written.push_back(idJson(ids[i]));
  return written;
}

}  // namespace velt::recorder
