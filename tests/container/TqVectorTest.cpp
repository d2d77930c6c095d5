#include "container/TqVector.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/platform/CrashRecorder.h"
#include "host/platform/Memory.h"
#include "tests/container/HostDoubles.h"
#include "tests/container/ReferenceVector.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/ReplacedAllocation.h"

// --- doubles of the host --------------------------------------------------------------------------------------------

namespace velt::tests {
namespace {

std::atomic<long> liveBlocks{0};
std::atomic<std::uint64_t> heapCalls{0};
std::atomic<std::uint64_t> heapFailures{0};
std::atomic<std::uint64_t> failFirst{0};
std::atomic<std::uint64_t> failLast{0};

// Keeps reports without allocating, because some of them say that memory is exhausted.
struct Recorder final : VeltCrashRecorder {
  void addNote(const wchar_t*) override { ADD_FAILURE() << "only reports are expected"; }
  void flush() override { ADD_FAILURE() << "only reports are expected"; }
  void report(const TqErrorStatus* error) override {
    const std::size_t place = count.fetch_add(1);
    if (place < statuses.size()) statuses[place] = error->status();
  }

  std::array<std::atomic<int>, 64> statuses{};
  std::atomic<std::size_t> count{0};
};

Recorder recorder;

}  // namespace

long liveHostBlocks() {
  return liveBlocks;
}
std::uint64_t hostAllocations() {
  return heapCalls;
}

HostHeapFault::HostHeapFault(std::uint64_t first, std::uint64_t last) {
  heapFailures = 0;
  failFirst = heapCalls + first;
  failLast = last == UINT64_MAX ? last : heapCalls + last;
}
HostHeapFault::~HostHeapFault() {
  failFirst = failLast = 0;
}
std::uint64_t HostHeapFault::failures() const {
  return heapFailures;
}

std::vector<int> reports() {
  const std::size_t count = recorder.count;
  EXPECT_LE(count, recorder.statuses.size());
  return {recorder.statuses.begin(),
          recorder.statuses.begin() + static_cast<std::ptrdiff_t>(std::min(count, recorder.statuses.size()))};
}
void clearReports() {
  recorder.count = 0;
}

}  // namespace velt::tests

void* _tqMalloc(std::size_t bytes) {
  using namespace velt::tests;
  const std::uint64_t call = ++heapCalls;
  if (call >= failFirst && call <= failLast) {
    ++heapFailures;
    return nullptr;
  }
  ++liveBlocks;
  return std::malloc(bytes);
}

void _tqFree(void* block) {
  if (block != nullptr) --velt::tests::liveBlocks;
  std::free(block);
}

VeltCrashRecorder* veltGetCrashRecorder() {
  return &velt::tests::recorder;
}

namespace velt::tests {
namespace {

using Ints = TqVector<int>;
using Slots = TqVector<Slot>;

template <class Vector>
const Vector& constant(Vector& vector) {
  return vector;
}

Slots slots(std::initializer_list<int> numbers) {
  Slots made;
  for (const int number : numbers)
    made.push_back(Slot(number));
  return made;
}

std::vector<int> contents(const Slots& vector) {
  std::vector<int> numbers;
  for (const Slot& slot : vector)
    numbers.push_back(slot.value);
  return numbers;
}

// All slots that are allocated, in use or not.
std::vector<int> allSlots(const Slots& vector) {
  const auto* const elements = static_cast<const Slot*>(blockOf(vector)->elements);
  std::vector<int> numbers;
  for (std::uint32_t i = 0; i < vector.physicalLength(); ++i)
    numbers.push_back(elements[i].value);
  return numbers;
}

std::vector<int> padded(std::vector<int> numbers, std::size_t length) {
  numbers.resize(length, Slot::untouched);
  return numbers;
}

int references(const Slots& vector) {
  return blockOf(vector)->refCount;
}

bool share(const Slots& a, const Slots& b) {
  return blockOf(a) == blockOf(b);
}

bool isSharedEmptyBlock(const Slots& vector) {
  return blockOf(vector) == gpEmptyVectorData;
}

std::uintptr_t address(const void* pointer) {
  return reinterpret_cast<std::uintptr_t>(pointer);
}

// Every test ends with all memory freed and no report that it did not expect.
class TqVectorTest : public ::testing::Test {
 protected:
  TqVectorTest() { clearReports(); }
  ~TqVectorTest() override {
    EXPECT_EQ(Slot::live, liveSlots_) << "elements";
    EXPECT_EQ(liveHostBlocks(), liveBlocks_) << "blocks";
    EXPECT_EQ(gpEmptyVectorData->refCount, emptyReferences_) << "references to the empty block";
    EXPECT_EQ(gpEmptyVectorData->logicalLength, 0u);
    EXPECT_EQ(gpEmptyVectorData->physicalLength, 0u);
    EXPECT_EQ(gpEmptyVectorData->elements, nullptr);
    EXPECT_EQ(reports(), expectedReports_);
  }

  void expectReports(std::vector<int> statuses) { expectedReports_ = std::move(statuses); }

