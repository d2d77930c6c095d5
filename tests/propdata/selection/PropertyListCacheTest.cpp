// The process-wide cache and what is put into a list that was taken from it.

#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToySelection.h"

namespace {

using namespace velt::toys;

class PropertyListCacheTest : public LayerTest {
 protected:
  const PROPINFO& row(int index) const { return std::as_const(list).at(index); }

  ToyObject first{host, "first"};
  ToyObject line{host, "line"};
  ToySelection selection;
  VeltPropData& entry = selection.add(line, 78, CLSID_VeltCircle);
  TqVector<PROPINFO> list;
};

TEST_F(PropertyListCacheTest, ThereIsOneCache) {
  PropertyListCache* const cache = getTqPROPINFOCache();

  ASSERT_NE(cache, nullptr);
  EXPECT_EQ(getTqPROPINFOCache(), cache);
  cache->insert({CLSIDMemString(toyClass(1), -1), rows({Row(L"StartX")})});
  EXPECT_EQ(getTqPROPINFOCache()->size(), 1U);
}

TEST_F(PropertyListCacheTest, KeysAreOrderedByTheirBytes) {
  CLSID low = toyClass(1);
  CLSID high = toyClass(1);
  reinterpret_cast<unsigned char*>(&low)[0] = 0x7F;
  reinterpret_cast<unsigned char*>(&high)[0] = 0x80;
  PropertyListCache* const cache = getTqPROPINFOCache();
  cache->insert({CLSIDMemString(high, -1), {}});
  cache->insert({CLSIDMemString(low, -1), {}});

  EXPECT_EQ(cache->begin()->first, CLSIDMemString(low, -1)) << "bytes are unsigned";
  EXPECT_LT(CLSIDMemString(low, 1), CLSIDMemString(low, -1));
}

TEST_F(PropertyListCacheTest, AListTakenFromTheCacheSharesItsBlockUntilItIsWritten) {
  PropertyListCache* const cache = getTqPROPINFOCache();
  cache->insert({CLSIDMemString(toyClass(1), -1), rows({Row(L"StartX")})});
  TqVector<PROPINFO>& cached = cache->begin()->second;

  list = cached;
  EXPECT_EQ(std::as_const(list).begin(), std::as_const(cached).begin());
  resetObjectInfo(list, &entry);

  EXPECT_NE(std::as_const(list).begin(), std::as_const(cached).begin());
  EXPECT_NE(std::as_const(cached).at(0).objectId.asOldId(), 78);
}

TEST_F(PropertyListCacheTest, EveryRowGetsTheEntitysOwnFields) {
  list = rows({Row(L"StartX").of(first, 77).readOnly(), Row(L"Length").of(first, 77).readOnly()});

  resetObjectInfo(list, &entry);

  for (const PROPINFO& reset : list) {
    EXPECT_EQ(nameOf(reset.clsid), "CLSID_VeltCircle");
    EXPECT_EQ(reset.pDispatch, line.dispatch());
    EXPECT_EQ(reset.objectId.asOldId(), 78);
  }
  EXPECT_EQ(host.log.lines(), Lines{})
      << "rows that are not writable are not asked about, nor is a reference added";
}

TEST_F(PropertyListCacheTest, OtherFieldsStay) {
  list = rows({Row(L"StartX")
                   .of(first, 77)
                   .dispId(4)
                   .label(L"Start X")
                   .inCategory(3, L"Geometry")
                   .choice(L"One", 1)});

  resetObjectInfo(list, &entry);

  EXPECT_EQ(row(0).name.str(), L"StartX");
  EXPECT_EQ(row(0).displayName.str(), L"Start X");
  EXPECT_EQ(row(0).dispId, 4);
  EXPECT_EQ(row(0).categoryId, 3);
  EXPECT_EQ(row(0).choiceNames.length(), 1U);
  EXPECT_TRUE(row(0).hasChoices);
  EXPECT_TRUE(row(0).isWritable);
}

TEST_F(PropertyListCacheTest, AWritableRowIsAskedAboutAnew) {
  line.property(4, L"No").editable(0);
  line.property(5, L"Yes").editable(1);
  line.property(6, L"MinusOne").editable(-1);
  list = rows({Row(L"No").dispId(4).editable(true), Row(L"Yes").dispId(5).editable(false),
               Row(L"MinusOne").dispId(6).editable(false)});
  host.mark();

  resetObjectInfo(list, &entry);

  EXPECT_FALSE(row(0).isEditable);
  EXPECT_TRUE(row(1).isEditable);
  EXPECT_TRUE(row(2).isEditable);
  EXPECT_EQ(host.log.lines(), (Lines{
                                  "QueryInterface(IOPMPropertyExtension) on line",
                                  "Editable(4) on line",
                                  "Release(IOPMPropertyExtension) on line",
                                  "QueryInterface(IOPMPropertyExtension) on line",
                                  "Editable(5) on line",
                                  "Release(IOPMPropertyExtension) on line",
                                  "QueryInterface(IOPMPropertyExtension) on line",
                                  "Editable(6) on line",
                                  "Release(IOPMPropertyExtension) on line",
                              }));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(PropertyListCacheTest, WithoutTheExtensionTheCachedAnswerStays) {
  line.withhold(IID_IOPMPropertyExtension);
  list = rows({Row(L"Was").dispId(4).editable(true), Row(L"WasNot").dispId(5).editable(false)});

  resetObjectInfo(list, &entry);

  EXPECT_TRUE(row(0).isEditable);
  EXPECT_FALSE(row(1).isEditable);
  EXPECT_EQ(host.log.count("Editable"), 0);
}

TEST_F(PropertyListCacheTest, AnAnswerThatIsNotWrittenLeavesTheCachedOne) {
  line.property(4, L"Was");
  line.property(5, L"WasNot");
  list = rows({Row(L"Was").dispId(4).editable(true), Row(L"WasNot").dispId(5).editable(false)});
  host.on("Editable(4)").fail();

  resetObjectInfo(list, &entry);

  EXPECT_TRUE(row(0).isEditable);
  EXPECT_FALSE(row(1).isEditable) << "here nothing is preset";
}

TEST_F(PropertyListCacheTest, AnAnswerThatAFailingCallWroteCounts) {
  line.property(4, L"StartX").editable(0);
  list = rows({Row(L"StartX").dispId(4).editable(true)});
  host.on("Editable(4)").workThenReturn(E_FAIL);

  resetObjectInfo(list, &entry);

  EXPECT_FALSE(row(0).isEditable);
}

TEST_F(PropertyListCacheTest, TheUnknownOfTheEntryIsAsked) {
  entry.pUnknown->Release();
  entry.pUnknown = first.unknown();
  first.property(4, L"StartX").editable(0);
  list = rows({Row(L"StartX").dispId(4)});

  resetObjectInfo(list, &entry);

  EXPECT_EQ(host.log.count("Editable(4) on first"), 1);
  EXPECT_EQ(row(0).pDispatch, line.dispatch());
  entry.pUnknown = nullptr;
}

TEST_F(PropertyListCacheTest, AnEmptyListStaysEmpty) {
  resetObjectInfo(list, &entry);

  EXPECT_TRUE(list.isEmpty());
  EXPECT_EQ(host.log.lines(), Lines{});
}

}  // namespace
