#pragma once

// ComObject: what every COM object of the host is derived from.
//
//   class Color final : public com::ComObject<IVeltVkCmColor, IVeltBaseObject> {
//    public:
//     explicit Color(std::uint32_t value) : ComObject(platform::Ledger::account("VeltVkCmColor")), ...
//     ... the methods of the two interfaces
//   };
//   IVeltVkCmColor* color = com::makeObject<Color>(value);   // one reference, for the caller; null: no memory
//
// It answers QueryInterface for the listed interfaces and those that they extend, counts references, and enters them in
// the ledger under the class's name. IUnknown is always that of the first interface listed, so two pointers name the
// same object exactly when their IUnknown pointers are equal. A class that offers an interface only at times overrides
// QueryInterface and passes everything else on to this one.
//
// Ownership: an object is made with one reference, and ends when the last one is released.
// Threads: references may be counted on every thread. A class protects everything else that it holds.
// Failure: QueryInterface answers E_POINTER for a null out-pointer, and null and E_NOINTERFACE for an unknown id.

#include <cstddef>
#include <new>
#include <tuple>
#include <type_traits>
#include <utility>

#include "embedded/com/InterfaceTraits.h"
#include "embedded/com/ReferenceCount.h"
#include "embedded/platform/Allocation.h"
#include "embedded/platform/Ledger.h"

namespace velt::com {

template <class First, class... Others>
class ComObject : public First, public Others... {
 public:
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = find(iid);
    if (*object == nullptr) return E_NOINTERFACE;
    countReference();
    return S_OK;
  }

  ULONG AddRef() override { return countReference(); }

  ULONG Release() override {
    // When others have references too, the object may end at any time from here on.
    const platform::AccountNumber account = account_;
    const ULONG left = references_.decrement();
    if (left == 0 || !account.giveBackAtOnce()) [[unlikely]]
      return releaseElsewhere(account, left);
    return left;
  }

  // Only the form that does not throw, which makeObject uses: a method without memory for a new object answers
  // E_OUTOFMEMORY, and no exception leaves an interface.
  static void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return platform::allocate(platform::Heap::Objects, bytes);
  }
  static void operator delete(void* block, std::size_t bytes) noexcept { platform::deallocate(block, bytes); }
  static void operator delete(void* block, const std::nothrow_t&) noexcept { platform::deallocate(block); }

 protected:
  explicit ComObject(platform::LedgerAccount& account) noexcept : account_(account) { account_.handOut(); }

  virtual ~ComObject() {
    // Not 0 only when the constructor of a derived class has thrown. Nobody will release that reference.
    for (ULONG left = references_.get(); left != 0; --left)
      account_.giveBack();
  }

  // The one IUnknown of this object, without a reference.
  [[nodiscard]] IUnknown* identity() noexcept { return static_cast<First*>(this); }

 private:
  template <class Interface>
  static bool names(REFIID iid) noexcept {
    if constexpr (std::is_same_v<Interface, IUnknown>) {
      // find() compares with IID_IUnknown itself, after all others.
      return false;
    } else {
      // Ids that differ do so in their first number, nearly always.
      constexpr const IID& own = InterfaceTraits<Interface>::iid;
      return (iid.Data1 == own.Data1 && iid == own) || names<typename InterfaceTraits<Interface>::Base>(iid);
    }
  }

  template <class Interface>
  bool take(REFIID iid, void*& found) noexcept {
    static_assert(alignof(Interface) <= alignof(std::max_align_t));
    if (!names<Interface>(iid)) return false;
    found = static_cast<Interface*>(this);
    return true;
  }

  void* find(REFIID iid) noexcept {
    void* found = nullptr;
    if (take<First>(iid, found) || (take<Others>(iid, found) || ...)) return found;
    return iid == IID_IUnknown ? identity() : nullptr;
  }

  ULONG countReference() noexcept {
    const ULONG references = references_.increment();
    account_.handOut();
    return references;
  }
  // Not inline, so that Release itself calls nothing: it is the most frequent of all calls.
  [[gnu::noinline]] ULONG releaseElsewhere(platform::AccountNumber account, ULONG left) {
    account.giveBack();
    if (left == 0) delete this;
    return left;
  }

  ReferenceCount references_;
  platform::AccountNumber account_;
};

// A new object with one reference for the caller; null when memory is exhausted.
template <class Object, class... Arguments>
[[nodiscard]] Object* makeObject(Arguments&&... arguments) {
  try {
    return new (std::nothrow) Object(std::forward<Arguments>(arguments)...);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace velt::com
