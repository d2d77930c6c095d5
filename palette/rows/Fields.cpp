// The fields of a row's record, as data.

#include <fmt/format.h>

#include "holders/InterfaceHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "palette/Palette.h"
#include "palette/support/HostCalls.h"
#include "palette/values/Variants.h"

namespace velt::palette {

namespace {

std::string guidText(const GUID& guid) {
  const std::uint8_t* const d = guid.Data4;
  return fmt::format("{:08X}-{:04X}-{:04X}-{:02X}{:02X}-{:02X}{:02X}{:02X}{:02X}{:02X}{:02X}", guid.Data1,
                     guid.Data2, guid.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
}

VkDbObjectId entityBehind(IUnknown* automationObject) {
  VkDbObjectId id;
  holders::InterfaceHolder<IVeltBaseObject> object;
  if (SUCCEEDED(holders::query(automationObject, IID_IVeltBaseObject, object))) object->GetObjectId(&id);
  return id;
}

std::vector<std::string> textsOf(const TqVector<CStdStr<wchar_t>>& texts) {
  std::vector<std::string> list;
  for (const CStdStr<wchar_t>& text : texts)
    list.push_back(toUtf8(text.str()));
  return list;
}

std::vector<DynamicSource> sourcesOf(const TqVector<DispatchDynPropSourceNode>& nodes) {
  std::vector<DynamicSource> sources;
  for (const DispatchDynPropSourceNode& node : nodes)
    sources.push_back({entityBehind(node.pDispatch), node.pDynamicProperty != nullptr});
  return sources;
}

template <class To, class From>
std::vector<To> numbersOf(const TqVector<From>& numbers) {
  return {numbers.begin(), numbers.end()};
}

PlainValue number(std::int64_t value) {
  return value;
}

PlainValue text(const CStdStr<wchar_t>& value) {
  return toUtf8(value.str());
}

PlainValue flag(bool value) {
  return value;
}

std::vector<Field> fieldsOf(const PROPINFO& row) {
  // clang-format off
  return {
      {"clsid",            PlainValue(guidText(row.clsid))},
      {"pDispatch",        entityBehind(row.pDispatch)},
      {"dispId",           number(row.dispId)},
      {"name",             text(row.name)},
      {"description",      text(row.description)},
      {"displayName",      text(row.displayName)},
      {"value",            plainValueOf(row.value)},
      {"categoryId",       number(row.categoryId)},
      {"categoryName",     text(row.categoryName)},
      {"isElement",        flag(row.isElement)},
      {"elementCookie",    number(row.elementCookie)},
      {"hasChoices",       flag(row.hasChoices)},
      {"choiceNames",      textsOf(row.choiceNames)},
      {"choiceValues",     numbersOf<std::int64_t>(row.choiceValues)},
      {"isWritable",       flag(row.isWritable)},
      {"isEditable",       flag(row.isEditable)},
      {"isVaries",         flag(row.isVaries)},
      {"customType",       number(row.customType)},
      {"groupCount",       number(row.groupCount)},
      {"elementGrouping",  number(row.elementGrouping)},
      {"weight",           number(row.weight)},
      {"sortByCookie",     flag(row.sortByCookie)},
      {"objectId",         row.objectId},
      {"valueType",        number(row.valueType)},
      {"hasValue",         flag(row.hasValue)},
      {"pDynamicProperty", flag(row.pDynamicProperty != nullptr)},
      {"dynSources",       sourcesOf(row.dynSources)},
      {"choiceReals",      numbersOf<double>(row.choiceReals)},
  };
  // clang-format on
}

}  // namespace

std::vector<Field> Row::fields() const {
  return orError([&] { return fieldsOf(*record_); });
}

}  // namespace velt::palette
