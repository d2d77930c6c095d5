#include "host/com/ComError.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "embedded/platform/Allocation.h"
#include "tests/embedded/com/Balance.h"

namespace velt::com {
namespace {

using platform::AllocationFault;
using platform::Heap;

std::wstring described(const _com_error& error) {
  const wchar_t* text = error.Description();
  EXPECT_NE(nullptr, text);
  return std::wstring(error.Description());
}

TEST(ComError, KeepsItsResultAndItsOwnDescription) {
  const Balance balance;
  const _com_error error(DISP_E_EXCEPTION, L"The layer is locked.");
  EXPECT_EQ(DISP_E_EXCEPTION, error.Error());
  EXPECT_EQ(L"The layer is locked.", described(error));
}

TEST(ComError, ACopyIsIndependent) {
  const Balance balance;
  auto* first = new _com_error(E_FAIL, L"text");
  const _com_error second(*first);
  delete first;
  EXPECT_EQ(E_FAIL, second.Error());
  EXPECT_EQ(L"text", described(second));
}

TEST(ComError, HasATextOfItsOwnForEveryPublishedResult) {
  const Balance balance;
  std::set<std::wstring> texts;
  const HRESULT results[] = {S_OK,
                             S_FALSE,
                             E_NOTIMPL,
                             E_NOINTERFACE,
                             E_POINTER,
                             E_FAIL,
                             E_UNEXPECTED,
                             E_ACCESSDENIED,
                             E_OUTOFMEMORY,
                             E_INVALIDARG,
                             CO_E_NOTINITIALIZED,
                             CLASS_E_NOAGGREGATION,
                             REGDB_E_CLASSNOTREG,
                             DISP_E_MEMBERNOTFOUND,
                             DISP_E_TYPEMISMATCH,
                             DISP_E_UNKNOWNNAME,
                             DISP_E_EXCEPTION,
                             DISP_E_OVERFLOW,
                             DISP_E_BADINDEX,
                             DISP_E_ARRAYISLOCKED,
                             DISP_E_BADPARAMCOUNT,
                             TYPE_E_ELEMENTNOTFOUND};
  for (const HRESULT result : results) {
    const std::wstring text = described(_com_error(result));
    EXPECT_EQ(std::wstring::npos, text.find(L"0x"));
    EXPECT_FALSE(text.empty());
    texts.insert(text);
  }
  EXPECT_EQ(std::size(results), texts.size());
}

TEST(ComError, ShowsTheNumberOfAnUnknownResult) {
  const Balance balance;
  EXPECT_EQ(L"Error 0x80041234.", described(_com_error(failure(0x80041234U))));
}

TEST(ComError, AnEmptyDescriptionStaysEmpty) {
  const Balance balance;
  EXPECT_EQ(L"", described(_com_error(E_FAIL, L"")));
}

TEST(ComError, TheDescriptionIsNeverNullEvenWithoutMemory) {
  const Balance balance;
  const AllocationFault fault = AllocationFault::failFrom(1, Heap::Strings);
  const _com_error error(E_OUTOFMEMORY, L"text");
  const _com_error copy(error);
  EXPECT_EQ(L"", described(error));
  EXPECT_EQ(L"", described(copy));
  EXPECT_NE(0U, fault.failures());
}

TEST(ComError, IsRaisedAcrossTheEdgeOfTheHost) {
  const Balance balance;
  try {
    _com_raise_error(E_ACCESSDENIED, L"read only");
    FAIL() << "returned";
  } catch (const _com_error& error) {
    EXPECT_EQ(E_ACCESSDENIED, error.Error());
    EXPECT_EQ(L"read only", described(error));
  }
  EXPECT_THROW(_com_raise_error(S_OK), _com_error) << "whatever the result is";
}

}  // namespace
}  // namespace velt::com