 private:
  const long liveSlots_ = Slot::live;
  const long liveBlocks_ = liveHostBlocks();
  const int emptyReferences_ = gpEmptyVectorData->refCount;
  std::vector<int> expectedReports_;
};

// --- layout ---------------------------------------------------------------------------------------------------------

TEST_F(TqVectorTest, IsOnePointerToItsBlock) {
  EXPECT_EQ(sizeof(Ints), sizeof(void*));
  EXPECT_EQ(sizeof(TqVectorData), sizeof(TqVectorBlock));
  const Slots vector = slots({1, 2, 3});
  const TqVectorBlock* const block = blockOf(vector);
  EXPECT_EQ(block->refCount, 1);
  EXPECT_EQ(block->logicalLength, 3u);
  EXPECT_EQ(block->physicalLength, 8u);
  EXPECT_EQ(block->growCount, 8u);
  EXPECT_EQ(block->elements, vector.begin());
}

// --- the empty vector -----------------------------------------------------------------------------------------------

TEST_F(TqVectorTest, EveryNewVectorSharesTheEmptyBlockAndIsCountedThere) {
  const int before = gpEmptyVectorData->refCount;
  const AllocationSpy spy;
  const Slots first;
  const Slots second;
  const Slots third(first);
  EXPECT_EQ(spy.allocations(), 0u);
  EXPECT_TRUE(isSharedEmptyBlock(first));
  EXPECT_TRUE(isSharedEmptyBlock(second));
  EXPECT_TRUE(isSharedEmptyBlock(third));
  EXPECT_EQ(gpEmptyVectorData->refCount, before + 3);
  EXPECT_EQ(first.length(), 0u);
  EXPECT_EQ(first.logicalLength(), 0u);
  EXPECT_EQ(first.size(), 0u);
  EXPECT_EQ(first.physicalLength(), 0u);
  EXPECT_TRUE(first.isEmpty());
  EXPECT_TRUE(first.empty());
  EXPECT_EQ(first.begin(), first.end());
}

TEST_F(TqVectorTest, VectorsOfDifferentElementsShareTheOneEmptyBlock) {
  const Ints ints;
  const Slots others;
  const TqVector<std::string> texts;
  EXPECT_EQ(static_cast<void*>(blockOf(ints)), blockOf(others));
  EXPECT_EQ(static_cast<void*>(blockOf(texts)), blockOf(others));
}

TEST_F(TqVectorTest, ConstantAccessToAnEmptyVectorKeepsTheEmptyBlock) {
  const Slots vector;
  EXPECT_EQ(vector.begin(), vector.end());
  EXPECT_FALSE(vector.isValidIndex(0));
  EXPECT_TRUE(isSharedEmptyBlock(vector));
}

TEST_F(TqVectorTest, Quirk_clone_of_empty_holds_16) {
  const std::vector<std::function<void(Slots&)>> accesses = {
      [](Slots& vector) { static_cast<void>(vector.begin()); },
      [](Slots& vector) { static_cast<void>(vector.end()); },
  };
  for (const auto& access : accesses) {
    Slots vector;
    access(vector);
    EXPECT_EQ(vector.physicalLength(), 16u);
    EXPECT_EQ(vector.length(), 0u);
    EXPECT_EQ(blockOf(vector)->growCount, 8u);
    EXPECT_EQ(references(vector), 1);
    EXPECT_EQ(allSlots(vector), padded({}, 16));
    EXPECT_EQ(vector.begin(), vector.end());
  }
}

// --- growth ---------------------------------------------------------------------------------------------------------

TEST_F(TqVectorTest, Quirk_linear_growth) {
  Slots vector;
  std::vector<std::uint32_t> lengths;
  for (int i = 0; i < 33; ++i) {
    vector.push_back(Slot(i));
    EXPECT_EQ(vector.length(), static_cast<std::uint32_t>(i) + 1);
    lengths.push_back(vector.physicalLength());
  }
  for (std::size_t i = 0; i < lengths.size(); ++i)
    EXPECT_EQ(lengths[i], i / 8 * 8 + 8) << "after " << i + 1;
}

TEST_F(TqVectorTest, NineElementsTakeEightSlotsAndThenSixteen) {
  Slots vector;
  vector.push_back(Slot(1));
  EXPECT_EQ(vector.physicalLength(), 8u);
  for (int i = 2; i <= 8; ++i)
    vector.push_back(Slot(i));
  EXPECT_EQ(vector.physicalLength(), 8u);
  vector.push_back(Slot(9));
  EXPECT_EQ(vector.physicalLength(), 16u);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

// A host that has nothing to say about growth in its empty block does not change how vectors grow.
TEST_F(TqVectorTest, BeginsWithAGrowCountOfEightWhateverStandsInTheEmptyBlock) {
  const std::uint32_t usual = std::exchange(gpEmptyVectorData->growCount, 0);
  Slots pushed;
  pushed.push_back(Slot(1));
  Slots resized;
  resized.setPhysicalLength(3);
  Slots cloned;
  static_cast<void>(cloned.begin());
  gpEmptyVectorData->growCount = usual;

  EXPECT_EQ(pushed.physicalLength(), 8u);
  for (const Slots* const vector : {&pushed, &resized, &cloned})
    EXPECT_EQ(blockOf(*vector)->growCount, 8u);
}

TEST_F(TqVectorTest, GrowsFromItsLengthAndNotFromItsSlots) {
  Slots vector;
  vector.setPhysicalLength(3);
  for (int i = 0; i < 3; ++i)
    vector.push_back(Slot(i));
  EXPECT_EQ(vector.physicalLength(), 3u);
  vector.push_back(Slot(3));
  EXPECT_EQ(vector.physicalLength(), 11u);
}

TEST_F(TqVectorTest, ALongerRequestIsMetExactly) {
  Slots vector;
  vector.setLogicalLength(9);
  EXPECT_EQ(vector.physicalLength(), 9u);
  vector.setLogicalLength(18);
  EXPECT_EQ(vector.physicalLength(), 18u);
  vector.setLogicalLength(19);
  EXPECT_EQ(vector.physicalLength(), 26u);
}

TEST_F(TqVectorTest, AShorterRequestGetsAWholeStep) {
  Slots vector;
  vector.setLogicalLength(1);
  EXPECT_EQ(vector.physicalLength(), 8u);
  vector.setLogicalLength(8);
  EXPECT_EQ(vector.physicalLength(), 8u);
}

TEST_F(TqVectorTest, KeepsAGrowCountOfItsOwnThroughCloneAndResize) {
  Slots vector = slots({1, 2});
  blockOf(vector)->growCount = 3;
  vector.setPhysicalLength(2);
  EXPECT_EQ(blockOf(vector)->growCount, 3u);
  const Slots shared(vector);
  vector.push_back(Slot(3));
  EXPECT_EQ(vector.physicalLength(), 5u);
  EXPECT_EQ(blockOf(vector)->growCount, 3u);
  const Slots sharedAgain(vector);
  static_cast<void>(vector.begin());
  EXPECT_EQ(blockOf(vector)->growCount, 3u);
  vector.setPhysicalLength(0);
  vector.push_back(Slot(1));
  EXPECT_EQ(blockOf(vector)->growCount, 8u);
  EXPECT_EQ(vector.physicalLength(), 8u);
}

// --- lengths --------------------------------------------------------------------------------------------------------

TEST_F(TqVectorTest, ClearingKeepsTheSlotsAndWhatTheyHold) {
  Slots vector = slots({1, 2, 3});
  const TqVectorBlock* const block = blockOf(vector);
  vector.clear();
  EXPECT_EQ(vector.length(), 0u);
  EXPECT_EQ(vector.physicalLength(), 8u);
  EXPECT_EQ(blockOf(vector), block);
  EXPECT_EQ(allSlots(vector), padded({1, 2, 3}, 8));
}

TEST_F(TqVectorTest, ClearingASharedVectorLeavesTheOthersAlone) {
  Slots vector = slots({1, 2, 3});
  const Slots other(vector);
  const long assignments = Slot::assignments;
  vector.clear();
  EXPECT_EQ(Slot::assignments, assignments);
  EXPECT_EQ(vector.physicalLength(), 8u);
  EXPECT_EQ(allSlots(vector), padded({}, 8));
  EXPECT_EQ(contents(other), (std::vector<int>{1, 2, 3}));
}

TEST_F(TqVectorTest, ClearingAnEmptyVectorKeepsTheEmptyBlock) {
  Slots vector;
  vector.clear();
  EXPECT_TRUE(isSharedEmptyBlock(vector));
}

TEST_F(TqVectorTest, TheSameLogicalLengthKeepsASharedBlockShared) {
  Slots vector = slots({1, 2});
  const Slots other(vector);
  vector.setLogicalLength(2);
  EXPECT_TRUE(share(vector, other));
}

TEST_F(TqVectorTest, ALongerLogicalLengthShowsWhatTheSlotsHold) {
  Slots vector = slots({1, 2, 3});
  vector.setLogicalLength(1);
  vector.setLogicalLength(5);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3, Slot::untouched, Slot::untouched}));
  EXPECT_EQ(vector.physicalLength(), 8u);
}

