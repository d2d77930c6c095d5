#include "embedded/platform/Ledger.h"

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <thread>
#include <vector>

namespace velt::platform {
namespace {

TEST(Ledger, AnAccountIsOpenedOnceUnderItsName) {
  LedgerAccount& account = Ledger::account("LedgerTest once");
  EXPECT_STREQ("LedgerTest once", account.name());
  EXPECT_EQ(&account, &Ledger::account("LedgerTest once"));
  EXPECT_NE(&account, &Ledger::account("LedgerTest other"));
}

TEST(Ledger, KnowsTheAccountsOfTheRuntimeByName) {
  EXPECT_EQ(&bstrAccount, &Ledger::account("BSTR"));
  EXPECT_EQ(&taskMemoryAccount, &Ledger::account("task memory"));
  EXPECT_EQ(&safeArrayAccount, &Ledger::account("SAFEARRAY"));
  const auto snapshot = Ledger::snapshot();
  EXPECT_TRUE(snapshot.contains("BSTR"));
}

TEST(Ledger, CountsBothDirections) {
  LedgerAccount& account = Ledger::account("LedgerTest counts");
  account.handOut();
  account.handOut();
  account.giveBack();
  EXPECT_EQ((Ledger::Count{2, 1}), Ledger::snapshot()["LedgerTest counts"]);
}

TEST(Ledger, CountsSeveralOfTwoKindsAtOnceOnAThreadThatHasCountedBefore) {
  const Ledger::Snapshot before = Ledger::snapshot();
  std::thread([] {
    EXPECT_FALSE(bstrAccount.handOutAtOnce(3, taskMemoryAccount, 2));
    bstrAccount.handOut();
    EXPECT_TRUE(bstrAccount.handOutAtOnce(3, taskMemoryAccount, 2));
  }).join();
  EXPECT_EQ((Ledger::Difference{{"BSTR", 4}, {"task memory", 2}}),
            Ledger::difference(before, Ledger::snapshot()));
  for (int i = 0; i < 4; ++i)
    bstrAccount.giveBack();
  for (int i = 0; i < 2; ++i)
    taskMemoryAccount.giveBack();
  EXPECT_EQ(Ledger::Difference(), Ledger::difference(before, Ledger::snapshot()));
}

TEST(Ledger, CountsByTheNumberOfAnAccountWhateverTheThread) {
  LedgerAccount& account = Ledger::account("LedgerTest number");
  const AccountNumber number(account);
  EXPECT_EQ(&account, &Ledger::account(number));
  EXPECT_EQ(&taskMemoryAccount, &Ledger::account(AccountNumber(taskMemoryAccount)));
  std::thread([&] {
    EXPECT_FALSE(number.giveBackAtOnce()) << "the thread has not counted before";
    number.handOut();
    number.handOut();
    EXPECT_TRUE(number.giveBackAtOnce());
  }).join();
  std::thread([&] { number.giveBack(); }).join();
  number.handOut();
  EXPECT_EQ((Ledger::Count{3, 2}), Ledger::snapshot()["LedgerTest number"]);
}

TEST(Ledger, TheDifferenceNamesWhatIsMissingAndWhatCameTooOften) {
  LedgerAccount& leaking = Ledger::account("LedgerTest leaking");
  LedgerAccount& excessive = Ledger::account("LedgerTest excessive");
  LedgerAccount& balanced = Ledger::account("LedgerTest balanced");
  leaking.handOut();
  const auto before = Ledger::snapshot();
  leaking.handOut();
  leaking.handOut();
  excessive.giveBack();
  balanced.handOut();
  balanced.giveBack();
  const auto difference = Ledger::difference(before, Ledger::snapshot());
  EXPECT_EQ((Ledger::Difference{{"LedgerTest excessive", -1}, {"LedgerTest leaking", 2}}), difference);
  EXPECT_EQ("LedgerTest excessive -1\nLedgerTest leaking +2", Ledger::print(difference));
}

TEST(Ledger, AnAccountOpenedAfterTheFirstSnapshotCountsFromZero) {
  const auto before = Ledger::snapshot();
  Ledger::account("LedgerTest late").handOut();
  EXPECT_EQ((Ledger::Difference{{"LedgerTest late", 1}}), Ledger::difference(before, Ledger::snapshot()));
}

TEST(Ledger, NoDifferenceIsPrintedAsBalanced) {
  const auto snapshot = Ledger::snapshot();
  EXPECT_EQ("balanced", Ledger::print(Ledger::difference(snapshot, snapshot)));
}

TEST(Ledger, LosesNoCountBetweenThreads) {
  const auto before = Ledger::snapshot();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      LedgerAccount& account = Ledger::account("LedgerTest threads");
      for (int n = 0; n < 10'000; ++n)
        account.handOut();
      for (int n = 0; n < 9'999; ++n)
        account.giveBack();
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ((Ledger::Difference{{"LedgerTest threads", 4}}), Ledger::difference(before, Ledger::snapshot()));
}

TEST(Ledger, KeepsWhatAThreadCountedWhenItHasEnded) {
  LedgerAccount& account = Ledger::account("LedgerTest ended");
  const auto before = Ledger::snapshot();
  std::thread([&] { account.handOut(); }).join();
  EXPECT_EQ((Ledger::Difference{{"LedgerTest ended", 1}}), Ledger::difference(before, Ledger::snapshot()));
}

TEST(Ledger, SeesWhatARunningThreadHasCounted) {
  LedgerAccount& account = Ledger::account("LedgerTest running");
  const auto before = Ledger::snapshot();
  std::promise<void> counted;
  std::promise<void> seen;
  std::thread thread([&] {
    account.handOut();
    counted.set_value();
    seen.get_future().wait();
  });
  counted.get_future().wait();
  EXPECT_EQ((Ledger::Difference{{"LedgerTest running", 1}}), Ledger::difference(before, Ledger::snapshot()));
  seen.set_value();
  thread.join();
}

struct CountsAtTheEnd {
  ~CountsAtTheEnd() { Ledger::account("LedgerTest ending").handOut(); }
};

TEST(Ledger, CountsOnWhileAThreadEnds) {
  const auto before = Ledger::snapshot();
  std::thread([] {
    // Made before the ledger's own object of the thread, so destroyed after it.
    thread_local const CountsAtTheEnd last;
    static_cast<void>(&last);
    Ledger::account("LedgerTest ending").handOut();
  }).join();
  EXPECT_EQ((Ledger::Difference{{"LedgerTest ending", 2}}), Ledger::difference(before, Ledger::snapshot()));
}

TEST(Ledger, AccountsBeyondTheCellsOfAThreadAreCountedToo) {
  const auto before = Ledger::snapshot();
  Ledger::Difference expected;
  for (std::uint32_t i = 0; i < 2 * ledgerCellsPerThread; ++i) {
    const std::string name = "LedgerTest many " + std::to_string(i);
    LedgerAccount& account = Ledger::account(name);
    account.handOut();
    AccountNumber(account).handOut();
    expected.emplace(name, 2);
  }
  EXPECT_EQ(expected, Ledger::difference(before, Ledger::snapshot()));
}

}  // namespace
}  // namespace velt::platform
