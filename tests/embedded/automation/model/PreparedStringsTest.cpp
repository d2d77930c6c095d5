#include "embedded/automation/model/PreparedStrings.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <thread>
#include <vector>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/GeneralHeap.h"
#include "embedded/platform/Ledger.h"
#include "holders/CountedStringsHolder.h"
#include "host/com/Bstr.h"

namespace velt::automation {
namespace {

using platform::AllocationFault;
using platform::Heap;
using platform::Ledger;
using platform::SmallBlocks;
namespace generalHeap = platform::generalHeap;
using Texts = std::vector<std::wstring>;

PreparedStrings prepared(const Texts& texts) {
  return PreparedStrings(texts);
}

// What is given, after all that was given before has come back: blocks that are at hand are used again.
Texts given(const PreparedStrings& strings, std::size_t times) {
  holders::CountedStringsHolder list;
  EXPECT_EQ(S_OK, strings.give(times, *list.putStrings(), *list.putCookies()));
  EXPECT_EQ(strings.size() * times, list.cookieCount());
  Texts texts;
  for (ULONG i = 0; i < list.cookieCount(); ++i) {
    EXPECT_EQ(i, list.cookie(i));
    texts.emplace_back(list.string(i), SysStringLen(const_cast<BSTR>(list.string(i))));
    EXPECT_EQ(L'\0', list.string(i)[texts.back().size()]);
  }
  return texts;
}

TEST(PreparedStrings, AreGivenAgainAndAgain) {
  const Texts texts{L"Start X", L"Start Y", L"Start Z"};
  const PreparedStrings strings = prepared(texts);
  const Ledger::Snapshot before = Ledger::snapshot();
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(texts, given(strings, 1));
  EXPECT_EQ("balanced", Ledger::print(Ledger::difference(before, Ledger::snapshot())));
}

TEST(PreparedStrings, KeepEveryLengthOfTextAndWhatStandsInIt) {
  for (std::size_t length = 0; length <= 70; ++length) {
    std::wstring text(length, L'x');
    if (length > 2) text[1] = L'\0';
    const PreparedStrings strings = prepared({text, L"", text + L"\u00E9"});
    EXPECT_EQ(text, strings.text(0));
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ((Texts{text, L"", text + L"\u00E9"}), given(strings, 1)) << length;
  }
}

TEST(PreparedStrings, AreRepeatedForEachGroup) {
  EXPECT_EQ((Texts{L"A", L"B", L"A", L"B", L"A", L"B"}), given(prepared({L"A", L"B"}), 3));
  EXPECT_EQ(Texts(), given(prepared({L"A", L"B"}), 0));
  EXPECT_EQ(Texts(), given(PreparedStrings(), 1));
}

// On a thread that has counted nothing yet no strings are given at once.
void countOnThisThread() {
  SysFreeString(SysAllocString(L""));
}

void keep(SmallBlocks& kept, int ofEach) {
  for (int i = 0; i < ofEach; ++i) {
    for (std::size_t bytes = 24; bytes <= SmallBlocks::largest; bytes += 16)
      ASSERT_TRUE(kept.keep(generalHeap::take(bytes), bytes));
  }
}

// Texts of every size that is kept, in two blocks of the same size for the arrays.
TEST(PreparedStrings, AreGivenAtOnceOnlyOnAThreadThatTheLedgerKnows) {
  const PreparedStrings strings = prepared({L"Center X", L"Center Y"});
  const Ledger::Snapshot before = Ledger::snapshot();
  std::thread([&] {
    SmallBlocks kept;
    keep(kept, 4);
    holders::CountedStringsHolder list;
    EXPECT_FALSE(strings.giveAtOnce(kept, *list.putStrings(), *list.putCookies()));
    EXPECT_EQ(0U, list.stringCount());
    countOnThisThread();
    EXPECT_TRUE(strings.giveAtOnce(kept, *list.putStrings(), *list.putCookies()))
        << "all blocks are still there";
    EXPECT_EQ(2U, list.stringCount());
  }).join();
  EXPECT_EQ("balanced", Ledger::print(Ledger::difference(before, Ledger::snapshot())));
}

TEST(PreparedStrings, AreGivenAtOnceFromBlocksAtHand) {
  countOnThisThread();
  for (std::size_t length = 5; length <= 30; ++length) {
    const std::wstring text(length, L'n');
    const PreparedStrings strings = prepared({text + L"X", text + L"Y", text + L"Z"});
    const Ledger::Snapshot before = Ledger::snapshot();
    SmallBlocks kept;
    keep(kept, 5);
    {
      holders::CountedStringsHolder list;
      ASSERT_TRUE(strings.giveAtOnce(kept, *list.putStrings(), *list.putCookies())) << length;
      ASSERT_EQ(3U, list.stringCount());
      ASSERT_EQ(3U, list.cookieCount());
      for (ULONG i = 0; i < 3; ++i) {
        EXPECT_EQ(strings.text(i), list.string(i));
        EXPECT_EQ(strings.text(i).size(), SysStringLen(const_cast<BSTR>(list.string(i))));
        EXPECT_EQ(i, list.cookie(i));
      }
      EXPECT_EQ("BSTR +3\ntask memory +2", Ledger::print(Ledger::difference(before, Ledger::snapshot())));
    }
    EXPECT_EQ("balanced", Ledger::print(Ledger::difference(before, Ledger::snapshot())));
  }
}

TEST(PreparedStrings, ThatNeedBlocksOfSeveralSizesAreNotGivenAtOnce) {
  countOnThisThread();
  // Of different sizes, too short for the arrays to fit into such a block, and longer than what is kept.
  for (const Texts& texts : {Texts{L"Normal X", L"", L"A longer text, Y"}, Texts{L"X", L"Y", L"Z"},
                             Texts{L"", L""}, Texts{std::wstring(40, L'x')}}) {
    const PreparedStrings strings = prepared(texts);
    SmallBlocks kept;
    keep(kept, 5);
    CALPOLESTR list{7, nullptr};
    CADWORD cookies{8, nullptr};
    EXPECT_FALSE(strings.giveAtOnce(kept, list, cookies));
    EXPECT_EQ(7U, list.cElems);
    EXPECT_EQ(8U, cookies.cElems);
    EXPECT_EQ(texts, given(strings, 1));
  }
}

// What was taken together goes back to where it came from.
TEST(PreparedStrings, AreGivenFromTheSameBlocksAgain) {
  const PreparedStrings strings = prepared({L"Start X", L"Start Y", L"Start Z"});
  for (int i = 0; i < 3; ++i)
    static_cast<void>(given(strings, 1));
  platform::SmallBlocks* const kept = platform::blocksAtOnce();
  if (kept == nullptr) GTEST_SKIP() << "this build keeps no blocks";
  for (int i = 0; i < 1000; ++i) {
    holders::CountedStringsHolder list;
    ASSERT_TRUE(strings.giveAtOnce(*kept, *list.putStrings(), *list.putCookies())) << i;
  }
}

TEST(PreparedStrings, ThatHaveNotEnoughBlocksLeaveThemAllWhereTheyAre) {
  countOnThisThread();
  const PreparedStrings strings = prepared({L"Start X", L"Start Y", L"Start Z"});
  const Ledger::Snapshot before = Ledger::snapshot();
  // All five need blocks of 40 bytes.
  for (std::size_t atHand = 0; atHand < 5; ++atHand) {
    SmallBlocks kept;
    for (std::size_t i = 0; i < atHand; ++i)
      ASSERT_TRUE(kept.keep(generalHeap::take(40), 40));
    CALPOLESTR texts{7, nullptr};
    CADWORD cookies{8, nullptr};
    EXPECT_FALSE(strings.giveAtOnce(kept, texts, cookies));
    EXPECT_EQ(7U, texts.cElems);
    EXPECT_EQ(8U, cookies.cElems);
    for (std::size_t i = 0; i < atHand; ++i) {
      void* block = kept.take(40);
      EXPECT_NE(nullptr, block) << i << " of " << atHand;
      generalHeap::giveBack(block);
    }
    EXPECT_EQ(nullptr, kept.take(40));
  }
  EXPECT_EQ("balanced", Ledger::print(Ledger::difference(before, Ledger::snapshot())));
}

TEST(PreparedStrings, WithoutMemoryNothingIsGivenAndNothingLost) {
  const PreparedStrings strings =
      prepared({L"X", L"A text for which no small block is kept, as long as that", L"Z"});
  for (std::uint64_t n = 1; n <= 5; ++n) {
    const Ledger::Snapshot before = Ledger::snapshot();
    CALPOLESTR texts{7, nullptr};
    CADWORD cookies{8, nullptr};
    {
      const AllocationFault fault = AllocationFault::failNth(n, Heap::Strings | Heap::TaskMemory);
      EXPECT_EQ(E_OUTOFMEMORY, strings.give(1, texts, cookies));
      EXPECT_EQ(1U, fault.failures());
    }
    EXPECT_EQ(7U, texts.cElems);
    EXPECT_EQ(8U, cookies.cElems);
    EXPECT_EQ("balanced", Ledger::print(Ledger::difference(before, Ledger::snapshot()))) << n;
  }
  EXPECT_EQ(3U, given(strings, 1).size());
}

}  // namespace
}  // namespace velt::automation