TEST_F(TqVectorTest, ANewBlockForgetsWhatLayBeyondTheLogicalLength) {
  Slots vector = slots({1, 2, 3});
  vector.setLogicalLength(1);
  vector.setLogicalLength(9);
  EXPECT_EQ(allSlots(vector), padded({1}, 9));
}

TEST_F(TqVectorTest, AShorterLogicalLengthOfASharedBlockCopiesOnlyWhatStays) {
  Slots vector = slots({1, 2, 3, 4, 5});
  const Slots other(vector);
  const long assignments = Slot::assignments;
  vector.setLogicalLength(2);
  EXPECT_EQ(Slot::assignments, assignments + 2);
  EXPECT_EQ(allSlots(vector), padded({1, 2}, 8));
  EXPECT_EQ(contents(other), (std::vector<int>{1, 2, 3, 4, 5}));
}

TEST_F(TqVectorTest, ALongerLogicalLengthWithinASharedBlockMakesItsOwn) {
  Slots vector = slots({1, 2});
  const Slots other(vector);
  vector.setLogicalLength(4);
  EXPECT_FALSE(share(vector, other));
  EXPECT_EQ(allSlots(vector), padded({1, 2}, 8));
  EXPECT_EQ(vector.length(), 4u);
  EXPECT_EQ(other.length(), 2u);
  EXPECT_EQ(references(other), 1);
}

TEST_F(TqVectorTest, SetsThePhysicalLengthExactly) {
  Slots vector = slots({1, 2, 3});
  vector.setPhysicalLength(5);
  EXPECT_EQ(allSlots(vector), padded({1, 2, 3}, 5));
  vector.setPhysicalLength(100);
  EXPECT_EQ(allSlots(vector), padded({1, 2, 3}, 100));
  EXPECT_EQ(vector.length(), 3u);
}

TEST_F(TqVectorTest, APhysicalLengthBelowTheLogicalOneCutsTheElements) {
  Slots vector = slots({1, 2, 3, 4});
  vector.setPhysicalLength(2);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2}));
  EXPECT_EQ(vector.physicalLength(), 2u);
}

TEST_F(TqVectorTest, AnotherPhysicalLengthIsAlwaysANewBlock) {
  Slots vector = slots({1, 2, 3});
  vector.setLogicalLength(1);
  const TqVectorBlock* const block = blockOf(vector);
  vector.setPhysicalLength(7);
  EXPECT_NE(blockOf(vector), block);
  EXPECT_EQ(allSlots(vector), padded({1}, 7));
}

TEST_F(TqVectorTest, TheSamePhysicalLengthKeepsASharedBlockShared) {
  Slots vector = slots({1, 2});
  const Slots other(vector);
  vector.setPhysicalLength(8);
  EXPECT_TRUE(share(vector, other));
}

TEST_F(TqVectorTest, APhysicalLengthOfZeroReturnsToTheEmptyBlock) {
  Slots vector = slots({1, 2});
  const Slots other(vector);
  const int before = gpEmptyVectorData->refCount;
  vector.setPhysicalLength(0);
  EXPECT_TRUE(isSharedEmptyBlock(vector));
  EXPECT_EQ(gpEmptyVectorData->refCount, before + 1);
  EXPECT_EQ(contents(other), (std::vector<int>{1, 2}));
  EXPECT_EQ(references(other), 1);
  Slots never;
  never.setPhysicalLength(0);
  EXPECT_TRUE(isSharedEmptyBlock(never));
}

TEST_F(TqVectorTest, APhysicalLengthGivenToAnEmptyVectorIsItsOwnBlock) {
  Slots vector;
  vector.setPhysicalLength(5);
  EXPECT_EQ(vector.length(), 0u);
  EXPECT_EQ(vector.physicalLength(), 5u);
  EXPECT_EQ(blockOf(vector)->growCount, 8u);
  EXPECT_EQ(allSlots(vector), padded({}, 5));
}

TEST_F(TqVectorTest, AnOtherPhysicalLengthOfASharedBlockLeavesTheOthersAlone) {
  Slots vector = slots({1, 2, 3});
  const Slots other(vector);
  vector.setPhysicalLength(2);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2}));
  EXPECT_EQ(contents(other), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(other.physicalLength(), 8u);
  EXPECT_EQ(references(other), 1);
}

// --- sharing --------------------------------------------------------------------------------------------------------

TEST_F(TqVectorTest, CopyingIsAPointerAndACount) {
  const Slots original = slots({1, 2, 3});
  Slots assigned = slots({9});
  const long assignments = Slot::assignments;
  const AllocationSpy spy;
  const Slots copied(original);
  assigned = copied;
  EXPECT_EQ(spy.allocations(), 0u);
  EXPECT_EQ(Slot::assignments, assignments);
  EXPECT_TRUE(share(original, copied));
  EXPECT_TRUE(share(original, assigned));
  EXPECT_EQ(references(original), 3);
}

TEST_F(TqVectorTest, AssignmentReleasesTheOldBlock) {
  Slots vector = slots({1, 2, 3});
  const Slots other(vector);
  const long live = Slot::live;
  {
    Slots target = slots({4, 5});
    EXPECT_EQ(Slot::live, live + 8);
    target = vector;
    EXPECT_EQ(Slot::live, live);
    EXPECT_EQ(references(vector), 3);
  }
  EXPECT_EQ(references(vector), 2);
  vector = Slots();
  EXPECT_EQ(references(other), 1);
}

TEST_F(TqVectorTest, AssignedToItselfItKeepsItsBlock) {
  Slots vector = slots({1, 2, 3});
  Slots& same = vector;
  vector = same;
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(references(vector), 1);
  vector = std::move(same);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3}));
  Slots empty;
  Slots& sameEmpty = empty;
  empty = sameEmpty;
  EXPECT_TRUE(isSharedEmptyBlock(empty));
}

TEST_F(TqVectorTest, MovingTakesTheBlockAndLeavesAUsableVector) {
  Slots vector = slots({1, 2, 3});
  const TqVectorBlock* const block = blockOf(vector);
  Slots moved(std::move(vector));
  EXPECT_EQ(blockOf(moved), block);
  EXPECT_EQ(references(moved), 1);
  vector = slots({7});
  EXPECT_EQ(contents(vector), std::vector<int>{7});
  Slots target = slots({8});
  target = std::move(moved);
  EXPECT_EQ(blockOf(target), block);
  EXPECT_EQ(references(target), 1);
  moved = slots({9});
  EXPECT_EQ(contents(moved), std::vector<int>{9});
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<Slots>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<Slots>);
}

