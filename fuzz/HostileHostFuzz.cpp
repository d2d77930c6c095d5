// The layer over a host that answers each call as the input says: work, failure with and without outputs, success with
// nothing or null in them, exceptions, pointers that it does not hand over, a call of the layer from within the call.
// Objects, their properties and values are of the input's making, too. Nothing crashes, nothing is given back that was not
// handed over, and a host that answers properly afterwards is answered properly.

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/Answers.h"
#include "host/com/HResult.h"
#include "propdata/VeltPropData.h"
#include "tests/support/ToyColor.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToyHost.h"
#include "tests/support/ToyObject.h"
#include "tests/support/ToySelection.h"
#include "tests/support/ToySourceRegistry.h"
#include "tests/support/ToyValue.h"
#include "tests/support/Variants.h"

namespace {

using namespace velt;
using namespace velt::toys;
using fuzz::Answers;

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

// --- what the toys are ----------------------------------------------------------------------------------------------------

std::wstring someName(Answers& answers) {
  constexpr const wchar_t* names[] = {L"Layer", L"Color",   L"StartPoint", L"Radius", L"Linetype",
                                      L"",      L"\x1b[2J", L"VELT_COLOR", L"Handle", L"Coordinates"};
  return names[answers.below(std::size(names))];
}

ToyValue someValue(Answers& answers) {
  switch (answers.below(10)) {
    case 0:
      return ToyValue(i4(answers.byte()));
    case 1:
      return ToyValue(
          r8(std::array{0.0, -1.5, 1e308, std::numeric_limits<double>::quiet_NaN()}[answers.below(4)]));
    case 2:
      return toys::text(someName(answers));
    case 3:
      return toys::text(std::wstring(3000, L'x'));
    case 4: {
      // Of any type at all, and zero.
      VARIANT zero{};
      zero.vt = static_cast<VARTYPE>(answers.byte());
      return ToyValue(zero);
    }
    default:
      return ToyValue(i4(1));
  }
}

void fillProperty(ToyProperty& property, Answers& answers) {
  constexpr VARTYPE types[] = {VT_R8,       VT_I4,   VT_BSTR,        VT_VARIANT,
                               VT_DISPATCH, VT_BOOL, VT_USERDEFINED, VT_I2};
  property.returns(types[answers.below(std::size(types))]).holds(someValue(answers));
  const std::uint8_t what = answers.byte();
  if ((what & 1) != 0) property.editable(static_cast<BOOL>(answers.byte()));
  if ((what & 2) != 0) property.shown(static_cast<BOOL>(answers.byte()));
  if ((what & 4) != 0) property.inCategory(static_cast<PROPCAT>(answers.byte()) - 40, someName(answers));
  if ((what & 8) != 0) property.weighs(answers.byte());
  if ((what & 16) != 0) property.labelled(someName(answers));
  if ((what & 32) != 0) {
    for (std::size_t i = answers.below(4); i > 0; --i)
      property.choice(someName(answers), someValue(answers));
  }
  if ((what & 64) != 0) {
    for (std::size_t i = answers.below(4); i > 0; --i)
      property.element(answers.byte(), someName(answers), someValue(answers));
    if (answers.below(2) == 1) property.extraNames.push_back(someName(answers));
  }
  if ((what & 128) != 0)
    property.grouped(static_cast<SHORT>(answers.byte() - 100), static_cast<long>(answers.byte()));
}

// Both objects get the same names, so that there is something to merge.
void fillObject(ToyObject& object, Answers& answers) {
  const std::size_t count = 1 + answers.below(4);
  for (std::size_t i = 0; i < count; ++i) {
    const auto dispId = static_cast<DISPID>(i + 1);
    const std::wstring name = L"Property" + std::to_wstring(i);
    fillProperty(answers.below(4) == 0 ? object.readOnly(dispId, name) : object.property(dispId, name),
                 answers);
  }
}

void fillDynamic(ToyDynamicProperty& property, Answers& answers) {
  property.value = someValue(answers);
  if (answers.below(4) == 1) property.enabled = static_cast<BOOL>(answers.byte());
  if (answers.below(4) == 1) property.valueTypeName = someName(answers);
  for (std::size_t i = answers.below(4); i > 0; --i)
    property.items.push_back({someName(answers), someValue(answers)});
  // No more than there is time for: how many a palette is offered, the host sees to.
  if (answers.below(4) == 1) property.valueCount = static_cast<LONG>(answers.byte()) - 20;
  if (answers.below(4) == 1) property.category = static_cast<PROPCAT>(answers.byte()) - 40;
}

// --- what calls do --------------------------------------------------------------------------------------------------------

// Of these calls the outputs alone count, and what stands in them is given back whatever the result is.
bool isJudgedByItsOutput(const std::string& line) {
  return line.starts_with("GetDisplayName(") || line.starts_with("Invoke(") || line.ends_with(" on newer")
         || line.ends_with(" on older");
}

void decideCall(const std::string& line, Rule& rule, Answers& answers, const std::function<void()>& again) {
  switch (answers.below(24)) {
    case 1:
      return rule.fail();
    case 2:
      return rule.fail(E_OUTOFMEMORY);
    case 3:
      return rule.raise(L"no \x1b[31m");
    case 4:
      return rule.answerNothing();
    case 5:
      return rule.answerNull();
    case 6:
      return isJudgedByItsOutput(line) ? rule.workThenReturn(E_FAIL) : rule.leaveThenFail();
    case 7:
      return rule.first(again);
    default:
      return;
  }
}

// --- the session ----------------------------------------------------------------------------------------------------------

struct Stage {
  explicit Stage(Answers& answers) {
    host.toyLibraries = true;
    fillObject(first, answers);
    fillObject(second, answers);
    fillDynamic(newer, answers);
    fillDynamic(older, answers);
    older.withhold(IID_IDynamicProperty2);
    source.properties = {newer.unknown(), older.unknown()};
    registry.add(L"Source", &source);
    first.objectId = entities[0].objectId();
    second.objectId = entities[1].objectId();
    selection.add(first, entities[0].id(), toyClass(1));
    const bool isOfOneClass = answers.below(2) == 0;
    if (answers.below(2) == 0) selection.add(second, entities[1].id(), toyClass(isOfOneClass ? 1 : 2));
  }

