#pragma once

// Properties as tests of GoogleTest: see rapidcheck.h beside this folder.

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <sstream>

namespace rc::detail {

template <class... Arguments>
void expectProperty(void (*property)(Arguments...)) {
  const auto drawn = [property] {
    // In braces the arguments are drawn from the first to the last.
    std::apply(property,
               std::tuple<std::decay_t<Arguments>...>{*gen::arbitrary<std::decay_t<Arguments>>()...});
  };
  const TestResult outcome = checkProperty(toProperty(drawn), TestMetadata(), configuration().testParams);
  if (outcome.is<SuccessResult>()) return;
  std::ostringstream message;
  printResultMessage(outcome, message);
  FAIL() << message.str();
}

}  // namespace rc::detail

#define RC_GTEST_PROP(Suite, Name, Arguments)                 \
  static void property_##Suite##_##Name Arguments;            \
  TEST(Suite, Name) {                                         \
    ::rc::detail::expectProperty(&property_##Suite##_##Name); \
  }                                                           \
  static void property_##Suite##_##Name Arguments
