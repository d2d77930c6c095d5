#include "tool/Failure.h"

#include <gtest/gtest.h>

#include <new>

#include "host/com/ComError.h"

namespace velt::tool {
namespace {

template <class Thrown>
std::string messageAfter(const Thrown& thrown) {
  try {
    throw thrown;
  } catch (...) {
    return messageOfFailure();
  }
}

TEST(Failure, EveryExceptionHasAMessage) {
  EXPECT_EQ(messageAfter(Failure("no such plug-in")), "no such plug-in");
  EXPECT_EQ(messageAfter(std::bad_alloc()), "out of memory");
  EXPECT_EQ(messageAfter(_com_error(E_FAIL, L"the host failed")), "the host failed");
  EXPECT_EQ(messageAfter(3), "an unknown failure");
}

}  // namespace
}  // namespace velt::tool
