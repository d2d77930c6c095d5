#include "embedded/automation/objects/HyperlinksObject.h"

#include <gtest/gtest.h>

#include "embedded/automation/model/Refusal.h"
#include "embedded/platform/Allocation.h"
#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

class HyperlinksObjectTest : public ::testing::Test {
 protected:
  [[nodiscard]] InterfaceHolder<IVeltHyperlinks> links(std::size_t entity) const {
    return ask<IVeltHyperlinks>(*HyperlinksObject::make(drawing->entities()[entity]).get());
  }
  [[nodiscard]] InterfaceHolder<IVeltHyperlink> firstLink() const {
    InterfaceHolder<IVeltHyperlink> link;
    EXPECT_EQ(S_OK, links(0)->Item(0, link.put()));
    return link;
  }

  bool registryMade = (makeRegistry(), true);
  Balance balance;
  std::unique_ptr<Drawing> drawing = Sample()
                                         .entity("LINE", {{1001, "PE_URL"},
                                                          {1000, "http://a.example/"},
                                                          {1002, "{"},
                                                          {1000, "A page"},
                                                          {1002, "}"},
                                                          {1000, "second"}})
                                         .entity("LINE")
                                         .open();
};

TEST_F(HyperlinksObjectTest, CountsAndGivesTheLinks) {
  LONG count = 0;
  EXPECT_EQ(S_OK, links(0)->get_Count(&count));
  EXPECT_EQ(2, count);
  StringHolder url;
  StringHolder description;
  const auto link = firstLink();
  EXPECT_EQ(S_OK, link->get_URL(url.put()));
  EXPECT_EQ(S_OK, link->get_URLDescription(description.put()));
  EXPECT_EQ(L"http://a.example/", url.view());
  EXPECT_EQ(L"A page", description.view());
}

TEST_F(HyperlinksObjectTest, ALinkThatIsNotThereIsNull) {
  const auto held = links(1);
  LONG count = 55;
  EXPECT_EQ(S_OK, held->get_Count(&count));
  EXPECT_EQ(0, count);
  const auto some = firstLink();
  for (const LONG index : {0, -1, 2147483647}) {
    IVeltHyperlink* link = some.get();
    EXPECT_EQ(DISP_E_BADINDEX, held->Item(index, &link));
    EXPECT_EQ(nullptr, link);
  }
  EXPECT_EQ(E_POINTER, held->Item(0, nullptr));
  EXPECT_EQ(E_POINTER, held->get_Count(nullptr));
}

TEST_F(HyperlinksObjectTest, TheSecondEntryOfALinkIsItsAddress) {
  // Callers find it by its place in the function table, after the seven of IUnknown and IDispatch.
  const auto link = firstLink();
  using Getter = HRESULT (*)(IVeltHyperlink*, BSTR*);
  const auto* table = *static_cast<Getter**>(static_cast<void*>(link.get()));
  StringHolder url;
  EXPECT_EQ(S_OK, table[7 + 1](link.get(), url.put()));
  EXPECT_EQ(L"http://a.example/", url.view());
}

TEST_F(HyperlinksObjectTest, LinksAreReadAtEachCall) {
  const auto held = links(0);
  const auto link = firstLink();
  const std::uint32_t record = database::resolve(drawing->entities()[0])->record;
  drawing->edit(record, [&](dxf::Document& document) {
    while (document.view(record).size() > 1)
      document.erase(record, 1);
  });
  LONG count = 55;
  EXPECT_EQ(S_OK, held->get_Count(&count));
  EXPECT_EQ(0, count);
  BSTR url = nullptr;
  EXPECT_EQ(DISP_E_BADINDEX, link->get_URL(&url));
  drawing.reset();
  EXPECT_EQ(E_FAIL, held->get_Count(&count));
  EXPECT_EQ(E_FAIL, link->get_URL(&url));
  EXPECT_EQ(nullptr, url);
}

TEST_F(HyperlinksObjectTest, CanBeAskedLate) {
  const Bound made(HyperlinksObject::make(drawing->entities()[0]));
  EXPECT_EQ(2, made.integer(L"Count"));
  const Answer item = invoke(made.dispatch(), DISPID_VALUE, DISPATCH_METHOD, {integer(1)});
  ASSERT_EQ(S_OK, item.result);
  const Bound link(InterfaceHolder<IDispatch>::sharing(item.value.get().pdispVal));
  EXPECT_EQ(L"second", link.text(L"URL"));
  EXPECT_EQ(L"", link.text(L"URLDescription"));
  EXPECT_EQ(L"", link.text(L"URLNamedLocation"));
  const Answer missing = invoke(made.dispatch(), DISPID_VALUE, DISPATCH_PROPERTYGET, {integer(2)});
  EXPECT_EQ(DISP_E_EXCEPTION, missing.result);
  EXPECT_EQ(DISP_E_BADINDEX, missing.scode);
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, invoke(made.dispatch(), DISPID_VALUE, DISPATCH_METHOD).result);
  VARIANT empty{};
  EXPECT_EQ(DISP_E_TYPEMISMATCH, invoke(made.dispatch(), DISPID_VALUE, DISPATCH_METHOD, {empty}).result);
}

TEST_F(HyperlinksObjectTest, NullPointersAndExhaustedMemoryAreToldApart) {
  const auto held = links(0);
  const auto link = firstLink();
  EXPECT_EQ(E_POINTER, link->get_URL(nullptr));
  EXPECT_EQ(E_POINTER, link->get_URLDescription(nullptr));
  const auto fault = platform::AllocationFault::failFrom(1);
  BSTR url = nullptr;
  IVeltHyperlink* item = nullptr;
  EXPECT_EQ(E_OUTOFMEMORY, link->get_URL(&url));
  EXPECT_EQ(E_OUTOFMEMORY, held->Item(0, &item));
  EXPECT_EQ(nullptr, item);
  EXPECT_THROW(static_cast<void>(HyperlinksObject::make({})), Refusal);
}

}  // namespace
}  // namespace velt::automation
