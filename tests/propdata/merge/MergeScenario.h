#pragma once

// Random selections for the merge: what each entity's object answers, which rows stand in its list, which host
// calls fail. Few distinct keys, so that rows collide. A scenario is plain data, from which any number of
// equal, separate worlds of toys are built, one after the other.

#include <rapidcheck.h>

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "errors/LoadErrString.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "tests/propdata/merge/ReferenceMerge.h"
#include "tests/support/Row.h"
#include "tests/support/ToyColor.h"
#include "tests/support/ToyDynamicProperty.h"

namespace velt::tests {

// --- what is generated ---------------------------------------------------------------------------------------

inline constexpr const wchar_t* someNames[] = {L"Start", L"End", L""};
inline constexpr DISPID someDispIds[] = {1, 2, 3, dynamicPropertyDispId, 1301};

struct PlannedElement {
  int cookie, label, type, value;
};

struct PlannedProperty {
  bool expands;
  int grouping;  // 0: the object does not group it
  int type, value;
  std::vector<PlannedElement> elements;
};

struct PlannedRow {
  int name, label, dispId;
  int categoryId, categoryName;
  bool isEditable, hasChoices, isElement, isVaries, hasValue;
  int grouping, type, value, customType, clsid, sources;
};

struct PlannedEntity {
  bool withoutExpander, withoutWeights;
  bool sharesListBefore;    // the list of the entity before, in the same block
  bool unknownNames;        // GetIDsOfNames knows no name
  bool hasOwnStrings;       // equal to those of other entities, but not shared with them
  bool hasFirstProperties;  // the properties of the first entity instead of its own
  int hasFirstRows;         // the rows of the first entity too: 1 after its own, 2 before them
  std::vector<PlannedProperty> properties;  // one per DISPID
  std::vector<PlannedRow> rows;
};

struct PlannedFault {
  int call, nth;
};

struct Scenario {
  std::vector<PlannedEntity> entities;
  std::vector<PlannedFault> faults;
  int failedCall;  // 0: none
};

inline constexpr const char* callsThatFail[] = {"GetElementStrings",
                                                "GetIDsOfNames",
                                                "QueryInterface(IOPMPropertyExpander)",
                                                "GetElementValue",
                                                "GetElementGrouping",
                                                "GetElementValue(1",
                                                "Invoke",
                                                "GetPropertyWeight",
                                                "QueryInterface(IVeltVkCmColor)"};

inline std::ostream& operator<<(std::ostream& out, const PlannedElement& e) {
  return out << "{cookie " << e.cookie << " label " << e.label << " type " << e.type << " = " << e.value
             << "}";
}
inline std::ostream& operator<<(std::ostream& out, const PlannedProperty& p) {
  out << (p.expands ? "expands" : "plain") << " grouping " << p.grouping << " type " << p.type << " = "
      << p.value;
  for (const PlannedElement& e : p.elements)
    out << " " << e;
  return out;
}
inline std::ostream& operator<<(std::ostream& out, const PlannedRow& r) {
  out << "name " << r.name << " label " << r.label << " dispId " << someDispIds[r.dispId] << " category "
      << r.categoryId << "/" << r.categoryName << " type " << r.type << " = " << r.value;
  if (!r.isEditable) out << " read-only";
  if (r.hasChoices) out << " choices";
  if (r.isElement) out << " element";
  if (r.isVaries) out << " varies";
  if (r.hasValue) out << " read";
  if (r.grouping != 0) out << " grouping " << r.grouping;
  return out << " customType " << r.customType << " clsid " << r.clsid << " sources " << r.sources;
}
inline std::ostream& operator<<(std::ostream& out, const PlannedEntity& e) {
  out << "entity";
  if (e.withoutExpander) out << " without expander";
  if (e.withoutWeights) out << " without weights";
  if (e.sharesListBefore) out << " shares the list before";
  if (e.unknownNames) out << " knows no names";
  if (e.hasOwnStrings) out << " has strings of its own";
  if (e.hasFirstProperties) out << " has the first one's properties";
  if (e.hasFirstRows != 0) out << " has the first one's rows " << (e.hasFirstRows == 1 ? "after" : "before");
  for (const PlannedProperty& p : e.properties)
    out << "\n    property " << p;
  for (const PlannedRow& r : e.rows)
    out << "\n    row " << r;
  return out;
}
inline std::ostream& operator<<(std::ostream& out, const Scenario& s) {
  for (const PlannedEntity& e : s.entities)
    out << "\n  " << e;
  for (const PlannedFault& f : s.faults)
    out << "\n  fails: call " << f.nth << " of " << callsThatFail[f.call];
  return out << "\n  fails: call number " << s.failedCall << "\n";
}

inline rc::Gen<bool> rarely(std::size_t oneIn) {
  return rc::gen::weightedElement<bool>({{oneIn - 1, false}, {1, true}});
}

template <class T>
rc::Gen<std::vector<T>> upTo(int most, const rc::Gen<T>& element) {
  return rc::gen::mapcat(rc::gen::inRange(0, most + 1), [element](int count) {
    return rc::gen::container<std::vector<T>>(static_cast<std::size_t>(count), element);
  });
}

inline rc::Gen<int> someType() {
  // Index into the types of MergeWorld::valueOf; 0 is VT_I4, 1 VT_VARIANT.
  return rc::gen::weightedElement<int>({{6, 0}, {8, 1}, {2, 2}, {2, 3}, {1, 4}, {1, 5}});
}

inline rc::Gen<PlannedElement> someElement() {
  return rc::gen::build<PlannedElement>(
      rc::gen::set(&PlannedElement::cookie, rc::gen::inRange(1, 5)),
      rc::gen::set(&PlannedElement::label, rc::gen::inRange(0, 3)),
      rc::gen::set(&PlannedElement::type, rc::gen::weightedElement<int>({{6, 0}, {1, 2}, {1, 3}})),
      rc::gen::set(&PlannedElement::value, rc::gen::inRange(0, 2)));
}

inline rc::Gen<PlannedProperty> someProperty() {
  return rc::gen::build<PlannedProperty>(
      rc::gen::set(&PlannedProperty::expands, rc::gen::weightedElement<bool>({{1, false}, {4, true}})),
      rc::gen::set(&PlannedProperty::grouping, rc::gen::weightedElement<int>({{6, 0}, {1, 1}})),
      rc::gen::set(&PlannedProperty::type, rc::gen::weightedElement<int>({{6, 0}, {1, 2}, {1, 3}, {1, 4}})),
      rc::gen::set(&PlannedProperty::value, rc::gen::inRange(0, 2)),
      rc::gen::set(&PlannedProperty::elements, upTo(3, someElement())));
}

inline rc::Gen<PlannedRow> someRow() {
  return rc::gen::build<PlannedRow>(
      rc::gen::set(&PlannedRow::name, rc::gen::weightedElement<int>({{4, 0}, {3, 1}, {1, 2}})),
      rc::gen::set(&PlannedRow::label, rc::gen::weightedElement<int>({{6, 0}, {1, 1}})),
      rc::gen::set(&PlannedRow::dispId,
                   rc::gen::weightedElement<int>({{4, 0}, {3, 1}, {1, 2}, {2, 3}, {1, 4}})),
      rc::gen::set(&PlannedRow::categoryId, rc::gen::weightedElement<int>({{8, 1}, {1, 2}})),
      rc::gen::set(&PlannedRow::categoryName, rc::gen::weightedElement<int>({{8, 0}, {1, 1}})),
      rc::gen::set(&PlannedRow::isEditable, rc::gen::weightedElement<bool>({{1, false}, {8, true}})),
      rc::gen::set(&PlannedRow::hasChoices, rarely(8)), rc::gen::set(&PlannedRow::isElement, rarely(8)),
      rc::gen::set(&PlannedRow::isVaries, rarely(16)), rc::gen::set(&PlannedRow::hasValue, rarely(4)),
      rc::gen::set(&PlannedRow::grouping, rc::gen::weightedElement<int>({{12, 0}, {1, 1}})),
      rc::gen::set(&PlannedRow::type, someType()), rc::gen::set(&PlannedRow::value, rc::gen::inRange(0, 2)),
      rc::gen::set(&PlannedRow::customType,
                   rc::gen::element<std::int32_t>(PropertyKind::none, PropertyKind::unknownType,
                                                  PropertyKind::linetype)),
      rc::gen::set(&PlannedRow::clsid, rc::gen::weightedElement<int>({{6, 0}, {1, 1}, {1, 2}})),
      rc::gen::set(&PlannedRow::sources, rc::gen::weightedElement<int>({{4, 0}, {1, 2}})));
}

inline rc::Gen<PlannedEntity> someEntity(int mostRows) {
  return rc::gen::build<PlannedEntity>(
      rc::gen::set(&PlannedEntity::withoutExpander, rarely(10)),
      rc::gen::set(&PlannedEntity::withoutWeights, rarely(2)),
      rc::gen::set(&PlannedEntity::sharesListBefore, rarely(4)),
      rc::gen::set(&PlannedEntity::unknownNames, rarely(12)),
      rc::gen::set(&PlannedEntity::hasOwnStrings, rarely(4)),
      rc::gen::set(&PlannedEntity::hasFirstProperties,
                   rc::gen::weightedElement<bool>({{1, false}, {2, true}})),
      rc::gen::set(&PlannedEntity::hasFirstRows, rc::gen::weightedElement<int>({{3, 0}, {4, 1}, {2, 2}})),
      rc::gen::set(&PlannedEntity::properties,
                   rc::gen::container<std::vector<PlannedProperty>>(std::size(someDispIds), someProperty())),
      rc::gen::set(&PlannedEntity::rows, upTo(mostRows, someRow())));
}

inline rc::Gen<PlannedFault> someFault() {
  return rc::gen::build<PlannedFault>(
      rc::gen::set(&PlannedFault::call, rc::gen::inRange(0, static_cast<int>(std::size(callsThatFail)))),
      rc::gen::set(&PlannedFault::nth, rc::gen::inRange(1, 10)));
}

inline rc::Gen<Scenario> someScenario(int mostRows) {
  return rc::gen::build<Scenario>(
      rc::gen::set(
          &Scenario::entities,
          rc::gen::mapcat(rc::gen::weightedElement<int>({{1, 0}, {2, 1}, {8, 2}, {8, 3}, {2, 4}, {1, 7}}),
                          [mostRows](int count) {
                            return rc::gen::container<std::vector<PlannedEntity>>(
                                static_cast<std::size_t>(count), someEntity(mostRows));
                          })),
      rc::gen::set(&Scenario::faults, rc::gen::mapcat(rc::gen::weightedElement<int>({{2, 0}, {1, 3}}),
                                                      [](int most) { return upTo(most, someFault()); })),
      rc::gen::set(&Scenario::failedCall, rc::gen::mapcat(rarely(3), [](bool fails) {
        return fails ? rc::gen::inRange(1, 150) : rc::gen::just(0);
      })));
}

// --- what is built from it -----------------------------------------------------------------------------------

// The toys of a scenario and the lists over them. Values are lent, not handed over: the merge may drop rows
// with their values.
class MergeWorld {
 public:
  explicit MergeWorld(const Scenario& scenario) {
    errors::g_hPropRes = nullptr;  // each world loads its library
    host.toyLibraries = true;
    host.texts[1019] = L"no property %ls";
    for (const PlannedFault& fault : scenario.faults)
      host.on(callsThatFail[fault.call]).nth(fault.nth).fail();
    for (const PlannedEntity& plan : scenario.entities)
      add(plan, scenario.entities.front());
    host.log.clear();
    host.failCall(scenario.failedCall);
  }
  ~MergeWorld() {
    for (const BSTR text : texts_)
      SysFreeString(text);
    errors::g_hPropRes = nullptr;
  }
  MergeWorld(const MergeWorld&) = delete;
  MergeWorld& operator=(const MergeWorld&) = delete;