TEST_F(TqVectorTest, WritingACopyLeavesTheOriginalAlone) {
  const Slots original = slots({1, 2, 3});
  Slots copied(original);
  copied[1] = Slot(20);
  EXPECT_EQ(contents(original), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(contents(copied), (std::vector<int>{1, 20, 3}));
  EXPECT_FALSE(share(original, copied));
  EXPECT_EQ(references(original), 1);
  EXPECT_EQ(references(copied), 1);
}

// Accesses that give a place to write to.
const std::vector<std::pair<const char*, std::function<Slot*(Slots&)>>> writingAccesses = {
    {"begin", [](Slots& vector) { return vector.begin(); }},
    {"end", [](Slots& vector) { return vector.end() - vector.length(); }},
    {"at", [](Slots& vector) { return &vector.at(0); }},
    {"operator[]", [](Slots& vector) { return &vector[0]; }},
    {"iteratorAt", [](Slots& vector) { return vector.iteratorAt(0); }},
    {"last", [](Slots& vector) { return &vector.last() - (vector.length() - 1); }},
};

TEST_F(TqVectorTest, EveryWritingAccessToASharedBlockCopiesItFirst) {
  for (const auto& [name, access] : writingAccesses) {
    SCOPED_TRACE(name);
    const Slots original = slots({1, 2, 3});
    Slots vector(original);
    const long assignments = Slot::assignments;
    Slot* const first = access(vector);
    EXPECT_FALSE(share(original, vector));
    EXPECT_EQ(first, constant(vector).begin());
    EXPECT_EQ(Slot::assignments, assignments + 3);
    EXPECT_EQ(vector.physicalLength(), 8u);
    EXPECT_EQ(allSlots(vector), padded({1, 2, 3}, 8));
    EXPECT_EQ(references(original), 1);
  }
}

TEST_F(TqVectorTest, AWritingAccessToAnUnsharedBlockCopiesNothing) {
  for (const auto& [name, access] : writingAccesses) {
    SCOPED_TRACE(name);
    Slots vector = slots({1, 2, 3});
    const TqVectorBlock* const block = blockOf(vector);
    const long assignments = Slot::assignments;
    const AllocationSpy spy;
    access(vector);
    EXPECT_EQ(spy.allocations(), 0u);
    EXPECT_EQ(Slot::assignments, assignments);
    EXPECT_EQ(blockOf(vector), block);
  }
}

TEST_F(TqVectorTest, ReadingNeverCopies) {
  const Slots original = slots({1, 2, 3});
  const Slots vector(original);
  const AllocationSpy spy;
  EXPECT_EQ(vector.begin()->value, 1);
  EXPECT_EQ((vector.end() - 1)->value, 3);
  EXPECT_EQ(vector.at(1).value, 2);
  EXPECT_EQ(vector[1].value, 2);
  EXPECT_EQ(vector.iteratorAt(1)->value, 2);
  EXPECT_EQ(vector.last().value, 3);
  EXPECT_EQ(spy.allocations(), 0u);
  EXPECT_TRUE(share(original, vector));
}

TEST_F(TqVectorTest, ASharedBlockOfAGivenSizeIsCopiedWithAllItsSlots) {
  Slots original = slots({1});
  original.setPhysicalLength(40);
  Slots vector(original);
  static_cast<void>(vector.begin());
  EXPECT_EQ(vector.physicalLength(), 40u);
  EXPECT_EQ(vector.length(), 1u);
}

TEST_F(TqVectorTest, AnEmptiedVectorIsCopiedWithItsSlots) {
  Slots original = slots({1, 2});
  original.clear();
  Slots vector(original);
  static_cast<void>(vector.begin());
  EXPECT_EQ(vector.physicalLength(), 8u);
  EXPECT_EQ(allSlots(vector), padded({}, 8));
}

TEST_F(TqVectorTest, AddingToASharedVectorLeavesTheOthersAlone) {
  Slots vector = slots({1, 2});
  const Slots other(vector);
  vector.push_back(Slot(3));
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(contents(other), (std::vector<int>{1, 2}));
  EXPECT_EQ(allSlots(other), padded({1, 2}, 8));
  EXPECT_EQ(vector.physicalLength(), 8u);
}

TEST_F(TqVectorTest, TheLastReleaseFreesElementsAndBlock) {
  const long live = Slot::live;
  const long blocks = liveHostBlocks();
  auto vector = std::make_unique<Slots>(slots({1, 2, 3}));
  auto other = std::make_unique<Slots>(*vector);
  vector.reset();
  EXPECT_EQ(Slot::live, live + 8);
  EXPECT_EQ(liveHostBlocks(), blocks + 1);
  other.reset();
  EXPECT_EQ(Slot::live, live);
  EXPECT_EQ(liveHostBlocks(), blocks);
}

TEST_F(TqVectorTest, TakesBlocksFromTheHostsHeapAndElementsAsArrays) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  const std::uint64_t calls = hostAllocations();
  {
    const AllocationSpy spy;
    {
      Slots vector;
      vector.setPhysicalLength(4);
      EXPECT_EQ(spy.counts().arrayNews, 1u);
      EXPECT_EQ(spy.counts().news, 1u);
    }
    EXPECT_EQ(spy.counts().arrayDeletes, 1u);
    EXPECT_EQ(spy.counts().deletes, 1u);
  }
  EXPECT_EQ(hostAllocations(), calls + 1);
}

TEST_F(TqVectorTest, AListOfListsSharesTheInnerLists) {
  const TqVectorBlock* block = nullptr;
  TqVector<Slots> outer;
  {
    const Slots inner = slots({1, 2});
    block = blockOf(inner);
    outer.push_back(inner);
  }
  EXPECT_EQ(blockOf(constant(outer)[0]), block);
  TqVector<Slots> copied(outer);
  copied[0].push_back(Slot(3));
  EXPECT_EQ(contents(constant(outer)[0]), (std::vector<int>{1, 2}));
  EXPECT_EQ(contents(constant(copied)[0]), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(blockOf(constant(outer)[0]), block);
}

// --- adding ---------------------------------------------------------------------------------------------------------

TEST_F(TqVectorTest, AppendGivesTheVectorBack) {
  Slots vector;
  const Slots tail = slots({3});
  vector.append(Slot(1)).append(Slot(2)).append(tail);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3}));
}

TEST_F(TqVectorTest, AppendsAllElementsOfAnother) {
  Slots vector = slots({1, 2});
  const Slots other = slots({3, 4, 5});
  vector.append(other);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3, 4, 5}));
  EXPECT_EQ(vector.physicalLength(), 8u);
  EXPECT_EQ(contents(other), (std::vector<int>{3, 4, 5}));
}

TEST_F(TqVectorTest, AppendingALongListGrowsOnce) {
  Slots vector = slots({1});
  Slots other;
  other.setLogicalLength(30);
  vector.append(other);
  EXPECT_EQ(vector.length(), 31u);
  EXPECT_EQ(vector.physicalLength(), 31u);
}

TEST_F(TqVectorTest, AppendingAnEmptyVectorChangesNothing) {
  Slots vector = slots({1});
  const Slots other(vector);
  vector.append(Slots());
  EXPECT_TRUE(share(vector, other));
  Slots empty;
  empty.append(Slots());
  EXPECT_TRUE(isSharedEmptyBlock(empty));
}

TEST_F(TqVectorTest, AppendsAVectorThatIsGivenAway) {
  Slots vector = slots({1, 2});
  Slots given = slots({3, 4});
  vector.append(std::move(given));
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(vector.physicalLength(), 8u);
  given = slots({9});
  EXPECT_EQ(contents(given), std::vector<int>{9});
  TqVector<std::string> texts;
  TqVector<std::string> more;
  const std::string text(100, 'x');
  more.push_back(text);
  texts.append(std::move(more));
  EXPECT_EQ(constant(texts)[0], text);
}

