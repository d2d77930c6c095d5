// What holds for every row of every class that can be written, on the sample drawing.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/model/ClassIndex.h"
#include "embedded/automation/objects/ColorObject.h"
#include "embedded/database/RecordEditor.h"
#include "host/automation/IdValues.h"
#include "samples/FloorPlan.h"
#include "samples/Gallery.h"
#include "tests/embedded/automation/Edits.h"
#include "tests/support/Narrow.h"
#include "tests/support/WholeDrawings.h"

namespace velt::automation {
namespace {

using namespace test;
using tests::narrow;

VariantHolder holding(const VARIANT& value) {
  VariantHolder held;
  *held.put() = value;
  return held;
}

VariantHolder holding(const std::wstring& text) {
  return holding(variants::ownedText(text));
}

VariantHolder holding(const std::vector<double>& numbers) {
  return holding(toVariant(Value(numbers), VT_VARIANT));
}

VariantHolder holding(OwnedDispatch object) {
  return holding(test::object(object.detach()));
}

// A color's number, whether it came as an object or as an index.
LONG colorNumber(const VARIANT& value) {
  OwnedDispatch object;
  if (value.vt == VT_DISPATCH) {
    object = OwnedDispatch::sharing(value.pdispVal);
  } else {
    object = ColorObject::make({});
    EXPECT_EQ(S_OK,
              Bound(InterfaceHolder<IDispatch>::sharing(object.get())).put(L"ColorIndex", value).result);
  }
  LONG number = 0;
  EXPECT_EQ(S_OK, ask<IVeltVkCmColor>(*object.get())->get_EntityColor(&number));
  return number;
}

bool areNear(double one, double other) {
  return std::abs(one - other) <= 1e-9 * std::max({1.0, std::abs(one), std::abs(other)});
}

bool areNear(const std::vector<double>& one, const std::vector<double>& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](double a, double b) { return areNear(a, b); });
}

// What was put and what is there, up to rounding; directions also up to whole turns.
bool isSame(const PropertyRow& row, const VARIANT& put, const VARIANT& got) {
  if (row.type.base() == VT_DISPATCH) return colorNumber(put) == colorNumber(got);
  if (put.vt != got.vt) return false;
  if (row.type.user == &types::angle) return areNear(std::remainder(put.dblVal - got.dblVal, fullTurn), 0);
  if (put.vt == VT_R8) return areNear(put.dblVal, got.dblVal);
  if (put.vt == VT_I4) return put.lVal == got.lVal;
  if (put.vt == VT_BOOL) return put.boolVal == got.boolVal;
  if (put.vt == VT_BSTR) return textOf(put) == textOf(got);
  return areNear(numbersOf(put), numbersOf(got));
}

// Values that the row could be given in place of the one that it has; some entities can only take some of them.
std::vector<VariantHolder> otherValues(const Bound& entity, const PropertyRow& row) {
  const Answer now = entity.get(row.name);
  std::vector<VariantHolder> others;
  // Some values cannot be told of a drawing that is not whole.
  if (now.result == DISP_E_EXCEPTION) return others;
  EXPECT_EQ(S_OK, now.result) << narrow(row.name);
  const VARIANT& value = now.value.get();
  const auto add = [&](VariantHolder other) {
    if (!isSame(row, other.get(), value)) others.push_back(std::move(other));
  };
  if (const auto labels = entity.choices(row.name)) {
    for (std::size_t i = 0; i < labels->size(); ++i)
      add(entity.choiceValue(row.name, static_cast<DWORD>(i)));
  } else if (row.type.base() == VT_R8) {
    // Some rows have no number for some entities.
    const double real = std::isnan(value.dblVal) ? 0 : value.dblVal;
    for (const double other : {real * 0.75, real + 1, real * 1.5 + 0.25, 0.5})
      add(holding(number(other)));
  } else if (row.type.base() == VT_I4) {
    for (const LONG other : {value.lVal + 1, value.lVal - 1})
      add(holding(integer(other)));
  } else if (row.type.base() == VT_BOOL) {
    add(holding(flag(value.boolVal == VARIANT_FALSE)));
  } else if (row.type.base() == VT_BSTR) {
    // Some texts are names of blocks, some have one character.
    for (const wchar_t* other : {L"35", L"Other \u00E4 \u2264 wording", L"_Dot", L"", L";"})
      add(holding(std::wstring(other)));
  } else if (row.type.base() == VT_VARIANT) {
    std::vector<double> numbers = numbersOf(value);
    for (double& coordinate : numbers)
      coordinate += 1.25;
    add(holding(numbers));
  }
  return others;
}