  toys::ToyHost host;
  TqVector<TqVector<PROPINFO>> lists;

  // The entry of an entity, as a selection has it; it owns nothing.
  VeltPropData entry(std::size_t k) const {
    const toys::ToyObject& object = entities_[k]->object;
    return {static_cast<long>(100 + k), CLSID_VeltLine, object.unknown(), object.dispatch()};
  }

  std::vector<PlainList> plainLists() const {
    std::vector<PlainList> copies;
    for (const TqVector<PROPINFO>& list : lists)
      copies.push_back(plain(list));
    return copies;
  }

  // Every field of a row, with the names of toys in place of addresses.
  std::string print(const PROPINFO& row) const {
    std::string choices, sources;
    const TqVector<CStdStr<wchar_t>>& choiceNames = row.choiceNames;
    for (const CStdStr<wchar_t>& choice : choiceNames)
      choices += toys::narrow(choice.c_str()) + ",";
    const TqVector<int>& choiceValues = row.choiceValues;
    for (const int number : choiceValues)
      choices += std::to_string(number) + ",";
    const TqVector<double>& choiceReals = row.choiceReals;
    for (const double number : choiceReals)
      choices += std::to_string(number) + ",";
    const TqVector<DispatchDynPropSourceNode>& dynSources = row.dynSources;
    for (const DispatchDynPropSourceNode& source : dynSources)
      sources += "(" + nameOf(source.pDispatch) + "," + nameOf(source.pDynamicProperty) + ")";
    return toys::say(toys::narrow(row.name.c_str()), "|", toys::narrow(row.description.c_str()), "|",
                     toys::narrow(row.displayName.c_str()), " clsid ", toys::nameOf(row.clsid), " of ",
                     nameOf(row.pDispatch), " dispId ", row.dispId, " value ", print(row.value), " category ",
                     row.categoryId, "/", toys::narrow(row.categoryName.c_str()), " element ", row.isElement,
                     "/", row.elementCookie, " choices ", row.hasChoices, "/", choices, " writable ",
                     row.isWritable, " editable ", row.isEditable, " varies ", row.isVaries, " custom ",
                     row.customType, " groups ", row.groupCount, "/", row.elementGrouping, " weight ",
                     row.weight, " byCookie ", row.sortByCookie, " object ", row.objectId.asOldId(), " type ",
                     row.valueType, " read ", row.hasValue, " dynamic ", nameOf(row.pDynamicProperty),
                     " sources ", sources);
  }

