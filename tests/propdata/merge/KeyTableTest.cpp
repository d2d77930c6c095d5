#include "propdata/merge/KeyTable.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>

#include "tests/support/Row.h"

namespace velt::propdata {
namespace {

using toys::Row;

KeyNumber nameOf(KeyTable& keys, const PROPINFO& row) {
  return keys.numberOf(NameKey::of(row));
}

KeyNumber propertyOf(KeyTable& keys, const PROPINFO& row) {
  return keys.numberOf(PropertyKey::of(row));
}

TEST(KeyTable, EqualNameKeysHaveEqualNumbersWhateverElseDiffers) {
  KeyTable keys;
  const PROPINFO other =
      Row(L"A").dispId(9).label(L"label").withChoices().element(1).editable(false).value(toys::i4(1));

  EXPECT_EQ(nameOf(keys, Row(L"A")), nameOf(keys, other));
}

TEST(KeyTable, EachFieldOfTheNameKeyCounts) {
  KeyTable keys;
  const PROPINFO different[] = {Row(L"A"), Row(L"a"), Row(L""), Row(L"A").inCategory(2, L"General"),
                                Row(L"A").inCategory(1, L"general")};
  std::set<KeyNumber> numbers;
  for (const PROPINFO& row : different)
    numbers.insert(nameOf(keys, row));

  EXPECT_EQ(numbers.size(), std::size(different));
}

TEST(KeyTable, TextsThatOnlyLookAlikeWhenJoinedAreDifferent) {
  KeyTable keys;

  EXPECT_NE(nameOf(keys, Row(L"AB").inCategory(1, L"C")), nameOf(keys, Row(L"A").inCategory(1, L"BC")));
  EXPECT_NE(nameOf(keys, Row(L"A").inCategory(1, L"B")), nameOf(keys, Row(L"B").inCategory(1, L"A")));
}

TEST(KeyTable, ARowThatLostItsNameHasTheKeyOfOneWithoutAName) {
  KeyTable keys;

  EXPECT_EQ(keys.numberOf(NameKey::ofNameless(Row(L"A"))), nameOf(keys, Row(L"")));
}

TEST(KeyTable, LabelChoicesAndElementMakeThePropertyKey) {
  KeyTable keys;
  const KeyNumber number = propertyOf(keys, Row(L"A"));

  EXPECT_EQ(propertyOf(keys, Row(L"B").label(L"A").dispId(9).value(toys::i4(1))), number);
  EXPECT_EQ(propertyOf(keys, Row(L"A").element(0)), propertyOf(keys, Row(L"A").element(7)));
  EXPECT_NE(propertyOf(keys, Row(L"A").label(L"a")), number);
  EXPECT_NE(propertyOf(keys, Row(L"A").withChoices()), number);
  EXPECT_NE(propertyOf(keys, Row(L"A").element(0)), number);
  EXPECT_NE(propertyOf(keys, Row(L"A").element(0)), propertyOf(keys, Row(L"A").withChoices()));
}

}  // namespace
}  // namespace velt::propdata