TEST_F(TqVectorTest, AppendingAVectorThatIsGivenAwayLeavesThoseThatShareItAlone) {
  TqVector<std::string> given;
  const std::string text(100, 'x');
  given.push_back(text);
  const TqVector<std::string> other(given);
  TqVector<std::string> vector;
  vector.append(std::move(given));
  EXPECT_EQ(constant(vector)[0], text);
  EXPECT_EQ(other[0], text);
}

TEST_F(TqVectorTest, AppendingAVectorThatIsGivenAwayToItselfDoublesIt) {
  TqVector<std::string> vector;
  const std::string text(100, 'x');
  vector.push_back(text);
  TqVector<std::string>& same = vector;
  vector.append(std::move(same));
  ASSERT_EQ(vector.length(), 2u);
  EXPECT_EQ(constant(vector)[0], text);
  EXPECT_EQ(constant(vector)[1], text);
}

TEST_F(TqVectorTest, IsAppendedToItself) {
  Slots withinSlots = slots({1, 2, 3});
  withinSlots.append(withinSlots);
  EXPECT_EQ(contents(withinSlots), (std::vector<int>{1, 2, 3, 1, 2, 3}));
  Slots growing = slots({1, 2, 3, 4, 5, 6});
  growing.append(growing);
  EXPECT_EQ(contents(growing), (std::vector<int>{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6}));
  Slots shared = slots({1, 2});
  const Slots other(shared);
  shared.append(shared);
  EXPECT_EQ(contents(shared), (std::vector<int>{1, 2, 1, 2}));
  EXPECT_EQ(contents(other), (std::vector<int>{1, 2}));
  Slots empty;
  empty.append(empty);
  EXPECT_TRUE(isSharedEmptyBlock(empty));
}

TEST_F(TqVectorTest, IsAppendedToWhatSharesItsBlock) {
  Slots vector = slots({1, 2, 3, 4, 5});
  const Slots other(vector);
  vector.append(other);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3, 4, 5, 1, 2, 3, 4, 5}));
  EXPECT_EQ(contents(other), (std::vector<int>{1, 2, 3, 4, 5}));
}

TEST_F(TqVectorTest, TakesOneOfItsOwnElements) {
  Slots full = slots({1, 2, 3, 4, 5, 6, 7, 8});
  full.push_back(constant(full)[2]);  // moves to a new block
  EXPECT_EQ(contents(full), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 3}));
  Slots roomy = slots({1, 2});
  roomy.push_back(constant(roomy).last());
  EXPECT_EQ(contents(roomy), (std::vector<int>{1, 2, 2}));
  Slots shared = slots({1, 2});
  {
    const Slots other(shared);
    shared.push_back(constant(shared)[0]);
    EXPECT_EQ(contents(other), (std::vector<int>{1, 2}));
  }
  EXPECT_EQ(contents(shared), (std::vector<int>{1, 2, 1}));
}

TEST_F(TqVectorTest, TakesWhatLiesBeyondItsLength) {
  Slots vector = slots({1, 2, 3});
  vector.setLogicalLength(1);
  vector.push_back(static_cast<const Slot*>(blockOf(vector)->elements)[2]);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 3}));
}

TEST_F(TqVectorTest, TakesAnElementOfAVectorThatSharesItsBlock) {
  Slots vector = slots({1, 2, 3, 4, 5, 6, 7, 8});
  const Slots other(vector);
  vector.push_back(other[4]);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 5}));
}

TEST_F(TqVectorTest, HoldsStringsAndLists) {
  TqVector<std::string> texts;
  const std::string text(100, 'x');
  for (int i = 0; i < 20; ++i)
    texts.push_back(text + std::to_string(i));
  texts.append(texts);
  EXPECT_EQ(constant(texts)[39], text + "19");
  texts.push_back(constant(texts)[0]);
  EXPECT_EQ(constant(texts).last(), text + "0");
}

// --- wrong indexes --------------------------------------------------------------------------------------------------

TEST_F(TqVectorTest, KnowsItsValidIndexes) {
  Slots vector = slots({1, 2, 3});
  EXPECT_FALSE(vector.isValidIndex(-1));
  EXPECT_TRUE(vector.isValidIndex(0));
  EXPECT_TRUE(vector.isValidIndex(2));
  EXPECT_FALSE(vector.isValidIndex(3));
  EXPECT_FALSE(vector.isValidIndex(7)) << "a slot that is not in use";
  EXPECT_FALSE(vector.isValidIndex(std::numeric_limits<int>::min()));
  EXPECT_FALSE(vector.isValidIndex(std::numeric_limits<int>::max()));
  vector.clear();
  EXPECT_FALSE(vector.isValidIndex(0));
}

TEST_F(TqVectorTest, Quirk_index_not_clamped) {
  expectReports({24, 24, 24, 24, 24, 24, 24});
  Slots vector = slots({1, 2, 3});
  vector.setLogicalLength(2);
  const auto elements = address(constant(vector).begin());
  EXPECT_EQ(address(&constant(vector).at(-1)), elements - sizeof(Slot));
  EXPECT_EQ(address(&vector.at(-1)), elements - sizeof(Slot));
  EXPECT_EQ(address(&constant(vector).at(2)), elements + 2 * sizeof(Slot));
  EXPECT_EQ(address(constant(vector).iteratorAt(1000)), elements + 1000 * sizeof(Slot));
  EXPECT_EQ(address(vector.iteratorAt(-3)), elements - 3 * sizeof(Slot));
  EXPECT_EQ(vector.at(2).value, 3) << "the slot after the length";
  vector.at(2) = Slot(30);
  EXPECT_EQ(allSlots(vector), padded({1, 2, 30}, 8));
  EXPECT_EQ(vector.length(), 2u);
}

TEST_F(TqVectorTest, TheSubscriptReportsAWrongIndexToo) {
  expectReports({24, 24});
  Slots vector = slots({1, 2, 3});
  EXPECT_EQ(constant(vector)[5].value, Slot::untouched);
  EXPECT_EQ(vector[3].value, Slot::untouched);
}

TEST_F(TqVectorTest, AValidIndexIsNotReported) {
  Slots vector = slots({1, 2, 3});
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(vector.at(i).value, i + 1);
    EXPECT_EQ(constant(vector).at(i).value, i + 1);
    EXPECT_EQ(vector.iteratorAt(i)->value, i + 1);
    EXPECT_EQ(constant(vector).iteratorAt(i)->value, i + 1);
  }
}

TEST_F(TqVectorTest, AWrongIndexIntoASharedBlockGivesAPlaceOfTheVectorsOwn) {
  expectReports({24});
  const Slots original = slots({1, 2});
  Slots vector(original);
  vector.at(5) = Slot(60);
  EXPECT_FALSE(share(original, vector));
  EXPECT_EQ(allSlots(original), padded({1, 2}, 8));
  EXPECT_EQ(allSlots(vector)[5], 60);
}

TEST_F(TqVectorTest, AnIndexIntoAnEmptyVectorGivesAPlaceOfTheVectorsOwn) {
  expectReports({24});
  Slots vector;
  vector.at(0) = Slot(5);
  EXPECT_EQ(vector.physicalLength(), 16u);
  EXPECT_EQ(vector.length(), 0u);
  EXPECT_EQ(allSlots(vector), padded({5}, 16));
}