  template <class List>
  toys::Lines printList(const List& list) const {
    toys::Lines lines;
    for (const PROPINFO& row : list)
      lines.push_back(print(row));
    return lines;
  }
  template <class Lists>
  std::vector<toys::Lines> printLists(const Lists& all) const {
    std::vector<toys::Lines> printed;
    for (const auto& list : all)
      printed.push_back(printList(list));
    return printed;
  }

 private:
  struct EntityToys {
    EntityToys(toys::ToyHost& host, const std::string& name)
        : object(host, name), dynamic(host, name + ".dynamic"), color(host, name + ".color", 0) {}
    toys::ToyObject object;
    toys::ToyDynamicProperty dynamic;
    toys::ToyColor color;
  };

  void add(const PlannedEntity& plan, const PlannedEntity& first) {
    const auto number = entities_.size();
    EntityToys& made = *entities_.emplace_back(std::make_unique<EntityToys>(host, toys::say("e", number)));
    if (plan.withoutExpander) made.object.withhold(IID_IOPMPropertyExpander);
    if (plan.withoutWeights) made.object.withhold(IID_IVkPiPropertyDisplay);
    made.color.value = toys::ToyColor::indexed(static_cast<std::uint32_t>(number % 2));
    for (std::size_t i = 0; i < std::size(someDispIds); ++i)
      addProperty(made, someDispIds[i], i < 3 ? someNames[i] : L"Other",
                  (plan.hasFirstProperties ? first : plan).properties[i]);
    if (plan.unknownNames) made.object.dispIds.clear();
    if (plan.sharesListBefore && !lists.isEmpty()) {
      const TqVector<PROPINFO> before = lists[lists.length() - 1];
      lists.append(before);
      return;
    }
    std::vector<PlannedRow> rows = plan.rows;
    if (plan.hasFirstRows != 0 && number != 0)
      rows.insert(plan.hasFirstRows == 1 ? rows.end() : rows.begin(), first.rows.begin(), first.rows.end());
    TqVector<PROPINFO> list;
    for (const PlannedRow& row : rows)
      list.push_back(rowOf(row, made, static_cast<long>(100 + number), plan.hasOwnStrings));
    lists.append(list);
  }