// Values that the row cannot have whatever the entity is.
std::vector<VariantHolder> impossibleValues(const PropertyRow& row) {
  std::vector<VariantHolder> impossible;
  VARIANT nothing{};
  impossible.push_back(holding(nothing));
  nothing.vt = VT_NULL;
  impossible.push_back(holding(nothing));
  impossible.push_back(holding(std::vector<double>{1, 2, 3, 4, 5}));
  if (row.type.base() != VT_DISPATCH) impossible.push_back(holding(ColorObject::make({})));
  if (row.type.base() == VT_DISPATCH) {
    impossible.push_back(holding(ColorObject::make({})));  // a color that was never set
    impossible.push_back(holding(integer(-1)));
    impossible.push_back(holding(integer(257)));
    impossible.push_back(holding(std::wstring(L"No such color")));
    impossible.push_back(holding(std::wstring(L"1,2,256")));
  }
  if (row.type.base() == VT_R8) {
    impossible.push_back(holding(number(std::numeric_limits<double>::infinity())));
    impossible.push_back(holding(number(std::numeric_limits<double>::quiet_NaN())));
    impossible.push_back(holding(std::wstring(L"a lot")));
  }
  if (row.type.base() == VT_VARIANT) {
    impossible.push_back(holding(std::vector<double>{1, 2, std::numeric_limits<double>::quiet_NaN()}));
    impossible.push_back(holding(number(1)));
  }
  if (row.access.limit != Limit::None) impossible.push_back(holding(number(0)));
  if (row.access.limit == Limit::Positive) impossible.push_back(holding(number(-1)));
  if (row.access.limit == Limit::NotNegative) impossible.back() = holding(number(-1));
  if (row.choices == Choices::Enumeration) impossible.push_back(holding(integer(12345)));
  if (row.type.base() == VT_BSTR && row.choices != Choices::None) {
    impossible.push_back(holding(std::wstring(L"no such name")));
  }
  if (row.type.base() == VT_BSTR) impossible.push_back(holding(std::wstring(L"bell \x07")));
  return impossible;
}

CLSID classOf(VkDbObjectId id) {
  CLSID clsid = CLSID_VeltEntity;
  VkDbEntity* entity = nullptr;
  EXPECT_EQ(Velt::eOk, vkdbOpenVkDbEntity(entity, id, VkDb::kForRead));
  [[maybe_unused]] const auto status = entity->getClassID(&clsid);
  entity->close();
  return clsid;
}

// The sample, and what it lacks: a hatch of plain lines.
std::string sampleWithPlainLines() {
  const std::string hatch = database::test::record("HATCH", {{5, "FFFF0"},
                                                             {100, "AcDbEntity"},
                                                             {8, "Hatching"},
                                                             {100, "AcDbHatch"},
                                                             {10, "0.0"},
                                                             {20, "0.0"},
                                                             {30, "0.0"},
                                                             {210, "0.0"},
                                                             {220, "0.0"},
                                                             {230, "1.0"},
                                                             {2, "_USER"},
                                                             {70, "0"},
                                                             {71, "1"},
                                                             {91, "0"},
                                                             {75, "0"},
                                                             {76, "0"},
                                                             {52, "30.0"},
                                                             {41, "2.0"},
                                                             {77, "0"},
                                                             {78, "1"},
                                                             {53, "30.0"},
                                                             {43, "0.0"},
                                                             {44, "0.0"},
                                                             {45, "-1.0"},
                                                             {46, "1.7320508075688772"},
                                                             {79, "0"},
                                                             {98, "0"}});
  std::string bytes = samples::sampleFloorPlan();
  const std::size_t entities = bytes.find("ENTITIES\n") + 9;
  return bytes.insert(entities, hatch);
}

