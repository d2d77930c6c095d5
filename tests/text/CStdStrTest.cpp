#include "text/CStdStr.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/AllocationSpy.h"
#include "tests/support/ReplacedAllocation.h"

namespace velt::tests {
namespace {

using Wide = CStdStr<wchar_t>;
using Narrow = CStdStr<char>;

template <class T>
int signOf(T number) {
  return (number > 0) - (number < 0);
}

// Too long for any standard string to keep it inside itself.
const std::wstring longText = L"a text that is too long to be kept inside of a small object";

TEST(CStdStr, IsEmptyByDefault) {
  const Wide wide;
  const Narrow narrow;
  EXPECT_TRUE(wide.empty());
  EXPECT_EQ(wide.length(), 0u);
  EXPECT_STREQ(wide.c_str(), L"");
  EXPECT_TRUE(narrow.empty());
  EXPECT_STREQ(narrow.c_str(), "");
}

TEST(CStdStr, ANullPointerIsTheEmptyString) {
  const Wide wide(static_cast<const wchar_t*>(nullptr));
  EXPECT_TRUE(wide.empty());
  EXPECT_EQ(wide, Wide());
  EXPECT_STREQ(wide.c_str(), L"");
  EXPECT_TRUE(Narrow(static_cast<const char*>(nullptr)).empty());
}

TEST(CStdStr, AnEmptyTextIsTheEmptyString) {
  EXPECT_TRUE(Wide(L"").empty());
  EXPECT_TRUE(Wide(std::wstring()).empty());
  EXPECT_EQ(Wide(L""), Wide());
}

TEST(CStdStr, KeepsItsOwnCopyOfAText) {
  wchar_t buffer[] = L"Layer";
  const Wide kept(buffer);
  buffer[0] = L'P';
  EXPECT_EQ(kept, L"Layer");
  EXPECT_EQ(kept.length(), 5u);
  EXPECT_FALSE(kept.empty());
}

TEST(CStdStr, KeepsCharactersBeyondTheBasicPlaneAsOne) {
  EXPECT_EQ(Wide(L"\U0001F4D0").length(), 1u);
}

TEST(CStdStr, CountsCharactersAfterAZeroCharacter) {
  const Wide withZero(std::wstring(L"ab\0cd", 5));
  EXPECT_EQ(withZero.length(), 5u);
  EXPECT_EQ(withZero.c_str()[5], L'\0');
  EXPECT_NE(withZero, Wide(L"ab"));
  EXPECT_NE(withZero, Wide(std::wstring(L"ab\0ce", 5)));
}

TEST(CStdStr, CopyingAllocatesNothing) {
  const Wide original(longText);
  Wide target(L"another text that is too long to be kept inside of a small object");
  const Wide empty;
  const AllocationSpy spy;
  const Wide copied(original);
  target = copied;
  const Wide copyOfEmpty(empty);
  EXPECT_EQ(spy.allocations(), 0u);
  EXPECT_EQ(copied, original);
  EXPECT_EQ(target, original);
  EXPECT_TRUE(copyOfEmpty.empty());
}

TEST(CStdStr, MovingAllocatesNothing) {
  Wide original(longText);
  Wide target(L"old");
  const AllocationSpy spy;
  Wide moved(std::move(original));
  target = std::move(moved);
  EXPECT_EQ(spy.allocations(), 0u);
  EXPECT_EQ(target.str(), longText);
}

TEST(CStdStr, ALastCopyFreesTheText) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  const AllocationSpy spy;
  {
    const Wide original(longText);
    const Wide copied(original);
  }
  EXPECT_GT(spy.counts().news, 0u);
  EXPECT_EQ(spy.counts().deletes, spy.counts().news);
}

TEST(CStdStr, AssignmentGivesUpTheOldText) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  const Wide other(longText);
  Wide target(L"a first text that is too long to be kept inside of a small object");
  const AllocationSpy spy;
  target = other;
  EXPECT_GT(spy.counts().deletes, 0u);
}

TEST(CStdStr, AChangeOfOneLeavesItsCopiesAlone) {
  Wide original(longText);
  Wide first(original);
  const Wide second(first);
  first = L"changed";
  EXPECT_EQ(first, L"changed");
  EXPECT_EQ(original.str(), longText);
  EXPECT_EQ(second.str(), longText);
  original.Format(L"<%s>", L"x");
  EXPECT_EQ(original, L"<x>");
  EXPECT_EQ(second.str(), longText);
}

TEST(CStdStr, ACopyOutlivesItsOriginal) {
  Wide copied;
  {
    const Wide original(longText);
    copied = original;
  }
  EXPECT_EQ(copied.str(), longText);
}

TEST(CStdStr, AssignedToItselfItStays) {
  Wide text(longText);
  Wide& same = text;
  text = same;
  EXPECT_EQ(text.str(), longText);
  text = std::move(same);
  EXPECT_EQ(text.str(), longText);
}

TEST(CStdStr, AssignedFromACopyOfItselfItStays) {
  Wide text(longText);
  const Wide copied(text);
  text = copied;
  EXPECT_EQ(text.str(), longText);
  EXPECT_EQ(copied.str(), longText);
}

TEST(CStdStr, AMovedFromStringCanBeUsedAgain) {
  Wide first(longText);
  const Wide taken(std::move(first));
  first = L"again";
  EXPECT_EQ(first, L"again");
  EXPECT_EQ(taken.str(), longText);
}

