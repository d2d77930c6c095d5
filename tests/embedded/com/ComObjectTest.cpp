#include "embedded/com/ComObject.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>
#include <vector>

#include "tests/embedded/com/Balance.h"
#include "tests/embedded/com/Probe.h"

namespace velt::com {
namespace {

using platform::AllocationFault;
using platform::Heap;

template <class Interface>
Interface* query(IUnknown* object, REFIID iid) {
  void* found = nullptr;
  EXPECT_EQ(S_OK, object->QueryInterface(iid, &found));
  return static_cast<Interface*>(found);
}

TEST(ComObject, IsMadeWithOneReferenceAndEndsWithIt) {
  const Balance balance;
  IUnknown* object = Probe::make();
  EXPECT_EQ(2U, object->AddRef());
  EXPECT_EQ(1U, object->Release());
  EXPECT_EQ(0U, object->Release());
}

TEST(ComObject, OffersEveryListedInterfaceWithAReference) {
  const Balance balance;
  IUnknown* object = Probe::make();
  auto* source = query<IPropertySource>(object, IID_IPropertySource);
  auto* categories = query<ICategorizeProperties>(object, IID_ICategorizeProperties);
  EXPECT_EQ(3U, referencesOf(object));
  EXPECT_EQ(E_NOTIMPL, source->GetProperties(nullptr, nullptr));
  EXPECT_EQ(E_NOTIMPL, categories->MapPropertyToCategory(1, nullptr));
  EXPECT_NE(static_cast<void*>(source), static_cast<void*>(categories));
  source->Release();
  categories->Release();
  object->Release();
}

TEST(ComObject, HasOneIdentityFromWhicheverInterfaceItIsAsked) {
  const Balance balance;
  IUnknown* object = Probe::make();
  auto* categories = query<ICategorizeProperties>(object, IID_ICategorizeProperties);
  auto* first = query<IUnknown>(object, IID_IUnknown);
  auto* second = query<IUnknown>(categories, IID_IUnknown);
  EXPECT_EQ(first, second);
  EXPECT_EQ(object, first);
  for (IUnknown* held : {first, second, static_cast<IUnknown*>(categories), object})
    held->Release();
}

TEST(ComObject, OffersTheInterfaceThatAListedOneExtends) {
  const Balance balance;
  IDispatch* object = DispatchProbe::make();
  auto* dispatch = query<IDispatch>(object, IID_IDispatch);
  auto* color = query<IVeltVkCmColor>(object, IID_IVeltVkCmColor);
  EXPECT_EQ(dispatch, static_cast<IDispatch*>(color));
  dispatch->Release();
  color->Release();
  object->Release();
}

TEST(ComObject, RefusesAnUnknownInterfaceAndEmptiesTheOutPointer) {
  const Balance balance;
  IUnknown* object = Probe::make();
  void* found = object;
  EXPECT_EQ(E_NOINTERFACE, object->QueryInterface(IID_IDispatch, &found));
  EXPECT_EQ(nullptr, found);
  found = object;
  EXPECT_EQ(E_NOINTERFACE, object->QueryInterface(GUID_NULL, &found));
  EXPECT_EQ(nullptr, found);
  EXPECT_EQ(1U, referencesOf(object));
  object->Release();
}

TEST(ComObject, RefusesAnIdThatDiffersInAnyByte) {
  const Balance balance;
  IUnknown* object = Probe::make();
  for (std::size_t byte = 0; byte < sizeof(IID); ++byte) {
    IID iid = IID_IPropertySource;
    reinterpret_cast<unsigned char*>(&iid)[byte] ^= 0x80U;
    void* found = nullptr;
    EXPECT_EQ(E_NOINTERFACE, object->QueryInterface(iid, &found)) << byte;
  }
  object->Release();
}

TEST(ComObject, ANullOutPointerIsAPointerError) {
  const Balance balance;
  IUnknown* object = Probe::make();
  EXPECT_EQ(E_POINTER, object->QueryInterface(IID_IUnknown, nullptr));
  EXPECT_EQ(1U, referencesOf(object));
  object->Release();
}

TEST(ComObject, ReferencesStandInTheLedgerUnderTheNameOfTheClass) {
  const Balance balance;
  IUnknown* object = Probe::make();
  object->AddRef();
  IUnknown* other = DispatchProbe::make();
  EXPECT_EQ((platform::Ledger::Difference{{"DispatchProbe", 1}, {"Probe", 2}}), balance.now());
  object->Release();
  object->Release();
  other->Release();
}

TEST(ComObject, IsNullWhenMemoryIsExhausted) {
  const Balance balance;
  const AllocationFault fault = AllocationFault::failNth(1, Heap::Objects);
  EXPECT_EQ(nullptr, makeObject<Probe>());
  EXPECT_EQ(1U, fault.failures());
}

class Unmakeable : public Probe {
 public:
  [[noreturn]] Unmakeable() { throw std::bad_alloc(); }
};

class Broken : public Probe {
 public:
  [[noreturn]] Broken() { throw std::logic_error("broken"); }
};

TEST(ComObject, AConstructorThatFindsNoMemoryGivesNullAndABalancedLedger) {
  const Balance balance;
  EXPECT_EQ(nullptr, makeObject<Unmakeable>());
}

TEST(ComObject, AConstructorThatThrowsOtherwiseIsHeardAndLeavesABalancedLedger) {
  const Balance balance;
  EXPECT_THROW(static_cast<void>(makeObject<Broken>()), std::logic_error);
}

class Ending final : public Probe {
 public:
  explicit Ending(bool& ended) : ended_(ended) {}
  ~Ending() override { ended_ = true; }