bool hasDimensionStyle(const AutomationClass& kind) {
  return ClassIndex(kind).find(std::wstring_view(L"DimStyle")) != nullptr;
}

class EveryWritableRow : public ::testing::TestWithParam<const AutomationClass*> {
 protected:
  // The sample where it has entities of the class, else the gallery. There are dimensions in both, but those of the
  // sample all have pictures, and little to choose from.
  void SetUp() override {
    places_ = placesIn(bytes, kind.clsid);
    if (!places_.empty() && !hasDimensionStyle(kind)) return;
    bytes = samples::galleryDrawing();
    places_ = placesIn(bytes, kind.clsid);
  }

  // Runs `test(bound, row)` for each writable row and each entity of the class until it gives true, each time on a
  // drawing as it was read. A row for which it never does fails.
  template <class Test>
  void forEachRow(Test&& test) {
    for (const PropertyRow* row : index.rows()) {
      if (!row->isWritable()) continue;
      SCOPED_TRACE(narrow(row->name));
      bool done = false;
      for (std::size_t each = 0; each < places_.size() && !done; ++each) {
        drawing = Drawing::parse(bytes, "sample.dxf");
        place = places_[each];
        done = test(Bound(drawing->idOf(place)), *row);
      }
      EXPECT_TRUE(done) << "no entity of the sample can take another value";
    }
  }
  template <class Test>
  void forEachRowOnce(Test&& test) {
    forEachRow([&](const Bound& bound, const PropertyRow& row) {
      test(bound, row);
      return true;
    });
  }

  [[nodiscard]] const std::vector<std::uint32_t>& places() const { return places_; }
  [[nodiscard]] std::string written() const { return drawing->document().bytes(); }
  // The same entity in the drawing that would be saved now.
  [[nodiscard]] std::pair<std::unique_ptr<Drawing>, Bound> saved() const {
    auto read = Drawing::parse(written(), "saved.dxf");
    Bound bound(read->idOf(place));
    return {std::move(read), std::move(bound)};
  }

  const AutomationClass& kind = *GetParam();
  const ClassIndex index{kind};
  std::string bytes = sampleWithPlainLines();
  std::unique_ptr<Drawing> drawing;
  // The record of the entity.
  std::uint32_t place = 0;

 private:
  // Of the entities of the class that are on no locked layer; attributes are entities, too.
  static std::vector<std::uint32_t> placesIn(const std::string& bytes, const CLSID& clsid) {
    std::vector<std::uint32_t> places;
    const auto read = Drawing::parse(bytes, "sample.dxf");
    const auto add = [&](std::uint32_t record) {
      const database::TableEntry* layer = database::Entity(*read, record).layer();
      if (layer != nullptr && database::Layer(*read, layer->record).isLocked()) return;
      if (classOf(read->idOf(record)) == clsid) places.push_back(record);
    };
    for (std::size_t entity = 0; entity < read->entities().size(); ++entity) {
      const std::uint32_t record = recordOf(*read, entity);
      add(record);
      const database::RecordRange members = read->members(record);
      for (std::uint32_t member = members.first; member < members.first + members.count; ++member) {
        if (read->view(member).type() == "ATTRIB") add(member);
      }
    }
    return places;
  }

  std::vector<std::uint32_t> places_;
};

TEST_P(EveryWritableRow, TakesAnotherValueAndKeepsItInTheFile) {
  forEachRow([&](const Bound& bound, const PropertyRow& row) {
    for (const VariantHolder& other : otherValues(bound, row)) {
      const Answer answer = bound.put(row.name, other.get());
      if (answer.result != S_OK) {
        EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
        EXPECT_FALSE(answer.description.empty());
        EXPECT_EQ(bytes, written());
        continue;
      }
      EXPECT_NE(bytes, written());
      EXPECT_TRUE(isSame(row, other.get(), bound.get(row.name).value.get()));
      const auto [read, again] = saved();
      EXPECT_TRUE(isSame(row, other.get(), again.get(row.name).value.get()));
      return true;
    }
    return false;
  });
}

