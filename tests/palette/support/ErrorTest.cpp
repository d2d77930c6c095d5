#include <gtest/gtest.h>

#include "palette/Palette.h"
#include "palette/support/HostCalls.h"

namespace velt::palette {
namespace {

TEST(Error, TellsItsMessage) {
  const Error error("the selection is gone");
  EXPECT_STREQ(error.what(), "the selection is gone");
}

std::string messageOf(const wchar_t* description) {
  try {
    orError([&]() -> int { throw _com_error(E_FAIL, description); });
  } catch (const Error& error) {
    return error.what();
  }
  return "no error";
}

TEST(HostCalls, WhatTheHostThrowsIsTheMessage) {
  EXPECT_EQ(messageOf(L"no connection \u20AC"), "no connection \xE2\x82\xAC");
}

TEST(HostCalls, WhatIsThrownWithoutATextIsAFailureAllTheSame) {
  EXPECT_EQ(messageOf(L""), "the properties could not be asked for or written, and nothing says why");
}

TEST(HostCalls, WhatIsAnsweredIsPassedOn) {
  EXPECT_EQ(orError([] { return 7; }), 7);
}

}  // namespace
}  // namespace velt::palette
