#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "embedded/platform/Allocation.h"
#include "propdata/VeltPropData.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/ReplacedAllocation.h"
#include "tests/support/Toy.h"
#include "tests/support/ToyHost.h"
#include "tests/support/ToyObject.h"

namespace velt::tests {
namespace {

using toys::ToyHost;
using toys::ToyObject;

constexpr CLSID someClass{0x11223344, 0x5566, 0x7788, {1, 2, 3, 4, 5, 6, 7, 8}};

template <class Vector>
const void* blockOf(const Vector& vector) {
  return *reinterpret_cast<const TqVectorBlock* const*>(&vector);
}

// Pointers that stand in a record and are never followed.
IDispatch* aDispatch() {
  static int place;
  return reinterpret_cast<IDispatch*>(&place);
}
IUnknown* anUnknown(int number) {
  static std::array<std::max_align_t, 4> places;
  return reinterpret_cast<IUnknown*>(&places[static_cast<std::size_t>(number)]);
}

// Every field differs from what the constructor gives it.
PROPINFO fullRecord() {
  PROPINFO row;
  row.clsid = someClass;
  row.pDispatch = aDispatch();
  row.dispId = 1281;
  row.name = L"a name that is too long to be kept inside of a small object";
  row.description = L"a description that is too long to be kept inside of a small object";
  row.displayName = L"a label that is too long to be kept inside of a small object";
  row.value.vt = VT_R8;
  row.value.wReserved1 = 11;
  row.value.wReserved2 = 12;
  row.value.wReserved3 = 13;
  row.value.brecVal.pvRecord = reinterpret_cast<void*>(0x1234567890);
  row.value.brecVal.pRecInfo = reinterpret_cast<IRecordInfo*>(0x9876543210);
  row.categoryId = -3;
  row.categoryName = L"a category that is too long to be kept inside of a small object";
  row.isElement = true;
  row.elementCookie = 0xF0000001;
  row.hasChoices = true;
  row.choiceNames.push_back(L"a choice that is too long to be kept inside of a small object");
  row.choiceNames.push_back(L"another");
  row.choiceValues.push_back(4);
  row.isWritable = true;
  row.isEditable = true;
  row.isVaries = true;
  row.customType = PropertyKind::color;
  row.groupCount = 0x123456789A;
  row.elementGrouping = -2;
  row.weight = -7;
  row.sortByCookie = true;
  row.objectId.setFromOldId(0x7766554433);
  row.valueType = VT_USERDEFINED;
  row.hasValue = true;
  row.pDynamicProperty = anUnknown(0);
  row.dynSources.push_back({anUnknown(1), anUnknown(2)});
  row.choiceReals.push_back(2.5);
  return row;
}

template <class Vector, class Same>
void expectEqualElements(const Vector& a, const Vector& b, const char* name, Same same) {
  ASSERT_EQ(a.length(), b.length()) << name;
  for (std::uint32_t i = 0; i < a.length(); ++i)
    EXPECT_TRUE(same(a[i], b[i])) << name << " " << i;
}

// Every field, lists by what is in them.
void expectEqual(const PROPINFO& a, const PROPINFO& b) {
  EXPECT_EQ(a.clsid, b.clsid);
  EXPECT_EQ(a.pDispatch, b.pDispatch);
  EXPECT_EQ(a.dispId, b.dispId);
  EXPECT_EQ(a.name, b.name);
  EXPECT_EQ(a.description, b.description);
  EXPECT_EQ(a.displayName, b.displayName);
  EXPECT_EQ(std::memcmp(&a.value, &b.value, sizeof a.value), 0) << "the value, bit for bit";
  EXPECT_EQ(a.categoryId, b.categoryId);
  EXPECT_EQ(a.categoryName, b.categoryName);
  EXPECT_EQ(a.isElement, b.isElement);
  EXPECT_EQ(a.elementCookie, b.elementCookie);
  EXPECT_EQ(a.hasChoices, b.hasChoices);
  expectEqualElements(a.choiceNames, b.choiceNames, "choiceNames", std::equal_to<>());
  expectEqualElements(a.choiceValues, b.choiceValues, "choiceValues", std::equal_to<>());
  EXPECT_EQ(a.isWritable, b.isWritable);
  EXPECT_EQ(a.isEditable, b.isEditable);
  EXPECT_EQ(a.isVaries, b.isVaries);
  EXPECT_EQ(a.customType, b.customType);
  EXPECT_EQ(a.groupCount, b.groupCount);
  EXPECT_EQ(a.elementGrouping, b.elementGrouping);
  EXPECT_EQ(a.weight, b.weight);
  EXPECT_EQ(a.sortByCookie, b.sortByCookie);
  EXPECT_EQ(a.objectId, b.objectId);
  EXPECT_EQ(a.valueType, b.valueType);
  EXPECT_EQ(a.hasValue, b.hasValue);
  EXPECT_EQ(a.pDynamicProperty, b.pDynamicProperty);
  expectEqualElements(a.dynSources, b.dynSources, "dynSources",
                      [](const DispatchDynPropSourceNode& one, const DispatchDynPropSourceNode& other) {
                        return one.pDispatch == other.pDispatch
                               && one.pDynamicProperty == other.pDynamicProperty;
                      });
  expectEqualElements(a.choiceReals, b.choiceReals, "choiceReals", std::equal_to<>());
}

// Every field, and the lists share their blocks.
void expectSame(const PROPINFO& a, const PROPINFO& b) {
  expectEqual(a, b);
  EXPECT_EQ(blockOf(a.choiceNames), blockOf(b.choiceNames));
  EXPECT_EQ(blockOf(a.choiceValues), blockOf(b.choiceValues));
  EXPECT_EQ(blockOf(a.dynSources), blockOf(b.dynSources));
  EXPECT_EQ(blockOf(a.choiceReals), blockOf(b.choiceReals));
}

// --- the layout that callers are compiled against -------------------------------------------------------------------

TEST(PropInfo, HoldsItsFieldsInTheOrderAndSizesThatCallersCompileAgainst) {
  const PROPINFO row;
  struct Field {
    const char* name;
    const void* address;
    std::size_t size, alignment, expectedSize;
  };
#define VELT_FIELD(name, size)                                           \
  Field {                                                                \
#name, &row.name, sizeof row.name, alignof(decltype(row.name)), size \
  }
  const Field fields[] = {
      VELT_FIELD(clsid, 16),       VELT_FIELD(pDispatch, 8),        VELT_FIELD(dispId, 4),
      VELT_FIELD(name, 8),         VELT_FIELD(description, 8),      VELT_FIELD(displayName, 8),
      VELT_FIELD(value, 24),       VELT_FIELD(categoryId, 4),       VELT_FIELD(categoryName, 8),
      VELT_FIELD(isElement, 1),    VELT_FIELD(elementCookie, 4),    VELT_FIELD(hasChoices, 1),
      VELT_FIELD(choiceNames, 8),  VELT_FIELD(choiceValues, 8),     VELT_FIELD(isWritable, 1),
      VELT_FIELD(isEditable, 1),   VELT_FIELD(isVaries, 1),         VELT_FIELD(customType, 4),
      VELT_FIELD(groupCount, 8),   VELT_FIELD(elementGrouping, 2),  VELT_FIELD(weight, 4),
      VELT_FIELD(sortByCookie, 1), VELT_FIELD(objectId, 8),         VELT_FIELD(valueType, 2),
      VELT_FIELD(hasValue, 1),     VELT_FIELD(pDynamicProperty, 8), VELT_FIELD(dynSources, 8),
      VELT_FIELD(choiceReals, 8),
  };
#undef VELT_FIELD
  std::size_t offset = 0;
  for (const Field& field : fields) {
    EXPECT_EQ(field.size, field.expectedSize) << field.name;
    offset = (offset + field.alignment - 1) / field.alignment * field.alignment;
    EXPECT_EQ(static_cast<std::size_t>(static_cast<const char*>(field.address)
                                       - reinterpret_cast<const char*>(&row)),
              offset)
        << field.name;
    offset += field.size;
  }
  EXPECT_EQ(sizeof row, (offset + alignof(PROPINFO) - 1) / alignof(PROPINFO) * alignof(PROPINFO))
      << "nothing follows";
}

TEST(PropInfo, TellsSignedFromUnsigned) {
  EXPECT_TRUE(std::is_signed_v<decltype(PROPINFO::dispId)>);
  EXPECT_TRUE(std::is_signed_v<decltype(PROPINFO::categoryId)>);
  EXPECT_TRUE(std::is_unsigned_v<decltype(PROPINFO::elementCookie)>);
  EXPECT_TRUE(std::is_signed_v<decltype(PROPINFO::customType)>);
  EXPECT_TRUE(std::is_signed_v<decltype(PROPINFO::groupCount)>);
  EXPECT_TRUE(std::is_signed_v<decltype(PROPINFO::elementGrouping)>);
  EXPECT_TRUE(std::is_signed_v<decltype(PROPINFO::weight)>);
  EXPECT_TRUE(std::is_unsigned_v<decltype(PROPINFO::valueType)>);
}

TEST(PropInfo, IsAPlainValue) {
  EXPECT_FALSE(std::is_polymorphic_v<PROPINFO>);
  EXPECT_TRUE(std::is_default_constructible_v<PROPINFO>);
  EXPECT_TRUE(std::is_copy_constructible_v<PROPINFO>);
  EXPECT_TRUE(std::is_copy_assignable_v<PROPINFO>);
  EXPECT_EQ(dynamicPropertyDispId, -23);
}

// --- construction ---------------------------------------------------------------------------------------------------

TEST(PropInfo, BeginsEmpty) {
  // Made where something else lay before, so that what is not set shows.
  alignas(PROPINFO) std::array<std::byte, sizeof(PROPINFO)> place;
  for (const int pattern : {0x00, 0xA5, 0xFF}) {
    std::memset(place.data(), pattern, place.size());
    const AllocationSpy spy;
    PROPINFO* const row = new (place.data()) PROPINFO;
    EXPECT_EQ(spy.allocations(), 0u);
    EXPECT_EQ(row->pDispatch, nullptr);
    EXPECT_TRUE(row->name.empty());
    EXPECT_TRUE(row->description.empty());
    EXPECT_TRUE(row->displayName.empty());
    EXPECT_EQ(row->value.vt, VT_EMPTY);
    EXPECT_EQ(row->categoryId, 0);
    EXPECT_TRUE(row->categoryName.empty());
    EXPECT_FALSE(row->isElement);
    EXPECT_EQ(row->elementCookie, 0u);
    EXPECT_FALSE(row->hasChoices);
    EXPECT_TRUE(row->choiceNames.isEmpty());
    EXPECT_TRUE(row->choiceValues.isEmpty());
    EXPECT_FALSE(row->isWritable);
    EXPECT_FALSE(row->isEditable);
    EXPECT_FALSE(row->isVaries);
    EXPECT_EQ(row->groupCount, 0);
    EXPECT_EQ(row->elementGrouping, 0);
    EXPECT_EQ(row->weight, 0);
    EXPECT_FALSE(row->sortByCookie);
    EXPECT_TRUE(row->objectId.isNull());
    EXPECT_EQ(row->valueType, 0);
    EXPECT_FALSE(row->hasValue);
    EXPECT_EQ(row->pDynamicProperty, nullptr);
    EXPECT_TRUE(row->dynSources.isEmpty());
    EXPECT_TRUE(row->choiceReals.isEmpty());
    std::destroy_at(row);
  }
}

TEST(PropInfo, ANewRecordsVectorsShareTheEmptyBlock) {
  const PROPINFO row;
  EXPECT_EQ(blockOf(row.choiceNames), gpEmptyVectorData);
  EXPECT_EQ(blockOf(row.choiceValues), gpEmptyVectorData);
  EXPECT_EQ(blockOf(row.dynSources), gpEmptyVectorData);
  EXPECT_EQ(blockOf(row.choiceReals), gpEmptyVectorData);
}

// --- copying --------------------------------------------------------------------------------------------------------

TEST(PropInfo, ACopyHasEveryField) {
  const PROPINFO original = fullRecord();
  const PROPINFO copied(original);
  expectSame(copied, original);
  PROPINFO assigned;
  assigned.dispId = 1;
  assigned = original;
  expectSame(assigned, original);
}

TEST(PropInfo, ACopyOfANewRecordIsNewToo) {
  PROPINFO original;
  original.clsid = GUID_NULL;
  original.dispId = 0;
  original.customType = PropertyKind::none;
  PROPINFO assigned = fullRecord();
  assigned = original;
  expectSame(assigned, original);
}

TEST(PropInfo, CopyingAllocatesNothing) {
  const PROPINFO original = fullRecord();
  PROPINFO assigned = fullRecord();
  const AllocationSpy spy;
  const auto hostHeaps = platform::AllocationFault::countOnly();
  const PROPINFO copied(original);
  assigned = copied;
  EXPECT_EQ(spy.allocations(), 0u);
  EXPECT_EQ(hostHeaps.allocations(), 0u);
  expectSame(copied, original);
  expectSame(assigned, original);
}

TEST(PropInfo, CopyingAThousandChoicesAllocatesNothing) {
  PROPINFO original = fullRecord();
  for (int i = 0; i < 1000; ++i) {
    original.choiceNames.push_back(CStdStr<wchar_t>(std::to_wstring(i)));
    original.choiceValues.push_back(i);
    original.choiceReals.push_back(i);
    original.dynSources.push_back({anUnknown(1), anUnknown(2)});
  }
  const AllocationSpy spy;
  const PROPINFO copied(original);
  EXPECT_EQ(spy.allocations(), 0u);
  expectSame(copied, original);
}

TEST(PropInfo, MovingAllocatesNothing) {
  PROPINFO original = fullRecord();
  const PROPINFO expected(original);
  PROPINFO assigned;
  const AllocationSpy spy;
  PROPINFO moved(std::move(original));
  assigned = std::move(moved);
  EXPECT_EQ(spy.allocations(), 0u);
  expectSame(assigned, expected);
}

TEST(PropInfo, CopyingAListOfRecordsAllocatesNothing) {
  TqVector<PROPINFO> list;
  for (int i = 0; i < 100; ++i)
    list.push_back(fullRecord());
  TqVector<TqVector<PROPINFO>> lists;
  lists.setPhysicalLength(2);
  const AllocationSpy spy;
  const TqVector<PROPINFO> copied(list);
  lists.push_back(list);
  EXPECT_EQ(spy.allocations(), 0u);
}

TEST(PropInfo, AWrittenCopyOfAListTakesOneBlockAndOneArray) {
  TqVector<PROPINFO> list;
  for (int i = 0; i < 100; ++i)
    list.push_back(fullRecord());
  TqVector<PROPINFO> copied(list);
  const AllocationSpy spy;
  copied[50].weight = 3;
  EXPECT_EQ(spy.allocations(), 2u);
  EXPECT_EQ(std::as_const(list)[50].weight, -7);
}

TEST(PropInfo, AWrittenCopyLeavesTheOriginalAlone) {
  const PROPINFO original = fullRecord();
  PROPINFO copied(original);
  for (CStdStr<wchar_t>* const text :
       {&copied.name, &copied.description, &copied.displayName, &copied.categoryName})
    *text = L"changed";
  copied.value.vt = VT_I4;
  copied.choiceNames[0] = L"changed";
  copied.choiceValues.push_back(99);
  copied.choiceReals.clear();
  copied.dynSources[0] = {nullptr, nullptr};
  copied.objectId.setFromOldId(1);

  expectEqual(original, fullRecord());
}

TEST(PropInfo, AWrittenOriginalLeavesTheCopyAlone) {
  PROPINFO original = fullRecord();
  const PROPINFO copied(original);
  original.name = L"changed";
  original.value.vt = VT_I4;
  original.choiceNames.clear();
  original.choiceValues[0] = 99;
  original.choiceReals[0] = 99;
  original.dynSources.push_back({nullptr, nullptr});
  original = PROPINFO();

  expectEqual(copied, fullRecord());
}

TEST(PropInfo, AssignedToItselfItStays) {
  PROPINFO row = fullRecord();
  const PROPINFO before(row);
  PROPINFO& same = row;
  row = same;
  expectSame(row, before);
}

TEST(PropInfo, DestroyingARecordGivesUpItsSharesOnly) {
  const PROPINFO original = fullRecord();
  const auto* const names = static_cast<const TqVectorBlock*>(blockOf(original.choiceNames));
  const auto* const reals = static_cast<const TqVectorBlock*>(blockOf(original.choiceReals));
  {
    const PROPINFO copied(original);
    EXPECT_EQ(names->refCount, 2);
    EXPECT_EQ(reals->refCount, 2);
  }
  EXPECT_EQ(names->refCount, 1);
  EXPECT_EQ(reals->refCount, 1);
  EXPECT_EQ(original.name, L"a name that is too long to be kept inside of a small object");
}

TEST(PropInfo, RecordsLeaveNoMemoryBehind) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  const AllocationSpy spy;
  {
    const PROPINFO original = fullRecord();
    PROPINFO assigned = fullRecord();
    assigned = original;
    const PROPINFO copied(assigned);
  }
  EXPECT_GT(spy.counts().news, 0u);
  EXPECT_EQ(spy.counts().news, spy.counts().deletes);
}

TEST(PropInfo, CopiesAreMadeAndDestroyedOnSeveralThreads) {
  const PROPINFO original = fullRecord();
  std::vector<std::thread> threads;
  std::vector<int> wrong(3, 0);
  for (int& mistakes : wrong) {
    threads.emplace_back([&original, &mistakes] {
      for (int i = 0; i < 500; ++i) {
        PROPINFO mine(original);
        mine.choiceNames[0] = L"mine";
        mine.name = L"mine";
        const PROPINFO again(original);
        if (again.name == mine.name || again.choiceNames[0] == mine.choiceNames[0]) ++mistakes;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(wrong, std::vector<int>(3, 0));
}

// --- values and interfaces ------------------------------------------------------------------------------------------

TEST(PropInfo, Quirk_value_shared_by_copies) {
  ToyHost host;
  PROPINFO original;
  original.value = variants::ownedText(L"text");
  const BSTR text = original.value.bstrVal;
  host.log.clear();
  {
    const PROPINFO copied(original);
    PROPINFO assigned;
    assigned = copied;
    EXPECT_EQ(copied.value.bstrVal, text);
    EXPECT_EQ(assigned.value.bstrVal, text);
    auto dropped = std::make_unique<PROPINFO>(original);
  }
  EXPECT_EQ(host.log.all(), toys::Lines{}) << "nothing is cleared or freed";
  EXPECT_EQ(host.balance(), "BSTR +1");
  EXPECT_STREQ(text, L"text");
  // Whoever holds the list clears the value once, for all copies.
  VariantClear(&original.value);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST(PropInfo, OverwritingARecordClearsNoValue) {
  ToyHost host;
  PROPINFO row;
  row.value = variants::ownedText(L"text");
  VARIANT kept = row.value;
  host.log.clear();
  row = PROPINFO();
  EXPECT_EQ(host.log.all(), toys::Lines{});
  VariantClear(&kept);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST(PropInfo, CountsNoReferenceOfTheObjectsThatItPointsTo) {
  ToyHost host;
  ToyObject line(host, "line");
  host.mark();
  {
    PROPINFO row;
    row.pDispatch = line.dispatch();
    row.pDynamicProperty = line.unknown();
    row.value = variants::borrowed(line.dispatch());
    row.dynSources.push_back({line.unknown(), line.unknown()});
    PROPINFO copied(row);
    copied = row;
    copied.dynSources.push_back({line.dispatch(), line.unknown()});
  }
  EXPECT_EQ(host.log.all(), toys::Lines{});
  EXPECT_EQ(host.balance(), "balanced");
}

// --- the records beside it ------------------------------------------------------------------------------------------

TEST(VeltPropData, HoldsItsFieldsInTheOrderThatCallersCompileAgainst) {
  EXPECT_EQ(offsetof(VeltPropData, oldId), 0u);
  EXPECT_EQ(offsetof(VeltPropData, clsid), 8u);
  EXPECT_EQ(offsetof(VeltPropData, pUnknown), 24u);
  EXPECT_EQ(offsetof(VeltPropData, pDispatch), 32u);
  EXPECT_EQ(sizeof(VeltPropData), 40u);
  EXPECT_TRUE((std::is_same_v<decltype(VeltPropData::oldId), long>));
  EXPECT_TRUE(std::is_trivially_copyable_v<VeltPropData>);
}

TEST(DispatchDynPropSourceNode, IsTwoNullPointersByDefault) {
  const DispatchDynPropSourceNode node;
  EXPECT_EQ(node.pDispatch, nullptr);
  EXPECT_EQ(node.pDynamicProperty, nullptr);
}

TEST(DispatchDynPropSourceNode, TakesTheObjectFirstAndThePropertySecond) {
  const DispatchDynPropSourceNode node(anUnknown(1), anUnknown(2));
  EXPECT_EQ(node.pDispatch, anUnknown(1));
  EXPECT_EQ(node.pDynamicProperty, anUnknown(2));
  EXPECT_EQ(offsetof(DispatchDynPropSourceNode, pDispatch), 0u);
  EXPECT_EQ(offsetof(DispatchDynPropSourceNode, pDynamicProperty), 8u);
  EXPECT_EQ(sizeof(DispatchDynPropSourceNode), 16u);
}

TEST(DispatchDynPropSourceNode, CopiesBitForBitAndCountsNoReference) {
  EXPECT_TRUE(std::is_trivially_copyable_v<DispatchDynPropSourceNode>);
  ToyHost host;
  ToyObject line(host, "line");
  host.mark();
  {
    const DispatchDynPropSourceNode node(line.unknown(), line.dispatch());
    const DispatchDynPropSourceNode copied(node);
    EXPECT_EQ(copied.pDispatch, line.unknown());
    EXPECT_EQ(copied.pDynamicProperty, line.dispatch());
  }
  EXPECT_EQ(host.log.all(), toys::Lines{});
  EXPECT_EQ(host.balance(), "balanced");
}

}  // namespace
}  // namespace velt::tests