// Stays reachable, so that what is left behind on purpose is not taken for a leak.
std::vector<const Slot*>& leftBehind() {
  static std::vector<const Slot*> elements;
  return elements;
}

TEST_F(TqVectorTest, Quirk_last_of_empty) {
  expectReports({2, 2, 2});
  const long live = Slot::live;
  Slots vector;
  for (int i = 0; i < 2; ++i)
    leftBehind().push_back(&vector.last());
  leftBehind().push_back(&constant(vector).last());
  vector = slots({1});
  ASSERT_EQ(leftBehind().size() % 3, 0u);
  std::vector<const Slot*> fresh(leftBehind().end() - 3, leftBehind().end());
  EXPECT_NE(fresh[0], fresh[1]);
  EXPECT_NE(fresh[1], fresh[2]);
  EXPECT_EQ(Slot::live, live + 3 + 8) << "nobody frees the three elements";
  for (const Slot* element : fresh) {
    EXPECT_EQ(element->value, Slot::untouched);
    delete element;  // for the sake of the counts above
  }
  leftBehind().clear();
}

TEST(TqVectorOfNumbers, TheLastOfAnEmptyVectorIsThereWhateverMemoryIsMissing) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new cannot be failed in this build";
  static auto& owned = *new std::vector<int*>;  // nobody frees them
  Ints vector;
  std::uint64_t n = 0;
  for (std::uint64_t refused = 1; refused > 0;) {
    SCOPED_TRACE(++n);
    int* element = nullptr;
    {
      const tests::AllocationSpy spy = tests::AllocationSpy::failNth(n);
      element = &vector.last();
      refused = spy.counts().failures;
    }
    EXPECT_EQ(*element, 0);
    *element = 7;  // a stand-in must not hand it on
    owned.push_back(element);
  }
  EXPECT_GT(n, 2u);
}

TEST_F(TqVectorTest, TheLastOfAnEmptyVectorLeavesTheVectorAlone) {
  expectReports({2});
  Slots vector;
  std::unique_ptr<Slot> element(&vector.last());
  element->value = 7;
  EXPECT_TRUE(vector.isEmpty());
  EXPECT_TRUE(isSharedEmptyBlock(vector));
}

TEST_F(TqVectorTest, TheLastOfAnEmptiedVectorIsNotOneOfItsSlots) {
  expectReports({2});
  Slots vector = slots({1});
  vector.clear();
  const std::unique_ptr<Slot> element(&vector.last());
  EXPECT_NE(element.get(), blockOf(vector)->elements);
  EXPECT_EQ(element->value, Slot::untouched);
}

TEST_F(TqVectorTest, TheLastElementMovesWithTheLength) {
  Slots vector = slots({1, 2, 3});
  EXPECT_EQ(vector.last().value, 3);
  vector.setLogicalLength(2);
  EXPECT_EQ(vector.last().value, 2);
  vector.last() = Slot(20);
  EXPECT_EQ(contents(vector), (std::vector<int>{1, 20}));
}

// --- exhausted memory -----------------------------------------------------------------------------------------------

// What an operation may be done to: a vector, and one that shares its block.
struct Given {
  Slots vector;
  std::optional<Slots> sharer;
  Slots other = slots({7, 8, 9});
};

struct Operation {
  const char* name;
  std::function<void(Given&)> run;
  // The outcome is an address, which exhausted memory leaves in the shared block.
  bool reads = false;
};

const std::vector<Operation> operations = {
    {"push_back", [](Given& given) { given.vector.push_back(Slot(50)); }},
    {"append an element", [](Given& given) { given.vector.append(Slot(50)); }},
    {"push_back of an own element",
     [](Given& given) {
       const Slots& vector = given.vector;
       if (!vector.isEmpty()) given.vector.push_back(vector[0]);
     }},
    {"append a vector", [](Given& given) { given.vector.append(given.other); }},
    {"append a vector that is given away",
     [](Given& given) {
       Slots away(given.other);
       given.vector.append(std::move(away));
     }},
    {"append an unshared vector that is given away",
     [](Given& given) { given.vector.append(std::move(given.other)); }},
    {"append itself", [](Given& given) { given.vector.append(given.vector); }},
    {"clear", [](Given& given) { given.vector.clear(); }},
    {"setLogicalLength, shorter", [](Given& given) { given.vector.setLogicalLength(1); }},
    {"setLogicalLength, longer", [](Given& given) { given.vector.setLogicalLength(40); }},
    {"setPhysicalLength, shorter", [](Given& given) { given.vector.setPhysicalLength(2); }},
    {"setPhysicalLength, longer", [](Given& given) { given.vector.setPhysicalLength(40); }},
    {"setPhysicalLength 0", [](Given& given) { given.vector.setPhysicalLength(0); }},
    {"begin", [](Given& given) { static_cast<void>(given.vector.begin()); }, true},
    {"end", [](Given& given) { static_cast<void>(given.vector.end()); }, true},
    {"at",
     [](Given& given) {
       if (!given.vector.isEmpty()) static_cast<void>(given.vector.at(0));
     },
     true},
    {"last",
     [](Given& given) {
       if (!given.vector.isEmpty()) static_cast<void>(given.vector.last());
     },
     true},
    {"copyBeforeWrite", [](Given& given) { static_cast<void>(given.vector.copyBeforeWrite()); }, true},
};

const std::vector<std::pair<const char*, std::function<Given()>>> situations = {
    {"empty", [] { return Given{}; }},
    {"own block",
     [] {
       return Given{slots({1, 2, 3}), {}};
     }},
    {"full block",
     [] {
       return Given{slots({1, 2, 3, 4, 5, 6, 7, 8}), {}};
     }},
    {"shared block",
     [] {
       Given given{slots({1, 2, 3}), {}};
       given.sharer = given.vector;
       return given;
     }},
    {"shared full block",
     [] {
       Given given{slots({1, 2, 3, 4, 5, 6, 7, 8}), {}};
       given.sharer = given.vector;
       return given;
     }},
    {"emptied shared block",
     [] {
       Given given{slots({1, 2, 3}), {}};
       given.vector.clear();
       given.sharer = given.vector;
       return given;
     }},
};

struct State {
  const TqVectorBlock* block;
  std::vector<int> contents, all;
  int references;
  std::uint32_t growCount;

  explicit State(const Slots& vector)
      : block(blockOf(vector)),
        contents(tests::contents(vector)),
        all(allSlots(vector)),
        references(tests::references(vector)),
        growCount(block->growCount) {}
  friend bool operator==(const State&, const State&) = default;
};