TEST_P(EveryWritableRow, TakesEachElementAndLeavesTheOthers) {
  forEachRow([&](const Bound& bound, const PropertyRow& row) {
    if (row.access.elements == nullptr) return true;
    const auto count = static_cast<DWORD>(bound.elementLabels(row.name).size());
    bool anyWritten = false;
    for (DWORD element = 0; element < count; ++element) {
      std::vector<double> expected;
      for (DWORD each = 0; each < count; ++each)
        expected.push_back(bound.element(row.name, each));
      const std::string before = written();
      if (bound.putElement(row.name, element, expected[element] + 0.5) != S_OK) {
        EXPECT_EQ(before, written());
        continue;
      }
      anyWritten = true;
      expected[element] += 0.5;
      EXPECT_NE(before, written());
      const auto [read, again] = saved();
      for (DWORD each = 0; each < count; ++each) {
        EXPECT_TRUE(areNear(expected[each], bound.element(row.name, each))) << element << " " << each;
        EXPECT_TRUE(areNear(expected[each], again.element(row.name, each))) << element << " " << each;
      }
    }
    return anyWritten;
  });
}

TEST_P(EveryWritableRow, ChangesNothingWhenItIsGivenWhatItHas) {
  forEachRowOnce([&](const Bound& bound, const PropertyRow& row) {
    const Answer now = bound.get(row.name);
    [[maybe_unused]] const Answer answer = bound.put(row.name, now.value.get());
    EXPECT_EQ(bytes, written());
    if (row.access.elements == nullptr) return;
    for (DWORD element = 0; element < bound.elementLabels(row.name).size(); ++element)
      bound.putElement(row.name, element, bound.element(row.name, element));
    EXPECT_EQ(bytes, written());
  });
}

TEST_P(EveryWritableRow, RefusesWhatItCannotHaveAndChangesNothing) {
  forEachRowOnce([&](const Bound& bound, const PropertyRow& row) {
    std::size_t number = 0;
    for (const VariantHolder& impossible : impossibleValues(row)) {
      EXPECT_TRUE(FAILED(bound.put(row.name, impossible.get()).result)) << number;
      EXPECT_EQ(bytes, written()) << number;
      ++number;
    }
    if (row.access.elements == nullptr) return;
    const auto count = static_cast<DWORD>(bound.elementLabels(row.name).size());
    EXPECT_TRUE(FAILED(bound.putElement(row.name, 0, std::numeric_limits<double>::quiet_NaN())));
    EXPECT_TRUE(FAILED(bound.putElement(row.name, count, 1)));
    EXPECT_EQ(bytes, written());
  });
}

TEST_P(EveryWritableRow, RefusesToChangeAnEntityOnALockedLayer) {
  forEachRowOnce([&](const Bound& bound, const PropertyRow& row) {
    std::vector<std::uint32_t> layers;  // an edit of a layer makes the table anew
    for (const database::TableEntry& layer : drawing->layers().entries()) {
      if (!layer.isImplied()) layers.push_back(layer.record);
    }
    for (const std::uint32_t layer : layers)
      EXPECT_TRUE(database::RecordEditor(*drawing, layer).setInteger(70, dxf::anySubclass, 4));
    const std::string locked = written();
    for (const VariantHolder& other : otherValues(bound, row)) {
      const Answer answer = bound.put(row.name, other.get());
      EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
      EXPECT_EQ(E_ACCESSDENIED, answer.scode);
      EXPECT_NE(std::wstring::npos, answer.description.find(L"locked")) << narrow(answer.description);
    }
    if (row.access.elements != nullptr) {
      EXPECT_EQ(E_ACCESSDENIED, bound.putElement(row.name, 0, 1));
    }
    EXPECT_EQ(locked, written());
  });
}

TEST_P(EveryWritableRow, RefusesWhatTheFormatOfTheDrawingCannotHold) {
  const std::string_view newer = "AC1027";
  bytes.replace(bytes.find(newer), newer.size(), "AC1009");
  forEachRowOnce([&](const Bound& bound, const PropertyRow& row) {
    if (std::string_view(row.access.since).empty()) return;
    for (const VariantHolder& other : otherValues(bound, row)) {
      const Answer answer = bound.put(row.name, other.get());
      EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
      EXPECT_NE(std::wstring::npos, answer.description.find(L"cannot store this property"));
    }
    EXPECT_EQ(bytes, written());
  });
}

