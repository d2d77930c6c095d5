#include "propdata/merge/SharedRows.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/Row.h"

namespace velt::propdata {
namespace {

using toys::Row;
using toys::rows;

TEST(SharedRows, KnowTheBlockThatTheyShare) {
  QueryMemory memory;
  TqVector<PROPINFO> list = rows({Row(L"A")});
  const SharedRows shared(list, memory);

  EXPECT_TRUE(shared.are(list));
  EXPECT_FALSE(shared.are(rows({Row(L"A")})));
  list[0].name = L"B";
  EXPECT_FALSE(shared.are(list));
  EXPECT_EQ(shared.rows()[0].name.str(), L"A");
}

TEST(SharedRows, TellWhichRowsAreAskedWhetherTheyMayBeEdited) {
  QueryMemory memory;
  const SharedRows shared(rows({Row(L"A"), Row(L"B").readOnly(), Row(L"C")}), memory);

  EXPECT_EQ(std::vector<std::uint32_t>(shared.writable().begin(), shared.writable().end()),
            (std::vector<std::uint32_t>{0, 2}));
}

TEST(SharedRows, TellWhichRowsAreEditableABitForEach) {
  QueryMemory memory;
  for (const std::uint32_t length : {0U, 1U, 63U, 64U, 65U, 130U}) {
    TqVector<PROPINFO> list;
    for (std::uint32_t place = 0; place < length; ++place)
      list.append(Row(L"A").editable(place % 3 == 0));
    const SharedRows shared(list, memory);
    ASSERT_LT(length / 64, shared.editable().size());
    for (std::uint32_t place = 0; place < length; ++place)
      EXPECT_EQ(shared.editable()[place / 64] >> place % 64 & 1, place % 3 == 0 ? 1U : 0U) << place;
  }
}

TEST(SharedRows, ARowHoldsWhatTheSharedOneHoldsUntilItHasAValueOfItsOwn) {
  QueryMemory memory;
  SharedRows shared(rows({Row(L"A").value(toys::i4(7)).declared(VT_I4), Row(L"B").value(toys::i4(8))}),
                    memory);
  SharedRows::Column& own = shared.columns()[0];
  const SharedRows::Member first = shared.add();
  const SharedRows::Member second = shared.add();
  EXPECT_FALSE(own.isRead(first));
  EXPECT_TRUE(shared.columns()[1].isRead(first)) << "the shared row came with its value";

  VARIANT& value = own.makeValue(second);
  EXPECT_EQ(value.lVal, 7) << "what was there before the call stays when it fails";
  value.lVal = 9;
  EXPECT_FALSE(own.isRead(second)) << "the call may have thrown";
  own.setRead(second);

  EXPECT_TRUE(own.isRead(second));
  EXPECT_FALSE(own.isRead(first));
  EXPECT_EQ(own.value(second).lVal, 9);
  EXPECT_EQ(shared.columns()[0].value(first).lVal, 7);
}

TEST(SharedRows, ARowMayCountAsReadWithoutAValueOfItsOwn) {
  QueryMemory memory;
  SharedRows shared(rows({Row(L"A").value(toys::i4(7)).declared(VT_VARIANT)}), memory);
  const SharedRows::Member member = shared.add();
  SharedRows::Column& column = shared.columns()[0];
  VARIANT elements[2] = {toys::i4(1), toys::i4(2)};
  column.makeRoomForState();
  column.setElements(member, elements);
  column.setRead(member);

  EXPECT_TRUE(column.isRead(member));
  EXPECT_EQ(column.value(member).lVal, 7);
  EXPECT_EQ(column.elements(member)[1].lVal, 2);
}

}  // namespace
}  // namespace velt::propdata