// Runs every operation in every situation under every fault, until a run goes through.
template <class MakeFault, class Failures>
void failEverywhere(const MakeFault& makeFault, const Failures& failures, int& failed) {
  for (const auto& [situation, make] : situations) {
    for (const Operation& operation : operations) {
      SCOPED_TRACE(std::string(operation.name) + " on: " + situation);
      Given undisturbed = make();
      operation.run(undisturbed);
      const std::vector<int> outcome = contents(undisturbed.vector);
      const std::uint32_t physical = undisturbed.vector.physicalLength();
      for (std::uint64_t n = 1;; ++n) {
        ASSERT_LT(n, 20u);
        Given given = make();
        const State before(given.vector);
        const long liveSlots = Slot::live;
        const long blocks = liveHostBlocks();
        clearReports();
        bool hasFailed = false;
        {
          const auto fault = makeFault(n);
          EXPECT_NO_THROW(operation.run(given));
          hasFailed = failures(fault) > 0;
        }
        if (!hasFailed) {
          EXPECT_TRUE(reports().empty());
          EXPECT_EQ(contents(given.vector), outcome);
          EXPECT_EQ(given.vector.physicalLength(), physical);
          break;
        }
        ++failed;
        EXPECT_EQ(reports(), std::vector<int>{6}) << "allocation " << n;
        EXPECT_TRUE(State(given.vector) == before) << "allocation " << n;
        EXPECT_EQ(Slot::live, liveSlots) << "allocation " << n;
        EXPECT_EQ(liveHostBlocks(), blocks) << "allocation " << n;
        EXPECT_TRUE(!given.sharer.has_value() || share(given.vector, *given.sharer));
        // Afterwards it works as before.
        operation.run(given);
        EXPECT_EQ(contents(given.vector), outcome) << "after allocation " << n;
        EXPECT_EQ(given.vector.physicalLength(), physical) << "after allocation " << n;
      }
      clearReports();
    }
  }
}

TEST_F(TqVectorTest, KeepsItsStateWhenThereIsNoMemoryForElements) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  int failed = 0;
  failEverywhere([](std::uint64_t n) { return AllocationSpy::failNth(n); },
                 [](const AllocationSpy& fault) { return fault.counts().failures; }, failed);
  EXPECT_GT(failed, 40);
}

TEST_F(TqVectorTest, KeepsItsStateWhenThereIsNoMemoryForABlock) {
  int failed = 0;
  failEverywhere([](std::uint64_t n) { return HostHeapFault::failNth(n); },
                 [](const HostHeapFault& fault) { return fault.failures(); }, failed);
  EXPECT_GT(failed, 40);
}

TEST_F(TqVectorTest, KeepsItsStateWhenNotEvenTheReportFindsMemory) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  for (const auto& [situation, make] : situations) {
    for (const Operation& operation : operations) {
      SCOPED_TRACE(std::string(operation.name) + " on: " + situation);
      Given given = make();
      const State before(given.vector);
      bool hasFailed = false;
      {
        const AllocationSpy fault = AllocationSpy::failFrom(1);
        EXPECT_NO_THROW(operation.run(given));
        hasFailed = fault.counts().failures > 0;
      }
      EXPECT_TRUE(!hasFailed || State(given.vector) == before);
    }
  }
  clearReports();
}