// --- records that tell a value in several places ---

using PairList = std::vector<std::pair<int, std::string>>;

// Where the data of the entity itself ends.
std::size_t ownEnd(const dxf::RecordView& view) {
  std::size_t index = 0;
  while (index < view.size() && view.code(index) < 1000 && view.code(index) != 101)
    ++index;
  return index;
}

void append(dxf::Document& document, std::uint32_t record, const PairList& pairs) {
  std::size_t place = ownEnd(document.view(record));
  for (const auto& [code, value] : pairs)
    document.insert(record, place++, code, value);
}

void addSecondCommonPart(dxf::Document& document, std::uint32_t record) {
  append(document, record,
         {{100, "AcDbEntity"},
          {8, "0"},
          {6, "Other"},
          {62, "5"},
          {370, "30"},
          {48, "7.5"},
          {60, "1"},
          {440, "33554559"}});
}

// The whole part of all entities, with its marker, after those of the class.
void putCommonPartLast(dxf::Document& document, std::uint32_t record) {
  const dxf::RecordView before = document.view(record);
  std::size_t first = 1;
  while (first < before.size() && before.code(first) != 100)
    ++first;
  PairList moved;
  for (std::size_t i = first; i < ownEnd(before) && (i == first || before.code(i) != 100); ++i)
    moved.emplace_back(before.code(i), std::string(before.value(i)));
  for (std::size_t i = 0; i < moved.size(); ++i)
    document.erase(record, first);
  append(document, record, moved);
}

void renameCommonPart(dxf::Document& document, std::uint32_t record) {
  if (const auto marker = document.view(record).find(8, "AcDbEntity"))
    document.replace(record, *marker - 1, "AcDbUnheardOf");
}

void leaveGroupsOpen(dxf::Document& document, std::uint32_t record) {
  append(document, record, {{102, "{LAST"}});
  for (std::size_t i = document.view(record).size(); i-- > 1;) {
    if (document.view(record).code(i) == 100) document.insert(record, i, 102, "{OPEN");
  }
}

// Parts of points before the points that they do not belong to.
void addStrayCoordinates(dxf::Document& document, std::uint32_t record) {
  for (std::size_t i = document.view(record).size(); i-- > 1;) {
    if (document.view(record).code(i) != 100) continue;
    for (const int code : {20, 30, 21, 31, 22, 32, 23, 33})
      document.insert(record, i + 1, code, "77.0");
  }
}

void tellEverythingTwice(dxf::Document& document, std::uint32_t record) {
  for (std::size_t i = ownEnd(document.view(record)); i-- > 1;) {
    const int code = document.view(record).code(i);
    if (code != 5 && code != 100 && code != 102 && code < 100) document.insert(record, i + 1, code, "3");
  }
}

void repeatTheClass(dxf::Document& document, std::uint32_t record) {
  const dxf::RecordView before = document.view(record);
  PairList repeated;
  for (std::size_t i = 1; i < ownEnd(before); ++i) {
    if (before.code(i) != 100 && repeated.empty()) continue;
    repeated.emplace_back(before.code(i), before.code(i) == 100 ? std::string(before.value(i)) : "2");
  }
  append(document, record, repeated);
}

void reverse(dxf::Document& document, std::uint32_t record) {
  const dxf::RecordView before = document.view(record);
  PairList reversed;
  for (std::size_t i = ownEnd(before); i-- > 1;)
    reversed.emplace_back(before.code(i), std::string(before.value(i)));
  for (std::size_t i = 0; i < reversed.size(); ++i)
    document.erase(record, 1);
  for (std::size_t i = 0; i < reversed.size(); ++i)
    document.insert(record, 1 + i, reversed[i].first, reversed[i].second);
}

struct Damage {
  const char* name;
  void (*make)(dxf::Document&, std::uint32_t record);
};