  void addProperty(EntityToys& made, DISPID dispId, const wchar_t* name, const PlannedProperty& plan) {
    toys::ToyProperty& property = made.object.property(dispId, name);
    property.holds(valueOf(plan.type, plan.value, made)).weighs(5);
    if (!plan.expands) return;
    property.noElements();
    for (const PlannedElement& element : plan.elements)
      property.element(static_cast<DWORD>(element.cookie), someNames[element.label],
                       valueOf(element.type, element.value, made));
    if (plan.grouping != 0) property.grouped(static_cast<SHORT>(plan.grouping), 2);
  }

  // Rows of one class come from one cached list and share its strings.
  const CStdStr<wchar_t>& shared(const CStdStr<wchar_t>& text) {
    return strings_.try_emplace(text.str(), text).first->second;
  }

  PROPINFO rowOf(const PlannedRow& plan, EntityToys& made, long oldId, bool hasOwnStrings) {
    constexpr const wchar_t* labels[] = {L"label", L"Label"};
    constexpr const wchar_t* categories[] = {L"General", L"general"};
    const CLSID classes[] = {CLSID_VeltLine, CLSID_VeltLWPolyline, CLSID_VeltDimRotated};
    PROPINFO row = toys::Row(someNames[plan.name])
                       .ofClass(classes[plan.clsid])
                       .of(made.object, oldId)
                       .dispId(someDispIds[plan.dispId])
                       .label(labels[plan.label])
                       .inCategory(plan.categoryId, categories[plan.categoryName])
                       .editable(plan.isEditable)
                       .customType(plan.customType)
                       .grouping(static_cast<std::int16_t>(plan.grouping));
    row.description = L"what it is";
    if (!hasOwnStrings) {
      row.name = shared(row.name);
      row.displayName = shared(row.displayName);
      row.categoryName = shared(row.categoryName);
    }
    row.isVaries = plan.isVaries;
    row.hasChoices = plan.hasChoices;
    if (plan.hasChoices) {
      row.choiceNames.push_back(L"one");
      row.choiceValues.push_back(plan.value);
      row.choiceReals.push_back(0.5);
    }
    row.isElement = plan.isElement;
    row.elementCookie = static_cast<std::uint32_t>(plan.isElement ? plan.value : 0);
    const VARIANT value = valueOf(plan.type, plan.value, made);
    row.valueType = plan.type == 1 ? VARTYPE{VT_VARIANT} : value.vt;
    if (plan.hasValue) {
      row.value = value;
      row.hasValue = true;
    }
    if (plan.dispId == 3) row.pDynamicProperty = made.dynamic.unknown();
    for (int i = 0; i < plan.sources; ++i)
      row.dynSources.push_back({made.object.unknown(), made.dynamic.unknown()});
    return row;
  }

