#include "embedded/automation/model/PreparedStrings.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/Ledger.h"
#include "holders/CountedStringsHolder.h"
#include "host/com/Bstr.h"

namespace velt::automation {
namespace {

using platform::AllocationFault;
using platform::Heap;
using platform::Ledger;
using Texts = std::vector<std::wstring>;

PreparedStrings prepared(const Texts& texts) {
  PreparedStrings made;
  for (const std::wstring& text : texts)
    made.add(text);
  return made;
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

TEST(PreparedStrings, WithoutMemoryNothingIsGivenAndNothingLost) {
  const PreparedStrings strings =
      prepared({L"X", L"A text for which no small block is kept, as long as that", L"Z"});
  // With blocks at hand and without.
  for (int round = 0; round < 2; ++round) {
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
}

}  // namespace
}  // namespace velt::automation