  ToyHost host;
  std::array<ToyEntity, 2> entities{ToyEntity{host, "e1", 77}, ToyEntity{host, "e2", 78}};
  ToyLayer layer{host, "layer", 79, 0xC3000001};
  ToyObject first{host, "first"};
  ToyObject second{host, "second"};
  ToyDynamicProperty newer{host, "newer"};
  ToyDynamicProperty older{host, "older"};
  ToyPropertySource source{host, "source"};
  ToySourceRegistry registry{host};
  ToySelection selection;
};

bool query(Stage& stage, TqVector<PROPINFO>& rows) {
  CStdStr<wchar_t> errorText;
  bool mergeFlag = false;
  bool typeFlag = false;
  return GetPropertiesInfo(stage.selection.entries, rows, errorText, mergeFlag, typeFlag);
}

void write(Stage& stage, const PROPINFO& row, Answers& answers) {
  CStdStr<wchar_t> errorText;
  VARIANT value = someValue(answers).make();
  int lockedCount = 0;
  VkArray<VkDbObjectId> touched;
  [[maybe_unused]] const int written = SetPropertiesValue(stage.selection.entries, row, value, row.isElement,
                                                          errorText, lockedCount, touched, row.elementCookie);
  VariantClear(&value);
}

// As the owner of a row's value takes it out, so that another one can be put there.
void clear(PROPINFO& row) {
  VARIANT value = std::exchange(row.value, VARIANT{});
  VariantClear(&value);
}

void useAll(Stage& stage, Answers& answers) {
  TqVector<PROPINFO> rows;
  if (!query(stage, rows)) return;
  for (PROPINFO& row : rows) {
    [[maybe_unused]] const int filled = fillDynPropComboBox(row);
    write(stage, row, answers);
    clear(row);
    [[maybe_unused]] const bool isRead = GetPropInfoValue(row);
    clear(row);
    TqVector<PROPINFO> elements;
    getPropValue(row, elements);
    for (PROPINFO& element : elements)
      clear(element);
    clear(row);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // What a toy finds wrong ends the program.
  GTEST_FLAG_SET(break_on_failure, true);
  getTqPROPINFOCache()->clear();
  Answers answers({data, size});
  {
    Stage stage(answers);
    bool isWithin = false;
    stage.host.decide = [&](const std::string& line, Rule& rule) {
      decideCall(line, rule, answers, [&] {
        if (std::exchange(isWithin, true)) return;
        TqVector<PROPINFO> rows;
        static_cast<void>(query(stage, rows));
        isWithin = false;
      });
    };
    useAll(stage, answers);
    stage.host.decide = nullptr;
  }
  getTqPROPINFOCache()->clear();

  ToyHost host;
  host.toyLibraries = true;
  ToyObject object(host, "object");
  object.property(1, L"Radius").returns(VT_R8).holds(r8(2.5)).inCategory(1, L"Geometry");
  ToyEntity entity(host, "entity", 80);
  object.objectId = entity.objectId();
  ToySelection selection;
  selection.add(object, 80, toyClass(3));
  TqVector<PROPINFO> rows;
  CStdStr<wchar_t> errorText;
  bool mergeFlag = false;
  bool typeFlag = false;
  require(GetPropertiesInfo(selection.entries, rows, errorText, mergeFlag, typeFlag),
          "the next host is answered");
  require(rows.length() == 1 && std::as_const(rows).at(0).value.dblVal == 2.5, "and properly");
  return 0;
}
