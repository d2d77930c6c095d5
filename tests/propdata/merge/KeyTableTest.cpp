#include "propdata/merge/KeyTable.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>

#include "tests/support/Row.h"

namespace velt::propdata {
namespace {

using toys::Row;

TEST(KeyTable, EqualSamenessKeysHaveEqualNumbersWhateverElseDiffers) {
  KeyTable keys;
  const PROPINFO other = Row(L"A").dispId(9).label(L"label").withChoices().element(1).value(toys::i4(1));

  EXPECT_EQ(keys.samenessKey(Row(L"A")), keys.samenessKey(other));
}

TEST(KeyTable, EachFieldOfTheSamenessKeyCounts) {
  KeyTable keys;
  const PROPINFO different[] = {Row(L"A"),
                                Row(L"a"),
                                Row(L""),
                                Row(L"A").inCategory(2, L"General"),
                                Row(L"A").inCategory(1, L"general"),
                                Row(L"A").editable(false)};
  std::set<KeyNumber> numbers;
  for (const PROPINFO& row : different)
    numbers.insert(keys.samenessKey(row));

  EXPECT_EQ(numbers.size(), std::size(different));
}

TEST(KeyTable, TextsThatOnlyLookAlikeWhenJoinedAreDifferent) {
  KeyTable keys;

  EXPECT_NE(keys.samenessKey(Row(L"AB").inCategory(1, L"C")),
            keys.samenessKey(Row(L"A").inCategory(1, L"BC")));
  EXPECT_NE(keys.samenessKey(Row(L"A").inCategory(1, L"B")), keys.samenessKey(Row(L"B").inCategory(1, L"A")));
}

TEST(KeyTable, TheFullKeyAddsLabelChoicesAndElement) {
  KeyTable keys;
  const KeyNumber sameness = keys.samenessKey(Row(L"A"));
  const KeyNumber other = keys.samenessKey(Row(L"B"));
  const KeyNumber full = keys.fullKey(sameness, Row(L"A"));

  EXPECT_EQ(keys.fullKey(sameness, Row(L"A").dispId(9).element(0).value(toys::i4(1))),
            keys.fullKey(sameness, Row(L"A").element(7)));
  EXPECT_NE(keys.fullKey(sameness, Row(L"A").label(L"a")), full);
  EXPECT_NE(keys.fullKey(sameness, Row(L"A").withChoices()), full);
  EXPECT_NE(keys.fullKey(sameness, Row(L"A").element(0)), full);
  EXPECT_NE(keys.fullKey(sameness, Row(L"A").element(0)), keys.fullKey(sameness, Row(L"A").withChoices()));
  EXPECT_NE(keys.fullKey(other, Row(L"A")), full);
  EXPECT_EQ(keys.fullKey(sameness, Row(L"A")), full);
}

}  // namespace
}  // namespace velt::propdata
