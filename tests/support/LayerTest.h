#pragma once

// The fixture of tests of the layer: a ToyHost whose resource libraries answer "<library>:<id>", and a layer
// that has neither loaded a library nor cached a list.

#include <gtest/gtest.h>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/CrashReports.h"
#include "propdata/VeltPropData.h"
#include "tests/support/ToyHost.h"

namespace velt::toys {

class LayerTest : public ::testing::Test {
 protected:
  LayerTest() {
    errors::g_hPropRes = nullptr;
    getTqPROPINFOCache()->clear();
    host.toyLibraries = true;
    host.userLanguage = LANGID{0x407};
    host.userLocale = LCID{0x807};
  }
  ~LayerTest() override {
    errors::g_hPropRes = nullptr;
    getTqPROPINFOCache()->clear();
  }

  // The text of a message as long as the message library is the one that was loaded.
  static std::wstring message(int id) { return L"PropertyBarRes.dll:" + std::to_wstring(id); }
  std::wstring error() const { return errorText.str(); }

  // Runs an operation with the first, the second, ... block of the host's heap refused, until none is refused;
  // afterOne is told after each refusal. Every refusal is one report to the crash recorder.
  template <class Operation, class AfterOne>
  void refuseMemory(Operation operation, AfterOne afterOne) {
    for (std::uint64_t n = 1;; ++n) {
      ASSERT_LT(n, 1000U);
      SCOPED_TRACE("block " + std::to_string(n));
      platform::CrashReports::clear();
      std::uint64_t refused = 0;
      {
        const auto fault = platform::AllocationFault::failNth(n, platform::Heap::Host);
        operation();
        refused = fault.failures();
      }
      if (refused == 0) {
        EXPECT_GT(n, 1U) << "nothing was asked for";
        break;
      }
      const auto reports = platform::CrashReports::take();
      ASSERT_EQ(reports.size(), 1U);
      EXPECT_EQ(reports[0].status, Velt::eOutOfMemory);
      afterOne();
    }
  }

  ToyHost host;
  CStdStr<wchar_t> errorText = L"as before";
};

inline constexpr wchar_t untouched[] = L"as before";

}  // namespace velt::toys