constexpr Damage damagesOfRecords[] = {
    {"a second common part", addSecondCommonPart}, {"the common part last", putCommonPartLast},
    {"no common part", renameCommonPart},          {"groups left open", leaveGroupsOpen},
    {"stray coordinates", addStrayCoordinates},    {"everything twice", tellEverythingTwice},
    {"the class again", repeatTheClass},           {"back to front", reverse},
};

// The rows that all entities have are the same ones in each class; of damaged records a line shows them for all.
bool isShownByLines(const AutomationClass& kind, const PropertyRow& row) {
  const bool isOfAll = std::any_of(entityRows.begin(), entityRows.end(),
                                   [&](const PropertyRow& each) { return each.dispId == row.dispId; });
  return isOfAll && kind.clsid != velt::CLSID_VeltLine;
}

TEST_P(EveryWritableRow, OfADamagedRecordTakesAValueThatComesBackOrChangesNothing) {
  const std::string whole = bytes;
  for (const Damage& damage : damagesOfRecords) {
    SCOPED_TRACE(damage.name);
    drawing = Drawing::parse(whole, "sample.dxf");
    for (const std::uint32_t each : places())
      drawing->edit(each, [&](dxf::Document& document) { damage.make(document, each); });
    const std::string damaged = written();
    place = places().empty() ? 0 : places().front();
    for (const PropertyRow* row : index.rows()) {
      // Variables of styles stand in extended data, which has no parts.
      if (places().empty() || !row->isWritable() || row->access.kind == AccessKind::StyleVariable) continue;
      if (isShownByLines(kind, *row)) continue;
      SCOPED_TRACE(narrow(row->name));
      drawing = Drawing::parse(damaged, "sample.dxf");
      const Bound bound(drawing->idOf(place));
      for (const VariantHolder& other : otherValues(bound, *row)) {
        const std::string before = written();
        const bool isThere = isSame(*row, other.get(), bound.get(row->name).value.get());
        const bool isTaken = bound.put(row->name, other.get()).result == S_OK;
        EXPECT_EQ(before == written(), !isTaken || isThere);
        if (!isTaken) continue;
        EXPECT_TRUE(isSame(*row, other.get(), bound.get(row->name).value.get()));
        const auto [read, again] = saved();
        EXPECT_TRUE(isSame(*row, other.get(), again.get(row->name).value.get()));
      }
    }
  }
}

// Rows that say the same in another way, or have a part of it.
bool dependsOn(std::wstring_view row, std::wstring_view written) {
  using Both = std::pair<std::wstring_view, std::wstring_view>;
  static constexpr Both together[] = {
      {L"Arrowhead1Type", L"Arrowhead1Block"}, {L"Arrowhead2Type", L"Arrowhead2Block"},
      {L"Arrow", L"ArrowheadBlock"},           {L"CenterType", L"CenterMarkSize"},
      {L"LinearScaleFactor", L"Measurement"},
  };
  return written == L"DimStyle"
         || std::any_of(std::begin(together), std::end(together), [&](const Both& both) {
              return both == Both(row, written) || both == Both(written, row);
            });
}

// Of the classes that have one.
class EveryRowOfAStyle : public EveryWritableRow {};

TEST_P(EveryRowOfAStyle, LeavesTheOtherRowsAlone) {
  constexpr int enough = 3;
  forEachRow([&](const Bound& bound, const PropertyRow& row) {
    const auto isGeneral = [&](const PropertyRow& it) {
      return std::any_of(kind.general->begin(), kind.general->end(),
                         [&](const PropertyRow& general) { return &general == &it; });
    };
    if (isGeneral(row)) return true;
    int taken = 0;
    for (const VariantHolder& other : otherValues(bound, row)) {
      drawing = Drawing::parse(bytes, "sample.dxf");
      const Bound fresh(drawing->idOf(place));
      std::map<const PropertyRow*, Answer> before;
      for (const PropertyRow* each : index.rows()) {
        if (!isGeneral(*each)) before.emplace(each, fresh.get(each->name));
      }
      if (fresh.put(row.name, other.get()).result != S_OK) continue;
      for (const auto& [each, was] : before) {
        if (each == &row || dependsOn(each->name, row.name)) continue;
        const Answer is = fresh.get(each->name);
        EXPECT_EQ(was.result, is.result);
        EXPECT_TRUE(was.result != S_OK || isSame(*each, was.value.get(), is.value.get()))
            << narrow(each->name) << " is another after a put of " << narrow(row.name);
      }
      if (++taken == enough) break;
    }
    return taken > 0;
  });
}