 private:
  bool& ended_;
};

TEST(ComObject, EndsAsTheClassThatItIsThroughWhicheverInterfaceItIsReleased) {
  const Balance balance;
  bool ended = false;
  auto* object = makeObject<Ending>(ended);
  ICategorizeProperties* categories = object;
  EXPECT_EQ(0U, categories->Release());
  EXPECT_TRUE(ended);
}

TEST(ComObject, TheMethodsOfItsInterfacesKeepTheirPlacesInTheTable) {
  // given an object of an interface with IDispatch in front
  const Balance balance;
  IDispatch* object = DispatchProbe::make();

  // when the first three entries are called by their numbers
  using Method = ULONG (*)(IUnknown*);
  Method* table = *reinterpret_cast<Method**>(object);

  // then they are AddRef and Release
  EXPECT_EQ(2U, table[1](object));
  EXPECT_EQ(1U, table[2](object));
  object->Release();
}

TEST(ComObject, ReferencesMayBeCountedOnSeveralThreads) {
  const Balance balance;
  IUnknown* object = Probe::make();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([object] {
      for (int n = 0; n < 10'000; ++n) {
        void* found = nullptr;
        if (SUCCEEDED(object->QueryInterface(IID_ICategorizeProperties, &found))) {
          static_cast<ICategorizeProperties*>(found)->Release();
        }
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(1U, referencesOf(object));
  object->Release();
}

template <class... Interfaces>
struct InterfaceList {};

template <class... Interfaces>
std::vector<IID> idsOf(InterfaceList<Interfaces...>) {
  return {InterfaceTraits<Interfaces>::iid...};
}

TEST(InterfaceTraits, GiveEveryInterfaceAnIdOfItsOwn) {
  const auto ids =
      idsOf(InterfaceList<IDispatch, ITypeInfo, ITypeLib, IPerPropertyBrowsing, ICategorizeProperties,
                          IDynamicEnumProperty, IDynamicProperty, IDynamicProperty2, IOPMPropertyExpander,
                          IOPMPropertyExtension, IPropertySource, IVeltBaseObject, IVeltVkCmColor,
                          IVeltHyperlinks, IVeltHyperlink, IVeltHatch, IVkPiPropertyDisplay>{});
  for (std::size_t i = 0; i < ids.size(); ++i) {
    EXPECT_FALSE(ids[i] == IID_IUnknown);
    for (std::size_t j = i + 1; j < ids.size(); ++j)
      EXPECT_FALSE(ids[i] == ids[j]) << i << " " << j;
  }
}

}  // namespace
}  // namespace velt::com