  VARIANT valueOf(int type, int value, EntityToys& made) {
    switch (type) {
      case 2: {
        const BSTR text = SysAllocString(value == 0 ? L"text" : L"Text");
        texts_.push_back(text);
        return toys::borrowed(text);
      }
      case 3:
        return toys::r8(value + 0.5);
      case 4:
        return toys::borrowed(made.color.dispatch());
      case 5:
        return toys::empty();
      default:
        return toys::i4(value);
    }
  }

  std::string nameOf(const IUnknown* pointer) const {
    if (pointer == nullptr) return "null";
    for (const auto& entity : entities_) {
      const toys::Toy* const all[] = {&entity->object, &entity->dynamic, &entity->color};
      for (const toys::Toy* const toy : all) {
        if (pointer == toy->unknown()) return toy->name() + ".unknown";
        if (toy != &entity->dynamic && pointer == toy->dispatch()) return toy->name();
      }
    }
    return "stranger";
  }

  std::string print(const VARIANT& value) const {
    if (value.vt == VT_DISPATCH) return "VT_DISPATCH " + nameOf(value.pdispVal);
    return toys::print(value);
  }

  std::vector<std::unique_ptr<EntityToys>> entities_;
  std::vector<BSTR> texts_;
  std::map<std::wstring, CStdStr<wchar_t>> strings_;
};

}  // namespace velt::tests
