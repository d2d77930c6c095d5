#include "propdata/support/Lists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace velt::propdata {
namespace {

struct Counted {
  Counted() = default;
  explicit Counted(int of) : number(of) {}
  Counted(const Counted& other) = default;
  Counted& operator=(const Counted& other) {
    number = other.number;
    ++assigned;
    return *this;
  }

  int number = 0;
  static inline std::size_t assigned = 0;
};

TqVector<int> appendedSingly(TqVector<int> list, int count) {
  for (int i = 0; i < count; ++i)
    list.append(i);
  return list;
}

TEST(Reserve, MakesRoomByHalvesAndNeverLess) {
  TqVector<int> list;
  for (const auto& [elements, slots] :
       {std::pair(8U, 8U), {9U, 12U}, {5U, 12U}, {12U, 12U}, {13U, 18U}, {100U, 100U}}) {
    reserve(list, elements);
    EXPECT_EQ(list.physicalLength(), slots) << elements;
  }
}

TEST(Appender, LeavesAsManySlotsAsSingleAppends) {
  for (const std::uint32_t slotsBefore : {0U, 3U, 8U, 100U}) {
    for (const int before : {0, 3}) {
      for (const int count : {0, 1, 8, 9, 60, 61, 64, 65, 100, 129, 1000}) {
        TqVector<int> list;
        list.setPhysicalLength(slotsBefore);
        list = appendedSingly(list, before);
        const TqVector<int> expected = appendedSingly(list, count);
        {
          Appender<int> appender(list);
          for (int i = 0; i < count; ++i)
            appender.append(i);
        }
        EXPECT_EQ(expected.length(), list.length()) << slotsBefore << " " << before << " " << count;
        EXPECT_EQ(expected.physicalLength(), list.physicalLength())
            << slotsBefore << " " << before << " " << count;
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), std::as_const(list).begin()));
      }
    }
  }
}

TEST(Appender, MovesALongListAFewTimesOnly) {
  constexpr int count = 100'000;
  TqVector<Counted> list;
  Counted::assigned = 0;
  {
    Appender<Counted> appender(list);
    for (int i = 0; i < count; ++i)
      appender.append(Counted(i));
  }
  EXPECT_LT(Counted::assigned, 5U * count);
  EXPECT_EQ(count - 1, std::as_const(list).last().number);
}

}  // namespace
}  // namespace velt::propdata