TEST(CStdStr, ComparesExactlyByCharacterValue) {
  const Wide text(L"Layer");
  EXPECT_EQ(text.Compare(L"Layer"), 0);
  EXPECT_NE(text.Compare(L"layer"), 0);
  EXPECT_NE(text.Compare(L" Layer"), 0);
  EXPECT_NE(text.Compare(L"Layer "), 0);
  EXPECT_LT(text.Compare(L"layer"), 0);
  EXPECT_GT(text.Compare(L"LAYER"), 0);
  EXPECT_GT(text.Compare(L"Laye"), 0);
  EXPECT_LT(text.Compare(L"Layers"), 0);
  EXPECT_LT(Wide(L"z").Compare(L"\u00e4"), 0);
  EXPECT_LT(Wide(L"\uffff").Compare(L"\U00010000"), 0);
}

TEST(CStdStr, ComparesWithNullAsWithTheEmptyString) {
  EXPECT_EQ(Wide().Compare(nullptr), 0);
  EXPECT_GT(Wide(L"a").Compare(nullptr), 0);
}

TEST(CStdStr, NarrowCharactersCompareAsUnsignedBytes) {
  EXPECT_GT(Narrow("\xff").Compare("\x01"), 0);
  EXPECT_GT(Narrow("\xff"), Narrow("\x01"));
  EXPECT_LT(Narrow("a"), Narrow("a\x80"));
}

TEST(CStdStr, OrdersAsKeyOfAMap) {
  const std::map<Narrow, int> map{{Narrow("b"), 2}, {Narrow("a"), 1}, {Narrow("ab"), 3}, {Narrow(), 0}};
  std::string order;
  for (const auto& [key, value] : map)
    order += std::to_string(value);
  EXPECT_EQ(order, "0132");
}

RC_GTEST_PROP(CStdStr, ComparesAsTheStandardStringDoes, ()) {
  const auto characters = *rc::gen::container<std::wstring>(rc::gen::inRange<wchar_t>(1, 4));
  const auto others = *rc::gen::container<std::wstring>(rc::gen::inRange<wchar_t>(1, 4));
  const Wide a(characters);
  const Wide b(others);
  RC_ASSERT((a == b) == (characters == others));
  RC_ASSERT((a < b) == (characters < others));
  RC_ASSERT(signOf(a.Compare(b.c_str())) == signOf(characters.compare(others)));
}

RC_GTEST_PROP(CStdStr, BehavesAsAValueWhateverIsDoneToItsCopies, ()) {
  std::vector<Wide> strings(4);
  std::vector<std::wstring> expected(4);
  const auto steps =
      *rc::gen::container<std::vector<std::tuple<int, std::size_t, std::size_t>>>(rc::gen::tuple(
          rc::gen::inRange(0, 5), rc::gen::inRange<std::size_t>(0, 4), rc::gen::inRange<std::size_t>(0, 4)));
  int number = 0;
  for (const auto& [action, to, from] : steps) {
    switch (action) {
      case 0:
        strings[to] = strings[from];
        expected[to] = expected[from];
        break;
      case 1:
        expected[to] = longText + std::to_wstring(++number);
        strings[to] = Wide(expected[to]);
        break;
      case 2:
        strings[to] = Wide(strings[from]);
        expected[to] = expected[from];
        break;
      case 3: {
        const std::wstring before = expected[from];
        strings[to].Format(L"%s!", strings[from]);
        expected[to] = before + L"!";
        break;
      }
      default:
        strings[to] = Wide();
        expected[to].clear();
        break;
    }
    for (std::size_t i = 0; i < strings.size(); ++i)
      RC_ASSERT(strings[i].str() == expected[i]);
  }
}

TEST(CStdStr, FormatsOverItsOwnText) {
  Wide text(L"The property '%s' cannot be found.");
  text.Format(text.c_str(), L"Area");
  EXPECT_EQ(text, L"The property 'Area' cannot be found.");
}

TEST(CStdStr, FormatsWithItselfAsTheArgument) {
  Wide text(L"Area");
  text.Format(L"%s of %s", text, text.c_str());
  EXPECT_EQ(text, L"Area of Area");
}

TEST(CStdStr, AFormatOfNullIsTheEmptyString) {
  Wide text(L"Area");
  text.Format(nullptr, L"x");
  EXPECT_TRUE(text.empty());
}

TEST(CStdStr, CopiesAreMadeAndDestroyedOnSeveralThreads) {
  const Wide original(longText);
  std::vector<std::thread> threads;
  std::vector<int> wrong(4, 0);
  for (int& mistakes : wrong) {
    threads.emplace_back([&original, &mistakes] {
      for (int i = 0; i < 2000; ++i) {
        Wide first(original);
        Wide second;
        second = first;
        first = L"mine";
        if (second.str() != longText || first != L"mine") ++mistakes;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(wrong, std::vector<int>(4, 0));
  EXPECT_EQ(original.str(), longText);
}

TEST(CStdStr, TheLastOwnerMayBeAnyThread) {
  for (int i = 0; i < 200; ++i) {
    auto* const shared = new Wide(longText);
    std::thread other([copied = *shared] { EXPECT_EQ(copied.length(), longText.size()); });
    delete shared;
    other.join();
  }
}

}  // namespace
}  // namespace velt::tests