std::vector<const AutomationClass*> classesWithAStyle() {
  std::vector<const AutomationClass*> found;
  std::copy_if(automationClasses().begin(), automationClasses().end(), std::back_inserter(found),
               [](const AutomationClass* kind) { return hasDimensionStyle(*kind); });
  return found;
}

INSTANTIATE_TEST_SUITE_P(Of, EveryRowOfAStyle, ::testing::ValuesIn(classesWithAStyle()),
                         [](const auto& parameter) { return narrow(parameter.param->name); });

INSTANTIATE_TEST_SUITE_P(Of, EveryWritableRow,
                         ::testing::ValuesIn(automationClasses().begin(), automationClasses().end()),
                         [](const auto& parameter) { return narrow(parameter.param->name); });

// --- whole drawings ---

// The entity with what belongs to it, pair by pair.
std::string pairsWithMembers(const Drawing& drawing, std::uint32_t record) {
  std::string pairs = pairsOf(drawing, record);
  const database::RecordRange members = drawing.members(record);
  for (std::uint32_t member = members.first; member < members.first + members.count; ++member)
    pairs += "\n" + pairsOf(drawing, member);
  return pairs;
}

// Some of each kind, from all over the drawing.
std::vector<std::size_t> someOfEachType(const Drawing& drawing) {
  constexpr std::size_t most = 12;
  std::map<std::string, std::vector<std::size_t>> byType;
  for (std::size_t entity = 0; entity < drawing.entities().size(); ++entity)
    byType[std::string(drawing.view(recordOf(drawing, entity)).type())].push_back(entity);
  std::vector<std::size_t> some;
  for (const auto& [type, entities] : byType) {
    const std::size_t step = entities.size() / most + 1;
    for (std::size_t i = 0; i < entities.size(); i += step)
      some.push_back(entities[i]);
  }
  return some;
}

// True when a value was taken.
bool putAny(const Drawing& drawing, std::uint32_t record, const Bound& bound, const PropertyRow& row) {
  for (const VariantHolder& other : otherValues(bound, row)) {
    const std::string before = pairsWithMembers(drawing, record);
    const Answer answer = bound.put(row.name, other.get());
    if (answer.result == S_OK) {
      EXPECT_TRUE(isSame(row, other.get(), bound.get(row.name).value.get()));
      return true;
    }
    EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
    EXPECT_NE(E_UNEXPECTED, answer.scode) << narrow(answer.description);
    EXPECT_EQ(before, pairsWithMembers(drawing, record));
  }
  return false;
}

TEST(Puts, OnWholeDrawingsAreTakenOrRefusedAsAWhole) {
  std::size_t taken = 0;
  tests::forEachDrawing([&](const tests::WholeDrawing& whole) {
    const auto drawing = Drawing::parse(whole.bytes, whole.name);
    const std::vector<std::size_t> entities = someOfEachType(*drawing);
    for (const std::size_t entity : entities) {
      const std::uint32_t record = recordOf(*drawing, entity);
      SCOPED_TRACE(std::string(drawing->view(record).type()) + " "
                   + std::string(drawing->view(record).handle()));
      const Bound bound(*drawing, entity);
      for (const PropertyRow* row :
           ClassRegistry::ofHost().find(classOf(drawing->entities()[entity]))->index.rows()) {
        SCOPED_TRACE(narrow(row->name));
        if (row->isWritable() && putAny(*drawing, record, bound, *row)) ++taken;
      }
    }
    const auto again = Drawing::parse(drawing->document().bytes(), "saved.dxf");
    ASSERT_EQ(drawing->entities().size(), again->entities().size());
    for (const std::size_t entity : entities) {
      EXPECT_EQ(pairsWithMembers(*drawing, recordOf(*drawing, entity)),
                pairsWithMembers(*again, recordOf(*again, entity)));
    }
  });
  EXPECT_GT(taken, 0U);
}

}  // namespace
}  // namespace velt::automation