TEST_F(TqVectorTest, Quirk_unchanged_without_memory) {
  expectReports({6, 6});
  Slots full = slots({1, 2, 3, 4, 5, 6, 7, 8});
  Slots shared = slots({1, 2, 3});
  const Slots sharer(shared);
  {
    const HostHeapFault fault = HostHeapFault::failAll();
    full.push_back(Slot(9));
    shared.clear();
  }
  EXPECT_EQ(contents(full), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(contents(shared), (std::vector<int>{1, 2, 3}));
}

TEST_F(TqVectorTest, Quirk_shared_block_written_without_memory) {
  expectReports({6});
  Slots vector = slots({1, 2, 3});
  const Slots sharer(vector);
  {
    const HostHeapFault fault = HostHeapFault::failAll();
    vector.at(1) = Slot(20);
  }
  EXPECT_TRUE(share(vector, sharer));
  EXPECT_EQ(contents(sharer), (std::vector<int>{1, 20, 3}));
}

TEST_F(TqVectorTest, TellsWhetherItCouldMakeABlockOfItsOwn) {
  expectReports({6, 6, 6});
  Slots vector = slots({1, 2, 3});
  const Slots other(vector);
  {
    const HostHeapFault fault = HostHeapFault::failAll();
    EXPECT_FALSE(vector.copyBeforeWrite());
    EXPECT_FALSE(vector.setLogicalLength(1));
    EXPECT_FALSE(vector.setPhysicalLength(9));
    EXPECT_TRUE(vector.setLogicalLength(3));
    EXPECT_TRUE(vector.setPhysicalLength(8));
  }
  EXPECT_TRUE(vector.copyBeforeWrite());
  EXPECT_TRUE(vector.copyBeforeWrite());
  EXPECT_TRUE(vector.setLogicalLength(1));
  EXPECT_TRUE(vector.setPhysicalLength(9));
  EXPECT_TRUE(vector.setPhysicalLength(0));
}

TEST_F(TqVectorTest, NeedsNoMemoryToBecomeEmptyOrShared) {
  Slots vector = slots({1, 2, 3});
  const Slots other(vector);
  const HostHeapFault heapFault = HostHeapFault::failAll();
  const AllocationSpy fault = AllocationSpy::failFrom(1);
  Slots copied(vector);
  copied = other;
  vector.setPhysicalLength(0);
  EXPECT_EQ(heapFault.failures(), 0u);
  EXPECT_EQ(fault.counts().failures, 0u);
  EXPECT_TRUE(vector.isEmpty());
}

// --- against the reference ------------------------------------------------------------------------------------------

static_assert(untouchedElement == Slot::untouched);

enum class Step {
  Push,
  PushOwn,
  PushOfAnother,
  Append,
  Clear,
  SetLogical,
  SetPhysical,
  Assign,
  MoveAssign,
  Replace,
  PushWhileCopied,
  WriteAt,
  WriteSubscript,
  WriteLast,
  WriteAll,
  TouchBegin,
  TouchEnd,
  Count
};

struct Move {
  Step step;
  std::size_t to;
  std::size_t from;
  std::uint32_t number;

  friend std::ostream& operator<<(std::ostream& os, const Move& move) {
    return os << "step " << static_cast<int>(move.step) << " to " << move.to << " from " << move.from
              << " number " << move.number;
  }
};

class Comparison {
 public:
  static constexpr std::size_t vectors = 4;

  Comparison() : real_(vectors), model_(vectors, ReferenceVector(empty_)) {}

  void make(const Move& move) {
    Slots& vector = real_[move.to];
    ReferenceVector& model = model_[move.to];
    const std::uint32_t length = model.block().logical;
    const std::uint32_t otherLength = model_[move.from].block().logical;
    const int number = static_cast<int>(move.number) + 100;
    switch (move.step) {
      case Step::Push:
        vector.push_back(Slot(number));
        model.push(number);
        break;
      case Step::PushOwn: {
        if (length == 0) break;
        const int held = model.block().slots[move.number % length];
        vector.push_back(constant(vector)[move.number % length]);
        model.push(held);
        break;
      }
      case Step::PushOfAnother: {
        if (otherLength == 0) break;
        const int held = model_[move.from].block().slots[move.number % otherLength];
        vector.append(constant(real_[move.from])[move.number % otherLength]);
        model.push(held);
        break;
      }
      case Step::Append: {
        if (length + otherLength > 500) break;
        const std::vector<int> numbers = model_[move.from].contents();
        vector.append(real_[move.from]);
        model.append(numbers);
        break;
      }
      case Step::Clear:
        vector.clear();
        model.setLogicalLength(0);
        break;
      case Step::SetLogical:
        vector.setLogicalLength(move.number);
        model.setLogicalLength(move.number);
        break;
      case Step::SetPhysical:
        vector.setPhysicalLength(move.number);
        model.setPhysicalLength(move.number);
        break;
      case Step::Assign:
        vector = real_[move.from];
        model = model_[move.from];
        break;
      case Step::MoveAssign: {
        if (move.to == move.from) break;
        vector = std::move(real_[move.from]);
        real_[move.from] = Slots();
        model = model_[move.from];
        model_[move.from] = ReferenceVector(empty_);
        break;
      }
      case Step::Replace:
        vector = Slots();
        model = ReferenceVector(empty_);
        break;
      case Step::PushWhileCopied: {
        const Slots copied(real_[move.from]);
        const ReferenceVector modelCopied(model_[move.from]);
        vector.push_back(Slot(number));
        model.push(number);
        RC_ASSERT(contents(copied) == modelCopied.contents());
        break;
      }
      case Step::WriteAt:
        if (length == 0) break;
        vector.at(static_cast<int>(move.number % length)) = Slot(number);
        model.write(move.number % length, number);
        break;
      case Step::WriteSubscript:
        if (length == 0) break;
        vector[move.number % length] = Slot(number);
        model.write(move.number % length, number);
        break;
      case Step::WriteLast:
        if (length == 0) break;
        vector.last() = Slot(number);
        model.write(length - 1, number);
        break;
      case Step::WriteAll:
        for (Slot& slot : vector)
          slot.value = number;
        model.copyBeforeWrite(length);
        for (std::uint32_t i = 0; i < length; ++i)
          model.write(i, number);
        break;
      case Step::TouchBegin:
        static_cast<void>(vector.begin());
        model.copyBeforeWrite(length);
        break;
      case Step::TouchEnd:
        static_cast<void>(vector.end());
        model.copyBeforeWrite(length);
        break;
      case Step::Count:
        break;
    }
  }

  void check() const {
    std::map<const void*, const void*> blocks;
    long liveSlots = 0;
    for (std::size_t i = 0; i < vectors; ++i) {
      const Slots& vector = real_[i];
      const ReferenceVector& model = model_[i];
      RC_ASSERT(vector.length() == model.block().logical);
      RC_ASSERT(vector.physicalLength() == model.physical());
      RC_ASSERT(blockOf(vector)->growCount == model.block().growCount);
      RC_ASSERT(contents(vector) == model.contents());
      RC_ASSERT(allSlots(vector) == model.block().slots);
      RC_ASSERT(isSharedEmptyBlock(vector) == (model.identity() == empty_.get()));
      if (!isSharedEmptyBlock(vector)) {
        RC_ASSERT(references(vector) == model.sharers());
      }
      const auto [known, isNew] = blocks.emplace(blockOf(vector), model.identity());
      const bool sharesAsTheModelDoes = known->second == model.identity();
      RC_ASSERT(sharesAsTheModelDoes);
      if (isNew) liveSlots += static_cast<long>(model.physical());
    }
    std::set<const void*> modelBlocks;
    for (const ReferenceVector& model : model_)
      modelBlocks.insert(model.identity());
    RC_ASSERT(modelBlocks.size() == blocks.size());
    RC_ASSERT(Slot::live - liveBefore_ == liveSlots);
  }

 private:
  const long liveBefore_ = Slot::live;
  std::shared_ptr<ReferenceBlock> empty_ = std::make_shared<ReferenceBlock>();
  std::vector<Slots> real_;
  std::vector<ReferenceVector> model_;
};

RC_GTEST_PROP(TqVectorModel, BehavesAsTheSimplestVectorThatShares, ()) {
  const auto moves = *rc::gen::container<std::vector<Move>>(rc::gen::build<Move>(
      rc::gen::set(&Move::step, rc::gen::map(rc::gen::inRange(0, static_cast<int>(Step::Count)),
                                             [](int step) { return static_cast<Step>(step); })),
      rc::gen::set(&Move::to, rc::gen::inRange<std::size_t>(0, Comparison::vectors)),
      rc::gen::set(&Move::from, rc::gen::inRange<std::size_t>(0, Comparison::vectors)),
      rc::gen::set(&Move::number, rc::gen::inRange<std::uint32_t>(0, 36))));
  clearReports();
  const long live = Slot::live;
  const long blocks = liveHostBlocks();
  {
    Comparison comparison;
    for (const Move& move : moves) {
      comparison.make(move);
      comparison.check();
    }
  }
  RC_ASSERT(Slot::live == live);
  RC_ASSERT(liveHostBlocks() == blocks);
  RC_ASSERT(reports().empty());
}

// --- threads --------------------------------------------------------------------------------------------------------

TEST(TqVectorThreads, CopiesAreMadeWrittenAndDestroyedOnSeveralThreads) {
  Ints original;
  for (int i = 0; i < 20; ++i)
    original.push_back(i);
  const long blocks = liveHostBlocks();
  std::vector<std::thread> threads;
  std::vector<int> wrong(4, 0);
  for (int& mistakes : wrong) {
    threads.emplace_back([&original, &mistakes] {
      for (int i = 0; i < 1000; ++i) {
        const Ints read(constant(original));
        Ints written;
        written = read;
        written[3] = i;
        written.push_back(i);
        const Ints empty;
        if (constant(read)[3] != 3 || read.length() != 20 || constant(written)[3] != i || !empty.isEmpty())
          ++mistakes;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(wrong, std::vector<int>(4, 0));
  EXPECT_EQ(blockOf(original)->refCount, 1);
  EXPECT_EQ(liveHostBlocks(), blocks);
}

TEST(TqVectorThreads, TwoOwnersOfABlockMayBothWrite) {
  const long blocks = liveHostBlocks();
  for (int i = 0; i < 300; ++i) {
    Ints first;
    for (int k = 0; k < 4; ++k)
      first.push_back(k);
    Ints second(first);
    // Either may find itself the last owner and write in place; neither may see the other's number.
    std::thread other([second = std::move(second)]() mutable {
      second[0] = 100;
      EXPECT_EQ(constant(second)[1], 1);
      second.clear();
    });
    first[0] = 200;
    first[1] = 201;
    other.join();
    EXPECT_EQ(constant(first)[0], 200);
    EXPECT_EQ(constant(first)[3], 3);
  }
  EXPECT_EQ(liveHostBlocks(), blocks);
}

TEST(TqVectorThreads, TheLastOwnerMayBeAnyThread) {
  const long blocks = liveHostBlocks();
  for (int i = 0; i < 300; ++i) {
    auto shared = std::make_unique<Ints>();
    shared->push_back(i);
    std::thread other([copied = *shared, i] { EXPECT_EQ(copied[0], i); });
    shared.reset();
    other.join();
  }
  EXPECT_EQ(liveHostBlocks(), blocks);
}

}  // namespace
}  // namespace velt::tests
