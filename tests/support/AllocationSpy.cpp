#include "tests/support/AllocationSpy.h"

#include <gtest/gtest.h>

#include <new>

namespace velt::tests {
namespace {

// Plain data: allocation happens before anything is constructed.
struct Watch {
  std::uint64_t first;  // fails from this operator new
  std::uint64_t last;   // to this one, both counted from 1
  AllocationCounts counts;
};
constinit thread_local Watch watch{};
constinit thread_local bool newIsSeen = false;
constinit thread_local int pauses = 0;

}  // namespace

AllocationSpy::AllocationSpy(std::uint64_t first, std::uint64_t last) {
  watch = {};
  ::operator delete(::operator new(1));  // called by name, which no compiler leaves out
  newIsSeen = watch.counts.news == 1;
  EXPECT_EQ(watch.counts.blocks, 1u)
      << "no test file of this executable includes tests/support/ReplacedAllocation.h";
  watch = {first, last, {}};
}

AllocationSpy::~AllocationSpy() {
  watch.first = watch.last = 0;
}

bool AllocationSpy::seesNew() {
  const AllocationSpy probe;
  return newIsSeen;
}

AllocationCounts AllocationSpy::counts() const {
  return watch.counts;
}

void AllocationSpy::noteBlock() noexcept {
  if (pauses == 0) ++watch.counts.blocks;
}

bool AllocationSpy::noteNew(bool isArray) noexcept {
  if (pauses != 0) return true;
  ++watch.counts.news;
  if (isArray) ++watch.counts.arrayNews;
  if (watch.counts.news < watch.first || watch.counts.news > watch.last) return true;
  ++watch.counts.failures;
  ++watch.counts.blocks;  // noted here, since the heap will not be asked
  return false;
}

void AllocationSpy::noteDelete(bool isArray) noexcept {
  if (pauses != 0) return;
  ++watch.counts.deletes;
  if (isArray) ++watch.counts.arrayDeletes;
}

AllocationPause::AllocationPause() noexcept {
  ++pauses;
}

AllocationPause::~AllocationPause() {
  --pauses;
}

}  // namespace velt::tests
